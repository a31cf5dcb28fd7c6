// calc/CCalc.h: the calculator that NewCalc gives, the one implementation of
// ICalc. Not installed; nothing under include/ may include it.
//
// It holds nothing of a calculation: everything about a run lies in the
// host's CalculatePara and tree. Its only state is the function manager,
// borrowed from NewCalc or made at first need, and the script host that it
// hands to every function call.
#pragma once

#include "ICalc.h"

class CFuncPara;

namespace vkt {

class CCalc : public ICalc {
 public:
  CCalc(CFuncMnger* funcMnger, IInvokeJS* scriptHost);
  ~CCalc() override;  // deletes the manager only when it made it

  CCalc(const CCalc&) = delete;
  CCalc& operator=(const CCalc&) = delete;

  // ---- ICalc, in slot order -----------------------------------------
  CFuncMnger* GetFuncMnger() override;
  int SetNodeValue(ICalcTreeNode* root, ICalcTreeNode* node, CString& value,
                   CErrorCollector* errors, CTraceCollector* trace) override;
  int Calculate(CalculatePara& para) override;
  unsigned char GetVarExpectedKind(ICalcTreeNode* node) override;

  // Fields in this order.
  IInvokeJS* pJsHost;       // the host's script host; copied to every CFuncPara
  int bOwnMnger;            // 1 when the calculator made pFuncMnger itself
  CFuncMnger* pFuncMnger;   // from NewCalc, or made at first need

 private:
  // Step 2: the variable at node; a run code, or 1 to go on after a reserved
  // name was answered here.
  int VariableStep(CalculatePara& para, ICalcTreeNode* node);
  // Step 3: the call at node; a run code, or 1 to go on after the result
  // was put in.
  int FunctionStep(CalculatePara& para, ICalcTreeNode* node);
};

}  // namespace vkt
