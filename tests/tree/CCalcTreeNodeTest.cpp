// tests/tree/CCalcTreeNodeTest.cpp: the node's value states and their lazy
// conversion, the value setters, the queries and walks, Clone.
#include <gtest/gtest.h>

#include <vector>

#include "VKTCalc.h"
#include "tests/support/GmpText.h"
#include "tests/tree/TreeTestUtil.h"

namespace vkt::test {
namespace {

std::u16string Value(ICalcTreeNode* node, int attach = 0, int format = 0) {
  CString out;
  node->GetValue(out, attach, format);
  return std::u16string(out.View());
}

TEST(NodeValue, NewNumberNodeReadsAsZero) {
  CCalcTreeNode node(nullptr, kKindNumber);
  EXPECT_EQ(node.m_ValueState, kValueGmp);
  EXPECT_EQ(node.m_pGmp, nullptr);  // made only when asked for
  EXPECT_EQ(Value(&node), u"0");
  CCalcTreeNode other(nullptr, kKindNumber);
  EXPECT_TRUE(other.GetGmp()->IsZero());
  EXPECT_EQ(other.m_ValueState, kValueGmp);
}

TEST(NodeValue, EachStaleFormIsMadeOnce) {
  CCalcTreeNode node(nullptr, kKindNumber);
  node.SetNumberText(u"2.5");
  EXPECT_EQ(node.m_ValueState, kValueText);
  EXPECT_EQ(node.m_pGmp, nullptr);
  CGmp* number = node.GetGmp();
  EXPECT_EQ(Text(*number), u"2.5");
  EXPECT_EQ(node.m_ValueState, kValueGmp | kValueText);

  // The evaluator changes the number in place and marks the text stale.
  CGmp one(1);
  number->add(&one);
  node.m_ValueState = kValueGmp;
  EXPECT_EQ(Value(&node), u"3.5");
  EXPECT_EQ(node.m_ValueState, kValueGmp | kValueText);

  // Both forms fresh: nothing is converted again.
  number->add(&one);
  EXPECT_EQ(Value(&node), u"3.5");
  EXPECT_EQ(Text(*node.GetGmp()), u"4.5");
}

TEST(NodeValue, NumberFromItsTextIsReadStrictly) {
  CCalcTreeNode node(nullptr, kKindNumber);
  node.SetText(u"\u221e");  // the division by zero's text: no digits
  EXPECT_TRUE(node.GetGmp()->IsNull());
  EXPECT_EQ(Value(&node), u"\u221e");
}

struct NumberTextCase {
  const char16_t* text;
  unsigned char kind;
  const char16_t* stored;
};

TEST(NodeValue, SetNumberText) {
  constexpr NumberTextCase kCases[] = {
      {u"12.50", kKindNumber, u"12.5"},
      {u" 12 ", kKindNumber, u"12"},
      {u"-0.00", kKindNumber, u"0"},
      {u".5", kKindNumber, u".5"},
      {u"abc", kKindText, u"abc"},
      {u"", kKindText, u""},
      {u"1,234", kKindText, u"1,234"},  // no thousands separators here
      {u"1e5", kKindText, u"1e5"},
      // 61 digits: a number, but too long for CGmp, so a text
      {u"1234567890123456789012345678901234567890123456789012345678901", kKindText,
       u"1234567890123456789012345678901234567890123456789012345678901"},
  };
  for (const NumberTextCase& c : kCases) {
    CCalcTreeNode node(nullptr, kKindVariable);
    node.SetNumberText(c.text);
    EXPECT_EQ(node.m_Kind, c.kind) << Utf8(c.text);
    EXPECT_EQ(node.m_Text, c.stored) << Utf8(c.text);
    EXPECT_EQ(node.m_ValueState, kValueText) << Utf8(c.text);
  }
}

TEST(NodeValue, GetValueQuotesTextNodesOnly) {
  CCalcTreeNode text(nullptr, kKindText);
  text.SetText(u"it's");
  EXPECT_EQ(Value(&text, 1, 1), u"\"it\\'s\"");  // escaped first, then enclosed
  EXPECT_EQ(Value(&text, 0, 1), u"it\\'s");
  EXPECT_EQ(Value(&text, 1, 0), u"\"it's\"");
  EXPECT_EQ(Value(&text, 0, 0), u"it's");

  CCalcTreeNode name(nullptr, kKindVariable);
  name.SetText(u"it's");
  EXPECT_EQ(Value(&name, 1, 1), u"it's");
}

TEST(NodeValue, GetValueRounded) {
  CCalcTreeNode number(nullptr, kKindNumber);
  number.SetNumberText(u"2.567");
  CString out;
  number.GetValueRounded(out, -1);
  EXPECT_EQ(out, u"2.567");
  number.GetValueRounded(out, 0);
  EXPECT_EQ(out, u"3");
  number.GetValueRounded(out, 2);
  EXPECT_EQ(out, u"2.57");
  EXPECT_EQ(number.m_Text, u"2.567");  // the node keeps its value

  CCalcTreeNode text(nullptr, kKindText);
  text.SetText(u"2.567");
  text.GetValueRounded(out, 0);
  EXPECT_EQ(out, u"2.567");
}

TEST(NodeValue, GetDispValueChangesTheStoredText) {
  CCalcTreeNode empty(nullptr, kKindNumber);
  empty.SetText(u"");
  CString out;
  empty.GetDispValue(out, 0, 0, 2);
  EXPECT_EQ(out, u"");  // no default "0" without bit 6
  empty.GetDispValue(out, 0, 0, 64);
  EXPECT_EQ(out, u"0");
  EXPECT_EQ(empty.m_Text, u"0");

  CCalcTreeNode grouped(nullptr, kKindNumber);
  grouped.SetGmp(new CGmp(u"1234567.25"), 0);
  CString expected(u"1234567.25");
  CUtilityCalc::ConvertToDispFormat(expected, 128 | 1, 1, 0);
  grouped.GetDispValue(out, 0, 0, 128 | 1);
  EXPECT_EQ(out, expected);
  EXPECT_EQ(grouped.m_Text, expected);
}

TEST(NodeValue, SetGmp) {
  CCalcTreeNode node(nullptr, kKindNumber);
  node.SetGmp(new CGmp(u"-4.5"), 0);
  EXPECT_EQ(node.m_ValueState, kValueGmp);
  node.SetGmp(new CGmp(u"7"), 1);
  EXPECT_EQ(node.m_ValueState, kValueGmp | kValueText);
  EXPECT_EQ(node.m_Text, u"7");
  node.SetGmp(nullptr, 0);  // the number 0
  EXPECT_EQ(node.m_Text, u"0");
  ASSERT_NE(node.m_pGmp, nullptr);
  EXPECT_TRUE(node.m_pGmp->IsZero());
  EXPECT_EQ(node.m_ValueState, kValueGmp | kValueText);
  node.SetGmp(node.m_pGmp, 1);  // its own number again: kept, not freed
  EXPECT_EQ(node.m_ValueState, kValueGmp | kValueText);
}

TEST(NodeValue, SetTextTakesQuotesAndEscapesOff) {
  struct {
    const char16_t* text;
    const char16_t* stored;
  } const cases[] = {
      {u"'ab'", u"ab"},
      {u"\"'ab'\"", u"ab"},            // every enclosing pair
      {u"'it\\'s'", u"it's"},
      {u"it\\'s", u"it\\'s"},          // no quotes: escapes stay
      {u"'a\\q'", u"a\\q"},            // a bad escape: all stay
      {u"a\\r\\nb", u"a\r\nb"},        // backslash-r-backslash-n is CR LF
      {u"'", u"'"},
      {nullptr, u""},
  };
  for (const auto& c : cases) {
    CCalcTreeNode node(nullptr, kKindText);
    node.m_ValueState = kValueGmp;
    node.SetText(c.text);
    EXPECT_EQ(node.m_Text, c.stored) << Utf8(c.text);
    EXPECT_EQ(node.m_ValueState, kValueText);
    EXPECT_EQ(node.m_Kind, kKindText);
  }
  CCalcTreeNode self(nullptr, kKindText);
  self.m_Text = u"''x''";
  self.SetText(self.GetTextPtr());  // its own text, both pairs taken off
  EXPECT_EQ(self.m_Text, u"x");
}

struct ApplyCase {
  const char16_t* value;
  int result;
  unsigned char kind;
  const char16_t* stored;
};

TEST(NodeValue, ApplyValue) {
  constexpr ApplyCase kCases[] = {
      {nullptr, 0, kKindText, u""},
      {u"", 0, kKindText, u""},
      {u"'ab'", 0, kKindText, u"ab"},
      {u"\"a\\\"b\"", 0, kKindText, u"a\"b"},
      {u"12.50", 0, kKindNumber, u"12.5"},
      {u"1,234", 0, kKindNumber, u"1234"},  // commas of a host's value are dropped
      {u"1,23,4", 1, kKindVariable, u"1,23,4"},
      {u"A1+1", 1, kKindVariable, u"A1+1"},
      {u"abc", 1, kKindVariable, u"abc"},
  };
  for (const ApplyCase& c : kCases) {
    auto parsed = ParseText(u"f(1,2)");
    auto* call = static_cast<CCalcTreeNode*>(parsed->root->GetChild(0));
    EXPECT_EQ(call->ApplyValue(c.value), c.result) << Utf8(c.value);
    EXPECT_EQ(call->m_Kind, c.kind) << Utf8(c.value);
    EXPECT_EQ(call->m_Text, c.stored) << Utf8(c.value);
    EXPECT_EQ(call->GetChildCount(), 0) << Utf8(c.value);
  }
}

TEST(NodeOperator, SetOperator) {
  struct {
    const char16_t* token;
    int result;
    unsigned char code;
    const char16_t* stored;
  } const cases[] = {
      {u"+", 1, 43, u"+"},    {u"-", 1, 45, u"-"},        {u"*", 1, 42, u"*"},
      {u"/", 1, 47, u"/"},    {u"=", 1, 1, u"="},         {u">", 1, 2, u">"},
      {u"<", 1, 3, u"<"},     {u">=", 1, 4, u">="},       {u"<=", 1, 5, u"<="},
      {u"<>", 1, 6, u"<>"},   {u"&&", 1, 10, u"&&"},      {u"||", 1, 11, u"||"},
      {u"!", 1, 12, u"!"},    {u"AnD", 1, 10, u" and "},  {u"OR", 1, 11, u" or "},
      {u"Not", 1, 12, u"!"},  {u">>", 0, 0, u">>"},       {u"=<", 0, 0, u"=<"},
      {u"&", 0, 0, u"&"},
  };
  for (const auto& c : cases) {
    CCalcTreeNode node(nullptr, kKindOperator);
    EXPECT_EQ(node.SetOperator(CString(c.token)), c.result) << Utf8(c.token);
    EXPECT_EQ(node.m_OpCode, c.code) << Utf8(c.token);
    EXPECT_EQ(node.m_Text, c.stored) << Utf8(c.token);
  }
}

TEST(NodeOperator, ClassesOfOperators) {
  auto parsed = ParseText(u"1<2=3&&!a");
  auto* root = static_cast<CCalcTreeNode*>(parsed->root.get());
  int count = 0;
  EXPECT_EQ(root->FindCompareOperator(count), 3);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(root->HasCompareOrLogicChild(), 1);
  auto* less = static_cast<CCalcTreeNode*>(root->GetChild(1));
  auto* both = static_cast<CCalcTreeNode*>(root->GetChild(5));
  EXPECT_EQ(less->IsCompareOperator(), 1);
  EXPECT_EQ(less->IsLogicOperator(), 0);
  EXPECT_EQ(both->IsLogicOperator(), 1);

  auto sum = ParseText(u"1+2");
  auto* plain = static_cast<CCalcTreeNode*>(sum->root.get());
  EXPECT_EQ(plain->FindCompareOperator(count), -1);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(plain->HasCompareOrLogicChild(), 0);
}

TEST(NodeStructure, CollapseBracketAndCopyValue) {
  auto parsed = ParseText(u"(5)+(a+b)");
  auto* single = static_cast<CCalcTreeNode*>(parsed->root->GetChild(0));
  single->CollapseBracket();
  EXPECT_EQ(Shape(single), "6:5");
  EXPECT_EQ(single->m_Pos, 1);  // the position of the value it took
  EXPECT_EQ(single->GetParent(), parsed->root.get());

  auto* root = static_cast<CCalcTreeNode*>(parsed->root.get());
  root->CollapseBracket();  // not a bracket: nothing
  EXPECT_EQ(Shape(root), "1[6:5 8:+ 2[5:a 8:+ 5:b]]");

  CCalcTreeNode target(nullptr, kKindNumber);
  target.GetGmp();
  CCalcTreeNode source(nullptr, kKindText);
  source.SetText(u"x");
  target.CopyValueFrom(&source);
  EXPECT_EQ(target.m_Kind, kKindText);
  EXPECT_EQ(target.m_pGmp, nullptr);  // no number there, none here
}

TEST(NodeStructure, IndexErrorsAreAbsorbed) {
  auto parsed = ParseText(u"a+b");
  ICalcTreeNode* root = parsed->root.get();
  EXPECT_EQ(root->GetChild(-1), nullptr);
  EXPECT_EQ(root->GetChild(3), nullptr);
  root->DeleteChild(3);
  root->DeleteChild(-1);
  EXPECT_EQ(root->GetChildCount(), 3);
  root->DeleteChild(1);
  EXPECT_EQ(Expression(root), u"ab");
  EXPECT_EQ(static_cast<CCalcTreeNode*>(root)->AddChild(nullptr), -1);
}

TEST(NodeStructure, ResetKeepsKindAndCode) {
  CCalcTreeNode node(nullptr, kKindOperator);
  node.SetOperator(CString(u"+"));
  node.GetGmp();
  node.Reset();
  EXPECT_EQ(node.m_Kind, kKindOperator);
  EXPECT_EQ(node.m_OpCode, kOpAdd);
  EXPECT_EQ(node.m_Text, u"");
  EXPECT_EQ(node.m_pGmp, nullptr);
  EXPECT_EQ(node.m_ValueState, kValueGmp);
}

TEST(NodeQuery, FunctionCalls) {
  auto parsed = ParseText(u"f()+g(1,'a b',,x,(2+3))");
  ICalcTreeNode* empty = parsed->root->GetChild(0);
  CString name(u"old");
  CStringArray args;
  args.Add(CString(u"stale"));
  EXPECT_EQ(empty->GetFuncCall(name, args, 0), 1);
  EXPECT_EQ(name, u"f");
  EXPECT_EQ(args.GetSize(), 0);

  ICalcTreeNode* call = parsed->root->GetChild(2);
  EXPECT_EQ(call->GetFuncCall(name, args, 0), 1);
  ASSERT_EQ(args.GetSize(), 5);
  EXPECT_EQ(args[0], u"1");
  EXPECT_EQ(args[1], u"'a b'");
  EXPECT_EQ(args[2], u"");
  EXPECT_EQ(args[3], u"x");
  EXPECT_EQ(args[4], u"");  // an unreduced bracket reads as its empty text
  EXPECT_EQ(call->GetFuncCall(name, args, 1), 1);
  EXPECT_EQ(args[1], u"a b");

  CString untouched(u"keep");
  EXPECT_EQ(parsed->root->GetChild(1)->GetFuncCall(untouched, args, 0), 0);
  EXPECT_EQ(untouched, u"keep");
  EXPECT_EQ(args.GetSize(), 5);
}

std::vector<std::u16string> Items(const CStringArray& items) {
  std::vector<std::u16string> out;
  for (const CString& item : items) out.emplace_back(item.View());
  return out;
}

TEST(NodeQuery, NamesOnceEach) {
  auto parsed = ParseText(u"sum(1)+SUM(2)+max(a,A,b)+Max(f(B))");
  CStringArray names;
  names.Add(CString(u"stale"));
  parsed->root->GetFuncNames(names);
  EXPECT_EQ(Items(names), (std::vector<std::u16string>{u"sum", u"max", u"f"}));
  parsed->root->GetVarNames(names);
  EXPECT_EQ(Items(names), (std::vector<std::u16string>{u"a", u"b"}));
  EXPECT_EQ(parsed->root->CountFunctions(), 5);
}

TEST(NodeQuery, CollectByKindAppendsInPreOrder) {
  auto parsed = ParseText(u"1+f(2,(3))");
  CCalcTreeNodeArray found;
  found.Add(nullptr);  // appended to, not replaced
  EXPECT_EQ(parsed->root->CollectByKind(found, kKindNumber), 4);
  EXPECT_EQ(CString(found[1]->GetTextPtr()), u"1");
  EXPECT_EQ(CString(found[2]->GetTextPtr()), u"2");
  EXPECT_EQ(CString(found[3]->GetTextPtr()), u"3");
  CCalcTreeNodeArray roots;
  EXPECT_EQ(parsed->root->CollectByKind(roots, kKindExpression), 1);  // this node too
}

TEST(NodeQuery, Ancestors) {
  auto parsed = ParseText(u"f(1)");
  ICalcTreeNode* root = parsed->root.get();
  ICalcTreeNode* argument = root->GetChild(0)->GetChild(0);
  EXPECT_EQ(root->IsAncestorOf(root), 0);
  EXPECT_EQ(root->IsAncestorOf(argument), 1);
  EXPECT_EQ(root->IsAncestorOf(nullptr), 0);
  EXPECT_EQ(argument->IsAncestorOf(root), 0);
}

TEST(NodeQuery, NodesOfLevel) {
  auto parsed = ParseText(u"f(1,2)+g(3)");
  CCalcTreeNodeArray level;
  EXPECT_EQ(parsed->root->GetNodesOfLevel(level, 1), 3);
  EXPECT_EQ(parsed->root->GetNodesOfLevel(level, 2), 3);
  for (ICalcTreeNode* node : level) EXPECT_EQ(node->GetKind(), kKindArgument);
  EXPECT_EQ(level[2]->GetParent(), parsed->root->GetChild(2));  // left to right
  EXPECT_EQ(parsed->root->GetNodesOfLevel(level, 9), 0);
  level.Add(nullptr);
  EXPECT_EQ(parsed->root->GetNodesOfLevel(level, 0), 0);
  EXPECT_EQ(level.GetSize(), 0);
}

// Records what it is given and stops at a chosen text.
class Recorder : public ICalcTreeTraveler {
 public:
  explicit Recorder(const char16_t* stopAt = nullptr) : m_stopAt(stopAt) {}
  int Traveling(ICalcTreeNode* node) override {
    m_seen += static_cast<char>('0' + node->GetKind());
    m_seen += Utf8(node->GetTextPtr());
    m_seen += ' ';
    return m_stopAt != nullptr && CString(node->GetTextPtr()) == m_stopAt ? 1 : 0;
  }
  std::string m_seen;

