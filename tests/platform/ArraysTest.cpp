// Tests of the growable arrays: the growth-step rules, zeroed new elements,
// inserting and removing at and past the ends, indexes outside the array,
// and CStringArray keeping short (inline) and long texts intact while its
// storage moves.
#include "platform/Arrays.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<UINT> Items(const CUIntArray& a) { return std::vector<UINT>(a.begin(), a.end()); }

CUIntArray Make(std::vector<UINT> values) {
  CUIntArray a;
  for (UINT v : values) a.Add(v);
  return a;
}

std::u16string S(const CString& s) { return std::u16string(s.View()); }

// A text of `n` units that differs by index, to catch elements mixed up.
CString Text(int index, int n) {
  CString s;
  s.Format(u"%d:", index);
  while (s.GetLength() < n) s += static_cast<char16_t>(u'a' + index % 26);
  return s;
}

struct GrowthCase {
  int step;       // SetSize(0, step) first
  int fromSize;   // then SetSize(fromSize)
  int toSize;     // then SetSize(toSize)
  int capacity;   // expected GetAllocSize() at the end
};

constexpr GrowthCase kGrowth[] = {
    {0, 0, 1, 1},             // first block: what is needed when the step is automatic
    {0, 1, 2, 5},             // automatic step: 1/8 is 0, raised to 4
    {0, 31, 32, 35},          // 31/8 = 3, still 4
    {0, 80, 81, 90},          // 80/8 = 10
    {0, 8192, 8193, 9216},    // 8192/8 = 1024, the largest step
    {0, 16000, 16001, 17024}, // 2000 cut to 1024
    {0, 40, 100, 100},        // more than one step needed: exactly what is needed
    {0, 10, 5, 10},           // shrinking keeps the storage
    {10, 0, 3, 10},           // first block: the step when that is more
    {10, 0, 12, 12},          // first block: the size when that is more
    {10, 10, 11, 20},
    {3, 10, 11, 13},          // an explicit step below 4 is kept as it is
    {1, 5, 6, 6},
};

TEST(ArrayGrowth, StepRules) {
  for (const GrowthCase& c : kGrowth) {
    CByteArray a;
    a.SetSize(0, c.step);
    a.SetSize(c.fromSize);
    a.SetSize(c.toSize);
    EXPECT_EQ(a.GetSize(), c.toSize);
    EXPECT_EQ(a.GetAllocSize(), c.capacity)
        << "step " << c.step << ", " << c.fromSize << " -> " << c.toSize;
  }
}

TEST(ArrayGrowth, MinusOneKeepsTheStepAndZeroMakesItAutomatic) {
  CUIntArray a;
  a.SetSize(0, 7);
  a.SetSize(1, -1);
  EXPECT_EQ(a.GetAllocSize(), 7);
  a.SetSize(8);  // the default growBy is -1
  EXPECT_EQ(a.GetAllocSize(), 14);
  EXPECT_EQ(a.GetGrowBy(), 7);
  a.SetSize(8, 0);  // a new step alone does not reallocate
  EXPECT_EQ(a.GetAllocSize(), 14);
  a.SetSize(15);  // automatic: 8/8 = 1, raised to 4
  EXPECT_EQ(a.GetAllocSize(), 18);
}

TEST(ArrayGrowth, AddGrowsByTheStep) {
  CUIntArray a;
  std::vector<int> capacities;
  for (UINT i = 0; i < 10; ++i) {
    EXPECT_EQ(a.Add(i), static_cast<int>(i));
    capacities.push_back(a.GetAllocSize());
  }
  EXPECT_EQ(capacities, (std::vector<int>{1, 5, 5, 5, 5, 9, 9, 9, 9, 13}));
}

TEST(ArrayGrowth, SizeZeroFreesAndFreeExtraTrims) {
  CUIntArray a;
  a.SetSize(0, 100);
  a.SetSize(3);
  EXPECT_EQ(a.GetAllocSize(), 100);
  a.FreeExtra();
  EXPECT_EQ(a.GetAllocSize(), 3);
  EXPECT_EQ(a.GetSize(), 3);
  a.RemoveAll();
  EXPECT_EQ(a.GetAllocSize(), 0);
  EXPECT_EQ(a.GetData(), nullptr);
  a.SetSize(-1);  // ignored
  EXPECT_EQ(a.GetSize(), 0);
}

TEST(ArrayGrowth, NewElementsAreZeroEvenInReusedSlots) {
  CUIntArray a;
  a.SetSize(5);
  for (int i = 0; i < 5; ++i) a[i] = 7;
  a.SetSize(2);
  a.SetSize(5);  // same storage: the old 7s must not come back
  EXPECT_EQ(Items(a), (std::vector<UINT>{7, 7, 0, 0, 0}));

  CPtrArray p;
  p.SetAtGrow(3, &p);
  EXPECT_EQ(p.GetAt(0), nullptr);
  EXPECT_EQ(p.GetAt(2), nullptr);
  EXPECT_EQ(p.GetAt(3), &p);

  CStringArray s;
  s.SetSize(3);
  s[1] = Text(1, 100);
  s.SetSize(1);
  s.SetSize(3);
  EXPECT_TRUE(s[1].IsEmpty());
}

