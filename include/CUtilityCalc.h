// CUtilityCalc.h: the library's toolbox, one class of public static
// operations. Each theme's statics are defined in the source of its theme:
// settings in calc/, quoting/names/lists in toolbox/, number text in numtext/,
// and so on.
#pragma once

#include "CGmp.h"
#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/Maps.h"
#include "platform/Types.h"

class CErrorCollector;
class CFuncPara;
class ICalcTreeNode;
class COleDateTime;
class CPoint;
class CRect;
class CSize;
class CBufferEx;
struct POINT;
struct RECT;
class CRowCol;
class CRowCols;
class CCellname;
enum Enum_PNID : int;
struct PN_INFORMATION;
class IStreamInput;
class IStreamOutput;
class CBuffer;
class CMem;

// How a column's texts compare: one byte of bits, spelt in a sort pattern.
enum Enum_ColSortPattern : BYTE {
  ColSort_Int = 1,          // digit runs compare as whole numbers
  ColSort_Double = 2,       // digit runs compare as decimals, with one point
  ColSort_IgnoreComma = 4,  // commas inside a digit run are passed over
  ColSort_ByText = 8,       // for the host; the comparison does not read it
  ColSort_MatchCase = 16,   // text parts compare with case
};

class VKTCALC_API CUtilityCalc {
 public:
  // ---- Parsing entry (tree/) ----------------------------------------------
  // A new tree for the text, owned by the caller (delete the root), or null
  // with the failure's number, position and text in errors (which may be
  // null). Empty or blank text gives a root of kind 1 without children. A
  // failed parse is tried once more with a backslash added before closing
  // quotes that it hid, so that 'C:\dir\' reads as a string.
  static ICalcTreeNode* ParseExpression(const char16_t* text, CErrorCollector* errors);
  // The same for a cell's formula: leading blanks, one "=" and the blanks
  // behind it are skipped; positions count from behind them. Null, empty
  // and "=" alone give null without an error.
  static ICalcTreeNode* ParseExpression_Formula(const char16_t* text, CErrorCollector* errors);

  // ---- Settings (calc/Settings.cpp) ---------------------------------------
  static int m_bCalcEnableChinese;  // names may hold Chinese characters; 1 at load
  static int m_bCalcEnableComplex;  // the evaluator's complex operand rules; 1 at load
  static int m_DeclenCompareCalc;   // -1 at load; nothing in the library writes it
  static LONG m_InvokeJsCounter;    // threads inside a script call; changed atomically

  static void Calc_EnableChinese(int bEnable);
  static int Calc_IsChineseEnabled();
  static void Calc_EnableComplex(int bEnable);
  static int Calc_IsComplexEnabled();
  static int Calc_GetCompareCalcDeclen();
  static int Calc_SetCompareCalcDeclen(int nDeclen);
  static int GetCurrentLanguage();
  static void SetCurrentLanguage(int nLanguage);
  static int IsInvokingJS();
  static int FindGetSoapLikeError(CString& text);

  // ---- Script (func/FuncControl.cpp) --------------------------------------
  // Runs the script function `name` (null or empty: para's strName) on the
  // script host of the frame with para's arguments, into para's strResult.
  // m_InvokeJsCounter counts the call while it runs. The host's answer when
  // it succeeded and the SOAP-like error finder, if installed, finds no
  // error in the result; 0 otherwise: without a host or a name (strResult
  // untouched), with the text "JavaScript Function <name> Invoking Failure"
  // when the host failed, and with the finder's text when it found one.
  static int WrapInvokeJS(CFuncPara* para, const char16_t* name);

  // The host's way to its script window, called by js in place of a
  // window message when the frame's hJsWnd is not null. It gets the window
  // and the frame (nJsMessage included; the name is the first argument),
  // leaves the result or an error message in strResult and answers non-zero
  // for success.
  typedef int (*PFN_JSWNDHOOK)(void* hJsWnd, CFuncPara* para);
  // Installs the hook (null removes it) and gives the one it replaces.
  // Without a hook no handle counts as a window, and js goes to the script
  // host instead.
  static PFN_JSWNDHOOK SetScriptWindowHook(PFN_JSWNDHOOK hook);

