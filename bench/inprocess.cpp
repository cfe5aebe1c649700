// Calls our library in a process that stays warm: library_bench convert|height=N|thumb=N|rotate SOURCE TARGET
//
// For every line on standard input the work is done once, and a line with the seconds that it took is printed. Where
// SOURCE is a folder it is done on all of its files, on as many threads as there are processors, into folder TARGET.
#include "imaging/exports/lumbrix.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Job {
    fs::path source;
    fs::path target;
};

struct Work {
    std::string_view verb;
    std::int32_t number = 0; // behind the verb's equals sign
};

Work WorkFrom(std::string_view text) {
    Work work{.verb = text.substr(0, text.find('='))};
    if (work.verb.size() < text.size()) {
        std::from_chars(text.data() + work.verb.size() + 1, text.data() + text.size(), work.number);
    }
    return work;
}

std::int32_t Do(const Work& work, const Job& job) {
    const std::string source = job.source.string(), target = job.target.string();
    lumbrix_job told = LUMBRIX_JOB_INIT;
    std::int32_t status = LUMBRIX_INVALID_PARAMETER;
    if (work.verb == "convert") {
        status = lumbrix_convert(source.c_str(), target.c_str(), &told);
    } else if (work.verb == "height") {
        status = lumbrix_resize(source.c_str(), target.c_str(), work.number, &told);
    } else if (work.verb == "thumb") {
        status = lumbrix_thumb(source.c_str(), target.c_str(), work.number, &told);
    } else if (work.verb == "rotate") {
        const lumbrix_turn turn{.size = sizeof turn, .angle = 90};
        status = lumbrix_rotate(source.c_str(), target.c_str(), &turn, &told);
    }
    if (status != LUMBRIX_OK) {
        std::fprintf(stderr, "library_bench: %s\n", told.message);
    }
    return status;
}

std::vector<Job> JobsFrom(const fs::path& source, const fs::path& target) {
    if (!fs::is_directory(source)) {
        return {{source, target}};
    }
    std::vector<Job> jobs;
    for (const fs::directory_entry& entry : fs::directory_iterator(source)) {
        jobs.push_back({entry.path(), target / entry.path().filename()});
    }
    return jobs;
}

// False where a job failed.
bool DoAll(const Work& work, const std::vector<Job>& jobs) {
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> isFine = true;
    const auto doSome = [&] {
        for (std::size_t i = next++; i < jobs.size() && isFine; i = next++) {
            if (Do(work, jobs[i]) != LUMBRIX_OK) {
                isFine = false;
            }
        }
    };
    std::vector<std::jthread> others;
    while (others.size() + 1 < std::min<std::size_t>(jobs.size(), std::thread::hardware_concurrency())) {
        others.emplace_back(doSome);
    }
    doSome();
    others.clear();
    return isFine;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::fprintf(stderr, "usage: library_bench convert|height=N|thumb=N|rotate SOURCE TARGET\n");
        return 2;
    }
    LoadImagingLibrary();
    const Work work = WorkFrom(arguments[1]);
    const std::vector<Job> jobs = JobsFrom(arguments[2], arguments[3]);
    bool isFine = true;
    for (int character = std::getchar(); isFine && character != EOF; character = std::getchar()) {
        if (character == '\n') {
            const auto before = std::chrono::steady_clock::now();
            isFine = DoAll(work, jobs);
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
            if (isFine) {
                std::printf("%.6f\n", taken.count());
                std::fflush(stdout);
            }
        }
    }
    UnloadImagingLibrary();
    return isFine ? 0 : 1;
}
