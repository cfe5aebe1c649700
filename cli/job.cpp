// One operation of the engine, as the command line orders it and hears of it.
#include "cli/job.h"

#include "base/lettercase.h"
#include "cli/interrupt.h"
#include "cli/numbers.h"
#include "cli/progress.h"
#include "cli/sizing.h"
#include "cli/system.h"
#include "cli/text.h"

#include <cstdio>

namespace lumbrix::cli {

namespace {

constexpr std::int32_t HighestQuality = 100;
constexpr const char* Compressions[] = {"default", "fast", "small", "none", "lzw", "deflate", "group4", "jpeg"};

// The word that a job can point to for good.
const char* CompressionFrom(const std::string& text) {
    for (const char* word : Compressions) {
        if (LowerCase(text) == word) {
            return word;
        }
    }
    throw WrongUsage{"unknown compression '" + text + "': use " + CompressionOption.purpose};
}

bool TurnsUpright(const Arguments& arguments, Upright upright) {
    const bool isAsked = arguments.Has(AutoOrientOption.name);
    const bool isRefused = arguments.Has(NoAutoOrientOption.name);
    if (isAsked && isRefused) {
        throw WrongUsage{"use either --auto-orient or --no-auto-orient"};
    }
    // Without metadata nothing tells any more how the picture is to be shown.
    return isAsked || (!isRefused && (upright == Upright::Usually || arguments.Has(StripOption.name)));
}

std::int32_t LUMBRIX_CALL GoOnUnlessStopped(void* progress, std::uint32_t rowsDone, std::uint32_t rows) {
    if (progress != nullptr) {
        static_cast<Progress*>(progress)->Rows(rowsDone, rows);
    }
    return MustStop() ? 0 : 1;
}

std::int32_t LUMBRIX_CALL ReadStandardInput(void* /*context*/, void* buffer, std::uint32_t count) {
    const std::size_t read = std::fread(buffer, 1, count, stdin);
    return read == 0 && std::ferror(stdin) != 0 ? -1 : static_cast<std::int32_t>(read);
}

std::int32_t LUMBRIX_CALL WriteStandardOutput(void* bytesWritten, const void* bytes, std::uint32_t count) {
    *static_cast<std::uintmax_t*>(bytesWritten) += count;
    return std::fwrite(bytes, 1, count, stdout) == count && std::fflush(stdout) == 0 ? 1 : 0;
}

} // namespace

void RequireName(const std::string& file) {
    if (file.find_first_not_of(' ') == std::string::npos) {
        throw WrongUsage{"an empty file name was given"};
    }
}

Job::Job() { job_.progress = GoOnUnlessStopped; }

Job::Job(const Arguments& arguments, Upright upright) : Job() {
    const auto flag = [&](const Option& option) { return arguments.Has(option.name) ? 1 : 0; };
    job_.strict = flag(StrictOption);
    job_.only_shrink = flag(OnlyShrinkOption);
    job_.strip = flag(StripOption);
    job_.keep_profile = flag(KeepProfileOption);
    job_.auto_orient = TurnsUpright(arguments, upright) ? 1 : 0;
    if (const auto color = arguments.ValueOf(BackgroundOption.name)) {
        ColorFrom(*color);
        background_ = *color;
    }
    if (const auto quality = arguments.ValueOf(QualityOption.name)) {
        job_.quality = WholeNumber(*quality, "quality", 1, HighestQuality);
    }
    if (const auto word = arguments.ValueOf(CompressionOption.name)) {
        job_.compression = CompressionFrom(*word);
    }
}

std::string Job::From(const std::string& source) {
    readsStandardInput_ = IsStandardStream(source);
    if (readsStandardInput_) {
        MakeStandardStreamsBinary();
    }
    return readsStandardInput_ ? "the standard input" : source;
}

std::string Job::To(const std::string& target) {
    writesStandardOutput_ = IsStandardStream(target);
    if (writesStandardOutput_) {
        MakeStandardStreamsBinary();
    }
    return writesStandardOutput_ ? "the standard output" : target;
}

lumbrix_job* Job::Get() {
    input_.read = ReadStandardInput;
    output_.write = WriteStandardOutput;
    output_.context = &bytesWritten_;
    job_.input = readsStandardInput_ ? &input_ : nullptr;
    job_.output = writesStandardOutput_ ? &output_ : nullptr;
    job_.background = background_.empty() ? nullptr : background_.c_str();
    return &job_;
}

void Job::Expect(std::int32_t status) const {
    if (status == LUMBRIX_ABORTED || (status != LUMBRIX_OK && MustStop())) {
        throw Stopped{};
    }
    if (status != LUMBRIX_OK) {
        throw Failure{job_.message};
    }
}

std::string Job::Warning() const { return job_.damaged != 0 ? std::string("warning: ") + job_.message : ""; }

void Job::ExpectOrWarn(std::int32_t status) const {
    Expect(status);
    if (const std::string warning = Warning(); !warning.empty()) {
        std::fputs(MessageLine(warning).c_str(), stderr);
    }
}

} // namespace lumbrix::cli
