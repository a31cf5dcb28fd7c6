// tree/Parser.h: the checks that the parser runs over a finished parse and
// that the calculator and evaluator run again on trees they changed. The
// parse itself is CCalcTreeNode::Parse and the CUtilityCalc entries.
// Not installed.
//
// The parser leaves the numbers of tree/ErrorNumbers.h from kErrBadFuncName
// to kErrBrackets in the CErrorCollector; nesting deeper than kMaxNesting and
// a NUL unit are kErrSyntax too. Positions count 16-bit units of the text as the scanner sees it, after
// the padding of "&&" and "||".
#pragma once

#include "tree/ErrorNumbers.h"

class CErrorCollector;
class ICalcTreeNode;

namespace vkt {

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