  // ---- Quoting, names and lists (toolbox/) --------------------------------
  // The quotes ' and " rank equal; the backslash is an escape only in front
  // of a backslash or a quote. Text that does not fit a form stays unchanged.

  // The quote that opens and closes text of at least two units, else 0.
  static char16_t DetectStringQuotes(const char16_t* text);
  // Escapes each \, ' and " with a backslash; 1 when anything was escaped.
  static int Format_Quates(CString& text);
  // Undoes Format_Quates, all or nothing: 0 and no change when the text has
  // no backslash or one that escapes anything but \, ' or ".
  static int UnFormat_Quates(CString& text);
  // Encloses the text in quotes, single ones unless the text holds a single
  // quote past its first unit. bFormat escapes first; without it an existing
  // pair of quotes is taken off first.
  static void Attach_Quotes(CString& text, int bFormat);
  // Takes off every enclosing pair of matching quotes; the quote of the last
  // pair taken, or 0. bUnformat then undoes escapes when a pair was taken.
  static char16_t Dettach_Quotes(CString& text, int bUnformat);
  // The first and the last position of each closed quoted stretch; their
  // number. A backslash hides the unit behind it.
  static int FindQuotes(CString& text, CUIntArray& starts, CUIntArray& ends);

  // Cuts text at each exact occurrence of sep into out (emptied first). A
  // text ending in sep gives an empty last item. bTrim trims blanks (U+0020)
  // around each item and all white space around the last.
  static void CString2Array(CStringArray& out, const char16_t* text, const char16_t* sep, int bTrim);
  // As CString2Array, then each backslash-r-backslash-n in an item becomes
  // a real CR LF.
  static void CString2ArrayEx(CStringArray& out, const char16_t* text, WORD sep, int bTrim);
  static void CString2ArrayEx(CStringArray& out, const char16_t* text, const char16_t* sep, int bTrim);
  // Trims text in place and reads each trimmed item as a whole number into
  // out; an empty text leaves out as it was.
  static void CString2UIntArray(CUIntArray& out, CString& text, WORD sep);

  // Names. bWide admits code units from 129 up (Chinese names); 128 never.
  static int isAlpha(WORD c);  // 1 for A to Z and a to z
  // A variable name, trimmed: letters, digits not first, _ @ $ (not alone
  // of one kind), ':' in names longer than one unit, '.' inside with bDot,
  // a leading '#' with bHash. nPos gets the refused position, or after a
  // valid name the position of its last digit, or 0.
  static int IsValidVarName(const char16_t* name, int bWide, int bDot, int bHash, int& nPos);
  // A function name, trimmed in place: letters, _, digits not first; not
  // underscores alone.
  static int IsValidFuncName(CString& name, int bWide);

  // Small services of the function table.
  // wcscoll with bCase, _wcsicoll without; a null text comes first.
  static int StrCmpW(const char16_t* a, const char16_t* b, int bCase);
  static void Sort_CUIntArray(CUIntArray& items);  // ascending, unsigned
  // Adds the value (each value of from) that `to` lacks; 1 when any was added.
  static int CUIntArrayAppendSingle(CUIntArray& to, int value);
  static int CUIntArrayAppendSingle(CUIntArray& to, CUIntArray& from);

  // ---- Comparison and sorting (toolbox/Sorting.cpp, ArraySearch.cpp) ------
  // Text parts collate by the process locale (wcscoll with case, _wcsicoll
  // without). The two comparisons use up their arguments: what they have
  // compared is deleted from a and b, so pass copies to keep the texts.

  // Texts whose digit runs, with ColSort_Int or ColSort_Double, compare as
  // numbers of any length (a minus is text); a nonzero sep compares lists
  // of fields as CompareStringByAD ascending. Negative, 0 or positive.
  static int CompareStringW(CString& a, CString& b, Enum_ColSortPattern pattern, WORD sep);
  // Field by field at sep; order 'd' or 'D' reverses the field answer, but a
  // list with more fields comes after in both orders. An empty list comes
  // first ascending, last descending.
  static int CompareStringByAD(CString& a, CString& b, Enum_ColSortPattern pattern, WORD sep,
                               BYTE order);
  // A pattern from its comma list of keywords (any case); null gives 0.
  static BYTE ParseColSortPattern(const char16_t* text);
  // The keywords of a pattern, comma-joined, "byText" for 8, never "bydata".
  static void BuildColSortPattern(CString& out, BYTE pattern);

