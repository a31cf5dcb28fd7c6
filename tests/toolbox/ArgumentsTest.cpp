// tests/toolbox/ArgumentsTest.cpp: lines out of texts and buffers, call texts, assignments, lists joined into
// buffers, and the cleaning of text for output: limits, line ends, invalid units, matching, safe deletion.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::U;
using C = CUtilityCalc;

std::u16string Num(int n) { const std::string d = std::to_string(n); return {d.begin(), d.end()}; }
std::u16string Joined(const CStringArray& items, const CStringArray* v = nullptr) {
  std::u16string out;
  for (int i = 0; i < items.GetSize(); ++i) out += u"|" + U(items[i]) + (v ? u"=" + U((*v)[i]) : u"");
  return out;
}
std::u16string Content(CMem& m) {
  return std::u16string(reinterpret_cast<const char16_t*>(m.pBuf), m.nSize / 2) + (m.nSize % 2 ? u"+" : u"");
}

// answer:result. GetLeftPara '<', GetRightPara '>' (n: 1 bCut, 2 bTrim): line|text; on a CBuffer 'l' 'r', a
// CMem 'm' (m bytes of the text, 0 all: no terminator behind fewer), trims 'T' 't', ReplaceInvalidStringChar
// 'I': line|content ('+' odd byte). ParseFunction 'F' name|arg..., 'f' (n start) name|arg...#text; ParseExps
// 'E' (n sep, m bWide) |name=value...; else the text after LimitString 'L', NormalizeEnter 'N', StrChrs 'C',
// ExportExcel 'X' (n with), IsMatchStr 'M' (text|pattern, n mode), SafeDelete 'D' (n start, m count).
constexpr struct { char op; const char16_t *text, *expected; int n = 0, m = 0; } kText[] = {
    {'<', u"a \r\n b\r\nc", u"1:a |a \r\n b\r\nc"}, {'<', u"a \r\n b\r\nc", u"1:a | b\r\nc", 1},
    {'<', u"a \r\n b\r\nc", u"1:a|b\r\nc", 3}, {'<', u"a \r\n b\r\nc", u"1:a|a \r\n b\r\nc", 2},
    {'<', u"a\rb\n\n\r", u"0:|a\rb\n\n\r", 3}, {'>', u"\n\r", u"0:|\n\r", 3},
    {'>', u"a \r\n b \r\n c", u"1: c|a \r\n b \r\n c"}, {'>', u"a \r\n b \r\n c", u"1: c|a \r\n b ", 1},
    {'>', u"a \r\n b \r\n c", u"1:c|a \r\n b", 3}, {'>', u"a \r\n b \r\n c", u"1:c|a \r\n b \r\n c", 2},
    {'l', u"a \r\n\t b", u"1:a|b", 3}, {'l', u"\r", u"0:|\r", 3}, {'l', u"ab\r\n", u"0:|ab\r+", 1, 7},
    {'l', u"ab\r\ncd", u"1:ab|cd+", 1, 13}, {'r', u"a \r\n b \t", u"1:b \t|a", 3}, {'m', u"", u"0:|", 3},
    {'r', u"ab\r\ncd", u"1:cd|ab", 1, 13}, {'r', u"\r\n", u"0:|\r+", 3, 3},
    {'m', u"x\r\nyZZ", u"1:y|x", 1, 8}, {'m', u"\n\rx \r\ny", u"1:y|\n\rx \r\ny", 2},
    {'T', u" \t a\t", u"0:|a\t"}, {'T', u"\r a", u"0:|\r a"}, {'t', u" \t a \t", u"0:| \t a"},
    {'t', u"a  ", u"0:|a+", 0, 5}, {'I', u"", u"0:|"}, {'I', u"\xD844\xDE4Fx", u"3:|\x572E+", 0, 5},
    {'I', u"a\xD844\xDE4F" u"b\xD844\xDE4F", u"8:|a\x572E" u"b\x572E"},
    {'I', u"\xD844\xD844\xDE4F\xDE4F", u"6:|\xD844\x572E\xDE4F"}, {'F', u"f()", u"1:f"},
    {'F', u"f('a,b', c)", u"1:f|a,b|c"}, {'F', u"a,b", u"1:|a|b"}, {'F', u"f(g(1),2)", u"1:f|g(1"},
    {'F', u"a'b,c", u"1:|a'b|c"}, {'F', nullptr, u"1:"}, {'F', u" f ( x ) tail", u"1:f |x"},
    {'F', u"f(a,)", u"1:f|a|"}, {'F', u"f('x)', \"y", u"1:f|x)|y"}, {'F', u"f('a'b'c)", u"1:f|ab'c"},
    {'f', u"x = f(a, ')') + 1", u"0:f|a|)#x =  + 1", 4}, {'f', u"x = f(a) g(b)", u"0:x = f|a# g(b)"},
    {'f', u"f(a", u"0:#f(a"}, {'f', u"f(a)", u"0:#f(a)", -1}, {'f', u"f(a)", u"0:#f(a)", 4},
    {'E', u"a=1;b='x;y'", u"1:|a=1|b='x;y'", ';'}, {'E', u"1a=2", u"1:|=1a=2", ';'},
    {'E', u"a='1' b=2", u"1:|a=1|b=2", ' '}, {'E', nullptr, u"1:", ';'}, {'E', u" ; ;", u"1:", ';'},
    {'E', u"x ; =5;a = 1 = 2", u"1:|=x|=5|a=1 = 2", ';'}, {'E', u"\u4e2d=1", u"1:|=\u4e2d=1", ','},
    {'E', u"\u4e2d=1", u"1:|\u4e2d=1", ',', 1}, {'E', u"a=\"b;c\";d=\\';e=1", u"1:|a=\"b;c\"|d=\\'|e=1", ';'},
    {'E', u"x a=\"p\\'q\"  b= 'r s' c", u"1:|x a=p'q|b='r", ' '}, {'E', u"a=''''  b=", u"1:|a=|b=", ' '},
    {'L', u"\u4e2d\u6587\u5b57", u"1:\u4e2d", -3}, {'L', u"\u4e2d\u6587\u5b57", u"0:\u4e2d\u6587\u5b57", 3},
    {'L', u"\u4e2d\u6587", u"0:\u4e2d\u6587"}, {'L', u"ab\u4e2dc", u"1:ab", -3}, {'L', u"abcd", u"1:abc", 3},
    {'L', u"ab\u4e2dc", u"1:ab\u4e2d", -4}, {'L', u"\x80\x81", u"1:\x80", -2}, {'L', u"ab", u"0:ab", INT_MIN},
    {'N', u"a\nb\r", u"0:a\r\nb\r\n"}, {'N', u"\r\n\n\r\r\n", u"0:\r\n\r\n\r\n\r\n"},
    {'N', u"\nx", u"0:\r\nx"}, {'C', u"a,b,,c", u"3:a,b,,c", ','}, {'C', u"", u"0:", ','},
    {'X', u"\x02\x03\x08\t\n\x0b\x0c\r\x0e\x1f ", u"6:\x02??\t\n??\r?? ", '?'},
    {'X', u"a\x03" u"b\x1f", u"2:ab"}, {'X', u"ab", u"0:ab", '?'}, {'M', u"Abc|aB", u"1:Abc", '*'},
    {'M', u"Abc|aB", u"0:Abc", '='}, {'M', u"Abc|ABC", u"1:Abc"}, {'M', u"ab|abc", u"0:ab", '*'},
    {'M', u"|", u"0:", '*'}, {'M', u"a|", u"1:a", '*'}, {'M', u"a|", u"0:a", '='},
    {'D', u"abc", u"0:ac", 1, 1}, {'D', u"abc", u"0:ab", 2, INT_MAX}, {'D', u"abc", u"0:abc", -1, 1},
    {'D', u"abc", u"0:abc", 3, 1}, {'D', u"abc", u"0:abc", 2},
};

