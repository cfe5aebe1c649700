// The commands on what a file says about its picture: size, properties and date.
#include "cli/reading.h"

#include "cli/job.h"
#include "cli/text.h"

#include <algorithm>
#include <cstdio>

namespace lumbrix::cli {

namespace {

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

int PrintDate(const std::string& file) {
    LibraryText date;
    Job job;
    job.Expect(lumbrix_read_date(file.c_str(), date.Place(), job.Get()));
    std::printf("%s\n", Printable(date.Text()).c_str());
    return 0;
}

// Files whose names differ behind the first dot have one stamped copy, so the older one is kept.
int PrintStampedCopy(const Arguments& arguments) {
    const std::string& file = arguments[0];
    const std::string& date = arguments[1];
    if (date.empty()) {
        throw WrongUsage{"an empty date was given"};
    }
    const std::string target = LibraryText(lumbrix_stamped_name(file.c_str())).Text();
    Job job(arguments);
    job.KeepExisting();
    job.ExpectOrWarn(lumbrix_date_stamp(file.c_str(), target.c_str(), date.c_str(), job.Get()));
    std::printf("%s\n", Printable(target).c_str());
    return 0;
}

} // namespace

int RunSize(const Arguments& arguments) {
    RequireName(arguments[0]);
    Job job;
    job.Expect(lumbrix_read_size(arguments[0].c_str(), job.Get()));
    std::printf("%d x %d\n", static_cast<int>(job.Width()), static_cast<int>(job.Height()));
    return 0;
}

int RunProperties(const Arguments& arguments) {
    RequireName(arguments[0]);
    LibraryText list;
    Job job;
    job.Expect(lumbrix_read_properties(arguments[0].c_str(), list.Place(), job.Get()));
    PrintProperties(list.Text());
    return 0;
}

int RunDate(const Arguments& arguments) {
    RequireName(arguments[0]);
    return arguments.Count() == 1 ? PrintDate(arguments[0]) : PrintStampedCopy(arguments);
}

} // namespace lumbrix::cli
