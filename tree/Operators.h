// tree/Operators.h: every operator of the formula language, in one table
// that the scanner, the node and the evaluator all read. Internal.
//
// Precedence, strongest first: brackets and calls (they are children),
// unary minus, then the arithmetic ranks from the highest down, then the one
// comparison a run may hold, then "!" on the piece behind it, then "&&" and
// "||" of equal rank from left to right.
#pragma once

#include "platform/CString.h"

namespace vkt {

// Operator codes (a node's m_OpCode); 0 on every other node.
enum : unsigned char {  // below 64
  kOpEqual = 1,
  kOpGreater = 2,
  kOpLess = 3,
  kOpGreaterEqual = 4,
  kOpLessEqual = 5,
  kOpNotEqual = 6,
  kOpAnd = 10,
  kOpOr = 11,
  kOpNot = 12,
  kOpMul = 42,
  kOpAdd = 43,
  kOpSub = 45,
  kOpDiv = 47,
};

enum class OperatorClass : unsigned char { Arithmetic, Comparison, Logical };

struct OperatorInfo {
  const char16_t* spelling;  // as written; a word matches in any case
  const char16_t* stored;    // the node's text once recognised
  unsigned char code;        // the node's m_OpCode
  OperatorClass cls;
  unsigned char rank;        // higher binds tighter; equal ranks go left to right
  bool word;                 // "and", "or", "not": spelled with letters
  bool numbersOnly;          // refuses texts that are no numbers ("a"-1), even in complex mode
};

constexpr unsigned char kRankProduct = 4;  // * /
constexpr unsigned char kRankSum = 3;      // + -
constexpr unsigned char kRankCompare = 2;
constexpr unsigned char kRankLogical = 1;  // "!" binds to the piece behind it before && and ||

inline constexpr OperatorInfo kOperators[] = {
    {u"*", u"*", kOpMul, OperatorClass::Arithmetic, kRankProduct, false, true},
    {u"/", u"/", kOpDiv, OperatorClass::Arithmetic, kRankProduct, false, true},
    {u"+", u"+", kOpAdd, OperatorClass::Arithmetic, kRankSum, false, false},  // also joins texts
    {u"-", u"-", kOpSub, OperatorClass::Arithmetic, kRankSum, false, true},   // also unary
    {u"=", u"=", kOpEqual, OperatorClass::Comparison, kRankCompare, false, false},
    {u">", u">", kOpGreater, OperatorClass::Comparison, kRankCompare, false, false},
    {u"<", u"<", kOpLess, OperatorClass::Comparison, kRankCompare, false, false},
    {u">=", u">=", kOpGreaterEqual, OperatorClass::Comparison, kRankCompare, false, false},
    {u"<=", u"<=", kOpLessEqual, OperatorClass::Comparison, kRankCompare, false, false},
    {u"<>", u"<>", kOpNotEqual, OperatorClass::Comparison, kRankCompare, false, false},
    {u"!", u"!", kOpNot, OperatorClass::Logical, kRankLogical, false, false},
    {u"not", u"!", kOpNot, OperatorClass::Logical, kRankLogical, true, false},
    {u"&&", u"&&", kOpAnd, OperatorClass::Logical, kRankLogical, false, false},
    {u"and", u" and ", kOpAnd, OperatorClass::Logical, kRankLogical, true, false},
    {u"||", u"||", kOpOr, OperatorClass::Logical, kRankLogical, false, false},
    {u"or", u" or ", kOpOr, OperatorClass::Logical, kRankLogical, true, false},
};

// Two-unit spellings the scanner reads as another operator; the node never
// sees them (SetOperator refuses "!=").
struct OperatorAlias {
  const char16_t* spelling;
  const char16_t* means;
};
inline constexpr OperatorAlias kOperatorAliases[] = {{u"!=", u"<>"}, {u"==", u"="}};

// The row spelled `token`: symbols exactly, words in any case. Null for
// anything else.
const OperatorInfo* FindOperator(const CString& token);

// The row whose stored text is `text` (words in any case), as a logical
// piece of a run is read back from its operator's text. Null otherwise.
const OperatorInfo* FindStoredOperator(const CString& text);

// The first row with this code; null for 0 and unknown codes.
const OperatorInfo* OperatorOfCode(unsigned char code);

bool IsComparisonCode(unsigned char code);
bool IsLogicalCode(unsigned char code);

namespace detail {

// For each ASCII unit, bit 1 when it spells part of an arithmetic operator,
// bit 2 for a comparison, bit 4 when doubled it spells a logical one, bit 8
// when a spelling starts with it: built from the table at compile time,
// since the scanner asks for every unit of a formula.
constexpr unsigned char kArithmeticBit = 1;
constexpr unsigned char kComparisonBit = 2;
constexpr unsigned char kDoubledLogicalBit = 4;
constexpr unsigned char kFirstUnitBit = 8;  // some spelling starts with it (words in lower case)

struct UnitClasses {
  unsigned char bits[128] = {};
  constexpr UnitClasses() {
    for (const OperatorInfo& op : kOperators) {
      bits[op.spelling[0]] |= kFirstUnitBit;
      if (op.word) continue;
      const unsigned char bit = op.cls == OperatorClass::Arithmetic   ? kArithmeticBit
                                : op.cls == OperatorClass::Comparison ? kComparisonBit
                                                                      : 0;
      for (const char16_t* p = op.spelling; *p != 0; ++p) bits[*p] |= bit;
      const char16_t* t = op.spelling;
      if (op.cls == OperatorClass::Logical && t[0] != 0 && t[1] == t[0] && t[2] == 0)
        bits[t[0]] |= kDoubledLogicalBit;
    }
  }
};
inline constexpr UnitClasses kUnitClasses;

inline bool UnitHas(char16_t c, unsigned char bit) { return c < 128 && (kUnitClasses.bits[c] & bit) != 0; }

}  // namespace detail

// Units the scanner reads as operators: those that stand alone and end any
// token (+ - * /), and those that combine into a comparison (= > <). Every
// arithmetic operator is one unit that no longer spelling starts with.
inline bool IsSingleOperatorUnit(char16_t c) { return detail::UnitHas(c, detail::kArithmeticBit); }
inline bool IsComparisonUnit(char16_t c) { return detail::UnitHas(c, detail::kComparisonBit); }
// Units that, doubled, spell a logical operator ("&&", "||"). The scanner
// reads them as word units, so the parser pads such pairs with blanks first.
inline bool IsDoubledLogicalUnit(char16_t c) { return detail::UnitHas(c, detail::kDoubledLogicalBit); }

}  // namespace vkt
