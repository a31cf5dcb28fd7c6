// Tests of CErrorCollector: texts by number through a language interface of
// our own, the argument's sources, the caret display at and around the
// position, and the host's function counter.
#include "VKTCalc.h"
#include "calc/FuncCounter.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

std::u16string Str(const char16_t* s) { return s == nullptr ? u"<null>" : std::u16string(s); }

// Made-up texts; a number that is missing has no text (null).
class FakeLanguage : public ILggInterface {
 public:
  const char16_t* GetText(int nID) override {
    auto it = texts.find(nID);
    return it == texts.end() ? nullptr : it->second;
  }
  void TranslateText(CString&) override {}

  std::map<int, const char16_t*> texts = {
      {1003, u"Syntax error: %s"},
      {1004, u"Bad value"},
      {1068, u"Name %s is invalid!"},
      {1070, u"%s"},
      {2001, u"100%% of %s"},
      {2002, u"%s and %s"},
      {2003, u"%d items: %s"},
      {2004, u""},
  };
};

// A node that only knows its expression text.
class TextNode : public ICalcTreeNode {
 public:
  explicit TextNode(const char16_t* text) : m_text(text) {}
  ICalcTreeNode* Clone() override { return nullptr; }
  int GetChildCount() const override { return 0; }
  void DeleteChild(int) override {}
  void DeleteAllChildren() override {}
  ICalcTreeNode* GetChild(int) const override { return nullptr; }
  ICalcTreeNode* GetParent() const override { return nullptr; }
  void WriteExpression(CStringBuilder*) override {}
  void GetExpression(CString& out) override { out = m_text; }
  void WriteFormula(CStringBuilder*, int) override {}
  int CollectByKind(CCalcTreeNodeArray&, unsigned char) override { return 0; }
  void GetValueRounded(CString&, int) override {}
  void GetValue(CString&, int, int) override {}
  const char16_t* GetTextPtr() const override { return m_text; }
  void SetText(const char16_t*) override {}
  unsigned char GetKind() const override { return 1; }
  void SetKind(unsigned char) override {}
  int CountFunctions() override { return 0; }
  void GetFuncNames(CStringArray&) override {}
  int GetFuncCall(CString&, CStringArray&, int) override { return 0; }
  void GetVarNames(CStringArray&) override {}
  int Travel(ICalcTreeTraveler*, int) override { return 0; }
  int IsAncestorOf(ICalcTreeNode*) override { return 0; }
  int GetNodesOfLevel(CCalcTreeNodeArray&, int) override { return 0; }

 private:
  const char16_t* m_text;
};

class ErrorCollectorTest : public testing::Test {
 protected:
  void SetUp() override { SetLggInterface(&language); }
  void TearDown() override { SetLggInterface(nullptr); }

  FakeLanguage language;
};

struct NumberCase {
  int number;
  const char16_t* param;
  const char16_t* source;  // pszSource during the call
  bool withNode;           // a current node whose expression is "sum(1,)"
  const char16_t* expected;  // null: no text
};

constexpr NumberCase kNumbers[] = {
    {1003, u"1+*2", nullptr, false, u"Syntax error: 1+*2"},
    {1003, nullptr, u"A1+", true, u"Syntax error: A1+"},   // the source before the node
    {1003, nullptr, nullptr, true, u"Syntax error: sum(1,)"},
    {1003, nullptr, nullptr, false, u"Syntax error: "},    // no argument: "%s" removed
    {1003, u"", u"A1+", false, u"Syntax error: "},         // an empty param is not null
    {1004, u"x", nullptr, false, u"Bad value"},            // no "%s": param ignored
    {1068, u"a b", nullptr, false, u"Name a b is invalid!"},
    {1070, u"%s%%", nullptr, false, u"%s%%"},              // the argument is not a format
    {2001, u"x", nullptr, false, u"100% of x"},            // formatting turns %% into %
    {2001, nullptr, nullptr, false, u"100%% of "},         // removing does not
    {2002, u"x", nullptr, false, u"x and "},               // one argument only
    {2003, u"x", nullptr, false, u"%d items: x"},          // other codes stand as they are
    {2004, u"x", nullptr, false, nullptr},                 // an empty language text
    {7, u"x", nullptr, false, nullptr},                    // a number without a text
    {0, u"plain", u"src", false, u"plain"},                // 0 and below: no language text
    {-5, nullptr, u"src", true, u"src"},
    {0, nullptr, nullptr, true, u"sum(1,)"},
    {0, nullptr, nullptr, false, nullptr},                 // clears the text
};

