// toolbox/Geometry.cpp: the small geometry of the hosts' drawing code, pixels
// against physical units, scaling by percentages, whole-number ratios and a
// few conveniences, all statics of CUtilityCalc. Rounding goes through
// Double2Int; coordinates that would pass 32 bits wrap, as platform/Geometry
// does, so no host value leads to undefined arithmetic.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <thread>

#include "CGmp.h"
#include "CUtilityCalc.h"
#include "foundation/CBuffer.h"
#include "foundation/CStrKit.h"
#include "platform/Geometry.h"

namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr int kSlideStep = 20;  // pixels of the first frame of a slide, and the least distance
constexpr int kMaxSlideFrames = 8;

// The screen counts 96 pixels to the inch, whatever the device.
double UnitsPerPixel(CUtilityCalc::ENUM_SIZE_SPEC unit) {
  switch (unit) {
    case CUtilityCalc::SIZE_PIXEL: return 1.0;
    case CUtilityCalc::SIZE_MM: return 25.4 / 96;
    case CUtilityCalc::SIZE_CM: return 2.54 / 96;
    default: return 1.0 / 96;  // inches, also for any value outside the enumeration
  }
}

// Two's-complement wrap to 32 bits (well defined since C++20).
LONG Wrap32(long long value) { return static_cast<LONG>(static_cast<std::uint32_t>(value)); }

// The product value * percent (or value * 100) is a 32-bit one: formed in 64
// bits and wrapped to 32, as an unsigned conversion would, then made a double.
// So a product past the range gives the wrapped value, never undefined code.
LONG Scale32(LONG value, int percent, int bMultiply) {
  if (percent == 100 || percent == 0) return value;
  if (bMultiply) return CUtilityCalc::Double2Int(Wrap32(1LL * value * percent) / 100.0);
  return CUtilityCalc::Double2Int(Wrap32(1LL * value * 100) / static_cast<double>(percent));
}

// Chosen: the greatest common divisor of the magnitudes by remainders, in 64
// bits. For positive terms it is what repeated subtraction gives, without its
// 2e9 steps for (1, 2000000000); a negative b (even INT_MIN) cannot loop.
long long Gcd64(long long a, long long b) {
  if (a < 0) a = -a;
  if (b < 0) b = -b;
  while (b != 0) {
    const long long r = a % b;
    a = b;
    b = r;
  }
  return a;
}

// The step of a point away from `from` along one axis; none when equal.
long long Away(LONG point, LONG from, long long offset) {
  return point < from ? -offset : (point > from ? offset : 0);
}

// An entry of a column array; a missing one (the array shorter than sizes)
// reads as 0.
UINT Entry(const CUIntArray& items, int i) { return i < items.GetSize() ? items.GetAt(i) : 0; }

}  // namespace

double CUtilityCalc::PixelToUnit(ENUM_SIZE_SPEC unit, int pixels, int decimals) {
  const double value = pixels * UnitsPerPixel(unit);
  if (decimals == -1) return value;
  CGmp number;
  number.Set(value);
  number.Round(decimals);
  return number.GetDouble();
}

int CUtilityCalc::UnitToPixel(ENUM_SIZE_SPEC unit, double value) {
  return Double2Int(value / UnitsPerPixel(unit));
}

int CUtilityCalc::ScaleInt(int value, int percent, int bMultiply) {
  return Scale32(value, percent, bMultiply);
}

LONG CUtilityCalc::ScaleLong(LONG value, int percent, int bMultiply) {
  return Scale32(value, percent, bMultiply);
}

void CUtilityCalc::ScaleRect(CRect& rect, int percent, int bMultiply) {
  rect.left = Scale32(rect.left, percent, bMultiply);
  rect.top = Scale32(rect.top, percent, bMultiply);
  rect.right = Scale32(rect.right, percent, bMultiply);
  rect.bottom = Scale32(rect.bottom, percent, bMultiply);
}

