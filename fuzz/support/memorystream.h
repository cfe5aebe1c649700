// A stream of the component model over bytes in memory.
#pragma once

#include "imaginglibrary/files/stream.h"

#include <string>

namespace fuzz {

// Counts the references to it; it must outlive them all.
class MemoryStream : public imaginglibrary::Stream {
  public:
    explicit MemoryStream(std::string bytes = {});

    const std::string& Bytes() const { return bytes_; }
    std::uint32_t References() const { return references_; }

  private:
    static imaginglibrary::StreamResult Read(Stream* stream, void* buffer, std::uint32_t count, std::uint32_t* read);
    static imaginglibrary::StreamResult Write(Stream* stream, const void* bytes, std::uint32_t count,
                                              std::uint32_t* written);
    static imaginglibrary::StreamResult Seek(Stream* stream, std::int64_t move, imaginglibrary::SeekOrigin origin,
                                             std::uint64_t* position);
    static std::uint32_t AddReference(Stream* stream);
    static std::uint32_t Release(Stream* stream);

    static const imaginglibrary::StreamFunctions Functions;

    std::string bytes_;
    std::size_t position_ = 0;
    std::uint32_t references_ = 0;
};

} // namespace fuzz
