// Tests of the call frame and the common wrapper: arguments losing their
// quotes, results quoted by kind, error messages by the body's return, and
// the frame's own number operations.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VKTCalc.h"
#include "func/FuncWrapper.h"
#include "tests/func/FuncTestSupport.h"

namespace {

using testing::NiceMock;
using vkt::func::RunBody;
using vkt::test::BodyScript;
using vkt::test::MockLanguage;
using vkt::test::S;
using vkt::test::ScopedLanguage;

CFuncPara Frame(std::initializer_list<const char16_t*> args, BYTE kind = 1) {
  CFuncPara para;
  para.strName = u"f";
  para.nResultKind = kind;
  for (const char16_t* arg : args) para.arrArgs.Add(CString(arg));
  return para;
}

std::vector<int> Quoted(const CFuncPara& para) {
  return std::vector<int>(para.arrQuoted.begin(), para.arrQuoted.end());
}

std::vector<std::u16string> Args(const CStringArray& args) {
  std::vector<std::u16string> out;
  for (const CString& arg : args) out.push_back(S(arg));
  return out;
}

TEST(FuncWrapper, ArgumentsLoseTheirQuotes) {
  struct Case {
    std::initializer_list<const char16_t*> args;
    std::vector<int> quoted;
    std::vector<std::u16string> seen;
  };
  const Case cases[] = {
      {{u"'a'", u"1", u"'b'"}, {1, 0, 1}, {u"a", u"1", u"b"}},
      {{u"1", u"'a'"}, {0, 1}, {u"1", u"a"}},
      {{u"1", u"2"}, {}, {u"1", u"2"}},
      {{u"\"'x'\""}, {1}, {u"x"}},          // both layers go
      {{u"'it\\'s'"}, {1}, {u"it's"}},      // escapes undone
      {{u"''", u"'"}, {1}, {u"", u"'"}},    // a lone quote is no pair
      {{}, {}, {}},
  };
  for (const Case& c : cases) {
    BodyScript::Reset(u"", 1);
    CFuncPara para = Frame(c.args);
    EXPECT_EQ(RunBody(para, &BodyScript::Body, nullptr), 1);
    EXPECT_EQ(Quoted(para), c.quoted) << testing::PrintToString(c.seen);
    EXPECT_EQ(Args(BodyScript::Current().args), c.seen);
    EXPECT_EQ(BodyScript::Current().argc, static_cast<int>(c.seen.size()));
  }
}

struct ResultCase {
  BYTE kind;
  const char16_t* result;
  const char16_t* expected;
  BYTE expectedKind;
};

constexpr ResultCase kResults[] = {
    {6, u"12.5%", u"'12.5%'", 1},    // no number: quoted, becomes text
    {6, u"12.5", u"12.5", 6},
    {6, u"-0.25", u"-0.25", 6},
    {1, u"12", u"'12'", 1},          // text stays text
    {0, u"abc", u"'abc'", 0},        // kind 0 keeps its 0
    {0, u"5", u"5", 0},
    {2, u"'x'", u"'x'", 1},          // one pair, whoever quoted
    {2, u"1,000", u"'1,000'", 1},    // no thousand commas
    {5, u"1e5", u"'1e5'", 1},        // no exponent
    {3, u"2024.01.02", u"'2024.01.02'", 3},
    {4, u"\"d\"", u"'d'", 4},
    {1, u"it's", u"\"it\\'s\"", 1},
    {1, u"", u"", 1},                // nothing to quote
    {6, u"", u"", 6},
};

TEST(FuncWrapper, ResultsQuotedByKind) {
  for (const ResultCase& c : kResults) {
    BodyScript::Reset(c.result, 1);
    CFuncPara para = Frame({}, c.kind);
    EXPECT_EQ(RunBody(para, &BodyScript::Body, nullptr), 1);
    EXPECT_EQ(S(para.strResult), c.expected) << CString(c.result).ToUtf8() << " kind " << int(c.kind);
    EXPECT_EQ(para.nResultKind, c.expectedKind) << CString(c.result).ToUtf8();
  }
}

struct ErrorCase {
  int answer;
  const char16_t* left;      // what the body leaves in strResult
  const char16_t* expected;  // the collector's text; null for none
};

constexpr ErrorCase kErrors[] = {
    {0, u"", u"Bad call: f(1, a)"},
    {-1, u"", u"Bad value: f(1, a)"},
    {-2, u"", nullptr},          // no message of the library's own
    {2, u"", nullptr},
    {0, u"own words", u"own words"},
    {-1, u"own words", u"own words"},
    {7, u"own words", u"own words"},
};

TEST(FuncWrapper, ErrorMessagesByNumber) {
  NiceMock<MockLanguage> lgg;
  ScopedLanguage scope(&lgg);
  for (const ErrorCase& c : kErrors) {
    BodyScript::Reset(c.left, c.answer);
    CFuncPara para = Frame({u"1", u"'a'"});
    CErrorCollector errors;
    errors.SetErrorText(u"old");
    EXPECT_EQ(RunBody(para, &BodyScript::Body, &errors), 0) << c.answer;
    if (c.expected == nullptr)
      EXPECT_EQ(errors.pszErrorText, nullptr) << c.answer;
    else
      EXPECT_EQ(std::u16string(errors.pszErrorText), c.expected) << c.answer;
    EXPECT_EQ(errors.nError, 0) << c.answer;
    EXPECT_EQ(S(para.strResult), u"") << c.answer;
  }
}

TEST(FuncWrapper, MessageTextAsked) {
  NiceMock<MockLanguage> lgg;
  ScopedLanguage scope(&lgg);
  EXPECT_CALL(lgg, GetText(1004)).Times(1);
  BodyScript::Reset(u"", -1);
  CFuncPara para = Frame({});
  CErrorCollector errors;
  EXPECT_EQ(RunBody(para, &BodyScript::Body, &errors), 0);
  EXPECT_EQ(std::u16string(errors.pszErrorText), u"Bad value: f()");
}

TEST(FuncWrapper, FormatOneArgument) {
  struct Case {
    const char16_t* format;
    const char16_t* expected;
  };
  const Case cases[] = {
      {u"Bad: %s!", u"Bad: f(1)!"}, {u"%s and %s", u"f(1) and "}, {u"100%% %d", u"100% %d"},
      {u"no arg", u"no arg"},       {u"%", u"%"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(S(vkt::func::FormatOneArgument(c.format, u"f(1)")), c.expected)
        << CString(c.format).ToUtf8();
}

TEST(FuncWrapper, NoLanguageGivesNoText) {
  BodyScript::Reset(u"", 0);
  CFuncPara para = Frame({u"1"});
  CErrorCollector errors;
  EXPECT_EQ(RunBody(para, &BodyScript::Body, &errors), 0);
  EXPECT_EQ(errors.pszErrorText, nullptr);
}

TEST(FuncPara, SetResult) {
  CFuncPara para;
  para.strResult = u"'text'";
  para.SetResult(-17);
  EXPECT_EQ(S(para.strResult), u"-17");
  CGmp value(u"001.500");
  EXPECT_EQ(para.SetResult(value), 1);
  EXPECT_EQ(S(para.strResult), u"1.5");
}

TEST(FuncPara, ResetDoubleString) {
  const std::u16string tooLong(61, u'1');
  CFuncPara para = Frame({u" 1.500 ", u"2.", u"-0", u"abc"});
  EXPECT_EQ(para.ResetDoubleString_Para(), 1);
  EXPECT_EQ(Args(para.arrArgs), (std::vector<std::u16string>{u"1.5", u"2", u"0", u"abc"}));

  para = Frame({u"3.10", tooLong.c_str(), u"4.0"});
  EXPECT_EQ(para.ResetDoubleString_Para(), 0);
  EXPECT_EQ(Args(para.arrArgs), (std::vector<std::u16string>{u"3.1", tooLong, u"4.0"}));
  EXPECT_EQ(Frame({}).ResetDoubleString_Para(), 1);

  para.strResult = u"0.50";
  EXPECT_EQ(para.ResetDoubleString_Result(), 1);
  EXPECT_EQ(S(para.strResult), u"0.5");
  para.strResult = tooLong.c_str();
  EXPECT_EQ(para.ResetDoubleString_Result(), 0);
  EXPECT_EQ(S(para.strResult), tooLong);
}

}  // namespace