void CUtilityCalc::ScaleSize(CSize& size, int percent, int bMultiply) {
  size.cx = Scale32(size.cx, percent, bMultiply);
  size.cy = Scale32(size.cy, percent, bMultiply);
}

void CUtilityCalc::ScalePoint(CPoint& point, int percent, int bMultiply) {
  point.x = Scale32(point.x, percent, bMultiply);
  point.y = Scale32(point.y, percent, bMultiply);
}

// Chosen: a null point gives 0. The differences are taken as doubles, so far
// apart points cannot overflow.
double CUtilityCalc::PointsDistance(POINT* a, POINT* b) {
  if (a == nullptr || b == nullptr) return 0.0;
  const double dx = static_cast<double>(b->x) - a->x;
  const double dy = static_cast<double>(b->y) - a->y;
  if (dx == 0 || dy == 0) return std::fabs(dx + dy);
  return std::sqrt(dx * dx + dy * dy);
}

// Width and height are CRect's, wrapped at 32 bits; a null rectangle gives 0.
int CUtilityCalc::GetRadius(RECT* rect) {
  if (rect == nullptr) return 0;
  const CRect box(*rect);
  const long long width = box.Width();
  const long long height = box.Height();
  if (width < 1 || height < 1) return 0;
  const double halfWidth = static_cast<double>((width + (width & 1)) / 2);
  const double halfHeight = static_cast<double>((height + (height & 1)) / 2);
  return static_cast<int>(std::sqrt(halfWidth * halfWidth + halfHeight * halfHeight));
}

double CUtilityCalc::GetAngle(int x, int y) {
  if (y == 0) return x >= 0 ? 0.0 : 180.0;
  if (x == 0) return y > 0 ? 90.0 : 270.0;
  const double angle = std::atan(static_cast<double>(y) / x) * kDegreesPerRadian;
  if (x < 0) return angle + 180.0;
  return y < 0 ? angle + 360.0 : angle;
}

void CUtilityCalc::Rotate(double& x, double& y, double degrees) {
  const double a = std::fmod(degrees, 360.0) * kRadiansPerDegree;
  const double c = std::cos(a);
  const double s = std::sin(a);
  const double x0 = x;
  x = x0 * c - y * s;
  y = y * c + x0 * s;
}

void CUtilityCalc::Rotate(POINT* point, double degrees) {
  if (point == nullptr) return;
  double x = point->x;
  double y = point->y;
  Rotate(x, y, degrees);
  point->x = Double2Int(x);
  point->y = Double2Int(y);
}

void CUtilityCalc::Rotate(CPoint* corners, CRect& rect, double degrees) {
  if (corners == nullptr) return;
  const long long cx = (1LL * rect.left + rect.right) / 2;
  const long long cy = (1LL * rect.top + rect.bottom) / 2;
  const POINT edges[4] = {{rect.left, rect.top}, {rect.right, rect.top},
                          {rect.right, rect.bottom}, {rect.left, rect.bottom}};
  for (int i = 0; i < 4; ++i) {
    double x = static_cast<double>(edges[i].x - cx);
    double y = static_cast<double>(edges[i].y - cy);
    Rotate(x, y, degrees);
    corners[i].SetPoint(Wrap32(cx + Double2Int(x)), Wrap32(cy + Double2Int(y)));
  }
}

void CUtilityCalc::GetMinOutRectOfRotatedRect(CRect& rect, int degrees, int bIncludeSelf) {
  CPoint points[6];
  Rotate(points, rect, degrees);
  points[4] = rect.TopLeft();
  points[5] = rect.BottomRight();
  CRect box(points[0], points[0]);
  for (int i = 1; i < (bIncludeSelf ? 6 : 4); ++i) {
    box.left = std::min(box.left, points[i].x);
    box.top = std::min(box.top, points[i].y);
    box.right = std::max(box.right, points[i].x);
    box.bottom = std::max(box.bottom, points[i].y);
  }
  rect = box;
}

