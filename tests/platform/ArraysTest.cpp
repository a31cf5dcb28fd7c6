// Tests of the arrays: growth steps, edits at and past the ends, indexes outside, CStringArray's moves.
#include "platform/Arrays.h"
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>
#include "tests/support/Text.h"
using vkt::test::U;
using Values = std::vector<UINT>;
const CUIntArray* Source(const Values& values) {  // an array of the values, valid until the next call
  static CUIntArray source;
  source.RemoveAll();
  for (UINT v : values) source.Add(v);
  return &source;
}
struct GrowthCase { int step, fromSize, toSize, capacity, toStep = -1; };  // SetSize(0, step), (from), (to)
constexpr GrowthCase kGrowth[] = {
    {0, 0, 1, 1},              // first block: what is needed, or the step when that is more
    {0, 1, 2, 5},              // automatic step: 1/8 is 0, raised to 4
    {0, 8192, 8193, 9216},     // 8192/8 = 1024, the largest step
    {0, 16000, 16001, 17024},  // 2000 cut to 1024
    {0, 40, 100, 100},         // more than one step needed: exactly what is needed
    {0, 10, 5, 10},            // shrinking keeps the storage
    {10, 0, 3, 10},
    {3, 10, 11, 13},           // an explicit step below 4 is kept as it is
    {7, 9, 10, 13, 0},         // a new step of 0 is automatic again: 9/8 raised to 4
};
TEST(CArray, GrowthSteps) {
  for (const GrowthCase& c : kGrowth) {
    CByteArray a;
    a.SetSize(0, c.step);
    a.SetSize(c.fromSize);
    a.SetSize(c.toSize, c.toStep);
    EXPECT_EQ(std::make_pair(a.GetSize(), a.GetAllocSize()), std::make_pair(c.toSize, c.capacity)) << c.step;
  }
}
struct EditCase { void (*edit)(CUIntArray& a); Values expected; };  // on 1, 2, 3
const EditCase kEdits[] = {
    {[](auto& a) { a.InsertAt(5, 9, 2); }, {1, 2, 3, 0, 0, 9, 9}},  // the gap past the end is zero
    {[](auto& a) { a.InsertAt(-1, 9); }, {1, 2, 3}},
    {[](auto& a) { a.InsertAt(INT_MAX, 9); }, {1, 2, 3}},  // would pass INT_MAX elements
    {[](auto& a) { a.InsertAt(1, Source({7, 8})); }, {1, 7, 8, 2, 3}},
    {[](auto& a) { a.InsertAt(1, &a); }, {1, 1, 2, 3, 2, 3}},  // into itself
    {[](auto& a) { a.InsertAt(-1, Source({7})); }, {1, 2, 3}},
    {[](auto& a) { a.InsertAt(0, static_cast<const CUIntArray*>(nullptr)); }, {1, 2, 3}},
    {[](auto& a) { a.RemoveAt(0); }, {2, 3}},
    {[](auto& a) { a.RemoveAt(1, 10); }, {1}},  // the count is cut at the end
    {[](auto& a) { a.RemoveAt(3); }, {1, 2, 3}},
    {[](auto& a) { a.RemoveAt(-1, 2); }, {1, 2, 3}},
    {[](auto& a) { a.SetAtGrow(5, 4); }, {1, 2, 3, 0, 0, 4}},
    {[](auto& a) { a.SetAtGrow(-1, 4); a.SetAtGrow(0, 4); }, {4, 2, 3}},
    {[](auto& a) { a.SetAtGrow(INT_MAX, 4); }, {1, 2, 3}},
    {[](auto& a) { EXPECT_EQ(a.Append(a), 3); }, {1, 2, 3, 1, 2, 3}},  // gives the old size
    {[](auto& a) { a.SetSize(3, 50); a.Copy(*Source({5})); EXPECT_EQ(a.GetGrowBy(), 50); }, {5}},  // own step
    {[](auto& a) { CUIntArray b(a), c; c = b; b[0] = 9; c.Append(b); a = c; }, {1, 2, 3, 9, 2, 3}},  // apart
    {[](auto& a) { CUIntArray moved(std::move(a)); a.Add(4); a.Append(moved); }, {4, 1, 2, 3}},  // emptied
    {[](auto& a) { CUIntArray b; b = std::move(a); a.Append(b); a.Append(b); }, {1, 2, 3, 1, 2, 3}},
    {[](auto& a) { a.RemoveAll(); EXPECT_TRUE(a.GetData() == nullptr && a.GetAllocSize() == 0); }, {}},
    {[](auto& a) { a.SetSize(-1); }, {1, 2, 3}},
    {[](auto& a) { a.SetSize(1); a.SetSize(3); }, {1, 0, 0}},  // reused slots are zeroed again
    {[](auto& a) { a.SetAt(3, 9); a[-1] = 9; a.ElementAt(INT_MIN) = 9; a.GetAt(3) = 9; }, {1, 2, 3}},  // lost
    {[](auto& a) { a[3] = 9; const auto& c = a; a.Add(a[-1] + c[3] + c.ElementAt(9)); }, {1, 2, 3, 0}},
};
TEST(CArray, EditTable) {
  for (std::size_t i = 0; i < std::size(kEdits); ++i) {
    CUIntArray a(*Source({1, 2, 3}));
    kEdits[i].edit(a);
    const CUIntArray& view = a;
    EXPECT_EQ(Values(view.begin(), view.end()), kEdits[i].expected) << "row " << i;
  }
}
// Every reallocation must move each CString with its own operations: a short text points into its own object,
// and a raw copy would leave it pointing into the old block. An argument may live in the array itself.
TEST(CStringArray, TextsSurviveGrowthShiftsAndArgumentsFromTheArray) {
  auto text = [](int i) { return CString(std::to_string(i).c_str()) + CString(u'.', i % 2 ? 100 : 5); };
  CStringArray a;
  a.SetSize(0, 1);  // reallocate on every Add
  for (int i = 0; i < 120; ++i) a.Add(text(i));
  a.InsertAt(0, a[1], 3);
  a.RemoveAt(1, 2);
  a.FreeExtra();
  a.InsertAt(60, text(-3));
  a.SetAtGrow(123, a[2]);
  EXPECT_EQ(a.Add(a[123]), 124);
  EXPECT_EQ(a.Add(CString(a[3])), 125);
  a[-1] = u"lost";  // the scratch for an index outside is reset on every access
  EXPECT_TRUE(a.GetAt(-1).IsEmpty() && a.GetAt(126).IsEmpty());
  CStringArray copy(a), moved(std::move(copy));
  for (int i = 0; i < 126; ++i) {
    const int original = i == 0 ? 1 : i < 60 ? i - 1 : i == 60 ? -3 : i < 122 ? i - 2 : i == 125 ? 2 : 1;
    EXPECT_EQ(U(moved[i]), U(i == 122 ? CString() : text(original))) << "element " << i;
    const char* self = reinterpret_cast<const char*>(&moved[i]);
    const char* units = reinterpret_cast<const char*>(moved[i].GetString());
    const bool inside = units > self && units < self + sizeof(CString);
    EXPECT_TRUE(inside || moved[i].GetLength() > CString::kInlineCapacity) << "element " << i;
  }
}
