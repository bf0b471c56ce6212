#pragma once

#include "platform/system/types.h"

/// Points, sizes and rectangles, in pixels. A rectangle does not include its right and bottom edges.

class CPoint : public POINT {
  public:
    CPoint() noexcept : POINT{0, 0} {}
    CPoint(int x_, int y_) noexcept : POINT{x_, y_} {}
};

class CSize : public SIZE {
  public:
    CSize() noexcept : SIZE{0, 0} {}
    CSize(int cx_, int cy_) noexcept : SIZE{cx_, cy_} {}
};

class CRect : public RECT {
  public:
    CRect() noexcept : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) noexcept : RECT{l, t, r, b} {}
    CRect(const RECT& rect) noexcept : RECT(rect) {}

    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    CSize Size() const noexcept { return {Width(), Height()}; }
    CPoint TopLeft() const noexcept { return {left, top}; }
    /// TRUE if the width or the height is 0 or negative.
    BOOL IsRectEmpty() const noexcept { return left >= right || top >= bottom; }

    operator RECT*() noexcept { return this; }
    operator const RECT*() const noexcept { return this; }
    bool operator==(const RECT& other) const noexcept {
        return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
    }
};
