// tests/numtext/NumberPictureTest.cpp: number pictures. FormatNum places the digits of a text without
// rounding; ConvertToDispFormat rounds a CGmp to the decimals the picture shows and then places them.
#include <gtest/gtest.h>

#include "VKTCalc.h"
#include "tests/support/GmpText.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::Fields;
using vkt::test::Row;
using vkt::test::U;

// round 0 calls FormatNum on the text; round 1 calls ConvertToDispFormat on CGmp(text).
constexpr struct {
  int round;
  const char16_t *text, *picture, *expected;
} kPictures[] = {
    {0, u"1234567.891", u"#,##0.00", u"1,234,567.89"},
    {0, u"1234567.899", u"#,##0.00", u"1,234,567.89"},  // cut, not rounded
    {0, u"-1234.5", u"#,##0.00", u"-1,234.50"},
    {0, u"1234.5", u"#0.00", u"1234.50"},
    {0, u"1234.5", u"0.00", u"4.50"},  // no #: the high digits are dropped
    {0, u"1.5", u"0.00", u"1.50"},
    {0, u"3.14159", u"0.00", u"3.14"},
    {0, u"1.2345", u"0.0#", u"1.2345"},
    {0, u"1.2345", u"#.##", u"1.2345"},
    {0, u"0.5", u"#.##", u"0.5"},
    {0, u"12", u"#.##", u"12"},  // the emptied decimal section takes its point along
    {0, u"0", u"#.##", u"0"},
    {0, u"3", u"0.00#", u"3.00"},
    {0, u"1234", u"000000", u"001234"},
    {0, u"-1234", u"000000", u"0-1234"},  // the minus fills a 0 like a digit
    {0, u"1234", u"0,000", u"1,234"},     // a comma among zeros alone is a literal
    {0, u"12", u"0,000", u"0,012"},
    {0, u"1234", u"#,###", u"1,234"},
    {0, u"1234.5", u"#,###", u"1,234"},
    {0, u"12.5", u".00", u".50"},
    {0, u"-5", u"¥#,##0.00元", u"¥-5.00元"},
    {0, u"50", u"0%", u"0%"},  // no scaling by 100
    {0, u"50", u"#%", u"50%"},
    {0, u"12.5", u"abc", u"abc"},
    {0, u"", u"#,##0.00", u"0.00"},
    {0, u"", u"#.##", u""},
    {0, u"0.12", u"#.#0", u"0.21"},  // the 0 takes the first decimal, the # the rest
    {0, u"0.123", u"#.0#0", u"0.132"},
    {0, u" 1,2x", u"", u" 1,2x"},  // an empty picture leaves even a non-number alone
    {0, u"abc", u"¥#,##0.00元", u"¥0.00元"},
    {0, u"12abc", u"#,##0.00", u"12.00"},  // the digits before the fault
    {0, u"1e3", u"#,##0", u"1,000"},
    {0, u"-0", u"0.00", u"0.00"},   // no sign on zero
    {0, u"-00.5", u"#.##", u"-0.5"},  // CGmp empties 00; the sign brings a 0 back
    {0, u"00.5", u"#.##", u".5"},
    {0, u"-0.001", u"0.00", u"0.00"},  // the 0 takes the 0, the minus is dropped
    {0, u"5", u"#00", u"05"},           // zeros beyond the digits stay
    {0, u"1234567", u"#", u"1234567"},  // no comma, no grouping
    {0, u"1.5", u"#x#.#x#", u"1x#.5x#"},  // only the first run of # takes the rest
    {0, u"1.25", u"0.0.0", u"1.2.5"},     // a second point is a literal
    {0, u"1234567", u"0,000#", u"1,234567#"},  // a placed comma joins the run
    {1, u"1234567.899", u"#,##0.00", u"1,234,567.90"},
    {1, u"-1234.5", u"#,##0", u"-1,235"},  // half up on the magnitude
    {1, u"9.999", u"0.00", u"0.00"},        // the carry's new digit has no 0 to go to
    {1, u"9.999", u"#0.00", u"10.00"},
    {1, u"0.123456789", u"#.##", u"0.12345679"},  // natural decimals, 8 at most
    {1, u"1.25", u"0.0#", u"1.25"},
    {1, u"3", u"0.0#", u"3.0"},
    {1, u"1.96", u"0.0%", u"1.9%"},  // the % counts as a decimal: rounded to 2, then cut to 1
    {1, u"2.5", u"#", u"3"},  // a # last but no point: 0 decimals
    {1, u"-0.001", u"0.00", u"0.00"},
    {1, u"1234.5678", u"", u"1234.5678"},
    {1, u"0.123456789", u"", u"0.12345679"},
    {1, u"", u"", u""},  // the null value
    {1, u"", u"#,##0.00", u"0.00"},
};

TEST(NumberPicture, Table) {
  for (const auto& c : kPictures) {
    CString picture(c.picture);
    CString out(c.text);
    CGmp value(c.text);
    if (c.round != 0) CUtilityCalc::ConvertToDispFormat(value, out, picture);
    if (c.round == 0) CUtilityCalc::FormatNum(out, picture);
    EXPECT_EQ(U(out), c.expected) << c.round << " " << Row(c.text) << " in " << Row(c.picture);
    EXPECT_EQ(Fields(value), Fields(CGmp(c.text))) << Row(c.text);  // the value is not rounded itself
    EXPECT_EQ(U(picture), c.picture);
  }
}

}  // namespace
