// func/FuncAmounts.cpp: amounts and dates in words: RMB, chineseNum,
// chineseDate, chineseBankDate and englishNum.
//
// All five give text (kind 1), quoted here as the text bodies do. They have
// no error of their own: RMB and englishNum answer an amount they cannot
// write with the empty text, the two date forms with the date text as given.
// Only a call without arguments is a bad call (0).
#include <span>

#include "CFuncItem.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "func/BuiltinTable.h"
#include "platform/WideRuntime.h"

namespace vkt::func {

namespace {

using DigitTable = const char16_t* const[10];

constexpr DigitTable kCapital = {u"零", u"壹", u"贰", u"叁", u"肆", u"伍", u"陆", u"柒", u"捌", u"玖"};
constexpr DigitTable kPlain = {u"〇", u"一", u"二", u"三", u"四", u"五", u"六", u"七", u"八", u"九"};
// The years of chineseDate write 0 as the Latin capital O.
constexpr DigitTable kDate = {u"O", u"一", u"二", u"三", u"四", u"五", u"六", u"七", u"八", u"九"};

int PutText(CFuncPara* para, const CString& text) {
  para->strResult = text;
  CUtilityCalc::Attach_Quotes(para->strResult, 1);
  para->nResultKind = 1;
  return 1;
}

// ---- Chinese ---------------------------------------------------------------

int Rmb(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  CString amount(para->arrArgs[0]), out;
  CUtilityCalc::RMB(out, amount, 1);  // out stays empty on failure
  return PutText(para, out);
}

int ChineseNum(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  const auto& table = argc > 1 && vkt::_wtoi(para->arrArgs[1]) != 0 ? kPlain : kCapital;
  const CString& text = para->arrArgs[0];
  CString out;
  for (int i = 0; i < text.GetLength(); ++i) {
    if (CStrKit::IsDigit(text[i])) {
      out += table[text[i] - u'0'];
    } else {
      out += text[i];
    }
  }
  return PutText(para, out);
}

// A month or day of 1 to 31. The bank form puts 零 before 1 to 10, 20 and 30.
CString DayWords(int value, bool bank) {
  const int tens = value / 10, units = value % 10;
  CString out;
  if (bank) {
    if (tens == 0 || units == 0) out += kCapital[0];
    if (tens > 0) {
      out += kCapital[tens];
      out += u"拾";
    }
    if (units > 0) out += kCapital[units];
    return out;
  }
  if (tens > 1) out += kPlain[tens];
  if (tens > 0) out += u"十";
  if (units > 0) out += kPlain[units];
  return out;
}

// Deletes the first run of the letter (either case) and gives its position
// and length; -1 when the format lacks the letter.
int CutRun(CString& format, char16_t upper, char16_t lower, int& length) {
  const char16_t set[] = {upper, lower, 0};
  const int at = format.FindOneOf(set);
  length = 0;
  if (at < 0) return -1;
  while (format[at + length] == upper || format[at + length] == lower) ++length;
  format.Delete(at, length);
  return at;
}

// Writes the month or day in place of its run. Chosen: a format without the
// letter leaves the field unread, so only what is written must be in range.
// False for a value out of range.
bool PutDayField(CString& format, char16_t upper, char16_t lower, const CString& field, int high,
                 bool bank) {
  int length = 0;
  const int at = CutRun(format, upper, lower, length);
  if (at < 0) return true;
  const int value = vkt::_wtoi(field);
  if (value < 1 || value > high) return false;
  format.Insert(at, DayWords(value, bank));
  return true;
}

int DateWords(CFuncPara* para, int argc, bool bank) {
  if (argc < 1) return 0;
  CString format = argc > 1 ? para->arrArgs[1] : CString();
  if (format.IsEmpty()) format = u"YYYY年M月D日";
  CString date(para->arrArgs[0]);
  CStringArray fields;
  if (format.FindOneOf(u"YyMmDd") < 0 || CStrKit::ParseDate(date, fields) == 0 ||
      fields.GetSize() < 3) {
    return PutText(para, para->arrArgs[0]);
  }
  int length = 0;
  const int at = CutRun(format, u'Y', u'y', length);
  if (at >= 0) {
    CString year = fields[0];
    while (year.GetLength() < 4) year.Insert(0, year.GetLength() == 3 ? u'2' : u'0');
    CString words;
    for (int i = 4 - (length < 4 ? length : 4); i < 4; ++i) {
      words += (bank ? kCapital : kDate)[year[i] - u'0'];
    }
    format.Insert(at, words);
  }
  if (!PutDayField(format, u'M', u'm', fields[1], 12, bank) ||
      !PutDayField(format, u'D', u'd', fields[2], 31, bank)) {
    return PutText(para, para->arrArgs[0]);
  }
  return PutText(para, format);
}

int ChineseDate(CFuncPara* para, int argc) { return DateWords(para, argc, false); }

int ChineseBankDate(CFuncPara* para, int argc) { return DateWords(para, argc, true); }

// ---- English -----------------------------------------------------------------

constexpr const char16_t* kSmall[] = {
    u"zero",    u"one",     u"two",       u"three",    u"four",     u"five",    u"six",
    u"seven",   u"eight",   u"nine",      u"ten",      u"eleven",   u"twelve",  u"thirteen",
    u"fourteen", u"fifteen", u"sixteen",  u"seventeen", u"eighteen", u"nineteen"};
constexpr const char16_t* kTens[] = {u"",      u"",      u"twenty",  u"thirty", u"forty",
                                     u"fifty", u"sixty", u"seventy", u"eighty", u"ninety"};

void AddWord(CString& words, const char16_t* word) {
  if (!words.IsEmpty()) words += u' ';
  words += word;
}

// Two digits of value 0 to 99 (the caller has stripped a leading 0).
void AddTens(CString& words, int value) {
  if (value < 20) {
    AddWord(words, kSmall[value]);
    return;
  }
  AddWord(words, kTens[value / 10]);
  if (value % 10 != 0) AddWord(words, kSmall[value % 10]);
}

// A group of up to three digits. With `andRule`, "and" goes after the
// hundred, or before the hundred of a round hundreds behind other words.
void AddGroup(CString& words, CString group, bool andRule) {
  group.TrimLeft(u'0');
  if (group.IsEmpty()) return;
  const int digits = group.GetLength();
  bool saidAnd = false;
  if (digits == 3) {
    if (andRule && !words.IsEmpty() && group[1] == u'0' && group[2] == u'0') {
      AddWord(words, u"and");
      saidAnd = true;
    }
    AddWord(words, kSmall[group[0] - u'0']);
    AddWord(words, u"hundred");
    group.Delete(0);
    group.TrimLeft(u'0');
    if (group.IsEmpty()) return;
  }
  if (andRule && !saidAnd && !(digits < 3 && words.IsEmpty())) AddWord(words, u"and");
  AddTens(words, vkt::_wtoi(group));
}

int EnglishNum(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  const bool keepZeros = argc < 2 || CGmp::Str2Int(para->arrArgs[1]) != 0;
  CString number(para->arrArgs[0]), decimals, words;
  number.Remove(u',');
  number.Remove(u' ');
  const bool negative = number.GetLength() > 0 && number[0] == u'-';
  if (negative) number.Delete(0);
  number.TrimLeft(u'0');
  const int point = number.Find(u'.');
  if (point >= 0) {
    decimals = number.Mid(point + 1);
    number = number.Left(point);
    if (!keepZeros) decimals.TrimRight(u'0');
  }
  const int length = number.GetLength();
  if (length > 12) return PutText(para, CString());
  for (int i = 0; i < length; ++i) {
    if (!CStrKit::IsDigit(number[i])) return PutText(para, CString());
  }
  if (length == 0 && decimals.IsEmpty()) return PutText(para, u"zero");
  constexpr const char16_t* kScale[] = {u"billion", u"million", u"thousand"};
  for (int g = 0; g < 3; ++g) {  // the places above the 9th, 6th and 3rd
    const int end = length - 9 + 3 * g;
    if (end <= 0) continue;
    const int start = g == 0 ? 0 : (end - 3 > 0 ? end - 3 : 0);
    const int before = words.GetLength();
    AddGroup(words, number.Mid(start, end - start), false);
    if (words.GetLength() != before) AddWord(words, kScale[g]);
  }
  AddGroup(words, number.Right(3), true);
  if (!decimals.IsEmpty()) {
    if (words.IsEmpty()) AddWord(words, u"zero");
    AddWord(words, u"point");
    for (int i = 0; i < decimals.GetLength(); ++i) {
      if (!CStrKit::IsDigit(decimals[i])) return PutText(para, CString());
    }
    const int value = decimals.GetLength() == 2 ? vkt::_wtoi(decimals) : 0;
    if (value >= 11) {
      AddTens(words, value);
    } else {
      for (int i = 0; i < decimals.GetLength(); ++i) AddWord(words, kSmall[decimals[i] - u'0']);
    }
  }
  if (negative) words.Insert(0, u"minus ");
  return PutText(para, words);
}

// In the order of the built-in table.
constexpr BuiltinBody kAmountBodies[] = {
    {u"chineseBankDate", &ChineseBankDate}, {u"chineseDate", &ChineseDate},
    {u"chineseNum", &ChineseNum},           {u"englishNum", &EnglishNum},
    {u"RMB", &Rmb},
};

}  // namespace

std::span<const BuiltinBody> AmountBodies() { return kAmountBodies; }

}  // namespace vkt::func
