// Tests of CTraceCollector on its own: the records of mode 2 and their string
// form, the round trip through InitString, and the calls that each mode
// ignores. The lines that a calculation writes in mode 1 are tested with the
// calculation run (CalcRunTest.cpp).
#include "VKTCalc.h"
#include "CFuncItem.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::u16string Str(const CString& s) { return std::u16string(s.View()); }

std::u16string GetString(CTraceCollector& trace) {
  CString out(u"<untouched>");
  trace.GetString(out);
  return Str(out);
}

CStringArray Args(std::initializer_list<const char16_t*> items) {
  CStringArray out;
  for (const char16_t* item : items) out.Add(CString(item));
  return out;
}

const char16_t kTwoRecords[] = u"a(1, 2)!AbCbE+-/*3!+-/*AbCbEB1!AbCbE+-/*4";

TEST(TraceCollector, EmptyPairsGiveEmptyString) {
  CTraceCollector trace;
  trace.nMode = 2;
  EXPECT_EQ(GetString(trace), u"");
}

TEST(TraceCollector, TwoRecordsAndTheirRoundTrip) {
  CTraceCollector trace;
  trace.nMode = 2;
  CString name(u"a"), three(u"3"), var(u"B1"), four(u"4");
  CStringArray args = Args({u"1", u"2"});
  trace.Func_Calced(name, args, three);
  trace.Var_Calced(var, four);
  EXPECT_EQ(GetString(trace), kTwoRecords);

  CTraceCollector restored;
  restored.nMode = 2;
  restored.InitString(kTwoRecords);
  ASSERT_EQ(restored.arrNames.GetSize(), 2);
  ASSERT_EQ(restored.arrValues.GetSize(), 2);
  EXPECT_EQ(Str(restored.arrNames[0]), u"a(1, 2)");
  EXPECT_EQ(Str(restored.arrValues[0]), u"3");
  EXPECT_EQ(Str(restored.arrNames[1]), u"B1");
  EXPECT_EQ(Str(restored.arrValues[1]), u"4");
  EXPECT_EQ(GetString(restored), kTwoRecords);
}

// The left side a function call gets, by each way of recording it.
struct CallCase {
  const char16_t* call;      // text of code 3: name and arguments on lines
  const char16_t* expected;  // arrNames entry; null: nothing recorded
};

constexpr CallCase kCalls[] = {
    {u"now", u"now( )"},                         // no arguments: one blank
    {u"foo\r\n1\r\n'a'", u"foo(1, 'a')"},        // quotes stay as given
    {u"f\r\n\r\n2", u"f(, 2)"},                  // an empty argument keeps its place
    {u"g\r\n 1 ", u"g( 1 )"},                    // no trimming
    {u"", nullptr},                              // empty call: nothing
    {u"\r\n1", nullptr},  // an empty first line is an empty name
};

TEST(TraceCollector, FuncCalcedFromCallText) {
  for (const CallCase& c : kCalls) {
    CTraceCollector trace;
    trace.nMode = 2;
    CString call(c.call), value(u"v");
    trace.Func_Calced(call, value);
    if (c.expected == nullptr) {
      EXPECT_EQ(trace.arrNames.GetSize(), 0) << testing::PrintToString(Str(call));
      continue;
    }
    ASSERT_EQ(trace.arrNames.GetSize(), 1) << testing::PrintToString(Str(call));
    EXPECT_EQ(Str(trace.arrNames[0]), c.expected) << testing::PrintToString(Str(call));
    EXPECT_EQ(Str(trace.arrValues[0]), u"v");
  }
}

TEST(TraceCollector, CallTextAndSeparateArgumentsGiveTheSameRecord) {
  CTraceCollector byText;
  CTraceCollector byParts;
  byText.nMode = byParts.nMode = 2;
  CString call(u"left\r\n'abc'\r\n2"), value(u"'ab'"), name(u"left");
  CStringArray args = Args({u"'abc'", u"2"});
  byText.Func_Calced(call, value);
  byParts.Func_Calced(name, args, value);
  EXPECT_EQ(GetString(byText), GetString(byParts));
  EXPECT_EQ(GetString(byText), u"left('abc', 2)!AbCbE+-/*'ab'");
}