TEST(Arguments, Table) {
  for (const auto& c : kText) {
    CString text(c.text), out(u"old"), pattern = text.Mid(text.Find(u'|') + 1);
    CBuffer buffer;
    CMem plain;
    CMem& mem = c.op == 'm' ? plain : buffer;
    BYTE* bytes = reinterpret_cast<BYTE*>(const_cast<char16_t*>(text.GetString()));
    mem.Set(bytes, c.m > 0 ? c.m : text.GetLength() * 2);
    CStringArray items, values;
    items.Add(u"old");
    int answer = 0;
    switch (c.op) {
      case '<': answer = C::GetLeftPara(out, text, c.n & 1, c.n & 2); break;
      case '>': answer = C::GetRightPara(out, text, c.n & 1, c.n & 2); break;
      case 'l': answer = C::GetLeftPara(out, buffer, c.n & 1, c.n & 2); break;
      case 'r': case 'm': answer = C::GetRightPara(out, mem, c.n & 1, c.n & 2); break;
      case 'T': C::StrBuffer_TrimLeft(buffer); break;
      case 't': C::StrBuffer_TrimRight(buffer); break;
      case 'I': answer = C::ReplaceInvalidStringChar(buffer); break;
      case 'F': answer = C::ParseFunction(c.text, out, items); break;
      case 'f': C::ParseFunction(text, c.n, out, items); break;
      case 'E': answer = C::ParseExps(items, values, c.text, c.m, WORD(c.n)); break;
      case 'L': answer = C::LimitString(text, c.n); break;
      case 'N': C::NormalizeEnter(text); break;
      case 'X': answer = C::ReplaceInvalidStringChar_ExportExcel(text, WORD(c.n)); break;
      case 'M': answer = C::IsMatchStr(text = text.Left(text.Find(u'|')), pattern, WORD(c.n)); break;
      case 'C': answer = C::StrChrs(text, WORD(c.n)); break;
      default: C::SafeDelete(text, c.n, c.m);
    }
    auto in = [&c](std::u16string_view ops) { return ops.find(char16_t(c.op)) != ops.npos; };
    std::u16string shown = (in(u"<>lrm") ? U(out) + u"|" : in(u"TtI") ? u"|" : u"") +
                           (in(u"lrmTtI") ? Content(mem) : U(text));
    if (in(u"Ff")) shown = U(out) + Joined(items) + (c.op == 'f' ? u"#" + U(text) : u"");
    if (c.op == 'E') shown = Joined(items, &values);
    for (int k = 0; in(u"lrTtI") && k < 2 + buffer.nSize % 2; ++k)  // the terminator stays whole
      EXPECT_EQ(buffer.pBuf[buffer.nSize + k], 0) << c.op << vkt::test::Row(c.text);
    EXPECT_EQ(Num(answer) + u":" + shown, c.expected) << c.op << c.n << c.m << vkt::test::Row(c.text);
  }
}

