// A folder that exists for one test and is gone behind it.
#include "tests/support/temporaryfolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace tests {

namespace {

void SetTemporaryFolder(const std::filesystem::path& folder) {
#ifdef _WIN32
    _putenv_s("TMP", folder.string().c_str());
#else
    setenv("TMPDIR", folder.c_str(), 1);
#endif
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        path_ = std::filesystem::temp_directory_path() / ("lumbrix-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

TemporaryFilesIn::TemporaryFilesIn(const std::filesystem::path& folder)
    : before_(std::filesystem::temp_directory_path()) {
    SetTemporaryFolder(folder);
}

TemporaryFilesIn::~TemporaryFilesIn() { SetTemporaryFolder(before_); }

void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace tests
