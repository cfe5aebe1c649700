// Chooses the colours of a palette for a picture whose colours were counted.
#include "imaginglibrary/operations/palettechoice.h"

#include "imaginglibrary/operations/nearestcolor.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace imaginglibrary {

namespace {

constexpr int RefiningRounds = 4;

std::uint8_t Channel(Color color, unsigned axis) { return static_cast<std::uint8_t>(color >> (8 * axis)); }

// A cell with its mean at hand, which places it in the cube.
struct Point {
    ColorCell cell;
    Color mean;
};

// Sums over some pixels: how many, and their channels.
struct Moments {
    double pixels = 0;
    double red = 0;
    double green = 0;
    double blue = 0;

    void Add(const ColorCell& cell) {
        pixels += cell.pixels;
        red += static_cast<double>(cell.red);
        green += static_cast<double>(cell.green);
        blue += static_cast<double>(cell.blue);
    }

    void Add(const Moments& other) {
        pixels += other.pixels;
        red += other.red;
        green += other.green;
        blue += other.blue;
    }

    Moments Without(const Moments& part) const {
        return {pixels - part.pixels, red - part.red, green - part.green, blue - part.blue};
    }

    // What replacing the pixels by their mean leaves over of their squared length; the more, the less error.
    double Kept() const { return pixels > 0 ? (red * red + green * green + blue * blue) / pixels : 0; }

    Color Mean() const {
        const auto round = [&](double sum) { return static_cast<std::uint8_t>(sum / pixels + 0.5); };
        return MakeColor(round(red), round(green), round(blue));
    }
};

using PointRange = std::vector<Point>::iterator;

// Some points, and the cut through them that helps most: points up to and with `threshold` on `axis` go left.
struct Box {
    PointRange begin;
    PointRange end;
    Moments sums;
    double gain = 0; // of the cut; 0 where no cut helps
    unsigned axis = 0;
    unsigned threshold = 0;
};

void FindBestCut(Box& box) {
    std::array<std::array<Moments, 256>, 3> bins{};
    for (PointRange point = box.begin; point != box.end; ++point) {
        for (unsigned axis = 0; axis < 3; ++axis) {
            bins[axis][Channel(point->mean, axis)].Add(point->cell);
        }
    }
    const double whole = box.sums.Kept();
    for (unsigned axis = 0; axis < 3; ++axis) {
        Moments left;
        for (unsigned threshold = 0; threshold < 255; ++threshold) {
            if (bins[axis][threshold].pixels == 0) {
                continue;
            }
            left.Add(bins[axis][threshold]);
            const Moments right = box.sums.Without(left);
            // Less than half a pixel is what rounding leaves of none.
            const double gain = right.pixels < 0.5 ? 0 : left.Kept() + right.Kept() - whole;
            if (gain > box.gain) {
                box.gain = gain;
                box.axis = axis;
                box.threshold = threshold;
            }
        }
    }
}

Box MakeBox(PointRange begin, PointRange end) {
    Box box{.begin = begin, .end = end, .sums = {}};
    for (PointRange point = begin; point != end; ++point) {
        box.sums.Add(point->cell);
    }
    FindBestCut(box);
    return box;
}

std::vector<Box> CutIntoBoxes(std::vector<Point>& points, unsigned maximum) {
    std::vector<Box> boxes{MakeBox(points.begin(), points.end())};
    while (boxes.size() < maximum) {
        const auto best =
            std::max_element(boxes.begin(), boxes.end(), [](const Box& a, const Box& b) { return a.gain < b.gain; });
        if (best->gain <= 0) {
            break;
        }
        const Box box = *best;
        const PointRange middle = std::partition(
            box.begin, box.end, [&](const Point& point) { return Channel(point.mean, box.axis) <= box.threshold; });
        *best = MakeBox(box.begin, middle);
        boxes.push_back(MakeBox(middle, box.end));
    }
    return boxes;
}

// One round of k-means: every entry moves to the mean of the points that it is nearest to.
void Refine(Palette& palette, const std::vector<Point>& points) {
    NearestColor nearest(palette);
    std::vector<Moments> sums(palette.size());
    for (const Point& point : points) {
        sums[nearest.Find(RedOf(point.mean), GreenOf(point.mean), BlueOf(point.mean))].Add(point.cell);
    }
    for (std::size_t i = 0; i < palette.size(); ++i) {
        if (sums[i].pixels > 0) {
            palette[i] = sums[i].Mean();
        }
    }
}

} // namespace

Palette ChoosePalette(std::vector<ColorCell> cells, unsigned maximum) {
    std::vector<Point> points;
    points.reserve(cells.size());
    std::transform(cells.begin(), cells.end(), std::back_inserter(points), [](const ColorCell& cell) {
        return Point{cell, cell.Mean()};
    });
    Palette palette;
    if (points.size() <= maximum) {
        std::transform(points.begin(), points.end(), std::back_inserter(palette),
                       [](const Point& point) { return point.mean; });
        return palette;
    }
    const std::vector<Box> boxes = CutIntoBoxes(points, maximum);
    std::transform(boxes.begin(), boxes.end(), std::back_inserter(palette),
                   [](const Box& box) { return box.sums.Mean(); });
    for (int round = 0; round < RefiningRounds; ++round) {
        Refine(palette, points);
    }
    return palette;
}

} // namespace imaginglibrary
