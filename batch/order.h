// What the user has ordered: the main window's controls as they stand at the moment of asking.
#pragma once

#include <cstddef>
#include <string>

namespace lumbrix {

// What goes beyond this of a file's path is left out where one file is worked on.
inline constexpr std::size_t LongestPath = 259;

class Order {
  public:
    virtual ~Order() = default;

    virtual std::string SourceFile() const = 0;
    virtual std::string SourceFolder() const = 0;
    virtual std::string Target() const = 0; // a file, or a folder for a batch
    virtual std::string HeightText() const = 0;
    virtual bool IsSmallerChecked() const = 0;
    virtual bool IsCropChecked() const = 0;
    virtual std::string SelectedOutputWord() const = 0;
};

} // namespace lumbrix
