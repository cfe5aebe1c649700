// Turns what an operation answered into one sentence about a file and the cause.
#include "cli/causes.h"

#include "cli/commands.h"

#include <filesystem>
#include <fstream>
#include <optional>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

// The statuses of the imaging library that say something about a file, and of the engine.
constexpr std::int32_t InvalidParameter = 2;
constexpr std::int32_t OutOfMemory = 3;
constexpr std::int32_t Win32Error = 7;
constexpr std::int32_t FileNotFound = 10;
constexpr std::int32_t NoSession = -16001;
constexpr std::int32_t NoEncoder = -16002;

bool CanOpen(const std::string& file) { return std::ifstream(file, std::ios::binary).is_open(); }

// Why a source cannot be read, judged by looking at it; nothing where nothing seems wrong.
std::optional<std::string> CauseInSource(std::int32_t status, const std::string& source) {
    std::error_code error;
    const fs::file_status facts = fs::status(source, error);
    if (status == FileNotFound || facts.type() == fs::file_type::not_found) {
        return "there is no such file";
    }
    if (fs::is_directory(facts)) {
        return "it is a folder";
    }
    if (!CanOpen(source)) {
        return "there is no permission to read it, or another program is writing it";
    }
    if (status == OutOfMemory) {
        return "it is no picture that Lumbrix can read, or it is damaged";
    }
    return std::nullopt;
}

std::optional<std::string> CauseInTarget(const std::string& source, const std::string& target) {
    std::error_code error;
    const fs::path folder = fs::absolute(target, error).parent_path();
    if (!fs::exists(folder, error)) {
        return "the folder " + folder.string() + " does not exist";
    }
    if (fs::is_directory(target, error)) {
        return "it is a folder";
    }
    if (fs::equivalent(source, target, error)) {
        return "it is the source itself";
    }
    return std::nullopt;
}

std::string CauseByStatus(std::int32_t status) {
    switch (status) {
    case InvalidParameter:
        return "the size of the picture is not acceptable";
    case OutOfMemory:
        return "there is not enough memory";
    case Win32Error:
        return "the system failed while writing; the disk may be full";
    case NoSession:
        return "the imaging library refused to start";
    case NoEncoder:
        return "the imaging library could not be loaded";
    default:
        return "the file or its folder is not writable, or the file is in use";
    }
}

} // namespace

void RequireName(const std::string& file) {
    if (file.find_first_not_of(' ') == std::string::npos) {
        throw WrongUsage{"an empty file name was given"};
    }
}

void ExpectRead(std::int32_t status, const std::string& file) {
    if (status != 0) {
        const auto cause = CauseInSource(status, file);
        throw Failure{"cannot read " + file + ": " + cause.value_or(CauseByStatus(status))};
    }
}

void ExpectWritten(std::int32_t status, const std::string& source, const std::string& target) {
    std::error_code error;
    if (status == 0 && fs::is_regular_file(target, error)) {
        return;
    }
    if (status == NoEncoder || status == NoSession) {
        throw Failure{"cannot write " + target + ": " + CauseByStatus(status)};
    }
    if (const auto cause = CauseInSource(status, source)) {
        throw Failure{"cannot read " + source + ": " + *cause};
    }
    throw Failure{"cannot write " + target + ": " + CauseInTarget(source, target).value_or(CauseByStatus(status))};
}

} // namespace lumbrix::cli
