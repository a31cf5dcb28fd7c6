// Tests of the name tests: names just valid and just invalid, each refusal
// with its position, and the wide (Chinese) switch on and off.
#include "VKTCalc.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Row(const char16_t* text) { return text == nullptr ? "(null)" : CString(text).ToUtf8(); }

struct VarCase {
  const char16_t* name;
  int bWide;
  int bDot;
  int bHash;
  int expected;
  int nPos;
};

constexpr VarCase kVarNames[] = {
    {u"a", 0, 1, 1, 1, 0},
    {u"_", 0, 1, 1, 0, 0},  // one kind of sign alone is no name
    {u"@@", 0, 1, 1, 0, 0},
    {u"$", 0, 1, 1, 0, 0},
    {u"__", 0, 1, 1, 0, 0},
    {u"_@", 0, 1, 1, 1, 0},  // two kinds together are a name
    {u"@language", 0, 1, 1, 1, 0},
    {u"and", 0, 1, 1, 1, 0},  // operator words are the parser's business
    {u"a_1", 0, 1, 1, 1, 2},  // a valid name leaves the last digit's position
    {u"$A$1", 0, 1, 1, 1, 3},
    {u"a1b2c", 0, 1, 1, 1, 3},
    {u"1a", 0, 1, 1, 0, 0},
    {u"a1-", 0, 1, 1, 0, 2},
    {u"a.b", 0, 1, 1, 1, 0},
    {u"a.b", 0, 0, 1, 0, 1},
    {u"a.", 0, 1, 1, 0, 1},
    {u".a", 0, 1, 1, 0, 0},
    {u"#a", 0, 1, 1, 1, 0},
    {u"#a", 0, 1, 0, 0, 0},
    {u"#", 0, 1, 1, 0, 0},
    {u"a#", 0, 1, 1, 0, 1},
    {u":", 0, 1, 1, 0, 0},
    {u"a:", 0, 1, 1, 1, 0},
    {u"A1:B2", 0, 1, 1, 1, 4},
    {u"  ab1  ", 0, 1, 1, 1, 2},  // positions count in the trimmed name
    {u"\t x-y", 0, 1, 1, 0, 1},
    {u"a b", 0, 1, 1, 0, 1},
    {u"a\x7F", 1, 1, 1, 0, 1},
    {u"a\x80", 1, 1, 1, 0, 1},  // 128 is refused in every mode
    {u"a\x81", 1, 1, 1, 1, 0},  // 129 is the first wide unit
    {u"a\x81", 0, 1, 1, 0, 1},
    {u"中文", 1, 1, 1, 1, 0},
    {u"中文", 0, 1, 1, 0, 0},
    {u"变量1", 1, 1, 1, 1, 2},
    {u"", 1, 1, 1, 0, 0},
    {u"   ", 1, 1, 1, 0, 0},
    {nullptr, 1, 1, 1, 0, 0},
};

TEST(IsValidVarName, Table) {
  for (const VarCase& c : kVarNames) {
    int nPos = -7;
    EXPECT_EQ(CUtilityCalc::IsValidVarName(c.name, c.bWide, c.bDot, c.bHash, nPos), c.expected)
        << Row(c.name) << " wide " << c.bWide << " dot " << c.bDot << " hash " << c.bHash;
    EXPECT_EQ(nPos, c.nPos) << Row(c.name) << " wide " << c.bWide << " dot " << c.bDot << " hash " << c.bHash;
  }
}

struct FuncCase {
  const char16_t* name;
  int bWide;
  int expected;
  const char16_t* trimmed;  // what the caller sees afterwards
};

constexpr FuncCase kFuncNames[] = {
    {u"__", 0, 0, u"__"},
    {u"_", 0, 0, u"_"},
    {u"_a1", 0, 1, u"_a1"},
    {u"_1", 0, 1, u"_1"},
    {u"1a", 0, 0, u"1a"},
    {u"sum", 0, 1, u"sum"},
    {u" sum\t", 0, 1, u"sum"},
    {u"a b", 0, 0, u"a b"},
    {u"a.b", 0, 0, u"a.b"},  // signs that variables may hold are refused
    {u"a@", 0, 0, u"a@"},
    {u"$a", 0, 0, u"$a"},
    {u"a\x80", 1, 0, u"a\x80"},
    {u"a\x81", 1, 1, u"a\x81"},
    {u"求和", 1, 1, u"求和"},
    {u"求和", 0, 0, u"求和"},
    {u"", 0, 0, u""},
    {u"  ", 0, 0, u""},
};

TEST(IsValidFuncName, Table) {
  for (const FuncCase& c : kFuncNames) {
    CString name(c.name);
    EXPECT_EQ(CUtilityCalc::IsValidFuncName(name, c.bWide), c.expected) << Row(c.name) << " wide " << c.bWide;
    EXPECT_EQ(std::u16string(name.View()), c.trimmed) << Row(c.name);
  }
}

TEST(IsAlpha, LettersAndTheirNeighbours) {
  for (WORD letter : {0x41, 0x5A, 0x61, 0x7A, 0x6D})  // A Z a z m
    EXPECT_EQ(CUtilityCalc::isAlpha(letter), 1) << letter;
  for (WORD other : {0x40, 0x5B, 0x60, 0x7B, 0x30, 0x5F, 0xC0, 0x4E2D, 0})  // @ [ ` { 0 _ À 中 NUL
    EXPECT_EQ(CUtilityCalc::isAlpha(other), 0) << other;
}

// The parser passes the Chinese switch as the wide flag; these calls do the
// same and put the switch back after each test.
class ChineseSwitch : public testing::Test {
 protected:
  void SetUp() override { m_saved = CUtilityCalc::Calc_IsChineseEnabled(); }
  void TearDown() override { CUtilityCalc::Calc_EnableChinese(m_saved); }

  static int VarName(const char16_t* name, int& nPos) {
    return CUtilityCalc::IsValidVarName(name, CUtilityCalc::Calc_IsChineseEnabled(), 1, 1, nPos);
  }
  static int FuncName(const char16_t* name) {
    CString text(name);
    return CUtilityCalc::IsValidFuncName(text, CUtilityCalc::Calc_IsChineseEnabled());
  }

 private:
  int m_saved = 1;
};

TEST_F(ChineseSwitch, OnAdmitsChineseNames) {
  CUtilityCalc::Calc_EnableChinese(1);
  int nPos = -1;
  EXPECT_EQ(VarName(u"金额_2024", nPos), 1);
  EXPECT_EQ(nPos, 6);
  EXPECT_EQ(FuncName(u"合计"), 1);
  EXPECT_EQ(VarName(u"1金额", nPos), 0);  // digits still may not lead
  EXPECT_EQ(nPos, 0);
}

TEST_F(ChineseSwitch, OffRefusesThemAtTheirPosition) {
  CUtilityCalc::Calc_EnableChinese(0);
  int nPos = -1;
  EXPECT_EQ(VarName(u"ab金额", nPos), 0);
  EXPECT_EQ(nPos, 2);
  EXPECT_EQ(FuncName(u"合计"), 0);
  EXPECT_EQ(VarName(u"amount_1", nPos), 1);  // plain names are unaffected
  EXPECT_EQ(FuncName(u"sum"), 1);
}

}  // namespace
