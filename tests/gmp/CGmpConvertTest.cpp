// tests/gmp/CGmpConvertTest.cpp: doubles, machine integers, the static
// conversions, arrays of heap numbers and the stream form.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

#include "CGmp.h"
#include "tests/support/GmpText.h"
#include "tests/support/MemoryStream.h"

using vkt::test::Fields;
using vkt::test::Raw;
using vkt::test::Text;

namespace {

struct DoubleCase {
  double value;
  const char16_t* expected;
};

const DoubleCase kDoubles[] = {
    {0.1, u"0.1"},
    {0.2, u"0.2"},
    {0.1 + 0.2, u"0.3"},
    {1.0 / 3.0, u"0.33333333333333"},
    {2.0 / 3.0, u"0.66666666666667"},
    {123456.789, u"123456.789"},
    {1e-5, u"0.00001"},
    {1e22, u"10000000000000000000000"},
    {-2.5, u"-2.5"},
    {-0.0, u"0"},
    {0.0, u"0"},
    {1e-20, u"0"},
    {123456789012345.67, u"123456789012346"},  // 15 digits: the decimals round away
    {std::numeric_limits<double>::infinity(), u""},  // chosen: no number
    {-std::numeric_limits<double>::infinity(), u""},
    {std::numeric_limits<double>::quiet_NaN(), u""},
};

TEST(CGmpDouble, SetTable) {
  for (const DoubleCase& c : kDoubles) {
    CGmp x(c.value);
    EXPECT_EQ(Text(x), c.expected) << c.value;
  }
  CGmp huge(1e300);
  EXPECT_EQ(huge.m_strInt.GetLength(), 79);  // the parser's run limit
}

TEST(CGmpDouble, IndependentOfTheLocale) {
  const char* previous = std::setlocale(LC_NUMERIC, nullptr);
  const std::string saved = previous ? previous : "C";
  // A locale with a decimal comma, where the system has one.
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr && std::setlocale(LC_NUMERIC, "fr_FR.UTF-8") == nullptr)
    GTEST_SKIP() << "no locale with a decimal comma installed";
  EXPECT_EQ(Text(CGmp(0.5)), u"0.5");
  EXPECT_EQ(CGmp(u"2.25").GetDouble(), 2.25);
  EXPECT_EQ(CGmp::Str2Double(u"1.5", 0), 1.5);
  std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(CGmpDouble, GetDouble) {
  EXPECT_EQ(CGmp(u"0.1").GetDouble(), 0.1);
  EXPECT_EQ(CGmp(u"-12345.678").GetDouble(), -12345.678);
  EXPECT_EQ(CGmp().GetDouble(), 0.0);
  EXPECT_EQ(CGmp(u"1e70").GetDouble(), 1e70);
}

struct Str2DoubleCase {
  const char16_t* text;
  int strip;
  double expected;
};

const Str2DoubleCase kStr2Double[] = {
    {u"1.5", 0, 1.5},     {u"  -2e3x", 0, -2000.0}, {u"1,234.5", 0, 1.0}, {u"1,234.5", 1, 1234.5},
    {u"", 0, 0.0},        {u"abc", 0, 0.0},        {u"+.25", 0, 0.25},   {u"0x10", 0, 16.0},
    {u"--1", 0, 0.0},     {u"1e-400", 0, 0.0},
};

TEST(CGmpDouble, Str2Double) {
  for (const Str2DoubleCase& c : kStr2Double)
    EXPECT_EQ(CGmp::Str2Double(c.text, c.strip), c.expected) << testing::PrintToString(c.text);
  EXPECT_EQ(CGmp::Str2Double(nullptr, 1), 0.0);
  EXPECT_TRUE(std::isinf(CGmp::Str2Double(u"1e400", 0)));
}

TEST(CGmpDouble, Double2Str) {
  CString out;
  CGmp::Double2Str(out, 0.0, 2, 0, 1, 0);
  EXPECT_EQ(std::u16string(out.View()), u"");
  CGmp::Double2Str(out, 0.0, 2, 0, 1, 1);
  EXPECT_EQ(std::u16string(out.View()), u"0.00");
  CGmp::Double2Str(out, 1.0 / 3.0, -1, 1, 1, 1);
  EXPECT_EQ(std::u16string(out.View()), u"0.33333333");  // bLimit: at most 8
  CGmp::Double2Str(out, 2.5, 4, 0, 0, 1);
  EXPECT_EQ(std::u16string(out.View()), u"2.5");
  CGmp::Double2Str(out, 3.0, 2, 0, 0, 1);
  EXPECT_EQ(std::u16string(out.View()), u"3");
  CGmp::Double2Str(out, -0.004, 2, 0, 1, 0);
  EXPECT_EQ(std::u16string(out.View()), u"");  // shows as 0.00: a zero value
}

struct IntCase {
  const char16_t* text;
  long long expected;
};

constexpr IntCase kInt64[] = {
    {u"2.5", 3},  {u"-2.5", -3}, {u"2.4999", 2}, {u"", 0},
    {u"0.5", 1},  {u"-0.49", 0}, {u"9223372036854775807", 9223372036854775807LL},
    {u"99999999999999999999", 9223372036854775807LL},  // saturates
};

TEST(CGmpInteger, GetInt64) {
  for (const IntCase& c : kInt64) EXPECT_EQ(CGmp(c.text).GetInt64(), c.expected) << testing::PrintToString(c.text);
}

constexpr IntCase kStr2Int[] = {
    {u"2.5", 3}, {u"-2.5", -3}, {u"1,234", 1234}, {u"", 0}, {u"abc", 0}, {u"12abc", 12}, {u"0.49", 0},
};

TEST(CGmpInteger, Str2Int) {
  for (const IntCase& c : kStr2Int) EXPECT_EQ(CGmp::Str2Int(c.text), c.expected) << testing::PrintToString(c.text);
  EXPECT_EQ(CGmp::Str2Int(nullptr), 0);
}

TEST(CGmpArray, InitAndDestroy) {
  CArray<CGmp*, CGmp*> items;
  CGmp::InitGmpArray(items, 3);
  ASSERT_EQ(items.GetSize(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(items[i] != nullptr && items[i]->IsNull());
  items[1]->Set(5);
  CGmp::InitGmpArray(items, 2);  // deletes the three, makes two new ones
  ASSERT_EQ(items.GetSize(), 2);
  EXPECT_TRUE(items[1]->IsNull());
  CGmp::DestroyGmpArray(items);
  EXPECT_EQ(items.GetSize(), 2);
  EXPECT_EQ(items[0], nullptr);
  CGmp::DestroyGmpArray(items);  // harmless the second time
  CGmp::InitGmpArray(items, 0);
  EXPECT_EQ(items.GetSize(), 0);
}

TEST(CGmpStream, RoundTrip) {
  const CGmp values[] = {
      CGmp((u"-" + std::u16string(60, u'9')).c_str()),
      CGmp((u"0." + std::u16string(40, u'7')).c_str()),
      CGmp(),
      CGmp(0),
      Raw(u"007", u"500", 1),  // broken invariants travel as they are
  };
  vkt::test::MemoryOutput out;
  for (const CGmp& v : values) CGmp(v).Serialize(&out);
  vkt::test::MemoryInput in(out.bytes);
  for (const CGmp& v : values) {
    CGmp back(u"123");
    EXPECT_EQ(back.Deserialize(&in), 1);
    EXPECT_EQ(Fields(back), Fields(v));
  }
  EXPECT_EQ(in.Remaining(), 0u);
}

TEST(CGmpStream, FailedReadsStopAndKeepWhatWasRead) {
  vkt::test::MemoryOutput out;
  CGmp(u"-12.5").Serialize(&out);
  // Cut the stream in every place: sign only, sign and the integer part.
  for (std::size_t keep = 0; keep < out.bytes.size(); ++keep) {
    vkt::test::MemoryInput in(std::vector<BYTE>(out.bytes.begin(), out.bytes.begin() + static_cast<long>(keep)));
    CGmp x(u"3.75");
    EXPECT_EQ(x.Deserialize(&in), 0) << keep;
    if (keep >= 1) {
      EXPECT_EQ(x.m_bNeg, 1) << keep;
    } else {
      EXPECT_EQ(Fields(x), u"+|3|75");
    }
  }
  CGmp x;
  EXPECT_EQ(x.Deserialize(nullptr), 0);
  x.Serialize(nullptr);
}

}  // namespace
