// tests/tree/TreeTextTest.cpp: the normal form that GetExpression writes for
// every node kind, the formula form, and the writer's fixed point.
#include <gtest/gtest.h>

#include "VKTCalc.h"
#include "tests/tree/TreeTestUtil.h"

namespace vkt::test {
namespace {

struct TextCase {
  const char16_t* text;
  const char16_t* written;
};

// Parsed, then written by GetExpression.
constexpr TextCase kExpressions[] = {
    {u"a  +  b", u"a+b"},  // no blanks kept
    {u"a and b", u"a and b"},
    {u"a AND b Or c", u"a and b or c"},
    {u"a && b", u"a&&b"},
    {u"not a", u"!a"},
    {u"1 != 2", u"1<>2"},
    {u"1 == 2", u"1=2"},
    {u"a > = b", u"a>=b"},
    {u"1.50", u"1.5"},  // numbers as ResetPureNumberString left them
    {u"-0.0", u"-0"},
    {u"f( 1 , \"a\" )", u"f(1,'a')"},  // single quotes by default
    {u"\"it's\"", u"\"it\\'s\""},      // escaped, and in double quotes
    {u"''", u"''"},
    {u"'a\\\\b'", u"'a\\\\b'"},
    {u"f()", u"f()"},
    {u"f(,1)", u"f(,1)"},
    {u"(1+2)*3", u"(1+2)*3"},
    {u"f(g(1),(2))", u"f(g(1),(2))"},
    {u"A1:B3+$C$1", u"A1:B3+$C$1"},
    {u"-a*b", u"-a*b"},
    {u"a>-b", u"a>-b"},
    {u"a&&!b", u"a&&!b"},
    {u"", u""},
};

TEST(TreeText, ExpressionNormalForm) {
  for (const TextCase& c : kExpressions) {
    auto parsed = ParseText(c.text);
    ASSERT_NE(parsed->root, nullptr) << Utf8(c.text);
    EXPECT_EQ(Expression(parsed->root.get()), c.written) << Utf8(c.text);
  }
}

TEST(TreeText, WrittenTextIsAFixedPoint) {
  for (const TextCase& c : kExpressions) {
    auto first = ParseText(c.text);
    ASSERT_NE(first->root, nullptr);
    const std::u16string written = Expression(first->root.get());
    auto second = ParseText(written.c_str());
    ASSERT_NE(second->root, nullptr) << Utf8(written.c_str());
    EXPECT_EQ(Expression(second->root.get()), written);
    EXPECT_EQ(Shape(second->root.get()), Shape(first->root.get())) << Utf8(c.text);
  }
}

// A run of 1 + <value> with the value made by hand, as the evaluator leaves it.
std::unique_ptr<CCalcTreeNode> RunWithValue(const char16_t* value, bool second) {
  auto root = std::make_unique<CCalcTreeNode>(nullptr, kKindExpression);
  auto add = [&](unsigned char kind, const char16_t* text) {
    auto* node = new CCalcTreeNode(root.get(), kind);
    if (kind == kKindOperator)
      node->SetOperator(CString(text));
    else
      node->SetNumberText(text);
    root->AddChild(node);
  };
  if (second) {
    add(kKindNumber, u"1");
    add(kKindOperator, u"+");
  }
  add(kKindNumber, value);
  return root;
}

TEST(TreeText, NegativeNumberInBracketsBehindTheFirstPlace) {
  EXPECT_EQ(Expression(RunWithValue(u"-2", false).get()), u"-2");
  EXPECT_EQ(Expression(RunWithValue(u"-2", true).get()), u"1+(-2)");
  EXPECT_EQ(Expression(RunWithValue(u"2", true).get()), u"1+2");

  // A number computed into the CGmp form is written the same way.
  auto computed = RunWithValue(u"7", true);
  auto* last = static_cast<CCalcTreeNode*>(computed->GetChild(2));
  last->SetGmp(new CGmp(u"-2.5"), 0);
  EXPECT_EQ(Expression(computed.get()), u"1+(-2.5)");
  auto again = ParseText(Expression(computed.get()).c_str());
  EXPECT_NE(again->root, nullptr);  // and it reads back
}

TEST(TreeText, EveryKind) {
  auto parsed = ParseText(u"f(x,'s',2)+(y)&&!z");
  ASSERT_NE(parsed->root, nullptr);
  ICalcTreeNode* root = parsed->root.get();
  EXPECT_EQ(Expression(root), u"f(x,'s',2)+(y)&&!z");
  ICalcTreeNode* call = root->GetChild(0);
  EXPECT_EQ(Expression(call), u"f(x,'s',2)");                  // 3
  EXPECT_EQ(Expression(call->GetChild(1)), u"'s'");              // 4
  EXPECT_EQ(Expression(call->GetChild(0)->GetChild(0)), u"x");   // 5
  EXPECT_EQ(Expression(call->GetChild(2)->GetChild(0)), u"2");   // 6
  EXPECT_EQ(Expression(call->GetChild(1)->GetChild(0)), u"'s'");  // 7
  EXPECT_EQ(Expression(root->GetChild(1)), u"+");                // 8
  EXPECT_EQ(Expression(root->GetChild(2)), u"(y)");              // 2
  root->GetChild(2)->SetKind(kKindNothing);                      // 0 writes nothing
  EXPECT_EQ(Expression(root), u"f(x,'s',2)+&&!z");
}

TEST(TreeText, RenameInPlace) {
  auto parsed = ParseText(u"A1+f(1)");
  ASSERT_NE(parsed->root, nullptr);
  parsed->root->GetChild(0)->SetText(u"B2");
  parsed->root->GetChild(2)->SetText(u"g");
  EXPECT_EQ(Expression(parsed->root.get()), u"B2+g(1)");
  parsed->root->GetChild(0)->SetText(u"not a name");  // not checked here
  EXPECT_EQ(Expression(parsed->root.get()), u"not a name+g(1)");
}

std::u16string Formula(const char16_t* text) {
  auto parsed = ParseText(text);
  if (parsed->root == nullptr) return u"<no parse>";
  CStringBuilder builder(512);
  parsed->root->WriteFormula(&builder, 0);
  CString out;
  builder.GetStr(out);
  return std::u16string(out.View());
}

TEST(TreeText, FormulaForm) {
  constexpr TextCase kFormulas[] = {
      {u"\"a\"+\"b\"", u"\"a\" & \"b\""},
      {u"\"1\"+\"2\"", u"\"1\"+\"2\""},  // number texts keep the "+"
      {u"'a'+1", u"\"a\" & 1"},
      {u"1+2+'a'", u"1+2 & \"a\""},     // only the "+" that touches a text
      {u"''+1", u"\"\" & 1"},           // the empty text counts as a text
      {u"'a'-1", u"\"a\"-1"},
      {u"f('a')+1", u"f(\"a\")+1"},     // a text inside a call has no effect outside
      {u"'it\\'s'", u"\"it\\'s\""},
      {u"a and b", u"a and b"},
      {u"$A$1+x", u"$A$1+x"},
  };
  for (const TextCase& c : kFormulas) EXPECT_EQ(Formula(c.text), c.written) << Utf8(c.text);

  // The caller's textNeighbour applies to an operator at the top.
  auto plus = ParseText(u"1+2");
  CStringBuilder builder(512);
  plus->root->GetChild(1)->WriteFormula(&builder, 1);
  CString out;
  builder.GetStr(out);
  EXPECT_EQ(out, u" & ");
}

TEST(TreeText, CloneWritesTheSameAndIsIndependent) {
  constexpr const char16_t* kTexts[] = {u"f(x,'s',2)+(y)&&!z", u"a and not b", u"-1.5*2", u"g(,)"};
  for (const char16_t* text : kTexts) {
    auto parsed = ParseText(text);
    ASSERT_NE(parsed->root, nullptr) << Utf8(text);
    std::unique_ptr<ICalcTreeNode> copy(parsed->root->Clone());
    EXPECT_EQ(copy->GetParent(), nullptr);
    EXPECT_EQ(Shape(copy.get()), Shape(parsed->root.get())) << Utf8(text);
    EXPECT_EQ(Expression(copy.get()), Expression(parsed->root.get())) << Utf8(text);
    copy->DeleteAllChildren();
    EXPECT_NE(Expression(parsed->root.get()), u"") << Utf8(text);
  }
}

}  // namespace
}  // namespace vkt::test
