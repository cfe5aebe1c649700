// Outlines made of lines and curves.
#pragma once

#include "imaginglibrary/core/geometry.h"

#include <vector>

namespace imaginglibrary {

// A straight piece of an outline.
struct Edge {
    Point from;
    Point to;
};

// Closed contours; a contour that is left open is closed by a straight line.
class Path {
  public:
    void MoveTo(Point point);
    void LineTo(Point point);
    void QuadraticTo(Point control, Point point);
    void CubicTo(Point control1, Point control2, Point point);

    // The rectangle from `topLeft` to `bottomRight`, clockwise on the screen.
    void AddRectangle(Point topLeft, Point bottomRight);

    // The ellipse that touches the sides of the rectangle with these corners; anticlockwise where `isReversed`.
    void AddEllipse(Point topLeft, Point bottomRight, bool isReversed = false);

    bool IsEmpty() const { return pieces_.empty(); }

    // The outline behind a map, its curves in straight pieces that stay within a small part of a pixel of them,
    // appended to `edges`.
    void AppendEdges(const Affine& map, std::vector<Edge>& edges) const;

  private:
    // A cubic curve, a line where the control points are its ends, or, where `isStart` is set, the start of a contour.
    struct Piece {
        bool isStart;
        bool isLine;
        Point control1;
        Point control2;
        Point end;
    };

    Point Last() const { return pieces_.back().end; }

    std::vector<Piece> pieces_;
};

} // namespace imaginglibrary
