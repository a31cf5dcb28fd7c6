// tree/Parser.h: the checks that the parser runs over a finished parse and
// that the calculator and evaluator run again on trees they changed. The
// parse itself is CCalcTreeNode::Parse and the CUtilityCalc entries.
// Not installed.
//
// Error numbers of the parser, left in the CErrorCollector:
//   1000  a function name before "(" is not a valid name
//   1001  a name that starts with digits goes on with something else
//   1003  syntax error; also nesting deeper than kMaxNesting and a NUL unit
//   1005  number and text mixed among operands while complex mode is off
//   1068  a word is neither a number nor a valid variable name
//   1070  brackets don't match
// Positions count 16-bit units of the text as the scanner sees it, after
// the padding of "&&" and "||".
#pragma once

class CErrorCollector;
class ICalcTreeNode;

namespace vkt {

constexpr int kErrBadFuncName = 1000;
constexpr int kErrDigitsInName = 1001;
constexpr int kErrSyntax = 1003;
constexpr int kErrMixedKinds = 1005;
constexpr int kErrBadVarName = 1068;
constexpr int kErrBrackets = 1070;

// CheckOperandKinds on node, CheckOperandKindsDeep on each child, then
// CheckGrammar; 1 or 0 at the first failure.
int CheckTree(ICalcTreeNode* node, CErrorCollector* errors);

// With complex mode off, the direct children of kinds 6 and 7 must all be of
// one kind; else error 1005. While the collector has a source text or a
// current node, the position is that of the first child of the other kind
// and the text is made from the collector's context; otherwise the position
// stays and the node's expression text is the error's argument. In complex
// mode: 1 always. errors may be null.
int CheckOperandKinds(ICalcTreeNode* node, CErrorCollector* errors);
// CheckOperandKinds on node and on every node below it.
int CheckOperandKindsDeep(ICalcTreeNode* node, CErrorCollector* errors);

// The well-formedness of the flat runs of operands and operators, error
// 1003 at the node named by the failing rule.
int CheckGrammar(ICalcTreeNode* node, CErrorCollector* errors);

}  // namespace vkt
