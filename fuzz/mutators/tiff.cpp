// Changes a TIFF file entry by entry: tags, types and counts become others that mean something, of either byte order.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t count, std::size_t most);

namespace {

constexpr std::size_t HeaderBytes = 8;
constexpr std::size_t EntryBytes = 12;

constexpr std::uint16_t Tags[] = {254, 256,   257,   258,   259,   262, 266, 273, 274,   277,   278,   279,  282, 284,
                                  296, 317,   320,   322,   323,   324, 325, 330, 338,   339,   347,   529,  530, 532,
                                  700, 33432, 33723, 34377, 34665, 292, 293, 532, 34853, 37500, 37510, 40965};
constexpr std::uint16_t Compressions[] = {1, 2, 3, 4, 5, 6, 7, 8, 32773, 32946, 32809, 34676, 34925, 50000};
constexpr std::uint32_t Numbers[] = {0, 1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 32, 64, 255, 65535, 0x7FFFFFFF, 0xFFFFFFFF};

class Directory {
  public:
    Directory(std::uint8_t* bytes, std::size_t count) : bytes_(bytes), count_(count) {
        isBig_ = count >= 2 && bytes[0] == 'M';
        if (count < HeaderBytes) {
            return;
        }
        const std::size_t at = Number(4, 4);
        if (at >= HeaderBytes && at < count && count - at > 2) {
            first_ = at + 2;
            entries_ = std::min<std::size_t>(Number(at, 2), (count - first_) / EntryBytes);
        }
    }

    std::size_t Entries() const { return entries_; }

    void Change(std::minstd_rand& random) {
        const std::size_t entry = first_ + EntryBytes * (random() % entries_);
        constexpr std::uint32_t CompressionTag = 259;
        switch (random() % 5) {
        case 0:
            Put(entry, 2, Tags[random() % std::size(Tags)]);
            break;
        case 1:
            Put(entry + 2, 2, random() % 19);
            break;
        case 2:
            Put(entry + 4, 4, Numbers[random() % std::size(Numbers)]);
            break;
        default:
            if (Number(entry, 2) == CompressionTag) {
                Put(entry + 8, 2, Compressions[random() % std::size(Compressions)]);
            } else if (Number(entry + 2, 2) == 3) {
                Put(entry + 8, 2, Numbers[random() % std::size(Numbers)] & 0xFFFF);
            } else {
                Put(entry + 8, 4, random() % 2 == 0 ? Numbers[random() % std::size(Numbers)] : random() % count_);
            }
            break;
        }
    }

  private:
    std::uint32_t Number(std::size_t at, int bytes) const {
        std::uint32_t number = 0;
        for (int i = 0; i < bytes; ++i) {
            number |= std::uint32_t{bytes_[at + static_cast<std::size_t>(i)]} << 8 * (isBig_ ? bytes - 1 - i : i);
        }
        return number;
    }

    void Put(std::size_t at, int bytes, std::uint32_t number) {
        for (int i = 0; i < bytes; ++i) {
            bytes_[at + static_cast<std::size_t>(i)] =
                static_cast<std::uint8_t>(number >> 8 * (isBig_ ? bytes - 1 - i : i));
        }
    }

    std::uint8_t* bytes_;
    std::size_t count_;
    bool isBig_ = false;
    std::size_t first_ = 0;
    std::size_t entries_ = 0;
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t count, std::size_t most,
                                               unsigned seed) {
    std::minstd_rand random(seed);
    Directory directory(bytes, count);
    if (directory.Entries() == 0 || random() % 2 == 0) {
        return LLVMFuzzerMutate(bytes, count, most);
    }
    for (std::size_t changes = 1 + random() % 3; changes > 0; --changes) {
        directory.Change(random);
    }
    return count;
}
