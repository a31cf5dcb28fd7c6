// tests/cell/CellNameTest.cpp: cell names as text: column letters, cells and ranges read in the plain
// and the strict form, names written within their limits and read back, the tests for macro markers.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {
using std::to_string;
using vkt::test::Row;
using vkt::test::U;

std::string Show(const CRowCol& c) { return to_string(c.nRow) + "," + to_string(c.nCol); }
std::string Show(const CRowCols& r) { CRowCol a, b; return r.Get(a, b), Show(a) + "," + Show(b); }

// c, C: ColName2Col, then CellName2RowCol's answer and out (from (9, 9)), in the plain (c) and the strict
// (C) form. A failure leaves the column read and row -1. A third letter passes the plain form uncounted
// and spoils the strict one; the row's digits stop at a blank; the row saturates. r, R: CellName2RowCols
// with bBothCorners 1, 0, out from (9,9,9,9), the flags from 7: "answer flags out". Without bBothCorners
// a cell leaves the second corner alone; the parts of a range are trimmed, and a failed range keeps what
// it read. m: IsMacroCellName, IsMacroSheetCellName.
constexpr struct { char op; const char16_t* name; const char* expected; } kReads[] = {
    {'c', u"B12", "1 1 11,1"}, {'C', u"b12", "1 1 11,1"}, {'c', u"Z1", "25 1 0,25"}, {'C', u"@B2", "1 1 1,1"},
    {'c', u"AA1", "26 1 0,26"}, {'C', u"BA1", "52 1 0,52"}, {'C', u"zz9", "701 1 8,701"},
    {'c', u"ABC12", "27 1 11,27"}, {'C', u"AB@", "27 0 -1,27"}, {'C', u"ABC12", "-1 0 -1,-1"},
    {'c', u"ABCD1", "27 0 -1,27"}, {'C', u"A1@x", "0 1 0,0"}, {'c', u"A1@x", "0 0 -1,0"},
    {'c', u"@B2", "-1 0 -1,-1"}, {'C', u"@@B2", "-1 0 -1,-1"}, {'c', u"A0", "0 0 -1,0"},
    {'C', u"A01", "0 0 -1,0"}, {'c', u"A", "0 0 -1,0"}, {'c', u"A1  ", "0 1 0,0"}, {'C', u"A1 2", "0 1 0,0"},
    {'c', u"A 1", "0 0 -1,0"}, {'C', u"A1:", "0 0 -1,0"}, {'c', u"1A", "-1 0 -1,-1"},
    {'c', u"$A$1", "-1 0 -1,-1"}, {'c', u"A\xD800" u"1", "0 0 -1,0"}, {'C', u"A1\xDC00", "0 0 -1,0"},
    {'c', u"\xD800", "-1 0 -1,-1"}, {'C', nullptr, "-1 0 -1,-1"}, {'c', u"", "-1 0 -1,-1"},
    {'C', u"@@", "-1 0 -1,-1"}, {'c', u":", "-1 0 -1,-1"}, {'c', u"A2147483647", "0 1 2147483646,0"},
    {'C', u"A99999999999", "0 1 2147483646,0"}, {'r', u"A1", "1 00 0,0,0,0"}, {'R', u"A1", "1 00 0,0,9,9"},
    {'r', u"@B3", "1 10 2,1,2,1"}, {'R', u"@@B3", "1 10 2,1,9,9"}, {'r', u"A1@Sheet1", "1 00 0,0,0,0"},
    {'R', u"@A1:@B2", "1 11 0,0,1,1"}, {'r', u"a1:@b2", "1 01 0,0,1,1"}, {'r', u"B3:A1", "1 00 2,1,0,0"},
    {'r', u" A1 : B2 ", "1 00 0,0,1,1"}, {'r', u"A1:", "0 00 9,9,9,9"}, {'r', u":B2", "0 00 9,9,9,9"},
    {'r', u"A:C", "0 00 -1,0,-1,2"}, {'r', u"A1:B", "0 00 0,0,-1,1"}, {'r', u"A1:B2:C3", "0 00 0,0,-1,1"},
    {'r', u"@1A:@B2", "0 11 -1,-1,1,1"}, {'r', u"B0", "0 00 9,9,9,9"}, {'r', u"", "0 00 9,9,9,9"},
    {'r', nullptr, "0 00 9,9,9,9"}, {'m', u"@A1", "10"}, {'m', u"A1@", "10"}, {'m', u"A1", "00"},
    {'m', u"", "00"}, {'m', nullptr, "00"}, {'m', u"A1@Sheet2", "11"}, {'m', u"@sHEETx", "11"},
    {'m', u"A1@Shee", "10"}, {'m', u"@x@sheet1", "11"}, {'m', u"Sheet1", "00"}, {'m', u"@ Sheet1", "10"},
};
std::string Read(char op, const char16_t* name) {
  CRowCol cell(9, 9);
  CRowCols out(9, 9, 9, 9), again;
  int m1 = 7, m2 = 7;
  const std::string sheet = to_string(CUtilityCalc::IsMacroSheetCellName(name));
  if (op == 'm') return to_string(CUtilityCalc::IsMacroCellName(name)) + sheet;
  if (op == 'c' || op == 'C') {
    const int answer = CUtilityCalc::CellName2RowCol(cell, name, op == 'C');
    return to_string(CUtilityCalc::ColName2Col(name, op == 'C')) + " " + to_string(answer) + " " + Show(cell);
  }
  const int answer = CUtilityCalc::CellName2RowCols(out, name, &m1, &m2, op == 'r');
  EXPECT_EQ(CUtilityCalc::CellName2RowCols(again, name, nullptr, nullptr, 1), answer) << Row(name);
  return to_string(answer) + " " + to_string(m1) + to_string(m2) + " " + Show(out);
}
TEST(CellNames, Read) {
  for (const auto& c : kReads) EXPECT_EQ(Read(c.op, c.name), c.expected) << c.op << " " << Row(c.name);
  const std::u16string digits = u"B" + std::u16string(1 << 20, u'9');  // a megabyte of digits
  CRowCol out;
  EXPECT_EQ(CUtilityCalc::CellName2RowCol(out, digits.c_str(), 1), 1);
  EXPECT_EQ(Show(out), "2147483646,1");
}

