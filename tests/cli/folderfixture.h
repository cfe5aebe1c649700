// A folder of pictures for tests of the command that converts whole folders.
#pragma once

#include "tests/cli/commandline.h"
#include "tests/support/bmpfiles.h"

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <ctime>
#include <fstream>
#include <functional>
#include <string_view>
#include <thread>

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

    // Waits until something has come true; gives back whether it has.
    static bool Await(const std::function<bool()>& condition) {
        constexpr auto Patience = std::chrono::seconds(15);
        const auto start = std::chrono::steady_clock::now();
        while (!condition()) {
            if (std::chrono::steady_clock::now() - start > Patience) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }

    // Waits until a run has begun with a file.
    void AwaitOpened(pid_t child, const std::string& name) {
        const std::filesystem::path opened = "/proc/" + std::to_string(child) + "/fd";
        const auto isOpened = [&] {
            std::error_code closedMeanwhile;
            for (const auto& entry : std::filesystem::directory_iterator(opened, closedMeanwhile)) {
                if (std::filesystem::read_symlink(entry.path(), closedMeanwhile) == folder_ / name) {
                    return true;
                }
            }
            return false;
        };
        ASSERT_TRUE(Await(isOpened)) << name;
    }

    // Waits until a run has begun with a file and has then worked for a while; the work counts, not the clock.
    void AwaitUnderWay(pid_t child, const std::string& name) {
        AwaitOpened(child, name);
        clockid_t work{};
        ASSERT_EQ(clock_getcpuclockid(child, &work), 0);
        const auto worked = [&] {
            timespec time{};
            clock_gettime(work, &time);
            return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
        };
        const auto before = worked();
        ASSERT_TRUE(Await([&] { return worked() > before + std::chrono::milliseconds(50); })) << name;
    }

    // Sends a signal and waits until it has been received.
    void Interrupt(pid_t child, int signal) {
        constexpr std::string_view Waiting = "ShdPnd:"; // for the whole process
        kill(child, signal);
        const auto isReceived = [&] {
            std::ifstream status("/proc/" + std::to_string(child) + "/status");
            for (std::string line; std::getline(status, line);) {
                if (line.starts_with(Waiting) && line.find_first_not_of("0\t", Waiting.size()) != std::string::npos) {
                    return false;
                }
            }
            return true;
        };
        ASSERT_TRUE(Await(isReceived)) << signal;
    }

    BmpView View(const std::string& name) const { return BmpView(ReadBytes(folder_ / name)); }
};

} // namespace tests