  // Sorts that need not be stable. The first two run one at a time in the
  // process, under a lock of their own. nSkip cuts that many units off the
  // front of each text before collating; the leading-number sort compares
  // the digits at the front as a whole number, then the rest.
  static void Sort_CStringArray(CStringArray& items, int bCase, int nSkip);
  static void Sort_CStringArray_LeftNumber(CStringArray& items, int bCase);
  static void Sort_CStringArrayByLen(CStringArray& items);  // shorter first
  static void Sort_CDoubleArray(CStringArray& items);       // each text read as a number
  static void Sort_CDoubleArray(CArray<double, double>& items);
  static void Sort_CDoubleArray(CArray<CGmp, CGmp>& items);

  // The index of value in items sorted ascending (unsigned), or -1; a found
  // element is removed with bRemove.
  static int BSearch_CUIntArray(CUIntArray& items, UINT value, int bRemove);
  // Appends the numbers of a list such as 1,3,5-8 to out (not emptied):
  // ranges first, in the reverse of the text's order, then single numbers
  // that out lacks. The size of out afterwards.
  static int Str2MultiNumberArray(const char16_t* text, CUIntArray& out);

  // Finding and appending in the framework's arrays. A search is linear and
  // gives the first index, or -1; an append keeps the array free of repeats.
  static int CUIntArraySame(CUIntArray& a, CUIntArray& b);  // 1 when equal element by element
  static void UIntArray2CStringArray(CStringArray& out, CUIntArray& from);  // "%u" each
  // Each item through _wtoi; empty items are skipped unless bKeepEmpty.
  static void CStringArray2UIntArray(CUIntArray& out, CStringArray& from, int bKeepEmpty);
  static void UIntArrayBuild(CUIntArray& out, int count, int first);  // first, first + 1, ...
  static int CHandleArrayFind(CArray<void*, void*>& items, void* value);
  // Searches from start up to the lesser of stop and the size, stop excluded.
  static int CHandleArrayFind(CArray<void*, void*>& items, void* value, int start, int stop);
  // The first index whose element is in set.
  static int CHandleArrayFindOneOf(CArray<void*, void*>& items, CArray<void*, void*>& set);
  static int CHandleArrayFindSameSingle(CArray<void*, void*>& items, CArray<void*, void*>& set);
  // -1 when present, else the new index.
  static int CHandleArrayAppendSingle(CArray<void*, void*>& items, void* value);
  // The number of elements added.
  static int CHandleArrayAppendSingle(CArray<void*, void*>& items, CArray<void*, void*>& from);
  static int CInt64ArrayFind(CArray<LONGLONG, LONGLONG>& items, LONGLONG value);
  // The index of the element, present or new.
  static int CInt64ArrayAppendSingle(CArray<LONGLONG, LONGLONG>& items, LONGLONG value);
  static void CInt64ArrayAppendSingle(CArray<LONGLONG, LONGLONG>& items,
                                      CArray<LONGLONG, LONGLONG>& from);
  // The map's keys, ascending (unsigned) with bSort, else in the map's order.
  static void CMapUInt2Array(CMap<DWORD, DWORD, DWORD, DWORD>& map, CUIntArray& out, int bSort);
  // 1 when stored; 0 for a null array or an index outside it.
  static int SafeSetAt(CByteArray* items, int index, BYTE value);

