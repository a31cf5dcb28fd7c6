// tests/tools/ToolLanguageTest.cpp: the tool's language interface has a text for every number the
// library can ask for, in the forms the tool relies on.
#include "tools/ToolLanguage.h"

#include <gtest/gtest.h>

#include <string>

#include "func/BuiltinTable.h"
#include "tests/support/Text.h"

namespace vkt::tool {
namespace {

using vkt::test::U;

// A category; a description that is a sentence; parameter help that is an argument list, or none (-1).
TEST(ToolLanguage, EveryIdOfTheBuiltinTableHasItsText) {
  for (const func::BuiltinRow& row : func::kBuiltinRows) {
    const std::string name = CString(row.name).ToUtf8();
    const std::u16string description = U(ToolLanguage::Find(row.nDescId));
    const std::u16string params = U(ToolLanguage::Find(row.nParamId));
    const char16_t* category = ToolLanguage::Find(row.nCategory);
    EXPECT_TRUE(category != nullptr && *category != 0) << name;
    EXPECT_TRUE(description.ends_with(u".") && description.find(u'%') == description.npos) << name;
    EXPECT_TRUE(row.nParamId == -1 || (params.starts_with(u"(") && params.ends_with(u")"))) << name;
  }
}

TEST(ToolLanguage, ErrorTextsNamesAndUnknownNumbers) {
  // Each error text takes the failing expression as its one "%s", behind a colon, for the caret display.
  for (int number : {1000, 1001, 1003, 1004, 1005, 1068, 1070}) {
    const std::u16string text = U(ToolLanguage::Find(number));
    EXPECT_TRUE(text.ends_with(u": %s") && text.find(u'%') == text.size() - 2) << number;
  }
  ToolLanguage language;
  const struct { int id; const char16_t* text; } texts[] = {
      {1006, u"Control"}, {1007, u"Mathematics and statistics"}, {1008, u"Text, and numbers as text"},
      {1009, u"Date and time"}, {1003, u"Invalid expression or call: %s"}, {4242, u"(text 4242)"},
      {-1, u"(text -1)"}, {1072, u"A function failed without saying why."},  // shown unformatted: no "%s"
  };
  for (const auto& t : texts) EXPECT_EQ(U(language.GetText(t.id)), t.text) << t.id;
}

}  // namespace
}  // namespace vkt::tool
