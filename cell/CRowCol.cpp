// cell/CRowCol.cpp: cells, rectangles and the cursor over a rectangle.
#include "CRowCol.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "foundation/StreamIO.h"

namespace {

constexpr int kStreamFlag = 1;
constexpr DWORD kNoRow = 0xFFFFF;  // all 20 row bits: row -1
constexpr DWORD kNoCol = 0xFFF;    // all 12 column bits: column -1
constexpr int kNotStarted = -100;  // a cursor's cell before its first step

// Sums and differences of fields wrap around in 32 bits rather than
// overflow: the operations add without any test, as the callers expect, and
// an absurd argument gives an absurd but defined position.
int Add(int a, int b) { return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b)); }
int Sub(int a, int b) { return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b)); }

// A field below -1 is stored as -1 before it is packed.
void ClampToNone(int& field) {
  if (field < -1) field = -1;
}

DWORD Pack(int& row, int& col) {
  ClampToNone(row);
  ClampToNone(col);
  return (static_cast<DWORD>(row) << 12) | (static_cast<DWORD>(col) & kNoCol);
}

void Unpack(DWORD packed, int& row, int& col) {
  DWORD rowBits = packed >> 12;
  DWORD colBits = packed & kNoCol;
  row = rowBits == kNoRow ? -1 : static_cast<int>(rowBits);
  col = colBits == kNoCol ? -1 : static_cast<int>(colBits);
}

// One axis of a cell: insert moves a position at or behind start.
int InsertAt(int& pos, int start, int count) {
  if (pos < 0 || start < 0 || count < 1 || start > pos) return 0;
  pos = Add(pos, count);
  return 1;
}

// One axis of a cell: a position behind the deleted stretch moves up, one
// inside it is gone.
int DeleteAt(int& pos, int start, int count) {
  if (pos < 0 || start < 0 || count < 1 || start > pos) return 0;
  pos = pos - start >= count ? pos - count : -1;
  return 1;
}

// One axis of a rectangle whose first corner is not empty.
int InsertSpan(int& first, int& last, int start, int count) {
  if (start < 0 || count < 1 || start > last) return 0;
  if (start <= first) first = Add(first, count);
  last = Add(last, count);
  return 1;
}

// One axis of a rectangle, one line at a time; 1 only when the rectangle
// vanished, which the caller then empties.
int DeleteSpan(int& first, int& last, int start, int count) {
  if (start < 0 || count < 1) return 0;
  for (int i = 0; i < count; ++i) {
    if (start > last) return 0;
    if (start < first) --first;
    --last;
    if (last < first) return 1;
  }
  return 0;
}

}  // namespace

// ---- CRowCol ------------------------------------------------------------

CRowCol::CRowCol() : nRow(-1), nCol(-1) {}
CRowCol::CRowCol(int row, int col) : nRow(row), nCol(col) {}
CRowCol::CRowCol(DWORD packed) : CRowCol() { SetDWord(packed); }
CRowCol::CRowCol(const CRowCol& other) = default;
CRowCol& CRowCol::operator=(const CRowCol& other) = default;
CRowCol::~CRowCol() = default;

void CRowCol::Empty() { nRow = nCol = -1; }
int CRowCol::IsEmpty() const { return nRow < 0 || nCol < 0; }
void CRowCol::Set(int row, int col) { nRow = row, nCol = col; }
void CRowCol::Set(const CRowCol& other) { nRow = other.nRow, nCol = other.nCol; }
void CRowCol::SetDWord(DWORD packed) { Unpack(packed, nRow, nCol); }
DWORD CRowCol::GetDWord() { return Pack(nRow, nCol); }
int CRowCol::IsEqual(const CRowCol& other) const {
  return nRow == other.nRow && nCol == other.nCol;
}

int CRowCol::CompareTo(const CRowCol& other) const {
  if (nRow != other.nRow) return nRow > other.nRow ? 1 : -1;
  if (nCol != other.nCol) return nCol > other.nCol ? 1 : -1;
  return 0;
}

