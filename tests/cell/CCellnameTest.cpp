// tests/cell/CCellnameTest.cpp: CCellname: reference function names, names with sheet, alias and macro
// markers, reference calls read from arrays and from trees and written back, page macros.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {
using std::to_string;
using vkt::test::Row;
struct Case { const char16_t* in; const char* expected; };

std::string Show(const CRowCols& r) {
  return to_string(r.nRow1) + "," + to_string(r.nCol1) + "," + to_string(r.nRow2) + "," + to_string(r.nCol2);
}
// "type:r1,c1,r2,c2:flags:sheet:alias1:alias2"
std::string Show(const CCellname& c) {
  return to_string(c.nType) + ":" + Show(c.rowcols) + ":" + to_string(c.bMacro1) + to_string(c.bMacro2) +
         ":" + Row(c.strSheet) + ":" + Row(c.strAlias1) + ":" + Row(c.strAlias2);
}

// D: DetectRefType. G: GetPN of page macro `in` (a null info gives 0) and GetPNMacro. N: ParseCellname
// into a name with junk, "type:rowcols:flags:sheet:alias1:alias2" and then nRefType and strTail (cleared);
// a failed range keeps what it read, a failed cell its macro flag.
// S: ParseCellname_SheetAliasMacro with bMacro at 7, sheet and alias "old", "answer text:bMacro:sheet:alias";
// the text is written back only on success; the same without the pointers. A: ParseRefFunc on the items
// split at '|' (null: none), "answer count refType name tail[items left]"; quotes come off, then blanks;
// a second corner takes two numbers; there is no range check.
constexpr struct { char op; const char16_t* in; const char* expected; } kTexts[] = {
    {'G', u"0", "4 vpages"}, {'G', u"1", "3 hpages"}, {'G', u"2", "10 pages"}, {'G', u"3", "3 vpage"},
    {'G', u"4", "2 hpage"}, {'G', u"5", "1 page"}, {'G', u"6", "0 pagesum"}, {'G', u"7", "0 <null>"},
    {'D', u"ref", "1"}, {'D', u"REF", "1"}, {'D', u"refalias", "2"}, {'D', u"RefAliasData", "6"},
    {'D', u"refaliastext", "10"}, {'D', u"refdata", "4"}, {'D', u"refTEXT", "8"}, {'D', u"refx", "0"},
    {'D', u"refaliasx", "0"}, {'D', u"refdatax", "0"}, {'D', u"refaliasalias", "0"}, {'D', u"re", "0"},
    {'D', u"xref", "0"}, {'D', u"", "0"}, {'D', nullptr, "0"}, {'N', u"B7", "3:6,1,6,1:00::: 0"},
    {'N', u"B7:C9", "4:6,1,8,2:00::: 0"}, {'N', u"C9:B7", "4:8,2,6,1:00::: 0"},
    {'N', u"A:C", "0:-1,0,-1,2:00::: 0"}, {'N', u"@B7", "3:6,1,6,1:10::: 0"},
    {'N', u"@B", "0:9,9,9,9:00::: 0"}, {'N', u"B7@Sheet2", "3:6,1,6,1:00:Sheet2:: 0"},
    {'N', u"@Sheet2B7", "3:6,1,6,1:00:Sheet2:: 0"}, {'N', u"B7@sheet2", "3:6,1,6,1:00:sheet2:: 0"},
    {'N', u"@B7@Sheet2", "3:6,1,6,1:10:Sheet2:: 0"}, {'N', u"B7@Sheet", "0:9,9,9,9:00::: 0"},
    {'N', u"@B7x", "0:9,9,9,9:10::: 0"}, {'N', u"total@Alias", "1:9,9,9,9:00::total: 0"},
    {'N', u"@Aliastotal", "1:9,9,9,9:00::total: 0"}, {'N', u"a@Alias:b@Alias", "2:9,9,9,9:00::a:b 0"},
    {'N', u"a@Alias:B2", "0:9,9,9,9:00::a: 0"}, {'N', u"A1@Sheet1:B2@Sheet2", "0:9,9,9,9:00::: 0"},
    {'N', u"A1@Sheet1:B2", "4:0,0,1,1:00:Sheet1:: 0"}, {'N', u"@A1:@B2", "4:0,0,1,1:11::: 0"},
    {'N', u"A1@Sheet1:B2@SHEET1", "4:0,0,1,1:00:SHEET1:: 0"}, {'N', u"@A1:B0", "0:9,9,9,9:10::: 0"},
    {'N', u"A1:@B", "0:9,9,9,9:00::: 0"}, {'N', u"@B:A1", "0:9,9,9,9:00::: 0"},
    {'N', u"Cell@Sheet1@Alias", "0:9,9,9,9:00::: 0"}, {'N', nullptr, "0:9,9,9,9:00::: 0"},
    {'S', u"B7@Sheet2", "1 B7:0:Sheet2:"}, {'S', u"@sheet12B7", "1 B7:0:sheet12:"}, {'S', u"@B7", "1 B7:1::"},
    {'S', u"@Sheet2@B7", "1 B7:1:Sheet2:"}, {'S', u"x@Alias", "1 :0::x"}, {'S', u"@ALIASx@y", "1 :0::x@y"},
    {'S', u"@SHEET1@ALIAStot", "1 :0:SHEET1:tot"}, {'S', u"total@Alias@Sheet1", "1 :0:Sheet1:total"},
    {'S', u"B7", "0 B7:7:old:old"}, {'S', u"@B", "0 @B:7:old:old"}, {'S', u"B7@Sheet", "0 B7@Sheet:0::"},
    {'S', u"@Sheet1", "0 @Sheet1:0::"}, {'S', u"B7@Sheet2x", "0 B7@Sheet2x:0::"}, {'S', u"B@7", "0 B@7:0::"},
    {'S', u"x@Aliasy", "0 x@Aliasy:0::"}, {'S', u"@Alias", "0 @Alias:0::"}, {'S', u"@@B7", "0 @@B7:1::"},
    {'A', u"ref|'A1'", "1 1 1 3:0,0,0,0:00::: []"}, {'A', u"ref|1|2|3|4|s|t", "1 4 1 4:0,1,2,3:00:s:: t[]"},
    {'A', u"ref|'B7:C9'|s|t|u", "1 1 1 4:6,1,8,2:00:s:: t[u]"}, {'A', u"ref|1", "0 0 1 0:9,9,9,9:00::: [1]"},
    {'A', u"ref|' A1 '", "1 1 1 3:0,0,0,0:00::: []"}, {'A', u"ref|1|2|3|x|y", "1 2 1 3:0,1,0,1:00:3:: x[y]"},
    {'A', u"ref|2|7|Sheet2", "1 2 1 3:1,6,1,6:00:Sheet2:: []"}, {'A', u"ref", "0 0 1 0:9,9,9,9:00::: []"},
    {'A', u"ref|0|1", "1 2 1 3:-1,0,-1,0:00::: []"}, {'A', u"reftext|A1", "1 1 8 3:0,0,0,0:00::: []"},
    {'A', u"refaliasdata|x|S|t", "1 0 6 1:9,9,9,9:00:S:x: t[]"}, {'A', nullptr, "0 0 0 0:9,9,9,9:00::: []"},
    {'A', u"ref|B0", "0 0 1 0:9,9,9,9:00::: [B0]"}, {'A', u"refalias|''", "0 0 2 0:9,9,9,9:00::: []"},
    {'A', u"sum|1", "0 0 0 0:9,9,9,9:00::: [sum|1]"},
};
std::string OnText(char op, const char16_t* in) {
  CCellname name(in);
  CString text(in), sheet(u"old"), alias(u"old"), copy(in);
  CStringArray args;
  int bMacro = 7, other = 7, count = 5;
  PN_INFORMATION info{10, 0, 4, 2, 3, 1};  // pages, page, vpages, vpage, hpages, hpage
  const Enum_PNID id = static_cast<Enum_PNID>(in != nullptr ? in[0] - u'0' : 0);
  // Every field that Empty clears holds something first; rowcols (9,9,9,9) shows what a parse leaves.
  name.nRefType = RefType_Text, name.nType = Cellname_Range, name.bMacro1 = name.bMacro2 = 5;
  name.strSheet = name.strAlias1 = name.strAlias2 = name.strTail = u"junk", name.rowcols.Set(9, 9, 9, 9);
  if (op == 'D') return to_string(CCellname::DetectRefType(in));
  if (op == 'G') return to_string(CUtilityCalc::GetPN(id, &info) + CUtilityCalc::GetPN(id, nullptr)) + " " +
                        Row(CUtilityCalc::GetPNMacro(id));
  if (op == 'N') {
    const int kind = CUtilityCalc::ParseCellname(name);
    EXPECT_EQ(kind, name.nType) << Row(in);
    return Show(CCellname(name)) + " " + to_string(name.nRefType) + Row(name.strTail);
  }
  if (op == 'S') {
    const int ok = CUtilityCalc::ParseCellname_SheetAliasMacro(text, bMacro, &sheet, &alias);
    EXPECT_EQ(CUtilityCalc::ParseCellname_SheetAliasMacro(copy, other, nullptr, nullptr), ok) << Row(in);
    EXPECT_EQ(Row(copy), Row(text)) << Row(in);
    return to_string(ok) + " " + Row(text) + ":" + to_string(bMacro) + ":" + Row(sheet) + ":" + Row(alias);
  }
  std::u16string_view rest = in != nullptr ? in : u"";
  for (std::size_t cut = 0; in != nullptr && cut != rest.npos; rest.remove_prefix(cut + 1))
    args.Add(CString(rest.substr(0, cut = rest.find(u'|'))));
  std::string got = to_string(name.ParseRefFunc(args, &count)) + " ";
  got += to_string(count) + " " + to_string(name.nRefType) + " " + Show(name) + " " + Row(name.strTail) + "[";
  for (int i = 0; i < args.GetSize(); ++i) got += (i > 0 ? "|" : "") + Row(args[i]);
  return got + "]";
}
TEST(CCellnameTexts, DetectRefTypeParseCellnameMarkersAndParseRefFunc) {
  for (const auto& c : kTexts) EXPECT_EQ(OnText(c.op, c.in), c.expected) << c.op << " " << Row(c.in);
}

