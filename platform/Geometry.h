// platform/Geometry.h: points, sizes and rectangles of the hosts' drawing
// code, in screen coordinates (y grows downwards).
//
// A rectangle holds its left and top edges and, one past its last pixel, its
// right and bottom edges: it covers right - left by bottom - top pixels and
// is empty when either is 0 or below. Arithmetic wraps at 32 bits instead
// of overflowing, so coordinates from a host never cause undefined results.
#pragma once

#include "VKTCalcExport.h"
#include "platform/Types.h"

struct POINT {
  LONG x;
  LONG y;
};

struct SIZE {
  LONG cx;
  LONG cy;
};

struct RECT {
  LONG left;
  LONG top;
  LONG right;   // one past the last column
  LONG bottom;  // one past the last row
};

// Moves the rectangle by dx, dy. Nonzero on success; 0 for a null pointer.
VKTCALC_API int OffsetRect(RECT* rect, int dx, int dy);

class VKTCALC_API CSize : public SIZE {
 public:
  CSize() noexcept : SIZE{0, 0} {}
  CSize(int x, int y) noexcept : SIZE{x, y} {}
  CSize(const SIZE& size) noexcept : SIZE(size) {}

  bool operator==(const SIZE& other) const noexcept { return cx == other.cx && cy == other.cy; }
  // The same for two CSizes: without it, C++20's reversed candidates make
  // a == b ambiguous to some compilers.
  bool operator==(const CSize& other) const noexcept { return cx == other.cx && cy == other.cy; }
  bool operator!=(const SIZE& other) const noexcept { return !(*this == other); }
  CSize& operator+=(const SIZE& other) noexcept;
  CSize& operator-=(const SIZE& other) noexcept;
  CSize operator+(const SIZE& other) const noexcept;
  CSize operator-(const SIZE& other) const noexcept;
  CSize operator-() const noexcept;
};

class VKTCALC_API CPoint : public POINT {
 public:
  CPoint() noexcept : POINT{0, 0} {}
  CPoint(int x0, int y0) noexcept : POINT{x0, y0} {}
  CPoint(const POINT& point) noexcept : POINT(point) {}

  void Offset(int dx, int dy) noexcept;
  void SetPoint(int x0, int y0) noexcept { x = x0; y = y0; }

  bool operator==(const POINT& other) const noexcept { return x == other.x && y == other.y; }
  bool operator==(const CPoint& other) const noexcept { return x == other.x && y == other.y; }
  bool operator!=(const POINT& other) const noexcept { return !(*this == other); }
  CPoint& operator+=(const SIZE& offset) noexcept;
  CPoint& operator-=(const SIZE& offset) noexcept;
  CPoint& operator+=(const POINT& offset) noexcept;
  CPoint& operator-=(const POINT& offset) noexcept;
  CPoint operator+(const SIZE& offset) const noexcept;
  CPoint operator-(const SIZE& offset) const noexcept;
  CSize operator-(const POINT& other) const noexcept;  // the distance as a size
  CPoint operator-() const noexcept;
};

class VKTCALC_API CRect : public RECT {
 public:
  CRect() noexcept : RECT{0, 0, 0, 0} {}
  CRect(int l, int t, int r, int b) noexcept : RECT{l, t, r, b} {}
  CRect(const RECT& rect) noexcept : RECT(rect) {}
  CRect(const POINT& topLeft, const SIZE& size) noexcept;
  CRect(const POINT& topLeft, const POINT& bottomRight) noexcept;

  int Width() const noexcept;   // negative when not normalized
  int Height() const noexcept;
  CSize Size() const noexcept { return CSize(Width(), Height()); }
  CPoint TopLeft() const noexcept { return CPoint(left, top); }
  CPoint BottomRight() const noexcept { return CPoint(right, bottom); }
  CPoint CenterPoint() const noexcept;  // halves rounded towards zero

  bool IsRectEmpty() const noexcept { return Width() <= 0 || Height() <= 0; }
  bool IsRectNull() const noexcept { return left == 0 && top == 0 && right == 0 && bottom == 0; }
  // Inside the left and top edges, outside the right and bottom ones.
  bool PtInRect(const POINT& point) const noexcept;
  bool EqualRect(const RECT& other) const noexcept { return *this == other; }

  void SetRect(int l, int t, int r, int b) noexcept;
  void SetRectEmpty() noexcept { SetRect(0, 0, 0, 0); }
  void CopyRect(const RECT& other) noexcept { static_cast<RECT&>(*this) = other; }
  void OffsetRect(int dx, int dy) noexcept;
  void OffsetRect(const POINT& offset) noexcept { OffsetRect(offset.x, offset.y); }
  void OffsetRect(const SIZE& offset) noexcept { OffsetRect(offset.cx, offset.cy); }
  // Pushes every edge outwards by the amounts (inwards when negative).
  void InflateRect(int dx, int dy) noexcept;
  void InflateRect(const SIZE& size) noexcept { InflateRect(size.cx, size.cy); }
  void InflateRect(int l, int t, int r, int b) noexcept;
  void DeflateRect(int dx, int dy) noexcept;
  void NormalizeRect() noexcept;  // swaps edges so that left <= right, top <= bottom
  // The common part of a and b; an empty rectangle (all 0) and 0 when
  // they do not overlap.
  int IntersectRect(const RECT& a, const RECT& b) noexcept;
  // The smallest rectangle holding a and b, empty ones ignored; all 0 and 0
  // when both are empty.
  int UnionRect(const RECT& a, const RECT& b) noexcept;

  bool operator==(const RECT& other) const noexcept;
  bool operator==(const CRect& other) const noexcept { return *this == static_cast<const RECT&>(other); }
  bool operator!=(const RECT& other) const noexcept { return !(*this == other); }
  CRect& operator+=(const POINT& offset) noexcept;  // moves the rectangle
  CRect& operator-=(const POINT& offset) noexcept;
  CRect& operator+=(const SIZE& offset) noexcept;
  CRect& operator-=(const SIZE& offset) noexcept;
};
