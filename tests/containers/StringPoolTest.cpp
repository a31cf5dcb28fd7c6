// Tests of CStringPool and the searches of ISortedStringQuery: the binary
// search at every size and position, the linear and prefix search with and
// without case, the changes in place, cutting a prepared block, and the
// stream form.
#include "VKTCalc.h"
#include "tests/support/MemoryStream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::u16string Str(const char16_t* s) { return s == nullptr ? u"<null>" : std::u16string(s); }

void Fill(CStringPool& pool, std::initializer_list<const char16_t*> items) {
  CStringArray array;
  for (const char16_t* item : items) array.Add(CString(item));
  pool.Load(array);
}

std::vector<std::u16string> All(CStringPool& pool) {
  std::vector<std::u16string> out;
  for (int i = 0; i < pool.GetSize(); ++i) out.push_back(Str(pool.GetAt(i)));
  return out;
}

// A block of units, as a caller of LoadSortedBuf prepares it.
void Units(CMem& block, const std::u16string& units) {
  block.Set(reinterpret_cast<BYTE*>(const_cast<char16_t*>(units.data())),
            static_cast<int>(units.size() * sizeof(char16_t)));
}

// Pools of every size from 0 to 40 holding the keys 1, 3, 5, ... (as two
// letters, "ab", "ad", ...): every string is found at its index, and every
// even key, before, between and after them, is not.
TEST(StringPoolBSearch, EverySizeEveryPosition) {
  auto key = [](int n) {
    return std::u16string{static_cast<char16_t>(u'a' + n / 26), static_cast<char16_t>(u'a' + n % 26)};
  };
  for (int size = 0; size <= 40; ++size) {
    CStringPool pool;
    std::vector<std::u16string> keys;
    for (int i = 0; i < size; ++i) {
      keys.push_back(key(2 * i + 1));
      CString text(keys.back());
      pool.Add(text);
    }
    for (int i = 0; i < size; ++i)
      EXPECT_EQ(pool.BSearch(keys[i].c_str()), i) << "size " << size << ", index " << i;
    for (int i = 0; i <= size; ++i) {  // in front of string i, and behind the last
      const std::u16string missing = key(2 * i);
      EXPECT_EQ(pool.BSearch(missing.c_str()), -1)
          << "size " << size << ", missing " << testing::PrintToString(missing);
    }
    EXPECT_EQ(pool.BSearch(u""), -1) << "size " << size;
    EXPECT_EQ(pool.BSearch(nullptr), -1) << "size " << size;
  }
}

TEST(StringPoolBSearch, CaseCountsAndDuplicatesAreFound) {
  CStringPool pool;
  Fill(pool, {u"a", u"b", u"c"});
  EXPECT_EQ(pool.BSearch(u"b"), 1);
  EXPECT_EQ(pool.BSearch(u"B"), -1);  // by collation with case
  EXPECT_EQ(pool.BSearch(u"d"), -1);
  EXPECT_EQ(pool.BSearch(u" "), -1);

  Fill(pool, {u"a", u"b", u"b", u"b", u"c", u"d", u"e"});
  const int found = pool.BSearch(u"b");
  EXPECT_GE(found, 1);
  EXPECT_LE(found, 3);
  EXPECT_EQ(pool.Find(u"b", 1, 0), 1);  // the linear search gives the first
}

struct FindCase {
  const char16_t* text;
  int bCase;
  int bPrefix;
  int expected;
};

// Pool: "ABC", "abc", "", "abd", "xy".
constexpr FindCase kFind[] = {
    {u"abc", 1, 0, 1},
    {u"abc", 0, 0, 0},      // without case the first spelling wins
    {u"ABD", 1, 0, -1},
    {u"ABD", 0, 0, 3},
    {u"xy", 1, 0, 4},
    {u"x", 1, 0, -1},       // not a prefix search
    {u"", 1, 0, 2},
    {u"abcd", 1, 1, 1},     // the pool string is the prefix
    {u"abcd", 0, 1, 0},
    {u"ABCD", 1, 1, 0},
    {u"ab", 0, 1, 2},       // only the empty string begins "ab"
    {u"zz", 1, 1, 2},
    {nullptr, 1, 0, -1},
    {nullptr, 0, 1, -1},
};

