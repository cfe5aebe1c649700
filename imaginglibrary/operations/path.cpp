// Outlines made of lines and curves.
#include "imaginglibrary/operations/path.h"

namespace imaginglibrary {

namespace {

// How far a straight piece may lie from its curve, in pixels.
constexpr double Tolerance = 0.01;
constexpr int MostPieces = 200;

constexpr Point Between(Point a, Point b, double part) { return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part}; }

double Length(double x, double y) { return std::hypot(x, y); }

// A cubic curve cut into n equal steps strays by at most its greatest second difference / (8 n n) * 6.
int PiecesFor(Point a, Point b, Point c, Point d) {
    const double bend =
        std::max(Length(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y), Length(b.x - 2 * c.x + d.x, b.y - 2 * c.y + d.y));
    const double pieces = std::ceil(std::sqrt(bend * 6 / (8 * Tolerance)));
    return static_cast<int>(std::clamp(pieces, 1.0, double{MostPieces}));
}

Point OnCurve(Point a, Point b, Point c, Point d, double t) {
    const Point ab = Between(a, b, t);
    const Point bc = Between(b, c, t);
    const Point cd = Between(c, d, t);
    return Between(Between(ab, bc, t), Between(bc, cd, t), t);
}

} // namespace

void Path::MoveTo(Point point) { pieces_.push_back({true, false, point, point, point}); }

void Path::LineTo(Point point) { pieces_.push_back({false, true, point, point, point}); }

void Path::QuadraticTo(Point control, Point point) {
    CubicTo(Between(Last(), control, 2.0 / 3), Between(point, control, 2.0 / 3), point);
}

void Path::CubicTo(Point control1, Point control2, Point point) {
    pieces_.push_back({false, false, control1, control2, point});
}

void Path::AddRectangle(Point topLeft, Point bottomRight) {
    MoveTo(topLeft);
    LineTo({bottomRight.x, topLeft.y});
    LineTo(bottomRight);
    LineTo({topLeft.x, bottomRight.y});
}

void Path::AddEllipse(Point topLeft, Point bottomRight, bool isReversed) {
    constexpr double Handle = 0.5522847498; // of a quarter circle as one cubic curve
    const Point center = Between(topLeft, bottomRight, 0.5);
    const double radiusX = (bottomRight.x - topLeft.x) / 2;
    const double radiusY = (bottomRight.y - topLeft.y) / 2 * (isReversed ? -1 : 1);
    const auto at = [&](double x, double y) { return Point{center.x + x * radiusX, center.y + y * radiusY}; };
    MoveTo(at(1, 0));
    CubicTo(at(1, Handle), at(Handle, 1), at(0, 1));
    CubicTo(at(-Handle, 1), at(-1, Handle), at(-1, 0));
    CubicTo(at(-1, -Handle), at(-Handle, -1), at(0, -1));
    CubicTo(at(Handle, -1), at(1, -Handle), at(1, 0));
}

void Path::AppendEdges(const Affine& map, std::vector<Edge>& edges) const {
    if (IsEmpty()) {
        return;
    }
    Point start = map(pieces_.front().end);
    Point last = start;
    for (const Piece& piece : pieces_) {
        const Point end = map(piece.end);
        if (piece.isStart) {
            edges.push_back({last, start});
            start = end;
        } else if (piece.isLine) {
            edges.push_back({last, end});
        } else {
            const Point control1 = map(piece.control1);
            const Point control2 = map(piece.control2);
            const Point first = last;
            const int count = PiecesFor(first, control1, control2, end);
            for (int i = 1; i <= count; ++i) {
                const Point next =
                    i == count ? end : OnCurve(first, control1, control2, end, static_cast<double>(i) / count);
                edges.push_back({last, next});
                last = next;
            }
        }
        last = end;
    }
    edges.push_back({last, start});
}

} // namespace imaginglibrary
