// tests/containers/StringPoolTest.cpp: CStringPool and the searches of ISortedStringQuery: the binary
// search at every size and position, Find, the block layout after each change, LoadSortedBuf, streams.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::Row;
using vkt::test::U;

std::u16string Num(long value) { const std::string d = std::to_string(value); return {d.begin(), d.end()}; }

// The words as the stream writes them: 32 bits each, low byte first.
std::vector<BYTE> Le(std::initializer_list<DWORD> words) {
  vkt::test::MemoryOutput out;
  for (DWORD word : words) out.WriteDWord(word, 1);
  return out.bytes;
}

// Loads the '|'-separated strings (null: none) and sets aExtras to the digits of `extras`.
void Fill(CStringPool& pool, const char16_t* items, const char16_t* extras = u"") {
  CStringArray array;
  std::u16string_view rest = items != nullptr ? items : u"";
  for (std::size_t cut = 0; items != nullptr && cut != rest.npos; rest.remove_prefix(cut + 1))
    array.Add(CString(rest.substr(0, cut = rest.find(u'|'))));
  pool.Load(array);
  for (const char16_t* p = extras; *p != 0; ++p) pool.aExtras.Add(static_cast<UINT>(*p - u'0'));
}

// Each string behind its byte offset, then aExtras and the block's size: "0:ab 6:c [5] 10".
std::u16string Show(CStringPool& pool) {
  std::u16string out, extras;
  for (int i = 0; i < pool.GetSize(); ++i) out += Num(pool.aOffsets[i]) + u":" + U(pool.GetAt(i)) + u" ";
  for (UINT extra : pool.aExtras) extras += Num(extra);
  return out + u"[" + extras + u"] " + Num(pool.mem.GetSize());
}

// Pools of 0 to 40 strings hold the odd keys as two letters ("ab", "ad", ...): each is found, no even one.
TEST(StringPoolBSearch, EverySizeEveryPosition) {
  auto key = [](int v) { return std::u16string{char16_t(u'a' + v / 26), char16_t(u'a' + v % 26)}; };
  for (int n = 0; n <= 40; ++n) {
    CStringPool pool;
    std::u16string items;
    for (int i = 0; i < n; ++i) items += (i > 0 ? u"|" : u"") + key(2 * i + 1);
    Fill(pool, n > 0 ? items.c_str() : nullptr);
    for (int k = 0; k <= 2 * n; ++k)
      EXPECT_EQ(pool.BSearch(key(k).data()), k % 2 ? k / 2 : -1) << n << " strings, key " << k;
  }
}

// op: 'B' BSearch, 'F' Find of an equal string, 'P' Find of a string that begins the text.
constexpr struct { const char16_t* items; char op; const char16_t* text; int bCase, expected; } kSearch[] = {
    {u"a|b|c", 'B', u"B", 1, -1},  // by collation with case
    {u"a|b|c", 'B', nullptr, 1, -1},
    {u"ABC|abc||abd|xy", 'F', u"abc", 1, 1},
    {u"ABC|abc||abd|xy", 'F', u"abc", 0, 0},  // without case the first spelling wins
    {u"ABC|abc||abd|xy", 'F', u"", 1, 2},
    {u"ABC|abc||abd|xy", 'F', nullptr, 1, -1},
    {u"ABC|abc||abd|xy", 'P', u"abcd", 1, 1},
    {u"ABC|abc||abd|xy", 'P', u"ABCD", 1, 0},
    {u"ABC|abc||abd|xy", 'P', u"ab", 0, 2},  // only the empty string begins "ab"
    {u"ABC", 'P', u"abcd", 0, 0},            // without case ASCII letters fold
    {u"\u00C4x", 'P', u"\u00E4xy", 0, -1},  // and only those
    {nullptr, 'P', u"", 0, -1},
};

TEST(StringPoolSearch, Table) {
  for (const auto& c : kSearch) {
    CStringPool pool;
    Fill(pool, c.items);
    EXPECT_EQ(c.op == 'B' ? pool.BSearch(c.text) : pool.Find(c.text, c.bCase, c.op == 'P'), c.expected)
        << Row(c.items) << " " << c.op << " " << Row(c.text) << " " << c.bCase;
  }
}