// Every writable column at a few rows, by GetColName and both forms of GetCellName: the letters by a count
// of their own, and both forms of CellName2RowCol read it back. Outside the limits out keeps its text.
TEST(CellNames, EveryWritableColumnRoundTrips) {
  for (int col = 0; col <= 699; ++col)
    for (int row : {0, 9, 99999, 999999}) {
      CString name, byCell;
      CRowCol plain, strict, cell(row, col);
      const std::string letters = (col < 26 ? "" : std::string(1, 'A' + col / 26 - 1)) + char('A' + col % 26);
      ASSERT_EQ(CUtilityCalc::GetCellName(name, row, col) + CUtilityCalc::GetCellName(byCell, cell), 2);
      EXPECT_EQ(Row(name) + " " + Row(byCell) + " " + Row(CUtilityCalc::GetColName(col)),
                letters + to_string(row + 1) + " " + letters + to_string(row + 1) + " " + letters);
      const int read = CUtilityCalc::CellName2RowCol(plain, name, 0);
      EXPECT_EQ(read + CUtilityCalc::CellName2RowCol(strict, name, 1), 2) << Row(name);
      EXPECT_EQ(Show(plain) + " " + Show(strict), to_string(row) + "," + to_string(col) + " " + Show(plain));
    }
  CString out(u"old");
  CRowCol past(1000000, 0), left(0, -1);
  for (int col : {-1, 700, 701, INT_MIN}) EXPECT_EQ(U(CUtilityCalc::GetColName(col)), u"<null>") << col;
  EXPECT_EQ(CUtilityCalc::GetCellName(out, past) + CUtilityCalc::GetCellName(out, left) +
                CUtilityCalc::GetCellName(out, -1, 0) + CUtilityCalc::GetCellName(out, 0, 700), 0);
  EXPECT_EQ(U(out), u"old");
  EXPECT_EQ(CUtilityCalc::GetColName(699) - CUtilityCalc::GetColName(0), 699 * 3);  // one block, 3 units each
}

// out starts as "old"; nMode 1 never writes the second corner, 0 when it differs or bMacro2, else always.
// A negative first corner counts as 0 (and is then compared), a negative second one is never written;
// outside the limits out keeps its text.
constexpr struct { int r1, c1, r2, c2, bMacro1, bMacro2, nMode; const char16_t* out; } kWrites[] = {
    {2, 1, 2, 1, 0, 0, 0, u"B3"}, {2, 1, 2, 1, 0, 0, 2, u"B3:B3"}, {2, 1, 2, 1, 0, 1, 0, u"B3:@B3"},
    {2, 1, 2, 1, 1, 1, 1, u"@B3"}, {2, 1, 2, 1, 1, 0, 5, u"@B3:B3"}, {2, 1, 4, 3, 0, 0, 0, u"B3:D5"},
    {2, 1, 4, 3, 0, 1, 1, u"B3"}, {-1, -1, -1, -1, 0, 0, 0, u"A1"}, {-1, -1, -1, -1, 0, 1, 2, u"A1"},
    {-1, 0, 0, 0, 0, 0, 0, u"A1"}, {-1, -1, 2, 1, 1, 0, 0, u"@A1:B3"}, {0, 0, 0, 700, 0, 0, 0, u"A1"},
    {0, 0, 1000000, 0, 0, 0, 2, u"A1"}, {0, 699, 999999, 699, 0, 1, 0, u"ZX1:@ZX1000000"},
    {0, 700, 1, 1, 0, 0, 0, u"old:B2"}, {1000000, 0, 0, 0, 1, 0, 1, u"@old"},
};
TEST(RowCols2CellName, Modes) {
  for (const auto& c : kWrites) {
    CRowCols rc(c.r1, c.c1, c.r2, c.c2);
    CString out(u"old");
    CUtilityCalc::RowCols2CellName(rc, out, c.bMacro1, c.bMacro2, c.nMode);
    EXPECT_EQ(U(out), c.out) << Show(rc) << " " << c.bMacro1 << c.bMacro2 << " mode " << c.nMode;
  }
}

}  // namespace
