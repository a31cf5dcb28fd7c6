// tests/foundation/CBufferTest.cpp: the terminator after every change, text
// storage, byte deletion, growth hints and the UTF-8 conversions.
#include "foundation/CBuffer.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Bytes(CBuffer& b) {
  return std::string(reinterpret_cast<const char*>(b.GetBuf()), static_cast<std::size_t>(b.GetSize()));
}

std::u16string Text(CBuffer& b) {
  return std::u16string(b.GetStr(), static_cast<std::size_t>(b.GetSize() / 2));
}

// The zero bytes behind the content: two, three for an odd size, inside the
// block.
::testing::AssertionResult Terminated(CBuffer& b) {
  int need = b.nSize % 2 == 0 ? 2 : 3;
  if (b.pBuf == nullptr) return ::testing::AssertionFailure() << "no block";
  if (b.nAlloc < b.nSize + need) return ::testing::AssertionFailure() << "no room, alloc " << b.nAlloc;
  for (int i = 0; i < need; ++i)
    if (b.pBuf[b.nSize + i] != 0)
      return ::testing::AssertionFailure() << "byte " << b.nSize + i << " is " << int(b.pBuf[b.nSize + i]);
  return ::testing::AssertionSuccess();
}

BYTE* B(const char* text) { return reinterpret_cast<BYTE*>(const_cast<char*>(text)); }

TEST(CBuffer, TerminatedAfterEveryChange) {
  CBuffer b(1024);
  EXPECT_TRUE(Terminated(b));
  EXPECT_EQ(std::u16string(b.GetStr()), u"");
  b.Add(static_cast<WORD>(u'a'));
  EXPECT_TRUE(Terminated(b));
  b.Add(static_cast<BYTE>('x'));  // odd size
  EXPECT_TRUE(Terminated(b));
  b.Add(static_cast<BYTE>('y'));
  EXPECT_TRUE(Terminated(b));
  b.Set(u"hello");
  EXPECT_TRUE(Terminated(b));
  b.Insert(B("\0\0"), 0, 2);
  EXPECT_TRUE(Terminated(b));
  b.DeleteBytes(0, 2);
  EXPECT_EQ(Text(b), u"hello");
  EXPECT_TRUE(Terminated(b));
  b.Set(u"hi");  // shorter text: the old units behind it are cleared
  EXPECT_EQ(std::u16string(b.GetStr()), u"hi");
  EXPECT_TRUE(Terminated(b));
  b.Clear();
  EXPECT_EQ(b.GetSize(), 0);
  EXPECT_TRUE(Terminated(b));

  // A text that fills exactly one page still gets its terminator.
  std::u16string page(2048, u'p');
  b.Set(page.c_str());
  EXPECT_EQ(b.GetSize(), 4096);
  EXPECT_TRUE(Terminated(b));
  b.Trim();
  EXPECT_TRUE(Terminated(b));
  EXPECT_EQ(b.nAlloc, 8192);

  CMem other;
  other.Add(B("abcd"), 4);
  b.MoveIn(&other);  // a plain block without room is given its terminator
  EXPECT_EQ(Bytes(b), "abcd");
  EXPECT_TRUE(Terminated(b));

  b.Empty();
  EXPECT_EQ(std::u16string(b.GetStr()), u"");  // no block, still a string
}

TEST(CBuffer, TextStoreAndAdd) {
  CBuffer b;
  CString with(u"a\0b", 3);
  b.SetText(with);
  EXPECT_EQ(b.GetSize(), 6);  // the NUL unit is content
  b.Set(with);
  EXPECT_EQ(b.GetSize(), 6);
  b.Set(static_cast<const char16_t*>(nullptr));
  EXPECT_EQ(b.GetSize(), 0);

  b.AddText(u"abcdef", 3);
  b.AddText(u"XY");
  b.AddText(static_cast<const char16_t*>(nullptr));
  CString tail(u"!");
  b.AddText(tail);
  b.Add(u'?');
  EXPECT_EQ(Text(b), u"abcXY!?");
  EXPECT_TRUE(Terminated(b));

  // Storing the buffer's own text, shifted, must not read freed memory.
  b.Set(b.GetStr() + 2);
  EXPECT_EQ(Text(b), u"cXY!?");

  CBufferEx ex(1024);
  CString value(u"42");
  CBuffer* base = &ex;
  EXPECT_EQ(base->SetText(value), 1);
  EXPECT_EQ(std::u16string(ex.GetStr()), u"42");
}

