// tools/Sheet.cpp: the grid, its graph of formula cells and the computing
// loop of tools/Sheet.h. Nothing here recurses over the graph: the order is
// Tarjan's strongly connected components with an explicit stack, which gives
// the components with the cells they read first, so a 100,000-cell chain
// costs no stack and a component of more than one cell (or a cell that reads
// itself) is a cycle.
#include "tools/Sheet.h"

#include <algorithm>
#include <utility>

#include "tools/Csv.h"

namespace vkt::tool {

namespace {

// Reference calls other than ref (refalias, refdata, reftext...) read what a
// grid of ours does not have.
bool IsPlainCellReference(const CCellname& name, bool call) {
  if (!name.strSheet.IsEmpty() || name.bMacro1 != 0 || name.bMacro2 != 0) return false;
  if (call && name.nRefType != RefType_Ref) return false;
  return name.nType == Cellname_Cell || name.nType == Cellname_Range;
}

// Collects the cells and ranges of one tree as rectangles; the first
// reference of a kind the sheet cannot answer ends the walk.
class ReferenceFilter final : public ICellFilter {
 public:
  int OnCell(int nEvent, CCellname* pName, CRowCol*) override {
    if (nEvent != 1 && nEvent != 3) return 0;
    if (!IsPlainCellReference(*pName, nEvent == 3)) {
      if (nEvent == 3) {
        pNode->GetExpression(unsupported);
      } else {
        unsupported = pName->pszName;
      }
      return 1;
    }
    found.push_back(pName->rowcols);
    return 0;
  }

