// CTraceCollector.h: how a calculation went, for a host that shows the steps
// to a user or stores them. Not a log: the host owns the collector, passes it
// in CalculatePara::pTrace and reads the result with GetString.
//
// Modes (nMode, set by the host directly):
//   0  off: every recording call is ignored;
//   1  expression lines: after each value put into the tree, the calculator
//      appends the whole expression as text to sbLines, followed by CR LF,
//      so the lines show the expression shrinking step by step;
//   2  name and value pairs: one entry in arrNames and arrValues for each
//      function and variable whose value was delivered.
// Calls in the wrong mode are ignored, so a host can leave all its calls in
// place and turn the trace on and off by nMode alone.
//
// String form of mode 2: records joined by "!+-/*AbCbE", each record the
// name, "!AbCbE+-/*" and the value; no separator before the first record or
// behind the last. The two separators stand in for escaping: an entry that
// contains one of them cannot be restored. A function's name side is its
// call as text, "name(arg1, arg2)", and "name( )" without arguments.
//
// The order of the fields and of the virtual operations is part of the
// interface.
#pragma once

#include "VKTCalcExport.h"
#include "foundation/CStringBuilder.h"
#include "platform/Arrays.h"
#include "platform/CString.h"

class CFuncPara;

// The class has virtual operations but deliberately no virtual destructor:
// hosts compile against this exact table, with the recording operations in
// its first four slots. Hosts never delete a collector through a pointer to a
// class derived from it.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

class VKTCALC_API CTraceCollector {
 public:
  CTraceCollector();  // mode 0, empty builder of 512 bytes, empty arrays
  ~CTraceCollector();

  CTraceCollector(const CTraceCollector&) = delete;
  CTraceCollector& operator=(const CTraceCollector&) = delete;

  // Mode 2: records para's name, arguments and result (the three-part form).
  virtual void Func_Calced(CFuncPara& para);
  // Mode 2 with a non-empty call: call is the text of code 3 (the name and
  // each argument on a line of its own, lines joined by CR LF); the first
  // line is the name, the others are the arguments.
  virtual void Func_Calced(CString& call, CString& value);
  // Mode 2 with a non-empty name: appends "name(a, b)" (or "name( )") to
  // arrNames and value to arrValues.
  virtual void Func_Calced(CString& name, CStringArray& args, CString& value);
  // Mode 2: appends name and value as they are.
  virtual void Var_Calced(CString& name, CString& value);

  // Empties the arrays and the builder in every mode; then, with a non-empty
  // text, restores mode 1 (the builder takes the text) or mode 2 (the
  // records that hold the side separator; others are skipped).
  void InitString(const char16_t* text);
  // Mode 1: the builder's text. Mode 2: the string form above (empty when
  // there are no records). Mode 0: out is left as it was.
  void GetString(CString& out);

  int nMode;                // 0 off, 1 expression lines, 2 name and value pairs
  CStringBuilder sbLines;   // mode 1: the expressions, each ended by CR LF
  CStringArray arrNames;    // mode 2: left sides
  CStringArray arrValues;   // mode 2: right sides, parallel to arrNames
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
