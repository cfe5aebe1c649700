// The two actions of the main window that open the annotate and crop window, again and again if need be.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace lumbrix {

// What the actions need of the main window.
class ActionDesk {
  public:
    virtual ~ActionDesk() = default;

    virtual std::string SourceFile() const = 0;
    virtual std::string Target() const = 0;

    // The size of the source in pixels, which the window's label shows from now on. Of a picture that cannot be read
    // the two numbers stay.
    virtual void RefreshSizeLabel(std::int32_t* width, std::int32_t* height) = 0;

    // Opens a window and comes back when it has ended. Sizes are those of the stage's source.
    virtual void ShowAnnotateWindow(std::size_t stage, std::int32_t width, std::int32_t height,
                                    const std::string& title) = 0;
    virtual void ShowCropDimensions() = 0;
};

// Annotates the source file, stage by stage for as long as Keep is asked for, and copies what the last stage has made
// over the target: nothing, where nothing was placed in it, which leaves an empty file. The content is a JPEG whatever
// the target's extension. No question is asked, and failures pass in silence. All temporary files are deleted.
void RunAnnotateAction(ActionDesk& desk);

// Lets the user mark a rectangle, writes that part of the source as the target and shows it. No question is asked, and
// failures pass in silence. Without a source file the rectangle for batches is asked for instead. The temporary files
// stay in the temporary folder.
void RunCropAction(ActionDesk& desk);

} // namespace lumbrix
