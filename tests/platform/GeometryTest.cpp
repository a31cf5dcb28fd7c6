// Tests of the geometry types: the half-open rule of rectangles, the set
// operations with empty rectangles, and wrapping instead of overflow.
#include "platform/Geometry.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(Geometry, OffsetRectFreeFunction) {
  RECT r{1, 2, 3, 4};
  EXPECT_NE(OffsetRect(&r, 10, -20), 0);
  EXPECT_EQ(CRect(r), CRect(11, -18, 13, -16));
  EXPECT_EQ(OffsetRect(nullptr, 1, 1), 0);
  RECT edge{INT_MAX, 0, INT_MAX, 0};
  OffsetRect(&edge, 1, 0);  // wraps, no overflow
  EXPECT_EQ(edge.left, INT_MIN);
}

TEST(Geometry, RectMeasures) {
  const CRect r(10, 20, 40, 60);
  EXPECT_EQ(r.Width(), 30);
  EXPECT_EQ(r.Height(), 40);
  EXPECT_EQ(r.Size(), CSize(30, 40));
  EXPECT_EQ(r.TopLeft(), CPoint(10, 20));
  EXPECT_EQ(r.BottomRight(), CPoint(40, 60));
  EXPECT_EQ(r.CenterPoint(), CPoint(25, 40));
  EXPECT_EQ(CRect(-3, -3, 0, 0).CenterPoint(), CPoint(-1, -1));  // towards zero
  EXPECT_EQ(CRect(CPoint(1, 2), CSize(3, 4)), CRect(1, 2, 4, 6));
  EXPECT_EQ(CRect(INT_MIN, 0, INT_MAX, 0).CenterPoint(), CPoint(0, 0));
}

TEST(Geometry, PtInRectIsHalfOpen) {
  const CRect r(0, 0, 10, 5);
  EXPECT_TRUE(r.PtInRect(CPoint(0, 0)));
  EXPECT_TRUE(r.PtInRect(CPoint(9, 4)));
  EXPECT_FALSE(r.PtInRect(CPoint(10, 4)));
  EXPECT_FALSE(r.PtInRect(CPoint(9, 5)));
  EXPECT_FALSE(r.PtInRect(CPoint(-1, 0)));
}

TEST(Geometry, EmptyAndNull) {
  EXPECT_TRUE(CRect().IsRectEmpty());
  EXPECT_TRUE(CRect().IsRectNull());
  EXPECT_TRUE(CRect(5, 5, 5, 9).IsRectEmpty());
  EXPECT_TRUE(CRect(5, 5, 4, 9).IsRectEmpty());
  EXPECT_FALSE(CRect(5, 5, 6, 6).IsRectEmpty());
  EXPECT_FALSE(CRect(5, 5, 5, 5).IsRectNull());
}

TEST(Geometry, NormalizeInflateDeflate) {
  CRect r(10, 20, 0, 5);
  r.NormalizeRect();
  EXPECT_EQ(r, CRect(0, 5, 10, 20));
  r.InflateRect(2, 3);
  EXPECT_EQ(r, CRect(-2, 2, 12, 23));
  r.DeflateRect(2, 3);
  EXPECT_EQ(r, CRect(0, 5, 10, 20));
  r.InflateRect(1, 2, 3, 4);
  EXPECT_EQ(r, CRect(-1, 3, 13, 24));
}

struct SetCase {
  CRect a, b;
  CRect intersection;
  int intersects;
  CRect unionRect;
};

const SetCase kSets[] = {
    {{0, 0, 10, 10}, {5, 5, 15, 15}, {5, 5, 10, 10}, 1, {0, 0, 15, 15}},
    {{0, 0, 10, 10}, {10, 0, 20, 10}, {0, 0, 0, 0}, 0, {0, 0, 20, 10}},  // edges only touch
    {{0, 0, 10, 10}, {2, 2, 4, 4}, {2, 2, 4, 4}, 1, {0, 0, 10, 10}},
    {{0, 0, 10, 10}, {50, 50, 50, 60}, {0, 0, 0, 0}, 0, {0, 0, 10, 10}},  // empty b is ignored
    {{3, 3, 3, 3}, {50, 50, 50, 60}, {0, 0, 0, 0}, 0, {0, 0, 0, 0}},     // both empty
};

TEST(Geometry, IntersectAndUnion) {
  for (const SetCase& c : kSets) {
    CRect r(7, 7, 8, 8);
    EXPECT_EQ(r.IntersectRect(c.a, c.b), c.intersects);
    EXPECT_EQ(r, c.intersection);
    CRect u(7, 7, 8, 8);
    u.UnionRect(c.a, c.b);
    EXPECT_EQ(u, c.unionRect);
  }
}

TEST(Geometry, PointsSizesAndOperators) {
  CPoint p(1, 2);
  p += CSize(10, 20);
  EXPECT_EQ(p, CPoint(11, 22));
  p -= CPoint(1, 2);
  EXPECT_EQ(p, CPoint(10, 20));
  EXPECT_EQ(p - CPoint(4, 5), CSize(6, 15));
  EXPECT_EQ(-p, CPoint(-10, -20));
  EXPECT_NE(p, CPoint(10, 21));
  EXPECT_EQ(CSize(1, 2) + CSize(3, 4), CSize(4, 6));
  EXPECT_EQ(-CSize(INT_MIN, 1), CSize(INT_MIN, -1));  // wraps

  CRect r(0, 0, 2, 2);
  r += CPoint(3, 4);
  EXPECT_EQ(r, CRect(3, 4, 5, 6));
  r -= CSize(3, 4);
  EXPECT_EQ(r, CRect(0, 0, 2, 2));
  r.OffsetRect(CPoint(-1, -1));
  EXPECT_EQ(r, CRect(-1, -1, 1, 1));
  EXPECT_NE(r, CRect(-1, -1, 1, 2));
}

}  // namespace
