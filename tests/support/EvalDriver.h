// tests/support/EvalDriver.h: a small stand-in for the calculator's loop, so
// that tests, fuzzers and benchmarks can take a formula from text to its
// value: parse, then search for the next step and do it until none is left.
// Variables are answered by a callback and put in as the calculator puts a
// host's value in; of the functions only `if` is known, and it runs its
// real body through a function manager, as the calculator calls it. Any
// other call stops the run with code 3.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "CErrorCollector.h"
#include "CFuncItem.h"
#include "CFuncMnger.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "ICalcTreeNode.h"
#include "tree/CCalcTreeNode.h"
#include "tree/Evaluator.h"
#include "tree/Parser.h"

namespace vkt::test {

struct EvalRun {
  int code = 0;                  // 0 done, -1 failed, 2 variable unanswered, 3 unknown call, -2 no end
  std::u16string value;          // the root's GetValue(text, 0, 0) when done
  unsigned char rootKind = 0;    // the root's kind when done
  unsigned char resultKind = 0;  // as the calculator reports it
  int error = 0;                 // the collector's number and position
  int position = -1;
  std::u16string errorText;
  std::vector<std::u16string> asked;  // variables, in the order they were asked for
};

// Gives the value text of a variable (a number, a quoted text or an
// expression); false leaves it unanswered.
using VariableValues = std::function<bool(const std::u16string& name, std::u16string& value)>;

class EvalDriver {
 public:
  explicit EvalDriver(unsigned char format = 0) : m_format(format) {}

  EvalRun Run(const char16_t* formula, const VariableValues& values = {}) {
    EvalRun run;
    CErrorCollector errors;
    std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula, &errors));
    if (root == nullptr) return Fail(run, errors);
    run.code = Reduce(root.get(), values, run, errors);
    if (run.code == -1) return Fail(run, errors);
    if (run.code == 0) {
      CString value;
      root->GetValue(value, 0, 0);
      run.value = std::u16string(value.View());
      run.rootKind = root->GetKind();
    }
    return run;
  }

 private:
  static constexpr int kStepLimit = 1000000;
  static constexpr int kErrFunctionFailed = 1072;  // as the calculator reports a failed call

  static EvalRun& Fail(EvalRun& run, CErrorCollector& errors) {
    run.code = -1;
    run.error = errors.nError;
    run.position = errors.nCodePos;
    if (errors.pszErrorText != nullptr) run.errorText = errors.pszErrorText;
    return run;
  }

  int Reduce(ICalcTreeNode* root, const VariableValues& values, EvalRun& run, CErrorCollector& errors) {
    for (int steps = 0; steps < kStepLimit; ++steps) {
      unsigned int step = kStepNone;
      CCalcTreeNode* node = CCalcTreeNode::From(FindNextStep(root, &step));
      switch (step) {
        case kStepCompute:
          if (!ComputeNode(node, m_format, &run.resultKind, &errors)) return -1;
          break;
        case kStepBracket:
          node->CollapseBracket();
          break;
        case kStepVariable: {
          CString name;
          node->GetValue(name, 0, 0);
          run.asked.emplace_back(name.View());
          std::u16string value;
          if (!values || !values(run.asked.back(), value)) return 2;
          if (!SetValue(root, node, value.c_str(), errors)) return -1;
          break;
        }
        case kStepFunction:
          if (CString(node->GetTextPtr()).CompareNoCase(u"if") != 0) return 3;
          if (!CallIf(root, node, run, errors)) return -1;
          break;
        default:
          if (steps == 0 && run.resultKind == 0) {
            if (root->GetKind() == kKindNumber) run.resultKind = kResultNumber;
            if (root->GetKind() == kKindText) run.resultKind = 1;
          }
          return 0;
      }
    }
    return -2;
  }

  // The calculator's way of putting a value in: a finished value is checked
  // against its neighbours, an expression is spliced in by parsing the
  // tree's text again.
  static bool SetValue(ICalcTreeNode* root, CCalcTreeNode* node, const char16_t* value,
                       CErrorCollector& errors) {
    if (node->ApplyValue(value) == 0) {
      ICalcTreeNode* parent = node->GetParent();
      if (parent == nullptr) return true;
      errors.pCurrentNode = parent;
      errors.pszSource = nullptr;
      const int ok = CheckOperandKindsDeep(parent, &errors);
      errors.pCurrentNode = nullptr;
      return ok != 0;
    }
    CString text;
    root->GetExpression(text);
    return CCalcTreeNode::From(root)->Parse(text, &errors) != 0;
  }

  // The call of `if`, made as the calculator makes it: a frame with the
  // argument texts, the manager's wrapper around the body, and the result
  // text put in place of the call.
  bool CallIf(ICalcTreeNode* root, CCalcTreeNode* node, EvalRun& run, CErrorCollector& errors) {
    CFuncPara frame;
    node->GetFuncCall(frame.strName, frame.arrArgs, 0);
    if (m_functions.CallFunc(frame, 0, &errors, -1) != 1) {
      if (errors.nError == 0) errors.nError = kErrFunctionFailed;
      return false;
    }
    run.resultKind = frame.nResultKind;
    return SetValue(root, node, frame.strResult.GetString(), errors);
  }

  unsigned char m_format;
  CFuncMnger m_functions;  // only its built-in `if` is ever called
};

inline EvalRun Evaluate(const char16_t* formula, const VariableValues& values = {}, unsigned char format = 0) {
  return EvalDriver(format).Run(formula, values);
}

}  // namespace vkt::test
