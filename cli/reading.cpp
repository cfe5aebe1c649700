// The commands on what a file says about its picture: size, properties and date.
#include "cli/reading.h"

#include "cli/causes.h"
#include "cli/options.h"
#include "cli/system.h"
#include "cli/temporary.h"
#include "cli/text.h"
#include "cli/writing.h"

#include <algorithm>
#include <cstdio>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* StampedSuffix = "_stamped.jpg";

// A property of a kind that is not shown has a line with its name alone.
bool HasValue(const std::string& line) {
    const std::size_t nameEnd = line.find('\t');
    return nameEnd != std::string::npos && line.find_first_not_of('\t', nameEnd) != std::string::npos;
}

void PrintProperties(const std::string& text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", start), text.size());
        const std::string line = text.substr(start, end - start);
        if (HasValue(line)) {
            std::printf("%s\n", Printable(line).c_str());
        }
        start = end + 2;
    }
}

// Another current folder for as long as this object lives.
class CurrentFolder {
  public:
    explicit CurrentFolder(const fs::path& folder) : former_(fs::current_path(error_)) {
        fs::current_path(folder, error_);
    }
    ~CurrentFolder() { fs::current_path(former_, error_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

  private:
    std::error_code error_; // a current folder that is gone is nothing to come back to
    fs::path former_;
};

// The name of the stamped copy: beside the file, its name up to the first dot.
std::string StampedName(const std::string& file) {
    const std::string name = NameOf(PathOf(file).filename());
    return NameOf(PathOf(file).parent_path() / PathOf(name.substr(0, name.find('.')) + StampedSuffix));
}

// The engine writes the stamped copy of a bare name to the current folder and does not tell whether it could, so it
// gets a folder of its own to do that in. Afterwards there is the copy, or none where it could not be written.
std::int32_t StampDate(const std::string& file, const std::string& date, const std::string& copy) {
    TemporaryFolder folder;
    const fs::path picture = folder.PathOfNew("picture");
    const fs::path stamped = folder.PathOfNew(StampedName("picture"));
    std::error_code error;
    if (!fs::copy_file(PathOf(file), picture, error)) {
        throw Failure{"cannot copy " + file + " into " + NameOf(folder.Path()) + ": " + error.message()};
    }
    std::int32_t status = 0;
    {
        const CurrentFolder current(folder.Path());
        status = DateStampImage("picture", date.c_str());
    }
    if (fs::exists(stamped, error) && !fs::copy_file(stamped, PathOf(copy), error)) {
        fs::remove(PathOf(copy), error); // half of it may be there
    }
    return status;
}

// Files whose names differ behind the first dot have one stamped copy.
void RefuseToReplace(const std::string& target) {
    std::error_code error;
    if (fs::exists(fs::symlink_status(PathOf(target), error))) {
        throw Failure{"cannot write " + target + ": there is such a file already"};
    }
}

int PrintDate(const std::string& file) {
    const std::string date = LibraryText(GetImageDateTime(file.c_str())).Text();
    if (date.empty()) {
        throw Failure{"cannot read the date of " + file + ": it holds none"};
    }
    std::printf("%s\n", Printable(date).c_str());
    return 0;
}

int PrintStampedCopy(const std::string& file, const std::string& date) {
    if (date.empty()) {
        throw WrongUsage{"an empty date was given"};
    }
    const std::string target = StampedName(file);
    RefuseToReplace(target);
    WriteInOneStep(file, target, [&](const std::string& temporary) { return StampDate(file, date, temporary); });
    std::printf("%s\n", Printable(target).c_str());
    return 0;
}

} // namespace

int RunSize(const Arguments& arguments) {
    std::printf("%s\n", TextOf(SizeOf(arguments[0])).c_str());
    return 0;
}

int RunProperties(const Arguments& arguments) {
    const std::string& file = arguments[0];
    SizeOf(file); // a file that cannot be read would look like one without properties
    LibraryText error;
    LibraryText list;
    EnumerateImageProperties(file.c_str(), error.Place(), list.Place());
    if (!error.Text().empty()) {
        throw Failure{"cannot read " + file + ": " + error.Text()};
    }
    PrintProperties(list.Text());
    return 0;
}

int RunDate(const Arguments& arguments) {
    SizeOf(arguments[0]);
    return arguments.Count() == 1 ? PrintDate(arguments[0]) : PrintStampedCopy(arguments[0], arguments[1]);
}

} // namespace lumbrix::cli
