// tree/Operators.cpp: lookups over the operator table. The table is short
// and fixed, so a linear search by text or code is as fast as anything
// cleverer; only the scanner's per-unit test gets a precomputed map.
#include "tree/Operators.h"

namespace vkt {

namespace {

bool Matches(const CString& text, const char16_t* spelling, bool anyCase) {
  return anyCase ? text.CompareNoCase(spelling) == 0 : text == spelling;
}

// For each ASCII unit, bit 1 when it spells part of an arithmetic operator,
// bit 2 for a comparison, bit 4 when doubled it spells a logical one: built
// from the table at compile time, since the scanner asks for every unit of
// a formula.
constexpr unsigned char kArithmeticBit = 1;
constexpr unsigned char kComparisonBit = 2;
constexpr unsigned char kDoubledLogicalBit = 4;

struct UnitClasses {
  unsigned char bits[128] = {};
  constexpr UnitClasses() {
    for (const OperatorInfo& op : kOperators) {
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
constexpr UnitClasses kUnitClasses;

bool UnitHas(char16_t c, unsigned char bit) { return c < 128 && (kUnitClasses.bits[c] & bit) != 0; }

}  // namespace

// The longest spelling: longer tokens (most names and numbers) are no
// operator, without a look at the table.
constexpr int kLongestSpelling = [] {
  int longest = 0;
  for (const OperatorInfo& op : kOperators) {
    int n = 0;
    while (op.spelling[n] != 0) ++n;
    longest = n > longest ? n : longest;
  }
  return longest;
}();

const OperatorInfo* FindOperator(const CString& token) {
  if (token.IsEmpty() || token.GetLength() > kLongestSpelling) return nullptr;
  for (const OperatorInfo& op : kOperators)
    if (Matches(token, op.spelling, op.word)) return &op;
  return nullptr;
}

const OperatorInfo* FindStoredOperator(const CString& text) {
  for (const OperatorInfo& op : kOperators)
    if (Matches(text, op.stored, op.word)) return &op;
  return nullptr;
}

const OperatorInfo* OperatorOfCode(unsigned char code) {
  for (const OperatorInfo& op : kOperators)
    if (op.code == code) return &op;
  return nullptr;
}

bool IsComparisonCode(unsigned char code) {
  const OperatorInfo* op = OperatorOfCode(code);
  return op != nullptr && op->cls == OperatorClass::Comparison;
}

bool IsLogicalCode(unsigned char code) {
  const OperatorInfo* op = OperatorOfCode(code);
  return op != nullptr && op->cls == OperatorClass::Logical;
}

// Every arithmetic operator is one unit that no longer spelling starts with.
bool IsSingleOperatorUnit(char16_t c) { return UnitHas(c, kArithmeticBit); }

bool IsComparisonUnit(char16_t c) { return UnitHas(c, kComparisonBit); }

bool IsDoubledLogicalUnit(char16_t c) { return UnitHas(c, kDoubledLogicalBit); }

}  // namespace vkt
