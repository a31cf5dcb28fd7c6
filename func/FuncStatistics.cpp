// func/FuncStatistics.cpp: the variance functions and sumdim, both in exact
// CGmp arithmetic.
//
// The eight variance functions run one engine with a mode number whose bits
// say what the name says: bit 0 the population formula (a final p), bit 1
// no square root (var rather than stdev), bit 2 text counted as a value (a
// final a). Unlike sum they decide for each argument whether it counts, and
// a series they cannot evaluate gives an empty text result, never a failure.
//
// sumdim adds lists of numbers element by element and answers a list in the
// look of its input: the separator, the blanks around it and, per column,
// the most decimals any of its pieces had.
#include <algorithm>
#include <vector>

#include "CFuncItem.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "foundation/CStringBuilder.h"
#include "func/BuiltinTable.h"
#include "platform/WideRuntime.h"

namespace vkt::func {

namespace {

constexpr int kPopulation = 1;  // divide by n, not n - 1
constexpr int kNoRoot = 2;      // the variance itself
constexpr int kTextCounts = 4;  // a word is a value: "true" 1, anything else 0

// Fills strResult with the deviation or variance of the arguments that
// count, or leaves it empty when they do not make a series.
void RunVariance(CFuncPara* para, int mode) {
  para->strResult.Empty();
  std::vector<CGmp> values;
  values.reserve(static_cast<std::size_t>(para->arrArgs.GetSize()));
  for (int i = 0; i < para->arrArgs.GetSize(); ++i) {
    const char16_t* entry = para->arrArgs[i].GetString();
    // Chosen: only the empty text is dropped here. Blanks alone pass as a
    // number and count as a zero, in every mode.
    if (*entry == 0) continue;
    if (CUtilityCalc::IsPureNumber(entry, 1, CGmp::CheckStrict_Normal, 1)) {
      values.emplace_back(entry);  // 1,234 is 1234
    } else if ((mode & kTextCounts) != 0) {
      // A null number stands for the zero of a word; it adds nothing to the
      // sum but counts in n.
      values.emplace_back(vkt::_wcsicmp(entry, u"true") == 0 ? CGmp(1) : CGmp());
    }
  }
  if (values.empty()) return;
  int n = static_cast<int>(values.size());
  // The mean is cut at CGmp's decimal limit like any of its divisions.
  CGmp mean;
  for (CGmp& value : values) mean.add(&value);
  mean /= n;
  CGmp squares;
  for (CGmp& value : values) {
    CGmp deviation(value);
    deviation -= mean;
    deviation *= deviation;  // a zero deviation squares to null and adds nothing
    squares.add(&deviation);
  }
  if ((mode & kPopulation) == 0 && --n < 1) return;  // one value has no sample deviation
  squares /= n;
  if ((mode & kNoRoot) == 0) squares.sqrt();
  para->SetResult(squares);
}

// Chosen: the mode is a template argument, so that each of the eight names
// has a plain body of the common signature.
template <int kMode>
int Variance(CFuncPara* para, int argc) {
  if (argc == 0) return 0;
  RunVariance(para, kMode);
  if (para->strResult.IsEmpty()) para->nResultKind = 1;
  return 1;
}

int SumDimBody(CFuncPara* para, int argc) {
  if (argc == 0) return 0;
  CUtilityCalc::SumDim(para->strResult, para->arrArgs);
  if (!para->strResult.IsEmpty()) CUtilityCalc::Attach_Quotes(para->strResult, 1);
  return 1;
}

// In the order of the built-in table; the modes run from stdev 0 to varpa 7.
constexpr BuiltinBody kStatisticsBodies[] = {
    {u"stdev", &Variance<0>},
    {u"stdeva", &Variance<kTextCounts>},
    {u"stdevp", &Variance<kPopulation>},
    {u"stdevpa", &Variance<kTextCounts | kPopulation>},
    {u"sumdim", &SumDimBody},
    {u"var", &Variance<kNoRoot>},
    {u"vara", &Variance<kTextCounts | kNoRoot>},
    {u"varp", &Variance<kNoRoot | kPopulation>},
    {u"varpa", &Variance<kTextCounts | kNoRoot | kPopulation>},
};

}  // namespace

std::span<const BuiltinBody> StatisticsBodies() { return kStatisticsBodies; }

}  // namespace vkt::func

