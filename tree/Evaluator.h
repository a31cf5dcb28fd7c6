// tree/Evaluator.h: evaluation of a parsed tree, one step at a time. Not
// installed; nothing under include/ may include it.
//
// A tree is reduced in place. FindNextStep names the one step that can be
// done next, its caller does it, and the search starts again at the root.
// Steps that need nothing from outside are done here (ComputeNode) or by
// CCalcTreeNode::CollapseBracket; variables and function calls are the
// calculator's: it obtains their values and puts them in with ApplyValue.
// Because all state lies in the tree, a calculation can stop at any step and
// go on in a later call.
//
// Precedence is applied here, since the parser leaves every nesting level as
// a flat run; the ranks are those of tree/Operators.h. Values are texts or exact decimals (CGmp);
// a truth value is the number 1 or 0.
//
// Result kinds written by ComputeNode: 6 a number (every comparison and
// logical result too), 7 two texts joined, 1 a non-zero number divided by
// zero, which gives the text "∞" in a number node.
//
// Errors: every operand that an operator can't take is error 1003, with the
// node's expression text in its present state and no new position; mixed
// number and text with complex mode off is 1005 (CheckOperandKinds).
#pragma once

class CErrorCollector;
class ICalcTreeNode;

namespace vkt {

class CCalcTreeNode;

// What FindNextStep asks its caller to do.
enum : unsigned int {
  kStepNone = 0,      // nothing left: the tree is done
  kStepCompute = 1,   // ComputeNode on the node
  kStepVariable = 2,  // the variable (kind 5) needs its value
  kStepFunction = 3,  // the call (kind 3) has all its arguments as values
  kStepBracket = 4,   // CollapseBracket on the bracket around one thing
};

// Result kinds that ComputeNode writes.
enum : unsigned char {
  kResultInfinity = 1,  // a division by zero left "∞"
  kResultNumber = 6,
  kResultJoined = 7,
};

// The leftmost deepest step below or at node, children before their parent,
// so that variables and functions are asked for in source order. A childless
// node gives itself with step 2 when it is a variable, else null with step 0.
// On the way a node may change: an expression (kind 1) with one finished
// child takes its value, and of a call named "IF" (any case) whose condition
// is a value, the branch that won't be taken is emptied and made the number
// 0 before anything in it is asked for. step may be null. Chosen: no depth
// limit and no recursion; any depth is searched with the function's own
// stack.
ICalcTreeNode* FindNextStep(ICalcTreeNode* node, unsigned int* step);

// Step 1: computes the run of operands and operators of node, whose
// children are all values and operators. 1 on success; the node may still
// hold a comparison for the next step, and is a value otherwise. 0 on
// failure, with number and text in errors and the node as far as it got.
// format is the display format for numbers that become text beside a text
// (ConvertToDispFormat bits). resultKind may be null.
int ComputeNode(CCalcTreeNode* node, unsigned char format, unsigned char* resultKind,
                CErrorCollector* errors);

// The arithmetic and the one comparison of a run without logical
// operators. 1 on success: the node is a value, or keeps the three children
// of a comparison when the run had four or more at entry. 0 with
// *errorNumber 1003 on failure.
int ComputeRun(CCalcTreeNode* node, unsigned char format, unsigned char* resultKind,
               int* errorNumber);

// Decides what two values become for the operator op: two numbers, or two
// texts beside "+" or a comparison, are taken as they are. In complex mode
// texts that read as numbers (empty text included) become numbers; beside
// "+" or a comparison the numbers become texts otherwise, in display format.
// false refuses the pair: complex mode off, a text that is no number under
// "-", "*" or "/", or an operand that is no value.
bool CoerceOperands(CCalcTreeNode* left, CCalcTreeNode* op, CCalcTreeNode* right,
                    unsigned char format);

// The deepest call named "IF" on the chain that runs from node down through
// first children, node included; null when there is none.
CCalcTreeNode* FindIf(ICalcTreeNode* node);

}  // namespace vkt
