// The drawings that are measured.
#pragma once

#include "bench/surface.h"

#include <string>
#include <vector>

namespace bench {

// In milliseconds.
struct Timing {
    double median;
    double worst;
};

struct Pan {
    int x = 0;
    int y = 0;
};

// The positions of the two sliders.
std::vector<double> Angles();
std::vector<double> Stretches();

struct GpImage;

class Workload {
  public:
    // Makes a photograph of 24 megapixels in the folder, and loads it. Ends the process with a message where that
    // fails.
    Workload(const char* library, const std::string& folder);
    ~Workload();
    Workload(const Workload&) = delete;
    Workload& operator=(const Workload&) = delete;

    // Copies of the whole surface, without a drawing.
    Timing Copy();

    // What every drawing takes besides: clearing the surface and showing it.
    Timing ClearAndShow();

    double FirstDraw();

    // Every angle with every stretch: from the clearing of the surface until it is shown.
    Timing Draw(const std::vector<double>& angles, const std::vector<double>& stretches, Pan pan = {});

  private:
    void DrawOnce(double angle, double stretch, Pan pan);

    std::unique_ptr<Surface> surface_;
    GpImage* image_ = nullptr;
};

} // namespace bench
