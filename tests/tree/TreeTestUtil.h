// tests/tree/TreeTestUtil.h: helpers for the tree tests: parse into an
// owned tree, its expression text, and a compact picture of its shape.
//
// Shape(node) writes each node as its kind, ':' and its raw text for nodes
// with text, and its children in brackets: `1(a+f(1))` parses to
// "1[2[5:a 8:+ 3:f[4[6:1]]]]".
#pragma once

#include <memory>
#include <string>

#include "CErrorCollector.h"
#include "CUtilityCalc.h"
#include "ICalcTreeNode.h"
#include "tree/CCalcTreeNode.h"

namespace vkt::test {

inline std::string Utf8(const CString& text) { return text.ToUtf8(); }
inline std::string Utf8(const char16_t* text) { return CString(text).ToUtf8(); }

struct Parsed {
  std::unique_ptr<ICalcTreeNode> root;
  CErrorCollector errors;
};

inline std::unique_ptr<Parsed> ParseText(const char16_t* text) {
  auto parsed = std::make_unique<Parsed>();
  parsed->root.reset(CUtilityCalc::ParseExpression(text, &parsed->errors));
  return parsed;
}

inline std::u16string Expression(ICalcTreeNode* node) {
  CString out;
  node->GetExpression(out);
  return std::u16string(out.View());
}

inline void AppendShape(std::string& out, ICalcTreeNode* node) {
  out += static_cast<char>('0' + node->GetKind());
  if (node->GetTextPtr()[0] != 0) {
    out += ':';
    out += Utf8(node->GetTextPtr());
  }
  const int count = node->GetChildCount();
  if (count == 0) return;
  out += '[';
  for (int i = 0; i < count; ++i) {
    if (i > 0) out += ' ';
    AppendShape(out, node->GetChild(i));
  }
  out += ']';
}

inline std::string Shape(ICalcTreeNode* node) {
  std::string out;
  if (node != nullptr) AppendShape(out, node);
  return out;
}

// Complex mode for one scope (it is on at load).
class ComplexMode {
 public:
  explicit ComplexMode(int on) : m_saved(CUtilityCalc::Calc_IsComplexEnabled()) {
    CUtilityCalc::Calc_EnableComplex(on);
  }
  ~ComplexMode() { CUtilityCalc::Calc_EnableComplex(m_saved); }
  ComplexMode(const ComplexMode&) = delete;
  ComplexMode& operator=(const ComplexMode&) = delete;

 private:
  int m_saved;
};

}  // namespace vkt::test
