// toolbox/Sorting.cpp: the sort patterns that a column definition spells as
// text, the comparison they drive (text whose digit runs compare as exact
// numbers through CGmp), and the sorts of string and number arrays.
//
// Text parts collate through StrCmpW: the runtime's collation by the process
// locale, with case or folded to lower case.
//
// Every sort here goes through MergeSort below rather than std::sort: the
// leading-number order is no strict weak order (9 < 10 by number, while a
// locale that passes over the minus can put 10 < -5 < 9), and std::sort may
// then read past its range. A merge only ever permutes what it is given.
#include <algorithm>
#include <utility>
#include <vector>

#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "platform/Sync.h"
#include "platform/WideRuntime.h"

namespace {

// The keywords of a sort pattern: the bits each sets and clears. Parsing
// ignores case; BuildColSortPattern writes the first spelling of a bit.
struct PatternKeyword {
  const char16_t* word;
  BYTE set;
  BYTE clear;
};
constexpr PatternKeyword kPatternKeywords[] = {
    {u"recogonizeInt", ColSort_Int, ColSort_Double},
    {u"recogonizeInteger", ColSort_Int, ColSort_Double},
    {u"recogonizeDouble", ColSort_Double, ColSort_Int},
    {u"recogonizeDecimal", ColSort_Double, ColSort_Int},
    {u"ignoreComma", ColSort_IgnoreComma, 0},
    {u"matchCase", ColSort_MatchCase, 0},
    {u"byText", ColSort_ByText, 0},
    {u"bydata", 0, ColSort_ByText},
};

const char16_t* KeywordOf(BYTE bit) {
  for (const PatternKeyword& k : kPatternKeywords)
    if (k.set == bit) return k.word;
  return u"";
}

// Bottom-up merge through a scratch array. Every index stays inside the
// array whatever `less` answers, so a relation that is no strict weak order
// gives some permutation of the input, never a fault. It happens to be
// stable; the callers do not promise that.
template <class T, class Less>
void MergeSort(std::vector<T>& items, Less less) {
  const std::size_t n = items.size();
  std::vector<T> merged(n);
  for (std::size_t width = 1; width < n; width *= 2) {
    for (std::size_t lo = 0; lo < n; lo += 2 * width) {
      const std::size_t mid = std::min(lo + width, n);
      const std::size_t hi = std::min(lo + 2 * width, n);
      std::size_t i = lo;
      std::size_t j = mid;
      std::size_t k = lo;
      while (i < mid && j < hi) merged[k++] = less(items[j], items[i]) ? items[j++] : items[i++];
      while (i < mid) merged[k++] = items[i++];
      while (j < hi) merged[k++] = items[j++];
    }
    items.swap(merged);
  }
}

// Moving an element: CString by its move assignment (its bytes are never
// copied raw), CGmp field by field, since it has no move of its own.
void MoveInto(CString& to, CString& from) { to = std::move(from); }
void MoveInto(CGmp& to, CGmp& from) {
  to.m_strInt = std::move(from.m_strInt);
  to.m_strDec = std::move(from.m_strDec);
  to.m_bNeg = from.m_bNeg;
}

// Sorts the n elements at data through an array of their indexes, then moves
// each element once to its place, cycle by cycle, with one element aside.
template <class T, class Less>
void SortInPlace(T* data, int n, Less less) {
  if (n < 2) return;
  std::vector<int> order(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) order[static_cast<std::size_t>(i)] = i;
  MergeSort(order, [&](int x, int y) { return less(data[x], data[y]); });
  // Place k takes the element at order[k]; a place is marked done by
  // order[k] = k, so each cycle is walked once.
  auto at = [&order](int k) -> int& { return order[static_cast<std::size_t>(k)]; };
  for (int start = 0; start < n; ++start) {
    if (at(start) == start) continue;
    T aside;
    MoveInto(aside, data[start]);
    int k = start;
    while (at(k) != start) {
      const int from = at(k);
      MoveInto(data[k], data[from]);
      at(k) = k;
      k = from;
    }
    MoveInto(data[k], aside);
    at(k) = k;
  }
}

// The settings of the string sort in progress, written and read only while
// g_sortLock is held: the comparison reads them, as a qsort callback would.
int g_sortCase = 0;
int g_sortSkip = 0;
int g_sortLeftNumber = 0;
CCritSec g_sortLock;  // made at load; used for nothing else

int Collate(const char16_t* a, const char16_t* b) { return CUtilityCalc::StrCmpW(a, b, g_sortCase); }

int LeadingDigits(const CString& text) {
  int n = 0;
  while (n < text.GetLength() && CStrKit::IsDigit(text.GetString()[n])) ++n;
  return n;
}

int CompareForSort(const CString& a, const CString& b) {
  if (g_sortSkip >= 1) {
    const char16_t* ra = a.GetLength() > g_sortSkip ? a.GetString() + g_sortSkip : u"";
    const char16_t* rb = b.GetLength() > g_sortSkip ? b.GetString() + g_sortSkip : u"";
    return Collate(ra, rb);
  }
  if (!g_sortLeftNumber) return Collate(a, b);
  const int na = LeadingDigits(a);
  const int nb = LeadingDigits(b);
  if (na == 0 || nb == 0) return Collate(a, b);
  // The digits go in unvalidated: leading zeros stay and count as length,
  // so 007 comes after 7 and after 10, while 0 and 00 are equal.
  CGmp x;
  CGmp y;
  x.m_strInt = CString(a.GetString(), na);
  y.m_strInt = CString(b.GetString(), nb);
  const int c = x.Compare(&y, 1);
  return c != 0 ? c : Collate(a.GetString() + na, b.GetString() + nb);
}

void SortUnderLock(CStringArray& items, int bCase, int nSkip, int bLeftNumber) {
  if (items.GetSize() < 2) return;
  CCritSecGuard guard(g_sortLock);  // held for the whole sort
  g_sortCase = bCase;
  g_sortSkip = nSkip;
  g_sortLeftNumber = bLeftNumber;
  SortInPlace(items.GetData(), items.GetSize(),
              [](const CString& x, const CString& y) { return CompareForSort(x, y) < 0; });
}

// Takes the number at the front of text, deleting what it takes: digits, one
// point with ColSort_Double, and commas before the point passed over with
// ColSort_IgnoreComma. The unit that ends the number stays.
CString TakeNumber(CString& text, Enum_ColSortPattern pattern) {
  CString run;
  bool point = false;
  int k = 0;
  for (; k < text.GetLength(); ++k) {
    const char16_t c = text.GetString()[k];
    if (CStrKit::IsDigit(c)) {
      run += c;
    } else if (c == u'.' && (pattern & ColSort_Double) && !point) {
      point = true;
      run += c;
    } else if (!(c == u',' && (pattern & ColSort_IgnoreComma) && !point)) {
      break;
    }
  }
  text.Delete(0, k);
  return run;
}

// Significant digits of a run: the integer part without leading zeros and
// the decimals without trailing zeros.
struct RunDigits {
  const char16_t* whole;
  int wholeLength;
  const char16_t* decimals;
  int decimalLength;
};

RunDigits DigitsOf(const CString& run) {
  const char16_t* p = run.GetString();
  const int n = run.GetLength();
  int point = run.Find(u'.');
  if (point < 0) point = n;
  int first = 0;
  while (first < point && p[first] == u'0') ++first;
  int last = n;
  while (last > point + 1 && p[last - 1] == u'0') --last;
  return {p + first, point - first, p + std::min(point + 1, n), std::max(last - point - 1, 0)};
}

// Digit text by magnitude: integer length, then its digits, then decimals
// place by place with a missing place read as 0.
int CompareDigitText(const RunDigits& a, const RunDigits& b) {
  if (a.wholeLength != b.wholeLength) return a.wholeLength < b.wholeLength ? -1 : 1;
  for (int i = 0; i < a.wholeLength; ++i)
    if (a.whole[i] != b.whole[i]) return a.whole[i] < b.whole[i] ? -1 : 1;
  for (int i = 0; i < std::max(a.decimalLength, b.decimalLength); ++i) {
    const char16_t da = i < a.decimalLength ? a.decimals[i] : u'0';
    const char16_t db = i < b.decimalLength ? b.decimals[i] : u'0';
    if (da != db) return da < db ? -1 : 1;
  }
  return 0;
}

// A run fits CGmp when SetString takes it and keeps and compares every digit
// of it: all significant digits within the full length, the decimals within
// the places Compare reads (one below the decimal limit).
bool Fits(const CString& run, CGmp& value) {
  if (!value.SetString(run.GetString(), CGmp::CheckStrict_Full)) return false;
  const RunDigits d = DigitsOf(run);
  return d.wholeLength + d.decimalLength <= CGmp::GetMaxFullLength() &&
         d.decimalLength < CGmp::GetMaxDecLength();
}

// Two digit runs, through CGmp::Compare with flag 0 when both fit CGmp. A
// number in the text has no limit of length, so when either run does not
// fit, the two compare as digit text by magnitude instead; on runs that fit
// both ways give the same answer. Both runs start with a digit, so neither
// is empty and no null value takes part.
int CompareRuns(const CString& a, const CString& b) {
  CGmp x;
  CGmp y;
  if (Fits(a, x) && Fits(b, y)) return x.Compare(&y, 0);
  return CompareDigitText(DigitsOf(a), DigitsOf(b));
}

// The field in front of the first sep (the whole text without one), deleted
// from text with its sep.
CString TakeField(CString& text, int sepAt) {
  if (sepAt < 0) return std::move(text);
  CString field = text.Left(sepAt);
  text.Delete(0, sepAt + 1);
  return field;
}

}  // namespace

