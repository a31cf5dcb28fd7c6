// tests/foundation/CMemTest.cpp: page sizing of CMem (Reserve, Trim), and the
// byte operations at their edges, including sources inside the block itself.
#include "foundation/CMem.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::string Bytes(CMem& m) {
  return std::string(reinterpret_cast<const char*>(m.GetBuf()), static_cast<std::size_t>(m.GetSize()));
}

BYTE* B(const char* text) { return reinterpret_cast<BYTE*>(const_cast<char*>(text)); }

TEST(CMem, ConstructionReservesWholePages) {
  CMem page(4096);
  EXPECT_EQ(page.nAlloc, 4096);
  EXPECT_EQ(page.nSize, 0);
  ASSERT_NE(page.pBuf, nullptr);
  for (int i = 0; i < 4096; ++i) ASSERT_EQ(page.pBuf[i], 0) << "byte " << i;
  page.nSize = 808;  // a cache page sets its used size by hand
  EXPECT_EQ(page.GetSize(), 808);

  CMem none;
  EXPECT_EQ(none.nAlloc, 0);
  EXPECT_EQ(none.pBuf, nullptr);
  CMem odd(1);
  EXPECT_EQ(odd.nAlloc, 4096);
}

TEST(CMem, ReserveRoundsUpAndKeepsContent) {
  CMem m(4096);
  ASSERT_EQ(m.Add(B("hello"), 5), 1);
  ASSERT_EQ(m.Reserve(5000), 1);
  EXPECT_EQ(m.nAlloc, 8192);
  EXPECT_EQ(Bytes(m), "hello");
  EXPECT_EQ(m.pBuf[5], 0);
  EXPECT_EQ(m.pBuf[8191], 0);  // the new block is zeroed throughout

  BYTE* before = m.pBuf;
  ASSERT_EQ(m.Reserve(100), 1);
  EXPECT_EQ(m.nAlloc, 8192);
  EXPECT_EQ(m.pBuf, before);  // nothing reallocated
  EXPECT_EQ(m.Reserve(8192), 1);
  EXPECT_EQ(m.pBuf, before);

  CMem empty;
  ASSERT_EQ(empty.Reserve(0), 1);  // a first block always has a page
  EXPECT_EQ(empty.nAlloc, 4096);
  EXPECT_EQ(empty.Reserve(0x7FFFFFFF), 0);  // cannot round up within int
  EXPECT_EQ(empty.nAlloc, 4096);
}

struct TrimCase {
  int alloc;
  int size;
  int expected;
  bool moves;
};

constexpr TrimCase kTrim[] = {
    {8192, 100, 4096, true},
    {4096, 100, 4096, false},    // one page is never trimmed
    {8192, 5000, 8192, false},   // both round to two pages
    {12288, 4096, 4096, true},   // a full page stays one page
    {12288, 4097, 8192, true},
    {8192, 0, 4096, true},       // an empty block keeps one page
    {16384, 16384, 16384, false},
};

TEST(CMem, TrimTable) {
  for (const TrimCase& c : kTrim) {
    CMem m;
    ASSERT_EQ(m.Reserve(c.alloc), 1);
    std::memset(m.pBuf, 'x', static_cast<std::size_t>(c.size));
    m.nSize = c.size;
    BYTE* before = m.pBuf;
    m.Trim();
    EXPECT_EQ(m.nAlloc, c.expected) << "alloc " << c.alloc << " size " << c.size;
    EXPECT_EQ(m.pBuf != before, c.moves) << "alloc " << c.alloc << " size " << c.size;
    EXPECT_EQ(m.nSize, c.size);
    EXPECT_EQ(Bytes(m), std::string(static_cast<std::size_t>(c.size), 'x'));
  }
}

