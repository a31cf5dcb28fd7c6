// numtext/Amounts.cpp: an amount in the capital characters of Chinese
// finance. The integer part has at most 13 digits (up to the 万亿 place) and
// is written from the left in three groups, 亿, 万 and 元, with one pending
// zero mark that a run of zeros or the end of a group sets only once.
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"

namespace {

constexpr int kMaxIntDigits = 13;
constexpr const char16_t* kCapital[] = {u"零", u"壹", u"贰", u"叁", u"肆",
                                        u"伍", u"陆", u"柒", u"捌", u"玖"};
// The unit of a place, by (place - 1) % 4, the place counted from 1 at the right.
constexpr const char16_t* kUnit[] = {u"", u"拾", u"佰", u"仟"};

// Digits, then at most one point with digits behind it, after an optional
// minus. Chosen: this is judged before rounding, since rounding would read
// "1.2.345" or "--5.678" as some other number and hide the fault.
bool IsAmountText(const CString& text) {
  int i = text.GetLength() > 0 && text[0] == u'-' ? 1 : 0;
  bool point = false;
  for (; i < text.GetLength(); ++i) {
    if (text[i] == u'.' && !point) {
      point = true;
    } else if (!CStrKit::IsDigit(text[i])) {
      return false;
    }
  }
  return true;
}

struct Writer {
  CString& out;
  bool zeroPending = false;

  // One integer digit at `place` (13 .. 1); true when it is not 0.
  bool Digit(char16_t c, int place) {
    if (c == u'0') {
      zeroPending = true;
      return false;
    }
    if (zeroPending) out += u"零";
    zeroPending = false;
    out += kCapital[c - u'0'];
    out += place == kMaxIntDigits ? u"万" : kUnit[(place - 1) % 4];
    return true;
  }

  // The digits of the places from `high` down to `low` that the text has.
  bool Group(const CString& digits, int high, int low) {
    bool any = false;
    const int count = digits.GetLength();
    for (int place = high < count ? high : count; place >= low; --place) {
      any = Digit(digits[count - place], place) || any;
    }
    return any;
  }

  void DropTrailingZero() {
    if (out.GetLength() > 0 && out[out.GetLength() - 1] == u'零') out.Delete(out.GetLength() - 1);
  }
};

}  // namespace

int CUtilityCalc::RMB(CString& out, CString& amount, int bWhole) {
  out.Empty();
  amount.Remove(u',');
  amount.Remove(u' ');
  amount.TrimLeft(u'0');
  if (!IsAmountText(amount)) return 0;
  int point = amount.Find(u'.');
  // A megabyte of digits is turned away before it reaches the rounding.
  const CString whole = point < 0 ? amount : amount.Left(point);
  if (CString(whole).TrimLeft(u'-').TrimLeft(u'0').GetLength() > kMaxIntDigits) return 0;
  if (point >= 0 && amount.GetLength() - point - 1 > 2) {
    CGmp::Round(amount, 2);
    point = amount.Find(u'.');
  }
  CString decimals;
  if (point >= 0) {
    decimals = amount.Mid(point + 1);
    decimals.TrimRight(u'0');
    amount = amount.Left(point);
  }
  if (decimals.GetLength() > 2) return 0;  // rounding left more than two
  const bool negative = amount.GetLength() > 0 && amount[0] == u'-';
  if (negative) amount.Delete(0);
  // Stripped again in every case: rounding writes 0.001 as 0.00, and its
  // lone 0 is no digit to be written.
  amount.TrimLeft(u'0');
  if (amount.GetLength() > kMaxIntDigits) return 0;
  if (amount.IsEmpty() && decimals.IsEmpty()) {
    out = bWhole != 0 ? u"零元整" : u"零元";
    return 1;
  }
  for (int i = 0; i < amount.GetLength(); ++i) {
    if (!CStrKit::IsDigit(amount[i])) return 0;
  }
  for (int i = 0; i < decimals.GetLength(); ++i) {
    if (!CStrKit::IsDigit(decimals[i])) return 0;
  }

  Writer w{out};
  if (w.Group(amount, kMaxIntDigits, 9)) out += u"亿";
  if (w.Group(amount, 8, 5)) out += u"万";
  w.Group(amount, 4, 1);
  if (!out.IsEmpty()) out += u"元";
  bool fen = false;
  if (!decimals.IsEmpty()) {
    if (w.zeroPending) out += u"零";
    if (decimals.GetLength() == 2) {
      if (decimals[0] != u'0') {
        w.DropTrailingZero();
        out += kCapital[decimals[0] - u'0'];
        out += u"角";
      } else if (!out.IsEmpty()) {
        out += u"零";
      }
      out += kCapital[decimals[1] - u'0'];
      out += u"分";
      fen = true;
    } else {
      w.DropTrailingZero();
      out += kCapital[decimals[0] - u'0'];
      out += u"角";
    }
  }
  while (out.Replace(u"零零", u"零") > 0) {
  }
  if (negative) out.Insert(0, u"负");
  if (bWhole != 0 && !fen) out += u"整";
  return 1;
}
