// A file that repeats some bytes as often as wanted, and takes no memory for that.
#pragma once

#include "imaginglibrary/files/inputfile.h"

#include <memory>
#include <string>

namespace tests {

// What it consists of; the bytes are made when they are read.
struct RepeatedFile {
    std::string head;
    std::string repeated = {};
    std::size_t times = 0;
    std::string tail = {};

    std::shared_ptr<const imaginglibrary::InputFile> Open() const;
};

class RepeatedInput : public imaginglibrary::InputFile {
  public:
    explicit RepeatedInput(RepeatedFile parts) : parts_(std::move(parts)) {
        constexpr std::size_t SeveralBytes = 65536;
        for (std::size_t times = 0; times < parts_.times && several_.size() < SeveralBytes; ++times) {
            several_ += parts_.repeated;
        }
    }

    std::uint64_t Size() const override { return TailAt() + parts_.tail.size(); }

    imaginglibrary::Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        auto* to = static_cast<char*>(buffer);
        std::size_t done = 0;
        while (done < count && offset + done < Size()) {
            const std::string_view part = PartAt(offset + done);
            done += part.copy(to + done, count - done);
        }
        return done;
    }

  private:
    std::uint64_t TailAt() const { return parts_.head.size() + std::uint64_t{parts_.repeated.size()} * parts_.times; }

    // From an offset to the end of what stands in one piece there.
    std::string_view PartAt(std::uint64_t offset) const {
        if (offset < parts_.head.size()) {
            return std::string_view(parts_.head).substr(static_cast<std::size_t>(offset));
        }
        if (offset >= TailAt()) {
            return std::string_view(parts_.tail).substr(static_cast<std::size_t>(offset - TailAt()));
        }
        const std::uint64_t at = (offset - parts_.head.size()) % parts_.repeated.size();
        return std::string_view(several_).substr(static_cast<std::size_t>(at),
                                                 static_cast<std::size_t>(TailAt() - offset));
    }

    RepeatedFile parts_;
    std::string several_; // repetitions, so that many are read at once
};

inline std::shared_ptr<const imaginglibrary::InputFile> RepeatedFile::Open() const {
    return std::make_shared<RepeatedInput>(*this);
}

} // namespace tests
