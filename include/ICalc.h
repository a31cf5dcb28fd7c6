// ICalc.h: the calculator, which drives one parsed tree to its result, and
// CalculatePara, the state of one calculation run.
//
// The run is a loop on the host's side. Calculate reduces the tree in place
// as far as it can and gives a run code:
//    0  finished: the root holds the result (root->GetValue(text, 0, 0)) and
//       nResultKind says what it is;
//   -1  failed: the error collector holds the error; pCurrent is the failing
//       node and the tree can't be calculated further. Only when memory ran
//       out making the function manager is nError left at 0;
//    2  a variable is needed: its name is in strResult, its node in pCurrent;
//    3  a function is to be computed by the host: strResult holds its name
//       and each argument, one to a line, joined by CR LF (text arguments in
//       quotes); pCurrent is the call's node;
//    6  the function manager's gate held the call at pCurrent back
//       (CFuncMnger::CallFunc); strResult is empty.
// Every code but 0 leaves nResultKind at 0. On 2 and 3 the host finds the
// value and calls SetNodeValue(para.pRoot, para.pCurrent, value, para.pError,
// para.pTrace), then Calculate again. The library never calls the host for a
// value; only function bodies, the script host and the language interface
// are called during a run.
//
// Who owns what: the host owns the calculator (delete), the collectors, the
// CalculatePara and every tree. A calculator destroys its function manager
// only when it made the manager itself. Calculation uses a tree up: to
// compute again, parse anew or calculate a Clone.
//
// Threads: a tree with its CalculatePara and collectors belongs to one thread
// at a time. One calculator may serve several threads at once once it has
// its manager; the first GetFuncMnger must not race.
//
// The order of the fields and of the virtual operations is part of the
// interface.
#pragma once

#include "VKTCalcExport.h"
#include "platform/CString.h"

class CErrorCollector;
class CFuncMnger;
class CTraceCollector;
class ICalcTreeNode;
class IInvokeJS;

// The state of one run, filled by the host and copied member by member.
class VKTCALC_API CalculatePara {
 public:
  // pTrace and pCurrent null, nResultKind 0, strResult empty. The host must
  // set pError, pRoot, bCheckGate and nDispFormat before the first call.
  // Chosen: those four start at null and 0 as well, so that a forgotten one
  // is a null pointer rather than garbage.
  CalculatePara();

  CTraceCollector* pTrace;     // host, optional: the trace; null for none
  CErrorCollector* pError;     // host, required: receives errors; null gives -1
  ICalcTreeNode* pRoot;        // host, required: the tree
  int bCheckGate;              // host: passed on to CFuncMnger::CallFunc
  unsigned char nDispFormat;   // host: display bits for numbers that become text
  // Set by Calculate: after code 0 the kind written by the last step (a
  // function's result kind; 6 number, 7 joined text, 1 a division by zero),
  // or with no step at all 6 for a number root, 1 for a text root, else the
  // value it had before: Calculate does not clear it at its start.
  unsigned char nResultKind;
  CString strResult;           // set by Calculate: what the host is asked for
  ICalcTreeNode* pCurrent;     // set by Calculate: the node of the last step
};

class VKTCALC_API ICalc {
 public:
  ICalc();
  ICalc(const ICalc& other);
  ICalc& operator=(const ICalc& other);
  virtual ~ICalc();

  // The function manager; made with CFuncMnger::NewFuncMnger and owned by the
  // calculator when none was given to NewCalc. Null only when memory runs out.
  virtual CFuncMnger* GetFuncMnger() = 0;

  // Puts a value into node and gives 1, or 0 on failure with the error in
  // errors. root must be the tree's root; errors and trace may be null. The
  // value may be a number (as CUtilityCalc::IsPureNumber(value, 1, 0, 0)
  // takes it), a text in a matching pair of quotes, an empty string (an
  // empty text), or anything else, which is an expression: it replaces the
  // node in the tree's text and the whole tree is parsed again, after which
  // every node pointer into the tree, pCurrent among them, is stale. A value
  // delivered to a function call counts up errors->pFuncCounter atomically;
  // a trace in mode 1 receives the whole expression after the value is in.
  virtual int SetNodeValue(ICalcTreeNode* root, ICalcTreeNode* node, CString& value,
                           CErrorCollector* errors, CTraceCollector* trace) = 0;

  // One call of the run: see the run codes above. "@language" and "@lgg", in
  // any case, are answered without a stop with the current language number.
  virtual int Calculate(CalculatePara& para) = 0;

  // What kind of value the surroundings of a variable expect: 1 text,
  // 2 number, 0 nothing known. Asked of the node, then of its parent and so
  // on upward: a function's parameter kinds, then any operator other than
  // "+" beside it.
  virtual unsigned char GetVarExpectedKind(ICalcTreeNode* node) = 0;
};

// A new calculator, or null when memory can't be had. Either argument may be
// null: without a manager the calculator makes its own at first need. The
// caller destroys the calculator with delete.
VKTCALC_API ICalc* NewCalc(CFuncMnger* funcMnger, IInvokeJS* scriptHost);