// Changes from a loaded pool: 'A'dd (i is the index it gives), 'I'nsertAt, 'S'etAt, 'R'emoveAt,
// 'C'opy from a pool of the text's strings with aExtras 9 (then from null and itself), 'E'mpty.
struct EditCase { const char16_t *items, *extras; char op; int i; const char16_t *text, *expected; };
constexpr EditCase kEdits[] = {
    {u"ab||c", u"7", 'A', 3, u"d", u"0:ab 6: 8:c 12:d [7] 16"},  // Load and Add leave aExtras alone
    {u"a|b", u"5", 'I', 0, u"xyz", u"0:xyz 8:a 12:b [05] 16"},  // a 0 goes into aExtras within it
    {u"a|b", u"5", 'I', 1, u"xyz", u"0:a 4:xyz 12:b [5] 16"},
    {u"a|b", u"", 'I', 2, u"x", u"0:a 4:b [] 8"},  // outside the table: nothing
    {u"a|b", u"", 'S', 0, u"longer", u"0:longer 14:b [] 18"},
    {u"longer|b", u"", 'S', 0, u"s", u"0:s 14:b [] 18"},  // fits: in place, the room stays
    {u"a|b", u"", 'S', 1, u"last one", u"0:a 4:last one [] 22"},
    {u"a|b", u"", 'S', 2, u"x", u"0:a 4:b [] 8"},
    {u"a|b", u"12", 'R', 0, u"", u"4:b [2] 8"},  // the bytes stay in the block
    {u"a|b", u"1", 'R', 1, u"", u"0:a [1] 8"},
    {u"a|b", u"", 'R', -1, u"", u"0:a 4:b [] 8"},
    {u"old", u"1", 'C', 0, u"a|bc", u"0:a 4:bc [9] 10"},
    {u"a|bc", u"1", 'E', 0, u"", u"[] 0"},
};

TEST(StringPool, ChangesAndTheBlockLayout) {
  for (const auto& c : kEdits) {
    CStringPool pool, source;
    Fill(pool, c.items, c.extras);
    Fill(source, c.text, u"9");
    CString text(c.text);
    switch (c.op) {
      case 'A': EXPECT_EQ(pool.Add(text), c.i); break;
      case 'I': pool.InsertAt(c.i, text); break;
      case 'S': pool.SetAt(c.i, text); break;
      case 'R': pool.RemoveAt(c.i); break;
      case 'C': pool.Copy(&source); pool.Copy(nullptr); pool.Copy(&pool); break;
      default: pool.Empty();
    }
    EXPECT_EQ(Show(pool), c.expected) << Row(c.items) << " " << c.op << c.i;
    EXPECT_EQ(U(pool.GetAt(-1)) + U(pool.GetAt(pool.GetSize())), u"<null><null>");
  }
}

TEST(StringPoolLoadSortedBuf, Table) {
  const struct { std::u16string block; int bLower; const char16_t *sep, *expected; int cut = 0; } cases[] = {
      {std::u16string(u"A\0B\0", 4), 1, nullptr, u"0:a 4:b 8: [] 8"},  // a last, empty, string
      {u"AB,cd,EF", 1, u",", u"0:ab 6:cd 12:ef [] 16"},
      {u"a, b, c", 0, u", ", u"0:a 6:b 12:c [] 14"},  // the whole width is skipped
      {u"a,xb", 0, u",y", u"0:a 6:b [] 8"},           // only the first unit is compared
      {u"a,", 0, u",,,", u"0:a 8: [] 4"},             // a cut past the end
      {u"\u00C4Z[", 1, nullptr, u"0:\u00C4z[ [] 6"},  // A to Z only
      {u"x", 0, u"", u"0:x [] 2"},                     // an empty sep cuts like none
      {u"x", 0, nullptr, nullptr, 1},                  // one byte is no unit: the pool stays
  };
  for (const auto& c : cases) {
    CStringPool pool;
    Fill(pool, u"kept");
    CMem src;
    const int bytes = static_cast<int>(c.block.size() * 2) - c.cut;
    src.Set(reinterpret_cast<BYTE*>(const_cast<char16_t*>(c.block.data())), bytes);
    EXPECT_EQ(pool.LoadSortedBuf(src, c.bLower, c.sep), c.expected != nullptr ? 1 : 0) << Row(c.expected);
    EXPECT_EQ(src.GetSize(), c.expected != nullptr ? 0 : bytes);  // taken over, not copied
    EXPECT_EQ(Show(pool), c.expected != nullptr ? c.expected : u"0:kept [] 10");
  }
}

TEST(StringPoolStream, RoundTripAndDamagedStreams) {
  CStringPool pool, empty;
  Fill(pool, u"alpha||z|\u4E2D\u6587", u"12");
  pool.RemoveAt(0);  // unused bytes travel with the block
  Fill(empty, nullptr, u"3");
  vkt::test::MemoryOutput out, none;
  pool.Serialize(&out);
  empty.Serialize(&none);
  EXPECT_EQ(none.bytes, Le({0, 1}));  // only the sizes: no aExtras without strings
  const struct { std::vector<BYTE> bytes; std::u16string expected; } cases[] = {
      {out.bytes, Show(pool)},
      // Three offsets into a block "ab" without terminator: odd ones or those past it read as empty.
      {Le({3, 0, 4, 0x00620061, 0, 1, 4}), u"0:ab 1: 4: [] 4"},
      {Le({0xFFFFFFFF, 0}), u"[] 0"},      // a negative count
      {Le({5}), u"0: 0: 0: 0: 0: [] 0"},  // the stream ends early
      {{}, u"[] 0"},
  };
  for (const auto& c : cases) {
    CStringPool back;
    Fill(back, u"to be replaced", u"9");
    vkt::test::MemoryInput in(c.bytes);
    back.Deserialize(&in);
    EXPECT_EQ(Show(back), c.expected);
    EXPECT_EQ(in.Remaining(), 0u);
  }
}

}  // namespace
