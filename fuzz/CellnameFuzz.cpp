// fuzz/CellnameFuzz.cpp: any bytes are a cell or range name, and a formula
// whose references are walked. Nothing may crash, leak or hang; a cell that
// reads in the plain form and lies within the writable limits must write
// back as a name that reads as the same cell; a reference walk must visit
// each cell of a range once.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "VKTCalc.h"

namespace {

[[noreturn]] void Fail(const char* what, const std::u16string& text) {
  std::fprintf(stderr, "%s: %s\n", what,
               CString(text.data(), static_cast<int>(text.size())).ToUtf8().c_str());
  __builtin_trap();
}

void CheckRoundTrip(const std::u16string& name) {
  CRowCol cell;
  if (!CUtilityCalc::CellName2RowCol(cell, name.c_str(), 0)) return;
  CString written;
  if (!CUtilityCalc::GetCellName(written, cell)) return;
  CRowCol again;
  if (!CUtilityCalc::CellName2RowCol(again, written, 1) || !again.IsEqual(cell))
    Fail("a written cell name reads differently", name);
}

// Counts the cells of each reference against the cells its range holds;
// done with a node after 10,000 cells, so that ref(1, 1, 99999, 99999) ends.
class CountingFilter : public ICellFilter {
 public:
  int OnCell(int event, CCellname* name, CRowCol*) override {
    if (event == 1 || event == 3) {
      const CRowCols& rc = name->rowcols;
      expected += std::max(0LL, (rc.nRow2 - 1LL * rc.nRow1 + 1) * (rc.nCol2 - 1LL * rc.nCol1 + 1));
      nodeCells = 0;
    }
    if (event != 0) return 0;
    ++cells;
    return ++nodeCells > 10000 ? 2 : 0;
  }
  long long expected = 0;
  long long cells = 0;
  long long nodeCells = 0;
};

void WalkReferences(const std::u16string& formula) {
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula.c_str(), nullptr));
  if (!root) return;
  CountingFilter filter;
  CCellname cellname;
  CCellnameRefTraveler traveler(&filter, &cellname);
  root->Travel(&traveler, 1);
  if (filter.cells > filter.expected) Fail("the walk reported more cells than its ranges hold", formula);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;
  std::u16string text(size / 2, u'\0');
  std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
  text = text.substr(0, text.find(u'\0'));

  CheckRoundTrip(text);
  CRowCols range;
  int macro1 = 0, macro2 = 0;
  CUtilityCalc::CellName2RowCols(range, text.c_str(), &macro1, &macro2, 1);
  CCellname cellname(text.c_str());
  CUtilityCalc::ParseCellname(cellname);
  CString marked(text.c_str());
  CString sheet, alias;
  CUtilityCalc::ParseCellname_SheetAliasMacro(marked, macro1, &sheet, &alias);
  WalkReferences(text);
  return 0;
}