TEST(CMem, AddAcrossPagesAndInsert) {
  CMem m;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    BYTE b = static_cast<BYTE>('a' + i % 26);
    ASSERT_EQ(m.Add(b), 1);
    expected += static_cast<char>(b);
  }
  EXPECT_EQ(m.nAlloc, 8192);
  EXPECT_EQ(Bytes(m), expected);

  CMem s;
  s.Add(B("ad"), 2);
  EXPECT_EQ(s.Insert(B("bc"), 1, 2), 1);
  EXPECT_EQ(Bytes(s), "abcd");
  EXPECT_EQ(s.Insert(B("<"), -5, 1), 1);  // positions clamp into the content
  EXPECT_EQ(s.Insert(B(">"), 99, 1), 1);
  EXPECT_EQ(Bytes(s), "<abcd>");
  EXPECT_EQ(s.Insert(nullptr, 1, 2), 1);  // no data: zeros
  EXPECT_EQ(Bytes(s), std::string("<\0\0abcd>", 8));
  EXPECT_EQ(s.Add(B("x"), -1), 0);
  EXPECT_EQ(s.GetSize(), 8);

  CMem w;
  w.Add(static_cast<WORD>(0x4E2D));
  ASSERT_EQ(w.GetSize(), 2);
  WORD back;
  std::memcpy(&back, w.pBuf, 2);
  EXPECT_EQ(back, 0x4E2D);
}

TEST(CMem, SourcesInsideTheBlock) {
  CMem m;
  m.Add(B("abcdef"), 6);
  EXPECT_EQ(m.Insert(m.pBuf + 1, 3, 3), 1);  // "bcd" copied in front of "def"
  EXPECT_EQ(Bytes(m), "abcbcddef");
  EXPECT_EQ(m.Set(m.pBuf + 3, 3), 1);
  EXPECT_EQ(Bytes(m), "bcd");
  EXPECT_EQ(m.pBuf[3], 0);  // the old tail is cleared

  // An append of our own content that forces the block to grow.
  CMem big;
  std::string page(4000, 'p');
  big.Add(B(page.c_str()), 4000);
  ASSERT_EQ(big.Add(big.pBuf, 4000), 1);
  EXPECT_EQ(Bytes(big), page + page);
}

TEST(CMem, MovingBlocks) {
  CMem a;
  a.Add(B("abc"), 3);
  CMem b(4096);
  ASSERT_EQ(b.MoveIn(&a), 1);
  EXPECT_EQ(Bytes(b), "abc");
  EXPECT_EQ(a.pBuf, nullptr);
  EXPECT_EQ(a.nAlloc, 0);
  EXPECT_EQ(a.nSize, 0);
  EXPECT_EQ(b.MoveIn(&b), 0);
  EXPECT_EQ(Bytes(b), "abc");

  BYTE* raw = b.MoveOut();
  EXPECT_EQ(b.pBuf, nullptr);
  EXPECT_EQ(b.GetSize(), 0);
  CMem c;
  ASSERT_EQ(c.MoveIn(raw, 3), 1);  // c now owns and frees it
  EXPECT_EQ(Bytes(c), "abc");
  EXPECT_EQ(c.GetAllocSize(), 3);
}

TEST(CMem, ClearingAndEmptying) {
  CMem m;
  m.Add(B("abc"), 3);
  BYTE* before = m.pBuf;
  m.Clear();
  EXPECT_EQ(m.GetSize(), 0);
  EXPECT_EQ(m.pBuf, before);
  EXPECT_EQ(m.pBuf[0], 0);

  m.Add(B("abc"), 3);
  m.nSize = 1;  // shortened by hand, as derived classes do
  m.ClearTail();
  EXPECT_EQ(m.pBuf[1], 0);
  EXPECT_EQ(m.pBuf[0], 'a');

  ASSERT_EQ(m.Increase(5000), 1);
  EXPECT_EQ(m.nAlloc, 8192);
  m.Empty();
  EXPECT_EQ(m.pBuf, nullptr);
  EXPECT_EQ(m.nAlloc, 0);
  EXPECT_EQ(m.ToGHND(), nullptr);
}

}  // namespace
