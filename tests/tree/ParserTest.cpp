// tests/tree/ParserTest.cpp: the parser's trees and the texts written from them
// (expression and formula forms), its error numbers at exact positions, its limits.
#include <gtest/gtest.h>

#include "tests/tree/TreeTestUtil.h"

namespace vkt::test {
namespace {

// The text, the tree's shape, and the text GetExpression writes.
constexpr struct { const char16_t* text; const char* shape; const char16_t* written; } kTrees[] = {
    {u"", "1", u""},  // empty and blank texts give a bare root
    {u"   ", "1", u""},
    {u"1+2*3/4", "1[6:1 8:+ 6:2 8:* 6:3 8:/ 6:4]", u"1+2*3/4"},  // flat: precedence is the evaluator's
    {u"(1+2)*3", "1[2[6:1 8:+ 6:2] 8:* 6:3]", u"(1+2)*3"},
    {u"f()", "1[3:f[4]]", u"f()"},
    {u"f(,1)", "1[3:f[4 4[6:1]]]", u"f(,1)"},
    {u"f( 1 , \"a\" )", "1[3:f[4[6:1] 4[7:a]]]", u"f(1,'a')"},  // single quotes by default
    {u"f(g(1),(2))", "1[3:f[4[3:g[4[6:1]]] 4[2[6:2]]]]", u"f(g(1),(2))"},
    {u"1.50", "1[6:1.5]", u"1.5"},  // numbers in canonical form
    {u"-0.0", "1[8:- 6:0]", u"-0"},
    {u"1 != 2 == 3", "1[6:1 8:<> 6:2 8:= 6:3]", u"1<>2=3"},
    {u"a > = b", "1[5:a 8:>= 5:b]", u"a>=b"},  // blanks inside an operator
    {u"a<b || c<=d", "1[5:a 8:< 5:b 8:|| 5:c 8:<= 5:d]", u"a<b||c<=d"},
    {u"a AND b Or c", "1[5:a 8: and  5:b 8: or  5:c]", u"a and b or c"},
    {u"not(a)", "1[8:! 2[5:a]]", u"!(a)"},  // not( is the operator and a bracket
    {u"and(1)", "1[3:and[4[6:1]]]", u"and(1)"},  // and( is a call
    {u"a&&!b", "1[5:a 8:&& 8:! 5:b]", u"a&&!b"},
    {u"a||'c&&d'", "1[5:a 8:|| 7:c&&d]", u"a||'c&&d'"},  // no blanks put in inside quotes
    {u"-a*b>-c", "1[8:- 5:a 8:* 5:b 8:> 8:- 5:c]", u"-a*b>-c"},
    {u"A1:B3+$C$1+@Sheet.x", "1[5:A1:B3 8:+ 5:$C$1 8:+ 5:@Sheet.x]", u"A1:B3+$C$1+@Sheet.x"},
    {u"'it\\'s'", "1[7:it's]", u"\"it\\'s\""},  // escaped, and in double quotes
    {u"\"a\"'b'", "1[7:\"a\"'b']", u"\"\\\"a\\\"\\'b\\'\""},  // two strings in a row: one token
    {u"''", "1[7]", u"''"},
    {u"'a\\\\r\\\\nb'", "1[7:a\r\nb]", u"'a\r\nb'"},  // backslash-r-backslash-n becomes CR LF
};

TEST(Parser, TreesAndTheirTextReadBackToThemselves) {
  for (const auto& c : kTrees) {
    auto parsed = ParseText(c.text);
    EXPECT_EQ(Shape(parsed->root.get()), c.shape) << Row(c.text) << ": error " << parsed->errors.nError;
    EXPECT_EQ(parsed->root ? Expression(parsed->root.get()) : u"<no parse>", c.written) << Row(c.text);
    EXPECT_EQ(parsed->errors.nError, 0) << Row(c.text);
    EXPECT_NE(std::unique_ptr<ICalcTreeNode>(CUtilityCalc::ParseExpression(c.text, nullptr)), nullptr);
    auto again = ParseText(c.written);
    EXPECT_EQ(Shape(again->root.get()), c.shape) << Row(c.written);
  }
}

// 60 digits are the most a number holds; 61 make a text, 80 neither a number nor a name.
TEST(Parser, LongDigitRuns) {
  for (const auto& [digits, kind] : {std::pair{60, '6'}, {61, '7'}, {80, '-'}}) {
    const std::u16string text(static_cast<std::size_t>(digits), u'1');
    auto parsed = ParseText(text.c_str());
    const std::string shape = std::string("1[") + kind + ":" + Row(text.c_str()) + "]";
    EXPECT_EQ(Shape(parsed->root.get()), kind == '-' ? "" : shape) << digits;
    EXPECT_EQ(parsed->errors.nError, kind == '-' ? 1068 : 0) << digits;
  }
}

// The text, the error number and position, and complex mode for the parse.
constexpr struct { const char16_t* text; int number, position, complex = 1; } kErrors[] = {
    {u"(a", 1070, 0},  // an open bracket reports its own position
    {u"((((a", 1070, 3},
    {u"f(1", 1070, 3},  // an unfinished call reports the end
    {u"1 + 1)", 1070, 5},
    {u"f(g(1)", 1070, 6},  // the bracket that was read closed g, not f
    {u"(')'", 1070, 0},  // brackets inside quotes are text
    {u"a,b", 1003, 1},
    {u",", 1003, 0},
    {u"()", 1003, 0},
    {u"1 2", 1003, 2},
    {u"1 >> 2", 1003, 3},  // refused operator: its start plus 1
    {u"=1", 1003, 0},  // only "-" and "!" may lead
    {u"a+", 1003, 1},
    {u"a*-b", 1003, 2},  // no minus behind arithmetic
    {u"a and", 1003, 2},
    {u"abc\"x\"", 1003, 3},  // a string right behind a word
    {u"sum (1)", 1003, 4},  // a blank before the bracket: a variable and a bracket
    {u"f(1)(2)", 1003, 4},
    {u"a&&", 1003, 2},  // position in the padded text "a &&"
    {u"'a\\'b", 1003, 5},  // repaired to 'a\\'b: a string, then a word
    {u"'a\\' +", 1003, 6},  // repaired, and still wrong: a position in the repaired text
    {u"a%", 1068, 1},
    {u"x+a.", 1068, 3},
    {u"\"a\" & \"b\"", 1068, 4},  // "&" alone is no operator
    {u"a\tb", 1068, 1},  // a tab is a word character
    {u"'abc", 1068, 0},  // an unclosed quote is an ordinary character
    {u"'a'b'", 1068, 4},  // the word b' behind the string
    {u"12a", 1001, 2},
    {u"f$(2)", 1000, 0},
    {u"99(1)", 1000, 0},  // digits alone keep the number
    {u"1+\"a\"", 1005, 2, 0},  // with complex mode off, numbers and texts may not mix in a run
    {u"\"a\"+1", 1005, 4, 0},
    {u"f(1,(2+'a'))", 1005, 7, 0},  // found in a bracket deep inside
};

TEST(Parser, ErrorNumbersAndPositions) {
  for (const auto& c : kErrors) {
    ScopedMode mode(c.complex);
    auto parsed = ParseText(c.text);
    EXPECT_EQ(parsed->root, nullptr) << Row(c.text);
    EXPECT_EQ(parsed->errors.nError, c.number) << Row(c.text);
    EXPECT_EQ(parsed->errors.nCodePos, c.position) << Row(c.text);
    EXPECT_EQ(parsed->errors.pszSource, nullptr) << Row(c.text);  // cleared after the check
    EXPECT_EQ(CUtilityCalc::ParseExpression(c.text, nullptr), nullptr) << Row(c.text);
  }
  ScopedFakeLanguage language;  // the text names the source as scanned
  EXPECT_EQ(U(ParseText(u"a&&")->errors.pszErrorText), u"Syntax error: a &&");
  EXPECT_EQ(U(ParseText(u"f(1")->errors.pszErrorText), u"Brackets don't match: f(1");
}

TEST(Parser, BackslashBeforeClosingQuoteIsRepaired) {
  auto parsed = ParseText(u"'C:\\dir\\'");
  // The repaired 'C:\dir\\' holds the escape \d, so no escape is undone;
  // the collector keeps the first failure.
  EXPECT_EQ(Shape(parsed->root.get()), "1[7:C:\\dir\\\\]");
  EXPECT_EQ(parsed->errors.nError, 1068);
  EXPECT_EQ(parsed->errors.nCodePos, 0);
  EXPECT_EQ(Shape(ParseText(u"'a\\\\'+'\\'")->root.get()), "1[7:a\\ 8:+ 7:\\]");  // '\' alone: one backslash
}

TEST(Parser, NestingIsBounded) {
  for (int depth : {kMaxNesting, kMaxNesting + 1}) {
    const std::u16string closing = u"1" + std::u16string(static_cast<std::size_t>(depth), u')');
    std::u16string calls, brackets = std::u16string(static_cast<std::size_t>(depth), u'(') + closing;
    for (int i = 0; i < depth; ++i) calls += u"f(";
    calls += closing;
    for (const std::u16string& text : {brackets, calls}) {
      auto parsed = ParseText(text.c_str());
      EXPECT_EQ(parsed->root == nullptr, depth > kMaxNesting) << depth;
      EXPECT_EQ(parsed->errors.nError, depth > kMaxNesting ? 1003 : 0);
      EXPECT_EQ(parsed->errors.nCodePos, depth == kMaxNesting ? -1 : text == brackets ? 256 : 513);
    }
  }
}

TEST(TreeText, EveryKindAndRenames) {
  auto parsed = ParseText(u"f(x,'s',2)+(y)&&!z");
  ICalcTreeNode* root = parsed->root.get();
  ICalcTreeNode* call = root->GetChild(0);
  std::u16string parts;
  for (int kind : {2, 4, 5, 6, 7, 8}) {
    CCalcTreeNodeArray found;
    root->CollectByKind(found, static_cast<unsigned char>(kind));
    for (ICalcTreeNode* node : found) parts += Expression(node) + u" ";
  }
  EXPECT_EQ(parts, u"(y) x 's' 2 x y z 2 's' + && ! ");
  root->GetChild(2)->SetKind(kKindNothing);  // 0 writes nothing
  call->SetText(u"g");
  call->GetChild(0)->GetChild(0)->SetText(u"not a name");  // not checked here
  EXPECT_EQ(Expression(root), u"g(not a name,'s',2)+&&!z");
}

TEST(TreeText, FormulaForm) {
  constexpr std::pair<const char16_t*, const char16_t*> kFormulas[] = {
      {u"\"a\"+\"b\"", u"\"a\" & \"b\""},
      {u"\"1\"+\"2\"", u"\"1\"+\"2\""},  // number texts keep the "+"
      {u"1+2+'a'", u"1+2 & \"a\""},      // only the "+" that touches a text
      {u"''+1", u"\"\" & 1"},            // the empty text counts as a text
      {u"f('it\\'s')-1", u"f(\"it\\'s\")-1"},  // a text inside a call has no effect outside
      {u"-$A$1+(x) and b", u"-$A$1+(x) and b"},
  };
  for (const auto& [text, formula] : kFormulas) {
    CStringBuilder builder(512);
    ParseText(text)->root->WriteFormula(&builder, 0);
    CString out;
    builder.GetStr(out);
    EXPECT_EQ(U(out), formula) << Row(text);
  }
  CStringBuilder builder(512);  // the caller's textNeighbour applies to an operator at the top
  ParseText(u"1+2")->root->GetChild(1)->WriteFormula(&builder, 1);
  CString out;
  builder.GetStr(out);
  EXPECT_EQ(U(out), u" & ");
}

}  // namespace
}  // namespace vkt::test