// Chosen: the offsets are ratio * extent with ratio = length / line length,
// and a limited shortening sets the ratio to exactly -1 (or -0.5 for both
// ends), so that a shortening by the whole line lands a on b without a
// rounding error cutting it one pixel short.
void CUtilityCalc::ExtentLine(CPoint& a, CPoint& b, int length, BYTE ends) {
  if (length == 0 || a == b) return;
  const double extentX = std::fabs(static_cast<double>(b.x) - a.x);
  const double extentY = std::fabs(static_cast<double>(b.y) - a.y);
  const double line = std::sqrt(extentX * extentX + extentY * extentY);
  const double ratio = std::max(length / line, ends == 3 ? -0.5 : -1.0);
  const long long dx = static_cast<long long>(ratio * extentX);
  const long long dy = static_cast<long long>(ratio * extentY);
  if (ends & 1) a.SetPoint(Wrap32(a.x + Away(a.x, b.x, dx)), Wrap32(a.y + Away(a.y, b.y, dy)));
  if (ends & 2) b.SetPoint(Wrap32(b.x + Away(b.x, a.x, dx)), Wrap32(b.y + Away(b.y, a.y, dy)));
}

// Chosen: out is not emptied first, so the answer counts what it held before.
// The vector is taken in 64 bits and its length in doubles.
int CUtilityCalc::BuildSmoothRects(CArray<CRect, CRect>& out, CRect& from, CRect& to) {
  const long long vx = 1LL * to.left - from.left;
  const long long vy = 1LL * to.top - from.top;
  const double x = static_cast<double>(vx);
  const double y = static_cast<double>(vy);
  const long long distance = static_cast<long long>(std::sqrt(x * x + y * y));
  if (distance < kSlideStep) return 0;
  long long stepX = vx * kSlideStep / distance;
  long long stepY = vy * kSlideStep / distance;
  for (int i = 0; i < kMaxSlideFrames; ++i) {
    CRect frame(to);
    frame.OffsetRect(-static_cast<int>(stepX), -static_cast<int>(stepY));
    if (frame.TopLeft() == to.TopLeft()) break;
    out.Add(frame);
    stepX /= 2;
    stepY /= 2;
  }
  return out.GetSize();
}

// Chosen: a column with both a percentage and a flex weight is a percentage
// column, and only flex columns without a percentage share the rest. Sums and
// the weight products are taken in 64-bit unsigned arithmetic and cannot wrap;
// total is read as unsigned, as the percentage products are.
int CUtilityCalc::RecalcPercentFlex(int total, CUIntArray& percents, CUIntArray& flexes, CUIntArray& minimums,
                                    CUIntArray& sizes) {
  const int n = sizes.GetSize();
  const UINT whole = static_cast<UINT>(total);
  const CUIntArray before(sizes);
  auto isFlex = [&](int i) { return Entry(percents, i) == 0 && Entry(flexes, i) != 0; };
  auto sum = [&]() {
    std::uint64_t all = 0;
    for (int i = 0; i < n; ++i) all += sizes[i];
    return all;
  };
  std::uint64_t weights = 0;
  std::uint64_t fixed = 0;
  for (int i = 0; i < n; ++i) {
    const UINT minimum = Entry(minimums, i);
    if (const UINT percent = Entry(percents, i)) {
      sizes[i] = std::max(percent * whole / 100, minimum);  // 32-bit unsigned on purpose
    } else if (isFlex(i)) {
      sizes[i] = minimum;
    } else {
      sizes[i] = std::max(sizes[i], minimum);
    }
    if (isFlex(i)) {
      weights += Entry(flexes, i);
    } else {
      fixed += sizes[i];
    }
  }
  std::uint64_t used = sum();
  if (used < whole && weights != 0) {
    const std::uint64_t rest = whole - fixed;  // fixed <= used < whole
    for (int i = 0; i < n; ++i) {
      if (!isFlex(i)) continue;
      sizes[i] = std::max(static_cast<UINT>(Entry(flexes, i) * rest / weights), Entry(minimums, i));
    }
    used = sum();
  }
  const long long difference = static_cast<long long>(whole) - static_cast<long long>(used);
  if (difference > -4 && difference < 4) {
    // A column takes the difference only when its size stays at 0 or above;
    // the fallback to the last non-empty column follows the same rule.
    auto give = [&](auto&& eligible) {
      for (int i = n - 1; i >= 0; --i) {
        if (eligible(i) && static_cast<long long>(sizes[i]) + difference >= 0) {
          sizes[i] = static_cast<UINT>(sizes[i] + difference);
          return true;
        }
      }
      return false;
    };
    if (!give([&](int i) { return Entry(percents, i) != 0 || Entry(flexes, i) != 0; }) && difference != 0) {
      give([&](int i) { return sizes[i] != 0; });
    }
  }
  for (int i = 0; i < n; ++i) {
    if (sizes[i] != before[i]) return 1;
  }
  return 0;
}

