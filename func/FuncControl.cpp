// func/FuncControl.cpp: the control family of built-ins, `if` and `js`, and
// the script bridge behind `js`. The library has no script engine: a call
// goes out either to the host's script window (through the hook the host
// installs) or to the script host handed to NewCalc. The laziness of `if`
// is the evaluator's; the body here only picks one of two finished values.
#include <atomic>
#include <span>

#include "CFuncItem.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "VKTCalcEntry.h"
#include "func/BuiltinTable.h"

namespace vkt::func {

namespace {

// Chosen: with no window messages on this platform, the host reaches its
// script window through a hook. A handle counts as a window only while a
// hook is installed, so a host that sets m_hJsWnd without one still gets
// its script host.
std::atomic<CUtilityCalc::PFN_JSWNDHOOK> g_windowHook{nullptr};

// Keeps the script counter up for exactly as long as the host runs, also
// when an exception of the host's passes through.
class ScriptCallCount {
 public:
  ScriptCallCount() { std::atomic_ref<LONG>(CUtilityCalc::m_InvokeJsCounter).fetch_add(1); }
  ~ScriptCallCount() { std::atomic_ref<LONG>(CUtilityCalc::m_InvokeJsCounter).fetch_sub(1); }
  ScriptCallCount(const ScriptCallCount&) = delete;
  ScriptCallCount& operator=(const ScriptCallCount&) = delete;
};

// if(condition, then, else). The condition is false when it reads as a
// zero number through the CGmp text constructor: 0, 0.00, the empty text
// and any text without a number; 12abc is true. The evaluator reads a
// condition the same way when it drops the branch not taken.
int IfBody(CFuncPara* para, int argc) {
  if (argc != 3) return 0;
  const int chosen = CGmp::IsZero(para->arrArgs[0].GetString()) ? 2 : 1;
  para->strResult = para->arrArgs[chosen];
  // The row's kind 0 lets a chosen number stay a number; a text that came
  // in quotes stays text even when it reads as one, so if(1, '12', 0) is
  // the text 12.
  if (chosen < para->arrQuoted.GetSize() && para->arrQuoted[chosen] == 1) para->nResultKind = 1;
  return 1;
}

// js(name, argument, ...). Without any argument it is a bad call on either
// road: there is no name to run.
int JsBody(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  CUtilityCalc::PFN_JSWNDHOOK hook = g_windowHook.load(std::memory_order_acquire);
  if (para->hJsWnd != nullptr && hook != nullptr) {
    // The window gets the frame as it stands, the name still first.
    return hook(para->hJsWnd, para) != 0 ? 1 : 0;
  }
  const CString name(para->arrArgs[0]);
  para->arrArgs.RemoveAt(0);
  return CUtilityCalc::WrapInvokeJS(para, name.GetString()) != 0 ? 1 : 0;
}

constexpr BuiltinBody kControlBodies[] = {
    {u"if", &IfBody},
    {u"js", &JsBody},
};

}  // namespace

std::span<const BuiltinBody> ControlBodies() { return kControlBodies; }

}  // namespace vkt::func

int CUtilityCalc::WrapInvokeJS(CFuncPara* para, const char16_t* name) {
  if (para == nullptr || para->pJsHost == nullptr) return 0;
  CString function(name != nullptr && *name != 0 ? CString(name) : para->strName);
  if (function.IsEmpty()) return 0;

  int answer = 0;
  {
    vkt::func::ScriptCallCount counting;
    answer = para->pJsHost->Invoke(function, para->arrArgs, para->strResult);
  }
  if (answer == 0) {
    para->strResult.Format(u"JavaScript Function %s Invoking Failure", function.GetString());
    return 0;
  }
  // A script host that reports its failure inside a successful answer: the
  // finder recognises it and leaves the message in strResult, where the
  // call's wrapper takes it as the error text.
  if (FindGetSoapLikeError(para->strResult) != 0) return 0;
  return answer;
}

CUtilityCalc::PFN_JSWNDHOOK CUtilityCalc::SetScriptWindowHook(PFN_JSWNDHOOK hook) {
  return vkt::func::g_windowHook.exchange(hook, std::memory_order_acq_rel);
}
