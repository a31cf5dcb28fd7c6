// tree/TreeText.cpp: a tree back to text, in the library's own syntax
// (WriteExpression, which the parser reads back to the same text) and as a
// spreadsheet formula (WriteFormula, for hosts). The tree keeps no blanks,
// so both give a normal form of the expression, not the text that went in.
//
// The walk is iterative and uses the interface alone.
#include <vector>

#include "CGmp.h"
#include "CUtilityCalc.h"
#include "foundation/CStringBuilder.h"
#include "tree/CCalcTreeNode.h"

namespace vkt {
namespace {

// A child of kind 7 whose text is empty or no number makes the operators
// beside it join texts in formula form. Null (outside the children) is not.
bool IsTextChild(ICalcTreeNode* parent, int index) {
  ICalcTreeNode* child = parent->GetChild(index);
  if (child == nullptr || child->GetKind() != kKindText) return false;
  CString text;
  child->GetValue(text, 0, 0);
  return text.IsEmpty() || !CUtilityCalc::IsPureNumber(text, 0, CGmp::CheckStrict_None, 0);
}

class TreeWriter {
 public:
  TreeWriter(CStringBuilder* out, bool formula) : m_out(out), m_formula(formula) {}

  void Write(ICalcTreeNode* root, int textNeighbour) {
    struct Frame {
      ICalcTreeNode* node;
      int next;
      int count;
    };
    std::vector<Frame> stack;
    if (Open(root, root->GetParent(), textNeighbour)) stack.push_back({root, 0, root->GetChildCount()});
    while (!stack.empty()) {
      Frame& top = stack.back();
      if (top.next >= top.count) {
        Close(top.node);
        stack.pop_back();
        continue;
      }
      ICalcTreeNode* parent = top.node;
      const int index = top.next++;
      if (index > 0 && parent->GetKind() == kKindFunction) m_out->Append(u",");
      ICalcTreeNode* child = parent->GetChild(index);
      if (child == nullptr) continue;
      const int neighbour =
          m_formula && (IsTextChild(parent, index - 1) || IsTextChild(parent, index + 1)) ? 1 : 0;
      if (Open(child, parent, neighbour)) stack.push_back({child, 0, child->GetChildCount()});
    }
  }

 private:
  // Writes what stands before the node's children; true when the children
  // are to be written.
  bool Open(ICalcTreeNode* node, ICalcTreeNode* parent, int textNeighbour) {
    CString text;
    switch (node->GetKind()) {
      case kKindExpression:
      case kKindArgument:
        return true;
      case kKindBracket:
        m_out->Append(u"(");
        return true;
      case kKindFunction:
        m_out->Append(node->GetTextPtr());
        m_out->Append(u"(");
        return true;
      case kKindVariable:
        if (m_formula) {
          m_out->Append(node->GetTextPtr());
        } else {
          node->GetValue(text, 1, 1);
          m_out->Append(text);
        }
        return false;
      case kKindNumber:
        WriteNumber(node, parent);
        return false;
      case kKindText:
        if (m_formula) {
          node->GetValue(text, 0, 1);
          m_out->Append(u"\"");
          m_out->Append(text);
          m_out->Append(u"\"");
        } else {
          node->GetValue(text, 1, 1);
          m_out->Append(text);
        }
        return false;
      case kKindOperator:
        node->GetValue(text, m_formula ? 0 : 1, m_formula ? 0 : 1);
        if (m_formula && textNeighbour && text == u"+") text = u" & ";
        m_out->Append(text);
        return false;
      default:  // kind 0, and kinds nobody defined: nothing, children unvisited
        return false;
    }
  }

  void Close(ICalcTreeNode* node) {
    const unsigned char kind = node->GetKind();
    if (kind == kKindBracket || kind == kKindFunction) m_out->Append(u")");
  }

  // A negative number behind the first place of its run goes in brackets:
  // 1+(-2) reads back, 1+-2 would not pass the grammar check. In front it
  // stands bare and reads back as a minus and the number.
  void WriteNumber(ICalcTreeNode* node, ICalcTreeNode* parent) {
    CString text;
    node->GetValue(text, 0, 0);
    const bool bracket = text[0] == u'-' && parent != nullptr && parent->GetChildCount() > 0 &&
                         parent->GetChild(0) != node;
    if (bracket) m_out->Append(u"(");
    m_out->Append(text);
    if (bracket) m_out->Append(u")");
  }

  CStringBuilder* m_out;
  bool m_formula;  // formula form: double quotes, " & " beside texts
};

}  // namespace

void CCalcTreeNode::WriteExpression(CStringBuilder* out) {
  if (out == nullptr) return;
  TreeWriter(out, false).Write(this, 0);
}

void CCalcTreeNode::GetExpression(CString& out) {
  CStringBuilder builder(512);
  WriteExpression(&builder);
  builder.GetStr(out);
}

void CCalcTreeNode::WriteFormula(CStringBuilder* out, int textNeighbour) {
  if (out == nullptr) return;
  TreeWriter(out, true).Write(this, textNeighbour);
}

}  // namespace vkt
