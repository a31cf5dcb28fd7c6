// tests/cell/RefTravelerTest.cpp: CCellnameRefTraveler: the filter's events over a formula, in order,
// and how the filter's answers, IsNewCellPass and a change of rowcols during the cells steer the walk.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {
using std::to_string;
using vkt::test::Row;

// Logs "2:name" and "1:name" for variables (a "?" when pNode is not the variable), "3:call/count" for
// reference calls, "0:(row,col)" for cells. On event `on` it answers `answer`; -2 there widens rowcols
// to column 2 and -3 narrows it to its first row instead: the walk reads the bounds anew at each cell.
struct Recorder : ICellFilter {
  int on = -1, answer = 0;
  std::string log;
  int OnCell(int nEvent, CCellname* pName, CRowCol* pCell) override {
    EXPECT_EQ(pCell != nullptr, nEvent == 0);
    log += to_string(nEvent) + ":" +
           (nEvent == 0   ? "(" + to_string(pCell->nRow) + "," + to_string(pCell->nCol) + ") "
            : nEvent == 3 ? Row(pNode->GetTextPtr()) + "/" + to_string(nArgCount) + " "
                          : Row(pName->pszName) + (pName->pszName == pNode->GetTextPtr() ? " " : "? "));
    if (nEvent == on && answer == -2) pName->rowcols.nCol2 = 2;
    if (nEvent == on && answer == -3) pName->rowcols.nRow2 = pName->rowcols.nRow1;
    return nEvent == on ? answer : 0;
  }
};

struct NoCells : CCellnameRefTraveler {
  using CCellnameRefTraveler::CCellnameRefTraveler;
  int IsNewCellPass(ICalcTreeNode*) override { return 0; }
};

// The log ends with "=" and the answer of the walk. An answer of 2 at event 2 spares the parse; a reversed
// range has no cells.
constexpr struct { const char16_t* formula; int on, answer, bNoCells; const char* log; } kWalks[] = {
    {u"A1+B2:B3", -1, 0, 0, "2:A1 1:A1 0:(0,0) 2:B2:B3 1:B2:B3 0:(1,1) 0:(2,1) =0"},
    {u"A1+B2:B3", 0, 1, 0, "2:A1 1:A1 0:(0,0) =1"}, {u"A1+B2:B3", 1, 1, 0, "2:A1 1:A1 =1"},
    {u"A1+B2:B3", 0, 2, 0, "2:A1 1:A1 0:(0,0) 2:B2:B3 1:B2:B3 0:(1,1) =0"}, {u"A1+B2:B3", 2, 1, 0, "2:A1 =1"},
    {u"A1+B2:B3", 1, 2, 0, "2:A1 1:A1 2:B2:B3 1:B2:B3 =0"}, {u"A1+B2:B3", 2, 2, 0, "2:A1 2:B2:B3 =0"},
    {u"A1+B2:B3", -1, 0, 1, "2:A1 1:A1 2:B2:B3 1:B2:B3 =0"}, {u"sum(A1)", -1, 0, 0, "2:A1 1:A1 0:(0,0) =0"},
    {u"ref('A1')", -1, 0, 0, "3:ref/1 0:(0,0) =0"}, {u"ref('A1')", 3, 1, 0, "3:ref/1 =1"},
    {u"ref(1,1,2,2)", -1, 0, 0, "3:ref/4 0:(0,0) 0:(0,1) 0:(1,0) 0:(1,1) =0"},
    {u"ref(2,7)+ref(3,1)", 3, 2, 0, "3:ref/2 3:ref/2 =0"}, {u"ref(1)+sum(2)+7+'B2'", -1, 0, 0, "=0"},
    {u"refalias('x')", -1, 0, 0, "3:refalias/0 =0"}, {u"t@Alias", -1, 0, 0, "2:t@Alias 1:t@Alias =0"},
    {u"total@Alias+ref(2,7)", -1, 0, 1, "2:total@Alias 1:total@Alias 3:ref/2 =0"},
    {u"foo+B0", -1, 0, 0, "2:foo 2:B0 =0"}, {u"B3:A1", -1, 0, 0, "2:B3:A1 1:B3:A1 =0"},
    {u"A1", 0, -2, 0, "2:A1 1:A1 0:(0,0) 0:(0,1) 0:(0,2) =0"},
    {u"B2:B4", 0, -3, 0, "2:B2:B4 1:B2:B4 0:(1,1) =0"},
};

TEST(RefTraveler, EventsAndAnswers) {
  for (const auto& c : kWalks) {
    std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression(c.formula, nullptr));
    ASSERT_NE(root, nullptr) << Row(c.formula);
    Recorder filter;
    CCellname name;
    CCellnameRefTraveler made(&filter, &name), all(nullptr, nullptr);
    NoCells noCells(&filter, &name);
    all = CCellnameRefTraveler(made);
    filter.on = c.on, filter.answer = c.answer;
    const int walked = root->Travel(c.bNoCells ? &noCells : &all, 1);
    EXPECT_EQ(filter.log + "=" + to_string(walked), c.log) << Row(c.formula) << " " << c.on << c.answer;
    EXPECT_EQ(all.Traveling(nullptr), 0);
  }
}

}  // namespace