struct InsertCase {
  int index;
  UINT value;
  int count;
  std::vector<UINT> expected;  // starting from 1, 2, 3
};

TEST(ArrayEdit, InsertAtElement) {
  const InsertCase cases[] = {
      {0, 9, 1, {9, 1, 2, 3}},
      {3, 9, 1, {1, 2, 3, 9}},           // at the end
      {5, 9, 2, {1, 2, 3, 0, 0, 9, 9}},  // past the end: the gap is zero
      {1, 9, 3, {1, 9, 9, 9, 2, 3}},
      {-1, 9, 1, {1, 2, 3}},             // refused
      {1, 9, 0, {1, 2, 3}},
      {1, 9, -2, {1, 2, 3}},
      {INT_MAX, 9, 1, {1, 2, 3}},        // would pass INT_MAX elements
  };
  for (const InsertCase& c : cases) {
    CUIntArray a = Make({1, 2, 3});
    a.InsertAt(c.index, c.value, c.count);
    EXPECT_EQ(Items(a), c.expected) << "InsertAt(" << c.index << ", " << c.value << ", " << c.count << ")";
  }
}

TEST(ArrayEdit, InsertAtArray) {
  struct Case {
    int index;
    std::vector<UINT> source;
    std::vector<UINT> expected;  // starting from 1, 2, 3
  };
  const Case cases[] = {
      {0, {7, 8}, {7, 8, 1, 2, 3}},
      {1, {7, 8}, {1, 7, 8, 2, 3}},
      {3, {7, 8}, {1, 2, 3, 7, 8}},
      {5, {7, 8}, {1, 2, 3, 0, 0, 7, 8}},
      {1, {}, {1, 2, 3}},
      {-1, {7}, {1, 2, 3}},
  };
  for (const Case& c : cases) {
    CUIntArray a = Make({1, 2, 3});
    CUIntArray source = Make(c.source);
    a.InsertAt(c.index, &source);
    EXPECT_EQ(Items(a), c.expected) << "at " << c.index;
  }
  CUIntArray a = Make({1, 2, 3});
  a.InsertAt(1, &a);  // into itself
  EXPECT_EQ(Items(a), (std::vector<UINT>{1, 1, 2, 3, 2, 3}));
  a.InsertAt(0, static_cast<const CUIntArray*>(nullptr));
  EXPECT_EQ(a.GetSize(), 6);
}

TEST(ArrayEdit, RemoveAt) {
  struct Case {
    int index;
    int count;
    std::vector<UINT> expected;  // starting from 1..5
  };
  const Case cases[] = {
      {0, 1, {2, 3, 4, 5}}, {4, 1, {1, 2, 3, 4}},  {1, 3, {1, 5}},
      {3, 10, {1, 2, 3}},                 // the count is cut at the end
      {0, 5, {}},           {5, 1, {1, 2, 3, 4, 5}},  // past the end: nothing
      {-1, 2, {1, 2, 3, 4, 5}}, {1, 0, {1, 2, 3, 4, 5}}, {1, -1, {1, 2, 3, 4, 5}},
  };
  for (const Case& c : cases) {
    CUIntArray a = Make({1, 2, 3, 4, 5});
    a.RemoveAt(c.index, c.count);
    EXPECT_EQ(Items(a), c.expected) << "RemoveAt(" << c.index << ", " << c.count << ")";
  }
}

TEST(ArrayEdit, SetAtGrowAppendAndCopy) {
  CDWordArray a;
  a.SetAtGrow(2, 5);
  EXPECT_EQ(a.GetSize(), 3);
  EXPECT_EQ(a.GetUpperBound(), 2);
  a.SetAtGrow(0, 4);
  a.SetAtGrow(-1, 9);  // ignored
  EXPECT_EQ(a[0], 4u);
  EXPECT_EQ(a[2], 5u);

  CDWordArray b;
  b.Add(1);
  EXPECT_EQ(b.Append(a), 1);  // the old size
  EXPECT_EQ(b.GetSize(), 4);
  EXPECT_EQ(b.Append(b), 4);  // onto itself
  EXPECT_EQ(b.GetSize(), 8);
  EXPECT_EQ(b[4], 1u);
  EXPECT_EQ(b[7], 5u);

  CDWordArray c;
  c.SetSize(0, 50);
  c.Copy(a);
  EXPECT_EQ(c.GetSize(), 3);
  EXPECT_EQ(c[0], 4u);
  EXPECT_EQ(c.GetGrowBy(), 50);  // Copy keeps its own step
  c.Copy(CDWordArray());
  EXPECT_TRUE(c.IsEmpty());
}