  // ---- Number recognition and display (numtext/) --------------------------
  // 1 when the text is a number. bComma allows (never requires) grouping by
  // commas in threes, bExp an exponent; strict picks one of three degrees:
  // CheckStrict_None admits "12.", "-", "-0" and a lone point, CheckStrict_Full
  // refuses blanks and bounds the digits by the CGmp limits. A null pointer,
  // the empty text and, outside CheckStrict_Full, blanks alone are numbers.
  static int IsPureNumber(const char16_t* text, int bComma,
                          CGmp::Enum_PureDigitCheckStrict strict, int bExp);
  // 1 when every unit is a digit 0 to 9, also for the empty text.
  static int IsString0To9(const char16_t* text);
  // 1 when value lies within low and high, both inclusive. An empty bound, or
  // one that is no number, is no bound; a value that is no number counts as 0.
  static int IsValidNumber(CString& value, CString& low, CString& high);
  // For a text that is known to be a number: 1 and the text in canonical form
  // (no blanks, no trailing zeros or point, -0 as 0) when it fits the CGmp
  // limits; 0 and the text unchanged when not.
  static int ResetPureNumberString(CString& text);
  // Reduces the text to the number it holds: 12,345.50 USD gives 12345.50.
  // bKeepGroups keeps the commas and leading zeros as they stand.
  static void TrimToNumber(CString& text, int bKeepGroups);
  // Characters behind the first point; 0 without a point.
  static int GetDecLen(CString& text);
  static void Int64Str(CString& out, LONGLONG value);   // signed decimal
  static void UInt64Str(CString& out, LONGLONG value);  // the bits read as unsigned
  // The integer part, moved one away from zero when the digit behind the
  // point is 5 to 9. Null or blanks give 0.
  static LONGLONG Str2Int64(const char16_t* text);
  static int Double2Int(double value);  // rounded half away from zero
  // Groups the integer digits of a number text by threes with commas. bCheck
  // refuses a text that is no number; without it, texts under 4 units stay.
  static void SepNumber(CString& text, int bCheck);
  // Number text to what a cell shows, by a format byte: bits 0-5 decimals (63
  // for all there are), bit 6 shows a zero (else empty text), bit 7 groups
  // thousands. bRound rounds half up, else decimals are cut. bKeepBlanks puts
  // the leading blanks back. A text that is no number stays as it is.
  static void ConvertToDispFormat(CString& text, BYTE format, int bRound, int bKeepBlanks);

  // ---- Cell names (cell/) ------------------------------------------------
  // Columns are letters in bijective base 26 (A 0, Z 25, AA 26, ZZ 701),
  // folded to upper case; rows are written one-based. Names read up to ZZ and
  // any row; they are written only up to ZX (699) and row 999,999. There is
  // no $A$1 and no whole-row or whole-column form. A macro cell is written
  // with a leading @, which the flags bMacro... carry apart from the cell.
  //
  // bMacro nonzero is the strict form used for references: one leading @ is
  // skipped, at most two letters stand, and an @ behind the digits ends the
  // name. Zero is the plain form: an @ anywhere fails, and a third letter
  // passes without counting in the column. The row is read by _wtoi, which
  // saturates: a digit run past 32 bits reads as row 2,147,483,646.

  // Up to two letters; -1 when none (or with bMacro, when a third letter
  // follows).
  static int ColName2Col(const char16_t* name, int bMacro);
  // 1 when a cell was read; out keeps the column (and row -1) on failure.
  static int CellName2RowCol(CRowCol& out, const char16_t* name, int bMacro);
  // A cell (both corners with bBothCorners, else the first only) or a range
  // A1:B2, strict form, unnormalised; *pMacro1 and *pMacro2 (may be null)
  // tell which end had an @. A failed range stores what it could read, with
  // -1 for the rest; a failed cell leaves out alone.
  static int CellName2RowCols(CRowCols& out, const char16_t* name, int* pMacro1,
                              int* pMacro2, int bBothCorners);
  // The column's letters, valid for the life of the process; null outside
  // 0 to 699.
  static const char16_t* GetColName(int col);
  // B7 and the like; 0 with out unchanged outside the writable limits.
  static int GetCellName(CString& out, int row, int col);
  static int GetCellName(CString& out, CRowCol& cell);
  // The first corner (a negative field counts as 0; outside the limits out
  // keeps its text), an @ in front with bMacro1, then by nMode: 1 never the
  // second corner, 0 unless it is missing or the same cell without bMacro2,
  // other values always. The second corner is appended as :B9 or :@B9.
  static void RowCols2CellName(CRowCols& rc, CString& out, int bMacro1, int bMacro2,
                               int nMode);
  static int IsMacroCellName(const char16_t* name);       // holds an @
  static int IsMacroSheetCellName(const char16_t* name);  // holds @Sheet, any case

