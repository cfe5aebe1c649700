// What is printed behind a run over several files.
#include "cli/report.h"

#include "cli/interrupt.h"
#include "cli/json.h"
#include "cli/system.h"

#include <algorithm>

namespace lumbrix::cli {

namespace {

const char* NameOfFate(Fate fate, RunKind kind) {
    switch (fate) {
    case Fate::Written:
        return kind == RunKind::Dry ? "would be written" : "written";
    case Fate::Skipped:
        return "skipped";
    case Fate::Failed:
        return "failed";
    case Fate::NotReached:
        break;
    }
    return "not reached";
}

void WriteFile(JsonWriter& json, const PlannedFile& file, const FileResult& result, RunKind kind) {
    json.BeginObject();
    json.Key("source");
    json.Text(NameOf(file.source));
    json.Key("target");
    json.Text(NameOf(file.target));
    json.Key("status");
    json.Text(NameOfFate(result.fate, kind));
    if (result.fate == Fate::Written && kind == RunKind::Real) {
        json.Key("width");
        json.Number(result.width);
        json.Key("height");
        json.Number(result.height);
        json.Key("bytes");
        json.Number(static_cast<std::int64_t>(result.bytes));
    }
    if (!result.message.empty()) {
        json.Key("message");
        json.Text(result.message);
    }
    json.EndObject();
}

void WriteCount(JsonWriter& json, const char* name, std::size_t count) {
    json.Key(name);
    json.Number(static_cast<std::int64_t>(count));
}

} // namespace

Counts CountsOf(const Record& record) {
    const auto with = [&](Fate fate) {
        return static_cast<std::size_t>(std::count_if(record.results.begin(), record.results.end(),
                                                      [&](const FileResult& result) { return result.fate == fate; }));
    };
    return {with(Fate::Written), with(Fate::Skipped), with(Fate::Failed) + record.findings.failures.size(),
            record.findings.passedOver, with(Fate::NotReached)};
}

std::string CountsLine(const Counts& counts, RunKind kind) {
    std::string line = std::to_string(counts.written) + (kind == RunKind::Dry ? " would be written, " : " written, ") +
                       std::to_string(counts.skipped) + " skipped, " + std::to_string(counts.failed) + " failed";
    if (counts.passedOver > 0) {
        line += ", " + std::to_string(counts.passedOver) + " passed over";
    }
    if (WasInterrupted()) {
        line += ", " + std::to_string(counts.notReached) + " not reached";
    }
    return line + "\n";
}

std::string JsonOf(const Record& record, RunKind kind) {
    JsonWriter json;
    json.BeginObject();
    json.Key("files");
    json.BeginArray();
    for (std::size_t i = 0; i < record.plan.size(); ++i) {
        WriteFile(json, record.plan[i], record.results[i], kind);
    }
    json.EndArray();
    json.Key("failures");
    json.BeginArray();
    for (const std::string& failure : record.findings.failures) {
        json.Text(failure);
    }
    json.EndArray();
    const Counts counts = CountsOf(record);
    WriteCount(json, kind == RunKind::Dry ? "would_be_written" : "written", counts.written);
    WriteCount(json, "skipped", counts.skipped);
    WriteCount(json, "failed", counts.failed);
    WriteCount(json, "passed_over", counts.passedOver);
    WriteCount(json, "not_reached", counts.notReached);
    json.EndObject();
    return json.Line();
}

} // namespace lumbrix::cli
