// CRowCol.h: positions in a grid as values: one cell, a rectangle of cells,
// and a cursor over a rectangle's cells.
//
// Rows and columns count from 0 (row 0 is written 1, column 0 is A), -1 for
// none. Nothing keeps a rectangle normalised: the second corner may lie before
// the first until Normarize. Emptiness is judged by the first corner alone.
//
// Packed form, one DWORD per cell: the row in bits 31 to 12, the column in
// bits 11 to 0. Packing first sets a field below -1 to -1 in the object
// itself (so GetDWord, GetDWord1, GetDWord2 and the Serialize operations may
// write to what they read); unpacking turns 0xFFFFF into row -1 and 0xFFF
// into column -1. The widest cell that survives is row 1,048,574, column 4,094.
#pragma once

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/Types.h"

class IStreamInput;
class IStreamOutput;

// What CRowCols::AtCorner finds; bit-like values.
enum ENUM_POS {
  POS_NONE = -1,
  POS_TOPLEFT = 16,
  POS_TOPRIGHT = 32,
  POS_BOTTOMLEFT = 64,
  POS_BOTTOMRIGHT = 128,
};

class VKTCALC_API CRowCol {
 public:
  int nRow;  // zero-based row, -1 for none
  int nCol;  // zero-based column, -1 for none

  CRowCol();  // empty
  CRowCol(int row, int col);
  explicit CRowCol(DWORD packed);
  CRowCol(const CRowCol& other);
  CRowCol& operator=(const CRowCol& other);
  virtual ~CRowCol();

  void Empty();
  int IsEmpty() const;  // 1 when the row or the column is negative
  void Set(int row, int col);
  void Set(const CRowCol& other);
  void SetDWord(DWORD packed);
  DWORD GetDWord();
  int IsEqual(const CRowCol& other) const;
  // Row first, then column: -1 when this cell lies before the other, 0 when
  // equal, 1 when after.
  int CompareTo(const CRowCol& other) const;
  void Offset(int dRow, int dCol);  // no test: an empty cell stops being -1

  // 0 and no change for an empty row (column), a negative start, a count
  // below 1 or a start behind the cell. Else 1: an insertion at or before
  // the cell moves it; a deletion moves a cell behind the deleted stretch up
  // and turns a cell inside it into row (column) -1.
  int InsertRows(int start, int count);
  int InsertCols(int start, int count);
  int DeleteRows(int start, int count);
  int DeleteCols(int start, int count);

  // The packed form by WriteDWord. Reading sets (0, 0) first and leaves it
  // there when the read fails (0); 1 on success.
  void SerializeRowCol(IStreamOutput* out);
  int DeserializeRowCol(IStreamInput* in);
};

class VKTCALC_API CRowCols {
 public:
  int nRow1;  // first row
  int nCol1;  // first column
  int nRow2;  // last row, inclusive
  int nCol2;  // last column, inclusive

  CRowCols();  // empty: all four -1
  CRowCols(int row1, int col1, int row2, int col2);
  CRowCols(const CRowCol& topLeft, const CRowCol& bottomRight);
  CRowCols(DWORD first, DWORD second);
  CRowCols(const CRowCols& other);
  CRowCols& operator=(const CRowCols& other);
  virtual ~CRowCols();

  void Empty();
  int IsEmpty() const;  // the first corner's row or column is negative
  void Set(const CRowCols& other);
  void Set(const CRowCol& cell);  // both corners
  void Set(const CRowCol& first, const CRowCol& second);
  void Set(int row1, int col1, int row2, int col2);
  void Get(int& row1, int& col1, int& row2, int& col2) const;
  void Get(CRowCol& first, CRowCol& second) const;
  void GetTopLeft(CRowCol& out) const;
  void GetBottomRight(CRowCol& out) const;
  DWORD GetDWord1();
  DWORD GetDWord2();
  int GetRows() const;  // 0 when empty
  int GetCols() const;  // 0 when empty
  int IsEqual(const CRowCols& other) const;
  int IsOneCell() const;  // also for the empty rectangle
  int IsInclude(int row, int col) const;
  int IsInclude(const CRowCol& cell) const;
  int IsIncludeRow(int row) const;
  int IsIncludeCol(int col) const;
  // 0 when either rectangle is empty. bWhole: other lies wholly inside;
  // else the two overlap at all.
  int IsInclude(const CRowCols& other, int bWhole) const;
  int IsIntersect(const CRowCols& other) const;  // no test for empty
  // out is emptied first, then takes the overlap of a and b; 0 and out empty
  // when they do not overlap. out may be a or b only if that one is not read
  // again.
  static int GetIntersect(CRowCols& out, const CRowCols& a, const CRowCols& b);
  void Normarize();
  int AtCorner(const CRowCol& cell) const;  // an ENUM_POS value
  // bKeepEmpty: adds only to fields that are not negative; else to all four.
  void Offset(int dRow, int dCol, int bKeepEmpty);
  // Grows the first corner up and left, the second down and right; a first
  // corner that goes negative stops at 0, the second corner has no bound.
  void InflateRect(int dRow1, int dCol1, int dRow2, int dCol2);
  // Grows to the bounding rectangle; an empty argument changes nothing.
  void Combine(const CRowCols& other);
  void Combine(const CRowCol& cell);

  // Insertion: 0 and no change for an empty rectangle, a negative start, a
  // count below 1 or a start behind the last row (column); else 1, with a
  // rectangle at or behind the start moved and one around it stretched.
  int InsertRows(int start, int count);
  int InsertCols(int start, int count);
  // Deletion, one row (column) at a time: the rectangle shrinks or moves up,
  // and the answer is 1 only when it vanished (all four fields then -1).
  int DeleteRows(int start, int count);
  int DeleteCols(int start, int count);

  // The cells row by row, left to right, into the emptied array; their number,
  // 0 for an empty or reversed rectangle. The DWORD form holds packed cells.
  int GetRowColArray(CDWordArray& out);
  int GetRowColArray(CArray<CRowCol, CRowCol>& out);

  // Both corners packed, the first one first. Reading leaves the object as
  // it was when either read fails (0); 1 on success.
  void SerializeRowCols(IStreamOutput* out);
  int DeserializeRowCols(IStreamInput* in);
};

// A cursor over the cells of a rectangle, row by row, left to right:
//   CRowColsRound round(range);
//   while (round.Next()) use(round.cell);
// cell is (-100, -100) after Start and before the first Next, and has row -1
// once finished. The flags tell what the last Next did.
class VKTCALC_API CRowColsRound {
 public:
  CRowCol cell;   // the current cell
  int bColMoved;  // 1: the last Next stepped right within the row
  int bRowMoved;  // 1: the last Next went on to the next row
  CRowCols range;  // the rectangle walked

  CRowColsRound();  // not started: Next answers 0
  explicit CRowColsRound(const CRowCols& rc);
  CRowColsRound(const CRowColsRound& other);
  CRowColsRound& operator=(const CRowColsRound& other);
  ~CRowColsRound();

  void Start(const CRowCols& rc);
  // 1 when cell holds a further cell. An empty range leaves cell at
  // (-100, -100); a reversed one finishes at once.
  int Next();
};
