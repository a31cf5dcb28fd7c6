// tree/CCalcTreeNode.cpp: the node itself: ownership, values in their two
// lazy forms, and the queries and walks hosts use. Writing the tree as text
// is tree/TreeText.cpp; parsing is tree/Parser.cpp.
//
// Every walk over a subtree is iterative, so a tree of any depth is
// destroyed, copied and walked without deep recursion.
#include "tree/CCalcTreeNode.h"

#include <memory>
#include <typeinfo>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "CGmp.h"
#include "CUtilityCalc.h"
#include "platform/WideRuntime.h"

namespace vkt {
namespace {

// Destroys node and everything below it without recursion and without
// allocating, since it runs in destructors, where a failed allocation would
// end the process. A node whose children are still going waits in a chain
// threaded through its parent link, which nobody reads any more; a node is
// deleted only once it has no children, so its destructor finds none.
void DestroyTree(ICalcTreeNode* node) {
  CCalcTreeNode* waiting = nullptr;
  for (;;) {
    if (node != nullptr) {
      CCalcTreeNode* impl = CCalcTreeNode::From(node);
      if (impl != nullptr && !impl->m_Children.IsEmpty()) {
        const int last = impl->m_Children.GetSize() - 1;
        ICalcTreeNode* child = impl->m_Children[last];
        impl->m_Children.RemoveAt(last);
        impl->m_pParent = waiting;
        waiting = impl;
        node = child;
        continue;
      }
      delete node;
    }
    if (waiting == nullptr) return;
    node = waiting;
    waiting = static_cast<CCalcTreeNode*>(waiting->m_pParent);
  }
}

// Visits root and every node below it in pre-order (parent first, children
// left to right), through the interface alone.
template <class Visit>
void WalkPreOrder(ICalcTreeNode* root, Visit visit) {
  struct Frame {
    ICalcTreeNode* node;
    int next;
  };
  visit(root);
  std::vector<Frame> stack{{root, 0}};
  while (!stack.empty()) {
    Frame& top = stack.back();
    if (top.next >= top.node->GetChildCount()) {
      stack.pop_back();
      continue;
    }
    ICalcTreeNode* child = top.node->GetChild(top.next++);
    if (child == nullptr) continue;
    visit(child);
    stack.push_back({child, 0});
  }
}

// Names compare as _wcsicmp does: unit by unit, folded to lower case.
std::u16string FoldedKey(const char16_t* name) {
  std::u16string key;
  for (const char16_t* p = name; *p != 0; ++p) key.push_back(towlower(*p));
  return key;
}

// Appends each name once, the first spelling winning; `seen` holds the
// folded names already in `out`.
void AddNameOnce(CStringArray& out, std::unordered_set<std::u16string>& seen, const CString& name) {
  if (seen.insert(FoldedKey(name)).second) out.Add(name);
}

}  // namespace

CCalcTreeNode::CCalcTreeNode(ICalcTreeNode* parent) : CCalcTreeNode(parent, kKindNothing) {}

CCalcTreeNode::CCalcTreeNode(ICalcTreeNode* parent, unsigned char kind)
    : m_Kind(kind),
      m_OpCode(0),
      m_Pos(0),
      m_pParent(parent),
      m_ValueState(kValueGmp),
      m_pGmp(nullptr) {}

CCalcTreeNode::~CCalcTreeNode() {
  delete m_pGmp;
  if (!m_Children.IsEmpty()) DeleteAllChildren();
}

// The class is final, so the exact type decides; cheaper than a dynamic_cast
// on every node of a destruction or a check.
CCalcTreeNode* CCalcTreeNode::From(ICalcTreeNode* node) {
  if (node == nullptr || typeid(*node) != typeid(CCalcTreeNode)) return nullptr;
  return static_cast<CCalcTreeNode*>(node);
}

// ---- Structure ------------------------------------------------------------

ICalcTreeNode* CCalcTreeNode::Clone() {
  auto copyOf = [](const CCalcTreeNode& source, ICalcTreeNode* parent) {
    auto copy = std::make_unique<CCalcTreeNode>(parent, source.m_Kind);
    copy->m_OpCode = source.m_OpCode;
    copy->m_Pos = source.m_Pos;
    copy->m_ValueState = source.m_ValueState;
    copy->m_Text = source.m_Text;
    if (source.m_pGmp != nullptr) copy->m_pGmp = new CGmp(*source.m_pGmp);
    return copy;
  };

  std::unique_ptr<CCalcTreeNode> root = copyOf(*this, nullptr);
  std::vector<std::pair<CCalcTreeNode*, CCalcTreeNode*>> work{{this, root.get()}};
  while (!work.empty()) {
    auto [source, target] = work.back();
    work.pop_back();
    // Sized once: the slots not yet filled are null, which destruction skips.
    target->m_Children.SetSize(source->m_Children.GetSize());
    int filled = 0;
    for (ICalcTreeNode* child : source->m_Children) {
      if (child == nullptr) continue;
      CCalcTreeNode* impl = From(child);
      if (impl == nullptr) {  // another implementation copies itself
        target->m_Children.SetAt(filled++, child->Clone());
        continue;
      }
      CCalcTreeNode* copy = copyOf(*impl, target).release();
      target->m_Children.SetAt(filled++, copy);
      work.emplace_back(impl, copy);
    }
    target->m_Children.SetSize(filled);
  }
  return root.release();
}

int CCalcTreeNode::GetChildCount() const { return m_Children.GetSize(); }

void CCalcTreeNode::DeleteChild(int index) {
  if (index < 0 || index >= m_Children.GetSize()) return;
  ICalcTreeNode* child = m_Children[index];
  m_Children.RemoveAt(index);
  DestroyTree(child);
}

void CCalcTreeNode::DeleteAllChildren() {
  CCalcTreeNodeArray children(std::move(m_Children));  // takes the storage and leaves ours empty
  for (ICalcTreeNode* child : children) DestroyTree(child);
}

ICalcTreeNode* CCalcTreeNode::GetChild(int index) const {
  if (index < 0 || index >= m_Children.GetSize()) return nullptr;
  return m_Children[index];
}

ICalcTreeNode* CCalcTreeNode::GetParent() const { return m_pParent; }

int CCalcTreeNode::AddChild(ICalcTreeNode* child) {
  if (child == nullptr) return -1;
  // Chosen: past 1,024 children the array doubles its capacity instead of
  // growing by the array's fixed step of 1,024, so that a run of a million
  // operands costs a few dozen copies rather than a thousand. A smaller size
  // keeps the capacity.
  const int size = m_Children.GetSize();
  if (size >= 1024 && size == m_Children.GetAllocSize() && size <= (1 << 29)) {
    m_Children.SetSize(size * 2);
    m_Children.SetSize(size);
  }
  return m_Children.Add(child);
}

void CCalcTreeNode::Reset() {
  DeleteAllChildren();
  m_Text.Empty();
  delete m_pGmp;
  m_pGmp = nullptr;
  m_ValueState = kValueGmp;
}

// ---- Values -----------------------------------------------------------------

void CCalcTreeNode::MakeStaleText() {
  if (m_ValueState & kValueText) return;
  if (m_pGmp != nullptr)
    m_pGmp->GetString(m_Text, -1, 0);
  else
    m_Text.Empty();
  m_ValueState |= kValueText;
}

void CCalcTreeNode::GetValue(CString& out, int attachQuotes, int formatQuotes) {
  // Chosen: any number node with an empty text reads "0", not only one whose
  // text was made just now: GetValue has that general default, unlike
  // GetDispValue.
  if (m_Kind == kKindNumber) {
    MakeStaleText();
    if (m_Text.IsEmpty()) m_Text = u"0";
  }
  out = m_Text;
  if (m_Kind != kKindText) return;
  if (formatQuotes) CUtilityCalc::Format_Quates(out);
  if (attachQuotes) CUtilityCalc::Attach_Quotes(out, 0);
}

void CCalcTreeNode::GetDispValue(CString& out, int attachQuotes, int formatQuotes,
                                 unsigned char format) {
  if (m_Kind == kKindNumber) {
    MakeStaleText();
    if (m_Text.IsEmpty()) {
      if (format & 64) m_Text = u"0";
    } else if (format & 128) {
      CUtilityCalc::ConvertToDispFormat(m_Text, format, 1, 0);
    }
  }
  out = m_Text;
  if (m_Kind != kKindText) return;
  if (formatQuotes) CUtilityCalc::Format_Quates(out);
  if (attachQuotes) CUtilityCalc::Attach_Quotes(out, 0);
}

void CCalcTreeNode::GetValueRounded(CString& out, int digits) {
  GetValue(out, 0, 0);
  if (m_Kind == kKindNumber && digits != -1) CGmp::Round(out, digits);
}

const char16_t* CCalcTreeNode::GetTextPtr() const { return m_Text.GetString(); }

void CCalcTreeNode::SetText(const char16_t* text) {
  CString value(text);  // text may point into m_Text
  CUtilityCalc::Dettach_Quotes(value, 1);
  if (value.Find(u"\\r\\n") >= 0) value.Replace(u"\\r\\n", u"\r\n");
  m_Text = std::move(value);
  m_ValueState = kValueText;
}

unsigned char CCalcTreeNode::GetKind() const { return m_Kind; }

void CCalcTreeNode::SetKind(unsigned char kind) { m_Kind = kind; }

CGmp* CCalcTreeNode::GetGmp() {
  if (m_pGmp == nullptr) m_pGmp = new CGmp();
  if (!(m_ValueState & kValueGmp)) {
    m_pGmp->SetString(m_Text, CGmp::CheckStrict_Full);
    m_ValueState |= kValueGmp;
  }
  return m_pGmp;
}

void CCalcTreeNode::SetGmp(CGmp* gmp, int makeText) {
  if (gmp == nullptr) {
    m_Text = u"0";
    if (m_pGmp != nullptr)
      m_pGmp->Empty();
    else
      m_pGmp = new CGmp();
    m_ValueState = kValueGmp | kValueText;
    return;
  }
  if (gmp != m_pGmp) {
    delete m_pGmp;
    m_pGmp = gmp;
  }
  m_ValueState = kValueGmp;
  if (makeText) {
    m_pGmp->GetString(m_Text, -1, 0);
    m_ValueState = kValueGmp | kValueText;
  }
}

void CCalcTreeNode::SetNumberText(const char16_t* text) {
  m_Text = CString(text);
  m_ValueState = kValueText;
  if (!m_Text.IsEmpty() && CUtilityCalc::IsPureNumber(m_Text, 0, CGmp::CheckStrict_None, 0))
    m_Kind = CUtilityCalc::ResetPureNumberString(m_Text) ? kKindNumber : kKindText;
  else
    m_Kind = kKindText;
}

int CCalcTreeNode::ApplyValue(const char16_t* text) {
  DeleteAllChildren();
  if (text == nullptr || text[0] == 0) {
    m_Kind = kKindText;
    m_Text.Empty();
    m_ValueState = kValueText;
    return 0;
  }
  if (CUtilityCalc::DetectStringQuotes(text) != 0) {
    m_Kind = kKindText;
    m_Text = CString(text);
    CUtilityCalc::Dettach_Quotes(m_Text, 1);
    m_ValueState = kValueText;
    return 0;
  }
  if (CUtilityCalc::IsPureNumber(text, 1, CGmp::CheckStrict_None, 0)) {
    // A host's "1,234" is the number 1234 (kind 6): the commas have passed
    // the grouping test and are dropped here, since SetNumberText refuses
    // them and the tree's text must parse again when the calculator splices
    // an expression in.
    CString number(text);
    number.Remove(u',');
    SetNumberText(number);
    return 0;
  }
  m_Kind = kKindVariable;
  m_Text = CString(text);
  m_ValueState = kValueText;
  return 1;
}

void CCalcTreeNode::CopyValueFrom(CCalcTreeNode* source) {
  if (source == nullptr || source == this) return;
  m_Kind = source->m_Kind;
  m_OpCode = source->m_OpCode;
  m_Pos = source->m_Pos;
  m_ValueState = source->m_ValueState;
  m_Text = source->m_Text;
  if (source->m_pGmp == nullptr) {
    delete m_pGmp;
    m_pGmp = nullptr;
  } else if (m_pGmp != nullptr) {
    *m_pGmp = *source->m_pGmp;
  } else {
    m_pGmp = new CGmp(*source->m_pGmp);
  }
}

void CCalcTreeNode::CollapseBracket() {
  if (m_Kind != kKindBracket || m_Children.IsEmpty()) return;
  CCalcTreeNode* first = From(m_Children[0]);
  if (first == nullptr) return;
  CopyValueFrom(first);
  DeleteAllChildren();
}

// ---- Operators ------------------------------------------------------------

int CCalcTreeNode::SetOperator(const CString& token) {
  m_Text = token;
  m_ValueState = kValueText;
  const OperatorInfo* op = FindOperator(token);
  if (op == nullptr) return 0;
  m_OpCode = op->code;
  m_Text = op->stored;
  return 1;
}

int CCalcTreeNode::IsCompareOperator() {
  return m_Kind == kKindOperator && IsComparisonCode(m_OpCode) ? 1 : 0;
}

int CCalcTreeNode::IsLogicOperator() {
  return m_Kind == kKindOperator && IsLogicalCode(m_OpCode) ? 1 : 0;
}

int CCalcTreeNode::HasCompareOrLogicChild() {
  for (ICalcTreeNode* child : m_Children) {
    CCalcTreeNode* impl = From(child);
    if (impl != nullptr && (impl->IsCompareOperator() || impl->IsLogicOperator())) return 1;
  }
  return 0;
}

int CCalcTreeNode::FindCompareOperator(int& count) {
  count = 0;
  int last = -1;
  for (int i = 0; i < m_Children.GetSize(); ++i) {
    CCalcTreeNode* impl = From(m_Children[i]);
    if (impl != nullptr && impl->IsCompareOperator()) {
      ++count;
      last = i;
    }
  }
  return last;
}

// ---- Queries and walks ----------------------------------------------------

int CCalcTreeNode::CollectByKind(CCalcTreeNodeArray& out, unsigned char kind) {
  WalkPreOrder(this, [&](ICalcTreeNode* node) {
    if (node->GetKind() == kind) out.Add(node);
  });
  return out.GetSize();
}

int CCalcTreeNode::CountFunctions() {
  int count = 0;
  WalkPreOrder(this, [&](ICalcTreeNode* node) { count += node->GetKind() == kKindFunction; });
  return count;
}

void CCalcTreeNode::GetFuncNames(CStringArray& out) {
  out.RemoveAll();
  std::unordered_set<std::u16string> seen;
  WalkPreOrder(this, [&](ICalcTreeNode* node) {
    if (node->GetKind() == kKindFunction) AddNameOnce(out, seen, CString(node->GetTextPtr()));
  });
}

void CCalcTreeNode::GetVarNames(CStringArray& out) {
  out.RemoveAll();
  std::unordered_set<std::u16string> seen;
  WalkPreOrder(this, [&](ICalcTreeNode* node) {
    if (node->GetKind() != kKindVariable) return;
    CString name;
    node->GetValue(name, 0, 0);
    AddNameOnce(out, seen, name);
  });
}

int CCalcTreeNode::GetFuncCall(CString& name, CStringArray& args, int rawStrings) {
  if (m_Kind != kKindFunction) return 0;
  name = m_Text;
  args.RemoveAll();
  const int count = m_Children.GetSize();
  if (count == 1 && m_Children[0] != nullptr && m_Children[0]->GetKind() == kKindArgument &&
      m_Children[0]->GetChildCount() == 0)
    return 1;  // f(): one empty argument node, no arguments
  // Chosen: "quotes attached" escapes as well (GetValue(text, 1, 1)), so
  // that the text comes back whole through Dettach_Quotes(text, 1).
  const int quotes = rawStrings ? 0 : 1;
  // Sized once: adding one by one would copy the array at every step of
  // its growth, which a call with a million arguments feels.
  args.SetSize(count);
  for (int i = 0; i < count; ++i) {
    ICalcTreeNode* argument = m_Children[i];
    if (argument == nullptr) continue;
    ICalcTreeNode* first = argument->GetChild(0);
    (first != nullptr ? first : argument)->GetValue(args.ElementAt(i), quotes, quotes);
  }
  return 1;
}

int CCalcTreeNode::Travel(ICalcTreeTraveler* traveler, int includeSelf) {
  if (traveler == nullptr) return 0;
  if (includeSelf && traveler->Traveling(this)) return 1;
  // The child count of each node is taken when its loop begins, as a
  // recursive walk would: a traveller that cuts siblings makes GetChild
  // answer null, which is skipped.
  struct Frame {
    ICalcTreeNode* node;
    int next;
    int count;
  };
  std::vector<Frame> stack{{this, 0, GetChildCount()}};
  while (!stack.empty()) {
    Frame& top = stack.back();
    if (top.next >= top.count) {
      stack.pop_back();
      continue;
    }
    ICalcTreeNode* child = top.node->GetChild(top.next++);
    if (child == nullptr) continue;
    if (traveler->Traveling(child)) return 1;
    stack.push_back({child, 0, child->GetChildCount()});
  }
  return 0;
}

int CCalcTreeNode::IsAncestorOf(ICalcTreeNode* other) {
  if (other == nullptr || other == this) return 0;
  for (ICalcTreeNode* node = other->GetParent(); node != nullptr; node = node->GetParent())
    if (node == this) return 1;
  return 0;
}

int CCalcTreeNode::GetNodesOfLevel(CCalcTreeNodeArray& out, int level) {
  out.RemoveAll();
  if (level < 1) return 0;
  std::vector<ICalcTreeNode*> current{this};
  std::vector<ICalcTreeNode*> next;
  for (int depth = 0; depth < level && !current.empty(); ++depth) {
    next.clear();
    for (ICalcTreeNode* node : current) {
      const int count = node->GetChildCount();
      for (int i = 0; i < count; ++i)
        if (ICalcTreeNode* child = node->GetChild(i)) next.push_back(child);
    }
    current.swap(next);
  }
  for (ICalcTreeNode* node : current) out.Add(node);
  return out.GetSize();
}

}  // namespace vkt
