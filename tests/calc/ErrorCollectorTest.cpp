// Tests of CErrorCollector: texts by number and their argument's sources, the caret display at and
// around the position, what emptying and copying keep, and the host's function counter.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <thread>

#include "VKTCalc.h"
#include "calc/FuncCounter.h"
#include "tests/support/TestHost.h"

namespace {

using vkt::test::Num;
using vkt::test::Row;
using vkt::test::U;

// "number position: text", the collector as a test sees it.
std::u16string State(const CErrorCollector& errors) {
  return Num(errors.nError) + u" " + Num(errors.nCodePos) + u": " + U(errors.pszErrorText);
}

class ErrorCollector : public testing::Test {
 protected:
  ErrorCollector() { scope.language.texts.insert({{2001, u"100%% of %s"}, {2004, u""}, {7, nullptr}}); }
  vkt::test::ScopedFakeLanguage scope;  // 1003 reads "Syntax error: %s"
};

// The number and the param, pszSource during the call, whether a current node (the expression
// "sum(1,2)") is set; the text left. The number is not stored.
const std::tuple<int, const char16_t*, const char16_t*, bool, const char16_t*> kNumbers[] = {
    {1003, u"1+*2", u"A1+", true, u"Syntax error: 1+*2"},  // the param first
    {1003, nullptr, u"A1+", true, u"Syntax error: A1+"},   // then the source
    {1003, nullptr, nullptr, true, u"Syntax error: sum(1,2)"},  // then the node
    {1003, nullptr, nullptr, false, u"Syntax error: "},   // no argument: "%s" removed
    {1003, u"", u"A1+", false, u"Syntax error: "},        // an empty param is not null
    {2001, u"x", nullptr, false, u"100% of x"},           // formatting turns %% into %
    {2001, nullptr, nullptr, false, u"100%% of "},        // removing does not
    {2004, u"x", nullptr, false, u"<null>"},              // an empty language text
    {7, u"x", nullptr, false, u"<null>"},                 // no text for the number (null)
    {0, u"plain", u"src", false, u"plain"},               // 0 and below: no language text
    {-5, nullptr, u"src", true, u"src"},
    {0, nullptr, nullptr, false, u"<null>"},              // clears the text
};

TEST_F(ErrorCollector, SetErrorTextByNumber) {
  std::unique_ptr<ICalcTreeNode> node(CUtilityCalc::ParseExpression(u"sum(1,2)", nullptr));
  for (const auto& [number, param, source, withNode, expected] : kNumbers) {
    CErrorCollector errors;
    errors.SetErrorText(u"old");
    errors.pszSource = source;
    errors.pCurrentNode = withNode ? node.get() : nullptr;
    errors.SetErrorText(number, param);
    EXPECT_EQ(State(errors), u"0 -1: " + std::u16string(expected)) << number << " " << Row(param);
  }
}

// The text, the position and the font face; the display GetErrorText makes.
const std::tuple<const char16_t*, int, const char16_t*, const char16_t*> kCarets[] = {
    {u"Bad: 1+*2", 2, nullptr, u"Bad:\r\n1+*2\r\n--^"},
    {u"Bad: 1+*2", 2, u"Mono", u"Bad:\r\n<font face='Mono'>1+*2\r\n--^</font>"},
    {u"Bad: 1+*2", 0, nullptr, u"Bad:\r\n1+*2\r\n^"},             // only the caret
    {u"Bad: 1+*2", 9, nullptr, u"Bad:\r\n1+*2\r\n---------^"},    // past the end
    {u"Bad: 1+*2", -1, u"Mono", u"Bad: 1+*2"},                    // no position: as it is
    {u"Bad: x", -3, nullptr, u"Bad:\r\nx\r\n^"},                  // other negatives: no dashes
    {u"Bad:", 1, nullptr, u"Bad:\r\n-^"},                         // ':' last: one line
    {u"No colon", 3, u"F", u"No colon\r\n---^</font>"},
    {u"Bad:\t \r\n 1: 2 ", 4, nullptr, u"Bad:\r\n1: 2 \r\n----^"},  // the first ':' splits; blanks go
};

TEST_F(ErrorCollector, CaretDisplay) {
  for (const auto& [text, position, font, expected] : kCarets) {
    CErrorCollector errors;
    errors.nError = 1003;
    errors.SetErrorText(text);
    errors.nCodePos = position;
    EXPECT_EQ(U(errors.GetErrorText(font)), expected) << Row(text) << " at " << position;
    errors.GetErrorText(u"Other");  // the display is made once: the position is gone
    EXPECT_EQ(State(errors), u"1003 -1: " + std::u16string(expected)) << Row(text);
  }
}

// One collector through a walk of calls, and its State() after each.
const std::pair<std::function<void(CErrorCollector&)>, const char16_t*> kWalk[] = {
    {[](auto& e) { e.GetErrorText(nullptr); }, u"0 -1: <null>"},  // no number, no text
    {[](auto& e) { e.SetCodePos(1003, 2); }, u"1003 2: <null>"},
    {[](auto& e) { e.GetErrorText(nullptr); }, u"1003 2: Syntax error: %s"},  // the text alone; the caret
    {[](auto& e) { e.GetErrorText(nullptr); }, u"1003 -1: Syntax error:\r\n%s\r\n--^"},  // waits for a text
    {[](auto& e) { e.SetCodePos(7, 0); }, u"7 0: Syntax error:\r\n%s\r\n--^"},  // the text stays
    {[](auto& e) { e.SetErrorText(nullptr); e.GetErrorText(nullptr); }, u"7 0: <null>"},  // 7 has no text
    {[](auto& e) { e.SetErrorSyntax(2, u"1+*2"); }, u"1003 2: Syntax error: 1+*2"},
    {[](auto& e) { e.GetErrorText(u"M"); }, u"1003 -1: Syntax error:\r\n<font face='M'>1+*2\r\n--^</font>"},
    {[](auto& e) { e.SetErrorText(u"mine"); }, u"1003 -1: mine"},
    {[](auto& e) { e.SetErrorText(e.pszErrorText); }, u"1003 -1: mine"},  // its own text
    {[](auto& e) { e = CErrorCollector(e); }, u"1003 -1: mine"},  // the copy owns its text
    {[](auto& e) { e = e; }, u"1003 -1: mine"},
    {[](auto& e) { e.SetErrorText(u""); }, u"1003 -1: <null>"},  // the empty text is none
    {[](auto& e) { SetLggInterface(nullptr); e.SetErrorText(1003, u"1+"); }, u"1003 -1: <null>"},  // no
    {[](auto& e) { e.GetErrorText(nullptr); }, u"1003 -1: <null>"},  // language: no text for a number
    {[](auto& e) { e.SetErrorText(u"x"); e.Empty_CalcError(); }, u"0 -1: <null>"},
};

TEST_F(ErrorCollector, Walk) {
  LONG counter = 3;
  std::unique_ptr<ICalcTreeNode> node(CUtilityCalc::ParseExpression(u"x", nullptr));
  CErrorCollector errors;
  errors.strFuncName = u"sum";
  errors.pFuncCounter = &counter;
  for (const auto& [step, expected] : kWalk) {
    errors.pCurrentNode = node.get();
    errors.pszSource = u"src";
    step(errors);
    EXPECT_EQ(State(errors), expected);
  }
  // Emptying keeps the function's name and the counter.
  EXPECT_TRUE(errors.pCurrentNode == nullptr && errors.pszSource == nullptr) << Row(errors.pszSource);
  EXPECT_TRUE(errors.pFuncCounter == &counter && U(errors.strFuncName) == u"sum");
}

TEST(FuncCounter, CountsAtomicallyIntoTheHostsWord) {
  LONG counter = 0;
  CErrorCollector errors;
  errors.pFuncCounter = &counter;
  std::thread other([errors]() mutable {  // a collector of its own, the same word
    for (int i = 0; i < 10000; ++i) vkt::CountFunctionResult(&errors);
  });
  for (int i = 0; i < 10000; ++i) vkt::CountFunctionResult(&errors);
  other.join();
  EXPECT_EQ(counter, 20000);
}

}  // namespace
