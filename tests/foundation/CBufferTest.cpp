// Tests of CBuffer and CStringBuilder: the terminator after every change, edits, pages, UTF-8 both ways.
#include "foundation/CBuffer.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include "foundation/CStringBuilder.h"
#include "tests/support/Text.h"
using vkt::test::U;
BYTE* Bytes(const char* text) { return reinterpret_cast<BYTE*>(const_cast<char*>(text)); }
std::string Content(CBuffer& b) {  // zero bytes shown as '_'
  std::string text(reinterpret_cast<const char*>(b.GetStr()), static_cast<std::size_t>(b.GetSize()));
  std::replace(text.begin(), text.end(), '\0', '_');
  return text;
}
bool Terminated(CBuffer& b) {  // two zero bytes behind the content, three behind an odd count
  const int need = b.nSize % 2 ? 3 : 2;
  return b.pBuf != nullptr && b.nAlloc >= b.nSize + need &&
         std::all_of(b.pBuf + b.nSize, b.pBuf + b.nSize + need, [](BYTE x) { return x == 0; });
}
// One call on a builder holding `text`: what it gives and the bytes after it (null: not compared), always
// terminated.
struct Case { const char16_t* text; std::function<int(CStringBuilder&)> call; int result; const char* out; };
const Case kCalls[] = {
    {u"", [](auto& b) { return b.Add(WORD{u'a'}) && b.Add(u'?') && b.Add(BYTE{'x'}); }, 1, "a_?_x"},
    {u"hello", [](auto& b) { return b.Insert(Bytes("\0"), 0, 2) && b.DeleteBytes(0, 2); }, 1, "h_e_l_l_o_"},
    {u"hello", [](auto& b) { return b.Set(u"hi") && U(b.GetStr()) == u"hi"; }, 1, "h_i_"},  // rest zeroed
    {u"hi", [](auto& b) { b.Clear(); return b.GetStr()[0] + 0; }, 0, ""},
    {u"hi", [](auto& b) { CMem m; m.Add(Bytes("abcd"), 4); return b.MoveIn(&m) + m.GetSize(); }, 1, "abcd"},
    {u"", [](auto& b) { return b.MoveIn(reinterpret_cast<BYTE*>(strdup("ab")), 3); }, 1, "ab_"},  // no room
    {u"", [](auto& b) { CString s(u"a\0b", 3); return b.SetText(s) + b.Set(s); }, 2, "a___b_"},
    {u"ab", [](auto& b) { return b.Set(static_cast<const char16_t*>(nullptr)); }, 1, ""},
    {u"", [](auto& b) { CString t(u"!"); return b.AddText(u"ab", 1) && b.AddText(u"XY") && b.AddText(t); }, 1,
     "a_X_Y_!_"},
    {u"a", [](auto& b) { return b.AddText(nullptr) + b.AddText(nullptr, 1); }, 1, "a_"},
    {u"abcXY", [](auto& b) { return b.Set(b.GetStr() + 2); }, 1, "c_X_Y_"},  // its own text, shifted
    {u"abc", [](auto& b) { return b.DeleteBytes(2, 0) + b.DeleteBytes(0, 2); }, 1, "b_c_"},
    {u"abc", [](auto& b) { return b.DeleteBytes(1, 1); }, 1, "ab_c_"},  // odd: three zero bytes behind
    {u"abc", [](auto& b) { return b.DeleteBytes(4, 99); }, 1, "a_b_"},  // the count is cut at the end
    {u"abc", [](auto& b) { return b.DeleteBytes(6, 1) + b.DeleteBytes(-1, 2); }, 0, "a_b_c_"},
    {u"", [](auto& b) { return b.Set(std::u16string(2048, u'p').c_str()), b.Trim(), b.nAlloc; }, 8192,
     nullptr},  // a page of units still gets its terminator
    {u"", [](auto& b) { b.SetGrowBy(16384); return b.AddText(std::u16string(2049, u'g').c_str()), b.nAlloc; },
     4096 + 16384, nullptr},  // one unit more than a page holds
    {u"A\u4e2d\U0001F600", [](auto& b) { return b.UTF16ToUTF8(); }, 1, "A\xE4\xB8\xAD\xF0\x9F\x98\x80"},
    {u"a\xD800", [](auto& b) { return b.UTF16ToUTF8(); }, 1, "a\xEF\xBF\xBD"},  // a lone surrogate
    {u"\xDC00x", [](auto& b) { return b.UTF16ToAnsi(); }, 1, "\xEF\xBF\xBDx"},
    {u"", [](auto& b) { return b.Set(Bytes("\xE4\xB8\xAD\xF0\x9F\x98\x80"), 7) && b.UTF8ToUTF16(); }, 1,
     "-N=\xD8_\xDE"},  // U+4E2D, then U+1F600 as a pair
    {u"", [](auto& b) { return b.Set(Bytes("a\xFF" "b"), 3) && b.UTF8ToUTF16(); }, 1, "a_\xFD\xFF" "b_"},
    {u"", [](auto& b) { return b.Set(Bytes("\xE4\xB8z"), 3) && b.UTF8ToUTF16(); }, 1, "\xFD\xFFz_"},
    {u"", [](auto& b) { return b.Set(Bytes("\xC0\x80"), 2) && b.UTF8ToUTF16(); }, 1, "\xFD\xFF\xFD\xFF"},
    {u"a", [](auto& b) { CString w(u"b"), e; return b.Append(w) && b.Append(e); }, 1, "a_b_"},
    {u"", [](auto& b) { CString o; b.Append(WORD{0}); b.Append(u"z"); b.GetStr(o); return o.GetLength(); }, 2,
     "__z_"},  // a NUL unit is content
    {u"z", [](auto& b) { return b.Append(nullptr); }, 1, "z_"},
};
TEST(CBuffer, CallTable) {
  for (const Case& c : kCalls) {
    CStringBuilder b(512);
    ASSERT_TRUE(Terminated(b) && b.Set(c.text) && Terminated(b));
    EXPECT_EQ(c.call(b), c.result) << vkt::test::Row(c.text) << " -> " << (c.out ? c.out : "");
    if (c.out) { EXPECT_EQ(Content(b), c.out) << vkt::test::Row(c.text); }
    EXPECT_TRUE(Terminated(b)) << vkt::test::Row(c.text);
  }
  CBufferEx ex(1024);
  ex.Empty();
  EXPECT_TRUE(ex.pBuf == nullptr && U(ex.GetStr()) == u"");  // no block, still a string
  CStringBuilder b;
  CString text;
  for (int i = 0; i < 3000; ++i) static_cast<CWriter&>(b).Append(u"ab");
  b.GetStr(text);
  EXPECT_TRUE(text.GetLength() == 6000 && text.Remove(u'a') == 3000 && text == CString(u'b', 3000));
}
