// tests/tools/ToolLanguageTest.cpp: the tool's language interface has a
// text for every number the library can ask for, in the forms the tool
// relies on: error texts that take the expression behind a colon, parameter
// help as an argument list in brackets.
#include "tools/ToolLanguage.h"

#include <gtest/gtest.h>

#include <string>

#include "func/BuiltinTable.h"

namespace vkt::tool {
namespace {

std::u16string TextOf(int id) {
  const char16_t* text = ToolLanguage::Find(id);
  return text != nullptr ? std::u16string(text) : std::u16string();
}

bool EndsWith(const std::u16string& text, std::u16string_view end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

TEST(ToolLanguage, EveryIdOfTheBuiltinTableHasItsText) {
  for (const func::BuiltinRow& row : func::kBuiltinRows) {
    const std::string name = CString(row.name).ToUtf8();
    const std::u16string category = TextOf(row.nCategory);
    const std::u16string description = TextOf(row.nDescId);
    EXPECT_FALSE(category.empty()) << name;
    EXPECT_TRUE(EndsWith(description, u".")) << name << ": a sentence";
    EXPECT_EQ(description.find(u'%'), std::u16string::npos) << name;
    if (row.nParamId > 0) {
      const std::u16string params = TextOf(row.nParamId);
      EXPECT_EQ(params.front(), u'(') << name << ": an argument list";
      EXPECT_TRUE(EndsWith(params, u")")) << name << ": an argument list";
    } else {
      EXPECT_EQ(row.nParamId, -1) << name;
    }
  }
}

TEST(ToolLanguage, ErrorTextsTakeTheExpressionBehindAColon) {
  // The numbers the library reports; each takes the failing expression or
  // call as "%s", so that the caret display puts it on a line of its own.
  for (int number : {1000, 1001, 1003, 1004, 1005, 1068, 1070}) {
    const std::u16string text = TextOf(number);
    EXPECT_TRUE(EndsWith(text, u": %s")) << number;
    EXPECT_EQ(text.find(u'%'), text.size() - 2) << number << ": one %s and no other percent";
  }
  // 1072 is shown unformatted: a "%s" in it would be printed as it stands.
  EXPECT_EQ(TextOf(1072), u"A function failed without saying why.");
}

TEST(ToolLanguage, CategoriesAreNamed) {
  EXPECT_EQ(TextOf(1006), u"Control");
  EXPECT_EQ(TextOf(1007), u"Mathematics and statistics");
  EXPECT_EQ(TextOf(1008), u"Text, and numbers as text");
  EXPECT_EQ(TextOf(1009), u"Date and time");
}

TEST(ToolLanguage, UnknownNumbersGetAPlaceholderAndTranslationKeepsText) {
  ToolLanguage language;
  EXPECT_EQ(std::u16string(language.GetText(4242)), u"(text 4242)");
  EXPECT_EQ(std::u16string(language.GetText(-1)), u"(text -1)");
  EXPECT_EQ(std::u16string(language.GetText(1003)), u"Invalid expression or call: %s");
  CString text(u"Host functions");
  language.TranslateText(text);
  EXPECT_EQ(text, u"Host functions");
}

}  // namespace
}  // namespace vkt::tool
