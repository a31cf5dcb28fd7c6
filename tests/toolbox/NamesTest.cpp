// tests/toolbox/NamesTest.cpp: the name tests: names just valid and just invalid, each refusal with its
// position, with the wide (Chinese) units allowed and not.
#include <gtest/gtest.h>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::Row;
using vkt::test::U;

// expected: the answer and nPos, as "1 2"; flags: bWide, bDot and bHash, as "111".
constexpr struct { const char16_t* name; const char* flags; const char* expected; } kVarNames[] = {
    {u"a", "011", "1 0"}, {u"and", "011", "1 0"}, {u"_@", "011", "1 0"}, {u"   ", "111", "0 0"},
    {u"_", "011", "0 0"}, {u"@@", "011", "0 0"}, {u"$", "011", "0 0"}, {nullptr, "111", "0 0"},  // one sign
    {u"a_1", "011", "1 2"}, {u"$A$1", "011", "1 3"}, {u"a1b2c", "011", "1 3"},  // the last digit's position
    {u"1a", "011", "0 0"}, {u"a1-", "011", "0 2"}, {u"A1:B2", "011", "1 4"}, {u":", "011", "0 0"},
    {u"a.b", "011", "1 0"}, {u"a.b", "001", "0 1"}, {u"a.", "011", "0 1"}, {u".a", "011", "0 0"},
    {u"#a", "011", "1 0"}, {u"#a", "010", "0 0"}, {u"#", "011", "0 0"}, {u"a#", "011", "0 1"},
    {u"  ab1  ", "011", "1 2"}, {u"\t x-y", "011", "0 1"},  // positions count in the trimmed name
    {u"a\x7F", "111", "0 1"}, {u"a\x80", "111", "0 1"}, {u"a\x81", "111", "1 0"}, {u"a\x81", "011", "0 1"},
    {u"\u53d8\u91cf1", "111", "1 2"}, {u"\u53d8\u91cf1", "011", "0 0"},  // 129 and up are wide, 128 never
};

TEST(IsValidVarName, Table) {
  for (const auto& c : kVarNames) {
    int nPos = -7;
    const int answer =
        CUtilityCalc::IsValidVarName(c.name, c.flags[0] - '0', c.flags[1] - '0', c.flags[2] - '0', nPos);
    EXPECT_EQ(std::to_string(answer) + " " + std::to_string(nPos), c.expected)
        << Row(c.name) << " flags " << c.flags;
  }
}

// expected: the answer, then the name as the caller sees it afterwards.
constexpr struct { const char16_t* name; int bWide; const char16_t* expected; } kFuncNames[] = {
    {u"__", 0, u"0 __"}, {u"_a1", 0, u"1 _a1"}, {u"_1", 0, u"1 _1"}, {u"1a", 0, u"0 1a"}, {u"  ", 0, u"0 "},
    {u" sum\t", 0, u"1 sum"}, {u"a b", 0, u"0 a b"}, {u"a.b", 0, u"0 a.b"}, {u"$a", 0, u"0 $a"},  // no signs
    {u"a\x80", 1, u"0 a\x80"}, {u"\u548c", 1, u"1 \u548c"}, {u"\u548c", 0, u"0 \u548c"},
};

TEST(IsValidFuncName, TableAndIsAlpha) {
  for (const auto& c : kFuncNames) {
    CString name(c.name);
    const int answer = CUtilityCalc::IsValidFuncName(name, c.bWide);
    EXPECT_EQ((answer ? u"1 " : u"0 ") + U(name), c.expected) << Row(c.name) << " wide " << c.bWide;
  }
  for (WORD c = 0; c < 256; ++c) EXPECT_EQ(CUtilityCalc::isAlpha(c), (c | 32) >= 'a' && (c | 32) <= 'z') << c;
  EXPECT_EQ(CUtilityCalc::isAlpha(0x4E2D), 0);
}

}  // namespace