TEST(ArrayAccess, OutsideReadsDefaultAndWritesChangeNothing) {
  CUIntArray a = Make({1, 2});
  const CUIntArray& ca = a;
  for (int index : {-1, 2, 100, INT_MIN, INT_MAX}) {
    EXPECT_EQ(a.GetAt(index), 0u) << index;
    EXPECT_EQ(ca[index], 0u) << index;
    a.SetAt(index, 9);
    a[index] = 9;
    a.ElementAt(index) = 9;
    EXPECT_EQ(a[index], 0u) << index;  // the scratch is reset on each access
  }
  EXPECT_EQ(Items(a), (std::vector<UINT>{1, 2}));

  CStringArray s;
  s.Add(u"x");
  s[5] = u"lost";
  EXPECT_EQ(s.GetSize(), 1);
  EXPECT_TRUE(s.GetAt(5).IsEmpty());
  EXPECT_TRUE(s[-1].IsEmpty());
}

TEST(ArrayValue, CopyAndMove) {
  CUIntArray a = Make({1, 2, 3});
  a.SetSize(3, 6);
  CUIntArray copy(a);
  copy[0] = 9;
  EXPECT_EQ(a[0], 1u);  // independent
  EXPECT_EQ(copy.GetGrowBy(), 6);

  CUIntArray moved(std::move(a));
  EXPECT_EQ(Items(moved), (std::vector<UINT>{1, 2, 3}));
  EXPECT_TRUE(a.IsEmpty());  // the moved-from array is empty and usable
  a.Add(4);
  EXPECT_EQ(a.GetSize(), 1);

  copy = std::move(moved);
  EXPECT_EQ(Items(copy), (std::vector<UINT>{1, 2, 3}));
  EXPECT_TRUE(moved.IsEmpty());
  const CUIntArray& same = copy;
  copy = same;  // self-assignment keeps the elements
  EXPECT_EQ(copy.GetSize(), 3);
}

// Every reallocation must move each CString with its own operations: a short
// text points into its own object, and a raw copy would leave it pointing
// into the old block.
TEST(StringArray, ShortAndLongTextsSurviveGrowthAndShifts) {
  CStringArray a;
  a.SetSize(0, 1);  // reallocate on every Add
  constexpr int kCount = 120;
  for (int i = 0; i < kCount; ++i) a.Add(Text(i, i % 2 ? 100 : 5));
  a.InsertAt(0, Text(-1, 8), 3);
  a.RemoveAt(1, 2);
  a.InsertAt(60, Text(-2, 90));
  a.FreeExtra();
  CStringArray copy(a);
  CStringArray moved(std::move(copy));

  ASSERT_EQ(moved.GetSize(), kCount + 2);
  EXPECT_EQ(S(moved[0]), S(Text(-1, 8)));
  EXPECT_EQ(S(moved[60]), S(Text(-2, 90)));
  for (int i = 0; i < moved.GetSize(); ++i) {
    int original = i < 60 ? i - 1 : i - 2;
    if (i == 0 || i == 60) continue;
    const CString& s = moved[i];
    EXPECT_EQ(S(s), S(Text(original, original % 2 ? 100 : 5))) << "element " << i;
    const char* self = reinterpret_cast<const char*>(&s);
    const char* text = reinterpret_cast<const char*>(s.GetString());
    if (s.GetLength() <= CString::kInlineCapacity) {
      EXPECT_TRUE(text >= self && text < self + sizeof(CString)) << "element " << i;
    }
  }
}

TEST(StringArray, ElementOfTheArrayAsArgument) {
  CStringArray a;
  a.SetSize(0, 1);
  a.Add(Text(0, 100));
  a.Add(Text(1, 4));
  a.Add(a[0]);  // the array reallocates while the argument lives in it
  a.Add(a[1]);
  a.InsertAt(0, a[3], 2);
  a.SetAtGrow(7, a[2]);
  EXPECT_EQ(S(a[0]), S(Text(1, 4)));
  EXPECT_EQ(S(a[1]), S(Text(1, 4)));
  EXPECT_EQ(S(a[4]), S(Text(0, 100)));
  EXPECT_EQ(S(a[5]), S(Text(1, 4)));
  EXPECT_TRUE(a[6].IsEmpty());
  EXPECT_EQ(S(a[7]), S(Text(0, 100)));

  CString moving = Text(5, 200);
  EXPECT_EQ(a.Add(std::move(moving)), 8);
  EXPECT_EQ(S(a[8]), S(Text(5, 200)));
  EXPECT_EQ(a.Add(u"lit"), 9);
  EXPECT_EQ(S(a[9]), u"lit");
}

}  // namespace
