// tools/Sheet.h: the sheet mode of vktcalc. A CSV file is a grid of cells:
// a field that starts with "=" is a formula, one that IsPureNumber takes is
// a number, anything else a text, and an empty field an empty cell. Row r,
// column c is the cell GetCellName names (A1 is row 0, column 0).
//
// The phases, in order, each of them once:
//   Load     the CSV into the grid; refuses a grid whose names cannot be written
//   Parse    every formula, once, with ParseExpression_Formula
//   Order    the references of each tree (CCellnameRefTraveler, ranges kept as
//            rectangles), the graph of formula cells and an order in which
//            every cell comes after the cells it reads
//   Compute  each formula in that order through the host's Calculate loop
//   Write    the results as CSV of the same shape
// A cell that fails never stops the run: it holds a text that starts with
// "#" and the others go on.
//
// Error texts: "#cycle A1 -> B1 -> A1" for every cell of a cycle (each cell
// reads the next); "#ref A1" for a cell that reads a cell in error;
// "#1003 <message>" for a formula the library refuses; "#unsupported X" for a
// sheet, alias or @ reference; "#name X" for a name that is neither a cell
// nor given as NAME=VALUE; "#<message>" for a host function that failed.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "VKTCalc.h"
#include "tools/ToolHost.h"

namespace vkt::tool {

class Sheet {
 public:
  // The host gives the calculator, the NAME=VALUE variables and the tool's
  // functions; it must outlive the sheet.
  explicit Sheet(ToolHost& host);
  ~Sheet();
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  // Names go up to column ZX and row 1,000,000; a wider or longer grid is
  // refused, as is text with an unclosed quote. False with the reason.
  static constexpr int kMaxColumns = 700;
  static constexpr int kMaxRows = 1000000;
  bool Load(std::string_view csv, std::string& problem);
  void Parse();
  void Order();
  void Compute();
  std::string Write() const;

  int CellCount() const { return m_cellCount; }
  int FormulaCount() const { return static_cast<int>(m_formulas.size()); }
  int ErrorCount() const { return m_errorCount; }

 private:
  enum class Kind : unsigned char { kEmpty, kNumber, kText, kFormula, kError };
  struct Cell {
    std::string text;          // the field as read; a formula's result once computed
    Kind kind = Kind::kEmpty;  // kFormula until computed
    int formula = -1;          // index into m_formulas
  };
  struct Rect {
    int row1, col1, row2, col2;  // inclusive, normalised, clipped to the grid
  };
  struct Formula {
    int row, col;
    std::unique_ptr<ICalcTreeNode> tree;  // null once computed or failed
    std::vector<Rect> reads;              // every cell and range the tree names
  };

  Cell* At(int row, int col);
  CString NameOf(int row, int col) const;
  void Fail(int formula, std::string text);
  bool Clip(const CRowCols& rowcols, Rect& out) const;
  void WalkReferences(int formula);
  void BuildEdges();
  void MarkCycle(const std::vector<int>& members, const std::vector<int>& component);
  void ComputeFormula(int formula);
  bool AnswerStop(int code, CalculatePara& para, CString& value, std::string& error);
  bool AnswerRect(const Rect* rect, ICalcTreeNode* node, CString& value, std::string& error);

  ToolHost& m_host;
  std::vector<std::vector<Cell>> m_rows;
  int m_columns = 0;  // of the widest row
  int m_cellCount = 0;
  int m_errorCount = 0;
  std::vector<Formula> m_formulas;          // in reading order
  std::vector<std::vector<int>> m_byColumn;  // formula indices of each column, by row
  std::vector<int> m_edgeStart;             // edges of formula f: m_edges[m_edgeStart[f]...]
  std::vector<int> m_edges;                 // the formula cells each formula reads
  std::vector<int> m_order;                 // formulas to compute, each after what it reads
  std::vector<int> m_reachedFrom;           // MarkCycle's search, by formula; -2 between searches
};

}  // namespace vkt::tool
