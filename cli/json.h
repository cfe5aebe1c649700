// Results as JSON, for other programs to read.
#pragma once

#include <cstdint>
#include <string>

namespace lumbrix::cli {

// The text in UTF-8. What is none in it, such as a byte of a file's name, becomes U+FFFD, the replacement character.
std::string ValidUtf8(const std::string& text);

// Writes one value. Keys and values of an object alternate; whoever calls keeps the order and closes what was opened.
class JsonWriter {
  public:
    void BeginObject() { Open('{'); }
    void EndObject() { Close('}'); }
    void BeginArray() { Open('['); }
    void EndArray() { Close(']'); }

    void Key(const char* name);

    // A text in the system's code page.
    void Text(const std::string& text);
    void Number(std::int64_t number);

    // The finished value as a line.
    std::string Line() const { return json_ + "\n"; }

  private:
    void Separate();
    void Open(char bracket);
    void Close(char bracket);
    void Quote(const std::string& utf8);

    std::string json_;
    bool needsComma_ = false;
};

} // namespace lumbrix::cli
