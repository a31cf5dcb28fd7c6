// cell/CCellnameRefTraveler.cpp: the walk that reports a tree's references,
// and then their cells, to the host's filter.
#include "CCellname.h"
#include "CUtilityCalc.h"

namespace {

constexpr unsigned char kKindCall = 3;
constexpr unsigned char kKindVariable = 5;

// The filter's answers.
constexpr int kStopWalk = 1;
constexpr int kNodeDone = 2;

// The events.
constexpr int kEventCell = 0;
constexpr int kEventNameParsed = 1;
constexpr int kEventNameFound = 2;
constexpr int kEventRefCall = 3;

}  // namespace

CCellnameRefTraveler::CCellnameRefTraveler(ICellFilter* filter, CCellname* cellname)
    : pFilter(filter), pCellname(cellname) {}
CCellnameRefTraveler::CCellnameRefTraveler(const CCellnameRefTraveler& other) = default;
CCellnameRefTraveler& CCellnameRefTraveler::operator=(const CCellnameRefTraveler& other) = default;
CCellnameRefTraveler::~CCellnameRefTraveler() = default;

int CCellnameRefTraveler::IsNewCellPass(ICalcTreeNode*) { return 1; }

int CCellnameRefTraveler::Traveling(ICalcTreeNode* node) {
  if (!node || !pFilter || !pCellname) return 0;
  unsigned char kind = node->GetKind();
  if (kind != kKindCall && kind != kKindVariable) return 0;
  pFilter->pNode = node;
  int event = kEventRefCall;
  if (kind == kKindCall) {
    // Any other call goes on silently to its arguments.
    if (!pCellname->ParseRefFunc(node, &pFilter->nArgCount)) return 0;
  } else {
    pCellname->pszName = node->GetTextPtr();
    if (!pCellname->pszName) return 0;
    int answer = pFilter->OnCell(kEventNameFound, pCellname, nullptr);
    if (answer == kStopWalk) return 1;
    if (answer == kNodeDone) return 0;
    if (CUtilityCalc::ParseCellname(*pCellname) == Cellname_None) return 0;
    event = kEventNameParsed;
  }
  int answer = pFilter->OnCell(event, pCellname, nullptr);
  if (answer == kStopWalk) return 1;
  if (answer == kNodeDone) return 0;
  return SubContinue();
}

int CCellnameRefTraveler::SubContinue() {
  if (!IsNewCellPass(pFilter->pNode)) return 0;
  if (pCellname->nType != Cellname_Cell && pCellname->nType != Cellname_Range) return 0;
  // The bounds are read anew at each step: the filter may move them. The
  // counters are wider than a field, so a bound of INT_MAX ends the pass.
  const CRowCols& range = pCellname->rowcols;
  for (long long row = range.nRow1; row <= range.nRow2; ++row) {
    for (long long col = range.nCol1; col <= range.nCol2; ++col) {
      CRowCol cell(static_cast<int>(row), static_cast<int>(col));
      int answer = pFilter->OnCell(kEventCell, pCellname, &cell);
      if (answer == kStopWalk) return 1;
      if (answer == kNodeDone) return 0;
    }
  }
  return 0;
}