TEST_F(ErrorCollectorTest, SetErrorTextByNumber) {
  TextNode node(u"sum(1,)");
  for (const NumberCase& c : kNumbers) {
    CErrorCollector errors;
    errors.SetErrorText(u"old");
    errors.pszSource = c.source;
    errors.pCurrentNode = c.withNode ? &node : nullptr;
    errors.SetErrorText(c.number, c.param);
    EXPECT_EQ(Str(errors.pszErrorText), Str(c.expected))
        << "number " << c.number << ", param " << testing::PrintToString(Str(c.param));
    EXPECT_EQ(errors.nError, 0) << "the number is not stored";
  }
}

TEST_F(ErrorCollectorTest, WithoutLanguageInterfaceANumberHasNoText) {
  SetLggInterface(nullptr);
  CErrorCollector errors;
  errors.SetErrorText(1003, u"1+");
  EXPECT_EQ(errors.pszErrorText, nullptr);
  errors.nError = 1003;
  EXPECT_EQ(errors.GetErrorText(nullptr), nullptr);
}

struct CaretCase {
  const char16_t* text;
  int position;
  const char16_t* font;
  const char16_t* expected;
};

constexpr CaretCase kCarets[] = {
    {u"Bad: 1+*2", 2, nullptr, u"Bad:\r\n1+*2\r\n--^"},
    {u"Bad: 1+*2", 2, u"Courier New",
     u"Bad:\r\n<font face='Courier New'>1+*2\r\n--^</font>"},
    {u"Bad: 1+*2", 0, nullptr, u"Bad:\r\n1+*2\r\n^"},           // only the caret
    {u"Bad: 1+*2", 3, nullptr, u"Bad:\r\n1+*2\r\n---^"},        // the last character
    {u"Bad: 1+*2", 4, nullptr, u"Bad:\r\n1+*2\r\n----^"},       // behind the end
    {u"Bad: 1+*2", 9, nullptr, u"Bad:\r\n1+*2\r\n---------^"},  // far past it
    {u"Bad: 1+*2", -1, u"Courier", u"Bad: 1+*2"},               // no position: as it is
    {u"Bad: x", -3, nullptr, u"Bad:\r\nx\r\n^"},                // other negatives: no dashes
    {u"Bad:", 1, nullptr, u"Bad:\r\n-^"},                       // ':' last: one line
    {u"Bad:", 1, u"F", u"Bad:\r\n-^</font>"},
    {u"No colon", 3, u"F", u"No colon\r\n---^</font>"},
    {u"a:b:c", 1, nullptr, u"a:\r\nb:c\r\n-^"},                 // the first ':' splits
    {u"Bad:\t \r\n 1+2", 1, nullptr, u"Bad:\r\n1+2\r\n-^"},     // leading white space goes
    {u"Bad: 1 + 2 ", 4, nullptr, u"Bad:\r\n1 + 2 \r\n----^"},   // inner and trailing stay
    {u"Line one\r\nLine two: x", 0, nullptr, u"Line one\r\nLine two:\r\nx\r\n^"},
    {u"Bad:   ", 0, nullptr, u"Bad:\r\n\r\n^"},
};

TEST_F(ErrorCollectorTest, CaretDisplay) {
  for (const CaretCase& c : kCarets) {
    CErrorCollector errors;
    errors.nError = 1003;
    errors.SetErrorText(c.text);
    errors.nCodePos = c.position;
    const std::u16string first = Str(errors.GetErrorText(c.font));
    EXPECT_EQ(first, Str(c.expected)) << testing::PrintToString(Str(c.text)) << " at "
                                      << c.position;
    EXPECT_EQ(errors.nCodePos, -1) << testing::PrintToString(Str(c.text));
    EXPECT_EQ(errors.nError, 1003);
    // A second call, with or without a font, changes nothing.
    EXPECT_EQ(Str(errors.GetErrorText(u"Other")), first) << testing::PrintToString(Str(c.text));
  }
}

TEST_F(ErrorCollectorTest, TextFromTheNumberAlone) {
  CErrorCollector errors;
  EXPECT_EQ(errors.GetErrorText(nullptr), nullptr);  // no number, no text

  errors.SetCodePos(1003, 2);
  // The language text unformatted, and the position not looked at yet.
  EXPECT_EQ(Str(errors.GetErrorText(nullptr)), u"Syntax error: %s");
  EXPECT_EQ(errors.nCodePos, 2);
  // Now there is a text, so the next call makes the display.
  EXPECT_EQ(Str(errors.GetErrorText(nullptr)), u"Syntax error:\r\n%s\r\n--^");
  EXPECT_EQ(errors.nCodePos, -1);

  CErrorCollector unknown;
  unknown.SetCodePos(7, 0);
  EXPECT_EQ(unknown.GetErrorText(nullptr), nullptr);
  EXPECT_EQ(unknown.nCodePos, 0);
}