void CUtilityCalc::ExchangeInt(int& a, int& b) { std::swap(a, b); }

void CUtilityCalc::ExchangeLong(LONG& a, LONG& b) { std::swap(a, b); }

int CUtilityCalc::GetGCD(int a, int b) {
  if (a == 0 || b == 0) return 0;
  if (a < 0) return b;
  return static_cast<int>(Gcd64(a, b));  // a > 0, so the divisor is at most a
}

// The quotients are formed in 64 bits and wrapped, so INT_MIN over the
// divisor -1 (a negative a gives b as the divisor) stays INT_MIN.
void CUtilityCalc::DevideByGCD(int& a, int& b) {
  if (a == 0 || b == 0) return;
  const long long divisor = GetGCD(a, b);
  a = Wrap32(a / divisor);
  b = Wrap32(b / divisor);
}

void CUtilityCalc::RoundDevideBy10(LONG& value) {
  const LONG remainder = value % 10;
  value = value / 10 + (remainder >= 5 ? 1 : 0);
}

// Chosen: a term at or below 0, given or reached by a nudge, leaves both as
// given: 0 is no ratio, and the division cannot reach the limit from there.
// This also ends a limit of 1 or less, which positive terms never get below:
// every nudge makes both terms even, so they halve until one becomes 0. The
// terms are held in 64 bits, so nudging INT_MAX up does not overflow.
void CUtilityCalc::DevideByGCD_MaxValue(int& a, int& b, int limit) {
  if (a <= 0 || b <= 0) return;
  long long x = a;
  long long y = b;
  for (int pass = 0;; ++pass) {
    const long long divisor = Gcd64(x, y);
    x /= divisor;
    y /= divisor;
    if (std::max(x, y) < limit) break;
    const int down = pass % 2 == 0 ? 1 : -1;  // even passes: an odd a down, an odd b up
    if (x & 1) x -= down;
    if (y & 1) y += down;
    if (x == 0 || y == 0) return;
  }
  a = static_cast<int>(x);
  b = static_cast<int>(y);
}

// What the standard library reports; at least 1 when it cannot tell.
int CUtilityCalc::GetNumberOfProcessors() {
  return static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
}

// Chosen: Variant2CString is not provided, as this platform has no variant
// type; SetRet stays, since CBufferEx exists.
void CUtilityCalc::SetRet(CBufferEx* out, CString& text, int value) {
  if (out == nullptr) return;
  if (static_cast<UINT>(value) != 0xF0F0F0F1U) text.Format(u"%d", value);
  if (!text.IsEmpty()) out->SetText(text);
}

int CUtilityCalc::File2Array(CStringArray& out, const char16_t* path) {
  out.RemoveAll();
  CString text;
  if (!CStrKit::File2CString(text, path)) return 0;
  CString2Array(out, text.GetString(), u"\r\n", 0);
  return 1;
}
