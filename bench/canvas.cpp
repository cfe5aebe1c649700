// Measures how long a photograph takes to be drawn through three points, as a window does at every move of a slider.
//
// canvas LIBRARY FOLDER   (the imaging library by its path, a folder for the photograph that is made)
#include "bench/surface.h"
#include "bench/workload.h"

#include <cstdio>

namespace {

using namespace bench;

void Report(const char* name, const Timing& timing, double copy) {
    std::printf("%-34s median %7.2f ms, worst %7.2f ms; in copies %6.2f and %6.2f\n", name, timing.median, timing.worst,
                timing.median / copy, timing.worst / copy);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: canvas LIBRARY FOLDER\n");
        return 2;
    }
    Workload work(arguments[1], arguments[2]);
    const double copy = work.Copy().median;
    std::printf("plain copy of %d by %d pixels: %.3f ms\n", Surface::Width, Surface::Height, copy);
    Report("cleared and shown, nothing drawn", work.ClearAndShow(), copy);
    std::printf("first draw: %.0f ms\n", work.FirstDraw());
    Report("rotation at stretch 1", work.Draw(Angles(), {1}), copy);
    Report("stretch at 0 degrees", work.Draw({0}, Stretches()), copy);
    Report("stretch at 33 degrees", work.Draw({33}, Stretches()), copy);
    Report("panned, stretch 1 at -33 degrees", work.Draw({-33}, {1, 1, 1, 1, 1}, {0, -900}), copy);
    return 0;
}