TEST_F(ErrorCollectorTest, SyntaxErrorThroughTheParsersPath) {
  CErrorCollector errors;
  errors.pszSource = u"1+*2";
  errors.SetErrorSyntax(2, nullptr);
  errors.pszSource = nullptr;
  EXPECT_EQ(errors.nError, 1003);
  EXPECT_EQ(errors.nCodePos, 2);
  EXPECT_EQ(Str(errors.GetErrorText(u"Mono")),
            u"Syntax error:\r\n<font face='Mono'>1+*2\r\n--^</font>");
}

TEST_F(ErrorCollectorTest, SetCodePosLeavesTheText) {
  CErrorCollector errors;
  errors.SetErrorText(u"kept");
  errors.SetCodePos(1070, 5);
  EXPECT_EQ(errors.nError, 1070);
  EXPECT_EQ(errors.nCodePos, 5);
  EXPECT_EQ(Str(errors.pszErrorText), u"kept");
}

TEST_F(ErrorCollectorTest, EmptyKeepsFunctionNameAndCounter) {
  LONG counter = 3;
  TextNode node(u"x");
  CErrorCollector errors;
  errors.strFuncName = u"sum";
  errors.pFuncCounter = &counter;
  errors.pCurrentNode = &node;
  errors.pszSource = u"src";
  errors.SetErrorSyntax(4, u"1+");
  errors.Empty_CalcError();
  EXPECT_EQ(errors.nError, 0);
  EXPECT_EQ(errors.nCodePos, -1);
  EXPECT_EQ(errors.pszErrorText, nullptr);
  EXPECT_EQ(errors.pCurrentNode, nullptr);
  EXPECT_EQ(errors.pszSource, nullptr);
  EXPECT_EQ(std::u16string(errors.strFuncName.View()), u"sum");
  EXPECT_EQ(errors.pFuncCounter, &counter);
}

TEST_F(ErrorCollectorTest, PlainTextIsCopiedAndEmptyClears) {
  CErrorCollector errors;
  char16_t buffer[] = u"mine";
  errors.SetErrorText(buffer);
  buffer[0] = u'X';
  EXPECT_EQ(Str(errors.pszErrorText), u"mine");
  errors.SetErrorText(errors.pszErrorText);  // its own text
  EXPECT_EQ(Str(errors.pszErrorText), u"mine");
  errors.SetErrorText(u"");
  EXPECT_EQ(errors.pszErrorText, nullptr);
  errors.SetErrorText(u"again");
  errors.SetErrorText(static_cast<const char16_t*>(nullptr));
  EXPECT_EQ(errors.pszErrorText, nullptr);
}

TEST_F(ErrorCollectorTest, CopiesOwnTheirText) {
  CErrorCollector errors;
  errors.SetErrorSyntax(1, u"a+");
  errors.strFuncName = u"f";
  CErrorCollector copy(errors);
  ASSERT_NE(copy.pszErrorText, nullptr);
  EXPECT_NE(copy.pszErrorText, errors.pszErrorText);
  EXPECT_EQ(Str(copy.pszErrorText), u"Syntax error: a+");
  EXPECT_EQ(copy.nError, 1003);
  EXPECT_EQ(copy.nCodePos, 1);
  EXPECT_EQ(std::u16string(copy.strFuncName.View()), u"f");

  CErrorCollector assigned;
  assigned.SetErrorText(u"replaced");
  assigned = errors;
  EXPECT_NE(assigned.pszErrorText, errors.pszErrorText);
  errors.Empty_CalcError();  // the copies keep theirs
  EXPECT_EQ(Str(assigned.pszErrorText), u"Syntax error: a+");
  assigned = assigned;
  EXPECT_EQ(Str(assigned.pszErrorText), u"Syntax error: a+");
}

TEST(FuncCounter, CountsAtomicallyIntoTheHostsWord) {
  LONG counter = 0;
  CErrorCollector errors;
  vkt::CountFunctionResult(&errors);  // no counter: nothing to do
  vkt::CountFunctionResult(nullptr);
  errors.pFuncCounter = &counter;
  constexpr int kThreads = 4;
  constexpr int kEach = 10000;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&errors] {
      CErrorCollector own(errors);  // separate collectors, one shared word
      for (int i = 0; i < kEach; ++i) vkt::CountFunctionResult(&own);
    });
  }
  for (std::thread& t : threads) t.join();
  EXPECT_EQ(counter, kThreads * kEach);
}

}  // namespace
