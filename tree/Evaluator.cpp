// tree/Evaluator.cpp: the search for the next step of a calculation and the
// steps that need nothing from outside: arithmetic on CGmp, text joining and
// the coercion between texts and numbers, the one comparison of a run and
// the logical pieces around it. Variables and function calls are left to
// the calculator, which runs the loop and puts their values in.
#include "tree/Evaluator.h"

#include <deque>
#include <memory>
#include <vector>

#include "CErrorCollector.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "platform/Config.h"
#include "platform/WideRuntime.h"
#include "tree/CCalcTreeNode.h"
#include "tree/Parser.h"

namespace vkt {
namespace {

constexpr const char16_t* kInfinity = u"\u221E";  // "∞", a non-zero number divided by zero

CCalcTreeNode* Impl(ICalcTreeNode* node) {
  return node != nullptr ? CCalcTreeNode::From(node) : nullptr;
}

bool IsValue(const CCalcTreeNode* node) {
  return node->m_Kind == kKindNumber || node->m_Kind == kKindText;
}

bool IsIfCall(const CCalcTreeNode* node) {
  return node->m_Kind == kKindFunction && node->m_Text.CompareNoCase(u"IF") == 0;
}

// ---- The search -------------------------------------------------------------

// The search keeps its own stack instead of recursing, so a tree of any
// depth is searched in fixed native stack. Typical formulas stay within the
// inline frames and cost no allocation.
class FrameStack {
 public:
  struct Frame {
    CCalcTreeNode* node;
    int next;  // the child to visit next
  };

  void Push(CCalcTreeNode* node) {
    if (m_size < kInline)
      m_inline[m_size] = {node, 0};
    else
      m_more.push_back({node, 0});
    ++m_size;
  }
  Frame& Top() { return m_size <= kInline ? m_inline[m_size - 1] : m_more.back(); }
  void Pop() {
    if (m_size > kInline) m_more.pop_back();
    --m_size;
  }
  bool Empty() const { return m_size == 0; }

