// tests/cell/RowColTest.cpp: CRowCol, CRowCols and CRowColsRound: the packed form and its streams,
// insertion and deletion, the rectangle operations and the walk over a rectangle's cells.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/MemoryStream.h"

namespace {
using std::to_string;
struct Case { const char* in; const char* expected; };

std::string Show(const CRowCol& c) { return to_string(c.nRow) + "," + to_string(c.nCol); }
std::string Show(const CRowCols& r) { CRowCol a, b; return r.Get(a, b), Show(a) + "," + Show(b); }
// The numbers of a row's text, "R 5,-1 3" gives 5 -1 3; the unused ones read 0.
std::vector<int> Ints(const char* text) {
  std::vector<int> out;
  for (char* end = nullptr; *text != 0; text = end == text ? text + 1 : end)
    if (const long n = std::strtol(text, &end, 10); end != text) out.push_back(static_cast<int>(n));
  return out.resize(10), out;
}

// Rectangles packed (clamped in place) and streamed; then streams of `size` bytes 0x11: a failed read
// leaves a cell at (0, 0) and a rectangle as it was.
TEST(RowColStreams, RectanglesAndShortReads) {
  CRowCols rc(-5, 2, 3, -9), streamed(-5, 2, 3, -9), read(7, 7, 7, 7);
  vkt::test::MemoryOutput out;
  streamed.SerializeRowCols(&out);
  vkt::test::MemoryInput in(out.bytes);
  EXPECT_EQ(rc.GetDWord1() + rc.GetDWord2() + read.DeserializeRowCols(&in), 0xFFFFF002u + 0x3FFFu + 1);
  EXPECT_EQ(Show(rc) + " " + Show(streamed) + " " + Show(read), "-1,2,3,-1 -1,2,3,-1 -1,2,3,-1");
  EXPECT_EQ(Show(CRowCols(0xFFFFEFFEu, 0x5003u)), "1048574,4094,5,3");
  constexpr const char* kReads[] = {"0 0,0 0 7,7,7,7", "1 69905,273 0 7,7,7,7",  // below 4 bytes, below 8
                                    "1 69905,273 1 69905,273,69905,273"};
  for (std::size_t size : {0, 3, 7, 8}) {
    vkt::test::MemoryInput cellIn(std::vector<BYTE>(size, 0x11)), rectIn(cellIn.bytes);
    CRowCol cell(9, 9);
    CRowCols rect(7, 7, 7, 7);
    const int cellRead = cell.DeserializeRowCol(&cellIn), rectRead = rect.DeserializeRowCols(&rectIn);
    EXPECT_EQ(to_string(cellRead) + " " + Show(cell) + " " + to_string(rectRead) + " " + Show(rect),
              kReads[(size >= 4) + (size >= 8)]) << size;
  }
}

template <class T> std::string Edit(T x, char op, int start, int count) {
  int (T::*edits[])(int, int) = {&T::InsertRows, &T::InsertCols, &T::DeleteRows, &T::DeleteCols};
  const int answer = (x.*edits[std::string_view("RCrc").find(op)])(start, count);
  return to_string(answer) + " " + Show(x);
}

// The cell packed by GetDWord, in hex, the object afterwards and the cell unpacked; SerializeRowCol
// writes the same 4 bytes and DeserializeRowCol reads back the same cell.
std::string Pack(int row, int col) {
  CRowCol cell(row, col), streamed(row, col), read(9, 9);
  vkt::test::MemoryOutput out, expected;
  streamed.SerializeRowCol(&out);
  vkt::test::MemoryInput in(out.bytes);
  char hex[12];
  std::snprintf(hex, sizeof hex, "%X ", cell.GetDWord());
  expected.WriteDWord(cell.GetDWord(), 1);
  const bool ok = read.DeserializeRowCol(&in) && out.bytes == expected.bytes && Show(streamed) == Show(cell);
  return hex + Show(cell) + " " + Show(CRowCol(cell.GetDWord())) + (ok ? " " + Show(read) : " differs");
}

// The cells by GetRowColArray into arrays that held something: "count: cells", each packed cell checked
// against the cell, the growth step against the count (one allocation).
std::string Cells(CRowCols& rc) {
  CDWordArray packed;
  CArray<CRowCol, CRowCol> cells;
  packed.Add(77), cells.Add(CRowCol(7, 7));
  const int n = rc.GetRowColArray(packed), m = rc.GetRowColArray(cells);
  std::string out = to_string(n) + (n > 0 && packed.GetGrowBy() != n ? " grows by more" : "") + ":";
  for (int i = 0; i < cells.GetSize(); ++i)
    out += " " + Show(cells[i]) + (packed[i] == DWORD(cells[i].nRow << 12 | cells[i].nCol) ? "" : "?");
  return m == n && packed.GetSize() == n ? out : out + " sizes differ";
}

// Each Next that answers 1 as "row,col/bColMoved bRowMoved", then the cell and flags after the 0; the
// walk goes on in a copy taken after `skip` steps.
std::string Walk(CRowColsRound r, int skip) {
  std::string out;
  for (; skip > 0; --skip) r.Next();
  CRowColsRound copy;
  copy = r;
  auto cell = [&] { return Show(copy.cell) + "/" + to_string(copy.bColMoved) + to_string(copy.bRowMoved); };
  while (copy.Next()) out += cell() + " ";
  out += "end " + cell();
  return copy.Next() == 0 ? out : out + " and more";
}

// "op a b" on rectangle a: W/O IsInclude(b, 1/0), X IsIntersect, G GetIntersect, B Combine(b),
// b Combine(cell b), K AtCorner(cell b), P IsInclude(ints), IsInclude(cell), IsIncludeRow, IsIncludeCol
// at cell b, F Offset(b0, b1, b2), I InflateRect(b), N Normarize, S GetRows, GetCols, IsOneCell, IsEmpty,
// A Cells, w Walk, v Walk resumed after two steps, f Walk never started; on cell a: T CompareTo, IsEqual
// with cell b, o Offset(b), D Pack. R InsertRows, C InsertCols, r DeleteRows, c DeleteCols take a cell or
// a rectangle, then start and count: a cell answers 1 when it was touched, a rectangle's deletion only
// when it vanished. Mutators show a afterwards.
constexpr Case kRects[] = {
    {"W 1,1,5,5 2,2,5,3", "1"}, {"W 1,1,5,5 0,2,3,3", "0"}, {"W 1,-1,5,5 2,2,3,3", "0"},
    {"O 1,1,5,5 0,2,3,3", "1"}, {"O 1,1,5,5 6,1,9,9", "0"}, {"X 1,1,5,5 5,5,9,9", "1"},
    {"X 1,1,5,5 6,1,9,9", "0"}, {"X -1,-1,-1,-1 -1,-1,-1,-1", "1"}, {"G 1,1,5,5 3,0,9,3", "1 3,1,5,3"},
    {"G 1,1,5,5 6,0,9,9", "0 -1,-1,-1,-1"}, {"G 1,1,5,5 0,6,9,9", "0 -1,-1,-1,-1"},
    {"B 1,1,2,2 4,0,5,1", "1,0,5,2"}, {"B -1,-1,-1,-1 4,0,5,1", "4,0,5,1"}, {"B 1,1,2,2 -1,0,5,5", "1,1,2,2"},
    {"B 2,2,-1,-1 4,0,5,1", "2,0,5,1"}, {"b 1,1,2,2 0,5", "0,1,2,5"}, {"b 1,1,2,2 -1,5", "1,1,2,2"},
    {"b -1,-1,-1,-1 3,4", "3,4,3,4"}, {"K 2,2,2,2 2,2", "16"}, {"K 1,1,3,4 1,4", "32"},
    {"K 1,1,3,4 3,1", "64"}, {"K 1,1,3,4 3,4", "128"}, {"K 1,1,3,4 1,2", "-1"}, {"K 1,1,1,4 1,4", "32"},
    {"K 1,1,3,1 3,1", "64"}, {"P 1,1,3,3 2,3", "1111"}, {"P 1,1,3,3 0,2", "0001"}, {"P 1,1,3,3 3,0", "0010"},
    {"F -1,-1,-1,-1 1,1,1", "-1,-1,-1,-1"}, {"F -1,-1,-1,-1 1,1,0", "0,0,0,0"},
    {"F 2,-1,5,-1 1,2,1", "3,-1,6,-1"}, {"I 2,2,4,4 1,3,2,1", "1,0,6,5"}, {"I 2,2,4,4 -1,0,0,-2", "3,2,4,2"},
    {"N 5,6,1,2", "1,2,5,6"}, {"N 1,6,5,2", "1,2,5,6"}, {"S 1,1,2,3", "2 3 0 0"}, {"S 1,-1,5,5", "0 0 0 1"},
    {"S -1,-1,-1,-1", "0 0 1 1"}, {"S 5,1,1,1", "-3 1 0 0"}, {"S 1,1,-1,-1", "-1 -1 0 0"},
    {"A 1,1,2,2", "4: 1,1 1,2 2,1 2,2"}, {"A 0,4094,0,4094", "1: 0,4094"}, {"A 5,0,1,0", "0:"},
    {"A -1,-1,-1,-1", "0:"}, {"A -1,0,2,2", "0:"}, {"w 1,1,2,2", "1,1/00 1,2/10 2,1/01 2,2/10 end -1,1/00"},
    {"v 1,1,2,2", "2,1/01 2,2/10 end -1,1/00"}, {"w 3,2,5,2", "3,2/00 4,2/01 5,2/01 end -1,2/00"},
    {"w -1,-1,-1,-1", "end -100,-100/00"}, {"w -1,0,2,2", "end -100,-100/00"}, {"f 1,1,2,2", "end -1,-1/00"},
    {"w 2,1,1,1", "end -1,-100/00"}, {"T 1,5 2,0", "-1 0"}, {"T 1,3 1,2", "1 0"}, {"T 1,2 1,2", "0 1"},
    {"o -1,-1 1,2", "0,1"}, {"D 5,3", "5003 5,3 5,3 5,3"}, {"D -1,-1", "FFFFFFFF -1,-1 -1,-1 -1,-1"},
    {"D 0,4095", "FFF 0,4095 0,-1 0,-1"}, {"D 1048575,0", "FFFFF000 1048575,0 -1,0 -1,0"},
    {"D 1048574,4094", "FFFFEFFE 1048574,4094 1048574,4094 1048574,4094"}, {"D 3,-9", "3FFF 3,-1 3,-1 3,-1"},
    {"D 1048576,4096", "0 1048576,4096 0,0 0,0"}, {"D -7,2", "FFFFF002 -1,2 -1,2 -1,2"},
    {"R 5,1 5 2", "1 7,1"}, {"R 5,1 6 1", "0 5,1"}, {"R 5,1 -1 1", "0 5,1"}, {"R -1,1 0 1", "0 -1,1"},
    {"C 1,5 5 3", "1 1,8"}, {"C 1,5 6 3", "0 1,5"}, {"r 3,1 3 2", "1 -1,1"}, {"r 5,1 3 2", "1 3,1"},
    {"r 2,1 3 2", "0 2,1"}, {"r 5,1 3 0", "0 5,1"}, {"r 5,1 -1 2", "0 5,1"}, {"c 1,4 3 2", "1 1,-1"},
    {"R 5,0,10,0 5 1", "1 6,0,11,0"}, {"R 5,0,10,0 6 1", "1 5,0,11,0"}, {"R 5,0,10,0 11 1", "0 5,0,10,0"},
    {"R 5,0,10,0 -1 1", "0 5,0,10,0"}, {"R 5,-1,10,0 0 1", "0 5,-1,10,0"}, {"C 0,2,0,4 3 2", "1 0,2,0,6"},
    {"C 0,2,0,4 1 2", "1 0,4,0,6"}, {"C -1,2,0,4 1 2", "0 -1,2,0,4"}, {"r 5,0,10,0 8 5", "0 5,0,7,0"},
    {"r 5,0,10,0 3 20", "1 -1,-1,-1,-1"}, {"r 5,0,6,0 3 4", "1 -1,-1,-1,-1"}, {"r 5,0,10,0 3 2", "0 3,0,8,0"},
    {"r 5,0,10,0 11 1", "0 5,0,10,0"}, {"r 5,0,10,0 -1 1", "0 5,0,10,0"}, {"r 5,-1,10,0 5 1", "0 5,-1,10,0"},
    {"c 0,2,0,4 0 2", "0 0,0,0,2"}, {"c 0,2,0,4 2 3", "1 -1,-1,-1,-1"}, {"c 0,2,0,4 3 1", "0 0,2,0,3"},
};
std::string Apply(const char* text) {
  const std::vector<int> v = Ints(text);
  const char op = text[0];
  CRowCols a, b(CRowCol(v[4], v[5]), CRowCol(v[6], v[7])), out(9, 9, 9, 9);
  a.Set(v[0], v[1], v[2], v[3]);
  CRowCol cell(v[4], v[5]), first(v[0], v[1]);
  const int met = op == 'G' ? CRowCols::GetIntersect(out, a, b) : 0;
  const bool isCell = std::string_view(text).find(',') == std::string_view(text).rfind(',');
  switch (op) {
    case 'W': case 'O': return to_string(a.IsInclude(b, op == 'W'));
    case 'X': return to_string(a.IsIntersect(b));
    case 'G': return to_string(met) + " " + Show(out);
    case 'B': a.Combine(b); break;
    case 'b': a.Combine(cell); break;
    case 'K': return to_string(a.AtCorner(cell));
    case 'P': return to_string(a.IsInclude(v[4], v[5])) + to_string(a.IsInclude(cell)) +
                     to_string(a.IsIncludeRow(v[4])) + to_string(a.IsIncludeCol(v[5]));
    case 'F': a.Offset(v[4], v[5], v[6]); break;
    case 'I': a.InflateRect(v[4], v[5], v[6], v[7]); break;
    case 'N': a.Normarize(); break;
    case 'S': return to_string(a.GetRows()) + " " + to_string(a.GetCols()) + " " + to_string(a.IsOneCell()) +
                     " " + to_string(a.IsEmpty());
    case 'A': return Cells(a);
    case 'w': case 'v': return Walk(CRowColsRound(a), op == 'v' ? 2 : 0);
    case 'f': return Walk(CRowColsRound(), 0);
    case 'T': return to_string(first.CompareTo({v[2], v[3]})) + " " + to_string(first.IsEqual({v[2], v[3]}));
    case 'o': first.Offset(v[2], v[3]); return Show(first);
    case 'D': return Pack(v[0], v[1]);
    default: return isCell ? Edit(first, op, v[2], v[3]) : Edit(a, op, v[4], v[5]);
  }
  return Show(a);
}
TEST(RowColOperations, Table) {
  for (const Case& c : kRects) EXPECT_EQ(Apply(c.in), c.expected) << c.in;
}

}  // namespace