TEST(StringPoolFind, Table) {
  CStringPool pool;
  Fill(pool, {u"ABC", u"abc", u"", u"abd", u"xy"});
  for (const FindCase& c : kFind) {
    EXPECT_EQ(pool.Find(c.text, c.bCase, c.bPrefix), c.expected)
        << testing::PrintToString(Str(c.text)) << " case " << c.bCase << " prefix " << c.bPrefix;
  }
}

TEST(StringPoolFind, PrefixCaseFoldsAsciiOnly) {
  CStringPool pool;
  Fill(pool, {u"abc"});
  EXPECT_EQ(pool.Find(u"abcd", 1, 1), 0);
  EXPECT_EQ(pool.Find(u"ab", 1, 1), -1);
  Fill(pool, {u"ABC"});
  EXPECT_EQ(pool.Find(u"abcd", 0, 1), 0);
  EXPECT_EQ(pool.Find(u"abcd", 1, 1), -1);
  Fill(pool, {u"\u00C4x"});  // A with diaeresis is not an ASCII letter
  EXPECT_EQ(pool.Find(u"\u00E4xy", 0, 1), -1);
  CStringPool empty;
  EXPECT_EQ(empty.Find(u"a", 0, 1), -1);
  EXPECT_EQ(empty.Find(u"", 1, 0), -1);
}

TEST(StringPool, GetAtOutsideIsNull) {
  CStringPool pool;
  EXPECT_EQ(pool.GetAt(0), nullptr);
  Fill(pool, {u"a"});
  EXPECT_EQ(pool.GetAt(-1), nullptr);
  EXPECT_EQ(pool.GetAt(1), nullptr);
  EXPECT_EQ(Str(pool.GetAt(0)), u"a");
}

TEST(StringPool, LoadAddAndBlockLayout) {
  CStringPool pool;
  pool.aExtras.Add(7);
  Fill(pool, {u"ab", u"", u"c"});
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"ab", u"", u"c"}));
  EXPECT_EQ(pool.aOffsets[0], 0u);
  EXPECT_EQ(pool.aOffsets[1], 6u);  // "ab" and its terminator
  EXPECT_EQ(pool.aOffsets[2], 8u);
  EXPECT_EQ(pool.mem.GetSize(), 12);
  EXPECT_EQ(pool.aExtras.GetSize(), 1);  // never touched by Load or Add
  CString d(u"d");
  EXPECT_EQ(pool.Add(d), 3);
  EXPECT_EQ(pool.aOffsets[3], 12u);
  EXPECT_EQ(Str(pool.GetAt(3)), u"d");

  CStringArray none;
  pool.Load(none);
  EXPECT_EQ(pool.GetSize(), 0);
  EXPECT_EQ(pool.mem.GetSize(), 0);
}

TEST(StringPool, InsertAt) {
  CStringPool pool;
  Fill(pool, {u"a", u"b"});
  pool.aExtras.Add(5);  // one extra: index 0 lies within it, 2 does not
  CString x(u"xyz");
  pool.InsertAt(0, x);
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"xyz", u"a", u"b"}));
  EXPECT_EQ(pool.aExtras.GetSize(), 2);
  EXPECT_EQ(pool.aExtras[0], 0u);
  EXPECT_EQ(pool.aExtras[1], 5u);
  pool.InsertAt(2, x);
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"xyz", u"a", u"xyz", u"b"}));
  EXPECT_EQ(pool.aExtras.GetSize(), 2);
  pool.InsertAt(4, x);  // outside: nothing
  pool.InsertAt(-1, x);
  EXPECT_EQ(pool.GetSize(), 4);
}

