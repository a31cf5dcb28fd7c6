// tree/Operators.cpp: lookups over the operator table. The table is short
// and fixed, so a linear search is as fast as anything cleverer.
#include "tree/Operators.h"

namespace vkt {

namespace {

bool Matches(const CString& text, const char16_t* spelling, bool anyCase) {
  return anyCase ? text.CompareNoCase(spelling) == 0 : text == spelling;
}

bool UnitOfClass(char16_t c, OperatorClass cls) {
  for (const OperatorInfo& op : kOperators)
    if (op.cls == cls && !op.word)
      for (const char16_t* p = op.spelling; *p != 0; ++p)
        if (*p == c) return true;
  return false;
}

}  // namespace

const OperatorInfo* FindOperator(const CString& token) {
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
bool IsSingleOperatorUnit(char16_t c) { return UnitOfClass(c, OperatorClass::Arithmetic); }

bool IsComparisonUnit(char16_t c) { return UnitOfClass(c, OperatorClass::Comparison); }

}  // namespace vkt
