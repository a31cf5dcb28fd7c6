// tests/toolbox/GeometryTest.cpp: units, scaling, angles and turns, line extension, slide frames, column
// layout, whole-number ratios, SetRet and File2Array. Each row is calls shown as "a,b,..." and the answer.
#include <gtest/gtest.h>
#include <climits>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <vector>
#include "VKTCalc.h"
namespace {
using C = CUtilityCalc;
using O = std::ostream;
O& operator<<(O& o, const POINT& p) { return o << p.x << ',' << p.y; }
O& operator<<(O& o, RECT r) { return o << r.left << ',' << r.top << ',' << r.right << ',' << r.bottom; }
O& operator<<(O& o, const CString& text) { return o << text.ToUtf8(); }
template <class... T>  // joined by commas; doubles with six significant digits
std::string J(const T&... v) { std::ostringstream s; ((s << ',' << v), ...); return s.str().substr(1); }
template <class A>  // the answer, then the items
std::string List(int n, const A& a) { std::string s = J(n); for (auto& x : a) s += ' ' + J(x); return s; }
double Dist(POINT a, POINT b) { return C::PointsDistance(&a, &b); }
int Radius(RECT r) { return C::GetRadius(&r); }
LONG By10(LONG v) { C::RoundDevideBy10(v); return v; }
POINT Turn(POINT p, double degrees) { C::Rotate(&p, degrees); return p; }
std::string Corners(CRect r) { CPoint k[4]; C::Rotate(k, r, 90); return J(k[0], k[1], k[2], k[3]); }
CRect OutRect(CRect r, int self) { C::GetMinOutRectOfRotatedRect(r, 90, self); return r; }
std::string Gcd(int a, int b) { const int g = C::GetGCD(a, b); C::DevideByGCD(a, b); return J(g, a, b); }
std::string MaxValue(int a, int b, int limit) { C::DevideByGCD_MaxValue(a, b, limit); return J(a, b); }
std::string Extent(CPoint a, CPoint b, int n, BYTE ends) { C::ExtentLine(a, b, n, ends); return J(a, b); }
std::string Scaled(CRect r, CSize s, CPoint p) {  // all by 50 percent
  C::ScaleRect(r, 50, 1), C::ScaleSize(s, 50, 1), C::ScalePoint(p, 50, 1); return J(r, s.cx, s.cy, p);
}
std::string Slide(CRect from, CRect to = {100, 100, 100, 100}) {
  CArray<CRect, CRect> out; return List(C::BuildSmoothRects(out, from, to), out);
}
std::string Flex(std::vector<std::vector<UINT>> in) {  // percents, flexes, minimums, sizes in 100 pixels
  CUIntArray a[4]; for (int i = 0; i < 4; ++i) for (UINT v : in[i]) a[i].Add(v);
  return List(C::RecalcPercentFlex(100, a[0], a[1], a[2], a[3]), a[3]);
}
std::string Ret(int value, CString text) {  // into a buffer that held "old"; a null one is ignored
  CBufferEx out; out.Set(u"old"), C::SetRet(&out, text, value), C::SetRet(nullptr, text, value);
  return CString(out.GetStr()).ToUtf8();
}
TEST(Geometry, Table) {
  const std::string path = testing::TempDir() + "GeometryFile2Array.txt";
  std::ofstream(path, std::ios::binary) << "a\r\nb\nc\r\n";
  CStringArray lines;
  const struct { std::string got; const char* expected; } kRows[] = {
      {J(C::PixelToUnit(C::SIZE_MM, 96, -1), C::PixelToUnit(C::SIZE_CM, 96, 1)), "25.4,2.5"},
      {J(C::PixelToUnit(C::SIZE_PIXEL, 7, -1), C::PixelToUnit(C::SIZE_INCH, 96, -1)), "7,1"},
      {J(C::PixelToUnit(C::SIZE_MM, 10, 2), C::PixelToUnit(C::SIZE_MM, 10, -1)), "2.65,2.64583"},
      {J(C::UnitToPixel(C::SIZE_CM, 2.54), C::UnitToPixel(C::SIZE_PIXEL, 7.5)), "96,8"},
      {J(C::ScaleInt(200, 50, 1), C::ScaleInt(200, 50, 0), C::ScaleInt(200, 100, 1)), "100,400,200"},
      {J(C::ScaleInt(200, 0, 0), C::ScaleLong(-150, 200, 0), C::GetNumberOfProcessors() > 0), "200,-75,1"},
      {J(C::ScaleInt(2000000000, 50, 1), C::ScaleInt(30000000, 3, 0)), "12157522,-431655765"},  // wrapped
      {Scaled({10, 20, 30, -41}, {3, 5}, {-3, 5}), "5,10,15,-21,2,3,-2,3"},  // halves go away from zero
      {J(C::GetAngle(1, 0), C::GetAngle(0, 1), C::GetAngle(-1, 0), C::GetAngle(0, -1)), "0,90,180,270"},
      {J(C::GetAngle(1, 1), C::GetAngle(-1, 1), C::GetAngle(-1, -1), C::GetAngle(1, -1)), "45,135,225,315"},
      {J(C::GetAngle(0, 0), C::PointsDistance(nullptr, nullptr), C::GetRadius(nullptr)), "0,0,0"},
      {J(Dist({-3, 0}, {4, 0}), Dist({0, 0}, {3, 4}), Dist({1, 1}, {2, 2})), "7,5,1.41421"},
      {J(Radius({0, 0, 3, 4}), Radius({0, 0, 5, 5}), Radius({5, 0, 5, 4})), "2,4,0"},
      {J(Turn({1, 0}, 90), Turn({3, -2}, 540)), "0,1,-3,2"}, {Corners({0, 0, 10, 4}), "7,-3,7,7,3,7,3,-3"},
      {J(OutRect({0, 0, 10, 4}, 0), OutRect({0, 0, 10, 4}, 1)), "3,-3,7,7,0,-3,10,7"},
      {Extent({0, 0}, {3, 4}, 5, 1), "-3,-4,3,4"}, {Extent({0, 0}, {3, 4}, 5, 2), "0,0,6,8"},
      {Extent({3, 4}, {0, 0}, 5, 3), "6,8,-3,-4"}, {Extent({0, 0}, {3, 4}, 0, 3), "0,0,3,4"},
      {Extent({2, 2}, {2, 2}, 5, 3), "2,2,2,2"}, {Extent({0, 0}, {3, 4}, -100, 2), "0,0,0,0"},  // whole line
      {Slide({81, 100, 81, 100}), "0"}, {Extent({0, 0}, {6, 8}, -100, 3), "3,4,3,4"},  // both ends: half each
      {Slide({0, 100, 0, 100}), "5 80,100,80,100 90,100,90,100 95,100,95,100 98,100,98,100 99,100,99,100"},
      {Slide({200, 0, 200, 0}), "4 114,86,114,86 107,93,107,93 103,97,103,97 101,99,101,99"},
      {Flex({{50, 0}, {0, 1}, {0, 0}, {0, 0}}), "1 50 50"}, {Flex({{50}, {0, 1}, {}, {50, 50}}), "0 50 50"},
      {Flex({{}, {}, {}, {50, 48, 0}}), "1 50 50 0"}, {Flex({{}, {}, {}, {101, 2}}), "1 98 2"},  // none < 0
      {Flex({{33, 33, 33}, {}, {}, {0, 0, 0}}), "1 33 33 34"},  // the last weighted column takes the 1
      {Flex({{}, {1, 1, 1}, {0, 0, 40}, {9, 9, 9}}), "1 33 33 40"},  // off by 6: too far to adjust
      {Gcd(4, 6), "2,2,3"}, {Gcd(0, 5), "0,0,5"}, {Gcd(5, 0), "0,5,0"}, {Gcd(-4, 6), "6,0,1"},
      {Gcd(6, -4), "2,3,-2"}, {Gcd(1, 2000000000), "1,1,2000000000"}, {Gcd(8, INT_MIN), "8,1,-268435456"},
      {Gcd(INT_MIN, -1), "-1,-2147483648,1"}, {MaxValue(2, INT_MAX, 9), "2,2147483647"},  // no overflow
      {MaxValue(1920, 1080, 20), "16,9"}, {MaxValue(1366, 768, 20), "7,4"}, {MaxValue(0, 50, 10), "0,50"},
      {MaxValue(1, 1000001, 10), "1,1000001"}, {MaxValue(3, 5, 1), "3,5"},  // a 0 reached: both as given
      {J(By10(14), By10(15), By10(-15), By10(INT_MIN)), "1,2,-1,-214748364"}, {Ret(-7, u""), "-7"},
      {Ret(int(0xF0F0F0F1U), u""), "old"}, {Ret(int(0xF0F0F0F1U), u"abc"), "abc"}, {Ret(42, u"x"), "42"},
      {List(C::File2Array(lines, CString::FromUtf8(path).GetString()), lines), "1 a b\nc "},
      {List(C::File2Array(lines, CString::FromUtf8(path + "-").GetString()), lines), "0"}};  // emptied first
  std::remove(path.c_str());
  for (size_t i = 0; i < std::size(kRows); ++i) EXPECT_EQ(kRows[i].got, kRows[i].expected) << "row " << i;
}
}  // namespace
