// tests/func/FuncTestSupport.h: what the function tests share: a language
// interface whose texts show their number, installed for one scope, and a
// scripted body that records what it was given.
#pragma once

#include <gmock/gmock.h>

#include <map>
#include <string>

#include "VKTCalc.h"
#include "func/ProcessState.h"

namespace vkt::test {

inline std::u16string S(const CString& s) { return std::u16string(s.View()); }

// GetText(n) answers "T<n>", except for the three message formats, which
// carry a "%s" as the host's texts do. TranslateText marks the text with a
// leading "~", so a test sees which texts were translated.
class MockLanguage : public ILggInterface {
 public:
  MockLanguage() {
    ON_CALL(*this, GetText).WillByDefault([this](int id) { return Text(id); });
    ON_CALL(*this, TranslateText).WillByDefault([](CString& text) { text.Insert(0, u'~'); });
  }
  MOCK_METHOD(const char16_t*, GetText, (int nID), (override));
  MOCK_METHOD(void, TranslateText, (CString & text), (override));

 private:
  const char16_t* Text(int id) {
    std::u16string& text = m_texts[id];
    if (id == 1000)
      text = u"Unknown function %s";
    else if (id == 1003)
      text = u"Bad call: %s";
    else if (id == 1004)
      text = u"Bad value: %s";
    else
      text = u"T" + std::u16string(CString(std::to_string(id).c_str()).View());
    return text.c_str();
  }

  std::map<int, std::u16string> m_texts;  // stable pointers for the library to copy
};

// Installs a language for the life of the scope, and none afterwards.
class ScopedLanguage {
 public:
  explicit ScopedLanguage(ILggInterface* lgg) { SetLggInterface(lgg); }
  ~ScopedLanguage() { SetLggInterface(nullptr); }
  ScopedLanguage(const ScopedLanguage&) = delete;
  ScopedLanguage& operator=(const ScopedLanguage&) = delete;
};

// What the scripted body leaves, and what it saw.
struct BodyScript {
  CString result;     // written to strResult
  int answer = 1;     // returned
  int calls = 0;
  int argc = -1;
  CStringArray args;  // arrArgs as the body saw them
  BYTE kind = 0;      // nResultKind as the body saw it

  static BodyScript& Current() {
    static BodyScript script;
    return script;
  }
  static void Reset(const char16_t* result, int answer) {
    Current() = BodyScript();
    Current().result = result;
    Current().answer = answer;
  }
  static int Body(CFuncPara* para, int argc) {
    BodyScript& script = Current();
    ++script.calls;
    script.argc = argc;
    script.args.Copy(para->arrArgs);
    script.kind = para->nResultKind;
    para->strResult = script.result;
    return script.answer;
  }
};

}  // namespace vkt::test
