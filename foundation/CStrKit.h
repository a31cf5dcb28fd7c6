// foundation/CStrKit.h: static operations on text, string arrays and
// CUIntArrays.
//
// Positions and lengths count 16-bit units from 0, -1 for none, unless the
// argument is a byte pointer. A null text pointer reads as empty text. Case is
// ignored by folding each unit to lower case with the process locale. None of
// the operations fails other than by its result.
#pragma once

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/DateTime.h"
#include "platform/Types.h"

class VKTCALC_API CStrKit {
 public:
  // Position of the first (last) occurrence of `what` in `text`, ignoring
  // case; -1 when none, and for a null or empty `what`.
  static int FindNoCase(const char16_t* text, const char16_t* what);
  static int ReverseFindNoCase(const char16_t* text, const char16_t* what);

  // Splits `text` at the first `sep`: `left` takes what stands in front of
  // it, `right` what stands behind it, and the answer is 1. Without `sep`
  // (or with a null or empty one) both are emptied and the answer is 0.
  // Chosen: a nonzero `bTrim` trims both parts of white space.
  static int GetLeftRight(const char16_t* text, const char16_t* sep, CString& left,
                          CString& right, int bTrim);

  // Non-overlapping occurrences of the `whatBytes` bytes of `what` in the
  // `dataBytes` bytes of `data`; 0 for null or non-positive sizes.
  static int memmems(BYTE* data, BYTE* what, int dataBytes, int whatBytes);

  // Cuts `text` at each `sep` into `out`, which is emptied first. A null or
  // empty text, or the separator 0, gives no item. With nonzero `bTrim` an
  // item in front of a separator loses its leading and trailing blanks
  // (U+0020), and the last item its white space. A text that ends in `sep`
  // gives a last empty item: "a,b," is a, b and the empty text.
  static void CString2Array(CStringArray& out, const char16_t* text, WORD sep, int bTrim);

  // Reads the whole text file at `path` into `out`: UTF-8 with or without a
  // byte-order mark, or UTF-16 with its mark (either byte order). Nonzero on
  // success; 0, with `out` emptied, when the file cannot be read.
  static int File2CString(CString& out, const char16_t* path);

  // Reads an XML date-time from the first non-blank of `text` on:
  // YYYY-MM-DD, optionally followed by Thh:mm, Thh:mm:ss or Thh:mm:ss.fff
  // (any number of fraction digits, which are ignored), optionally followed
  // by a zone, Z or +hh:mm, -hh:mm, +hhmm, +hh; trailing white space is
  // allowed. `out` (may be null) is set to null first and, on success, to the
  // valid date. Chosen: a time with a zone is moved into local time with
  // CGlobalInfo's span, so that it compares with every other date the
  // library reads; a time without a zone is local already. Nonzero on
  // success, 0 for anything else.
  static int XMLString2Time(CString& text, COleDateTime* out);

  // Index of the first pair with starts[i] <= pos <= ends[i]; -1 when none.
  static int ArrayFindBetween(CUIntArray& starts, CUIntArray& ends, UINT pos);

  // Fills `starts` and `ends` (both emptied first) with the first and last
  // position of each quoted stretch in `text`, for the quote units in
  // `quotes` (null or empty: ' and "). A stretch closes with the unit that
  // opened it; other quotes inside it are text; an unclosed stretch is not
  // reported. A backslash makes the scan skip the unit behind it, inside
  // and outside quotes. Chosen: a nonzero `bNoEscape` makes the backslash
  // ordinary text. Gives the number of stretches.
  static int FindQuotes(const char16_t* text, CUIntArray& starts, CUIntArray& ends,
                        const char16_t* quotes, int bNoEscape);

  // The items joined by `sep` (a null text sep joins with nothing), with
  // nothing behind the last.
  static CString Array2CString(CStringArray& items, WORD sep);
  static CString Array2CString(CStringArray& items, const char16_t* sep);

  static int IsDigit(WORD c);  // 1 for '0'..'9', else 0

  // Position of `what` in `text`, looking at `textLen` and `whatLen` units
  // (a negative length reads up to the NUL); -1 when none or when `what` is
  // empty. Chosen: a nonzero `bCase` compares exactly, 0 ignores case.
  static int strstr(const char16_t* text, const char16_t* what, int textLen, int whatLen,
                    int bCase);
  // The number of non-overlapping occurrences, with the same arguments.
  static int strstrs(const char16_t* text, const char16_t* what, int textLen, int whatLen,
                     int bCase);

  // Index of the first item at or behind `start` (a negative start counts as
  // 0) that equals `text`, exactly or ignoring case; -1 when none.
  static int ArrayCompare(CStringArray& items, const char16_t* text, int start);
  static int ArrayCompareNoCase(CStringArray& items, const char16_t* text, int start);

  // Chosen: splits a date text into its fields, year first. Separators are
  // - / \ . : blank, tab, T and the CJK date units 年 月 日 (and 时 分 秒);
  // runs of them count as one. Every field must be decimal digits, and there
  // must be at least three; a single field of 8 digits counts as YYYYMMDD.
  // `parts` is emptied first; nonzero on success, 0 with `parts` empty.
  static int ParseDate(CString& text, CStringArray& parts);

  // Chosen: true (1) for "1", "true", "yes", "y", "on", "t" in any case and
  // for any other number that is not zero ("2", "-1", "0.5"); every other
  // text, null and empty included, is false (0). White space around the
  // text is ignored.
  static int Str2Bool(const char16_t* text);

  // Chosen: compares element by element in order: 0 when equal, else -1 or 1
  // by the first different element, a shorter array before a longer one that
  // begins with it.
  static int CUIntArrayCompare(CUIntArray& a, CUIntArray& b);
  // Adds each element of `from` that `to` lacks, once; gives the number added.
  static int CUIntArrayAppendSingle(CUIntArray& to, CUIntArray& from);
  // Index of the first element equal to `value` (as unsigned); -1 when none.
  static int CUIntArrayFind(CUIntArray& items, int value);
};
