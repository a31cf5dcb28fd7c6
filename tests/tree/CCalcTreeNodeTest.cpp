// tests/tree/CCalcTreeNodeTest.cpp: the node's two lazy value forms and its
// setters, its queries and walks, Clone, and hand-made trees of any depth.
#include <gtest/gtest.h>

#include "tests/support/GmpText.h"
#include "tests/tree/TreeTestUtil.h"
#include "tree/Evaluator.h"

namespace vkt::test {
namespace {

std::u16string Items(const CStringArray& items) {
  std::u16string out;
  for (const CString& item : items) out += U(item) + u"|";
  return out;
}

TEST(NodeValue, EachStaleFormIsMadeOnce) {
  CCalcTreeNode node(nullptr, kKindNumber);
  EXPECT_EQ(Expression(&node), u"0");  // a new number node, no CGmp made for it
  EXPECT_EQ(node.m_pGmp, nullptr);
  node.SetNumberText(u"2.5");
  CGmp* number = node.GetGmp();
  EXPECT_EQ(Text(*number), u"2.5");
  EXPECT_EQ(node.m_ValueState, kValueGmp | kValueText);
  CGmp one(1);
  number->add(&one);
  node.m_ValueState = kValueGmp;  // as the evaluator marks a number changed in place
  EXPECT_EQ(Expression(&node), u"3.5");
  number->add(&one);  // both forms fresh now: nothing is converted again
  EXPECT_EQ(Expression(&node), u"3.5");
  node.SetGmp(new CGmp(u"-4.5"), 0);
  EXPECT_EQ(node.m_ValueState, kValueGmp);
  node.SetGmp(node.m_pGmp, 1);  // its own number again: kept, not freed
  EXPECT_EQ(U(node.m_Text), u"-4.5");
  EXPECT_EQ(node.m_ValueState, kValueGmp | kValueText);
  node.SetGmp(nullptr, 0);  // the number 0: text "0", an empty CGmp
  EXPECT_EQ(U(node.m_Text) + Text(*node.m_pGmp), u"0");
  node.SetText(u"\u221e");  // the division by zero's text is read strictly: no digits
  EXPECT_TRUE(node.GetGmp()->IsNull());
}

TEST(NodeValue, SettersAndReadings) {
  // A new node of a kind, SetNumberText or SetText, a reading: 0 GetValue(out, arg, arg),
  // 1 GetValueRounded(out, arg), 2 GetDispValue(out, 0, 0, arg); what it reads, its shape afterwards.
  constexpr struct { unsigned char kind; bool number; const char16_t* text; int reading, arg;
                     const char16_t* value; const char* shape; } kCases[] = {
      {kKindText, true, u" -0.00 ", 0, 0, u"0", "6:0"},
      {kKindNumber, true, u"", 0, 0, u"", "7"},
      {kKindNumber, true, u"1,234", 0, 0, u"1,234", "7:1,234"},  // no thousands separators here
      {kKindText, false, u"'it\\'s'", 0, 1, u"\"it\\'s\"", "7:it's"},  // escaped, then in double quotes
      {kKindVariable, false, u"a\\r\\nb", 0, 1, u"a\r\nb", "5:a\r\nb"},  // only text nodes are quoted
      {kKindNumber, false, u"", 0, 0, u"0", "6:0"},  // an empty number reads "0", and keeps it
      {kKindNumber, false, u"2.567", 1, -1, u"2.567", "6:2.567"},
      {kKindNumber, false, u"2.567", 1, 2, u"2.57", "6:2.567"},
      {kKindText, false, u"2.567", 1, 0, u"2.567", "7:2.567"},  // a text is never rounded
      {kKindNumber, false, u"", 2, 2, u"", "6"},  // no default "0" without bit 6
      {kKindNumber, false, u"1234567.25", 2, 128 | 1, u"1,234,567.3", "6:1,234,567.3"},
  };
  for (const auto& c : kCases) {
    CCalcTreeNode node(nullptr, c.kind);
    node.m_ValueState = kValueGmp;
    c.number ? node.SetNumberText(c.text) : node.SetText(c.text);
    EXPECT_EQ(node.m_ValueState, kValueText) << Row(c.text);
    CString out;
    if (c.reading == 0) node.GetValue(out, c.arg, c.arg);
    if (c.reading == 1) node.GetValueRounded(out, c.arg);
    if (c.reading == 2) node.GetDispValue(out, 0, 0, static_cast<unsigned char>(c.arg));
    EXPECT_EQ(U(out), c.value) << Row(c.text) << " " << c.reading << " " << c.arg;
    EXPECT_EQ(Shape(&node), c.shape) << Row(c.text) << " " << c.reading << " " << c.arg;
  }
  CCalcTreeNode self(nullptr, kKindText);
  self.m_Text = u"''x''";
  self.SetText(self.GetTextPtr());  // its own text, both pairs taken off
  EXPECT_EQ(U(self.m_Text), u"x");
}

TEST(NodeStructure, CollapseCopyAndBadIndices) {
  auto parsed = ParseText(u"(5)+(a+b)");
  auto* root = CCalcTreeNode::From(parsed->root.get());
  auto* single = CCalcTreeNode::From(root->GetChild(0));
  single->CollapseBracket();
  root->CollapseBracket();  // not a bracket: nothing
  EXPECT_EQ(root->HasCompareOrLogicChild(), 0);
  EXPECT_EQ(CCalcTreeNode::From(ParseText(u"a||b")->root.get())->HasCompareOrLogicChild(), 1);
  EXPECT_EQ(Shape(root), "1[6:5 8:+ 2[5:a 8:+ 5:b]]");
  EXPECT_EQ(single->m_Pos, 1);  // the position of the value it took
  EXPECT_EQ(root->GetChild(-1), nullptr);
  root->DeleteChild(3);
  root->DeleteChild(-1);
  root->DeleteChild(1);
  EXPECT_EQ(Expression(root), u"5(a+b)");
  EXPECT_EQ(root->AddChild(nullptr), -1);
  single->GetGmp();
  CCalcTreeNode source(nullptr, kKindText);
  source.SetText(u"x");
  single->CopyValueFrom(&source);
  EXPECT_EQ(Expression(single), u"'x'");
  EXPECT_EQ(single->m_pGmp, nullptr);  // no number there, none here
}

TEST(NodeQuery, CallsNamesKindsAncestorsAndLevels) {
  auto parsed = ParseText(u"sum()+SUM(2)+max(a,'a b',,A,(1+2))+Max(f(B,(3)))");
  ICalcTreeNode* root = parsed->root.get();
  CString name(u"old");
  CStringArray items;
  items.Add(CString(u"stale"));
  EXPECT_EQ(root->GetChild(0)->GetFuncCall(name, items, 0), 1);
  EXPECT_EQ(U(name) + Items(items), u"sum");
  EXPECT_EQ(root->GetChild(4)->GetFuncCall(name, items, 0), 1);
  EXPECT_EQ(Items(items), u"a|'a b'||A||");  // an unreduced bracket reads as its empty text
  EXPECT_EQ(root->GetChild(4)->GetFuncCall(name, items, 1), 1);
  EXPECT_EQ(root->GetChild(1)->GetFuncCall(name, items, 0), 0);  // no call: nothing changes
  EXPECT_EQ(U(name) + Items(items), u"maxa|a b||A||");
  root->GetFuncNames(items);
  EXPECT_EQ(Items(items), u"sum|max|f|");
  root->GetVarNames(items);
  EXPECT_EQ(Items(items), u"a|B|");
  EXPECT_EQ(root->CountFunctions(), 5);
  CCalcTreeNodeArray found;
  found.Add(nullptr);  // appended to, not replaced
  EXPECT_EQ(root->CollectByKind(found, kKindNumber), 5);
  EXPECT_EQ(U(found[1]->GetTextPtr()) + U(found[4]->GetTextPtr()), u"23");
  EXPECT_EQ(root->CollectByKind(found, kKindExpression), 6);  // this node too
  ICalcTreeNode* argument = root->GetChild(2)->GetChild(0);
  EXPECT_EQ(root->IsAncestorOf(argument), 1);
  EXPECT_EQ(root->IsAncestorOf(root) + argument->IsAncestorOf(root) + root->IsAncestorOf(nullptr), 0);
  CCalcTreeNodeArray level;
  EXPECT_EQ(root->GetNodesOfLevel(level, 1), 7);
  EXPECT_EQ(root->GetNodesOfLevel(level, 2), 8);
  EXPECT_EQ(level[7]->GetParent(), root->GetChild(6));  // left to right
  level.Add(nullptr);
  EXPECT_EQ(root->GetNodesOfLevel(level, 0), 0);
  EXPECT_EQ(level.GetSize(), 0);
}

// Records what it is given, stops at a chosen text, and may cut the
// siblings behind the first child it sees.
struct Recorder : ICalcTreeTraveler {
  explicit Recorder(const char16_t* stop = u"", bool cut = false) : stopAt(stop), prune(cut) {}
  int Traveling(ICalcTreeNode* node) override {
    ICalcTreeNode* parent = node->GetParent();
    while (prune && parent != nullptr && parent->GetChild(0) == node && parent->GetChildCount() > 1)
      parent->DeleteChild(1);
    seen += std::to_string(node->GetKind()) + Row(node->GetTextPtr()) + " ";
    return *stopAt != 0 && U(node->GetTextPtr()) == stopAt ? 1 : 0;
  }
  const char16_t* stopAt;
  bool prune;
  std::string seen;
};

TEST(NodeWalk, TravelOrderStopsAndCuts) {
  auto parsed = ParseText(u"a+f(b,(c))");
  struct { Recorder recorder; int self, result; const char* seen; } cases[] = {
      {Recorder(), 1, 0, "1 5a 8+ 3f 4 5b 4 2 5c "},
      {Recorder(), 0, 0, "5a 8+ 3f 4 5b 4 2 5c "},
      {Recorder(u"b"), 1, 1, "1 5a 8+ 3f 4 5b "},
      {Recorder(u"", true), 0, 0, "5a "},
  };
  for (auto& c : cases) {
    EXPECT_EQ(parsed->root->Travel(&c.recorder, c.self), c.result) << c.seen;
    EXPECT_EQ(c.recorder.seen, c.seen);
  }
  EXPECT_EQ(parsed->root->Travel(nullptr, 1), 0);
}

TEST(NodeClone, EqualAndIndependent) {
  auto parsed = ParseText(u"1.5+f(x,'s',(y))&&!z");
  auto* number = CCalcTreeNode::From(parsed->root->GetChild(0));
  number->GetGmp();  // both forms up to date
  std::unique_ptr<ICalcTreeNode> copy(parsed->root->Clone());
  EXPECT_EQ(Shape(copy.get()), "1[6:1.5 8:+ 3:f[4[5:x] 4[7:s] 4[2[5:y]]] 8:&& 8:! 5:z]");
  auto* copied = CCalcTreeNode::From(copy->GetChild(0));
  EXPECT_EQ(copied->m_ValueState, kValueGmp | kValueText);
  EXPECT_NE(copied->m_pGmp, number->m_pGmp);
  EXPECT_EQ(CCalcTreeNode::From(copy->GetChild(1))->m_OpCode, 43);  // the code of "+"
  EXPECT_EQ(CCalcTreeNode::From(copy->GetChild(2))->m_Pos, 4);
  EXPECT_EQ(copy->GetChild(2)->GetChild(0)->GetParent(), copy->GetChild(2));
  copied->GetGmp()->Neg();
  copied->m_ValueState = kValueGmp;
  copy->GetChild(2)->DeleteAllChildren();
  EXPECT_EQ(Expression(copy.get()), u"-1.5+f()&&!z");
  EXPECT_EQ(Expression(parsed->root.get()), u"1.5+f(x,'s',(y))&&!z");
}

// A chain far deeper than any parse makes: the walks and the step search
// need no deep stack.
TEST(NodeWalk, DeepHandMadeTree) {
  constexpr int kDepth = 200000;
  auto root = std::make_unique<CCalcTreeNode>(nullptr, kKindExpression);
  CCalcTreeNode* tip = root.get();
  for (int i = 0; i < kDepth; ++i) {
    tip = CCalcTreeNode::From(tip->GetChild(tip->AddChild(new CCalcTreeNode(tip, kKindBracket))));
  }
  tip->AddChild(new CCalcTreeNode(tip, kKindVariable));
  tip->GetChild(0)->SetText(u"x");
  EXPECT_EQ(Expression(root.get()).size(), 2u * kDepth + 1);
  std::unique_ptr<ICalcTreeNode> copy(root->Clone());
  CCalcTreeNodeArray found;
  EXPECT_EQ(copy->CollectByKind(found, kKindBracket), kDepth);
  Recorder last(u"x");
  EXPECT_EQ(copy->Travel(&last, 1), 1);
  EXPECT_EQ(root->GetNodesOfLevel(found, kDepth + 1), 1);
  unsigned int step = 0;
  EXPECT_EQ(FindNextStep(root.get(), &step), tip->GetChild(0));
  EXPECT_EQ(step, kStepVariable);
  CCalcTreeNode::From(tip->GetChild(0))->ApplyValue(u"2");
  EXPECT_EQ(FindNextStep(root.get(), &step), tip);  // the innermost bracket comes first
  EXPECT_EQ(step, kStepBracket);
}

}  // namespace
}  // namespace vkt::test
