// platform/Geometry.cpp: the small arithmetic of points, sizes and
// rectangles. Sums are taken in 64 bits and brought back by the modular
// conversion to 32 bits, so any coordinates a host hands in are safe.
#include "platform/Geometry.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

LONG Add(LONG a, std::int64_t b) { return static_cast<LONG>(static_cast<std::int64_t>(a) + b); }
LONG Sub(LONG a, std::int64_t b) { return static_cast<LONG>(static_cast<std::int64_t>(a) - b); }

bool Empty(const RECT& r) {
  return Sub(r.right, r.left) <= 0 || Sub(r.bottom, r.top) <= 0;
}

}  // namespace

int OffsetRect(RECT* rect, int dx, int dy) {
  if (rect == nullptr) return 0;
  rect->left = Add(rect->left, dx);
  rect->right = Add(rect->right, dx);
  rect->top = Add(rect->top, dy);
  rect->bottom = Add(rect->bottom, dy);
  return 1;
}

CSize& CSize::operator+=(const SIZE& other) noexcept {
  cx = Add(cx, other.cx);
  cy = Add(cy, other.cy);
  return *this;
}

CSize& CSize::operator-=(const SIZE& other) noexcept {
  cx = Sub(cx, other.cx);
  cy = Sub(cy, other.cy);
  return *this;
}

CSize CSize::operator+(const SIZE& other) const noexcept { return CSize(*this) += other; }
CSize CSize::operator-(const SIZE& other) const noexcept { return CSize(*this) -= other; }
CSize CSize::operator-() const noexcept { return CSize(Sub(0, cx), Sub(0, cy)); }

void CPoint::Offset(int dx, int dy) noexcept {
  x = Add(x, dx);
  y = Add(y, dy);
}

CPoint& CPoint::operator+=(const SIZE& offset) noexcept {
  Offset(offset.cx, offset.cy);
  return *this;
}

CPoint& CPoint::operator-=(const SIZE& offset) noexcept {
  x = Sub(x, offset.cx);
  y = Sub(y, offset.cy);
  return *this;
}

CPoint& CPoint::operator+=(const POINT& offset) noexcept {
  Offset(offset.x, offset.y);
  return *this;
}

CPoint& CPoint::operator-=(const POINT& offset) noexcept {
  x = Sub(x, offset.x);
  y = Sub(y, offset.y);
  return *this;
}

CPoint CPoint::operator+(const SIZE& offset) const noexcept { return CPoint(*this) += offset; }
CPoint CPoint::operator-(const SIZE& offset) const noexcept { return CPoint(*this) -= offset; }
CSize CPoint::operator-(const POINT& other) const noexcept {
  return CSize(Sub(x, other.x), Sub(y, other.y));
}
CPoint CPoint::operator-() const noexcept { return CPoint(Sub(0, x), Sub(0, y)); }

CRect::CRect(const POINT& topLeft, const SIZE& size) noexcept
    : RECT{topLeft.x, topLeft.y, Add(topLeft.x, size.cx), Add(topLeft.y, size.cy)} {}

CRect::CRect(const POINT& topLeft, const POINT& bottomRight) noexcept
    : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

int CRect::Width() const noexcept { return Sub(right, left); }
int CRect::Height() const noexcept { return Sub(bottom, top); }

CPoint CRect::CenterPoint() const noexcept {
  return CPoint(static_cast<LONG>((static_cast<std::int64_t>(left) + right) / 2),
                static_cast<LONG>((static_cast<std::int64_t>(top) + bottom) / 2));
}

bool CRect::PtInRect(const POINT& point) const noexcept {
  return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
}

void CRect::SetRect(int l, int t, int r, int b) noexcept {
  left = l;
  top = t;
  right = r;
  bottom = b;
}

void CRect::OffsetRect(int dx, int dy) noexcept { ::OffsetRect(this, dx, dy); }

void CRect::InflateRect(int dx, int dy) noexcept { InflateRect(dx, dy, dx, dy); }

void CRect::InflateRect(int l, int t, int r, int b) noexcept {
  left = Sub(left, l);
  top = Sub(top, t);
  right = Add(right, r);
  bottom = Add(bottom, b);
}

void CRect::DeflateRect(int dx, int dy) noexcept {
  InflateRect(Sub(0, dx), Sub(0, dy), Sub(0, dx), Sub(0, dy));
}

void CRect::NormalizeRect() noexcept {
  if (left > right) std::swap(left, right);
  if (top > bottom) std::swap(top, bottom);
}

int CRect::IntersectRect(const RECT& a, const RECT& b) noexcept {
  const RECT common{std::max(a.left, b.left), std::max(a.top, b.top),
                    std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
  if (Empty(a) || Empty(b) || Empty(common)) {
    SetRectEmpty();
    return 0;
  }
  CopyRect(common);
  return 1;
}

int CRect::UnionRect(const RECT& a, const RECT& b) noexcept {
  const bool emptyA = Empty(a);
  const bool emptyB = Empty(b);
  if (emptyA && emptyB) {
    SetRectEmpty();
    return 0;
  }
  if (emptyA) {
    CopyRect(b);
  } else if (emptyB) {
    CopyRect(a);
  } else {
    CopyRect(RECT{std::min(a.left, b.left), std::min(a.top, b.top),
                  std::max(a.right, b.right), std::max(a.bottom, b.bottom)});
  }
  return 1;
}

bool CRect::operator==(const RECT& other) const noexcept {
  return left == other.left && top == other.top && right == other.right &&
         bottom == other.bottom;
}

CRect& CRect::operator+=(const POINT& offset) noexcept {
  OffsetRect(offset.x, offset.y);
  return *this;
}

CRect& CRect::operator-=(const POINT& offset) noexcept {
  OffsetRect(Sub(0, offset.x), Sub(0, offset.y));
  return *this;
}

CRect& CRect::operator+=(const SIZE& offset) noexcept {
  OffsetRect(offset.cx, offset.cy);
  return *this;
}

CRect& CRect::operator-=(const SIZE& offset) noexcept {
  OffsetRect(Sub(0, offset.cx), Sub(0, offset.cy));
  return *this;
}
