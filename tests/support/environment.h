// Variables of the environment that a test sets.
#pragma once

#include <cstdlib>
#include <string>

namespace tests {

// While it lives an environment variable has another value; null for none.
class EnvironmentVariable {
  public:
    EnvironmentVariable(const char* name, const char* value) : name_(name) {
        const char* before = std::getenv(name);
        wasSet_ = before != nullptr;
        before_ = wasSet_ ? before : "";
        Set(value);
    }
    ~EnvironmentVariable() { Set(wasSet_ ? before_.c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    void Set(const char* value) {
#ifdef _WIN32
        _putenv_s(name_.c_str(), value == nullptr ? "" : value);
#else
        value == nullptr ? unsetenv(name_.c_str()) : setenv(name_.c_str(), value, 1);
#endif
    }

    std::string name_;
    bool wasSet_ = false;
    std::string before_;
};

// Which variable names the folder for temporary files.
#ifdef _WIN32
inline constexpr const char* TemporaryFolderVariable = "TMP";
#else
inline constexpr const char* TemporaryFolderVariable = "TMPDIR";
#endif

} // namespace tests
