// tests/support/ScriptHost.h: scripted stand-ins for the host's own code: a
// script host (IInvokeJS, a gmock mock so that a test can expect calls or
// replace an answer) that also serves as the host's script window, an error
// finder, and a body for registered functions. They answer as scripted and
// record what they were given as "name(arg|arg)".
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace vkt::test {

inline std::u16string Seen(const CString& name, const CStringArray& args) {
  std::u16string text = U(name) + u"(";
  for (int i = 0; i < args.GetSize(); ++i) text += (i > 0 ? u"|" : u"") + U(args[i]);
  return text + u")";
}

// The host's SOAP-like error finder: "<fault>message</fault>" becomes the
// text "Script fault: message"; any other text passes.
inline int FindFault(CString& text) {
  if (text.Find(u"<fault>") != 0) return 0;
  text = CString(u"Script fault: ") + text.Mid(7, text.GetLength() - 15);
  return 1;
}

// By default a call records Seen() and "#" with the script counter as it
// stood inside the call, writes `reply` and answers `answer`. WindowHook,
// installed with CUtilityCalc::SetScriptWindowHook, makes the newest
// ScriptHost the host's script window too: it records the frame (the name
// still first) and its message, and answers the same way.
class ScriptHost : public IInvokeJS {
 public:
  static int WindowHook(void* window, CFuncPara* para) {
    s_window->calls.push_back(Seen(para->strName, para->arrArgs) + (window ? u" " : u" null ") +
                              U(CString(std::to_string(para->nJsMessage).c_str())));
    para->strResult = s_window->reply;
    return s_window->answer;
  }

  ~ScriptHost() override {
    if (s_window == this) s_window = nullptr;
  }
  ScriptHost() {
    s_window = this;
    ON_CALL(*this, Invoke).WillByDefault([this](CString& name, CStringArray& args, CString& result) {
      const LONG depth = CUtilityCalc::m_InvokeJsCounter;
      calls.push_back(Seen(name, args) + u"#" + static_cast<char16_t>(u'0' + depth));
      result = reply;
      return answer;
    });
  }
  MOCK_METHOD(int, Invoke, (CString & strFunc, CStringArray& arrArgs, CString& strResult), (override));

  const char16_t* reply = u"";
  int answer = 1;
  std::vector<std::u16string> calls;

 private:
  static inline ScriptHost* s_window = nullptr;
};

// A body that records the frame (Seen() with its name, the kind it was
// given) and leaves `result` and `answer` (99 when argc is not the number
// of arguments in the frame). Bodies are plain functions, so there is one
// script for the process: Reset() it before each use.
struct BodyScript {
  const char16_t* result = u"";
  int answer = 1;
  int calls = 0;
  std::u16string seen;
  BYTE kind = 0;

  static BodyScript& Current() {
    static BodyScript script;
    return script;
  }
  static void Reset(const char16_t* result = u"", int answer = 1) {
    Current() = BodyScript();
    Current().result = result;
    Current().answer = answer;
  }
  static int Body(CFuncPara* para, int argc) {
    BodyScript& script = Current();
    ++script.calls;
    script.seen = Seen(para->strName, para->arrArgs);
    script.kind = para->nResultKind;
    para->strResult = script.result;
    return argc == para->arrArgs.GetSize() ? script.answer : 99;
  }
};

}  // namespace vkt::test
