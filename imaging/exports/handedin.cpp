// What a caller's job has in the place of files: an input to read from, an output to write to.
#include "imaging/exports/handedin.h"

#include "imaging/blank.h"
#include "imaging/exports/texts.h"

#include <algorithm>
#include <cstdlib>

namespace lumbrix::exports {

namespace {

constexpr std::size_t WrittenAtOnce = std::size_t{1} << 20;

std::string NameOr(const char* name, const char* nameless) {
    std::string text = Text(name);
    return IsBlank(text) ? nameless : text;
}

bool HandOverTo(const lumbrix_output& output, const GrowingMemory& bytes) {
    for (std::size_t done = 0; done < bytes.Size();) {
        const std::size_t step = std::min(bytes.Size() - done, WrittenAtOnce);
        if (output.write(output.context, bytes.Data() + done, static_cast<std::uint32_t>(step)) == 0) {
            return false;
        }
        done += step;
    }
    return true;
}

bool Keep(lumbrix_output& output, GrowingMemory& bytes) {
    const std::size_t length = bytes.Size();
    void* const data = bytes.Release();
    if (data == nullptr) {
        return false;
    }
    std::free(output.data);
    output.data = data;
    output.length = length;
    return true;
}

} // namespace

TextEncoding EncodingOf(const lumbrix_job* job) {
    return LaterField(job, &lumbrix_job::utf8) != 0 ? TextEncoding::Utf8 : TextEncoding::CodePage;
}

Subject SubjectOf(const char* source, const char* destination, const lumbrix_job* job) {
    Subject subject;
    subject.isSourceFile = LaterField(job, &lumbrix_job::input) == nullptr;
    subject.isDestinationFile = LaterField(job, &lumbrix_job::output) == nullptr;
    subject.source = subject.isSourceFile ? Text(source) : NameOr(source, "the input");
    subject.destination = subject.isDestinationFile ? Text(destination) : NameOr(destination, "the output");
    subject.encoding = EncodingOf(job);
    return subject;
}

StatusValue TakeInput(const lumbrix_job* job, GrowingMemory& gathered, Wishes& wishes) {
    const lumbrix_input* input = LaterField(job, &lumbrix_job::input);
    if (input == nullptr) {
        return Done;
    }
    if (input->size < sizeof *input || (input->read == nullptr && input->data == nullptr && input->length != 0)) {
        return InvalidParameter;
    }
    if (input->read == nullptr) {
        wishes.input = MemoryBytes{input->data, input->length};
        return Done;
    }
    const StatusValue status = GatherBytes(
        [input](void* buffer, std::uint32_t count) { return input->read(input->context, buffer, count); }, gathered);
    wishes.input = gathered.Bytes();
    return status;
}

StatusValue TakeOutput(const lumbrix_job* job, Wishes& wishes) {
    lumbrix_output* output = LaterField(job, &lumbrix_job::output);
    if (output == nullptr) {
        return Done;
    }
    if (output->size < sizeof *output) {
        return InvalidParameter;
    }
    wishes.output = [output](GrowingMemory& bytes) {
        return output->write != nullptr ? HandOverTo(*output, bytes) : Keep(*output, bytes);
    };
    return Done;
}

std::string WhyNotHandedIn(StatusValue status, const Subject& subject) {
    switch (status) {
    case InvalidParameter:
        return "the struct of the input or the output is not as it must be";
    case OutOfMemory:
        return "cannot read " + subject.source + ": it is too large to be held in memory";
    default:
        return "cannot read " + subject.source + ": its callback failed";
    }
}

} // namespace lumbrix::exports