int CUtilityCalc::CompareStringW(CString& a, CString& b, Enum_ColSortPattern pattern, WORD sep) {
  if (sep != 0) return CompareStringByAD(a, b, pattern, sep, 'a');
  const int bCase = (pattern & ColSort_MatchCase) ? 1 : 0;
  if (pattern & (ColSort_Int | ColSort_Double)) {
    for (;;) {
      const int n = std::min(a.GetLength(), b.GetLength());
      const char16_t* pa = a.GetString();
      const char16_t* pb = b.GetString();
      int i = 0;
      while (i < n && !CStrKit::IsDigit(pa[i]) && !CStrKit::IsDigit(pb[i])) ++i;
      if (i == n || !CStrKit::IsDigit(pa[i]) || !CStrKit::IsDigit(pb[i])) break;
      if (i > 0) {
        const int c = StrCmpW(a.Left(i), b.Left(i), bCase);
        if (c != 0) return c;
        a.Delete(0, i);
        b.Delete(0, i);
      }
      const CString ra = TakeNumber(a, pattern);
      const CString rb = TakeNumber(b, pattern);
      const int c = CompareRuns(ra, rb);
      if (c != 0) return c;
      a.TrimLeft();
      b.TrimLeft();
    }
  }
  return StrCmpW(a, b, bCase);
}

