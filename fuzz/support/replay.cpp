// Goes through inputs that a fuzzer found, without one: every file named, and every file below every folder named.
#include "fuzz/support/entry.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& named) {
    if (!std::filesystem::is_directory(named)) {
        return {named};
    }
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(named)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

void Replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int count, char** names) {
    std::size_t replayed = 0;
    for (int i = 1; i < count; ++i) {
        for (const auto& path : FilesOf(names[i])) {
            // Whatever ends the process, the last line says over which input.
            std::fprintf(stderr, "%s\n", path.c_str());
            Replay(path);
            ++replayed;
        }
    }
    std::printf("%zu inputs\n", replayed);
    return replayed > 0 ? 0 : 1;
}
