// Calls of the flat interface in any order, with handles of any kind, living or not. The first two bytes say how long
// the program of calls is; what follows it is the file that is loaded.
#include "fuzz/support/entry.h"
#include "fuzz/targets/flat/caller.h"

namespace fuzz {

namespace {

constexpr std::size_t MostCalls = 24;

} // namespace

Caller::Caller(Choices& choices, std::string file) : choices_(choices), file_(std::move(file)) {
    const GdiplusStartupInput input{.gdiplusVersion = 1};
    FlatCall{"GdiplusStartup", &token_, &input, static_cast<GdiplusStartupOutput*>(nullptr)};
}

Caller::~Caller() {
    reinterpret_cast<void (*)(std::uintptr_t)>(tests::FlatFunction("GdiplusShutdown"))(token_);
    for (const MemoryStream& stream : streams_) {
        Require(stream.References() == 0, "no stream is kept behind the last session");
    }
}

void Caller::Call() {
    const std::size_t which = choices_.Below(44);
    if (which < 18) {
        CallOnImage(which);
    } else if (which < 30) {
        CallOnSurface(which - 18);
    } else if (which < 38) {
        CallForText(which - 30);
    } else {
        CallBesides(which - 38);
    }
}

} // namespace fuzz

void fuzz::Take(const std::uint8_t* bytes, std::size_t count) {
    Choices input(bytes, count);
    const std::string program = input.Bytes(input.Of<std::uint16_t>());
    Choices choices(reinterpret_cast<const std::uint8_t*>(program.data()), program.size());
    Caller caller(choices, input.Rest());
    for (std::size_t calls = 0; calls < MostCalls && !choices.AtEnd(); ++calls) {
        caller.Call();
    }
}