// The walk goes on past a difference only to count fields; each field is
// deleted with its sep as it is passed, so the text that still has fields
// when the other runs out keeps them.
int CUtilityCalc::CompareStringByAD(CString& a, CString& b, Enum_ColSortPattern pattern, WORD sep,
                                    BYTE order) {
  const int sign = (order == 'd' || order == 'D') ? -1 : 1;
  if (a.IsEmpty() || b.IsEmpty()) return sign * (!a.IsEmpty() - !b.IsEmpty());
  int held = 0;
  for (;;) {
    const int pa = a.Find(static_cast<char16_t>(sep));
    const int pb = b.Find(static_cast<char16_t>(sep));
    CString fa = TakeField(a, pa);
    CString fb = TakeField(b, pb);
    if (held == 0) held = CompareStringW(fa, fb, pattern, 0);
    if (pa < 0 || pb < 0) return held != 0 ? sign * held : (pa >= 0) - (pb >= 0);
  }
}

BYTE CUtilityCalc::ParseColSortPattern(const char16_t* text) {
  if (text == nullptr) return 0;
  CStringArray items;
  CStrKit::CString2Array(items, text, u',', 1);
  BYTE pattern = 0;
  for (const CString& item : items)
    for (const PatternKeyword& k : kPatternKeywords)
      if (vkt::_wcsicmp(item, k.word) == 0) pattern = static_cast<BYTE>((pattern & ~k.clear) | k.set);
  return pattern;
}

void CUtilityCalc::BuildColSortPattern(CString& out, BYTE pattern) {
  CStringArray items;
  if (pattern & (ColSort_Int | ColSort_Double)) {
    items.Add(KeywordOf((pattern & ColSort_Int) ? ColSort_Int : ColSort_Double));
    if (pattern & ColSort_IgnoreComma) items.Add(KeywordOf(ColSort_IgnoreComma));
  }
  if (pattern & ColSort_MatchCase) items.Add(KeywordOf(ColSort_MatchCase));
  if (pattern & ColSort_ByText) items.Add(KeywordOf(ColSort_ByText));
  out = CStrKit::Array2CString(items, u',');
}

void CUtilityCalc::Sort_CStringArray(CStringArray& items, int bCase, int nSkip) {
  SortUnderLock(items, bCase, nSkip, 0);
}

void CUtilityCalc::Sort_CStringArray_LeftNumber(CStringArray& items, int bCase) {
  SortUnderLock(items, bCase, 0, 1);
}

void CUtilityCalc::Sort_CStringArrayByLen(CStringArray& items) {
  SortInPlace(items.GetData(), items.GetSize(),
              [](const CString& x, const CString& y) { return x.GetLength() < y.GetLength(); });
}

// Each text is read once, by the text constructor; a text that is no number
// sorts by what SetString gathered before the fault.
void CUtilityCalc::Sort_CDoubleArray(CStringArray& items) {
  const int n = items.GetSize();
  if (n < 2) return;
  std::vector<CGmp> values;
  values.reserve(static_cast<std::size_t>(n));
  for (const CString& item : items) values.emplace_back(item.GetString());
  const CString* base = items.GetData();
  auto value = [&](const CString& item) { return &values[static_cast<std::size_t>(&item - base)]; };
  SortInPlace(items.GetData(), n,
              [&](const CString& x, const CString& y) { return value(x)->Compare(value(y), 0) < 0; });
}

// Ascending by value. A NaN is neither below nor above anything, so with
// NaN present the result is some permutation of the values, not sorted
// around it; never a fault.
void CUtilityCalc::Sort_CDoubleArray(CArray<double, double>& items) {
  std::vector<double> values(items.begin(), items.end());
  MergeSort(values, [](double x, double y) { return x < y; });
  std::copy(values.begin(), values.end(), items.begin());
}

void CUtilityCalc::Sort_CDoubleArray(CArray<CGmp, CGmp>& items) {
  SortInPlace(items.GetData(), items.GetSize(), [](CGmp& x, CGmp& y) { return x.Compare(&y, 0) < 0; });
}
