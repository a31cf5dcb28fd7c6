// calc/CCalc.cpp: the calculation run. Calculate loops over the evaluator's
// next step: it does the steps that need nothing from outside, answers the
// reserved language variables, runs the functions the manager has bodies
// for, and stops with a run code where the host must supply a value. The
// arithmetic itself is the evaluator's (tree/Evaluator.h).
#include "calc/CCalc.h"

#include <new>

#include "CErrorCollector.h"
#include "CFuncItem.h"
#include "CFuncMnger.h"
#include "CTraceCollector.h"
#include "CUtilityCalc.h"
#include "calc/FuncCounter.h"
#include "foundation/CStrKit.h"
#include "tree/CCalcTreeNode.h"
#include "tree/Evaluator.h"
#include "tree/Parser.h"

namespace {

// Run codes of Calculate.
constexpr int kRunDone = 0;
constexpr int kRunFailed = -1;
constexpr int kRunNeedVariable = 2;
constexpr int kRunNeedFunction = 3;
constexpr int kRunGated = 6;
constexpr int kGoOn = 1;  // internal: the step is done, look for the next

// CallFunc's answers.
constexpr int kCallDone = 1;
constexpr int kCallNoBody = -1;
constexpr int kCallGated = -2;

// A run that ends with anything but code 0 leaves no result kind behind.
int EndRun(CalculatePara& para, int code) {
  para.nResultKind = 0;
  return code;
}

// Code 3: the name and the arguments, a line each.
int AskHostForFunction(CalculatePara& para, CString& name, CStringArray& args) {
  args.InsertAt(0, name);
  para.strResult = CStrKit::Array2CString(args, u"\r\n");
  return EndRun(para, kRunNeedFunction);
}

int IndexAmongChildren(ICalcTreeNode* parent, ICalcTreeNode* child) {
  const int count = parent->GetChildCount();
  for (int i = 0; i < count; ++i) {
    if (parent->GetChild(i) == child) return i;
  }
  return -1;
}

}  // namespace

// ---- ICalc's exported special members ---------------------------------------

ICalc::ICalc() = default;
ICalc::ICalc(const ICalc&) = default;
ICalc& ICalc::operator=(const ICalc&) = default;
ICalc::~ICalc() = default;

CalculatePara::CalculatePara()
    : pTrace(nullptr),
      pError(nullptr),
      pRoot(nullptr),
      bCheckGate(0),
      nDispFormat(0),
      nResultKind(0),
      pCurrent(nullptr) {}

ICalc* NewCalc(CFuncMnger* funcMnger, IInvokeJS* scriptHost) {
  return new (std::nothrow) vkt::CCalc(funcMnger, scriptHost);
}

