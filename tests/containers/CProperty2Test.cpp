// CProperty2 and its name store CMapProp: every operation through one table of {setup, call} rows
// with the list after the call, shared and own stores, copies, AddProps and virtual dispatch.
#include <gtest/gtest.h>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {
using vkt::test::U;

// SetProperty stores the value with the flag behind it. The name ? finds entry 1: operations that search
// must reach _FindProperty through the virtual table.
struct Props : CProperty2 {
  int SetProperty(const char16_t* name, const char16_t* value, int flag) override {
    return this->Prop_Add(name, (U(value) + char16_t(u'0' + flag)).c_str(), 0);
  }
  int _FindProperty(const char16_t* n) override { return U(n) == u"?" ? 1 : CProperty2::_FindProperty(n); }
};
void Fill(CProperty2& p, std::u16string_view t) {  // "a=1;b=2;"
  for (std::size_t eq, end; (eq = t.find(u'=')) != t.npos; t.remove_prefix(end + 1))
    end = t.find(u';'), p.Prop_Add(CString(t.substr(0, eq)), CString(t.substr(eq + 1, end - eq - 1)), 0);
}
std::u16string Show(CProperty2& p, std::u16string out = u"") {  // back in Fill's form, by Prop_GetAll
  CStringArray n, v;
  for (int i = 0, count = p.Prop_GetAll(n, v); i < count; ++i) out += U(n[i]) + u"=" + U(v[i]) + u";";
  return out;
}
int Insert(Props& p, int i) { CString n(u"c"), v(u"3"); p.Prop_InsertAt(i, n, v); return p.Prop_GetCount(); }
int AddProps(Props& p, CStringArray n = {}, CStringArray v = {}) {
  return n.Add(u"a"), n.Add(u"b"), v.Add(u"x"), p.AddProps(n, v, 2), 0;
}
struct Seq { int a, b; operator int() const { return a * 10 + b; } };  // braces: a runs before b
int CopyInto(Props& p, CString& o) {  // o: the source, which dies on return; 1: the copy's names are its own
  Props from;
  Fill(from, u"a=1;b=2;"), from.Prop_Add(u"", u"e", 1), p.Prop_Copy(&from), p.Prop_Copy(nullptr);
  return p.Prop_Copy(&p), o = Show(from).c_str(), from.aNames[0] != p.aNames[0];
}

// {setup ('!' first: bTakeOnRead), call, its result, o after it, the list after it (null: as set up)}
struct Case { const char16_t* setup; int (*call)(Props&, CString&); int want; const char16_t *out, *after; };
#define ROW(setup, call, result, out, after) \
  {setup, [](Props& p, [[maybe_unused]] CString& o) -> int { return call; }, result, out, after}
const Case kCases[] = {
    ROW(u"a=1;", p.Prop_Add(u"", u"x", 0), -1, u"", nullptr),
    ROW(u"a=1;", p.Prop_Add(u"b", nullptr, 0), 1, u"", u"a=1;b=;"),
    ROW(u"width=1;", p.FindProperty(u"WIDTH"), 0, u"", nullptr),
    ROW(u"x1=1;width=2;", p.FindProperty(u" x | width\t"), 1, u"", nullptr),
    ROW(u"b=1;a=2;", p.FindProperty(u"a|b"), 0, u"", nullptr),  // the entries' order decides
    ROW(u"a=1;b=2;", p.FindProperty(u"c|  |b"), -1, u"", nullptr),  // a blank alternative ends the walk
    ROW(u"a=1;b=2;", p.GetProperty(u"?", o), 1, u"2", nullptr),
    ROW(u"a=1;", (Seq{p.Prop_Add(u"", u"e", 1), p._FindProperty(nullptr)}), 11, u"", u"a=1;=e;"),
    ROW(u"a=1;b=2;", (Seq{p.Prop_SetName(0, u""), p.FindProperty(u"")}), 10, u"", u"=1;b=2;"),
    ROW(u"!a=1;b=2;", (Seq{p.GetProperty(u"A", o), p.GetProperty(u"a", o)}), 10, u"", u"b=2;"),
    ROW(u"!a=1;b=2;", (p.GetStr(o, u"B", u"d"), 0), 0, u"2", u"a=1;"),
    ROW(u"!a=1;", (p.GetStr(o, u"z", u"d"), 0), 0, u"d", u"a=1;"),  // the default, nothing deleted
    ROW(u"a=1;", (o = u"q", p.GetProperty(nullptr, o)), 0, u"", nullptr),
    ROW(u"a=1;", (Seq{p.Prop_SetValue(1, u"x"), p.Prop_SetValue(0, u"x")}), 1, u"", u"a=x;"),
    ROW(u"a=1;", (Seq{p.Prop_SetAt(1, u"c", u"x"), p.Prop_SetAt(0, u"c", u"3")}), 1, u"", u"c=3;"),
    ROW(u"a=1;", (Seq{Insert(p, 1), Insert(p, -1)}), 23, u"", u"a=1;c=3;c=3;"),
    ROW(u"a=1;", Insert(p, 0), 2, u"", u"c=3;a=1;"),
    ROW(u"a=1;b=2;", (p.Prop_Delete(u"z"), p.Prop_Delete(nullptr), p.Prop_DeleteAt(2)), 0, u"", nullptr),
    ROW(u"a=1;b=2;", (p.Prop_Delete(u"A"), p.Prop_DeleteAt(0)), 1, u"", u""),
    ROW(u"a=1;", (o = u"q", p.Prop_GetAt(1, o, o) + p.Prop_GetValue(-1, o)), 0, u"q", nullptr),
    ROW(u"x=9;", CopyInto(p, o), 1, u"a=1;b=2;=e;", u"a=1;b=2;"),  // the empty name is not copied
    ROW(u"", AddProps(p), 0, u"", u"a=x2;b=2;"),  // one SetProperty per name
    ROW(u"a=1;", (GetCache()->Remove(p.aValues[0]), 0), 0, u"", u"a=;"),  // a stale handle reads empty
};
#undef ROW

TEST(CProperty2, Table) {
  for (const Case& c : kCases) {
    Props p;
    CString o;
    Fill(p, c.setup + (p.bTakeOnRead = c.setup[0] == u'!'));
    EXPECT_EQ(c.call(p, o), c.want) << "row " << &c - kCases;
    EXPECT_EQ(U(o), c.out) << "row " << &c - kCases;
    EXPECT_EQ(Show(p), c.after != nullptr ? c.after : c.setup) << "row " << &c - kCases;
  }
}

TEST(CMapProp, OneCopyPerTextForEveryListThatSharesIt) {
  auto* store = new CMapProp;  // freed by the last of a and b
  Props a, b, own;
  a.SetMapProp(store), a.SetMapProp(store), a.SetMapProp(nullptr), b.SetMapProp(store);
  a.Prop_Add(u"width", u"1", 0), b.Prop_Add(u"width", u"2", 0), own.Prop_Add(u"width", u"3", 0);
  for (const char16_t* same : {b.aNames[0], store->Intern(u"width"), store->Lookup(u"width")})
    EXPECT_EQ(same, a.aNames[0]);
  EXPECT_NE(own.aNames[0], a.aNames[0]);
  EXPECT_EQ(store->nRefs.load(), 2);  // a's second SetMapProp and the null one added none
  own.pMapProp->RemoveAll();  // own's name dies with it: nothing may read it after this
  for (const char16_t* none : {own.pMapProp->Lookup(u"width"), store->Lookup(u""), store->Lookup(u"x")})
    EXPECT_EQ(none, nullptr);
}

}  // namespace
