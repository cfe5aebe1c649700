// How much of every pixel lies inside an outline.
#include "imaginglibrary/operations/coverage.h"

#include <algorithm>

namespace imaginglibrary {

namespace {

// Sums of one row: entry i holds how much the coverage of pixel i differs from that of pixel i - 1.
class CoverageRow {
  public:
    explicit CoverageRow(std::size_t width) : differences_(width + 1) {}

    // The part of an edge within this row, from x0 to x1 (in pixels from the row's left end), `height` high, negative
    // where the edge runs upwards.
    void AddPiece(double x0, double x1, double height) {
        if (x0 > x1) {
            std::swap(x0, x1);
        }
        const auto width = static_cast<double>(differences_.size() - 1);
        if (x0 >= width) {
            return;
        }
        if (x1 <= 1e-9) {
            Add(0, 0, height);
        } else if (x1 - x0 < 1e-9) {
            Add(static_cast<std::size_t>(x0), x0 - std::floor(x0), height);
        } else {
            AddSlope(x0, x1, height);
        }
    }

    void Finish(std::uint8_t* coverage) {
        double sum = 0;
        for (std::size_t x = 0; x + 1 < differences_.size(); ++x) {
            sum += differences_[x];
            coverage[x] = static_cast<std::uint8_t>(std::min(1.0, std::abs(sum)) * 255 + 0.5);
        }
        std::fill(differences_.begin(), differences_.end(), 0.0);
    }

  private:
    // A piece within one column, whose middle lies `inside` behind the column's left side.
    void Add(std::size_t column, double inside, double height) {
        differences_[column] += height * (1 - inside);
        if (column + 1 < differences_.size()) {
            differences_[column + 1] += height * inside;
        }
    }

    void AddSlope(double x0, double x1, double height) {
        const double perColumn = height / (x1 - x0);
        const auto width = static_cast<double>(differences_.size() - 1);
        if (x0 < 0) {
            Add(0, 0, perColumn * -x0);
            x0 = 0;
        }
        const double end = std::min(x1, width);
        for (double from = x0; from < end;) {
            const double column = std::floor(from);
            const double to = std::min(end, column + 1);
            Add(static_cast<std::size_t>(column), (from + to) / 2 - column, perColumn * (to - from));
            from = to;
        }
    }

    std::vector<double> differences_;
};

// Beyond every surface, and still a whole number in 64 bits.
constexpr double Far = 4e9;

double Top(const Edge& edge) { return std::min(edge.from.y, edge.to.y); }
double Bottom(const Edge& edge) { return std::max(edge.from.y, edge.to.y); }

// Adds the part of an edge that lies between y and y + 1.
void AddEdge(const Edge& edge, std::int64_t left, std::int64_t y, CoverageRow& row) {
    const double top = std::max(Top(edge), static_cast<double>(y));
    const double bottom = std::min(Bottom(edge), static_cast<double>(y + 1));
    if (bottom <= top) {
        return;
    }
    const double slope = (edge.to.x - edge.from.x) / (edge.to.y - edge.from.y);
    const auto xAt = [&](double at) { return edge.from.x + (at - edge.from.y) * slope - static_cast<double>(left); };
    const double direction = edge.to.y > edge.from.y ? 1 : -1;
    row.AddPiece(xAt(top), xAt(bottom), (bottom - top) * direction);
}

} // namespace

PixelRect BoundsOf(const std::vector<Edge>& edges) {
    if (edges.empty()) {
        return {};
    }
    double left = Far, top = Far, right = -Far, bottom = -Far;
    for (const Edge& edge : edges) {
        left = std::min({left, edge.from.x, edge.to.x});
        right = std::max({right, edge.from.x, edge.to.x});
        top = std::min(top, Top(edge));
        bottom = std::max(bottom, Bottom(edge));
    }
    const auto whole = [](double value) { return static_cast<std::int64_t>(std::clamp(value, -Far, Far)); };
    return {whole(std::floor(left)), whole(std::floor(top)), whole(std::ceil(right)), whole(std::ceil(bottom))};
}

void ForEachCoveredRow(
    const std::vector<Edge>& edges, const PixelRect& area,
    const std::function<void(std::int64_t x, std::int64_t y, const std::uint8_t* coverage, std::size_t count)>& paint) {
    const PixelRect reached = Intersection(area, BoundsOf(edges));
    if (reached.IsEmpty()) {
        return;
    }
    std::vector<const Edge*> byTop;
    byTop.reserve(edges.size());
    for (const Edge& edge : edges) {
        byTop.push_back(&edge);
    }
    std::sort(byTop.begin(), byTop.end(), [](const Edge* a, const Edge* b) { return Top(*a) < Top(*b); });
    std::vector<const Edge*> active;
    auto next = byTop.begin();
    const auto count = static_cast<std::size_t>(reached.Width());
    CoverageRow row(count);
    std::vector<std::uint8_t> coverage(count);
    for (std::int64_t y = reached.top; y < reached.bottom; ++y) {
        for (; next != byTop.end() && Top(**next) < static_cast<double>(y + 1); ++next) {
            active.push_back(*next);
        }
        std::erase_if(active, [&](const Edge* edge) { return Bottom(*edge) <= static_cast<double>(y); });
        for (const Edge* edge : active) {
            AddEdge(*edge, reached.left, y, row);
        }
        row.Finish(coverage.data());
        paint(reached.left, y, coverage.data(), count);
    }
}

} // namespace imaginglibrary
