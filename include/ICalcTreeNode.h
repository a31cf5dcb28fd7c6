// ICalcTreeNode.h: the expression tree as hosts see it.
//
// A parse gives a tree of ICalcTreeNode; calculation reduces that same tree
// in place until the root holds the result, and hosts walk, rename and write
// it through the operations below. The order of the virtual operations is
// part of the interface.
//
// Node kinds (GetKind): 0 nothing, 1 expression, 2 bracket, 3 function call
// (text: the name), 4 argument of a call, 5 variable or cell (text: the name),
// 6 number, 7 text string (without its quotes), 8 operator (text: the
// operator). A finished value has kind 6 or 7.
//
// A parent owns its children: deleting the root deletes the whole tree, and
// whoever cuts a child out of a live tree uses DeleteChild or
// DeleteAllChildren. Index errors are absorbed: GetChild gives null and
// DeleteChild does nothing for an index outside.
#pragma once

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"

class CStringBuilder;
class ICalcTreeNode;

// The arrays CollectByKind and GetNodesOfLevel fill. They hold pointers into
// the tree and own nothing.
typedef CArray<ICalcTreeNode*, ICalcTreeNode*> CCalcTreeNodeArray;

// A host's visitor for ICalcTreeNode::Travel.
class VKTCALC_API ICalcTreeTraveler {
 public:
  virtual ~ICalcTreeTraveler() {}
  // Called for each node, parent before children, left to right. Non-zero
  // ends the walk at once. The traveller may change the node it is given,
  // but must not delete it or its siblings.
  virtual int Traveling(ICalcTreeNode* node) = 0;
};

class VKTCALC_API ICalcTreeNode {
 public:
  // Destroys the number, then all children; never unlinks from the parent.
  virtual ~ICalcTreeNode() {}

  // A deep copy with a null parent, independent of this tree: it can be
  // calculated without harming its source.
  virtual ICalcTreeNode* Clone() = 0;
  virtual int GetChildCount() const = 0;
  virtual void DeleteChild(int index) = 0;  // destroys it and closes the gap
  virtual void DeleteAllChildren() = 0;
  virtual ICalcTreeNode* GetChild(int index) const = 0;  // null outside
  virtual ICalcTreeNode* GetParent() const = 0;          // null at the root

  // The subtree as expression text, which the parser reads back: no blanks
  // but those of " and " and " or ", strings escaped in quotes, a negative
  // number behind the first place of a run in brackets.
  virtual void WriteExpression(CStringBuilder* out) = 0;
  virtual void GetExpression(CString& out) = 0;
  // The subtree as spreadsheet formula text: strings always in double
  // quotes, and a "+" that touches a string (textNeighbour non-zero for
  // this node) written as " & ".
  virtual void WriteFormula(CStringBuilder* out, int textNeighbour) = 0;
  // Appends every node of the kind in the subtree, this one included, in
  // pre-order; gives the size of the array afterwards.
  virtual int CollectByKind(CCalcTreeNodeArray& out, unsigned char kind) = 0;

  // GetValue without quotes; a number node with digits other than -1 is
  // rounded half up to that many decimals.
  virtual void GetValueRounded(CString& out, int digits) = 0;
  // The value as text. A number node gives its decimal text, "0" when it has
  // none. A text node is escaped first (formatQuotes), then enclosed in
  // quotes (attachQuotes); every other kind gives its text unchanged.
  virtual void GetValue(CString& out, int attachQuotes, int formatQuotes) = 0;
  virtual const char16_t* GetTextPtr() const = 0;  // the raw text; never null
  // Stores text: enclosing quotes and escapes are taken off, each
  // backslash-r-backslash-n becomes CR LF. The kind is not changed.
  virtual void SetText(const char16_t* text) = 0;
  virtual unsigned char GetKind() const = 0;
  virtual void SetKind(unsigned char kind) = 0;  // the kind and nothing else

  virtual int CountFunctions() = 0;  // kind-3 nodes of the subtree
  // Empties out, then gives the names of the calls (variables) of the
  // subtree in pre-order, each once regardless of case; the first spelling
  // stays.
  virtual void GetFuncNames(CStringArray& out) = 0;
  // For a call (kind 3): its name and one text per argument, strings quoted
  // unless rawStrings; 1. Any other node: 0, nothing changed.
  virtual int GetFuncCall(CString& name, CStringArray& args, int rawStrings) = 0;
  virtual void GetVarNames(CStringArray& out) = 0;

  // Gives each node of the subtree (this one only with includeSelf) to the
  // traveller, parent before children; 1 when the traveller ended the walk.
  virtual int Travel(ICalcTreeTraveler* traveler, int includeSelf) = 0;
  // 1 when this node lies on the parent chain of other (other itself and
  // null give 0).
  virtual int IsAncestorOf(ICalcTreeNode* other) = 0;
  // Clears out and fills it with the nodes exactly `level` steps below this
  // one, left to right; their number. A level below 1 gives 0.
  virtual int GetNodesOfLevel(CCalcTreeNodeArray& out, int level) = 0;
};