 private:
  static constexpr int kInline = 32;
  Frame m_inline[kInline] = {};
  std::vector<Frame> m_more;  // frames beyond the inline ones
  int m_size = 0;
};

// The condition of an IF call when it is a finished value: the first child
// itself, or the one value inside the first argument. Null while it still
// has to be computed.
CCalcTreeNode* IfCondition(CCalcTreeNode* call) {
  CCalcTreeNode* first = Impl(call->GetChild(0));
  if (first == nullptr) return nullptr;
  if (IsValue(first) && first->m_Children.IsEmpty()) return first;
  if (first->m_Kind != kKindArgument || first->GetChildCount() != 1) return nullptr;
  CCalcTreeNode* inside = Impl(first->GetChild(0));
  if (inside != nullptr && IsValue(inside) && inside->m_Children.IsEmpty()) return inside;
  return nullptr;
}

// The search for a conditional, before the children of `current` are
// searched: moves to the deepest IF on the chain of first children and,
// once its condition is a value, empties the branch that won't be taken
// and makes it the number 0, so that nothing in it is asked for. Gives the
// node whose children the search goes on with.
CCalcTreeNode* DropUntakenBranches(CCalcTreeNode* current) {
  for (;;) {
    CCalcTreeNode* found = IsIfCall(current) ? current : nullptr;
    if (!current->m_Children.IsEmpty()) {
      if (CCalcTreeNode* deeper = FindIf(current->m_Children[0])) found = deeper;
    }
    if (found == nullptr) return current;
    if (found != current) {
      current = found;
    } else {
      if (current->GetChildCount() < 3) return current;
      CCalcTreeNode* condition = IfCondition(current);
      if (condition == nullptr) return current;
      // Read as the body of if reads it: a text that holds no number is false.
      CString text;
      condition->GetValue(text, 0, 0);
      CCalcTreeNode* branch = Impl(current->GetChild(CGmp::IsZero(text.GetString()) ? 1 : 2));
      if (branch == nullptr || branch->m_Children.IsEmpty()) return current;  // dropped before, or a value
      branch->DeleteAllChildren();
      branch->SetGmp(nullptr, 0);
      branch->m_Kind = kKindNumber;
    }
    if (current->m_Children.IsEmpty()) return current;
  }
}

// ---- Operators --------------------------------------------------------------

bool IsNumericOperator(unsigned char code) {
  const OperatorInfo* op = OperatorOfCode(code);
  return op != nullptr && op->numbersOnly;
}

unsigned char CodeOf(CCalcTreeNode* node) {
  return node != nullptr && node->IsOperator() ? node->m_OpCode : 0;
}

// Two numbers under "+", "-", "*" or "/"; the result goes into left.
void Arithmetic(CCalcTreeNode* left, unsigned char code, CCalcTreeNode* right, unsigned char& kind) {
  CGmp* a = left->GetGmp();
  CGmp* b = right->GetGmp();
  switch (code) {
    case kOpAdd: a->add(b); break;
    case kOpSub: a->minu(b); break;
    case kOpMul: a->mul(b); break;
    default:
      if (!CGmp::IsZero(b)) {
        a->div(b);
        break;
      }
      if (CGmp::IsZero(a)) {
        left->SetGmp(new CGmp(0), 1);  // 0/0 is 0
        return;
      }
      // "∞" stays a number node: a later step reads it as an empty number
      // (1/0+1 is 1), beside a text it stays "∞".
      left->SetText(kInfinity);
      kind = kResultInfinity;
      return;
  }
  left->m_ValueState = kValueGmp;
}

// Two texts under "+". The texts are joined as they stand: SetText would
// take off quotes that the join happens to put at both ends.
void JoinTexts(CCalcTreeNode* left, CCalcTreeNode* right) {
  if (left->m_Text == kInfinity || right->m_Text == kInfinity)
    left->m_Text = kInfinity;
  else
    left->m_Text += right->m_Text;
  left->m_ValueState = kValueText;
}

bool CompareHolds(unsigned char code, int d) {
  switch (code) {
    case kOpEqual: return d == 0;
    case kOpGreater: return d > 0;
    case kOpLess: return d < 0;
    case kOpGreaterEqual: return d >= 0;
    case kOpLessEqual: return d <= 0;
    default: return d != 0;
  }
}

// CompareNumbers and CompareTexts: numbers by value, texts by the process's
// locale (case-sensitive in the default one).
bool Compare(CCalcTreeNode* left, CCalcTreeNode* op, CCalcTreeNode* right) {
  int d = 0;
  if (left->m_Kind == kKindNumber)
    d = left->GetGmp()->Compare(right->GetGmp(), 0);
  else
    d = wcscoll(left->m_Text.GetString(), right->m_Text.GetString());
  return CompareHolds(CodeOf(op), d);
}

void DeleteAt(CCalcTreeNodeArray& children, int index, int count) {
  std::vector<ICalcTreeNode*> dead(children.begin() + index, children.begin() + index + count);
  children.RemoveAt(index, count);
  for (ICalcTreeNode* node : dead) delete node;
}

// An empty text that stands in for a missing side of a comparison.
void InsertEmptyText(CCalcTreeNode* node, int index) {
  ICalcTreeNode* parent = node->m_Children[0]->GetParent();
  auto empty = std::make_unique<CCalcTreeNode>(parent, kKindText);
  empty->m_ValueState = kValueText;
  node->m_Children.InsertAt(index, empty.get());
  empty.release();  // the node owns it now
}

// The failure of a run: its number and the node's text as it stands now.
// Chosen: the number is stored as well, since hosts go by nError; the
// position stays as it was, for the node no longer matches the source.
void ReportRunFailure(CCalcTreeNode* node, int number, CErrorCollector* errors) {
  if (errors == nullptr) return;
  CString text;
  node->GetExpression(text);
  errors->nError = number;
  errors->SetErrorText(number, text.GetString());
}

// ---- The steps of a run ------------------------------------------------------

// Unary minus: at the start of the run, or right behind its comparison
// (index compare). Negates the operand and drops the minus; false when the
// operand is no number.
bool ApplyUnaryMinus(CCalcTreeNode* node, int compare) {
  CCalcTreeNodeArray& children = node->m_Children;
  const int entryCount = children.GetSize();
  const int candidates[2] = {entryCount > 1 ? 0 : -1,
                             compare >= 0 && compare < entryCount - 1 ? compare + 1 : -1};
  for (int at : candidates) {
    if (at < 0) continue;
    CCalcTreeNode* minus = Impl(children[at]);
    if (CodeOf(minus) != kOpSub) continue;
    CCalcTreeNode* operand = Impl(node->GetChild(at + 1));
    if (operand == nullptr) return false;
    if (operand->m_Kind == kKindText && CUtilityCalc::Calc_IsComplexEnabled()) {
      CString text(operand->m_Text);
      if (text.IsEmpty() || CUtilityCalc::IsPureNumber(text.GetString(), 1, CGmp::CheckStrict_Full, 0)) {
        operand->m_Kind = kKindNumber;
        operand->SetText(text.GetString());
      }
    }
    if (operand->m_Kind != kKindNumber) return false;
    operand->GetGmp()->Neg();
    operand->m_ValueState = kValueGmp;
    minus->m_Kind = kKindNothing;
  }
  for (int i = children.GetSize() - 1; i >= 0; --i)
    if (children[i]->GetKind() == kKindNothing) DeleteAt(children, i, 1);
  return true;
}

// One pass per arithmetic rank, the highest first, each left to right
// across the results of the pass before. False on a pair of operands that
// the operator can't take.
//
// A pass keeps what stays at the front of the array (the first `kept`
// slots) and reads on from `read`; the slots between are dead. Each step so
// costs the same however long the run, and a pass over n children is one
// walk. The order of the steps and of the failure are those of taking one
// pair out at a time: on a failure the array is closed up first, so that
// the node stands as that would have left it.
bool ComputeArithmetic(CCalcTreeNode* node, unsigned char format, unsigned char& kind) {
  CCalcTreeNodeArray& children = node->m_Children;
  for (unsigned char rank = kRankProduct; rank >= kRankSum; --rank) {
    const int size = children.GetSize();
    if (size < 3) continue;
    ICalcTreeNode** slots = children.GetData();
    int kept = 1;
    int read = 1;
    bool failed = false;
    while (read < size - 1) {
      CCalcTreeNode* op = Impl(slots[read]);
      const unsigned char code = CodeOf(op);
      const OperatorInfo* info = OperatorOfCode(code);
      if (info == nullptr || info->cls != OperatorClass::Arithmetic || info->rank != rank) {
        slots[kept++] = slots[read++];
        continue;
      }
      CCalcTreeNode* left = Impl(slots[kept - 1]);
      CCalcTreeNode* right = Impl(slots[read + 1]);
      if (!CoerceOperands(left, op, right, format)) {
        failed = true;
        break;
      }
      // What Arithmetic and JoinTexts rely on: two values of one kind.
      VKTCALC_ASSERT(IsValue(left) && left->m_Kind == right->m_Kind);
      kind = left->m_Kind == kKindText ? kResultJoined : kResultNumber;
      if (left->m_Kind == kKindNumber)
        Arithmetic(left, code, right, kind);
      else
        JoinTexts(left, right);
      delete slots[read];
      delete slots[read + 1];
      read += 2;
    }
    while (read < size) slots[kept++] = slots[read++];
    children.SetSize(kept);
    if (failed) return false;
  }
  return true;
}

// What is left after the arithmetic: one value, or one comparison with its
// sides. False on any other shape and on sides the comparison can't take.
bool FinishComparison(CCalcTreeNode* node, int entryCount, unsigned char format, unsigned char& kind) {
  CCalcTreeNodeArray& children = node->m_Children;
  int compares = 0;
  const int compare = node->FindCompareOperator(compares);
  const int count = children.GetSize();
  // A comparison behind arithmetic is done at the next call. Chosen: only
  // with exactly its three children left; a run that a host cut into some
  // other shape fails below instead of coming back unchanged for ever.
  if (entryCount >= 4 && compare == 1 && count == 3) return true;
  if (compare < 0) {
    if (count != 1) return false;
    node->CopyValueFrom(Impl(children[0]));
    node->DeleteAllChildren();
    return true;
  }
  if (count > 3) return false;
  // A tree changed after parsing may lack a side of the comparison: an
  // empty text stands in for it.
  if (count == 1) {
    InsertEmptyText(node, 0);
    InsertEmptyText(node, 2);
  } else if (count == 2) {
    InsertEmptyText(node, compare == 0 ? 0 : 2);
  }

  CCalcTreeNode* left = Impl(children[0]);
  CCalcTreeNode* op = Impl(children[1]);
  CCalcTreeNode* right = Impl(children[2]);
  if (!CoerceOperands(left, op, right, format)) return false;
  VKTCALC_ASSERT(IsValue(left) && left->m_Kind == right->m_Kind);  // what Compare relies on
  const bool holds = Compare(left, op, right);
  node->m_Kind = kKindNumber;
  node->SetText(holds ? u"1" : u"0");
  kind = kResultNumber;
  node->DeleteAllChildren();
  return true;
}

// ---- Logical pieces -----------------------------------------------------------

// One piece of a run cut at its logical operators: an operator (strOp), a
// run of operands, or, once that run is computed, its truth value.
struct CLogicSegment {
  CString strOp;                   // the operator's text; empty for operands
  int nValue = 0;                  // truth value of the computed operands
  CCalcTreeNodeArray arrOperands;  // owned until they go back into the node