namespace vkt {

CCalc::CCalc(CFuncMnger* funcMnger, IInvokeJS* scriptHost)
    : pJsHost(scriptHost), bOwnMnger(0), pFuncMnger(funcMnger) {}

CCalc::~CCalc() {
  if (bOwnMnger) delete pFuncMnger;
}

// Chosen: no lock. The first call must not race (see ICalc.h); after it the
// pointer is only read.
CFuncMnger* CCalc::GetFuncMnger() {
  if (pFuncMnger == nullptr) {
    pFuncMnger = CFuncMnger::NewFuncMnger();
    bOwnMnger = pFuncMnger != nullptr ? 1 : 0;
  }
  return pFuncMnger;
}

int CCalc::SetNodeValue(ICalcTreeNode* root, ICalcTreeNode* node, CString& value,
                        CErrorCollector* errors, CTraceCollector* trace) {
  CCalcTreeNode* target = CCalcTreeNode::From(node);
  if (target == nullptr) return 0;  // Chosen: no node, nothing to put a value in

  // Counted before the value goes in, while the node still is the call.
  if (target->GetKind() == kKindFunction) CountFunctionResult(errors);
  const int isExpression = target->ApplyValue(value.GetString());

  if (trace != nullptr && trace->nMode == 1 && root != nullptr) {
    CString text;
    root->GetExpression(text);
    trace->sbLines.Append(text);
    // Chosen: each expression ends with CR LF, so the lines can be told apart.
    trace->sbLines.Append(u"\r\n");
  }

  if (isExpression == 0) {
    ICalcTreeNode* parent = target->GetParent();
    if (parent == nullptr) return 1;
    // The new value may clash with its neighbours (1005 with complex mode
    // off); the collector reports such a clash with the parent's text.
    if (errors != nullptr) {
      errors->pCurrentNode = parent;
      errors->pszSource = nullptr;
    }
    const int ok = CheckOperandKindsDeep(parent, errors);
    if (errors != nullptr) errors->pCurrentNode = nullptr;
    return ok;
  }

  // The host's text goes in as a macro: the tree is written with it in place
  // and parsed again, so precedence applies across the splice.
  CCalcTreeNode* top = CCalcTreeNode::From(root);
  if (top == nullptr) return 0;  // Chosen: without the root there is nothing to parse
  CString text;
  top->GetExpression(text);
  return top->Parse(text, errors);
}

int CCalc::Calculate(CalculatePara& para) {
  para.strResult.Empty();
  para.pCurrent = nullptr;
  // Chosen: a host that passes no collector gets -1 rather than a crash;
  // there is nowhere to say why.
  if (para.pError == nullptr) return EndRun(para, kRunFailed);
  para.pError->Empty_CalcError();

  for (int stepCount = 0;; ++stepCount) {
    unsigned int step = kStepNone;
    ICalcTreeNode* node = para.pRoot != nullptr ? FindNextStep(para.pRoot, &step) : nullptr;
    para.pCurrent = node;
    CCalcTreeNode* inner = CCalcTreeNode::From(node);
    if (step != kStepNone && inner == nullptr) return EndRun(para, kRunFailed);

    int code = kGoOn;
    switch (step) {
      case kStepCompute:
        if (ComputeNode(inner, para.nDispFormat, &para.nResultKind, para.pError) == 0) {
          code = kRunFailed;
        }
        break;
      case kStepBracket:
        inner->CollapseBracket();
        break;
      case kStepVariable:
        code = VariableStep(para, node);
        break;
      case kStepFunction:
        code = FunctionStep(para, node);
        break;
      default: {
        para.pCurrent = nullptr;
        if (stepCount == 0 && para.nResultKind == 0 && para.pRoot != nullptr) {
          const unsigned char kind = para.pRoot->GetKind();
          if (kind == kKindNumber) para.nResultKind = kResultNumber;
          if (kind == kKindText) para.nResultKind = 1;  // text
        }
        return kRunDone;
      }
    }
    if (code != kGoOn) return EndRun(para, code);
  }
}

int CCalc::VariableStep(CalculatePara& para, ICalcTreeNode* node) {
  node->GetValue(para.strResult, 0, 0);
  if (para.strResult.CompareNoCase(u"@language") != 0 && para.strResult.CompareNoCase(u"@lgg") != 0) {
    return kRunNeedVariable;
  }
  CString value;
  value.Format(u"%d", CUtilityCalc::GetCurrentLanguage());
  if (SetNodeValue(para.pRoot, node, value, para.pError, para.pTrace) == 0) return kRunFailed;
  return kGoOn;
}

int CCalc::FunctionStep(CalculatePara& para, ICalcTreeNode* node) {
  CFuncPara frame;
  frame.pJsHost = pJsHost;
  // Text arguments keep their quotes here; CallFunc takes them off.
  node->GetFuncCall(frame.strName, frame.arrArgs, 0);
  para.pError->strFuncName = frame.strName;

  CFuncMnger* manager = GetFuncMnger();
  if (manager == nullptr) return kRunFailed;  // Chosen: no memory for a manager fails the run
  // A function that nobody here knows goes to the host, which may refuse it
  // by its own means.
  if (manager->FindFunc(frame.strName.GetString()) == -1) {
    return AskHostForFunction(para, frame.strName, frame.arrArgs);
  }

  const int result = manager->CallFunc(frame, para.bCheckGate, para.pError, -1);
  para.nResultKind = frame.nResultKind;
  switch (result) {
    case kCallDone:
      if (SetNodeValue(para.pRoot, node, frame.strResult, para.pError, para.pTrace) == 0) {
        return kRunFailed;
      }
      if (para.pTrace != nullptr) para.pTrace->Func_Calced(frame);
      return kGoOn;
    case kCallNoBody: {
      // The frame may have lost its quotes on the way; the node still holds
      // the call as it stands in the tree.
      CString name;
      CStringArray args;
      node->GetFuncCall(name, args, 0);
      return AskHostForFunction(para, name, args);
    }
    case kCallGated:
      para.strResult.Empty();
      return kRunGated;
    default:
      if (para.pError->nError == 0) para.pError->nError = kErrFunctionFailed;
      return kRunFailed;
  }
}

unsigned char CCalc::GetVarExpectedKind(ICalcTreeNode* node) {
  // Upward through the parents; a loop rather than the recursion the rule
  // reads as, so that no tree depth can exhaust the stack.
  while (node != nullptr) {
    ICalcTreeNode* parent = node->GetParent();
    if (parent == nullptr) return 0;
    const int position = IndexAmongChildren(parent, node);
    if (position < 0) return 0;

    if (parent->GetKind() == kKindFunction) {
      CFuncMnger* manager = GetFuncMnger();
      CFuncInfo* info = nullptr;
      const int index = manager != nullptr ? manager->FindFunc(parent->GetTextPtr()) : -1;
      if (index >= 0) info = manager->GetFuncByIndex(index);
      if (info != nullptr) {
        const CByteArray& kinds = info->arrParaKinds;
        if (kinds.GetSize() == 0) return 1;
        // The last entry repeats for every argument past the list.
        const int at = position < kinds.GetSize() ? position : kinds.GetSize() - 1;
        const BYTE kind = kinds.GetAt(at);
        if (kind != 0) return kind;
      }
    }

    const int count = parent->GetChildCount();
    for (int i = 0; i < count; ++i) {
      ICalcTreeNode* sibling = parent->GetChild(i);
      if (sibling == nullptr || sibling == node || sibling->GetKind() != kKindOperator) continue;
      const char16_t* op = sibling->GetTextPtr();
      if (op[0] != 0 && op[0] != u'+') return 2;  // any operator but "+" wants a number
    }
    node = parent;
  }
  return 0;
}

}  // namespace vkt
