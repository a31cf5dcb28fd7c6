// tests/containers/CUIntsArrayTest.cpp: each CUIntsArray operation, the steps of new groups, hostile streams.
#include <gtest/gtest.h>

#include <cstdlib>

#include "VKTCalc.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/Text.h"

static void Fill(CUIntsArray& list, const char* p) {  // digits; "(12)" has the step 20, "[12]" not; "~" null
  for (; *p != 0; ++p) {
    if (*p == '(' || *p == '[' || *p == '~') list.New();
    if (*p == '[' || *p == '~') list.SetAt(list.GetSize() - 1, *p == '[' ? new CUIntArray : nullptr);
    if (*p >= '0' && *p <= '9') list.GetAt(list.GetSize() - 1)->Add(UINT(*p - '0'));
  }
}

static std::string Show(CUIntsArray& list) {
  std::string out;
  for (CUIntArray* g : list.aGroups) {
    out += g == nullptr ? "~" : g->GetGrowBy() == 20 ? "(" : "[";
    for (int j = 0; g != nullptr && j < g->GetSize(); ++j) out += char('0' + (*g)[j]);
    out += g == nullptr ? "" : g->GetGrowBy() == 20 ? ")" : "]";
  }
  return out;
}

// op: a letter and n; arg: groups, "=" the list, null, or n bytes for L. F: Find, FindOffset, IsInSameOffset.
static std::string Apply(const char* groups, const char* op, const char* arg) {
  CUIntsArray list, other;
  Fill(list, groups), Fill(other, arg != nullptr && *op != 'L' ? arg : "");
  CUIntsArray* from = arg == nullptr ? nullptr : *arg == '=' ? &list : &other;
  int n = std::atoi(op + 1);
  vkt::test::MemoryInput in(*op == 'L' && arg ? std::vector<BYTE>(arg, arg + n) : std::vector<BYTE>());
  switch (*op) {
    case 'F': return std::to_string(list.Find(n)) + "/" + std::to_string(list.FindOffset(n)) + "/" +
                     std::to_string(list.IsInSameOffset(*other.GetAt(0)));
    case 'R': list.RemoveSameElement(); break;
    case 'O': list.Sort_ByElements(n); break;
    case 'U': list.AppendUnique(*from); break;
    case 'S': list.AppendSingle(*other.GetAt(0)); break;
    case 'P': list.Append(*from); break;
    case 'C': list.Copy(from); break;
    case 'M': list.MoveIn(from, n); return Show(list) + (from == &other ? "+" + Show(other) : "");
    case 'Z': list.SetSize(n); break;
    case 'X': list.DeleteAt(n); break;
    case 'T': list.SetAt(n, other.GetAt(0)); if (list.GetAt(n)) other.aGroups.RemoveAll(); break;  // taken?
    case 'E': list.AddElementToAll(n); [[fallthrough]];
    case 'W': { CStringBuilder text; list.Report(text); return vkt::test::Row(text.GetStr()); }
    case 'V': { vkt::test::MemoryOutput out; list.Serialize(&out); in.bytes = out.bytes; } [[fallthrough]];
    case 'L': n = list.Deserialize(arg ? &in : nullptr); return std::to_string(n) + ":" + Show(list);
  }
  return Show(list);
}

constexpr struct { const char* groups; const char* op; const char* arg; const char* expected; } kCases[] = {
    {"(12)(23)", "F2", "(23)", "0/1/1"}, {"(12)(23)", "F3", "(13)", "1/1/0"}, {"~(5)", "F5", "(9)", "1/0/1"},
    {"(12)(23)", "F4", "(78)", "-1/-1/1"}, {"(1)(2)", "X0", "", "(2)"}, {"", "T0", "[5]", ""},
    {"(123)(31)(135)", "R", "", "(2)()(5)"}, {"(12)", "R", "", "(12)"}, {"(12)~", "R", "", "(12)~"},
    {"(1)", "X1", "", "(1)"}, {"(11)(11)", "R", "", "()()"},  // each repeat in group 0 is tried
    {"(1)(234)(567)(89)", "O0", "", "(234)(567)(89)(1)"}, {"~(1)()", "O0", "", "(1)~()"}, {"", "W", "", ""},
    {"(1)(234)(567)(89)", "O1", "", "(1)(89)(234)(567)"}, {"()", "U", "~", "()"}, {"(1)", "M1", "=", "(1)"},
    {"(12)", "U", "(12)", "(12)"}, {"(21)", "U", "[12]", "(21)(12)"}, {"(1)", "U", "(2)(1)(2)", "(1)(2)"},
    {"(12)", "S", "(12)", "(12)"}, {"~", "S", "(12)", "~[12]"}, {"(1)", "P", "[2]~", "(1)(2)()"},
    {"(1)(2)", "P", "=", "(1)(2)(1)(2)"}, {"(9)", "C", "[1]~()", "(1)()()"}, {"(9)", "C", "=", "(9)"},
    {"(9)", "C", nullptr, "(9)"}, {"(1)", "M0", "[7]~", "(1)[7]~+"}, {"(1)", "M1", "(7)", "(7)+"},
    {"(1)(2)(3)", "Z1", "", "(1)"}, {"~(2)", "Z3", "", "[](2)[]"}, {"(1)(2)", "T0", "[5]", "[5](2)"},
    {"(12)(3)", "W", "", "1,2\r\n3"}, {"()~(1)", "E-1", "", "-1\r\n\r\n1,-1"}, {"(1)", "L0", nullptr, "0:"},
    {"(12)~()", "V", "", "1:[12]~[]"}, {"(1)", "L3", "\x03\0\0", "0:"}, {"", "L4", "\xff\xff\xff\xff", "0:"},
    {"", "L22", "\xff\xff\xff\x7f\x01\x01\0\0\0\x09\0\0\0\x01\x02\0\0\0\x05\0\0\0", "1:[9][50]"},
};

TEST(CUIntsArray, Table) {
  for (const auto& c : kCases) EXPECT_EQ(Apply(c.groups, c.op, c.arg), c.expected) << c.groups << " " << c.op;
}
