// tools/ToolLanguage.h: the language interface of the vktcalc tool. The
// library keeps no message text; every error number it reports and every
// text id of its built-in table (category names, one-line descriptions,
// parameter help) is answered here, in English written for this tool.
//
// Conventions the tool relies on:
// - an error text that takes the failing expression has the form
//   "message: %s", so that CErrorCollector::GetErrorText can put the
//   expression on a line of its own with the caret under the position;
// - 1072 has no "%s": the collector shows it unformatted;
// - a parameter help is the argument list in brackets, optional arguments
//   in square brackets, so that the name in front of it makes the usage
//   ("round" + "(number, decimals)").
#pragma once

#include "VKTCalc.h"

#include <string>

namespace vkt::tool {

class ToolLanguage final : public ILggInterface {
 public:
  ToolLanguage() = default;
  ToolLanguage(const ToolLanguage&) = delete;
  ToolLanguage& operator=(const ToolLanguage&) = delete;

  // The text of a number. A number the tool has no text for gets
  // "(text N)", valid until the next call for such a number.
  const char16_t* GetText(int nID) override;
  // The tool's own texts are English already: nothing to translate.
  void TranslateText(CString& text) override;

  // The text of a number, or null when the tool has none; for tests of the
  // table itself.
  static const char16_t* Find(int nID);

 private:
  std::u16string m_unknown;  // the last "(text N)", for numbers without a text
};

}  // namespace vkt::tool