TEST(StringPool, SetAtInPlaceAndGrowing) {
  CStringPool pool;
  Fill(pool, {u"a", u"b"});
  CString longer(u"longer");
  pool.SetAt(0, longer);
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"longer", u"b"}));
  const int size = pool.mem.GetSize();
  CString shorter(u"s");
  pool.SetAt(0, shorter);  // fits: written in place, the room stays
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"s", u"b"}));
  EXPECT_EQ(pool.mem.GetSize(), size);
  CString last(u"last one");
  pool.SetAt(1, last);  // the last string's room reaches to the block's end
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"s", u"last one"}));
  pool.SetAt(2, last);  // outside: nothing
  EXPECT_EQ(pool.GetSize(), 2);

  Fill(pool, {u"ab", u"c"});
  CString empty;
  pool.SetAt(0, empty);
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"", u"c"}));
}

TEST(StringPool, RemoveAtKeepsTheBytes) {
  CStringPool pool;
  Fill(pool, {u"a", u"b"});
  pool.aExtras.Add(1);
  pool.aExtras.Add(2);
  const int size = pool.mem.GetSize();
  pool.RemoveAt(0);
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"b"}));
  EXPECT_EQ(pool.mem.GetSize(), size);
  ASSERT_EQ(pool.aExtras.GetSize(), 1);
  EXPECT_EQ(pool.aExtras[0], 2u);
  pool.RemoveAt(1);
  pool.RemoveAt(-1);
  EXPECT_EQ(pool.GetSize(), 1);
}

struct CutCase {
  std::u16string block;
  int bLower;
  const char16_t* sep;
  std::vector<std::u16string> expected;
};

TEST(StringPoolLoadSortedBuf, Table) {
  const CutCase cases[] = {
      {std::u16string(u"A\0B\0", 4), 1, nullptr, {u"a", u"b", u""}},  // a last empty string
      {std::u16string(u"Ab\0Cd", 5), 0, nullptr, {u"Ab", u"Cd"}},      // no cut at the end
      {u"AB,cd,EF", 1, u",", {u"ab", u"cd", u"ef"}},
      {u"a, b, c", 0, u", ", {u"a", u"b", u"c"}},                       // the width is skipped
      {u"a,xb", 0, u",y", {u"a", u"b"}},                                // only the first unit counts
      {u"a,", 0, u",,,", {u"a", u""}},                                  // a cut past the end
      {u"\u00C4Z[", 1, nullptr, {u"\u00C4z["}},                         // A to Z only
      {u"x", 0, u"", {u"x"}},                                           // an empty sep cuts like none
  };
  for (const CutCase& c : cases) {
    CMem src;
    Units(src, c.block);
    CStringPool pool;
    EXPECT_EQ(pool.LoadSortedBuf(src, c.bLower, c.sep), 1) << testing::PrintToString(c.block);
    EXPECT_EQ(src.GetSize(), 0);
    EXPECT_EQ(src.GetBuf(), nullptr);  // taken over, not copied
    EXPECT_EQ(All(pool), c.expected) << testing::PrintToString(c.block);
  }
}

TEST(StringPoolLoadSortedBuf, TooSmallLeavesThePool) {
  CStringPool pool;
  Fill(pool, {u"kept"});
  CMem empty;
  EXPECT_EQ(pool.LoadSortedBuf(empty, 1, nullptr), 0);
  CMem oneByte;
  oneByte.Add(static_cast<BYTE>('A'));
  EXPECT_EQ(pool.LoadSortedBuf(oneByte, 1, nullptr), 0);
  EXPECT_EQ(oneByte.GetSize(), 1);
  EXPECT_EQ(All(pool), std::vector<std::u16string>{u"kept"});
}

