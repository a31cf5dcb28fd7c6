// tests/tree/EvaluateTest.cpp: formulas taken from text to their exact
// result through the step search and the computing steps: precedence and
// associativity, unary minus, comparisons and logic, texts and their
// coercion with complex mode on and off, division by zero, the lazy branch
// of `if`, and errors with their number, position and text.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/EvalDriver.h"
#include "tests/tree/TreeTestUtil.h"
#include "tree/Evaluator.h"

namespace vkt::test {
namespace {

std::string Row(const char16_t* formula) { return Utf8(formula); }

struct ValueCase {
  const char16_t* formula;
  const char16_t* value;     // the root's GetValue(text, 0, 0)
  unsigned char kind;        // the root's kind: 6 number, 7 text
  unsigned char resultKind;  // as the calculator reports it
};

void CheckValues(const ValueCase* cases, std::size_t count, int complex) {
  ComplexMode mode(complex);
  for (std::size_t i = 0; i < count; ++i) {
    const ValueCase& c = cases[i];
    EvalRun run = Evaluate(c.formula);
    EXPECT_EQ(run.code, 0) << Row(c.formula) << " error " << run.error;
    EXPECT_EQ(Utf8(run.value.c_str()), Utf8(c.value)) << Row(c.formula);
    EXPECT_EQ(run.rootKind, c.kind) << Row(c.formula);
    EXPECT_EQ(run.resultKind, c.resultKind) << Row(c.formula);
  }
}

constexpr ValueCase kArithmetic[] = {
    {u"=1+2*3", u"7", 6, 6},
    {u"(1+2)*3", u"9", 6, 6},
    {u"2-3-4", u"-5", 6, 6},  // left to right, not 2-(3-4)
    {u"8/2/2", u"2", 6, 6},
    {u"2*3+4*5", u"26", 6, 6},
    {u"1+2*3-4/2", u"5", 6, 6},
    {u"2*(3+4)*5", u"70", 6, 6},
    {u"((2+3)*(4-1))/5", u"3", 6, 6},
    {u"-2*3", u"-6", 6, 6},  // the minus binds to the operand first
    {u"-2+5", u"3", 6, 6},
    {u"-(2+3)", u"-5", 6, 6},
    {u"0.1+0.2", u"0.3", 6, 6},  // exact decimals
    {u"1.50*2", u"3", 6, 6},
    {u"10/4", u"2.5", 6, 6},
    {u"1/3", u"0.3333333333333333333333333333333333333333", 6, 6},  // cut at 40 decimals
    {u"99999999999999999999+1", u"100000000000000000000", 6, 6},
    {u"3*0", u"0", 6, 6},  // the null product reads as 0
    {u"5", u"5", 6, 6},    // no step: the calculator's kind of a bare value
    {u"((1))", u"1", 6, 0},  // two bracket steps, no computing step
    {u"1/0", u"\u221E", 6, 1},
    {u"-1/0", u"\u221E", 6, 1},
    {u"0/0", u"0", 6, 6},
    {u"1/0+1", u"1", 6, 6},  // "∞" reads as an empty number
    {u"1/0/0", u"0", 6, 6},
};

TEST(Evaluate, ArithmeticPrecedenceAndAssociativity) {
  CheckValues(kArithmetic, std::size(kArithmetic), 1);
  CheckValues(kArithmetic, std::size(kArithmetic), 0);  // numbers alone: the mode plays no part
}

constexpr ValueCase kCompareAndLogic[] = {
    {u"1<2", u"1", 6, 6},
    {u"2<1", u"0", 6, 6},
    {u"1=1", u"1", 6, 6},
    {u"1<>1", u"0", 6, 6},
    {u"1!=2", u"1", 6, 6},
    {u"2>=2", u"1", 6, 6},
    {u"2<=1", u"0", 6, 6},
    {u"1.0=1", u"1", 6, 6},
    {u"1+2=3", u"1", 6, 6},  // arithmetic first, the comparison at the next step
    {u"1+1>3-2", u"1", 6, 6},
    {u"2*3<=-6", u"0", 6, 6},
    {u"1>-1", u"1", 6, 6},
    {u"-1<1", u"1", 6, 6},
    {u"-1=-1", u"1", 6, 6},
    {u"1&&0", u"0", 6, 6},
    {u"1||0", u"1", 6, 6},
    {u"2&&3", u"1", 6, 6},  // truth values, not the operands
    {u"0.5&&1", u"1", 6, 6},
    {u"0||1&&0", u"0", 6, 6},  // (0||1)&&0
    {u"1||0&&0", u"1", 6, 6},  // ends at the || with 1
    {u"1&&0||1", u"1", 6, 6},
    {u"1&&-1", u"1", 6, 6},
    {u"!0", u"1", 6, 6},
    {u"!(1=1)", u"0", 6, 6},
    {u"not 1", u"0", 6, 6},
    {u"NOT 0", u"1", 6, 6},
    {u"!0&&0", u"0", 6, 6},  // ! takes the piece behind it only
    {u"0||!0", u"1", 6, 6},
    {u"1 and 1", u"1", 6, 6},
    {u"0 OR 1", u"1", 6, 6},
    {u"1<2&&2<3", u"1", 6, 6},
    {u"1<2 and 3<2", u"0", 6, 6},
    {u"1+1=2||1/0", u"1", 6, 6},
    {u"(1<2)+(2<3)", u"2", 6, 6},  // truth values are numbers
};

TEST(Evaluate, ComparisonAndLogicChains) { CheckValues(kCompareAndLogic, std::size(kCompareAndLogic), 1); }

// Texts among themselves: the same in both modes.
constexpr ValueCase kTexts[] = {
    {u"\"a\"+\"b\"", u"ab", 7, 7},
    {u"'a'+'b'+'c'", u"abc", 7, 7},
    {u"\"a\"", u"a", 7, 1},  // a text alone: the calculator's kind 1
    {u"\"1\"+\"2\"", u"12", 7, 7},  // two texts join, even digits
    {u"'\"'+'x'+'\"'", u"\"x\"", 7, 7},  // quotes that the join puts at both ends stay
    {u"\"10\"<\"9\"", u"1", 6, 6},  // compared as text
    {u"\"a\"=\"a\"", u"1", 6, 6},
    {u"\"a\"<\"b\"", u"1", 6, 6},
    {u"\"B\"=\"b\"", u"0", 6, 6},  // case counts in the default locale
    {u"(\"a\"+\"b\")=\"ab\"", u"1", 6, 6},
};

TEST(Evaluate, TextJoiningInBothModes) {
  CheckValues(kTexts, std::size(kTexts), 1);
  CheckValues(kTexts, std::size(kTexts), 0);
}

constexpr ValueCase kComplex[] = {
    {u"\"12\"-3", u"9", 6, 6},
    {u"\"12\"+3", u"15", 6, 6},  // a text that reads as a number becomes one
    {u"3+\"12\"", u"15", 6, 6},
    {u"\"\"+1", u"1", 6, 6},
    {u"\"\"=0", u"1", 6, 6},
    {u"\"1,234\"-1", u"1233", 6, 6},  // thousands separators pass
    {u"\"a\"+1", u"a1", 7, 7},
    {u"1+\"a\"", u"1a", 7, 7},
    {u"\"x\"+1.50", u"x1.5", 7, 7},
    {u"\"10\"<9", u"0", 6, 6},  // compared as numbers
    {u"10<\"a\"", u"1", 6, 6},  // compared as text: "10" before "a"
    {u"\"a\"=1", u"0", 6, 6},
    {u"1/0+\"a\"", u"\u221E", 7, 7},  // beside a text "∞" stays
    {u"-\"5\"", u"-5", 6, 6},
    {u"\"a\"+3*0", u"a", 7, 7},  // the null product shows as no text without bit 6
    {u"\"a\"+1&&1", u"0", 6, 6},
    {u"\"x\"&&1", u"0", 6, 6},  // a text reads as an empty number
};

TEST(Evaluate, CoercionInComplexMode) { CheckValues(kComplex, std::size(kComplex), 1); }

TEST(Evaluate, DisplayFormatOfNumbersThatBecomeText) {
  ComplexMode on(1);
  struct {
    const char16_t* formula;
    unsigned char format;
    const char16_t* value;
  } const cases[] = {
      {u"\"a\"+3*0", 64, u"a0"},  // bit 6 shows a zero
      {u"\"Total \"+1234.5", 128 + 64 + 2, u"Total 1,234.50"},
      {u"\"Total \"+1234.5", 0, u"Total 1234.5"},
      {u"1234.5+1", 128 + 2, u"1235.5"},  // numbers among themselves keep their digits
  };
  for (const auto& c : cases) {
    EvalRun run = Evaluate(c.formula, {}, c.format);
    EXPECT_EQ(Utf8(run.value.c_str()), Utf8(c.value)) << Row(c.formula) << " format " << int(c.format);
  }
}

struct ErrorCase {
  const char16_t* formula;
  int complex;
  int error;
  int position;            // -1: evaluation keeps the collector's position
  const char16_t* text;    // with the language texts "E<number>: %s"; null: not checked
};

constexpr ErrorCase kErrors[] = {
    {u"\"a\"-1", 1, 1003, -1, u"E1003: 'a'-1"},
    {u"\"a\"*2", 1, 1003, -1, u"E1003: 'a'*2"},
    {u"\"a\"-\"b\"", 1, 1003, -1, u"E1003: 'a'-'b'"},
    {u"\"a\"-\"b\"", 0, 1003, -1, u"E1003: 'a'-'b'"},
    {u"-\"a\"", 1, 1003, -1, nullptr},
    {u"-\"5\"", 0, 1003, -1, nullptr},  // no coercion without complex mode
    {u"2*3-\"a\"", 1, 1003, -1, u"E1003: 6-'a'"},  // the node as far as it got
    {u"1=1=1", 1, 1003, -1, u"E1003: 1=1=1"},
    {u"(1<2<3)+1", 1, 1003, -1, u"E1003: (1<2<3)"},
    // A later piece of a logical run fails once the node holds the value of
    // the first piece: the text shows that value.
    {u"1&&\"a\"-1", 1, 1003, -1, u"E1003: 1"},
    {u"\"a\"-1||1", 1, 1003, -1, u"E1003: 'a'-1"},
    {u"\"a\"-1", 0, 1005, 4, nullptr},  // mixed kinds refused by the parse, at the 1
    {u"\"1\"+1", 0, 1005, 4, nullptr},
    {u"1/0+\"a\"", 0, 1005, 4, nullptr},
    {u"(1)+\"a\"", 0, 1005, -1, u"E1005: 1+'a'"},  // mixed only after the bracket went
    {u"2--3", 1, 1003, 2, nullptr},  // grammar: no minus behind arithmetic
    {u"1+", 1, 1003, 1, nullptr},
    {u"(1+2", 1, 1070, 0, nullptr},
};

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

TEST(Evaluate, ErrorsWithNumberPositionAndText) {
  static NumberedTexts texts;
  SetLggInterface(&texts);
  for (const ErrorCase& c : kErrors) {
    ComplexMode mode(c.complex);
    EvalRun run = Evaluate(c.formula);
    EXPECT_EQ(run.code, -1) << Row(c.formula);
    EXPECT_EQ(run.error, c.error) << Row(c.formula) << " complex " << c.complex;
    EXPECT_EQ(run.position, c.position) << Row(c.formula) << " complex " << c.complex;
    if (c.text != nullptr) {
      EXPECT_EQ(Utf8(run.errorText.c_str()), Utf8(c.text)) << Row(c.formula);
    }
  }
  SetLggInterface(nullptr);
}

// ---- Variables and the lazy branch of if ----------------------------------------

VariableValues Values(std::map<std::u16string, std::u16string> table) {
  return [table](const std::u16string& name, std::u16string& value) {
    auto found = table.find(name);
    if (found == table.end()) return false;
    value = found->second;
    return true;
  };
}

struct VariableCase {
  const char16_t* formula;
  std::map<std::u16string, std::u16string> values;
  const char16_t* value;
  std::vector<std::u16string> asked;  // in this order, and no other
};

TEST(Evaluate, VariablesInSourceOrderAndIfOnlyAsksForItsBranch) {
  ComplexMode on(1);
  const VariableCase cases[] = {
      {u"A1+B1*C1", {{u"A1", u"1"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"7", {u"A1", u"B1", u"C1"}},
      {u"if(A1,B1,C1)", {{u"A1", u"1"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"2", {u"A1", u"B1"}},
      {u"if(A1,B1,C1)", {{u"A1", u"0"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"3", {u"A1", u"C1"}},
      {u"IF(A1,B1,C1)", {{u"A1", u"'x'"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"3", {u"A1", u"C1"}},
      {u"If(1,2,C1)", {}, u"2", {}},
      {u"if(0,B1*D1,C1+1)", {{u"C1", u"4"}}, u"5", {u"C1"}},
      {u"if(A1>2,B1*2,C1)", {{u"A1", u"3"}, {u"B1", u"4"}}, u"8", {u"A1", u"B1"}},
      {u"1+if(A1,B1,C1)*2", {{u"A1", u"0"}, {u"C1", u"5"}}, u"11", {u"A1", u"C1"}},
      {u"if(if(A1,0,1),B1,C1)", {{u"A1", u"1"}, {u"C1", u"6"}}, u"6", {u"A1", u"C1"}},
      {u"if(A1,'yes','no')+'!'", {{u"A1", u"1"}}, u"yes!", {u"A1"}},
      {u"A1+1", {{u"A1", u"B1*2"}, {u"B1", u"3"}}, u"7", {u"A1", u"B1"}},  // an expression is spliced in
      {u"A1+\"y\"", {{u"A1", u"'x'"}}, u"xy", {u"A1"}},
  };
  for (const VariableCase& c : cases) {
    std::string row = Row(c.formula);
    EvalRun run = Evaluate(c.formula, Values(c.values));
    EXPECT_EQ(run.code, 0) << row << " error " << run.error;
    EXPECT_EQ(Utf8(run.value.c_str()), Utf8(c.value)) << row;
    EXPECT_EQ(run.asked, c.asked) << row;
  }
}

TEST(Evaluate, IfNeverComputesTheBranchNotTaken) {
  ComplexMode on(1);
  EXPECT_EQ(Evaluate(u"if(0,\"a\"-1,5)").value, u"5");  // the failing branch is gone first
  EXPECT_EQ(Evaluate(u"if(1,\"a\"-1,5)").error, 1003);
  EXPECT_EQ(Evaluate(u"if(1,2,unknown(3))").value, u"2");  // the call in it is never made
  EXPECT_EQ(Evaluate(u"if(0,2,unknown(3))").code, 3);
}

// ---- The search itself -------------------------------------------------------------

TEST(FindNextStep, StepKindsAndTheNodeGiven) {
  struct {
    const char16_t* formula;
    unsigned int step;
    const char* shape;  // of the node given; empty for none
  } const cases[] = {
      {u"A1+1", kStepVariable, "5:A1"},
      {u"1+2", kStepCompute, "1[6:1 8:+ 6:2]"},
      {u"(1)+2", kStepBracket, "2[6:1]"},
      {u"(1+2)*3", kStepCompute, "2[6:1 8:+ 6:2]"},
      {u"f(1,2)", kStepFunction, "3:f[4[6:1] 4[6:2]]"},
      {u"f(1+2)", kStepCompute, "4[6:1 8:+ 6:2]"},
      {u"f(g(B1),C1)", kStepVariable, "5:B1"},
      {u"5", kStepNone, ""},
      {u"if(A1,B1,C1)", kStepVariable, "5:A1"},
      {u"if(1,B1,C1)", kStepVariable, "5:B1"},
      {u"if(0,B1,C1)", kStepVariable, "5:C1"},
      {u"if(1,2,C1)", kStepFunction, "3:if[4[6:1] 4[6:2] 6:0]"},  // the branch is now the number 0
      {u"if(0,f(B1),3)", kStepFunction, "3:if[4[6:0] 6:0 4[6:3]]"},
  };
  for (const auto& c : cases) {
    auto parsed = ParseText(c.formula);
    ASSERT_NE(parsed->root, nullptr) << Row(c.formula);
    unsigned int step = 99;
    ICalcTreeNode* node = FindNextStep(parsed->root.get(), &step);
    EXPECT_EQ(step, c.step) << Row(c.formula);
    EXPECT_EQ(Shape(node), c.shape) << Row(c.formula);
  }
}

TEST(FindNextStep, ExpressionWithOneValueTakesItWithoutAStep) {
  auto parsed = ParseText(u"'a'");
  unsigned int step = 99;
  EXPECT_EQ(FindNextStep(parsed->root.get(), &step), nullptr);
  EXPECT_EQ(step, kStepNone);
  EXPECT_EQ(Shape(parsed->root.get()), "7:a");
  EXPECT_EQ(FindNextStep(nullptr, &step), nullptr);
  EXPECT_EQ(step, kStepNone);
}

TEST(FindNextStep, DeepestNestingTheParserTakesEvaluates) {
  std::u16string formula;
  for (int i = 0; i < kMaxNesting; ++i) formula += u"(1+";
  formula += u"1";
  for (int i = 0; i < kMaxNesting; ++i) formula += u")";
  EvalRun run = Evaluate(formula.c_str());
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(Utf8(run.value.c_str()), std::to_string(kMaxNesting + 1));
}

// A tree far deeper than any parse is searched without recursion.
TEST(FindNextStep, SearchesAnyDepthWithItsOwnStack) {
  constexpr int kDepth = 50000;
  auto root = std::make_unique<CCalcTreeNode>(nullptr, kKindExpression);
  CCalcTreeNode* parent = root.get();
  for (int i = 0; i < kDepth; ++i) {
    auto* bracket = new CCalcTreeNode(parent, kKindBracket);
    parent->AddChild(bracket);
    parent = bracket;
  }
  auto* leaf = new CCalcTreeNode(parent, kKindVariable);
  leaf->SetText(u"A1");
  parent->AddChild(leaf);
  unsigned int step = 0;
  EXPECT_EQ(FindNextStep(root.get(), &step), leaf);
  EXPECT_EQ(step, kStepVariable);
  leaf->ApplyValue(u"2");
  EXPECT_EQ(FindNextStep(root.get(), &step), parent);  // the innermost bracket comes first
  EXPECT_EQ(step, kStepBracket);
}

// ---- ComputeNode on hand-made runs -------------------------------------------------

TEST(ComputeNode, AComparisonWithoutASideComparesWithAnEmptyText) {
  ComplexMode on(1);
  auto parsed = ParseText(u"1=2");
  auto* root = CCalcTreeNode::From(parsed->root.get());
  root->DeleteChild(2);  // a host cut the right side: "1=" is left
  CErrorCollector errors;
  unsigned char kind = 0;
  EXPECT_EQ(ComputeNode(root, 0, &kind, &errors), 1);
  CString value;
  root->GetValue(value, 0, 0);
  EXPECT_EQ(value, u"0");  // 1 against "" as text
  EXPECT_EQ(kind, kResultNumber);
}

TEST(ComputeNode, ARunCutIntoAnOddShapeFailsInsteadOfLooping) {
  auto parsed = ParseText(u"1=2+3");
  auto* root = CCalcTreeNode::From(parsed->root.get());
  root->DeleteChild(3);  // "1=2 3": the + is gone
  CErrorCollector errors;
  EXPECT_EQ(ComputeNode(root, 0, nullptr, &errors), 0);
  EXPECT_EQ(errors.nError, 1003);
  EXPECT_EQ(errors.nCodePos, -1);
}

}  // namespace
}  // namespace vkt::test
