// Tests of CMem: whole zeroed pages reserved and trimmed, edits at their edges, sources inside the block.
#include "foundation/CMem.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
BYTE* B(const char* text) { return reinterpret_cast<BYTE*>(const_cast<char*>(text)); }
std::string State(CMem& m) {  // "alloc size content", zero bytes shown as '_'
  std::string text = std::to_string(m.GetAllocSize()) + " " + std::to_string(m.GetSize()) + " ";
  for (int i = 0; i < m.nSize; ++i) text += m.GetBuf()[i] == 0 ? '_' : static_cast<char>(m.pBuf[i]);
  return text;
}
// One call on a block holding `text`: what it gives and the block after it.
struct MemCase { const char* text; std::function<int(CMem&)> call; int result; const char* state; };
const MemCase kCalls[] = {
    {"", [](auto& m) { return m.Reserve(0); }, 1, "4096 0 "},  // a first block always has a page
    {"", [](auto& m) { return m.Reserve(0x7FFFFFFF); }, 0, "0 0 "},  // cannot be rounded within int
    {"hi", [](auto& m) { return m.Reserve(5000) && m.pBuf[2] == 0 && m.pBuf[8191] == 0; }, 1, "8192 2 hi"},
    {"hi", [](auto& m) { BYTE* p = m.pBuf; return m.Reserve(4096) && m.pBuf == p; }, 1, "4096 2 hi"},
    {"abc", [](auto& m) { return m.Increase(5000) + m.Increase(0); }, 2, "8192 3 abc"},
    {"ad", [](auto& m) { return m.Insert(B("bc"), 1, 2); }, 1, "4096 4 abcd"},
    {"ab", [](auto& m) { return m.Insert(B("<"), -5, 1) + m.Insert(B(">"), 99, 1); }, 2, "4096 4 <ab>"},
    {"ab", [](auto& m) { return m.Insert(nullptr, 1, 2); }, 1, "4096 4 a__b"},  // no data: zeros
    {"ab", [](auto& m) { return m.Add(B("x"), -1) * 2 + m.Insert(B("x"), 1, 0); }, 1, "4096 2 ab"},
    {"", [](auto& m) { return m.Add(WORD{0x4E2D}) && m.Add(BYTE{'!'}); }, 1, "4096 3 -N!"},
    {"abcdef", [](auto& m) { return m.Insert(m.pBuf + 1, 3, 3); }, 1, "4096 9 abcbcddef"},  // from inside
    {"abcdef", [](auto& m) { return m.Set(m.pBuf + 3, 3) && m.pBuf[3] == 0; }, 1, "4096 3 def"},
    {"abc", [](auto& m) { return m.Set(B("xy"), 2) && !m.pBuf[2] && !m.Set(B("x"), -1); }, 1, "4096 2 xy"},
    {"abc", [](auto& m) { BYTE* p = m.pBuf; m.Clear(); return m.pBuf == p && m.pBuf[0] == 0; }, 1, "4096 0 "},
    {"abc", [](auto& m) { m.nSize = 1; m.ClearTail(); return m.pBuf[1] + m.pBuf[2]; }, 0, "4096 1 a"},
    {"abc", [](auto& m) { m.Empty(); return m.pBuf == nullptr && m.ToGHND() == nullptr; }, 1, "0 0 "},
};
TEST(CMem, CallTable) {
  for (const MemCase& c : kCalls) {
    CMem m;
    ASSERT_EQ(m.Add(B(c.text), static_cast<int>(std::strlen(c.text))), 1);
    EXPECT_EQ(c.call(m), c.result) << c.text << " -> " << c.state;
    EXPECT_EQ(State(m), c.state) << c.text;
  }
  CMem page(4096), none, odd(1), big;  // whole pages, zeroed; none until something is added
  EXPECT_EQ(State(page) + "|" + State(odd) + "|" + State(none), "4096 0 |4096 0 |0 0 ");
  std::string expected;
  for (int i = 0; i < 5000; ++i) expected += static_cast<char>('a' + i % 26);
  for (char c : expected) ASSERT_EQ(big.Add(static_cast<BYTE>(c)), 1);
  ASSERT_EQ(big.Add(big.pBuf + 1000, 4000), 1);  // our own content while the block grows
  EXPECT_EQ(State(big), "12288 9000 " + expected + expected.substr(1000, 4000));
}
struct TrimCase { int alloc, size, expected; bool moves; };
constexpr TrimCase kTrim[] = {
    {8192, 100, 4096, true},
    {4096, 100, 4096, false},   // one page is never trimmed
    {8192, 5000, 8192, false},  // both round to two pages
    {12288, 4096, 4096, true},  // a full page stays one page
    {8192, 0, 4096, true},      // an empty block keeps one page
};
TEST(CMem, TrimAndMoves) {
  for (const TrimCase& c : kTrim) {
    CMem m;
    ASSERT_EQ(m.Reserve(c.alloc), 1);
    std::memset(m.pBuf, 'x', static_cast<std::size_t>(c.size));
    m.nSize = c.size;  // a cache page sets its used size by hand
    BYTE* before = m.pBuf;
    m.Trim();
    EXPECT_TRUE(m.nAlloc == c.expected && (m.pBuf != before) == c.moves) << c.alloc << " " << c.size;
    EXPECT_EQ(std::count(m.pBuf, m.pBuf + m.nAlloc, 'x'), c.size);  // the content kept
  }
  CMem a, b(4096), c;
  a.Add(B("abc"), 3);
  EXPECT_TRUE(b.MoveIn(&a) && !b.MoveIn(&b) && !b.MoveIn(nullptr));
  EXPECT_EQ(State(a) + "|" + State(b), "0 0 |4096 3 abc");
  BYTE* raw = b.MoveOut();  // c owns it after the MoveIn and frees it
  EXPECT_TRUE(c.MoveIn(raw, 3) && c.MoveIn(raw, 3) && !c.MoveIn(nullptr, 1));
  EXPECT_EQ(State(b) + "|" + State(c), "0 0 |3 3 abc");
}
