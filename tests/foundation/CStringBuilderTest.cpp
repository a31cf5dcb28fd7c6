// tests/foundation/CStringBuilderTest.cpp: appends through the writer side
// across page growth, and reading back through both GetStr forms.
#include "foundation/CStringBuilder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(CStringBuilder, ManyAppendsAcrossPages) {
  CStringBuilder sb(512);
  CWriter* w = &sb;
  std::u16string expected;
  CString word(u"abc");
  for (int i = 0; i < 3000; ++i) {
    w->Append(u"x=");
    w->Append(word);
    w->Append(static_cast<WORD>(u'0' + i % 10));
    expected += u"x=abc";
    expected += static_cast<char16_t>(u'0' + i % 10);
  }
  EXPECT_EQ(sb.GetSize(), static_cast<int>(expected.size() * 2));
  EXPECT_EQ(sb.nAlloc % 4096, 0);
  EXPECT_EQ(std::u16string(sb.GetStr()), expected);
  CString out;
  sb.GetStr(out);
  EXPECT_EQ(out.View(), expected);
}

TEST(CStringBuilder, ResetThroughTheBufferSide) {
  CStringBuilder sb(512);
  sb.Append(u"first");
  CString empty;
  sb.Append(empty);
  sb.Append(static_cast<const char16_t*>(nullptr));
  EXPECT_EQ(std::u16string(sb.GetStr()), u"first");
  sb.Set(u"");
  EXPECT_EQ(sb.GetSize(), 0);
  CString out(u"stale");
  sb.GetStr(out);
  EXPECT_EQ(out, u"");
  sb.Append(static_cast<WORD>(0));  // a NUL unit is content
  sb.Append(u"z");
  sb.GetStr(out);
  EXPECT_EQ(out.GetLength(), 2);
  EXPECT_EQ(out.GetAt(1), u'z');
}

}  // namespace