  // Reads cellname.pszName: a cell, a range, an alias or an alias range, with
  // its sheet and macro markers. The kind found, also in nType; a failure
  // gives Cellname_None and leaves what it filled.
  static int ParseCellname(CCellname& cellname);
  // Takes the markers @SheetN (at the start or the end), @Alias (the rest is
  // the alias) and a leading @ off the text; 1 when they were all consumed,
  // and only then is text written back. pSheet and pAlias may be null.
  static int ParseCellname_SheetAliasMacro(CString& text, int& bMacro, CString* pSheet,
                                           CString* pAlias);
  // For a variable node (kind 5) without a sheet marker: its text, and
  // CellName2RowCols on it. 0 for anything else.
  static int Var2RowCols_NoMacroSheet(ICalcTreeNode* node, CRowCols& out, CString& text,
                                      int* pMacro1, int* pMacro2, int bBothCorners);
  // The page macro's word; null above PNID_PageSum.
  static const char16_t* GetPNMacro(Enum_PNID id);
  // Its value, one-based for the current pages; 0 for pagesum, a null info
  // or an id outside.
  static int GetPN(Enum_PNID id, PN_INFORMATION* info);

  // ---- Number pictures (numtext/NumberPicture.cpp) -------------------------
  // A picture's first point parts the integer section from the decimal one.
  // A 0 is exactly one digit, the first run of # takes the digits not yet
  // placed, a comma groups the integer digits; all else is literal.

  // The number in the picture, rounded first to the decimals it can show.
  static void ConvertToDispFormat(CGmp& value, CString& out, CString& picture);
  // Number text to the picture, without rounding; the result replaces text.
  static void FormatNum(CString& text, CString& picture);

  // ---- Dates (numtext/DateText.cpp) ---------------------------------------
  // A date is a COleDateTime: valid, invalid or null. Date text puts the
  // year first: 2024-1-15, 2024/01/15 08:30:15, 20240115, or an XML date-time
  // with a T.

  // 1 when the text is a date, stored in out (may be null) with status
  // valid, or stands for no date (null, blanks, the zero date), with out
  // null; 0 otherwise, with out null. bDateOnly reads no time.
  static int String2Time(const char16_t* text, COleDateTime* out, int bDateOnly);
  // 1 when value lies within low and high (empty: no bound), times ignored;
  // an unreadable value is emptied.
  static int IsValidDate(CString& value, CString& low, CString& high);
  // -1, 0 or 1; a date that is not valid comes first. bDateOnly ignores the
  // time of day.
  static int CompareDateTime(COleDateTime& a, COleDateTime& b, int bDateOnly);
  static int GetLastDayOfMonth(int year, int month);
  // The present local time: date "%d-%02d-%02d", time "%02d:%02d:%02d",
  // milliseconds "%03d", each part chosen by its flag.
  static void GetDateTime(CString& out, int bDate, int bTime, int bMilli);
  // Spreadsheet serials: day 1 is 1 January 1900 and day 60 the 29 February
  // 1900 of that count. The value kind: 3 with a time of day, 4 without.
  static BYTE ECMADateTimeToDateTime(COleDateTime& out, CString& serial);
  static BYTE DateTimeToECMADateTime(COleDateTime& value, CString& out);

  static const char16_t* GetEnglishMonth(int index);  // 0 January .. 11; else null
  static const char16_t* GetEnglishDay(int index);    // 0 Sunday .. 6; else null
  // value.Format(format) by the runtime's percent codes (an empty format:
  // the process-wide date-time format), where "%Z" writes the zone offset
  // and "/Z" moves the caller's value to UTC.
  static void MyFormatDateTime(CString& out, COleDateTime& value, const char16_t* format);
  // Replaces the picture (YYYY-MM-DD, Month D, Day. ...) by the date in its
  // form; an unreadable date replaces it by the date text.
  static void FormatDate(CString& date, CString& picture);

  // ---- Statistics (func/FuncStatistics.cpp) -------------------------------
  // Adds lists of numbers element by element into one list, with the
  // lists' separator (the last argument shows it), spacing and decimals.
  static void SumDim(CString& result, CStringArray& args);

