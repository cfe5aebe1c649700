// A file that appears whole or not at all.
#pragma once

#include <string>
#include <sys/stat.h>

namespace lumbrix {

// Has no name while it is written, and takes its target's place in one step at the end. Without that the target stays
// as it was and nothing is left behind, even if the process is killed; only between two calls at the very end the file
// lies under a name of its own beside the target. Functions give back the system's error number, 0 for success.
class NewFile {
  public:
    // Behind links the file that they lead to is replaced or made, not the link.
    explicit NewFile(const std::string& target);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // A file that is replaced hands its permissions on, and its owner where that is allowed; one that is new gets
    // these.
    int Open(mode_t permissions);

    int Append(const void* bytes, std::size_t count);

    // The bytes are on the disk before the target is replaced.
    int Commit();

  private:
    void BecomeLikeTheTarget();
    int GiveName();

    std::string target_;
    std::string name_; // empty while the file has none
    int file_ = -1;
};

// Writes all bytes, however few the system takes at a time. The error number, 0 for success.
int WriteAllTo(int file, const void* bytes, std::size_t count);

// A name beside a file that hardly any other has, short whatever the file's own.
std::string NameBeside(const std::string& path);

// Eight digits at most.
std::string HexadecimalDigits();

} // namespace lumbrix
