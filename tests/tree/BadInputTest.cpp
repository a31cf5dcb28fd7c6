// tests/tree/BadInputTest.cpp: the parser takes whatever a user typed. No
// input may crash it, hang it or make it grow without bound; a failure
// points inside the text, and whatever parses writes a text that parses
// back to itself.
#include <gtest/gtest.h>

#include <string>

#include "VKTCalc.h"
#include "tests/tree/TreeTestUtil.h"

namespace vkt::test {
namespace {

bool IsParserError(int number) {
  return number == 1000 || number == 1001 || number == 1003 || number == 1005 || number == 1068 ||
         number == 1070;
}

// Parses text and checks the general promises; gives the parse.
std::unique_ptr<Parsed> Survives(const std::u16string& text) {
  auto parsed = ParseText(text.c_str());
  const std::string name = Utf8(CString(text.c_str()).Left(40));
  if (parsed->root == nullptr) {
    EXPECT_TRUE(IsParserError(parsed->errors.nError)) << name << ": " << parsed->errors.nError;
    // Padding of "&&" and "||" at most doubles the text.
    EXPECT_GE(parsed->errors.nCodePos, 0) << name;
    EXPECT_LE(parsed->errors.nCodePos, static_cast<int>(2 * text.size())) << name;
  } else {
    const std::u16string written = Expression(parsed->root.get());
    auto again = ParseText(written.c_str());
    EXPECT_NE(again->root, nullptr) << name << " wrote " << Utf8(written.c_str());
    if (again->root != nullptr) {
      EXPECT_EQ(Expression(again->root.get()), written) << name;
    }
  }
  return parsed;
}

std::u16string Repeat(const std::u16string& piece, std::size_t times) {
  std::u16string out;
  out.reserve(piece.size() * times);
  for (std::size_t i = 0; i < times; ++i) out += piece;
  return out;
}

struct BadCase {
  const char16_t* text;
  int number;  // 0: the text parses
  int position;
};

TEST(BadInput, UnbalancedBracketsAndQuotes) {
  constexpr BadCase kCases[] = {
      {u"((((a", 1070, 3},
      {u"a))))", 1070, 1},
      {u"f(g(h(", 1070, 6},
      {u"'abc", 1068, 0},  // an unclosed quote is an ordinary character
      {u"\"abc", 1068, 0},
      {u"'a'b'", 1068, 4},  // the word b' behind the string
      {u"a'", 1068, 1},
      {u"(')'", 1070, 0},
      {u"f(')',\"(\")", 0, 0},  // brackets inside quotes are text
      {u"'\\", 1068, 0},
      {u"\\'", 1068, 0},
      {u"'a\\'b", 1003, 5},  // repaired to 'a\\'b: a string, then a word
  };
  for (const BadCase& c : kCases) {
    auto parsed = Survives(c.text);
    EXPECT_EQ(parsed->errors.nError, c.number) << Utf8(c.text);
    if (c.number != 0) {
      EXPECT_EQ(parsed->errors.nCodePos, c.position) << Utf8(c.text);
    }
  }
}

TEST(BadInput, LoneOperatorsAndPunctuation) {
  constexpr BadCase kCases[] = {
      {u"+", 1003, 0},   {u"-", 1003, 0},   {u"*", 1003, 0},  {u"/", 1003, 0},
      {u"=", 1003, 0},   {u">", 1003, 0},   {u"<", 1003, 0},  {u">=", 1003, 0},
      {u"<=", 1003, 0},  {u"<>", 1003, 0},  {u"!=", 1003, 0}, {u"==", 1003, 0},
      {u"&&", 1003, 0},  {u"||", 1003, 0},  {u"!", 1003, 0},  {u"and", 1003, 0},
      {u"OR", 1003, 0},  {u"not", 1003, 0}, {u",", 1003, 0},  {u"(", 1070, 0},
      {u")", 1070, 0},   {u"'", 1068, 0},   {u"\"", 1068, 0}, {u"\\", 1068, 0},
      {u"&", 1068, 0},   {u"|", 1068, 0},   {u"@", 1068, 0},  {u"#", 1068, 0},
      {u"+-*/", 1003, 0}, {u"(,)", 1003, 1}, {u"f(,", 1070, 3},
  };
  for (const BadCase& c : kCases) {
    auto parsed = Survives(c.text);
    EXPECT_EQ(parsed->errors.nError, c.number) << Utf8(c.text);
    EXPECT_EQ(parsed->errors.nCodePos, c.position) << Utf8(c.text);
  }
}

constexpr std::size_t kMegabyte = 1 << 20;  // code units

TEST(BadInput, MegabyteTexts) {
  EXPECT_EQ(Survives(std::u16string(kMegabyte, u'a'))->root->GetChildCount(), 1);

  auto text = Survives(u"'" + std::u16string(kMegabyte, u'x') + u"'");
  EXPECT_EQ(text->root->GetChild(0)->GetKind(), kKindText);

  // Half a million quoted empty strings in a row: one token, every pair of
  // quotes taken off at once.
  auto quotes = Survives(std::u16string(kMegabyte, u'\''));
  EXPECT_EQ(CString(quotes->root->GetChild(0)->GetTextPtr()), u"");

  auto digits = Survives(std::u16string(kMegabyte, u'7'));
  EXPECT_EQ(digits->errors.nError, 1068);
  EXPECT_EQ(digits->errors.nCodePos, 0);

  auto closing = Survives(std::u16string(kMegabyte, u')'));
  EXPECT_EQ(closing->errors.nError, 1070);

  // Strings that each hide their closing quote: the repair pass runs once.
  auto hidden = Survives(Repeat(u"'\\'+", 100000) + u"1");
  EXPECT_NE(hidden->root, nullptr);

  // A long run of operands: one flat level of a hundred thousand nodes.
  auto run = Survives(Repeat(u"1+", 100000) + u"1");
  EXPECT_EQ(run->root->GetChildCount(), 200001);

  // A long run that the padding of "&&" changes throughout.
  auto logic = Survives(Repeat(u"a&&", 100000) + u"b");
  EXPECT_EQ(logic->root->GetChildCount(), 200001);

  auto words = Survives(Repeat(u"a ", kMegabyte / 2));
  EXPECT_EQ(words->errors.nError, 1003);
  EXPECT_EQ(words->errors.nCodePos, 2);
}

TEST(BadInput, TenThousandNestedBrackets) {
  constexpr std::size_t kDeep = 10000;
  const std::u16string balanced = std::u16string(kDeep, u'(') + u"1" + std::u16string(kDeep, u')');
  for (const std::u16string& text :
       {balanced, std::u16string(kDeep, u'('), Repeat(u"f(", kDeep) + u"1", Repeat(u"(f(", kDeep)}) {
    auto parsed = Survives(text);
    EXPECT_EQ(parsed->root, nullptr);
    EXPECT_EQ(parsed->errors.nError, 1003);
    EXPECT_LT(parsed->errors.nCodePos, 2 * kMaxNesting + 2);
  }
  // Unbalanced the other way: the first bracket has nothing to close.
  auto closing = Survives(u"1" + std::u16string(kDeep, u')'));
  EXPECT_EQ(closing->errors.nError, 1070);
  EXPECT_EQ(closing->errors.nCodePos, 1);
}

TEST(BadInput, LoneSurrogates) {
  {
    // Names may hold units from 129 up in Chinese mode, on at load.
    auto high = Survives(u"\xD800+x\xDC00y");
    ASSERT_NE(high->root, nullptr);
    EXPECT_EQ(Expression(high->root.get()), u"\xD800+x\xDC00y");
  }
  auto quoted = Survives(u"'\xDC00'+'\xD800'");
  ASSERT_NE(quoted->root, nullptr);
  EXPECT_EQ(Shape(quoted->root.get()), Shape(ParseText(u"'\xDC00'+'\xD800'")->root.get()));

  const int saved = CUtilityCalc::Calc_IsChineseEnabled();
  CUtilityCalc::Calc_EnableChinese(0);
  auto refused = Survives(u"a+b\xD800");
  EXPECT_EQ(refused->errors.nError, 1068);
  EXPECT_EQ(refused->errors.nCodePos, 3);
  auto call = Survives(u"\xD800(1)");
  EXPECT_EQ(call->errors.nError, 1000);
  CUtilityCalc::Calc_EnableChinese(saved);
}

TEST(BadInput, EmbeddedNul) {
  // Through the host's entry the text ends at the NUL.
  const char16_t withNul[] = {u'1', u'+', u'2', 0, u')', u'(', 0};
  auto parsed = ParseText(withNul);
  ASSERT_NE(parsed->root, nullptr);
  EXPECT_EQ(Expression(parsed->root.get()), u"1+2");

  // A counted text carries it to the parser, which refuses it.
  for (int at : {0, 2, 4}) {
    CString text(u"'a'+b", 5);
    text.SetAt(at, 0);
    CCalcTreeNode root(nullptr, kKindExpression);
    CErrorCollector errors;
    EXPECT_EQ(root.Parse(text, &errors), 0) << at;
    EXPECT_EQ(errors.nError, 1003) << at;
    EXPECT_EQ(errors.nCodePos, at) << at;
  }
}

TEST(BadInput, ControlCharacters) {
  for (char16_t unit = 1; unit < 32; ++unit) {
    const std::u16string text = std::u16string(u"a") + unit + u"b+1";
    auto parsed = Survives(text);
    EXPECT_EQ(parsed->root, nullptr) << static_cast<int>(unit);  // never a name character
  }
}

}  // namespace
}  // namespace vkt::test
