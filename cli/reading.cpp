// The commands on what a file says about its picture: size, properties and date.
#include "cli/reading.h"

#include "cli/batchoptions.h"
#include "cli/job.h"
#include "cli/json.h"
#include "cli/system.h"
#include "cli/text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

namespace lumbrix::cli {

namespace {

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + separator.size();
    }
    return parts;
}

// A property of a kind that is not shown has a line with its name alone.
std::vector<std::string> LinesWithValues(const std::string& list) {
    std::vector<std::string> lines = Split(list, "\r\n");
    std::erase_if(lines, [](const std::string& line) {
        const std::size_t nameEnd = line.find('\t');
        return nameEnd == std::string::npos || line.find_first_not_of('\t', nameEnd) == std::string::npos;
    });
    return lines;
}

// These are texts even where they look like numbers, as a camera's type may.
bool IsTextProperty(const std::string& name) {
    constexpr const char* Names[] = {"DateTime",      "Camera Manufacturer", "Camera Type", "Original DateTime",
                                     "Data DateTime", "Image Title",         "Artist"};
    return std::find(std::begin(Names), std::end(Names), name) != std::end(Names);
}

std::optional<std::int64_t> NumberIn(const std::string& text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && std::to_string(number) == text ? std::optional(number) : std::nullopt;
}

void WriteValue(JsonWriter& json, const std::string& name, const std::string& value) {
    const auto number = NumberIn(value);
    if (number && !IsTextProperty(name)) {
        json.Number(*number);
    } else {
        json.Text(value);
    }
}

void WriteProperty(JsonWriter& json, const std::string& line) {
    const std::vector<std::string> words = Split(line, "\t");
    json.BeginObject();
    json.Key("name");
    json.Text(words[0]);
    json.Key("value");
    if (words.size() == 2) {
        WriteValue(json, words[0], words[1]);
    } else {
        json.BeginArray();
        for (std::size_t i = 1; i < words.size(); ++i) {
            WriteValue(json, words[0], words[i]);
        }
        json.EndArray();
    }
    json.EndObject();
}

std::string PropertiesAsJson(const std::string& file, const std::vector<std::string>& lines) {
    JsonWriter json;
    json.BeginObject();
    json.Key("file");
    json.Text(file);
    json.Key("properties");
    json.BeginArray();
    for (const std::string& line : lines) {
        WriteProperty(json, line);
    }
    json.EndArray();
    json.EndObject();
    return json.Line();
}

std::string PropertiesAsLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += Printable(line) + "\n";
    }
    return text;
}

// What was read of a file's size.
struct SizeOfFile {
    std::string file;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::string failure; // empty where it was read
};

SizeOfFile ReadSize(const std::string& file) {
    Job job;
    try {
        const std::string source = job.From(file);
        job.Expect(lumbrix_read_size(source.c_str(), job.Get()));
        return {file, job.Width(), job.Height(), ""};
    } catch (const Failure& failure) {
        return {file, 0, 0, failure.text};
    }
}

void PrintSize(const SizeOfFile& size, bool isOneOfSeveral) {
    const std::string name = isOneOfSeveral ? "\t" + Printable(size.file) : "";
    std::printf("%d x %d%s\n", static_cast<int>(size.width), static_cast<int>(size.height), name.c_str());
}

void WriteSize(JsonWriter& json, const SizeOfFile& size) {
    json.BeginObject();
    json.Key("file");
    json.Text(size.file);
    if (size.failure.empty()) {
        json.Key("width");
        json.Number(size.width);
        json.Key("height");
        json.Number(size.height);
    } else {
        json.Key("message");
        json.Text(size.failure);
    }
    json.EndObject();
}

std::vector<std::string> FilesFrom(const Arguments& arguments) {
    std::vector<std::string> files;
    for (std::size_t i = 0; i < arguments.Count(); ++i) {
        RequireName(arguments[i]);
        const std::vector<std::string> meant = FilesMeant(arguments[i]);
        files.insert(files.end(), meant.begin(), meant.end());
    }
    return files;
}

int PrintDate(const std::string& file) {
    LibraryText date;
    Job job;
    const std::string source = job.From(file);
    job.Expect(lumbrix_read_date(source.c_str(), date.Place(), job.Get()));
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
    if (IsStandardStream(file)) {
        throw WrongUsage{"the copy with a date lies beside its source, which must be a file"};
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
    const std::vector<std::string> files = FilesFrom(arguments);
    const bool isJson = arguments.Has(JsonOption.name);
    int status = 0;
    JsonWriter json;
    json.BeginArray();
    for (const std::string& file : files) {
        const SizeOfFile size = ReadSize(file);
        WriteSize(json, size);
        if (!size.failure.empty()) {
            std::fputs(MessageLine(size.failure).c_str(), stderr);
            status = 1;
        } else if (!isJson) {
            PrintSize(size, files.size() > 1);
        }
    }
    json.EndArray();
    std::fputs(isJson ? json.Line().c_str() : "", stdout);
    return status;
}

int RunProperties(const Arguments& arguments) {
    const std::string& file = arguments[0];
    RequireName(file);
    LibraryText list;
    Job job;
    const std::string source = job.From(file);
    job.Expect(lumbrix_read_properties(source.c_str(), list.Place(), job.Get()));
    const std::vector<std::string> lines = LinesWithValues(list.Text());
    const std::string text = arguments.Has(JsonOption.name) ? PropertiesAsJson(file, lines) : PropertiesAsLines(lines);
    std::fputs(text.c_str(), stdout);
    return 0;
}

int RunDate(const Arguments& arguments) {
    RequireName(arguments[0]);
    return arguments.Count() == 1 ? PrintDate(arguments[0]) : PrintStampedCopy(arguments);
}

} // namespace lumbrix::cli
