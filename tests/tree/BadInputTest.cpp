// tests/tree/BadInputTest.cpp: the parser takes whatever a user typed: huge,
// deep, NUL, control and lone surrogate units. A failure names its error and
// position; whatever parses writes a text that parses back to itself.
#include <gtest/gtest.h>

#include "tests/tree/TreeTestUtil.h"

namespace vkt::test {
namespace {

std::u16string Repeat(const char16_t* piece, std::size_t times) {
  std::u16string out;
  for (std::size_t i = 0; i < times; ++i) out += piece;
  return out;
}

// Parses text: "error position" for a failure; for a parse, the root's child
// count, once the text it writes has read back to itself.
std::string Survives(const std::u16string& text) {
  auto parsed = ParseText(text.c_str());
  const CErrorCollector& errors = parsed->errors;
  if (parsed->root == nullptr) return std::to_string(errors.nError) + " " + std::to_string(errors.nCodePos);
  const std::u16string written = Expression(parsed->root.get());
  auto again = ParseText(written.c_str());
  EXPECT_EQ(again->root ? Expression(again->root.get()) : u"<no parse>", written)
      << Row(written.substr(0, 20).c_str());
  return std::to_string(parsed->root->GetChildCount());
}

TEST(BadInput, MegabyteTexts) {
  constexpr std::size_t kMega = 1 << 20;  // code units
  const std::pair<std::u16string, const char*> cases[] = {
      {Repeat(u"a", kMega), "1"},
      {u"'" + Repeat(u"x", kMega) + u"'", "1"},
      {Repeat(u"'", kMega), "1"},  // half a million empty strings in a row: one token
      {Repeat(u"7", kMega), "1068 0"},
      {Repeat(u")", kMega), "1070 0"},
      {Repeat(u"a ", kMega / 2), "1003 2"},
      {Repeat(u"'\\'+", 100000) + u"1", "200001"},  // each string hides its closing quote: one repair pass
      {Repeat(u"1+", 100000) + u"1", "200001"},
      {Repeat(u"a&&", 100000) + u"b", "200001"},  // padded throughout
      {Repeat(u"(", 10000) + u"1" + Repeat(u")", 10000), "1003 256"},
      {Repeat(u"(f(", 10000), "1003 384"},
      {u"1" + Repeat(u")", 10000), "1070 1"},  // the first bracket has nothing to close
  };
  for (const auto& [text, end] : cases) EXPECT_EQ(Survives(text), end) << Row(text.substr(0, 20).c_str());
}

TEST(BadInput, UnitsOutsideTheLanguage) {
  struct { std::u16string text; int chinese; const char* end; } const cases[] = {
      {u"\xD800+x\xDC00y", 1, "3"},  // names may hold units from 129 up in Chinese mode, on at load
      {u"'\xDC00'+'\xD800'", 0, "3"},
      {u"a+b\xD800", 0, "1068 3"},
      {u"\xD800(1)", 0, "1000 0"},
      {std::u16string(u"1+2\0)(", 6), 1, "3"},  // the host's entry ends at the NUL
  };
  for (const auto& c : cases) {
    ScopedMode chinese(c.chinese, CUtilityCalc::Calc_IsChineseEnabled, CUtilityCalc::Calc_EnableChinese);
    EXPECT_EQ(Survives(c.text), c.end) << Row(c.text.c_str());
  }
  for (char16_t unit = 1; unit < 32; ++unit) {  // never a name character
    EXPECT_EQ(Survives(std::u16string(u"a") + unit + u"b+1"), "1068 1") << int(unit);
  }
  for (int at : {0, 2, 4}) {  // a counted text carries a NUL to the parser, which refuses it
    CString text(u"'a'+b", 5);
    text.SetAt(at, 0);
    CCalcTreeNode root(nullptr, kKindExpression);
    CErrorCollector errors;
    EXPECT_EQ(root.Parse(text, &errors), 0) << at;
    EXPECT_EQ(errors.nError, 1003) << at;
    EXPECT_EQ(errors.nCodePos, at);
  }
}

}  // namespace
}  // namespace vkt::test