  // ---- Amounts in words (numtext/Amounts.cpp) -----------------------------
  // The amount in the capital characters of Chinese finance, up to 13
  // integer digits, rounded to 分; bWhole appends 整 unless 分 was written.
  // 1 on success; 0 with out empty for an amount that cannot be written.
  // The amount text is changed in the course of the work.
  static int RMB(CString& out, CString& amount, int bWhole);

  // ---- Random (func/FuncMath.cpp) -----------------------------------------
  // Two pools of 20 words under one lock: a secure one refilled from the
  // system's generator, and a weak one refilled from a seeded generator.
  // A random word made non-negative: a word with its top bit set is negated.
  // Chosen: the word stays unsigned, so 0x80000000 gives 2^31 rather than a
  // negative number. bWeak 0 draws from the secure pool, which falls back
  // on the weak one when the system's generator fails; non-zero draws from
  // the weak pool.
  static UINT GetUIntRand(int bWeak);
  static int C0_99(int bWeak);  // GetUIntRand(bWeak) % 100
  // Appends count characters of 0-9 and A-Z drawn from the weak pool; the
  // first of them is always a letter. A count below 1 appends nothing.
  static void GenRandalphabetDigitString(CString& out, int count);

  // ---- URIs and URLs (toolbox/Uri.cpp) -----------------------------------
  // Percent escapes with lower-case hex digits of the UTF-8 bytes; each
  // 16-bit unit is converted alone.

  // Escapes units above 128, blanks and the flag's set (0: !'()*-_.~@$#&=:;/?+,
  // nonzero: !'()*-_.~); 1 when the text was rewritten, 0 when it had nothing
  // to escape.
  static int EncodeURI(CString& text, int bComponent);
  // EncodeURI on what stands behind the first ?; 0 without a ?.
  static int EncodeURL(CString& url, int bComponent);
  static void EncodeURI_Chinese(CString& text);  // escapes units above 128 only
  // + is a blank, %xx a byte; an escape cut short ends the decoding.
  static void DecodeURI(CString& text);
  static BYTE DecodeHexChars(WORD* digits);  // two hex digits, no validity test
  // a=1&b=2 into names and values; the number of pairs. bKeepBare keeps an
  // item without = as a name with an empty value.
  static int ParseURLPara(CString& query, CStringArray& names, CStringArray& values, int bKeepBare);
  // base takes the url up to its ?, the query goes to ParseURLPara.
  static int ParseURL(const char16_t* url, CString& base, CStringArray& names, CStringArray& values,
                      int bKeepBare);
  // base?name=value&...; empty names are passed over, and empty values too
  // unless bKeepEmpty.
  static void GenURL(CString& out, const char16_t* base, CStringArray& names, CStringArray& values,
                     int bKeepEmpty);

  // ---- Geometry and units (toolbox/Geometry.cpp) ---------------------------
  // Rounding is Double2Int's, half away from zero; to cut drops the fraction.
  // The screen has 96 pixels to the inch.
  enum ENUM_SIZE_SPEC { SIZE_PIXEL = 0, SIZE_MM = 1, SIZE_CM = 2, SIZE_INCH = 3 };  // else inches

  // Pixels in the unit; decimals other than -1 rounds half up to that many.
  static double PixelToUnit(ENUM_SIZE_SPEC spec, int pixels, int decimals);
  static int UnitToPixel(ENUM_SIZE_SPEC spec, double value);
  // value * percent / 100 with bMultiply, else value * 100 / percent; a
  // percent of 100 or 0 changes nothing.
  static int ScaleInt(int value, int percent, int bMultiply);
  static LONG ScaleLong(LONG value, int percent, int bMultiply);
  static void ScaleRect(CRect& rect, int percent, int bMultiply);
  static void ScaleSize(CSize& size, int percent, int bMultiply);
  static void ScalePoint(CPoint& point, int percent, int bMultiply);

