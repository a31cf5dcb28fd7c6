// tests/numtext/AmountsTest.cpp: CUtilityCalc::RMB, the amount in capital numerals: the worked amounts,
// the zero rules of the three groups, rounding, the limits and bad text; then seeded numbers read back.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::Row;
using vkt::test::U;

// Amount, bWhole, answer, out ("" after a failure: out is emptied).
constexpr struct { const char16_t* amount; int whole, ok; const char16_t* out; } kAmounts[] = {
    {u"0", 1, 1, u"零元整"}, {u"1", 1, 1, u"壹元整"}, {u"10", 1, 1, u"壹拾元整"},
    {u"101", 1, 1, u"壹佰零壹元整"}, {u"110", 1, 1, u"壹佰壹拾元整"}, {u"1001", 1, 1, u"壹仟零壹元整"},
    {u"1010", 1, 1, u"壹仟零壹拾元整"}, {u"10000", 1, 1, u"壹万元整"}, {u"10001", 1, 1, u"壹万零壹元整"},
    {u"100000", 1, 1, u"壹拾万元整"}, {u"100000000", 1, 1, u"壹亿元整"}, {u"100000001", 1, 1, u"壹亿零壹元整"},
    {u"1000010000", 1, 1, u"壹拾亿零壹万元整"},
    {u"1234567890123", 1, 1, u"壹万贰仟叁佰肆拾伍亿陆仟柒佰捌拾玖万零壹佰贰拾叁元整"},  // 13 digits pass
    {u"1234.56", 1, 1, u"壹仟贰佰叁拾肆元伍角陆分"}, {u"1234.5", 1, 1, u"壹仟贰佰叁拾肆元伍角整"},
    {u"1234.05", 1, 1, u"壹仟贰佰叁拾肆元零伍分"}, {u"10.5", 1, 1, u"壹拾元伍角整"},
    {u"10.55", 1, 1, u"壹拾元伍角伍分"}, {u"10.05", 1, 1, u"壹拾元零伍分"},
    {u"1010.10", 1, 1, u"壹仟零壹拾元壹角整"}, {u"0.5", 1, 1, u"伍角整"},
    {u"0.05", 1, 1, u"伍分"},  // no 整 once 分 is written
    {u"-1234.5", 1, 1, u"负壹仟贰佰叁拾肆元伍角整"}, {u"1234.567", 1, 1, u"壹仟贰佰叁拾肆元伍角柒分"},
    {u"1234.995", 1, 1, u"壹仟贰佰叁拾伍元整"},  // the carry reaches the integer digits
    {u"20000000001", 1, 1, u"贰佰亿零壹元整"}, {u"10100000000", 1, 1, u"壹佰零壹亿元整"},
    {u"-0.5", 1, 1, u"负伍角整"}, {u"0.00", 0, 1, u"零元"}, {u"", 1, 1, u"零元整"}, {u".", 0, 1, u"零元"},
    {u"-0", 1, 1, u"零元整"}, {u"0.001", 1, 1, u"零元整"}, {u" 1,234.5 ", 0, 1, u"壹仟贰佰叁拾肆元伍角"},
    {u"001000000000000", 1, 1, u"壹万亿元整"}, {u"12.0", 0, 1, u"壹拾贰元"},
    {u"12345678901234", 1, 0, u""}, {u"9999999999999.995", 1, 0, u""},  // 14 digits, also by carry
    {u"abc", 1, 0, u""}, {u"1.2.3", 1, 0, u""}, {u"1.2.345", 1, 0, u""}, {u"--5", 1, 0, u""},
    {u"-", 1, 1, u"零元整"}, {u"1.x", 1, 0, u""}, {u"１２", 1, 0, u""}, {u"1\xD800", 1, 0, u""},
};

TEST(Amounts, Table) {
  for (const auto& row : kAmounts) {
    CString out(u"left over"), amount(row.amount);
    EXPECT_EQ(CUtilityCalc::RMB(out, amount, row.whole), row.ok) << Row(row.amount);
    EXPECT_EQ(U(out), row.out) << Row(row.amount);
  }
  CString out, huge(std::u16string(1 << 20, u'7').c_str());
  EXPECT_EQ(CUtilityCalc::RMB(out, huge += u".125", 1), 0);
  EXPECT_EQ(U(out), u"");
}

// Reads the capital text back: digits, the units 拾佰仟 inside a group, 万 and 亿 closing one.
std::int64_t ReadBack(const std::u16string& text) {
  const std::u16string digits = u"零壹贰叁肆伍陆柒捌玖", units = u"拾佰仟";
  constexpr std::int64_t kPowers[] = {10, 100, 1000};
  std::int64_t total = 0, wan = 0, group = 0, digit = 0;
  for (char16_t c : text) {
    if (const auto d = digits.find(c); d != std::u16string::npos) digit = std::int64_t(d);
    else if (const auto u = units.find(c); u != std::u16string::npos) group += digit * kPowers[u], digit = 0;
    else if (c == u'万') wan += (group + digit) * 10000, group = digit = 0;
    else if (c == u'亿') total += (wan + group + digit) * 100000000, wan = group = digit = 0;
    else if (c == u'元') total += wan + group + digit, wan = group = digit = 0;
    else return -1;
  }
  return total;
}

TEST(Amounts, SeededIntegersReadBack) {
  std::mt19937_64 rng(20261125);
  for (int i = 0; i < 3000; ++i) {
    std::string digits(1 + rng() % 13, '0');  // zeros in half the places, to walk the zero rules
    for (char& c : digits) c = rng() % 2 ? char('1' + rng() % 9) : '0';
    CString out, amount(digits.c_str());
    ASSERT_EQ(CUtilityCalc::RMB(out, amount, 0), 1) << digits;
    const std::u16string text = U(out);
    const std::int64_t value = std::stoll(digits);
    EXPECT_EQ(ReadBack(text), value) << digits;
    EXPECT_EQ(text.find(u"零零"), std::u16string::npos) << digits;
    EXPECT_TRUE(value == 0 || (text[0] != u'零' && text.find(u"零元") == std::u16string::npos)) << digits;
  }
}

}  // namespace