void CRowCol::Offset(int dRow, int dCol) { nRow = Add(nRow, dRow), nCol = Add(nCol, dCol); }
int CRowCol::InsertRows(int start, int count) { return InsertAt(nRow, start, count); }
int CRowCol::InsertCols(int start, int count) { return InsertAt(nCol, start, count); }
int CRowCol::DeleteRows(int start, int count) { return DeleteAt(nRow, start, count); }
int CRowCol::DeleteCols(int start, int count) { return DeleteAt(nCol, start, count); }

void CRowCol::SerializeRowCol(IStreamOutput* out) {
  DWORD packed = GetDWord();
  if (out) out->WriteDWord(packed, kStreamFlag);
}

int CRowCol::DeserializeRowCol(IStreamInput* in) {
  nRow = nCol = 0;
  DWORD packed = 0;
  if (!in || !in->ReadDWord(&packed, kStreamFlag)) return 0;
  SetDWord(packed);
  return 1;
}

// ---- CRowCols -----------------------------------------------------------

CRowCols::CRowCols() : nRow1(-1), nCol1(-1), nRow2(-1), nCol2(-1) {}
CRowCols::CRowCols(int row1, int col1, int row2, int col2)
    : nRow1(row1), nCol1(col1), nRow2(row2), nCol2(col2) {}
CRowCols::CRowCols(const CRowCol& topLeft, const CRowCol& bottomRight)
    : CRowCols(topLeft.nRow, topLeft.nCol, bottomRight.nRow, bottomRight.nCol) {}
CRowCols::CRowCols(DWORD first, DWORD second) : CRowCols() {
  Unpack(first, nRow1, nCol1);
  Unpack(second, nRow2, nCol2);
}
CRowCols::CRowCols(const CRowCols& other) = default;
CRowCols& CRowCols::operator=(const CRowCols& other) = default;
CRowCols::~CRowCols() = default;

void CRowCols::Empty() { nRow1 = nCol1 = nRow2 = nCol2 = -1; }
int CRowCols::IsEmpty() const { return nRow1 < 0 || nCol1 < 0; }
void CRowCols::Set(const CRowCols& other) { *this = other; }
void CRowCols::Set(const CRowCol& cell) { Set(cell, cell); }
void CRowCols::Set(const CRowCol& first, const CRowCol& second) {
  Set(first.nRow, first.nCol, second.nRow, second.nCol);
}
void CRowCols::Set(int row1, int col1, int row2, int col2) {
  nRow1 = row1, nCol1 = col1, nRow2 = row2, nCol2 = col2;
}
void CRowCols::Get(int& row1, int& col1, int& row2, int& col2) const {
  row1 = nRow1, col1 = nCol1, row2 = nRow2, col2 = nCol2;
}
void CRowCols::Get(CRowCol& first, CRowCol& second) const {
  GetTopLeft(first);
  GetBottomRight(second);
}
void CRowCols::GetTopLeft(CRowCol& out) const { out.Set(nRow1, nCol1); }
void CRowCols::GetBottomRight(CRowCol& out) const { out.Set(nRow2, nCol2); }
DWORD CRowCols::GetDWord1() { return Pack(nRow1, nCol1); }
DWORD CRowCols::GetDWord2() { return Pack(nRow2, nCol2); }
int CRowCols::GetRows() const { return IsEmpty() ? 0 : Add(Sub(nRow2, nRow1), 1); }
int CRowCols::GetCols() const { return IsEmpty() ? 0 : Add(Sub(nCol2, nCol1), 1); }

int CRowCols::IsEqual(const CRowCols& other) const {
  return nRow1 == other.nRow1 && nCol1 == other.nCol1 && nRow2 == other.nRow2 &&
         nCol2 == other.nCol2;
}