  static double PointsDistance(POINT* a, POINT* b);
  // Half the diagonal, each side made even first, cut; 0 for an empty one.
  static int GetRadius(RECT* rect);
  // Degrees from 0 up to 360, counterclockwise with y growing upwards.
  static double GetAngle(int x, int y);
  // About the origin, counterclockwise by degrees.
  static void Rotate(double& x, double& y, double degrees);
  static void Rotate(POINT* point, double degrees);
  // The four corners of rect (left top, right top, right bottom, left
  // bottom) turned about its centre.
  static void Rotate(CPoint* corners, CRect& rect, double degrees);
  // rect becomes the box around its turned corners (and itself with
  // bIncludeSelf).
  static void GetMinOutRectOfRotatedRect(CRect& rect, int degrees, int bIncludeSelf);
  // Lengthens (negative: shortens) the line at a (ends bit 1) and b (bit 2).
  static void ExtentLine(CPoint& a, CPoint& b, int length, BYTE ends);
  // The frames of a slide from from to to: 20, 10, 5, 2 and 1 pixels short
  // of to, at most 8; their number.
  static int BuildSmoothRects(CArray<CRect, CRect>& out, CRect& from, CRect& to);
  // Column sizes within total by percentages, then flex weights, then
  // minimums; 1 when sizes changed.
  static int RecalcPercentFlex(int total, CUIntArray& percents, CUIntArray& flexes,
                               CUIntArray& minimums, CUIntArray& sizes);

  static void ExchangeInt(int& a, int& b);
  static void ExchangeLong(LONG& a, LONG& b);
  // By repeated subtraction: 0 when either is 0, b when a is negative.
  static int GetGCD(int a, int b);
  static void DevideByGCD(int& a, int& b);  // a 0 in either changes nothing
  static void RoundDevideBy10(LONG& value);  // a remainder of 5 or more rounds up
  // Reduces the ratio a : b until the greater is below limit, nudging odd
  // terms when the divisor alone cannot get there.
  static void DevideByGCD_MaxValue(int& a, int& b, int limit);

  static int GetNumberOfProcessors();
  // Unless value is 0xF0F0F0F1, text becomes value by "%d"; text that is not
  // empty goes into out. A null out does nothing.
  static void SetRet(CBufferEx* out, CString& text, int value);
  // The file's lines at CR LF; 1 when it could be read, else 0.
  static int File2Array(CStringArray& out, const char16_t* path);

  // ---- Splitting and cleaning text (toolbox/Arguments.cpp, TextCleaning.cpp)
  // Quotes are ' and "; lengths and positions count 16-bit units. A line
  // end is the pair CR LF only. Text that does not fit a form stays as it is.

  // The line in front of the first CR LF; 1 when there was one. bCut removes
  // it and the CR LF from text; bTrim trims line on the right (and, with
  // bCut, text on the left). The buffer holds wide text.
  static int GetLeftPara(CString& line, CString& text, int bCut, int bTrim);
  static int GetLeftPara(CString& line, CBuffer& text, int bCut, int bTrim);
  // The same from the other end: the line behind the last CR LF.
  static int GetRightPara(CString& line, CString& text, int bCut, int bTrim);
  static int GetRightPara(CString& line, CMem& text, int bCut, int bTrim);
  // Blanks and tabs only, on the wide text of a buffer.
  static void StrBuffer_TrimLeft(CBuffer& text);
  static void StrBuffer_TrimRight(CMem& text);

  // name(a, b, c) into name and trimmed arguments; always 1. Parentheses do
  // not nest, and a quote protects only at the start of an argument.
  static int ParseFunction(const char16_t* text, CString& name, CStringArray& args);
  // Finds the call at or behind start, parses it as above and deletes it
  // from text.
  static void ParseFunction(CString& text, int start, CString& name, CStringArray& args);
  // a=1;b=2 at sep outside quotes into names and values (an item without a
  // valid name keeps an empty name); the blank as sep reads a=1 b=2 and
  // takes the quotes off values. Always 1.
  static int ParseExps(CStringArray& names, CStringArray& values, const char16_t* text, int bWide,
                       WORD sep);
  // The items with sep between them appended to out; null out does nothing.
  static void Array2Buffer(CBuffer* out, CStringArray& items, const char16_t* sep);
  static void Array2Buffer(CBuffer* out, CStringArray& items, WORD sep);

