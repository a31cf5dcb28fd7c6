// Tests of CFuncMnger::CallFunc: the roads of a call (unknown name, no body,
// a registered body, a row given by index), the gate with both flags, and
// what a call leaves in the frame and in the error collector.
#include <gtest/gtest.h>

#include "VKTCalc.h"
#include "tests/func/FuncTestSupport.h"

namespace {

using testing::NiceMock;
using vkt::test::BodyScript;
using vkt::test::MockLanguage;
using vkt::test::S;
using vkt::test::ScopedLanguage;

CFuncPara Frame(const char16_t* name, std::initializer_list<const char16_t*> args) {
  CFuncPara para;
  para.strName = name;
  for (const char16_t* arg : args) para.arrArgs.Add(CString(arg));
  return para;
}

class CallFunc : public testing::Test {
 protected:
  CallFunc() : m_scope(&m_lgg) { BodyScript::Reset(u"", 1); }

  CFuncItem* Register(const char16_t* name, BYTE flags, bool withBody) {
    CFuncItem* item = new CFuncItem(name, 0, -1, 6);
    item->nFlags = flags;
    if (withBody) item->pfnBody = &BodyScript::Body;
    m_manager.m_arrItems.Add(item);
    return item;
  }

  NiceMock<MockLanguage> m_lgg;
  ScopedLanguage m_scope;
  CFuncMnger m_manager;
  CErrorCollector m_errors;
};

TEST_F(CallFunc, UnknownNameSetsError1000Once) {
  CFuncPara para = Frame(u"foo", {u"1", u"'a'"});
  EXPECT_EQ(m_manager.CallFunc(para, 0, &m_errors, -1), -1);
  EXPECT_EQ(m_errors.nError, 1000);
  EXPECT_EQ(std::u16string(m_errors.pszErrorText), u"Unknown function foo");
  EXPECT_EQ(S(para.arrArgs[1]), u"'a'");  // untouched for the host

  m_errors.nError = 1003;
  m_errors.SetErrorText(u"earlier");
  EXPECT_EQ(m_manager.CallFunc(para, 0, &m_errors, -1), -1);
  EXPECT_EQ(m_errors.nError, 1003);
  EXPECT_EQ(std::u16string(m_errors.pszErrorText), u"earlier");
  EXPECT_EQ(m_manager.CallFunc(para, 0, nullptr, -1), -1);  // no collector, no fault
}

// A built-in whose body has not arrived and a registered function without
// one both go to the host: -1, no error left, the arguments still quoted.
TEST_F(CallFunc, NoBodyGoesToTheHost) {
  Register(u"hostFn", 0, false);
  const char16_t* names[] = {u"STDEV", u"hostfn"};
  for (const char16_t* name : names) {
    CFuncPara para = Frame(name, {u"1", u"'a'"});
    m_errors.nError = 77;
    m_errors.SetErrorText(u"stale");
    EXPECT_EQ(m_manager.CallFunc(para, 1, &m_errors, -1), -1) << CString(name).ToUtf8();
    EXPECT_EQ(m_errors.nError, 0);
    EXPECT_EQ(m_errors.pszErrorText, nullptr);
    EXPECT_EQ(S(para.arrArgs[1]), u"'a'");
    EXPECT_TRUE(para.arrQuoted.IsEmpty());
  }
  EXPECT_EQ(BodyScript::Current().calls, 0);
}

TEST_F(CallFunc, RegisteredBodyRunsOnTheFrame) {
  Register(u"sum", 0, true);  // never called: the built-in wins
  Register(u"Twice", 0, true);
  m_manager.m_hJsWnd = &m_manager;
  m_manager.m_nJsMessage = 0x8001;
  BodyScript::Reset(u"42", 1);

  CFuncPara para = Frame(u"twice", {u"'x'", u"2"});
  para.strResult = u"left over";
  EXPECT_EQ(m_manager.CallFunc(para, 1, &m_errors, -1), 1);
  EXPECT_EQ(S(para.strResult), u"42");
  EXPECT_EQ(para.nResultKind, 6);
  EXPECT_EQ(para.hJsWnd, &m_manager);
  EXPECT_EQ(para.nJsMessage, 0x8001u);
  EXPECT_EQ(BodyScript::Current().argc, 2);
  EXPECT_EQ(BodyScript::Current().kind, 6);  // set before the body runs
  EXPECT_EQ(S(BodyScript::Current().args[0]), u"x");
  EXPECT_EQ(m_errors.nError, 0);

  BodyScript::Reset(u"", 1);
  para.strResult = u"left over";
  EXPECT_EQ(m_manager.CallFunc(para, 1, &m_errors, -1), 1);
  EXPECT_EQ(S(para.strResult), u"");  // emptied before the call
}

// A failing body leaves the error number alone; the calculator falls back
// to 1072 when nothing else set one.
TEST_F(CallFunc, FailingBodyLeavesTheNumberToTheCalculator) {
  Register(u"f", 0, true);
  BodyScript::Reset(u"", 0);
  CFuncPara para = Frame(u"f", {u"1", u"'a'"});
  EXPECT_EQ(m_manager.CallFunc(para, 0, &m_errors, -1), 0);
  EXPECT_EQ(m_errors.nError, 0);
  EXPECT_EQ(std::u16string(m_errors.pszErrorText), u"Bad call: f(1, a)");
  EXPECT_EQ(S(para.strResult), u"");
}

TEST_F(CallFunc, ByIndex) {
  CFuncPara para = Frame(u"anything", {});
  // Row 39 is if, whatever the frame's name: without arguments a bad call.
  EXPECT_EQ(m_manager.CallFunc(para, 0, &m_errors, 39), 0);
  EXPECT_EQ(para.nResultKind, 0);
  EXPECT_EQ(m_errors.nError, 0);
  EXPECT_EQ(std::u16string(m_errors.pszErrorText), u"Bad call: anything()");
  EXPECT_EQ(m_manager.CallFunc(para, 0, &m_errors, 63), 1);  // rand needs no arguments
  EXPECT_EQ(para.nResultKind, 6);
  EXPECT_EQ(m_manager.CallFunc(para, 0, &m_errors, 87), -1);  // no such row
  EXPECT_EQ(m_errors.nError, 1000);
}

struct GateCase {
  int bCheckGate;
  BYTE flags;
  int bCallUnmarked;
  int bCallBodied;
  bool withBody;
  int expected;
};

constexpr GateCase kGate[] = {
    {0, 1, 0, 0, true, 1},    // the gate is not looked at
    {1, 0, 0, 0, true, 1},    // not gated
    {1, 2, 0, 0, true, 1},    // bit 1 alone does not gate
    {1, 1, 1, 1, true, 1},    // both flags open
    {1, 1, 0, 1, true, -2},   // unmarked held back
    {1, 3, 0, 1, true, 1},    // bit 1 passes the first test
    {1, 3, 0, 0, true, -2},   // but a body is held back
    {1, 1, 1, 0, true, -2},
    {1, 1, 1, 0, false, -1},  // without a body it passes, to the host
    {1, 1, 0, 0, false, -2},
    {1, 3, 0, 0, false, -1},
    {0, 3, 0, 0, false, -1},
};

TEST_F(CallFunc, Gate) {
  for (const GateCase& c : kGate) {
    CFuncMnger manager;
    CFuncItem* item = new CFuncItem(u"g", 0, -1, 1);
    item->nFlags = c.flags;
    if (c.withBody) item->pfnBody = &BodyScript::Body;
    manager.m_arrItems.Add(item);
    manager.m_bCallUnmarked = c.bCallUnmarked;
    manager.m_bCallBodied = c.bCallBodied;
    BodyScript::Reset(u"", 1);
    CFuncPara para = Frame(u"g", {});
    EXPECT_EQ(manager.CallFunc(para, c.bCheckGate, &m_errors, -1), c.expected)
        << "check " << c.bCheckGate << " flags " << int(c.flags) << " unmarked "
        << c.bCallUnmarked << " bodied " << c.bCallBodied << " body " << c.withBody;
    EXPECT_EQ(BodyScript::Current().calls, c.expected == 1 ? 1 : 0);
  }
}

}  // namespace
