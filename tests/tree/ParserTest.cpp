// tests/tree/ParserTest.cpp: the parser's trees and its errors, each error
// number at its exact position.
#include <gtest/gtest.h>

#include "VKTCalc.h"
#include "tests/tree/TreeTestUtil.h"
#include "tree/Parser.h"

namespace vkt::test {
namespace {

struct ShapeCase {
  const char16_t* text;
  const char* shape;
};

constexpr ShapeCase kShapes[] = {
    {u"", "1"},  // empty and blank texts give a bare root
    {u"   ", "1"},
    {u"1+2*3", "1[6:1 8:+ 6:2 8:* 6:3]"},  // flat: precedence is the evaluator's
    {u"(1+2)*3", "1[2[6:1 8:+ 6:2] 8:* 6:3]"},
    {u"f()", "1[3:f[4]]"},
    {u"f(,1)", "1[3:f[4 4[6:1]]]"},
    {u"f(1,)", "1[3:f[4[6:1] 4]]"},
    {u"f( 1 , 'a' )", "1[3:f[4[6:1] 4[7:a]]]"},
    {u"f(g(1),(2))", "1[3:f[4[3:g[4[6:1]]] 4[2[6:2]]]]"},
    {u"1.50", "1[6:1.5]"},  // numbers in canonical form
    {u"-0", "1[8:- 6:0]"},
    {u"12.", "1[6:12]"},
    {u"1 != 2", "1[6:1 8:<> 6:2]"},
    {u"1 == 2", "1[6:1 8:= 6:2]"},
    {u"a > = b", "1[5:a 8:>= 5:b]"},  // blanks inside an operator
    {u"a< >b", "1[5:a 8:<> 5:b]"},
    {u"a and b", "1[5:a 8: and  5:b]"},
    {u"a OR b", "1[5:a 8: or  5:b]"},
    {u"NOT a", "1[8:! 5:a]"},
    {u"not(a)", "1[8:! 2[5:a]]"},  // not( is the operator and a bracket
    {u"and(1)", "1[3:and[4[6:1]]]"},  // and( is a call
    {u"a&&!b", "1[5:a 8:&& 8:! 5:b]"},
    {u"a>-b", "1[5:a 8:> 8:- 5:b]"},
    {u"!a", "1[8:! 5:a]"},
    {u"A1:B3+$C$1+@Sheet.x", "1[5:A1:B3 8:+ 5:$C$1 8:+ 5:@Sheet.x]"},
    {u"'it\\'s'", "1[7:it's]"},
    {u"\"a\"'b'", "1[7:\"a\"'b']"},  // two strings in a row: one token, no enclosing pair
    {u"''", "1[7]"},
    {u"'a\\\\r\\\\nb'", "1[7:a\r\nb]"},  // backslash-r-backslash-n becomes CR LF
    {u"1234567890123456789012345678901234567890123456789012345678901",  // 61 digits
     "1[7:1234567890123456789012345678901234567890123456789012345678901]"},
};

TEST(Parser, Shapes) {
  for (const ShapeCase& c : kShapes) {
    auto parsed = ParseText(c.text);
    ASSERT_NE(parsed->root, nullptr) << Utf8(c.text) << ": error " << parsed->errors.nError;
    EXPECT_EQ(Shape(parsed->root.get()), c.shape) << Utf8(c.text);
    EXPECT_EQ(parsed->errors.nError, 0) << Utf8(c.text);
  }
}

struct ErrorCase {
  const char16_t* text;
  int number;
  int position;
};

constexpr ErrorCase kErrors[] = {
    // 1070: brackets
    {u"(a", 1070, 0},        // an open bracket reports its own position
    {u"f(1", 1070, 3},       // an unfinished call reports the end
    {u")", 1070, 0},
    {u"1 + 1)", 1070, 5},
    {u"f(g(1)", 1070, 6},    // the bracket that was read closed g, not f
    {u"f((1)", 1070, 5},
    {u"f(1,", 1070, 4},
    {u"((a)", 1070, 0},
    // 1003: syntax
    {u"a,b", 1003, 1},
    {u"(a,b)", 1003, 2},
    {u"()", 1003, 0},
    {u"1 2", 1003, 2},
    {u"a b", 1003, 2},
    {u"'a' 'b'", 1003, 4},
    {u"1 >> 2", 1003, 3},    // refused operator: its start plus 1
    {u"a >< b", 1003, 3},
    {u"=1", 1003, 0},        // only "-" and "!" may lead
    {u"*a", 1003, 0},
    {u"a+", 1003, 1},
    {u"a*-b", 1003, 2},
    {u"a !b", 1003, 2},
    {u"a and", 1003, 2},
    {u"not", 1003, 0},
    {u"-", 1003, 0},
    {u"abc\"x\"", 1003, 3},  // a string right behind a word
    {u"sum (1)", 1003, 4},   // a blank before the bracket: a variable and a bracket
    {u"f(1)(2)", 1003, 4},
    {u"a&&", 1003, 2},       // position in the padded text "a &&"
    {u"x+(1+*2)", 1003, 5},
    // 1068, 1001, 1000: names
    {u"a%", 1068, 1},
    {u"x+a.", 1068, 3},
    {u"\"a\" & \"b\"", 1068, 4},  // "&" alone is no operator
    {u"a\tb", 1068, 1},      // a tab is a word character
    {u"\ta", 1068, 0},
    {u"12a", 1001, 2},
    {u"1x2", 1001, 1},
    {u"1f(2)", 1001, 1},
    {u"f$(2)", 1000, 0},
    {u"1+ g%(2)", 1000, 3},
    {u"99(1)", 1000, 0},     // digits alone keep the number
    {u"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
     1068, 0},               // 80 digits: no number, no name
};

TEST(Parser, ErrorNumbersAndPositions) {
  for (const ErrorCase& c : kErrors) {
    auto parsed = ParseText(c.text);
    EXPECT_EQ(parsed->root, nullptr) << Utf8(c.text);
    EXPECT_EQ(parsed->errors.nError, c.number) << Utf8(c.text);
    EXPECT_EQ(parsed->errors.nCodePos, c.position) << Utf8(c.text);
    EXPECT_EQ(parsed->errors.pszSource, nullptr) << Utf8(c.text);  // cleared after the check
  }
}

TEST(Parser, NullCollectorGivesNullOnly) {
  for (const ErrorCase& c : kErrors) EXPECT_EQ(CUtilityCalc::ParseExpression(c.text, nullptr), nullptr);
  std::unique_ptr<ICalcTreeNode> ok(CUtilityCalc::ParseExpression(u"1+2", nullptr));
  EXPECT_NE(ok, nullptr);
}

TEST(Parser, MixedKindsWithComplexModeOff) {
  ComplexMode off(0);
  constexpr ErrorCase kMixed[] = {
      {u"1+\"a\"", 1005, 2},
      {u"\"a\"+1", 1005, 4},
      {u"1+2+'a'", 1005, 4},
      {u"f(1,(2+'a'))", 1005, 7},  // found in a bracket deep inside
  };
  for (const ErrorCase& c : kMixed) {
    auto parsed = ParseText(c.text);
    EXPECT_EQ(parsed->root, nullptr) << Utf8(c.text);
    EXPECT_EQ(parsed->errors.nError, c.number) << Utf8(c.text);
    EXPECT_EQ(parsed->errors.nCodePos, c.position) << Utf8(c.text);
  }
  // Kinds only have to agree within one run.
  EXPECT_NE(ParseText(u"f(1,'a')+(2)")->root, nullptr);
}

// The evaluator's use, without a parse around it: no position, the node's
// own text as the argument.
TEST(Parser, MixedKindsCheckedOnALiveTree) {
  auto parsed = ParseText(u"f(1+'a')");
  ASSERT_NE(parsed->root, nullptr);  // complex mode is on at load
  ICalcTreeNode* argument = parsed->root->GetChild(0)->GetChild(0);
  ComplexMode off(0);
  EXPECT_EQ(CheckOperandKinds(argument, nullptr), 0);
  EXPECT_EQ(CheckOperandKinds(parsed->root.get(), nullptr), 1);  // direct children only
  CErrorCollector errors;
  errors.nCodePos = 9;
  EXPECT_EQ(CheckOperandKindsDeep(parsed->root.get(), &errors), 0);
  EXPECT_EQ(errors.nError, 1005);
  EXPECT_EQ(errors.nCodePos, 9);
  errors.Empty_CalcError();
  errors.pCurrentNode = argument;  // a context: the position of the odd operand
  EXPECT_EQ(CheckOperandKinds(argument, &errors), 0);
  EXPECT_EQ(errors.nCodePos, 4);
}

TEST(Parser, MixedKindsPassInComplexMode) {
  ComplexMode on(1);
  EXPECT_NE(ParseText(u"1+\"a\"")->root, nullptr);
}

// The language interface of these tests: "E<number>: %s".
class NumberedTexts : public ILggInterface {
 public:
  const char16_t* GetText(int id) override {
    m_text.Format(u"E%d: %%s", id);
    return m_text;
  }
  void TranslateText(CString&) override {}

