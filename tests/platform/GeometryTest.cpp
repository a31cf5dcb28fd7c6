// Tests of the geometry types: half-open rectangles, sets that ignore empty ones, arithmetic that wraps.
#include "platform/Geometry.h"
#include <gtest/gtest.h>
#include <climits>
#include <string>
std::string Show(const RECT& r) {
  return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
         std::to_string(r.bottom);
}
struct ChangeCase { CRect start; void (*change)(CRect& r); const char* expected; };
const ChangeCase kChanges[] = {
    {{10, 20, 0, 5}, [](CRect& r) { r.NormalizeRect(); r.InflateRect(2, 3); }, "-2,2,12,23"},
    {{0, 5, 10, 20}, [](CRect& r) { r.InflateRect(1, 2, 3, 4); r.DeflateRect(1, 1); }, "0,4,12,23"},
    {{0, 0, 2, 2}, [](CRect& r) { r += CPoint(3, 4); r -= CSize(1, 1); r -= CPoint(1, 0); }, "1,3,3,5"},
    {{0, 0, 2, 2}, [](CRect& r) { r += CSize(1, 1); r.OffsetRect(CSize(-2, 0)); }, "-1,1,1,3"},
    {{1, 2, 3, 4}, [](CRect& r) { EXPECT_NE(OffsetRect(&r, 10, -20), 0); }, "11,-18,13,-16"},
    {{INT_MAX, 0, INT_MAX, 0}, [](CRect& r) { r.OffsetRect(1, 0); }, "-2147483648,0,-2147483648,0"},  // wraps
};
struct SetCase { CRect a, b; const char* intersection; const char* unionRect; };  // each with its result
const SetCase kSets[] = {
    {{0, 0, 10, 10}, {5, 5, 15, 15}, "1 5,5,10,10", "1 0,0,15,15"},
    {{0, 0, 10, 10}, {10, 0, 20, 10}, "0 0,0,0,0", "1 0,0,20,10"},  // edges only touch
    {{0, 0, 10, 10}, {2, 2, 4, 4}, "1 2,2,4,4", "1 0,0,10,10"},
    {{0, 0, 10, 10}, {50, 50, 50, 60}, "0 0,0,0,0", "1 0,0,10,10"},  // an empty rectangle is ignored
    {{50, 50, 50, 60}, {0, 0, 10, 10}, "0 0,0,0,0", "1 0,0,10,10"},
    {{3, 3, 3, 3}, {50, 50, 50, 60}, "0 0,0,0,0", "0 0,0,0,0"},  // both empty
};
TEST(Geometry, RectChangesAndSets) {
  for (const ChangeCase& c : kChanges) {
    CRect r = c.start;
    c.change(r);
    EXPECT_EQ(Show(r), c.expected) << Show(c.start);
  }
  EXPECT_EQ(OffsetRect(nullptr, 1, 1), 0);
  for (const SetCase& c : kSets) {
    CRect r(7, 7, 8, 8), u(7, 7, 8, 8);
    const int intersects = r.IntersectRect(c.a, c.b), unites = u.UnionRect(c.a, c.b);
    EXPECT_EQ(std::to_string(intersects) + " " + Show(r), c.intersection) << Show(c.a) << " " << Show(c.b);
    EXPECT_EQ(std::to_string(unites) + " " + Show(u), c.unionRect) << Show(c.a) << " " << Show(c.b);
  }
}
TEST(Geometry, MeasuresAndPoints) {
  const CRect r(10, 20, 40, 60), p(0, 0, 10, 5);  // half-open: the right and bottom edges are outside
  EXPECT_TRUE(r.Width() == 30 && r.Height() == 40 && r.Size() == CSize(30, 40) && r != CRect(10, 20, 40, 6));
  EXPECT_TRUE(r.TopLeft() == CPoint(10, 20) && r.BottomRight() == CPoint(40, 60));
  EXPECT_TRUE(r.CenterPoint() == CPoint(25, 40) && CRect(-3, -3, 0, 0).CenterPoint() == CPoint(-1, -1));
  EXPECT_TRUE(CRect(INT_MIN, 0, INT_MAX, 0).CenterPoint() == CPoint());  // halves towards 0, no overflow
  EXPECT_TRUE(p.PtInRect(CPoint(0, 0)) && p.PtInRect(CPoint(9, 4)) && !p.PtInRect(CPoint(-1, 0)));
  EXPECT_TRUE(!p.PtInRect(CPoint(10, 4)) && !p.PtInRect(CPoint(9, 5)) && CRect().IsRectNull());
  EXPECT_TRUE(CRect(5, 5, 5, 9).IsRectEmpty() && CRect(5, 5, 4, 9).IsRectEmpty() && !p.IsRectEmpty());
  CPoint q(1, 2);
  q += CSize(10, 20);
  q -= CPoint(1, 2);
  EXPECT_TRUE(q == CPoint(10, 20) && q - CPoint(4, 5) == CSize(6, 15) && -q == CPoint(-10, -20));
  EXPECT_TRUE(CSize(1, 2) + CSize(3, 4) == CSize(4, 6) && -CSize(INT_MIN, 1) == CSize(INT_MIN, -1));  // wraps
}