TEST(TraceCollector, FuncCalcedFromFrame) {
  CTraceCollector trace;
  trace.nMode = 2;
  CFuncPara frame;
  frame.strName = u"sum";
  frame.arrArgs = Args({u"3", u"2"});
  frame.strResult = u"5";
  trace.Func_Calced(frame);
  EXPECT_EQ(GetString(trace), u"sum(3, 2)!AbCbE+-/*5");
}

TEST(TraceCollector, EmptyNameAddsNothing) {
  CTraceCollector trace;
  trace.nMode = 2;
  CString empty, value(u"1");
  CStringArray args = Args({u"1"});
  trace.Func_Calced(empty, args, value);
  EXPECT_EQ(trace.arrNames.GetSize(), 0);
  EXPECT_EQ(trace.arrValues.GetSize(), 0);
  // A variable's name is not checked.
  trace.Var_Calced(empty, value);
  EXPECT_EQ(GetString(trace), u"!AbCbE+-/*1");
}

TEST(TraceCollector, OtherModesIgnoreTheRecordingCalls) {
  for (int mode : {0, 1, 3}) {
    CTraceCollector trace;
    trace.nMode = mode;
    CString name(u"f"), call(u"f\r\n1"), value(u"1");
    CStringArray args = Args({u"1"});
    CFuncPara frame;
    frame.strName = u"f";
    trace.Func_Calced(frame);
    trace.Func_Calced(call, value);
    trace.Func_Calced(name, args, value);
    trace.Var_Calced(name, value);
    EXPECT_EQ(trace.arrNames.GetSize(), 0) << "mode " << mode;
    EXPECT_EQ(trace.arrValues.GetSize(), 0) << "mode " << mode;
    EXPECT_EQ(trace.sbLines.GetSize(), 0) << "mode " << mode;
  }
}

TEST(TraceCollector, InitStringSkipsRecordsWithoutSideSeparator) {
  CTraceCollector trace;
  trace.nMode = 2;
  trace.InitString(u"junk!+-/*AbCbEx!AbCbE+-/*1!AbCbE+-/*2!+-/*AbCbE!+-/*AbCbEy!AbCbE+-/*");
  ASSERT_EQ(trace.arrNames.GetSize(), 2);
  EXPECT_EQ(Str(trace.arrNames[0]), u"x");
  EXPECT_EQ(Str(trace.arrValues[0]), u"1!AbCbE+-/*2");  // split at the first one only
  EXPECT_EQ(Str(trace.arrNames[1]), u"y");
  EXPECT_EQ(Str(trace.arrValues[1]), u"");
}

TEST(TraceCollector, InitStringEmptiesInEveryMode) {
  const char16_t* texts[] = {nullptr, u"", kTwoRecords};
  for (int mode : {0, 1, 2}) {
    for (const char16_t* text : texts) {
      CTraceCollector trace;
      trace.nMode = 2;
      CString name(u"n"), value(u"v");
      trace.Var_Calced(name, value);
      trace.sbLines.Append(u"old\r\n");
      trace.nMode = mode;
      trace.InitString(text);
      const bool takes = mode != 0 && text != nullptr && text[0] != 0;
      const std::string row = "mode " + std::to_string(mode) + ", text " +
                              testing::PrintToString(text == nullptr ? u"<null>" : std::u16string(text));
      EXPECT_EQ(trace.arrNames.GetSize(), takes && mode == 2 ? 2 : 0) << row;
      EXPECT_EQ(trace.arrValues.GetSize(), trace.arrNames.GetSize()) << row;
      EXPECT_EQ(Str(CString(trace.sbLines.GetStr())), takes && mode == 1 ? kTwoRecords : u"") << row;
    }
  }
}

TEST(TraceCollector, ModeOneGivesTheBuilderText) {
  CTraceCollector trace;
  trace.nMode = 1;
  trace.InitString(u"A1+2\r\n");
  trace.sbLines.Append(u"5+2\r\n");
  EXPECT_EQ(GetString(trace), u"A1+2\r\n5+2\r\n");
}

TEST(TraceCollector, ModeZeroLeavesTheOutputAlone) {
  CTraceCollector trace;
  EXPECT_EQ(trace.nMode, 0);
  trace.sbLines.Append(u"x");
  EXPECT_EQ(GetString(trace), u"<untouched>");
}

}  // namespace
