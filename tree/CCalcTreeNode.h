// tree/CCalcTreeNode.h: the one implementation of ICalcTreeNode, with the
// operations that only the library uses (parser, evaluator, calculator).
// Not installed; nothing under include/ may include it.
//
// Value state of a number node: bit 0 (kValueGmp) says the CGmp form is up
// to date, bit 1 (kValueText) that m_Text is. A new node has state 1 and no
// CGmp, and reads as the number 0 and the text "0". GetGmp makes the number
// from the text, GetValue and GetDispValue the text from the number, each at
// most once; whoever writes the text sets state 2, whoever changes the
// number in place sets state 1.
//
// Operator codes (m_OpCode) and spellings are those of tree/Operators.h;
// 0 on every other node; a change of kind does not clear it.
//
// Depth: the parser refuses nesting past kMaxNesting, so every tree made by
// a parse, a Clone of one or a re-parse stays below kMaxTreeDepth levels;
// recursive walks elsewhere (the evaluator's search, the parser's checks)
// rely on that. The walks of this class (destruction, Clone, writing,
// Travel, the collectors) are iterative and take any depth.
#pragma once

#include "ICalcTreeNode.h"
#include "platform/CString.h"
#include "tree/Operators.h"

class CGmp;
class CErrorCollector;

namespace vkt {

// Brackets and calls nested deeper than this are refused by the parser
// (error 1003 at the bracket; see tree/Parser.h).
constexpr int kMaxNesting = 256;
// A call costs two levels (the call and its argument node), plus the root
// and a leaf.
constexpr int kMaxTreeDepth = 2 * kMaxNesting + 2;

enum : unsigned char {
  kKindNothing = 0,
  kKindExpression = 1,
  kKindBracket = 2,
  kKindFunction = 3,
  kKindArgument = 4,
  kKindVariable = 5,
  kKindNumber = 6,
  kKindText = 7,
  kKindOperator = 8,
};

enum : unsigned char {
  kValueGmp = 1,   // the CGmp form is up to date
  kValueText = 2,  // m_Text is up to date
};

class CCalcTreeNode final : public ICalcTreeNode {
 public:
  // Both leave code 0, position 0, value state 1, empty text, no number.
  // The parent link is set here and nowhere else.
  explicit CCalcTreeNode(ICalcTreeNode* parent);  // kind 0
  CCalcTreeNode(ICalcTreeNode* parent, unsigned char kind);
  ~CCalcTreeNode() override;

  CCalcTreeNode(const CCalcTreeNode&) = delete;
  CCalcTreeNode& operator=(const CCalcTreeNode&) = delete;

  // ---- ICalcTreeNode, in slot order -----------------------------------
  ICalcTreeNode* Clone() override;
  int GetChildCount() const override;
  void DeleteChild(int index) override;
  void DeleteAllChildren() override;
  ICalcTreeNode* GetChild(int index) const override;
  ICalcTreeNode* GetParent() const override;
  void WriteExpression(CStringBuilder* out) override;     // tree/TreeText.cpp
  void GetExpression(CString& out) override;              // tree/TreeText.cpp
  void WriteFormula(CStringBuilder* out, int textNeighbour) override;  // tree/TreeText.cpp
  int CollectByKind(CCalcTreeNodeArray& out, unsigned char kind) override;
  void GetValueRounded(CString& out, int digits) override;
  void GetValue(CString& out, int attachQuotes, int formatQuotes) override;
  const char16_t* GetTextPtr() const override;
  void SetText(const char16_t* text) override;
  unsigned char GetKind() const override;
  void SetKind(unsigned char kind) override;
  int CountFunctions() override;
  void GetFuncNames(CStringArray& out) override;
  int GetFuncCall(CString& name, CStringArray& args, int rawStrings) override;
  void GetVarNames(CStringArray& out) override;
  int Travel(ICalcTreeTraveler* traveler, int includeSelf) override;
  int IsAncestorOf(ICalcTreeNode* other) override;
  int GetNodesOfLevel(CCalcTreeNodeArray& out, int level) override;

  // ---- Added operations, in slot order ----------------------------------
  // Deletes the children, empties the text, destroys the number, state 1.
  // Kind and code stay.
  virtual void Reset();
  // Appends without touching the child's parent link; the child's index
  // (-1 for a null child, which is not added).
  virtual int AddChild(ICalcTreeNode* child);
  // The number, made when missing and read from m_Text (strictness 2) when
  // its form is stale. Never null.
  virtual CGmp* GetGmp();
  // Takes ownership of gmp, state 1; makeText writes the text too (state 3).
  // Null makes the node the number 0: text "0", an empty CGmp, state 3.
  virtual void SetGmp(CGmp* gmp, int makeText);
  // GetValue for display: on a number node an empty text becomes "0" only
  // with format bit 6 (64), and a text is converted by ConvertToDispFormat
  // with bit 7 (128). The stored text changes, not only out.
  virtual void GetDispValue(CString& out, int attachQuotes, int formatQuotes, unsigned char format);
  virtual int HasCompareOrLogicChild();  // a direct child is such an operator
  // Text of unknown nature: kind 6 when it is a number that fits (and then
  // in canonical form), else kind 7. State 2.
  virtual void SetNumberText(const char16_t* text);
  virtual int IsCompareOperator();  // kind 8, code 1 to 6
  virtual int IsLogicOperator();    // kind 8, code 10, 11 or 12

  // ---- Not virtual ------------------------------------------------------
  // Kind, code, position, state, text and a copy of the number of source (no
  // number there destroys this node's). Children and parent stay.
  void CopyValueFrom(CCalcTreeNode* source);
  // A bracket with a first child takes that child's value and loses its
  // children; any other node is left alone.
  void CollapseBracket();
  // Puts a host's value in: a quoted text, a number or, for anything else,
  // an expression (kind 5, to be parsed again: result 1). Result 0 for a
  // finished value. The children are always deleted.
  int ApplyValue(const char16_t* text);
  // Over the direct children: count gets the number of comparison
  // operators; the index of the last one, or -1.
  int FindCompareOperator(int& count);
  // Stores token as the text, then the code: 1 for a known operator, 0 (code
  // untouched) for anything else. "and", "or", "not" in any case become
  // " and ", " or ", "!".
  int SetOperator(const CString& token);
  // Parses text into this node (tree/Parser.cpp); 1 or 0 with the failure
  // in errors. The "&&"/"||" padding may change text.
  int Parse(CString& text, CErrorCollector* errors);

  bool IsOperator() const { return m_Kind == kKindOperator; }

  // The node behind an interface pointer, or null when it is some other
  // implementation (there is none in the library).
  static CCalcTreeNode* From(ICalcTreeNode* node);

  // Fields in this order; the evaluator reads and writes them directly.
  unsigned char m_Kind;             // node kind, 0 to 8
  unsigned char m_OpCode;           // operator code; 0 off operators
  int m_Pos;                        // first unit in the source text; 0 if no parse made it
  CCalcTreeNodeArray m_Children;    // owned, in source order
  ICalcTreeNode* m_pParent;         // not owned; null at the root
  unsigned char m_ValueState;       // kValueGmp | kValueText
  CString m_Text;                   // name, number text, string or operator
  CGmp* m_pGmp;                     // owned; null until someone needs it

 private:
  void MakeStaleText();  // the text from the number when bit 1 is clear
};

}  // namespace vkt
