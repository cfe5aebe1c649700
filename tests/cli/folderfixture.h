// A folder of pictures for tests of the command that converts whole folders.
#pragma once

#include "tests/cli/commandline.h"
#include "tests/support/bmpfiles.h"

namespace tests {

class Folder : public CommandLine {
  protected:
    Folder() { MakeFolder("in"); }

    void MakeFolder(const std::string& name) { std::filesystem::create_directories(folder_ / name); }

    void MakePicture(const std::string& name, int width = 8, int height = 6, Rgb color = Red) {
        WriteBytes(folder_ / name, MakeBmp(width, height, [&](int, int) { return color; }));
    }

    // A picture of zeros that takes no room, but long to work on. `side` is in pixels, and a multiple of four.
    void MakeVastPicture(const std::string& name, unsigned side = 20000) {
        const std::string number{static_cast<char>(side), static_cast<char>(side >> 8), '\0', '\0'};
        std::string header = MakeBmp(1, 1, [](int, int) { return Black; }).substr(0, 54);
        header.replace(18, 8, number + number);
        WriteBytes(folder_ / name, header);
        std::filesystem::resize_file(folder_ / name, 54 + std::uintmax_t{side} * side * 3);
    }

    // Runs `folder in out`, with these words behind.
    Outcome RunFolder(std::vector<std::string> words) {
        words.insert(words.begin(), {"folder", Path("in"), Path("out")});
        return Run(words);
    }

    BmpView View(const std::string& name) const { return BmpView(ReadBytes(folder_ / name)); }
};

} // namespace tests