namespace {

bool IsNumberUnit(char16_t c) { return vkt::iswdigit(c) || c == u'.' || c == u'-'; }

// The separator as the last argument shows it: the units between its first
// and its second number, blanks at both ends stripped.
CString SeparatorBetweenNumbers(const CString& last) {
  CString separator;
  int state = 0;  // 0 nothing seen, 1 in the first number, 2 in the separator
  for (int i = 0; i < last.GetLength(); ++i) {
    const char16_t c = last.GetAt(i);
    if (IsNumberUnit(c)) {
      if (state == 2) break;
      state = 1;
    } else if (state != 0) {
      separator += c;
      state = 2;
    }
  }
  separator.Trim(u' ');
  return separator;
}

// Blanks (U+0020 only) that TrimLeft or TrimRight take off the piece.
int TrimBlanks(CString& piece, bool left) {
  const int before = piece.GetLength();
  if (left) {
    piece.TrimLeft(u' ');
  } else {
    piece.TrimRight(u' ');
  }
  return before - piece.GetLength();
}

void AppendBlanks(CStringBuilder& out, int count) {
  for (int i = 0; i < count; ++i) out.Append(static_cast<WORD>(u' '));
}

}  // namespace

// A blank alone never separates: stripped to nothing, it makes the whole
// last argument the separator. That argument is then a value only when it
// is a pure number (no separator at all), and otherwise takes no part in
// the sum: sumdim('1|2', '3|4', '|').
void CUtilityCalc::SumDim(CString& result, CStringArray& args) {
  result.Empty();
  const int count = args.GetSize();
  if (count == 0) return;
  CString separator = SeparatorBetweenNumbers(args[count - 1]);
  int values = count;
  if (separator.IsEmpty()) {
    separator = args[count - 1];
    if (IsPureNumber(separator.GetString(), 0, CGmp::CheckStrict_Normal, 0)) {
      separator.Empty();
    } else {
      values = count - 1;
    }
  }

  std::vector<CGmp> columns;  // null until a non-zero piece arrives
  std::vector<int> decimals;
  int blanksBefore = 0;  // the most blanks seen in front of a separator
  int blanksAfter = 0;   // and behind one
  CStringArray pieces;
  for (int i = 0; i < values; ++i) {
    if (separator.IsEmpty()) {
      pieces.RemoveAll();
      pieces.Add(args[i]);
    } else {
      CString2Array(pieces, args[i].GetString(), separator.GetString(), 0);
    }
    const int width = pieces.GetSize();
    if (static_cast<std::size_t>(width) > columns.size()) {
      columns.resize(static_cast<std::size_t>(width));
      decimals.resize(static_cast<std::size_t>(width), 0);
    }
    for (int j = 0; j < width; ++j) {
      CString piece(pieces[j]);
      const int left = TrimBlanks(piece, true);
      const int right = TrimBlanks(piece, false);
      if (j != 0) blanksAfter = std::max(blanksAfter, left);
      if (j != width - 1) blanksBefore = std::max(blanksBefore, right);
      const std::size_t column = static_cast<std::size_t>(j);
      decimals[column] = std::max(decimals[column], GetDecLen(piece));
      CGmp value(piece.GetString());
      columns[column].add(&value);
    }
  }

  CStringBuilder out(512);
  CString text;
  for (std::size_t column = 0; column < columns.size(); ++column) {
    if (column != 0) {
      AppendBlanks(out, blanksBefore);
      out.Append(separator);
      AppendBlanks(out, blanksAfter);
    }
    columns[column].GetString(text, decimals[column], 0);
    out.Append(text);
  }
  out.GetStr(result);
}