  CLogicSegment() = default;
  CLogicSegment(const CLogicSegment&) = delete;
  CLogicSegment& operator=(const CLogicSegment&) = delete;
  ~CLogicSegment() {
    for (ICalcTreeNode* operand : arrOperands) delete operand;
  }
};

// A piece's operator is read back from its text, the only thing the piece
// keeps of it.
unsigned char StoredCode(const CString& op) {
  const OperatorInfo* info = FindStoredOperator(op);
  return info != nullptr ? info->code : 0;
}

// Moves the children of node into segments; the logical operators are
// destroyed and leave their text.
void CutIntoSegments(CCalcTreeNode* node, std::deque<CLogicSegment>& segments) {
  CCalcTreeNodeArray children(std::move(node->m_Children));
  node->m_Children.RemoveAll();
  auto isLogic = [](ICalcTreeNode* child) {
    CCalcTreeNode* impl = Impl(child);
    return impl != nullptr && impl->IsLogicOperator();
  };
  const int count = children.GetSize();
  int at = 0;
  while (at < count) {
    ICalcTreeNode*& child = children[at];
    if (isLogic(child)) {
      segments.emplace_back().strOp = Impl(child)->m_Text;
      delete child;
      child = nullptr;
      ++at;
      continue;
    }
    // A run of operands goes over whole: its array is sized once.
    int end = at + 1;
    while (end < count && !isLogic(children[end])) ++end;
    CCalcTreeNodeArray& operands = segments.emplace_back().arrOperands;
    operands.SetSize(end - at);
    for (int i = at; i < end; ++i) {
      operands[i - at] = children[i];
      children[i] = nullptr;
    }
    at = end;
  }
}

// Steps through the segments left to right; && and || have equal rank, and
// an || reached with "1" so far ends the walk: the rest is not computed.
int ComputeLogic(CCalcTreeNode* node, unsigned char format, unsigned char& kind,
                 CErrorCollector* errors) {
  std::deque<CLogicSegment> segments;
  CutIntoSegments(node, segments);

  CString pending;
  CString accumulated;
  int negate = 0;
  int result = 1;
  while (!segments.empty()) {
    CLogicSegment& segment = segments.front();
    if (!segment.arrOperands.IsEmpty()) {
      node->m_Children = std::move(segment.arrOperands);
      segment.arrOperands.RemoveAll();
      // Each successful run either empties the node or leaves the three
      // children of a comparison, which the next run empties.
      int number = 0;
      bool failed = false;
      while (node->GetChildCount() > 0 && !failed)
        failed = !ComputeRun(node, format, &kind, &number);
      // The node is written as it stands: once an earlier piece has made it
      // a value, that value is all its text shows. A failure ends the loop,
      // not the step: what is left is destroyed and the node still becomes
      // a truth value below.
      if (failed) {
        ReportRunFailure(node, number, errors);
        result = 0;
        break;
      }
      segment.nValue = CGmp::IsZero(node->GetGmp()) ? 0 : 1;
      continue;  // the segment is now a computed piece
    }
    if (StoredCode(segment.strOp) == kOpNot) {
      negate = 1;
    } else if (!segment.strOp.IsEmpty()) {
      pending = segment.strOp;
      if (StoredCode(pending) == kOpOr && accumulated == u"1") break;
    } else {
      int value = segment.nValue;
      if (negate) value = !value;
      negate = 0;
      if (StoredCode(pending) != kOpAnd)
        accumulated = value ? u"1" : u"0";
      else if (value == 0)
        accumulated = u"0";
      pending.Empty();
    }
    segments.pop_front();
  }

  segments.clear();
  node->DeleteAllChildren();
  node->m_Kind = kKindNumber;
  node->m_OpCode = 0;
  int truth = _wtoi(accumulated.GetString()) != 0 ? 1 : 0;
  if (negate) truth = !truth;
  node->SetGmp(new CGmp(truth), 0);
  kind = kResultNumber;
  return result;
}

}  // namespace

CCalcTreeNode* FindIf(ICalcTreeNode* node) {
  CCalcTreeNode* deepest = nullptr;
  for (CCalcTreeNode* n = Impl(node); n != nullptr;
       n = n->m_Children.IsEmpty() ? nullptr : Impl(n->m_Children[0])) {
    if (IsIfCall(n)) deepest = n;
  }
  return deepest;
}

ICalcTreeNode* FindNextStep(ICalcTreeNode* node, unsigned int* step) {
  unsigned int ignored = 0;
  unsigned int& out = step != nullptr ? *step : ignored;
  out = kStepNone;

  // A first child needs no search for a conditional: its parent's search
  // has just looked down the same chain of first children and found none
  // (or moved to it). This keeps the search linear in the size of the tree.
  FrameStack stack;
  CCalcTreeNode* enter = Impl(node);  // a node whose search begins
  bool enterIsFirst = false;
  for (;;) {
    if (enter != nullptr) {
      CCalcTreeNode* current = enter;
      if (!enterIsFirst && !current->m_Children.IsEmpty()) current = DropUntakenBranches(current);
      enter = nullptr;
      if (current->m_Children.IsEmpty()) {
        if (current->m_Kind == kKindVariable) {
          out = kStepVariable;
          return current;
        }
      } else {
        stack.Push(current);
      }
    }
    if (stack.Empty()) return nullptr;

    FrameStack::Frame& top = stack.Top();
    if (top.next < top.node->GetChildCount()) {
      enterIsFirst = top.next == 0;
      enter = Impl(top.node->m_Children[top.next++]);
      continue;
    }

    // Every child is done: the node's own step, by its kind.
    CCalcTreeNode* current = top.node;
    stack.Pop();
    const int count = current->GetChildCount();
    switch (current->m_Kind) {
      case kKindExpression:
        if (count > 1) {
          out = kStepCompute;
          return current;
        }
        if (count == 1) {
          current->CopyValueFrom(Impl(current->m_Children[0]));
          current->DeleteAllChildren();
        }
        break;
      case kKindBracket:
        out = count > 1 ? kStepCompute : kStepBracket;
        return current;
      case kKindFunction:
        out = kStepFunction;
        return current;
      case kKindArgument:
        // One child stays as it is: the call reads it.
        if (count > 1) {
          out = kStepCompute;
          return current;
        }
        break;
      default:
        break;
    }
  }
}

int ComputeNode(CCalcTreeNode* node, unsigned char format, unsigned char* resultKind,
                CErrorCollector* errors) {
  unsigned char ignored = 0;
  unsigned char& kind = resultKind != nullptr ? *resultKind : ignored;
  if (node == nullptr) return 0;
  if (node->m_Children.IsEmpty()) return 1;
  if (!CheckOperandKinds(node, errors)) return 0;

  for (ICalcTreeNode* child : node->m_Children) {
    CCalcTreeNode* impl = Impl(child);
    if (impl != nullptr && impl->IsLogicOperator()) return ComputeLogic(node, format, kind, errors);
  }
  int number = 0;
  if (ComputeRun(node, format, &kind, &number)) return 1;
  ReportRunFailure(node, number, errors);
  return 0;
}

int ComputeRun(CCalcTreeNode* node, unsigned char format, unsigned char* resultKind,
               int* errorNumber) {
  unsigned char ignoredKind = 0;
  int ignoredNumber = 0;
  unsigned char& kind = resultKind != nullptr ? *resultKind : ignoredKind;
  int& number = errorNumber != nullptr ? *errorNumber : ignoredNumber;
  auto fail = [&number]() {
    number = kErrSyntax;
    return 0;
  };
  if (node == nullptr) return fail();

  const int entryCount = node->m_Children.GetSize();
  kind = kResultNumber;
  int compares = 0;
  const int compare = node->FindCompareOperator(compares);
  if (compares > 1) return fail();  // 1=1=1
  if (!ApplyUnaryMinus(node, compare)) return fail();
  if (!ComputeArithmetic(node, format, kind)) return fail();
  return FinishComparison(node, entryCount, format, kind) ? 1 : fail();
}

bool CoerceOperands(CCalcTreeNode* left, CCalcTreeNode* op, CCalcTreeNode* right,
                    unsigned char format) {
  // Chosen: an operand that is no value (an operator, a node a host
  // re-kinded) is refused like a text that is no number.
  if (left == nullptr || right == nullptr || !IsValue(left) || !IsValue(right)) return false;
  const bool numeric = IsNumericOperator(CodeOf(op));
  if (left->m_Kind == kKindNumber && right->m_Kind == kKindNumber) return true;
  if (left->m_Kind == kKindText && right->m_Kind == kKindText && !numeric) return true;  // "1"+"2" is 12
  if (!CUtilityCalc::Calc_IsComplexEnabled()) return false;

  CCalcTreeNode* const operands[2] = {left, right};
  bool allNumbers = true;
  for (CCalcTreeNode* operand : operands) {
    if (operand->m_Kind != kKindText) continue;
    CString text;
    operand->GetValue(text, 0, 1);
    if (!CUtilityCalc::IsPureNumber(text.GetString(), 1, CGmp::CheckStrict_Normal, 0)) allNumbers = false;
  }
  if (allNumbers) {  // "12"-3 is 9, ""=0 holds
    for (CCalcTreeNode* operand : operands) {
      if (operand->m_Kind != kKindText) continue;
      operand->m_Kind = kKindNumber;
      operand->m_ValueState = kValueText;
    }
    return true;
  }
  if (numeric) return false;  // "a"-1
  for (CCalcTreeNode* operand : operands) {  // "a"+1 is a1
    if (operand->m_Kind != kKindNumber) continue;
    CString text;
    operand->GetDispValue(text, 0, 0, format);
    operand->SetText(text.GetString());
    operand->m_Kind = kKindText;
  }
  return true;
}

}  // namespace vkt