  std::vector<CRowCols> found;
  CString unsupported;
};

// A range stays one rectangle: no event per cell.
class RectangleTraveler final : public CCellnameRefTraveler {
 public:
  using CCellnameRefTraveler::CCellnameRefTraveler;
  int IsNewCellPass(ICalcTreeNode*) override { return 0; }
};

bool IsTextKind(unsigned char resultKind) {
  return resultKind == 1 || resultKind == 3 || resultKind == 4 || resultKind == 7;
}

// "1003 Invalid expression or call: ..." from a failed parse or run.
std::string ErrorText(const CErrorCollector& errors) {
  const CString text(errors.pszErrorText != nullptr ? errors.pszErrorText : u"");
  return std::to_string(errors.nError) + " " + text.ToUtf8();
}

bool IsNumber(const CString& text) {
  return !text.IsEmpty() && CUtilityCalc::IsPureNumber(text, 0, CGmp::CheckStrict_Full, 0) != 0;
}

}  // namespace

Sheet::Sheet(ToolHost& host) : m_host(host) {}
Sheet::~Sheet() = default;

Sheet::Cell* Sheet::At(int row, int col) {
  if (row < 0 || col < 0 || row >= static_cast<int>(m_rows.size())) return nullptr;
  std::vector<Cell>& cells = m_rows[static_cast<std::size_t>(row)];
  return col < static_cast<int>(cells.size()) ? &cells[static_cast<std::size_t>(col)] : nullptr;
}

CString Sheet::NameOf(int row, int col) const {
  CString name;
  CUtilityCalc::GetCellName(name, row, col);
  return name;
}

bool Sheet::Load(std::string_view csv, std::string& problem) {
  std::vector<CsvRecord> records;
  if (!ReadCsv(csv, records, problem)) return false;
  if (records.size() > static_cast<std::size_t>(kMaxRows)) {
    problem = "the sheet has " + std::to_string(records.size()) + " rows; names go up to row " +
              std::to_string(kMaxRows);
    return false;
  }
  for (const CsvRecord& record : records) {
    if (record.size() > static_cast<std::size_t>(kMaxColumns)) {
      problem = "row " + std::to_string(&record - records.data() + 1) + " has " +
                std::to_string(record.size()) + " fields; names go up to column ZX (" +
                std::to_string(kMaxColumns) + ")";
      return false;
    }
  }
  m_rows.resize(records.size());
  for (std::size_t r = 0; r < records.size(); ++r) {
    std::vector<Cell>& cells = m_rows[r];
    cells.resize(records[r].size());
    m_columns = std::max(m_columns, static_cast<int>(cells.size()));
    m_cellCount += static_cast<int>(cells.size());
    for (std::size_t c = 0; c < cells.size(); ++c) {
      Cell& cell = cells[c];
      cell.text = std::move(records[r][c]);
      if (cell.text.empty()) continue;
      if (cell.text[0] == '=') {
        cell.kind = Kind::kFormula;
        cell.formula = static_cast<int>(m_formulas.size());
        m_formulas.push_back({static_cast<int>(r), static_cast<int>(c), nullptr, {}});
      } else {
        cell.kind = IsNumber(CString::FromUtf8(cell.text)) ? Kind::kNumber : Kind::kText;
      }
    }
  }
  return true;
}

void Sheet::Fail(int formula, std::string text) {
  Formula& f = m_formulas[static_cast<std::size_t>(formula)];
  Cell* cell = At(f.row, f.col);
  if (cell->kind != Kind::kError) ++m_errorCount;
  cell->kind = Kind::kError;
  cell->text = "#" + std::move(text);
  f.tree.reset();
}

void Sheet::Parse() {
  for (int i = 0; i < FormulaCount(); ++i) {
    Formula& f = m_formulas[static_cast<std::size_t>(i)];
    Cell* cell = At(f.row, f.col);
    CErrorCollector errors;
    f.tree.reset(CUtilityCalc::ParseExpression_Formula(CString::FromUtf8(cell->text), &errors));
    if (f.tree != nullptr) continue;
    if (errors.nError != 0) {
      Fail(i, ErrorText(errors));
    } else {
      cell->kind = Kind::kText;  // "=" alone: an empty result
      cell->text.clear();
    }
  }
}

// Reversed corners are put in order; what lies outside the grid is empty and
// is left out. False when nothing of the rectangle lies inside.
bool Sheet::Clip(const CRowCols& rowcols, Rect& out) const {
  out.row1 = std::max(0, std::min(rowcols.nRow1, rowcols.nRow2));
  out.row2 = std::min(static_cast<int>(m_rows.size()) - 1, std::max(rowcols.nRow1, rowcols.nRow2));
  out.col1 = std::max(0, std::min(rowcols.nCol1, rowcols.nCol2));
  out.col2 = std::min(m_columns - 1, std::max(rowcols.nCol1, rowcols.nCol2));
  return out.row1 <= out.row2 && out.col1 <= out.col2;
}

void Sheet::WalkReferences(int formula) {
  Formula& f = m_formulas[static_cast<std::size_t>(formula)];
  if (f.tree == nullptr) return;
  ReferenceFilter filter;
  CCellname name;
  RectangleTraveler traveler(&filter, &name);
  f.tree->Travel(&traveler, 1);
  if (!filter.unsupported.IsEmpty()) {
    Fail(formula, "unsupported " + filter.unsupported.ToUtf8());
    return;
  }
  for (const CRowCols& found : filter.found) {
    Rect rect{};
    if (Clip(found, rect)) f.reads.push_back(rect);
  }
}

// The formula cells inside each rectangle come from the column index by
// binary search, so a long range costs its formula cells, not its cells.
void Sheet::BuildEdges() {
  m_byColumn.assign(static_cast<std::size_t>(m_columns), {});
  for (int i = 0; i < FormulaCount(); ++i) {
    const Formula& f = m_formulas[static_cast<std::size_t>(i)];
    m_byColumn[static_cast<std::size_t>(f.col)].push_back(i);  // reading order: by row
  }
  m_edgeStart.assign(m_formulas.size() + 1, 0);
  m_edges.clear();
  for (int i = 0; i < FormulaCount(); ++i) {
    m_edgeStart[static_cast<std::size_t>(i)] = static_cast<int>(m_edges.size());
    for (const Rect& rect : m_formulas[static_cast<std::size_t>(i)].reads) {
      for (int col = rect.col1; col <= rect.col2; ++col) {
        const std::vector<int>& column = m_byColumn[static_cast<std::size_t>(col)];
        auto it = std::lower_bound(column.begin(), column.end(), rect.row1, [this](int id, int row) {
          return m_formulas[static_cast<std::size_t>(id)].row < row;
        });
        for (; it != column.end() && m_formulas[static_cast<std::size_t>(*it)].row <= rect.row2; ++it)
          m_edges.push_back(*it);
      }
    }
  }
  m_edgeStart.back() = static_cast<int>(m_edges.size());
}

// Each cell of the component gets the shortest cycle through it, found
// breadth-first inside the component; the cells on that cycle take it too,
// told from their own place, so a ring costs one search. A long cycle is
// named by its first cells and its length.
void Sheet::MarkCycle(const std::vector<int>& members, const std::vector<int>& component) {
  constexpr std::size_t kNamed = 6;
  std::vector<int> sorted(members);
  std::sort(sorted.begin(), sorted.end());
  const int id = component[static_cast<std::size_t>(sorted.front())];
  std::vector<int>& from = m_reachedFrom;  // -2 for unseen, and left so for the next component
  std::vector<char> named(members.size(), 0);  // by position in sorted
  auto isNamed = [&](int cell) -> char& {
    const auto at = std::lower_bound(sorted.begin(), sorted.end(), cell) - sorted.begin();
    return named[static_cast<std::size_t>(at)];
  };
  for (const int start : sorted) {
    if (isNamed(start) != 0) continue;
    std::vector<int> queue{start};
    int last = -1;
    for (std::size_t at = 0; at < queue.size() && last < 0; ++at) {
      const auto v = static_cast<std::size_t>(queue[at]);
      for (int e = m_edgeStart[v]; e < m_edgeStart[v + 1] && last < 0; ++e) {
        const int to = m_edges[static_cast<std::size_t>(e)];
        const auto w = static_cast<std::size_t>(to);
        if (to == start) last = queue[at];
        if (component[w] != id || from[w] != -2) continue;
        from[w] = queue[at];
        queue.push_back(to);
      }
    }
    std::vector<int> cycle;  // start, then each cell it reads in turn
    for (int v = last; v != start; v = from[static_cast<std::size_t>(v)]) cycle.push_back(v);
    cycle.push_back(start);
    std::reverse(cycle.begin(), cycle.end());
    for (int v : queue) from[static_cast<std::size_t>(v)] = -2;
    for (std::size_t shift = 0; shift < cycle.size(); ++shift) {
      const int cell = cycle[shift];
      if (isNamed(cell) != 0) continue;
      isNamed(cell) = 1;
      std::string text = "cycle";
      for (std::size_t i = 0; i <= std::min(cycle.size(), kNamed); ++i) {
        const bool cut = i == kNamed && cycle.size() > kNamed;
        const Formula& f = m_formulas[static_cast<std::size_t>(cycle[(shift + i) % cycle.size()])];
        text += (i == 0 ? " " : " -> ") + (cut ? std::string("...") : NameOf(f.row, f.col).ToUtf8());
      }
      if (cycle.size() > kNamed) text += " (" + std::to_string(cycle.size()) + " cells)";
      Fail(cell, text);
    }
  }
}

void Sheet::Order() {
  for (int i = 0; i < FormulaCount(); ++i) WalkReferences(i);
  BuildEdges();
  const std::size_t n = m_formulas.size();
  std::vector<int> index(n, -1), low(n, 0), component(n, -1);
  std::vector<char> onStack(n, 0);
  std::vector<int> stack;
  std::vector<std::pair<int, int>> calls;  // formula, its next edge
  int counter = 0;
  int components = 0;
  m_order.clear();
  m_reachedFrom.assign(n, -2);
  auto enter = [&](int v) {
    index[static_cast<std::size_t>(v)] = low[static_cast<std::size_t>(v)] = counter++;
    stack.push_back(v);
    onStack[static_cast<std::size_t>(v)] = 1;
    calls.emplace_back(v, m_edgeStart[static_cast<std::size_t>(v)]);
  };
  for (int root = 0; root < static_cast<int>(n); ++root) {
    if (index[static_cast<std::size_t>(root)] >= 0) continue;
    enter(root);
    while (!calls.empty()) {
      const int v = calls.back().first;
      const auto uv = static_cast<std::size_t>(v);
      if (calls.back().second < m_edgeStart[uv + 1]) {
        const int w = m_edges[static_cast<std::size_t>(calls.back().second++)];
        const auto uw = static_cast<std::size_t>(w);
        if (index[uw] < 0) {
          enter(w);
        } else if (onStack[uw] != 0) {
          low[uv] = std::min(low[uv], index[uw]);
        }
        continue;
      }
      calls.pop_back();
      if (!calls.empty()) {
        const auto parent = static_cast<std::size_t>(calls.back().first);
        low[parent] = std::min(low[parent], low[uv]);
      }
      if (low[uv] != index[uv]) continue;
      std::vector<int> members;
      int w = -1;
      do {
        w = stack.back();
        stack.pop_back();
        onStack[static_cast<std::size_t>(w)] = 0;
        component[static_cast<std::size_t>(w)] = components;
        members.push_back(w);
      } while (w != v);
      ++components;
      const int* first = m_edges.data() + m_edgeStart[uv];
      const int* end = m_edges.data() + m_edgeStart[uv + 1];
      if (members.size() > 1 || std::find(first, end, v) != end) {
        MarkCycle(members, component);
      } else {
        m_order.push_back(v);
      }
    }
  }
}

void Sheet::Compute() {
  for (int formula : m_order) ComputeFormula(formula);
}

void Sheet::ComputeFormula(int formula) {
  Formula& f = m_formulas[static_cast<std::size_t>(formula)];
  ICalc* calc = m_host.Calc();
  if (f.tree == nullptr) return;  // failed before, or "=" alone
  if (calc == nullptr) return Fail(formula, "out of memory");
  CErrorCollector errors;
  CalculatePara para;
  para.pError = &errors;
  para.pRoot = f.tree.get();
  para.bCheckGate = 0;
  para.nDispFormat = 0;
  int answers = 0;
  for (;;) {
    const int code = calc->Calculate(para);
    if (code == 0) {
      CString value;
      f.tree->GetValue(value, 0, 0);
      Cell* cell = At(f.row, f.col);
      const bool text = IsTextKind(para.nResultKind) || f.tree->GetKind() == 7 || !IsNumber(value);
      cell->kind = text ? Kind::kText : Kind::kNumber;
      cell->text = value.ToUtf8();
      f.tree.reset();
      return;
    }
    if (code == 6) return Fail(formula, "the call of " + errors.strFuncName.ToUtf8() + " was held back");
    if (code != 2 && code != 3) {
      return Fail(formula, ErrorText(errors));
    }
    CString value;
    std::string error;
    if (!AnswerStop(code, para, value, error)) return Fail(formula, error);
    if (++answers > ToolHost::kMaxAnswers)
      return Fail(formula, "gave up after " + std::to_string(answers) + " values");
    if (calc->SetNodeValue(para.pRoot, para.pCurrent, value, para.pError, nullptr) == 0) {
      return Fail(formula, ErrorText(errors));
    }
  }
}

// Code 2 asks for a name, code 3 for a call: cells and ranges, by name or by
// ref, come from the grid; everything else goes to the tool's host.
bool Sheet::AnswerStop(int code, CalculatePara& para, CString& value, std::string& error) {
  const CString request = para.strResult;
  CCellname name(request.GetString());
  int count = 0;
  bool cell = false;
  bool reference = false;
  CString call;  // a reference call as written: ref('B1@Sheet2')
  if (code == 2) {
    cell = CUtilityCalc::ParseCellname(name) != Cellname_None && IsPlainCellReference(name, false);
  } else {
    CStringArray parts;
    CUtilityCalc::CString2Array(parts, request, u"\r\n", 0);
    reference = parts.GetSize() > 0 && CCellname::DetectRefType(parts[0]) != RefType_None;
    for (int i = 0; reference && i < parts.GetSize(); ++i) {
      call += i == 0 ? u"" : i == 1 ? u"(" : u", ";
      call += parts[i];
    }
    call += u")";
    cell = reference && name.ParseRefFunc(parts, &count) != 0 && IsPlainCellReference(name, true);
  }
  if (cell) {
    Rect rect{};
    return AnswerRect(Clip(name.rowcols, rect) ? &rect : nullptr, para.pCurrent, value, error);
  }
  if (reference) {
    error = "unsupported " + call.ToUtf8();
    return false;
  }
  const int answered = code == 2 ? m_host.AnswerVariable(request, value, error)
                                 : m_host.AnswerFunction(request, value, error);
  if (answered == kExitOk) return true;
  if (code == 2) error = "name " + request.ToUtf8();
  return false;
}

// A cell answers its number, or its text in quotes; an empty one 0 where a
// number is expected, else the empty text. A range joins its cells by ", ",
// which the library parses in as that many arguments. Chosen: the blank,
// since SetNodeValue takes "3,7" for the number 37 (commas as grouping).
bool Sheet::AnswerRect(const Rect* rect, ICalcTreeNode* node, CString& value, std::string& error) {
  const bool wantsNumber = m_host.Calc()->GetVarExpectedKind(node) == 2;
  const CString empty(wantsNumber ? u"0" : u"''");
  if (rect == nullptr) {
    value = empty;
    return true;
  }
  value.Empty();
  for (int row = rect->row1; row <= rect->row2; ++row) {
    for (int col = rect->col1; col <= rect->col2; ++col) {
      const Cell* cell = At(row, col);
      if (row != rect->row1 || col != rect->col1) value += u", ";
      if (cell == nullptr || cell->kind == Kind::kEmpty) {
        value += empty;
      } else if (cell->kind == Kind::kNumber) {
        value += CString::FromUtf8(cell->text);
      } else if (cell->kind == Kind::kText) {
        CString text = CString::FromUtf8(cell->text);
        CUtilityCalc::Attach_Quotes(text, 1);
        value += text;
      } else {
        // In error, or a formula that only a computed ref reached: not yet in order.
        error = (cell->kind == Kind::kError ? "ref " : "unordered ") + NameOf(row, col).ToUtf8();
        return false;
      }
    }
  }
  return true;
}

std::string Sheet::Write() const {
  std::string out;
  for (const std::vector<Cell>& cells : m_rows) {
    for (std::size_t c = 0; c < cells.size(); ++c) {
      if (c > 0) out.push_back(',');
      AppendCsvField(out, cells[c].text);
    }
    out.push_back('\n');
  }
  return out;
}

}  // namespace vkt::tool