  static int StrChrs(CString& text, WORD c);  // how often c occurs
  // Cuts text to nLimit units, or with a negative limit to -nLimit display
  // columns (a unit from 129 up counts two); 1 when it was cut.
  static int LimitString(CString& text, int nLimit);
  // Every lone CR or LF becomes CR LF.
  static void NormalizeEnter(CString& text);
  // The units not allowed in export text: a process-wide, zero-terminated
  // list that a host may change before other threads use it.
  static char16_t* GetInvalidStringChar();
  // Replaces each U+2124F by U+572E in the wide text of a buffer; the byte
  // size afterwards.
  static int ReplaceInvalidStringChar(CBuffer& text);
  // Overwrites each unit of the list with replacement (0 deletes it); their
  // number.
  static int ReplaceInvalidStringChar_ExportExcel(CString& text, WORD replacement);
  // Mode '*': pattern is a prefix of text, ignoring case; other modes: the
  // two are equal ignoring case. An empty text never matches.
  static int IsMatchStr(CString& text, CString& pattern, WORD mode);
  // Deletes what there is of count units at start; bad arguments do nothing.
  static void SafeDelete(CString& text, int start, int count);

  // ---- Stream helpers (toolbox/StreamHelpers.cpp) -------------------------
  // What goes in which order through which operation of the host's stream;
  // the byte layout is the stream's. Counts are 32-bit words (WriteDWord),
  // raw values go by WriteData, strings by WriteString, each with the flag
  // 1. The writers report nothing. The readers answer 1, or 0 at the first
  // failed read, leaving in the target what was read up to then; an array
  // takes its size before its elements are read, but at most 65,536
  // elements (later as many as were read) ahead of them, so that a damaged
  // count costs what the stream holds. Chosen: a count that no
  // array can hold (above INT_MAX, or negative where it is read signed)
  // fails like a failed read, with the target untouched.
  static void SerializePoint(IStreamOutput* out, CPoint& point);         // x, y
  static int DeserializePoint(IStreamInput* in, CPoint& point);
  // The serial as the 8 bytes of a double; the status is not written, and
  // reading assigns the serial, which sets the status anew.
  static void SerializeDate(IStreamOutput* out, COleDateTime& date);
  static int DeserializeDate(IStreamInput* in, COleDateTime& date);
  // The pointer's value in 8 bytes; meaningful only in the writing process.
  static void SerializeHandle(IStreamOutput* out, void* handle);
  static int DeserializeHandle(IStreamInput* in, void*& handle);
  static void SerializeByteArray(IStreamOutput* out, CByteArray& items);  // count, bytes
  static int DeserializeByteArray(IStreamInput* in, CByteArray& items);
  // The count, then 8 bytes per handle; the count is read by ReadInt.
  static void SerializeHandleArray(IStreamOutput* out, CArray<void*, void*>& items);
  static int DeserializeHandleArray(IStreamInput* in, CArray<void*, void*>& items);
  // The count by WriteByte (nCountWidth 1, cut to 8 bits), WriteWord (2,
  // cut to 16 bits) or WriteDWord (any other width; the library passes 4),
  // then every element as 4 raw bytes: the true size decides how many, so a
  // size too large for the width cannot be read back. The reader takes the
  // count by ReadByte, ReadWord or ReadInt.
  static void SerializeUIntArray(IStreamOutput* out, CUIntArray& items, int nCountWidth);
  static int DeserializeUIntArray(IStreamInput* in, CUIntArray& items, int nCountWidth);
  // The count first when bCount is non-zero, then each string.
  static void SerializeStringArray(IStreamOutput* out, CStringArray& items, int bCount);
  // nCount below 0 reads the count (ReadInt; a negative one gives 0) and
  // sets the array's size to it. nCount 0 or above expects that many
  // strings and grows a smaller array to it, never cutting a larger one.
  // The strings fill the first places.
  static int DeserializeStringArray(IStreamInput* in, CStringArray& items, int nCount);
  // The count, then key and value of each pair in the map's walking order.
  // There is no reader.
  static void SerializeMapStringToString(CMapStringToString& map, IStreamOutput* out);
  // One 16-bit unit from two ReadRaw bytes, low byte first; 0 for a null
  // stream or when either byte is past the end.
  static char16_t readChar(IStreamInput* in);
};
