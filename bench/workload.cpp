// The drawings that are measured.
#include "bench/workload.h"

#include "bench/library.h"
#include "bench/photograph.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>

namespace bench {

namespace {

constexpr std::uint32_t PhotographWidth = 6000;
constexpr std::uint32_t PhotographHeight = 4000;

struct WholePoint {
    std::int32_t x;
    std::int32_t y;
};

// Where the picture's corners lie before anything is moved.
constexpr WholePoint Corners[] = {{0, 0}, {4000, 0}, {0, 2461}};

void Require(bool isFine, const char* what) {
    if (!isFine) {
        std::fprintf(stderr, "canvas: %s\n", what);
        std::exit(1);
    }
}

double MillisecondsOf(const std::function<void()>& work) {
    const auto before = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - before).count();
}

Timing TimingOf(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back()};
}

Timing TimingOfMany(const std::function<void()>& work) {
    std::vector<double> times(101);
    for (double& time : times) {
        time = MillisecondsOf(work);
    }
    return TimingOf(std::move(times));
}

// Ties go to the even neighbour.
std::int32_t Rounded(double value) { return static_cast<std::int32_t>(std::nearbyint(value)); }

WholePoint Moved(WholePoint point, double angle, double stretch, Pan pan) {
    const double radians = angle * 0.0174532925199433;
    const double sine = std::sin(radians);
    const double cosine = std::cos(radians);
    const std::int32_t x = Rounded(point.x * stretch);
    const std::int32_t y = Rounded(point.y * stretch);
    return {Rounded(cosine * x + sine * y) + pan.x, Rounded(cosine * y - sine * x) + pan.y};
}

} // namespace

std::vector<double> Angles() {
    std::vector<double> angles;
    for (int angle = -180; angle <= 180; angle += 7) {
        angles.push_back(angle);
    }
    return angles;
}

std::vector<double> Stretches() {
    std::vector<double> stretches;
    for (int hundredths = 0; hundredths <= 500; hundredths += 5) {
        stretches.push_back(hundredths / 100.0);
    }
    return stretches;
}

Workload::Workload(const char* library, const std::string& folder) {
    Require(OpenLibrary(library), "cannot open the library");
    const struct {
        std::uint32_t version = 1;
        void* callback = nullptr;
        std::int32_t suppressThread = 0;
        std::int32_t suppressCodecs = 0;
    } input;
    std::uintptr_t token = 0;
    Require(Call("GdiplusStartup", &token, &input, static_cast<void*>(nullptr)) == 0, "cannot start the library");
    const std::filesystem::path path = std::filesystem::path(folder) / "photograph.jpg";
    Require(WritePhotograph(path.string(), PhotographWidth, PhotographHeight), "cannot write the photograph");
    Require(Call("GdipLoadImageFromFile", path.u16string().c_str(), &image_) == 0, "cannot load the photograph");
    surface_ = Surface::Make();
    Require(surface_ != nullptr, "cannot make a surface");
}

Workload::~Workload() { Call("GdipDisposeImage", image_); }

Timing Workload::Copy() {
    return TimingOfMany([&] { surface_->Show(); });
}

Timing Workload::ClearAndShow() {
    return TimingOfMany([&] {
        surface_->Clear();
        surface_->Show();
    });
}

double Workload::FirstDraw() {
    return MillisecondsOf([&] { DrawOnce(0, 1, {}); });
}

Timing Workload::Draw(const std::vector<double>& angles, const std::vector<double>& stretches, Pan pan) {
    std::vector<double> times;
    for (const double angle : angles) {
        for (const double stretch : stretches) {
            times.push_back(MillisecondsOf([&] { DrawOnce(angle, stretch, pan); }));
        }
    }
    return TimingOf(times);
}

void Workload::DrawOnce(double angle, double stretch, Pan pan) {
    constexpr std::int32_t Bicubic = 4;
    constexpr std::int32_t HighQuality = 2;
    WholePoint points[3];
    std::transform(std::begin(Corners), std::end(Corners), points,
                   [&](WholePoint point) { return Moved(point, angle, stretch, pan); });
    surface_->Clear();
    GpGraphics* const graphics = surface_->Begin();
    Call("GdipSetInterpolationMode", graphics, Bicubic);
    Call("GdipSetSmoothingMode", graphics, HighQuality);
    Require(Call("GdipDrawImagePointsI", graphics, image_, static_cast<const WholePoint*>(points), std::int32_t{3}) ==
                0,
            "drawing failed");
    Call("GdipDeleteGraphics", graphics);
    surface_->Show();
}

} // namespace bench