TEST(Arguments, JoinsAndInvalidList) {
  CStringArray items;
  for (const char16_t* item : {u"a", u"", u"b"}) items.Add(item);
  CBuffer out;
  C::Array2Buffer(nullptr, items, u",");
  C::Array2Buffer(&out, items, u", ");
  C::Array2Buffer(&out, items, nullptr);
  for (WORD sep : {WORD(';'), WORD(0)}) C::Array2Buffer(&out, items, sep);
  EXPECT_EQ(Content(out), std::u16string(u"a, , bab" u"a;;b" u"a\0\0b", 16));
  items.SetAt(0, CString(u'x', 3000));  // grows by the 16,384-byte step
  C::Array2Buffer(&out, items, WORD(0));
  EXPECT_GE(out.GetAllocSize(), 4096 + 16384);
  char16_t* list = C::GetInvalidStringChar();  // the control units but tab, LF and CR, from 3 on
  EXPECT_EQ(U(list), u"\x03\x04\x05\x06\x07\x08\x0b\x0c\x0e\x0f\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1a"
                     u"\x1b\x1c\x1d\x1e\x1f");
  list[0] = u'x';  // the host may change the list
  CString text(u"x\x03");
  EXPECT_EQ(C::ReplaceInvalidStringChar_ExportExcel(text, u'-'), 1);
  EXPECT_EQ(U(text), u"-\x03");
  list[0] = 3;
}

}  // namespace