int CRowCols::IsOneCell() const { return nRow1 == nRow2 && nCol1 == nCol2; }
int CRowCols::IsInclude(int row, int col) const { return IsIncludeRow(row) && IsIncludeCol(col); }
int CRowCols::IsInclude(const CRowCol& cell) const { return IsInclude(cell.nRow, cell.nCol); }
int CRowCols::IsIncludeRow(int row) const { return nRow1 <= row && row <= nRow2; }
int CRowCols::IsIncludeCol(int col) const { return nCol1 <= col && col <= nCol2; }

int CRowCols::IsInclude(const CRowCols& other, int bWhole) const {
  if (IsEmpty() || other.IsEmpty()) return 0;
  if (bWhole) {
    return nRow1 <= other.nRow1 && other.nRow2 <= nRow2 && nCol1 <= other.nCol1 &&
           other.nCol2 <= nCol2;
  }
  return other.nRow1 <= nRow2 && other.nRow2 >= nRow1 && other.nCol1 <= nCol2 &&
         other.nCol2 >= nCol1;
}

int CRowCols::IsIntersect(const CRowCols& other) const {
  return std::max(nRow1, other.nRow1) <= std::min(nRow2, other.nRow2) &&
         std::max(nCol1, other.nCol1) <= std::min(nCol2, other.nCol2);
}

int CRowCols::GetIntersect(CRowCols& out, const CRowCols& a, const CRowCols& b) {
  out.Empty();
  // Read the inputs only now: out may be one of them.
  int row1 = std::max(a.nRow1, b.nRow1), row2 = std::min(a.nRow2, b.nRow2);
  int col1 = std::max(a.nCol1, b.nCol1), col2 = std::min(a.nCol2, b.nCol2);
  if (row1 > row2 || col1 > col2) return 0;
  out.Set(row1, col1, row2, col2);
  return 1;
}

void CRowCols::Normarize() {
  if (nRow2 < nRow1) std::swap(nRow1, nRow2);
  if (nCol2 < nCol1) std::swap(nCol1, nCol2);
}

int CRowCols::AtCorner(const CRowCol& cell) const {
  int row = cell.nRow, col = cell.nCol;
  if (row == nRow1 && col == nCol1) return POS_TOPLEFT;
  if (row == nRow1 && col == nCol2) return POS_TOPRIGHT;
  if (row == nRow2 && col == nCol1) return POS_BOTTOMLEFT;
  if (row == nRow2 && col == nCol2) return POS_BOTTOMRIGHT;
  return POS_NONE;
}

void CRowCols::Offset(int dRow, int dCol, int bKeepEmpty) {
  auto add = [bKeepEmpty](int& field, int delta) {
    if (!bKeepEmpty || field >= 0) field = Add(field, delta);
  };
  add(nRow1, dRow), add(nCol1, dCol), add(nRow2, dRow), add(nCol2, dCol);
}

void CRowCols::InflateRect(int dRow1, int dCol1, int dRow2, int dCol2) {
  nRow1 = std::max(Sub(nRow1, dRow1), 0);
  nCol1 = std::max(Sub(nCol1, dCol1), 0);
  nRow2 = Add(nRow2, dRow2);
  nCol2 = Add(nCol2, dCol2);
}

void CRowCols::Combine(const CRowCols& other) {
  if (other.IsEmpty()) return;
  for (int* field : {&nRow1, &nRow2}) {
    if (*field < 0) *field = other.nRow1;
  }
  for (int* field : {&nCol1, &nCol2}) {
    if (*field < 0) *field = other.nCol1;
  }
  nRow1 = std::min(nRow1, other.nRow1);
  nCol1 = std::min(nCol1, other.nCol1);
  nRow2 = std::max(nRow2, other.nRow2);
  nCol2 = std::max(nCol2, other.nCol2);
}

void CRowCols::Combine(const CRowCol& cell) {
  if (!cell.IsEmpty()) Combine(CRowCols(cell, cell));
}

int CRowCols::InsertRows(int start, int count) {
  return IsEmpty() ? 0 : InsertSpan(nRow1, nRow2, start, count);
}