// Moves every reference three rows down: calls by UpdateRowColToParser with the count that ParseRefFunc
// gave (or `count` when not -1), names by renaming the variable.
struct Mover : ICellFilter {
  int count = -1;
  int OnCell(int nEvent, CCellname* p, CRowCol*) override {
    CString text;
    if (nEvent == 1 || nEvent == 3) p->rowcols.InsertRows(0, 3);
    if (nEvent == 3) p->UpdateRowColToParser(pNode, count < 0 ? nArgCount : count);
    if (nEvent != 1) return 0;
    const int mode = p->nType == Cellname_Cell ? 1 : 2;
    CUtilityCalc::RowCols2CellName(p->rowcols, text, p->bMacro1, p->bMacro2, mode);
    return pNode->SetText(text), 2;
  }
};

// On the formula's first node of kind n (0: none): P ParseRefFunc into a name with rowcols (9,9,9,9),
// "answer count show"; V, v Var2RowCols_NoMacroSheet with bBothCorners 1, 0, out (9,9,9,9), the flags
// at 7, text "old": "answer flags out text". M: the walk of a Mover with count n, and the tree after it.
// Each argument of a call counts by its first term; a count of 3, or above the arguments, writes nothing.
constexpr struct { char op; int n; const char16_t* formula; const char* expected; } kTrees[] = {
    {'P', 3, u"=ref(2, 7, 'Sheet2')", "1 2 3:1,6,1,6:00:Sheet2::"}, {'P', 5, u"=ref", "0 0 0:9,9,9,9:00:::"},
    {'P', 3, u"=ref('B7:C9')", "1 1 4:6,1,8,2:00:::"}, {'P', 3, u"=ref(1 + 1, 2)", "1 2 3:0,1,0,1:00:::"},
    {'P', 3, u"=RefAlias(\"t\")", "1 0 1:9,9,9,9:00::t:"}, {'P', 3, u"=ref()", "0 0 0:9,9,9,9:00:::"},
    {'P', 3, u"=sum(1, 2)", "0 0 0:9,9,9,9:00:::"}, {'P', 0, u"=7", "0 0 0:9,9,9,9:00:::"},
    {'V', 5, u"=B7", "1 00 6,1,6,1 B7"}, {'v', 5, u"=B7", "1 00 6,1,9,9 B7"},
    {'V', 5, u"=@B3:A1", "1 10 2,1,0,0 @B3:A1"}, {'V', 5, u"=B7@Sheet2", "0 77 9,9,9,9 B7@Sheet2"},
    {'V', 5, u"=total", "0 00 9,9,9,9 total"}, {'V', 6, u"=7", "0 77 9,9,9,9 old"},
    {'V', 0, u"=7", "0 77 9,9,9,9 old"}, {'M', -1, u"=sum(ref(2,7))+B7", "0 sum(ref(5,7))+B10"},
    {'M', -1, u"=ref('B7')", "0 ref('B10')"}, {'M', -1, u"=ref('B7:C9', 'S')", "0 ref('B10:C12','S')"},
    {'M', -1, u"=ref(1,2,3,4)+@A1:B2", "0 ref(4,2,6,4)+@A4:B5"}, {'M', 2, u"=ref(1,2,3,4)", "0 ref(4,2,3,4)"},
    {'M', -1, u"=refalias('t')", "0 refalias('t')"}, {'M', 3, u"=ref(2,7,'S')", "0 ref(2,7,'S')"},
    {'M', 4, u"=ref(2,7)", "0 ref(2,7)"},
};
std::string OnTree(char op, int n, const char16_t* formula) {
  CCalcTreeNodeArray found;
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(formula, nullptr));
  if (!root) return "no tree";
  ICalcTreeNode* node = root->CollectByKind(found, static_cast<unsigned char>(n)) > 0 ? found[0] : nullptr;
  CCellname name;
  CString text(u"old");
  int count = 5, m1 = 7, m2 = 7;
  Mover mover;
  CCellnameRefTraveler traveler(&mover, &name);
  name.rowcols.Set(9, 9, 9, 9), mover.count = n;
  if (op == 'M') {
    const int answer = root->Travel(&traveler, 1);
    return root->GetExpression(text), to_string(answer) + " " + Row(text);
  }
  if (op == 'P') {
    const int answer = name.ParseRefFunc(node, &count);
    return to_string(answer) + " " + to_string(count) + " " + Show(name);
  }
  const int answer = CUtilityCalc::Var2RowCols_NoMacroSheet(node, name.rowcols, text, &m1, &m2, op == 'V');
  return to_string(answer) + " " + to_string(m1) + to_string(m2) + " " + Show(name.rowcols) + " " + Row(text);
}
TEST(CCellnameTrees, ParseRefFuncVar2RowColsAndUpdateRowColToParser) {
  for (const auto& c : kTrees) EXPECT_EQ(OnTree(c.op, c.n, c.formula), c.expected) << c.op << Row(c.formula);
}

}  // namespace
