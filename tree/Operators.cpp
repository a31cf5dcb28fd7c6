// tree/Operators.cpp: lookups over the operator table. The table is short
// and fixed, so a linear search by text or code is as fast as anything
// cleverer; the scanner's per-unit tests are inline in the header.
#include "tree/Operators.h"

#include <iterator>

namespace vkt {

namespace {

char16_t FoldAscii(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

// The first unit decides most misses cheaply; words are spelled in lower
// case in the table.
bool Matches(const CString& text, const char16_t* spelling, bool anyCase) {
  const char16_t first = text.GetString()[0];
  if ((anyCase ? FoldAscii(first) : first) != spelling[0]) return false;
  return anyCase ? text.CompareNoCase(spelling) == 0 : text == spelling;
}

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
  if (!detail::UnitHas(FoldAscii(token.GetString()[0]), detail::kFirstUnitBit)) return nullptr;
  for (const OperatorInfo& op : kOperators)
    if (Matches(token, op.spelling, op.word)) return &op;
  return nullptr;
}

const OperatorInfo* FindStoredOperator(const CString& text) {
  for (const OperatorInfo& op : kOperators)
    if (Matches(text, op.stored, op.word)) return &op;
  return nullptr;
}

// The first row of each code, as an index plus one (0: no operator): the
// evaluator asks for every operator of every run.
struct CodeRows {
  unsigned char rows[64] = {};
  constexpr CodeRows() {
    for (int i = static_cast<int>(std::size(kOperators)) - 1; i >= 0; --i)
      rows[kOperators[i].code] = static_cast<unsigned char>(i + 1);
  }
};
constexpr CodeRows kCodeRows;

const OperatorInfo* OperatorOfCode(unsigned char code) {
  if (code >= std::size(kCodeRows.rows) || kCodeRows.rows[code] == 0) return nullptr;
  return &kOperators[kCodeRows.rows[code] - 1];
}

bool IsComparisonCode(unsigned char code) {
  const OperatorInfo* op = OperatorOfCode(code);
  return op != nullptr && op->cls == OperatorClass::Comparison;
}

bool IsLogicalCode(unsigned char code) {
  const OperatorInfo* op = OperatorOfCode(code);
  return op != nullptr && op->cls == OperatorClass::Logical;
}


}  // namespace vkt
