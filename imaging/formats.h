// The three tables of formats: names to MIME words, the output types offered, the encoders that can be reached.
#pragma once

#include "imaging/gdiplus/flatstream.h"
#include "imaging/outcome.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace lumbrix {

// The output types in the order in which they are offered; a word is also the extension of what is written. "sgl" has
// no format behind it: no encoder answers to it.
inline constexpr std::array<std::string_view, 6> OutputFormat{"bmp", "jpg", "gif", "tiff", "png", "sgl"};

// The MIME word for what stands behind the last dot of a name, or for the whole of a name without one; empty for an
// unknown word. Folders are not set apart. A name ending in ".tmp" counts as JPEG.
std::string MimeTypeForName(std::string_view name);

// The id of the first encoder whose MIME type contains the word, in any letter case, as text with braces; empty where
// there is none. Needs a session.
std::string FindEncoderClsid(std::string_view mimeWord);

// The same, and why there is none; `clsid` stays as it is then.
FlatStatus FindEncoder(std::string_view mimeWord, std::string& clsid);

// The 38 characters of an id, and back; text that is no id becomes 16 zero bytes.
std::string ClsidToText(const Clsid& clsid);
Clsid ClsidFromText(const std::string& text);

// The MIME word of the destination of an operation; empty where either name is blank, or the destination's extension is
// unknown.
std::string MimeWordForOutput(const std::string& source, const std::string& destination);

// Encodes and writes, replacing a file that can be replaced.
FlatStatus SaveImageFile(ImageHandle image, const std::string& name, const Clsid& encoder,
                         const Encoding& encoding = {}, TextEncoding names = TextEncoding::CodePage);

// The same to a stream, where a failure may leave a part of a picture.
FlatStatus SaveImageStream(ImageHandle image, FlatStream* stream, const Clsid& encoder, const Encoding& encoding = {});

// The imaging library's number for a compression: of TIFF "none", "lzw", "deflate", "group4" and "jpeg", of PNG "fast"
// and "small"; 0 for "default". Nothing for any other word, and for one of another format.
std::optional<std::int32_t> CompressionOf(std::string_view word, std::string_view mimeWord);

// The same with the encoder for a MIME word; without one the imaging library gets 16 zero bytes, and refuses.
FlatStatus SaveImageFileAs(ImageHandle image, const std::string& name, std::string_view mimeWord);

// The low byte of each unit until one that is zero; no code page is consulted. Null gives an empty text.
std::string WideToNarrow(const char16_t* text);

} // namespace lumbrix
