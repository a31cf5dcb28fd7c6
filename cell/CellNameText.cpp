// cell/CellNameText.cpp: cell and range names (B7, AA12, @C3, B2:D9) to
// CRowCol and CRowCols and back.
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <string_view>

#include "CRowCol.h"
#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "platform/Config.h"
#include "platform/Sync.h"
#include "platform/WideRuntime.h"

namespace {

constexpr int kLetters = 26;
constexpr int kNameUnits = 3;                           // two letters and a terminator
constexpr int kTableEntries = kLetters + kLetters * kLetters;  // A to ZZ
constexpr unsigned kMaxWritableCol = 699;               // ZX
constexpr unsigned kMaxWritableRow = 999999;            // written 1000000

// The column of an upper-case letter A to Z, else -1.
int LetterValue(char16_t ch) {
  char16_t upper = vkt::towupper(ch);
  return upper >= u'A' && upper <= u'Z' ? upper - u'A' : -1;
}

bool Holds(const char16_t* text, char16_t ch) {
  return std::u16string_view(text).find(ch) != std::u16string_view::npos;
}

// The table of column names, built once and never freed. Readers that find
// it published take no lock.
std::atomic<const char16_t*> g_colNames{nullptr};
CCritSec g_colNamesLock;

const char16_t* BuildColNames() {
  auto* table = static_cast<char16_t*>(std::calloc(kTableEntries * kNameUnits, sizeof(char16_t)));
  if (!table) vkt::platform::ThrowOutOfMemory();
  char16_t* entry = table;
  for (int first = 0; first < kLetters; ++first, entry += kNameUnits) entry[0] = u'A' + first;
  for (int first = 0; first < kLetters; ++first) {
    for (int second = 0; second < kLetters; ++second, entry += kNameUnits) {
      entry[0] = u'A' + first;
      entry[1] = u'A' + second;
    }
  }
  return table;
}

// Reads the written row behind a name's first digit: one-based text, so
// "7" is row 6. _wtoi saturates, so a digit run past 32 bits stays positive.
int ReadRow(const char16_t* digits) { return vkt::_wtoi(digits) - 1; }

}  // namespace

int CUtilityCalc::ColName2Col(const char16_t* name, int bMacro) {
  if (!name) return -1;
  if (bMacro && *name == u'@') ++name;
  int col = -1;
  for (int i = 0; i < 2; ++i) {
    int letter = LetterValue(name[i]);
    if (letter < 0) return col;
    col = i == 0 ? letter : (col + 1) * kLetters + letter;
  }
  if (bMacro && LetterValue(name[2]) >= 0) return -1;
  return col;
}

int CUtilityCalc::CellName2RowCol(CRowCol& out, const char16_t* name, int bMacro) {
  out.nRow = -1;
  out.nCol = ColName2Col(name, bMacro);
  if (out.nCol < 0) return 0;
  if (bMacro && *name == u'@') ++name;
  const int maxLetters = bMacro ? 2 : 3;
  const char16_t* firstDigit = nullptr;
  int letters = 0;
  for (const char16_t* p = name; *p; ++p) {
    if (CStrKit::IsDigit(*p)) {
      if (!firstDigit) firstDigit = p;
    } else if (!firstDigit) {
      if (!isAlpha(*p) || ++letters > maxLetters) return 0;
    } else if (*p == u'@') {
      if (!bMacro) return 0;
      break;  // the strict form's name ends at a marker
    } else if (*p != u' ') {
      return 0;
    }
  }
  if (!firstDigit || *firstDigit == u'0') return 0;
  out.nRow = ReadRow(firstDigit);
  return out.nRow >= 0;
}

int CUtilityCalc::CellName2RowCols(CRowCols& out, const char16_t* name, int* pMacro1,
                                   int* pMacro2, int bBothCorners) {
  if (pMacro1) *pMacro1 = 0;
  if (pMacro2) *pMacro2 = 0;
  if (!name || !*name) return 0;
  if (!Holds(name, u':')) {
    if (*name == u'@') {
      if (pMacro1) *pMacro1 = 1;
      ++name;
    }
    CRowCol cell;
    if (!CellName2RowCol(cell, name, 1)) return 0;
    out.nRow1 = cell.nRow, out.nCol1 = cell.nCol;
    if (bBothCorners) out.nRow2 = cell.nRow, out.nCol2 = cell.nCol;
    return 1;
  }
  CString parts[2];
  CStrKit::GetLeftRight(name, u":", parts[0], parts[1], 1);
  if (parts[0].IsEmpty() || parts[1].IsEmpty()) return 0;
  int* macros[2] = {pMacro1, pMacro2};
  CRowCol cells[2];
  int read = 0;
  for (int i = 0; i < 2; ++i) {
    if (parts[i][0] == u'@') {
      if (macros[i]) *macros[i] = 1;
      parts[i].Delete(0, 1);
    }
    read += CellName2RowCol(cells[i], parts[i], 1);
  }
  out.Set(cells[0], cells[1]);  // also on failure: what could be read
  return read == 2;
}

const char16_t* CUtilityCalc::GetColName(int col) {
  if (static_cast<unsigned>(col) > kMaxWritableCol) return nullptr;
  const char16_t* table = g_colNames.load(std::memory_order_acquire);
  if (!table) {
    CCritSecGuard guard(g_colNamesLock);
    table = g_colNames.load(std::memory_order_acquire);
    if (!table) {
      table = BuildColNames();
      g_colNames.store(table, std::memory_order_release);
    }
  }
  return table + col * kNameUnits;
}

int CUtilityCalc::GetCellName(CString& out, int row, int col) {
  if (static_cast<unsigned>(row) > kMaxWritableRow || static_cast<unsigned>(col) > kMaxWritableCol) {
    return 0;
  }
  // "%s%d" of the column's letters and row + 1, written by hand: hosts name
  // cells by the million.
  char16_t name[kNameUnits + 8];
  int length = 0;
  for (const char16_t* letter = GetColName(col); *letter; ++letter) name[length++] = *letter;
  char16_t digits[8];
  int count = 0;
  for (unsigned written = static_cast<unsigned>(row) + 1; written; written /= 10) {
    digits[count++] = static_cast<char16_t>(u'0' + written % 10);
  }
  while (count) name[length++] = digits[--count];
  out.Empty();
  out.Append(name, length);
  return 1;
}

int CUtilityCalc::GetCellName(CString& out, CRowCol& cell) {
  return GetCellName(out, cell.nRow, cell.nCol);
}

void CUtilityCalc::RowCols2CellName(CRowCols& rc, CString& out, int bMacro1, int bMacro2,
                                    int nMode) {
  const int row1 = std::max(rc.nRow1, 0), col1 = std::max(rc.nCol1, 0);
  GetCellName(out, row1, col1);  // outside the limits out keeps its text
  if (bMacro1) out.Insert(0, u'@');
  bool second = true;
  if (nMode == 1) {
    second = false;
  } else if (nMode == 0) {
    bool sameCell = rc.nRow2 == row1 && rc.nCol2 == col1;
    second = rc.nRow2 >= 0 && rc.nCol2 >= 0 && !(sameCell && !bMacro2);
  }
  CString name;
  if (!second || !GetCellName(name, rc.nRow2, rc.nCol2)) return;
  out += u':';
  if (bMacro2) out += u'@';
  out += name;
}

int CUtilityCalc::IsMacroCellName(const char16_t* name) {
  return name && Holds(name, u'@');
}

int CUtilityCalc::IsMacroSheetCellName(const char16_t* name) {
  return name && CStrKit::FindNoCase(name, u"@Sheet") >= 0;
}