struct DeleteCase {
  int pos;
  int count;
  int result;
  const char* expected;
};

constexpr DeleteCase kDelete[] = {
    {0, 2, 1, "cdef"}, {2, 2, 1, "abef"}, {4, 99, 1, "abcd"},  // cut at the end
    {6, 1, 0, "abcdef"},   // at the end: nothing to delete
    {-1, 2, 0, "abcdef"}, {2, 0, 0, "abcdef"}, {2, -3, 0, "abcdef"},
};

TEST(CBuffer, DeleteBytesTable) {
  for (const DeleteCase& c : kDelete) {
    CBuffer b;
    b.Add(B("abcdef"), 6);
    EXPECT_EQ(b.DeleteBytes(c.pos, c.count), c.result) << c.pos << "," << c.count;
    EXPECT_EQ(Bytes(b), c.expected) << c.pos << "," << c.count;
    EXPECT_TRUE(Terminated(b)) << c.pos << "," << c.count;
  }
}

TEST(CBuffer, GrowthHint) {
  CBuffer b(1024);
  b.SetGrowBy(16384);
  std::u16string text(2049, u'g');  // one unit more than a page holds
  b.AddText(text.c_str());
  EXPECT_EQ(b.nAlloc, 4096 + 16384);
  EXPECT_EQ(Text(b), text);
  EXPECT_TRUE(Terminated(b));
}

struct ToUtf8Case {
  std::u16string wide;
  std::string utf8;
};

const ToUtf8Case kToUtf8[] = {
    {u"", ""},
    {u"A", "A"},
    {u"\u00e9", "\xC3\xA9"},
    {u"\u4e2d", "\xE4\xB8\xAD"},
    {u"\U0001F600", "\xF0\x9F\x98\x80"},                      // a surrogate pair gives 4 bytes
    {std::u16string(1, char16_t(0xD800)), "\xEF\xBF\xBD"},    // lone high surrogate
    {std::u16string(1, char16_t(0xDC00)) + u"x", "\xEF\xBF\xBDx"},  // lone low surrogate
};

TEST(CBuffer, Utf16ToUtf8Table) {
  for (const ToUtf8Case& c : kToUtf8) {
    CBuffer b;
    b.AddText(c.wide.data(), static_cast<int>(c.wide.size()));
    ASSERT_EQ(b.UTF16ToUTF8(), 1);
    EXPECT_EQ(Bytes(b), c.utf8) << testing::PrintToString(c.utf8);
    EXPECT_TRUE(Terminated(b));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(b.GetBuf())), c.utf8);
  }
  CBuffer one;
  one.Add(static_cast<WORD>(0x4E2D));
  one.UTF16ToAnsi();
  EXPECT_EQ(one.GetSize(), 3);
  EXPECT_EQ(Bytes(one), "\xE4\xB8\xAD");
}

const ToUtf8Case kFromUtf8[] = {
    {u"\u4e2d", "\xE4\xB8\xAD"},
    {u"\U0001F600", "\xF0\x9F\x98\x80"},
    {u"a\uFFFDb", "a\xFF" "b"},        // a byte that never starts a sequence
    {u"\uFFFD", "\xE4\xB8"},           // truncated at the end
    {u"\uFFFDz", "\xE4\xB8z"},         // truncated before an ASCII byte
    {u"\uFFFD", "\xE0\x80\x80"},       // overlong: one for the sequence
    {u"\uFFFD\uFFFD", "\xC0\x80"},     // C0 never leads: each byte stands alone
    {u"\uFFFD", "\xED\xA0\x80"},       // an encoded surrogate
    {u"\uFFFD\uFFFD", "\x80\x80"},     // stray continuation bytes, one each
};

TEST(CBuffer, Utf8ToUtf16Table) {
  for (const ToUtf8Case& c : kFromUtf8) {
    CBuffer b;
    b.Add(B(c.utf8.c_str()), static_cast<int>(c.utf8.size()));
    ASSERT_EQ(b.UTF8ToUTF16(), 1);
    EXPECT_EQ(Text(b), c.wide) << testing::PrintToString(c.utf8);
    EXPECT_TRUE(Terminated(b));
  }
}

}  // namespace
