// Sweeps the input as a list of files to delete, in a folder of its own: what it names goes, everything else stays.
#include "platform/cleanup.h"
#include "fuzz/support/choices.h"
#include "fuzz/support/entry.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// Removed with all that is in it at the end of the process.
class OwnFolder {
  public:
    OwnFolder() {
        std::string name = (fs::temp_directory_path() / "cleanup-XXXXXX").string();
        fuzz::Require(mkdtemp(name.data()) != nullptr, "a folder can be made");
        path_ = name + "/";
        fs::create_directory(path_ / "folder");
    }
    ~OwnFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    // With a separator behind it.
    std::string Path() const { return path_.string(); }

    bool Has(const char* name) const { return fs::exists(path_ / name); }

  private:
    fs::path path_;
};

constexpr const char* Names[] = {"a", "b.tmp", "\xC3\xA4 name with blanks", "CleanUp.txt.old", "line\nfeed"};

// No name leads out of the folder.
std::string WithoutSeparators(std::string text) {
    std::erase(text, '/');
    return text;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    return lines;
}

} // namespace

void fuzz::Take(const std::uint8_t* bytes, std::size_t count) {
    static const OwnFolder folder;
    for (const char* name : Names) {
        std::ofstream(folder.Path() + name) << 'x';
    }
    std::string list;
    std::set<std::string> named;
    for (const std::string& line : LinesOf(WithoutSeparators({reinterpret_cast<const char*>(bytes), count}))) {
        list += folder.Path() + line + "\r\n";
        named.insert(line.c_str()); // for the system a name ends at its first NUL
    }
    std::ofstream(folder.Path() + "CleanUp.txt", std::ios::binary) << list;

    lumbrix::SweepCleanUpList(folder.Path());

    fuzz::Require(!folder.Has("CleanUp.txt"), "the list is gone once it was swept");
    fuzz::Require(folder.Has("folder"), "a folder is never deleted");
    for (const char* name : Names) {
        fuzz::Require(folder.Has(name) != named.contains(name), "what the list names goes, everything else stays");
    }
}