 private:
  const char16_t* m_stopAt;
};

TEST(NodeWalk, TravelOrder) {
  auto parsed = ParseText(u"a+f(b,(c))");
  Recorder all;
  EXPECT_EQ(parsed->root->Travel(&all, 1), 0);
  EXPECT_EQ(all.m_seen, "1 5a 8+ 3f 4 5b 4 2 5c ");
  Recorder children;
  EXPECT_EQ(parsed->root->Travel(&children, 0), 0);
  EXPECT_EQ(children.m_seen, "5a 8+ 3f 4 5b 4 2 5c ");
  Recorder stopped(u"b");
  EXPECT_EQ(parsed->root->Travel(&stopped, 1), 1);
  EXPECT_EQ(stopped.m_seen, "1 5a 8+ 3f 4 5b ");
  EXPECT_EQ(parsed->root->Travel(nullptr, 1), 0);
}

// Deletes the siblings behind the first child it sees.
class Pruner : public ICalcTreeTraveler {
 public:
  int Traveling(ICalcTreeNode* node) override {
    ICalcTreeNode* parent = node->GetParent();
    if (parent != nullptr && parent->GetChild(0) == node)
      while (parent->GetChildCount() > 1) parent->DeleteChild(1);
    return 0;
  }
};

TEST(NodeWalk, TravelSurvivesCutSiblings) {
  auto parsed = ParseText(u"a+b+c");
  Pruner pruner;
  EXPECT_EQ(parsed->root->Travel(&pruner, 0), 0);
  EXPECT_EQ(parsed->root->GetChildCount(), 1);
}

TEST(NodeClone, EqualAndIndependent) {
  auto parsed = ParseText(u"1.5+f(x,'s')");
  auto* number = static_cast<CCalcTreeNode*>(parsed->root->GetChild(0));
  number->GetGmp();  // both forms up to date
  std::unique_ptr<ICalcTreeNode> copy(parsed->root->Clone());
  EXPECT_EQ(Shape(copy.get()), Shape(parsed->root.get()));
  auto* copied = static_cast<CCalcTreeNode*>(copy->GetChild(0));
  EXPECT_EQ(copied->m_ValueState, number->m_ValueState);
  EXPECT_EQ(copied->m_Pos, number->m_Pos);
  ASSERT_NE(copied->m_pGmp, nullptr);
  EXPECT_NE(copied->m_pGmp, number->m_pGmp);
  EXPECT_EQ(copied->GetParent(), copy.get());
  EXPECT_EQ(copy->GetChild(2)->GetChild(0)->GetParent(), copy->GetChild(2));

  copied->GetGmp()->Neg();
  copied->m_ValueState = kValueGmp;
  EXPECT_EQ(Value(copied), u"-1.5");
  EXPECT_EQ(Value(number), u"1.5");
  auto* op = static_cast<CCalcTreeNode*>(copy->GetChild(1));
  EXPECT_EQ(op->m_OpCode, kOpAdd);
}

// A chain far deeper than any parse makes, built by hand.
TEST(NodeWalk, DeepHandMadeTreeNeedsNoDeepStack) {
  constexpr int kDepth = 200000;
  auto* root = new CCalcTreeNode(nullptr, kKindExpression);
  CCalcTreeNode* tip = root;
  for (int i = 0; i < kDepth; ++i) {
    auto* child = new CCalcTreeNode(tip, kKindBracket);
    tip->AddChild(child);
    tip = child;
  }
  tip->AddChild(new CCalcTreeNode(tip, kKindVariable));
  static_cast<CCalcTreeNode*>(tip->GetChild(0))->SetText(u"x");

  CString text;
  root->GetExpression(text);
  EXPECT_EQ(text.GetLength(), 2 * kDepth + 1);
  std::unique_ptr<ICalcTreeNode> copy(root->Clone());
  CCalcTreeNodeArray brackets;
  EXPECT_EQ(copy->CollectByKind(brackets, kKindBracket), kDepth);
  Recorder last(u"x");
  EXPECT_EQ(copy->Travel(&last, 1), 1);
  CCalcTreeNodeArray bottom;
  EXPECT_EQ(root->GetNodesOfLevel(bottom, kDepth + 1), 1);
  delete root;
}

}  // namespace
}  // namespace vkt::test
