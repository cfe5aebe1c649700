// Turns what an operation answered into one sentence about a file and the cause.
#include "cli/causes.h"

#include "cli/options.h"
#include "cli/system.h"
#include "cli/temporary.h"
#include "imaging/exports/lumbrix.h"

#include <filesystem>
#include <fstream>

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

bool CanOpen(const fs::path& file) { return std::ifstream(file, std::ios::binary).is_open(); }

bool CanWriteInto(const fs::path& file) {
    return std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).is_open();
}

bool CanMakeFileIn(const fs::path& folder) {
    const TemporaryFile file(folder, {});
    return std::ofstream(file.Path(), std::ios::binary).is_open();
}

fs::path FolderOf(const std::string& file) {
    std::error_code error;
    return fs::absolute(PathOf(file), error).parent_path();
}

// Why a source cannot be read, judged by looking at it; nothing where nothing seems wrong.
std::optional<std::string> CauseInSource(std::int32_t status, const std::string& source) {
    std::error_code error;
    const fs::file_status facts = fs::status(PathOf(source), error);
    if (status == FileNotFound || facts.type() == fs::file_type::not_found) {
        return "there is no such file";
    }
    if (fs::is_directory(facts)) {
        return "it is a folder";
    }
    if (fs::exists(facts) && !fs::is_regular_file(facts)) {
        return "it is no regular file";
    }
    if (!CanOpen(PathOf(source))) {
        return "there is no permission to read it, or another program is writing it";
    }
    if (status == OutOfMemory) {
        return "it is no picture that Lumbrix can read, or it is damaged";
    }
    return std::nullopt;
}

std::optional<std::string> CauseInTarget(const std::string& source, const std::string& target) {
    std::error_code error;
    if (!fs::exists(FolderOf(target), error)) {
        return "the folder " + NameOf(FolderOf(target)) + " does not exist";
    }
    const fs::file_status facts = fs::status(PathOf(target), error);
    if (fs::is_directory(facts)) {
        return "it is a folder";
    }
    if (fs::equivalent(PathOf(source), PathOf(target), error)) {
        return "it is the source itself";
    }
    if (fs::exists(facts) && !fs::is_regular_file(facts)) {
        return "it is no regular file";
    }
    if (fs::exists(facts) && !CanWriteInto(PathOf(target))) {
        return "the file is not writable, or it is in use";
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
        return "there is not enough memory for it, or the disk is full";
    }
}

Failure CannotRead(const std::string& file, const std::string& cause) { return {"cannot read " + file + ": " + cause}; }

Failure CannotWrite(const std::string& file, const std::string& cause) {
    return {"cannot write " + file + ": " + cause};
}

} // namespace

void RequireName(const std::string& file) {
    if (file.find_first_not_of(' ') == std::string::npos) {
        throw WrongUsage{"an empty file name was given"};
    }
}

void ExpectRead(std::int32_t status, const std::string& file) {
    if (status != 0) {
        throw CannotRead(file, CauseInSource(status, file).value_or(CauseByStatus(status)));
    }
}

void ExpectWritten(std::int32_t status, const std::string& source, const std::string& target) {
    std::error_code error;
    if (status != 0 || !fs::is_regular_file(PathOf(target), error)) {
        ThrowNotWritten(status, source, target);
    }
}

void ThrowNotWritten(std::int32_t status, const std::string& source, const std::string& target) {
    if (status == NoEncoder || status == NoSession) {
        throw CannotWrite(target, CauseByStatus(status));
    }
    if (const auto cause = CauseInSource(status, source)) {
        throw CannotRead(source, *cause);
    }
    if (const auto cause = CauseInTarget(source, target)) {
        throw CannotWrite(target, *cause);
    }
    if (!CanMakeFileIn(FolderOf(target))) {
        throw CannotWrite(target, "the folder " + NameOf(FolderOf(target)) + " is not writable");
    }
    throw CannotWrite(target, CauseByStatus(status));
}

void ExpectReplaceable(const std::string& source, const std::string& target) {
    if (const auto cause = CauseInTarget(source, target)) {
        throw CannotWrite(target, *cause);
    }
}

PictureSize SizeOf(const std::string& file) {
    RequireName(file);
    PictureSize size;
    ExpectRead(GetImageDimensions(file.c_str(), &size.width, &size.height), file);
    if (size.width <= 0 || size.height <= 0) { // what comes back where there is no imaging library to ask
        throw CannotRead(file, CauseByStatus(NoEncoder));
    }
    return size;
}

std::string TextOf(PictureSize size) { return std::to_string(size.width) + " x " + std::to_string(size.height); }

} // namespace lumbrix::cli
