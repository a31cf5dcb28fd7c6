// tests/tree/EvaluateTest.cpp: formulas driven to their end by the real
// calculator (precedence, logic, texts and coercion, division by zero, the
// lazy branch of `if`, errors); the step search and ComputeNode on odd trees.
#include <gtest/gtest.h>

#include "tests/tree/TreeTestUtil.h"
#include "tree/Evaluator.h"

namespace vkt::test {
namespace {

// The run's end as one text: "[result kind] value" after code 0, else
// "code error: text" (the request for code 3), then " <" and each request.
std::u16string Evaluate(const char16_t* formula, TestHost host = {}) {
  static std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  const RunOutcome run = host.Run(*calc, formula);
  std::u16string out = run.code == 0 ? u"[" + Num(run.resultKind) + u"] " + run.value
                                     : Num(run.code) + u" " + Num(run.error) + u": " +
                                           (run.code == 3 ? run.request : run.errorText);
  for (const std::u16string& request : run.asked) out += u" <" + request;
  return out;
}

// The formula, complex mode (1 on, 0 off, 2 both), the end as Evaluate gives
// it, the host's answers to variables and its display format.
const struct {
  const char16_t* formula;
  int complex;
  const char16_t* end;
  std::unordered_map<std::u16string, std::u16string> values = {};
  unsigned char format = 0;
} kRuns[] = {
    {nullptr, 2, u"-1 0: "},  // nothing to parse, and no error
    {u" = ", 2, u"-1 0: "},
    {u"  =  1+2*3-4/2", 2, u"[6] 5"},
    {u"==1", 2, u"-1 1003: Syntax error:\r\n=1\r\n^"},  // one "=" only
    {u" = 1+", 2, u"-1 1003: Syntax error:\r\n1+\r\n-^"},  // a position counted behind the "="
    {u"2-3-4", 2, u"[6] -5"},  // left to right, not 2-(3-4)
    {u"-2*3", 2, u"[6] -6"},  // the minus binds to the operand first
    {u"1/3", 2, u"[6] 0.3333333333333333333333333333333333333333"},  // cut at 40 decimals
    {u"3*0", 2, u"[6] 0"},  // the null product reads as 0
    {u"5", 2, u"[6] 5"},  // no step: the calculator's kind of a bare value
    {u"((1))", 2, u"[0] 1"},  // two bracket steps, no computing step
    {u"-1/0", 2, u"[1] \u221E"},
    {u"0/0", 2, u"[6] 0"},
    {u"1/0+1", 2, u"[6] 1"},  // "∞" reads as an empty number
    {u"1<>1", 1, u"[6] 0"},
    {u"2>=2", 1, u"[6] 1"},
    {u"1.0=1", 1, u"[6] 1"},
    {u"1+2=3", 1, u"[6] 1"},  // arithmetic first, the comparison at the next step
    {u"2*3<=-6", 1, u"[6] 0"},
    {u"0.5&&-1", 1, u"[6] 1"},  // truth values, not the operands
    {u"0||1&&0", 1, u"[6] 0"},  // (0||1)&&0
    {u"1||0&&0", 1, u"[6] 1"},  // ends at the || with 1
    {u"not 1", 1, u"[6] 0"},
    {u"!0&&0", 1, u"[6] 0"},  // ! takes the piece behind it only
    {u"0 or !(1=1)", 1, u"[6] 0"},
    {u"1+1=2||1/0", 1, u"[6] 1"},
    {u"(1<2)+(2<3)", 1, u"[6] 2"},  // truth values are numbers
    {u"\"a\"", 2, u"[1] a"},  // a text alone: the calculator's kind 1
    {u"\"1\"+\"2\"", 2, u"[7] 12"},  // two texts join, even digits
    {u"'\"'+'x'+'\"'", 2, u"[7] \"x\""},  // quotes that the join puts at both ends stay
    {u"\"10\"<\"9\"", 2, u"[6] 1"},  // compared as text
    {u"\"B\"=\"b\"", 2, u"[6] 0"},  // case counts in the default locale
    {u"\"12\"+3", 1, u"[6] 15"},  // a text that reads as a number becomes one
    {u"\"\"=0", 1, u"[6] 1"},
    {u"\"1,234\"-1", 1, u"[6] 1233"},  // thousands separators pass
    {u"1+\"a\"", 1, u"[7] 1a"},
    {u"\"10\"<9", 1, u"[6] 0"},  // compared as numbers
    {u"10<\"a\"", 1, u"[6] 1"},  // compared as text: "10" before "a"
    {u"1/0+\"a\"", 1, u"[7] \u221E"},  // beside a text "∞" stays
    {u"-\"5\"", 1, u"[6] -5"},
    {u"\"a\"+3*0", 1, u"[7] a"},  // the null product shows as no text without bit 6
    {u"\"a\"+3*0", 1, u"[7] a0", {}, 64},
    {u"\"Total \"+1234.5", 1, u"[7] Total 1,234.50", {}, 128 + 64 + 2},
    {u"1234.5+1", 1, u"[6] 1235.5", {}, 128 + 2},  // numbers among themselves keep their digits
    {u"\"a\"+1&&1", 1, u"[6] 0"},  // a text reads as an empty number
    {u"\"a\"*2", 1, u"-1 1003: Syntax error: 'a'*2"},
    {u"\"a\"-\"b\"", 0, u"-1 1003: Syntax error: 'a'-'b'"},
    {u"-\"a\"", 1, u"-1 1003: Syntax error: -'a'"},
    {u"-\"5\"", 0, u"-1 1003: Syntax error: -'5'"},  // no coercion without complex mode
    {u"2*3-\"a\"", 1, u"-1 1003: Syntax error: 6-'a'"},  // the node as far as it got
    {u"1=1=1", 1, u"-1 1003: Syntax error: 1=1=1"},
    {u"(1<2<3)+1", 1, u"-1 1003: Syntax error: (1<2<3)"},
    // A later piece of a logical run fails once the node holds the value of
    // the first piece: the text shows that value.
    {u"1&&\"a\"-1", 1, u"-1 1003: Syntax error: 1"},
    {u"\"a\"-1||1", 1, u"-1 1003: Syntax error: 'a'-1"},
    {u"(1)+\"a\"", 0, u"-1 1005: Number and text mixed: 1+'a'"},  // mixed only after the bracket went
    {u"\"1\"+1", 0, u"-1 1005: Number and text mixed:\r\n\"1\"+1\r\n----^"},  // refused by the parse
    {u"A1+B1*C1", 1, u"[6] 7 <A1 <B1 <C1", {{u"A1", u"1"}, {u"B1", u"2"}, {u"C1", u"3"}}},
    {u"if(A1,B1,C1)", 1, u"[0] 2 <A1 <B1", {{u"A1", u"1"}, {u"B1", u"2"}, {u"C1", u"3"}}},
    {u"IF(A1,B1,C1)", 1, u"[0] 3 <A1 <C1", {{u"A1", u"'x'"}, {u"B1", u"2"}, {u"C1", u"3"}}},
    {u"if(0,B1*D1,C1+1)", 1, u"[0] 5 <C1", {{u"C1", u"4"}}},
    {u"1+if(A1>2,B1,C1)*2", 1, u"[6] 9 <A1 <B1", {{u"A1", u"3"}, {u"B1", u"4"}}},
    {u"if(if(A1,0,1),B1,C1)", 0, u"[0] 6 <A1 <C1", {{u"A1", u"1"}, {u"C1", u"6"}}},
    {u"if(A1,'yes','no')+'!'", 1, u"[7] yes! <A1", {{u"A1", u"1"}}},
    {u"A1+1", 1, u"[6] 7 <A1 <B1", {{u"A1", u"B1*2"}, {u"B1", u"3"}}},  // an expression is spliced in
    {u"A1-1", 1, u"[6] 1233 <A1", {{u"A1", u"1,234"}}},  // the commas of a number are dropped
    {u"A1+'x'", 1, u"[7] x <A1", {{u"A1", u""}}},  // an empty answer is an empty text
    {u"If(0,\"a\"-1,5)", 1, u"[0] 5"},  // the branch not taken is gone before it is computed
    {u"if(1,\"a\"-1,5)", 1, u"-1 1003: Syntax error: 'a'-1"},
    {u"if(1,2,unknown(3))", 1, u"[0] 2"},  // the call in it is never made
    {u"if(0,2,unknown(3))", 1, u"3 0: unknown\r\n3 <unknown\r\n3"},  // a call for the host
    // Splices write a negative number behind the first place in brackets: 1+(-2)+C1, 1+(-2.5)+B1.
    {u"1+A1+B1", 1, u"[6] 2 <A1 <B1 <C1", {{u"A1", u"-2"}, {u"B1", u"C1"}, {u"C1", u"3"}}},
    {u"1+(0-2.5)+A1", 1, u"[6] 1.5 <A1 <B1", {{u"A1", u"B1"}, {u"B1", u"3"}}},
    // An answer that clashes with its neighbours, at the position of the neighbour.
    {u"A1+1", 0, u"-1 1005: Number and text mixed:\r\n'x'+1\r\n---^ <A1", {{u"A1", u"'x'"}}},
};

TEST(Evaluate, Runs) {
  ScopedFakeLanguage language;
  for (const auto& c : kRuns) {
    for (int complex : {0, 1}) {
      if (c.complex != 2 && c.complex != complex) continue;
      ScopedMode mode(complex);
      TestHost host;
      host.variables = c.values;
      host.dispFormat = c.format;
      EXPECT_EQ(Evaluate(c.formula, host), c.end) << Row(c.formula) << " complex " << complex;
    }
  }
}

TEST(Evaluate, DeepestNestingTheParserTakes) {
  std::u16string formula;
  for (int i = 0; i < kMaxNesting; ++i) formula += u"(1+";
  formula += u"1" + std::u16string(kMaxNesting, u')');
  EXPECT_EQ(Evaluate(formula.c_str()), u"[6] 257");
}

TEST(FindNextStep, StepKindsAndTheNodeGiven) {
  struct { const char16_t* formula; unsigned int step; const char* shape; } const cases[] = {
      {u"A1+1", kStepVariable, "5:A1"},
      {u"(1)+2", kStepBracket, "2[6:1]"},
      {u"(1+2)*3", kStepCompute, "2[6:1 8:+ 6:2]"},
      {u"f(1,2)", kStepFunction, "3:f[4[6:1] 4[6:2]]"},
      {u"5", kStepNone, ""},
      {u"if(0,B1,C1)", kStepVariable, "5:C1"},
      {u"if(1,2,C1)", kStepFunction, "3:if[4[6:1] 4[6:2] 6:0]"},  // the branch is now the number 0
      {u"if(0,f(B1),3)", kStepFunction, "3:if[4[6:0] 6:0 4[6:3]]"},
  };
  for (const auto& c : cases) {
    auto parsed = ParseText(c.formula);
    unsigned int step = 99;
    EXPECT_EQ(Shape(FindNextStep(parsed->root.get(), &step)), c.shape) << Row(c.formula);
    EXPECT_EQ(step, c.step) << Row(c.formula);
  }
  unsigned int step = 99;
  EXPECT_EQ(FindNextStep(nullptr, &step), nullptr);
  EXPECT_EQ(step, kStepNone);
  auto text = ParseText(u"'a'");
  EXPECT_EQ(FindNextStep(text->root.get(), &step), nullptr);
  EXPECT_EQ(Shape(text->root.get()), "7:a");  // one value and no step: the root takes it
}

// Runs a host cut into shapes no parse makes.
TEST(ComputeNode, RunsCutByAHost) {
  auto equal = ParseText(u"1=2");
  auto* root = CCalcTreeNode::From(equal->root.get());
  root->DeleteChild(2);  // "1=": 1 against an empty text
  CErrorCollector errors;
  unsigned char kind = 0;
  EXPECT_EQ(ComputeNode(root, 0, &kind, &errors), 1);
  EXPECT_EQ(Expression(root) + Num(kind), u"06");
  auto odd = ParseText(u"1=2+3");
  root = CCalcTreeNode::From(odd->root.get());
  root->DeleteChild(3);  // "1=2 3": fails instead of looping
  EXPECT_EQ(ComputeNode(root, 0, nullptr, &errors), 0);
  EXPECT_EQ(errors.nError, 1003);
  EXPECT_EQ(errors.nCodePos, -1);
}

}  // namespace
}  // namespace vkt::test
