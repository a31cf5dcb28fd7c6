// tests/tree/TreeTestUtil.h: what the tree tests share: a parse into an owned
// tree, its written text, a picture of its shape, and a mode set for one scope.
#pragma once

#include <memory>
#include <string>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"
#include "tests/support/Text.h"
#include "tree/CCalcTreeNode.h"

namespace vkt::test {

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
  return U(out);
}

// Kind, ':' and the text where there is one, children in brackets:
// `1(a+f(1))` parses to "1[2[5:a 8:+ 3:f[4[6:1]]]]". Null gives "".
inline std::string Shape(ICalcTreeNode* node) {
  if (node == nullptr) return "";
  std::string out(1, static_cast<char>('0' + node->GetKind()));
  if (node->GetTextPtr()[0] != 0) out += ":" + Row(node->GetTextPtr());
  for (int i = 0; i < node->GetChildCount(); ++i) out += (i == 0 ? "[" : " ") + Shape(node->GetChild(i));
  return node->GetChildCount() > 0 ? out + "]" : out;
}

// Complex mode (or, with the other pair, Chinese mode) set for one scope.
struct ScopedMode : OnExit {
  explicit ScopedMode(int on, int (*get)() = CUtilityCalc::Calc_IsComplexEnabled,
                      void (*set)(int) = CUtilityCalc::Calc_EnableComplex)
      : OnExit([set, saved = get()] { set(saved); }) {
    set(on);
  }
};

}  // namespace vkt::test