TEST(StringPoolLoadSortedBuf, LowerCasedTableIsSearchable) {
  // As the function manager loads its names: terminators between them.
  const std::u16string names(u"ABS\0Avg\0Count\0DATE\0If\0Max\0Min\0Sum", 33);
  CMem block;
  Units(block, names);
  CStringPool pool;
  ASSERT_EQ(pool.LoadSortedBuf(block, 1, nullptr), 1);
  const char16_t* lower[] = {u"abs", u"avg", u"count", u"date", u"if", u"max", u"min", u"sum"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(pool.BSearch(lower[i]), i) << testing::PrintToString(Str(lower[i]));
  EXPECT_EQ(pool.BSearch(u"Sum"), -1);
  EXPECT_EQ(pool.BSearch(u"round"), -1);
}

TEST(StringPool, CopyAndEmpty) {
  CStringPool pool;
  Fill(pool, {u"a", u"bc"});
  pool.aExtras.Add(9);
  CStringPool copy;
  Fill(copy, {u"old"});
  copy.Copy(&pool);
  EXPECT_EQ(All(copy), (std::vector<std::u16string>{u"a", u"bc"}));
  EXPECT_NE(copy.GetAt(0), pool.GetAt(0));  // a block of its own
  EXPECT_EQ(copy.aExtras.GetSize(), 1);
  copy.Copy(nullptr);
  copy.Copy(&copy);
  EXPECT_EQ(copy.GetSize(), 2);
  copy.Empty();
  EXPECT_EQ(copy.GetSize(), 0);
  EXPECT_EQ(copy.aExtras.GetSize(), 0);
  EXPECT_EQ(copy.mem.GetSize(), 0);
  EXPECT_EQ(copy.BSearch(u"a"), -1);
}

TEST(StringPoolStream, RoundTrip) {
  CStringPool pool;
  Fill(pool, {u"alpha", u"", u"z", u"\u4E2D\u6587"});
  pool.RemoveAt(0);  // unused bytes travel with the block
  pool.aExtras.Add(11);
  pool.aExtras.Add(12);
  vkt::test::MemoryOutput out;
  pool.Serialize(&out);

  CStringPool back;
  Fill(back, {u"to be replaced"});
  back.aExtras.Add(99);
  vkt::test::MemoryInput in(out.bytes);
  back.Deserialize(&in);
  EXPECT_EQ(in.Remaining(), 0u);
  EXPECT_EQ(All(back), All(pool));
  EXPECT_EQ(back.mem.GetSize(), pool.mem.GetSize());
  ASSERT_EQ(back.aExtras.GetSize(), 2);
  EXPECT_EQ(back.aExtras[1], 12u);
  EXPECT_EQ(back.BSearch(u"\u4E2D\u6587"), 2);
}

TEST(StringPoolStream, EmptyPoolWritesOnlyTheSizes) {
  CStringPool pool;
  pool.aExtras.Add(3);  // not written without strings
  vkt::test::MemoryOutput out;
  pool.Serialize(&out);
  EXPECT_EQ(out.bytes, (std::vector<BYTE>{0, 0, 0, 0, 1, 0, 0, 0}));

  CStringPool back;
  Fill(back, {u"x"});
  vkt::test::MemoryInput in(out.bytes);
  back.Deserialize(&in);
  EXPECT_EQ(back.GetSize(), 0);
  EXPECT_EQ(back.aExtras.GetSize(), 0);
}

TEST(StringPoolStream, DamagedStreamsReadSafely) {
  // Offsets that are odd or lie past the block read as empty strings.
  vkt::test::MemoryOutput out;
  out.WriteDWord(3, 1);
  out.WriteDWord(0, 1);
  CMem block;
  Units(block, u"ab");  // no terminator
  out.WriteMem(&block, 1);
  const DWORD offsets[] = {0, 1, 4000};
  out.WriteData(offsets, sizeof(offsets));
  CStringPool pool;
  vkt::test::MemoryInput in(out.bytes);
  pool.Deserialize(&in);
  EXPECT_EQ(All(pool), (std::vector<std::u16string>{u"ab", u"", u""}));

  // A negative size, and a stream that ends early.
  for (const std::vector<BYTE>& bytes :
       {std::vector<BYTE>{0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}, std::vector<BYTE>{5, 0, 0, 0, 2, 0},
        std::vector<BYTE>{}}) {
    CStringPool damaged;
    vkt::test::MemoryInput input(bytes);
    damaged.Deserialize(&input);
    for (int i = 0; i < damaged.GetSize(); ++i) EXPECT_EQ(Str(damaged.GetAt(i)), u"");
  }
}

}  // namespace