 private:
  CString m_text;
};

TEST(Parser, ErrorTextNamesTheSourceAsScanned) {
  static NumberedTexts texts;
  SetLggInterface(&texts);
  auto parsed = ParseText(u"a&&");
  ASSERT_NE(parsed->errors.pszErrorText, nullptr);
  EXPECT_EQ(CString(parsed->errors.pszErrorText), u"E1003: a &&");
  auto scan = ParseText(u"f(1");
  EXPECT_EQ(CString(scan.get()->errors.pszErrorText), u"E1070: f(1");
  SetLggInterface(nullptr);
}

TEST(Parser, PaddingChangesTheTextOutsideQuotes) {
  struct {
    const char16_t* text;
    const char16_t* padded;
  } const cases[] = {
      {u"a&&b", u"a && b"},
      {u"a||b&&c", u"a || b && c"},
      {u"'a&&b'&&c", u"'a&&b' && c"},
      {u"&&a", u"&& a"},
      {u"a&&&b", u"a && &b"},
      {u"&&", u"&&"},  // under three units: left alone
      {u"a && b", u"a && b"},
  };
  for (const auto& c : cases) {
    CCalcTreeNode root(nullptr, kKindExpression);
    CString text(c.text);
    root.Parse(text, nullptr);
    EXPECT_EQ(text, c.padded) << Utf8(c.text);
  }
}

TEST(Parser, ParseReplacesEarlierContent) {
  CCalcTreeNode root(nullptr, kKindNumber);
  root.SetNumberText(u"5");
  CString text(u"a+b");
  EXPECT_EQ(root.Parse(text, nullptr), 1);
  EXPECT_EQ(Shape(&root), "1[5:a 8:+ 5:b]");
}

TEST(Parser, FormulaEntry) {
  for (const char16_t* empty : {static_cast<const char16_t*>(nullptr), u"", u"=", u" = ", u"   "}) {
    CErrorCollector errors;
    EXPECT_EQ(CUtilityCalc::ParseExpression_Formula(empty, &errors), nullptr);
    EXPECT_EQ(errors.nError, 0);
  }
  std::unique_ptr<ICalcTreeNode> withSign(CUtilityCalc::ParseExpression_Formula(u"  =  1+2", nullptr));
  std::unique_ptr<ICalcTreeNode> without(CUtilityCalc::ParseExpression_Formula(u"1+2", nullptr));
  ASSERT_NE(withSign, nullptr);
  ASSERT_NE(without, nullptr);
  EXPECT_EQ(Shape(withSign.get()), Shape(without.get()));

  CErrorCollector errors;
  EXPECT_EQ(CUtilityCalc::ParseExpression_Formula(u"==1", &errors), nullptr);  // one "=" only
  EXPECT_EQ(errors.nError, 1003);
  EXPECT_EQ(errors.nCodePos, 0);
  errors.Empty_CalcError();
  EXPECT_EQ(CUtilityCalc::ParseExpression_Formula(u" = 1+", &errors), nullptr);
  EXPECT_EQ(errors.nCodePos, 1);  // counted behind the "=" and its blanks
}

TEST(Parser, BackslashBeforeClosingQuoteIsRepaired) {
  auto parsed = ParseText(u"'C:\\dir\\'");
  ASSERT_NE(parsed->root, nullptr);
  ASSERT_EQ(parsed->root->GetChildCount(), 1);
  ICalcTreeNode* text = parsed->root->GetChild(0);
  EXPECT_EQ(text->GetKind(), kKindText);
  // The repaired 'C:\dir\\' holds the escape \d, so no escape is undone.
  EXPECT_EQ(CString(text->GetTextPtr()), u"C:\\dir\\\\");
  // The collector keeps the first failure.
  EXPECT_EQ(parsed->errors.nError, 1068);
  EXPECT_EQ(parsed->errors.nCodePos, 0);

  auto plain = ParseText(u"'a\\\\'+'\\'");  // '\' alone: one backslash goes in
  ASSERT_NE(plain->root, nullptr);
  EXPECT_EQ(Shape(plain->root.get()), "1[7:a\\ 8:+ 7:\\]");

  auto hopeless = ParseText(u"'a\\' +");  // repaired, and still wrong
  EXPECT_EQ(hopeless->root, nullptr);
  EXPECT_EQ(hopeless->errors.nError, 1003);
}

TEST(Parser, NestingIsBounded) {
  for (int depth : {kMaxNesting, kMaxNesting + 1}) {
    std::u16string brackets(static_cast<std::size_t>(depth), u'(');
    brackets += u"1";
    brackets.append(static_cast<std::size_t>(depth), u')');
    std::u16string calls;
    for (int i = 0; i < depth; ++i) calls += u"f(";
    calls += u"1";
    calls.append(static_cast<std::size_t>(depth), u')');
    for (const std::u16string& text : {brackets, calls}) {
      auto parsed = ParseText(text.c_str());
      if (depth == kMaxNesting) {
        EXPECT_NE(parsed->root, nullptr) << depth;
        continue;
      }
      EXPECT_EQ(parsed->root, nullptr) << depth;
      EXPECT_EQ(parsed->errors.nError, 1003);
      EXPECT_EQ(parsed->errors.nCodePos, text == brackets ? kMaxNesting : 2 * kMaxNesting + 1);
    }
  }
}

TEST(Parser, NulInCountedTextIsRefused) {
  CCalcTreeNode root(nullptr, kKindExpression);
  CString text(u"1+a\0b", 5);
  CErrorCollector errors;
  EXPECT_EQ(root.Parse(text, &errors), 0);
  EXPECT_EQ(errors.nError, 1003);
  EXPECT_EQ(errors.nCodePos, 3);
}

}  // namespace
}  // namespace vkt::test
