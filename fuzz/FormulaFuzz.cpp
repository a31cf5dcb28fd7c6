// fuzz/FormulaFuzz.cpp: any bytes are a formula. Nothing may crash, leak or
// hang; an error must point inside the parsed text or nowhere; whatever parses
// must print and parse back to the same text; and the printed tree must
// calculate to its end with a host that answers every variable with a number
// and every function with a text.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "VKTCalc.h"

namespace {

// Prints what went wrong, as UTF-8, before the fuzzer stops on it.
[[noreturn]] void Fail(const char* what, const std::u16string& a, const std::u16string& b) {
  std::fprintf(stderr, "%s\n  first:  %s\n  second: %s\n", what,
               CString(a.data(), static_cast<int>(a.size())).ToUtf8().c_str(),
               CString(b.data(), static_cast<int>(b.size())).ToUtf8().c_str());
  __builtin_trap();
}

// The tree's text, or false when the text does not parse.
// A cell formula goes through ParseExpression_Formula; the printed text of a
// tree is an expression, read back by ParseExpression.
bool ParseAndPrint(const std::u16string& formula, bool isFormula, std::u16string& printed,
                   int& error, int& position) {
  CErrorCollector errors;
  CString text(formula.data(), static_cast<int>(formula.size()));
  std::unique_ptr<ICalcTreeNode> root(isFormula ? CUtilityCalc::ParseExpression_Formula(text, &errors)
                                                : CUtilityCalc::ParseExpression(text, &errors));
  error = errors.nError;
  position = errors.nCodePos;
  if (!root) return false;
  CString out;
  root->GetExpression(out);
  printed.assign(out.View());
  return true;
}

// Calculates the text to its end: every variable is 7, every function the
// text "f". The answers may be expressions only in the sense the library
// reads them, so they are plain values here and the loop ends.
void Calculate(const std::u16string& formula, ICalc& calc) {
  CErrorCollector errors;
  CString text(formula.data(), static_cast<int>(formula.size()));
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression(text, &errors));
  if (!root) return;
  CalculatePara para;
  para.pError = &errors;
  para.pRoot = root.get();
  for (int round = 0; round < 10000; ++round) {
    int code = calc.Calculate(para);
    if (code != 2 && code != 3) return;
    CString value(code == 2 ? u"7" : u"'f'");
    if (!calc.SetNodeValue(para.pRoot, para.pCurrent, value, &errors, nullptr)) return;
  }
  Fail("the calculation does not end", formula, std::u16string());
}

class QuietLanguage : public ILggInterface {
 public:
  const char16_t* GetText(int) override { return u"error %s"; }
  void TranslateText(CString&) override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;  // longer inputs slow the search and find nothing new
  static QuietLanguage language;
  SetLggInterface(&language);
  static ICalc* calc = NewCalc(nullptr, nullptr);

  std::u16string formula(size / 2, u'\0');
  std::memcpy(formula.data(), data, formula.size() * sizeof(char16_t));

  std::u16string printed;
  int error = 0;
  int position = 0;
  if (!ParseAndPrint(formula, true, printed, error, position)) {
    // Positions count the text as the parser saw it: after the blanks it
    // puts around "&&" and "||" and the backslashes it adds before closing
    // quotes, which together at most double the text, plus one for the end.
    if (position < -1 || position > 2 * static_cast<int>(formula.size()) + 1)
      Fail("error position outside the formula", formula, std::u16string());
    return 0;
  }
  std::u16string again;
  if (!ParseAndPrint(printed, false, again, error, position))
    Fail("the printed text does not parse", formula, printed);
  if (again != printed) Fail("the printed text prints differently", printed, again);
  Calculate(printed, *calc);
  return 0;
}
