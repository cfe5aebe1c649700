// The parameters that callers hand to an encoder.
#include "imaginglibrary/flat/encoderparameters.h"

#include <cstring>
#include <optional>
#include <utility>

namespace imaginglibrary {

namespace {

// {1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB}
constexpr Guid QualityId{0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
// {E09D739D-CCD4-44EE-8EBA-3FBF8BE4FC58}
constexpr Guid CompressionId{0xE09D739D, 0xCCD4, 0x44EE, {0x8E, 0xBA, 0x3F, 0xBF, 0x8B, 0xE4, 0xFC, 0x58}};

constexpr std::uint32_t NumberOf32Bits = 4; // type of a value
constexpr std::uint32_t HighestQuality = 100;

// The platform's numbers, and behind them our own.
constexpr std::pair<std::uint32_t, Compression> Compressions[] = {
    {2, Compression::Lzw},         {4, Compression::Fax},         {6, Compression::None},
    {0x10001, Compression::Quick}, {0x10002, Compression::Small}, {0x10003, Compression::Deflate},
    {0x10004, Compression::Jpeg},
};

std::optional<std::uint32_t> NumberIn(const EncoderParameter& parameter) {
    if (parameter.type != NumberOf32Bits || parameter.numberOfValues != 1 || parameter.value == nullptr) {
        return std::nullopt;
    }
    std::uint32_t number;
    std::memcpy(&number, parameter.value, sizeof number);
    return number;
}

bool TakeQuality(const EncoderParameter& parameter, WriteOptions& options) {
    const auto number = NumberIn(parameter);
    if (!number || *number > HighestQuality) {
        return false;
    }
    options.quality = static_cast<int>(*number);
    return true;
}

bool TakeCompression(const EncoderParameter& parameter, WriteOptions& options) {
    const auto number = NumberIn(parameter);
    for (const auto& [known, compression] : Compressions) {
        if (number == known) {
            options.compression = compression;
            return true;
        }
    }
    return false;
}

} // namespace

Result<WriteOptions> WriteOptionsOf(const EncoderParameters* parameters) {
    WriteOptions options;
    const std::uint32_t count = parameters != nullptr ? parameters->count : 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const EncoderParameter& parameter = parameters->parameter[i];
        if ((parameter.guid == QualityId && !TakeQuality(parameter, options)) ||
            (parameter.guid == CompressionId && !TakeCompression(parameter, options))) {
            return Status::InvalidParameter;
        }
    }
    return options;
}

} // namespace imaginglibrary
