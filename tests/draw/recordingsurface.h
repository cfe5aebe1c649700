// A surface that writes down what is done to it, in order.
#pragma once

#include "draw/surface.h"

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace tests {

// Colours are written as blue, green and red in hexadecimal.
class RecordingSurface : public lumbrix::Surface {
  public:
    void TakeMouse() override { calls.push_back("take mouse"); }
    void ReleaseMouse() override { calls.push_back("release mouse"); }
    void Attach(lumbrix::Painting painting) override {
        calls.push_back(painting == lumbrix::Painting::HeldBack ? "hold back" : "paint at once");
    }
    void SetMix(lumbrix::RasterMix mix) override { calls.push_back("mix " + std::to_string(static_cast<int>(mix))); }
    void MoveTo(lumbrix::PixelPoint place) override { calls.push_back("from " + At(place)); }
    void LineTo(lumbrix::PixelPoint place, lumbrix::WindowColor color) override {
        calls.push_back("line to " + At(place) + " in " + Hex(color));
    }
    void PutShape(const lumbrix::Shape& shape) override {
        const bool isEllipse = shape.corner == 0x80000000;
        calls.push_back("shape " + At(shape.from) + " to " + At(shape.to) + " corner " +
                        (isEllipse ? "ellipse" : std::to_string(shape.corner)) + " in " + Hex(shape.penColor) +
                        " fill " + (shape.fillColor == -2 ? "none" : Hex(static_cast<std::uint32_t>(shape.fillColor))) +
                        " style " + std::to_string(shape.fillStyle));
    }
    lumbrix::WindowColor PixelAt(lumbrix::PixelPoint place) override {
        calls.push_back("look at " + At(place));
        return pixel;
    }
    void FillArea(lumbrix::PixelPoint place, lumbrix::WindowColor area, const lumbrix::BrushChoice& brush) override {
        calls.push_back("fill " + Hex(area) + " at " + At(place) + " with " + Hex(brush.color) +
                        (brush.kind == lumbrix::BrushKind::Hatched ? " hatch " + std::to_string(brush.hatch) : ""));
    }
    void PutText(lumbrix::PixelPoint place, const std::string& line, lumbrix::WindowColor color) override {
        calls.push_back("text '" + line + "' at " + At(place) + " in " + Hex(color));
    }
    // Long lines are higher, so that it shows which one was measured.
    std::int32_t HeightOfLine(const std::string& line) override { return 10 + static_cast<std::int32_t>(line.size()); }
    void ClearWith(lumbrix::WindowColor color) override { calls.push_back("clear with " + Hex(color)); }
    void Repaint() override { calls.push_back("repaint"); }
    void TakeSnapshot() override { calls.push_back("snapshot"); }
    void ShowStatus(const std::string& text) override { calls.push_back("status " + text); }
    void PostTextCommand() override { calls.push_back("post text"); }
    void EnterText(std::string& text) override {
        calls.push_back("enter text, had '" + text + "'");
        if (isTextEntered) {
            text = typedText;
        }
    }

    // What has been done since the last time.
    std::vector<std::string> Taken() { return std::exchange(calls, {}); }

    lumbrix::WindowColor pixel = 0xABCDEF;
    bool isTextEntered = true;
    std::string typedText;
    std::vector<std::string> calls;

  private:
    static std::string At(lumbrix::PixelPoint place) { return std::to_string(place.x) + "," + std::to_string(place.y); }
    static std::string Hex(std::uint32_t color) {
        char text[9];
        std::snprintf(text, sizeof text, "%06X", static_cast<unsigned>(color));
        return text;
    }
};

} // namespace tests