int CRowCols::InsertCols(int start, int count) {
  return IsEmpty() ? 0 : InsertSpan(nCol1, nCol2, start, count);
}

int CRowCols::DeleteRows(int start, int count) {
  if (IsEmpty() || !DeleteSpan(nRow1, nRow2, start, count)) return 0;
  Empty();
  return 1;
}

int CRowCols::DeleteCols(int start, int count) {
  if (IsEmpty() || !DeleteSpan(nCol1, nCol2, start, count)) return 0;
  Empty();
  return 1;
}

namespace {

// Chosen: a rectangle of more cells than an array can hold gives 0, like an
// empty one, rather than a count that does not fit.
int CellCount(const CRowCols& rc) {
  long long rows = rc.GetRows(), cols = rc.GetCols();
  if (rows < 1 || cols < 1 || rows * cols > INT_MAX) return 0;
  return static_cast<int>(rows * cols);
}

// Calls add(row, col) for each cell, row by row, left to right, into the
// emptied array allocated once; the number of cells.
template <class Array, class Add>
int FillCells(const CRowCols& rc, Array& out, Add add) {
  out.RemoveAll();
  int cells = CellCount(rc);
  if (cells == 0) return 0;
  out.SetSize(0, cells);
  int cols = rc.GetCols();
  for (int i = 0; i < cells; ++i) add(rc.nRow1 + i / cols, rc.nCol1 + i % cols);
  return cells;
}

}  // namespace

int CRowCols::GetRowColArray(CDWordArray& out) {
  return FillCells(*this, out, [&out](int row, int col) {
    out.Add((static_cast<DWORD>(row) << 12) | (static_cast<DWORD>(col) & kNoCol));
  });
}

int CRowCols::GetRowColArray(CArray<CRowCol, CRowCol>& out) {
  return FillCells(*this, out, [&out](int row, int col) { out.Add(CRowCol(row, col)); });
}

void CRowCols::SerializeRowCols(IStreamOutput* out) {
  DWORD first = GetDWord1(), second = GetDWord2();
  if (!out) return;
  out->WriteDWord(first, kStreamFlag);
  out->WriteDWord(second, kStreamFlag);
}

int CRowCols::DeserializeRowCols(IStreamInput* in) {
  DWORD first = 0, second = 0;
  if (!in || !in->ReadDWord(&first, kStreamFlag) || !in->ReadDWord(&second, kStreamFlag)) {
    return 0;
  }
  Unpack(first, nRow1, nCol1);
  Unpack(second, nRow2, nCol2);
  return 1;
}

// ---- CRowColsRound ------------------------------------------------------

CRowColsRound::CRowColsRound() : bColMoved(0), bRowMoved(0) {}
CRowColsRound::CRowColsRound(const CRowCols& rc) : CRowColsRound() { Start(rc); }
CRowColsRound::CRowColsRound(const CRowColsRound& other) = default;
CRowColsRound& CRowColsRound::operator=(const CRowColsRound& other) = default;
CRowColsRound::~CRowColsRound() = default;

void CRowColsRound::Start(const CRowCols& rc) {
  range = rc;
  cell.Set(kNotStarted, kNotStarted);
  bColMoved = bRowMoved = 0;
}

int CRowColsRound::Next() {
  bColMoved = bRowMoved = 0;
  if (cell.nRow == kNotStarted && cell.nCol == kNotStarted) {
    if (range.IsEmpty()) return 0;
    if (range.nRow1 > range.nRow2 || range.nCol1 > range.nCol2) {
      cell.nRow = -1;
      return 0;
    }
    cell.Set(range.nRow1, range.nCol1);
    return 1;
  }
  if (cell.nRow < 0) return 0;
  if (cell.nCol < range.nCol2) {
    ++cell.nCol;
    bColMoved = 1;
    return 1;
  }
  cell.nCol = range.nCol1;
  if (++cell.nRow <= range.nRow2) {
    bRowMoved = 1;
    return 1;
  }
  cell.nRow = -1;
  return 0;
}
