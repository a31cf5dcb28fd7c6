// func/FuncString.cpp: the 26 text built-ins: cutting, trimming, joining,
// searching, comparing, replacing, and the doors to the URI, date and number
// picture engines.
//
// Lengths and positions count 16-bit units from 0; counts and positions are
// read with CGmp::Str2Int (which saturates, so no digit run wraps) and case
// flags with CStrKit::Str2Bool, case not counting when the flag is missing.
// A text result is quoted here with Attach_Quotes(result, 1), so that a
// result that itself stands in quotes keeps them through the wrapper; a
// position is written as "%d" and quoted by the wrapper, since its row has
// kind 1. A bad call (a count of arguments the function does not take, a
// negative count or search start) answers 0 with strResult empty, and the
// wrapper reports text 1003 with the call; no body answers -1.
#include <algorithm>
#include <memory>
#include <span>
#include <string_view>

#include "CFuncItem.h"
#include "CGmp.h"
#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "foundation/CStringBuilder.h"
#include "func/BuiltinTable.h"
#include "func/LikePattern.h"
#include "platform/WideRuntime.h"

namespace vkt::func {

namespace {

// ---- Helpers shared by the bodies ------------------------------------------

const CString& Arg(CFuncPara* para, int index) { return para->arrArgs[index]; }

int Number(CFuncPara* para, int index) { return CGmp::Str2Int(Arg(para, index)); }

// The optional case flag at that index: nonzero when case counts.
int CaseFlag(CFuncPara* para, int argc, int index) {
  return index < argc ? CStrKit::Str2Bool(Arg(para, index)) : 0;
}

// The optional search start at that index, 0 when missing; false for a
// negative one, which makes the call a bad one.
bool ReadStart(CFuncPara* para, int argc, int index, int& start) {
  start = index < argc ? Number(para, index) : 0;
  return start >= 0;
}

int PutText(CFuncPara* para, const CString& text) {
  para->strResult = text;
  CUtilityCalc::Attach_Quotes(para->strResult, 1);
  return 1;
}

int PutInt(CFuncPara* para, int value) {
  para->SetResult(value);
  return 1;
}

// ---- Cutting -----------------------------------------------------------------

int Cut(CFuncPara* para, int argc, bool fromLeft) {
  if (argc != 2) return 0;
  const int count = Number(para, 1);
  if (count < 0) return 0;
  return PutText(para, fromLeft ? Arg(para, 0).Left(count) : Arg(para, 0).Right(count));
}

int Left(CFuncPara* para, int argc) { return Cut(para, argc, true); }

int Right(CFuncPara* para, int argc) { return Cut(para, argc, false); }

// A negative start counts as 0; a start at or behind the end gives the empty
// text, and a count past the end is cut to what is left.
int Mid(CFuncPara* para, int argc) {
  if (argc != 3) return 0;
  const int count = Number(para, 2);
  if (count < 0) return 0;
  return PutText(para, Arg(para, 0).Mid(std::max(Number(para, 1), 0), count));
}

int Len(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  return PutInt(para, Arg(para, 0).GetLength());
}

// ---- Trimming and case -------------------------------------------------------
// With no argument at all these succeed with an empty result.

// The set defaults to one blank (tabs and line ends stay); an empty set
// removes nothing.
int TrimBy(CFuncPara* para, int argc, bool left, bool right) {
  if (argc < 1) return 1;
  CString text(Arg(para, 0));
  const char16_t* set = argc >= 2 ? Arg(para, 1).GetString() : u" ";
  if (left) text.TrimLeft(set);
  if (right) text.TrimRight(set);
  return PutText(para, text);
}

int Trim(CFuncPara* para, int argc) { return TrimBy(para, argc, true, true); }

int TrimLeft(CFuncPara* para, int argc) { return TrimBy(para, argc, true, false); }

int TrimRight(CFuncPara* para, int argc) { return TrimBy(para, argc, false, true); }

// Not quoted: the row's kind 6 lets the wrapper keep a number as number.
int TrimToNumber(CFuncPara* para, int argc) {
  if (argc < 1) return 1;
  para->strResult = Arg(para, 0);
  CUtilityCalc::TrimToNumber(para->strResult, 0);
  return 1;
}

int ToCase(CFuncPara* para, int argc, bool upper) {
  if (argc < 1) return 1;
  CString text(Arg(para, 0));
  return PutText(para, upper ? text.MakeUpper() : text.MakeLower());
}

int ToLowerCase(CFuncPara* para, int argc) { return ToCase(para, argc, false); }

int ToUpperCase(CFuncPara* para, int argc) { return ToCase(para, argc, true); }

// ---- Joining -----------------------------------------------------------------

int Concatenate(CFuncPara* para, int argc) {
  CStringBuilder builder(512);
  for (int i = 0; i < argc; ++i) builder.Append(para->arrArgs[i]);
  CString joined;
  builder.GetStr(joined);
  return PutText(para, joined);
}

// phonetic(item, ..., options): the last argument may hold options
// "key=value; key=value" with the keys isTrim, isIgnoreBlank (both 1 by
// default) and sep (empty by default), in any case. sep takes the whole rest
// of the text, so it comes last. An unknown key is skipped up to its "=" and
// the reading goes on behind it; the last argument is an item unless a known
// key was found.
int Phonetic(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  int trim = 1;
  int ignoreBlank = 1;
  CString sep;
  bool optionsFound = false;
  CString options(Arg(para, argc - 1));
  while (!options.IsEmpty()) {
    const int equals = options.Find(u'=');
    if (equals <= 0) break;
    CString key = options.Left(equals);
    key.Trim();
    options = options.Mid(equals + 1);
    if (key.CompareNoCase(u"sep") == 0) {
      sep = options;
      optionsFound = true;
      break;
    }
    const bool isTrim = key.CompareNoCase(u"isTrim") == 0;
    if (!isTrim && key.CompareNoCase(u"isIgnoreBlank") != 0) continue;
    const int semicolon = options.Find(u';');
    CString value = semicolon < 0 ? options : options.Left(semicolon);
    options = semicolon < 0 ? CString() : options.Mid(semicolon + 1);
    (isTrim ? trim : ignoreBlank) = CStrKit::Str2Bool(value.Trim());
    optionsFound = true;
  }
  const int items = optionsFound ? argc - 1 : argc;
  CString joined;
  bool wrote = false;
  for (int i = 0; i < items; ++i) {
    CString item(Arg(para, i));
    if (trim) item.Trim();
    if (ignoreBlank && item.IsEmpty()) continue;
    // Chosen: "written" counts items, so with isIgnoreBlank=0 an empty first
    // item still puts a separator in front of the second.
    if (wrote) joined += sep;
    joined += item;
    wrote = true;
  }
  return PutText(para, joined);
}

// ---- Searching ---------------------------------------------------------------
// Without the case flag both texts are lower-cased first.

void FoldUnlessCase(CFuncPara* para, int argc, int flagIndex, CString& a, CString& b) {
  if (CaseFlag(para, argc, flagIndex) != 0) return;
  a.MakeLower();
  b.MakeLower();
}

// An empty `what` is found at the start; a start behind the end finds nothing.
int IndexOf(CFuncPara* para, int argc) {
  int start = 0;
  if (argc < 2 || !ReadStart(para, argc, 2, start)) return 0;
  CString text(Arg(para, 0)), what(Arg(para, 1));
  FoldUnlessCase(para, argc, 3, text, what);
  return PutInt(para, text.Find(what, start));
}

// Unlike indexOf, an empty text or `what`, or a `what` longer than the
// text, is a bad call rather than -1.
int LastIndexOf(CFuncPara* para, int argc) {
  if (argc < 2) return 0;
  CString text(Arg(para, 0)), what(Arg(para, 1));
  if (text.IsEmpty() || what.IsEmpty() || what.GetLength() > text.GetLength()) return 0;
  FoldUnlessCase(para, argc, 2, text, what);
  const std::size_t at = text.View().rfind(what.View());
  return PutInt(para, at == std::u16string_view::npos ? -1 : static_cast<int>(at));
}

// indexOneOf(chars, text, start, flag): the characters of the first argument
// are tried in their own order from start on; the first that the second
// argument holds gives its first position there. Chosen: the start is read
// (and a negative one refused) before an empty second argument gives -1.
int IndexOneOf(CFuncPara* para, int argc) {
  int start = 0;
  if (argc < 2 || !ReadStart(para, argc, 2, start)) return 0;
  CString chars(Arg(para, 0)), text(Arg(para, 1));
  FoldUnlessCase(para, argc, 3, chars, text);
  int found = -1;
  for (int i = start; i < chars.GetLength() && found < 0; ++i) found = text.Find(chars[i]);
  return PutInt(para, found);
}

// indexOfArray(list, item, start, flag, sep): the index of the first item
// of the list, split at sep (default ",") and trimmed, that equals item.
int IndexOfArray(CFuncPara* para, int argc) {
  int start = 0;
  if (argc < 2 || !ReadStart(para, argc, 2, start)) return 0;
  CString sep(argc >= 5 ? Arg(para, 4) : CString());
  sep.TrimLeft();
  if (sep.IsEmpty()) sep = u",";
  CStringArray items;
  CUtilityCalc::CString2Array(items, Arg(para, 0), sep, 1);
  const char16_t* item = Arg(para, 1);
  return PutInt(para, CaseFlag(para, argc, 3) != 0 ? CStrKit::ArrayCompare(items, item, start)
                                                   : CStrKit::ArrayCompareNoCase(items, item, start));
}

// ---- Comparing ---------------------------------------------------------------

// Whatever the collation of the process locale gives: -1, 0 or 1.
int Compare(CFuncPara* para, int argc) {
  if (argc < 2) return 0;
  const CString& a = Arg(para, 0);
  const CString& b = Arg(para, 1);
  return PutInt(para, CaseFlag(para, argc, 2) != 0 ? vkt::wcscoll(a, b) : vkt::_wcsicoll(a, b));
}

// An empty ending is at the end of every text.
int EndWith(CFuncPara* para, int argc) {
  if (argc < 2) return 0;
  const CString& ending = Arg(para, 1);
  const CString tail = Arg(para, 0).Right(ending.GetLength());
  const bool same = CaseFlag(para, argc, 2) != 0 ? tail.Compare(ending) == 0
                                                 : vkt::_wcsicmp(tail, ending) == 0;
  return PutInt(para, same ? 1 : 0);
}

int Like(CFuncPara* para, int argc) {
  if (argc < 2) return 0;
  CString text(Arg(para, 0)), pattern(Arg(para, 1));
  const std::unique_ptr<CLikePattern> compiled(GetLikePattern(pattern));
  return PutInt(para, MatchLike(compiled.get(), text, CaseFlag(para, argc, 2)) != 0 ? 1 : 0);
}

// ---- Replacing ---------------------------------------------------------------

// replace(text, start, count, new) overwrites rather than splices: the
// stretch from start over count units (cut at the end of the text) takes the
// units of `new` in turn, `new` starting over when it runs out, so a short
// one repeats and a long one is cut; an empty `new` deletes the stretch.
// Chosen: a cut `new` still uses up as many units of the text as it has, so
// replace('abcdef', 1, 2, 'xyz') is 'axyef' (two units written, three
// replaced), not 'axydef'; the worked result wins over a plain overwrite.
int Replace(CFuncPara* para, int argc) {
  if (argc != 4) return 0;
  const int count = Number(para, 2);
  if (count < 0) return 0;
  const CString& text = Arg(para, 0);
  const CString& fresh = Arg(para, 3);
  const int start = std::clamp(Number(para, 1), 0, text.GetLength());
  const int room = text.GetLength() - start;
  const int written = fresh.IsEmpty() ? 0 : std::min(count, room);
  const int replaced = std::min(std::max(count, fresh.GetLength()), room);
  CString result = text.Left(start);
  for (int i = 0; i < written; ++i) result += fresh[i % fresh.GetLength()];
  result += text.Mid(start + replaced);
  return PutText(para, result);
}

// Every occurrence, left to right, without looking at what was put in; an
// empty `old` changes nothing.
int ReplaceAll(CFuncPara* para, int argc) {
  if (argc != 3) return 0;
  CString result(Arg(para, 0));
  result.Replace(Arg(para, 1), Arg(para, 2));
  return PutText(para, result);
}

// Each unit of the text that the set holds becomes the whole of `new`.
int ReplaceOneOf(CFuncPara* para, int argc) {
  if (argc != 3) return 0;
  const CString& text = Arg(para, 0);
  const CString& set = Arg(para, 1);
  CString result;
  for (int i = 0; i < text.GetLength(); ++i) {
    if (set.Find(text[i]) >= 0) {
      result += Arg(para, 2);
    } else {
      result += text[i];
    }
  }
  return PutText(para, result);
}

// ---- Encoding and formatting -------------------------------------------------

int Encode(CFuncPara* para, int argc, int component) {
  if (argc != 1) return 0;
  CString text(Arg(para, 0));
  CUtilityCalc::EncodeURI(text, component);
  para->nResultKind = 1;
  return PutText(para, text);
}

int EncodeURI(CFuncPara* para, int argc) { return Encode(para, argc, 0); }

int EncodeURIComponent(CFuncPara* para, int argc) { return Encode(para, argc, 1); }

// The picture becomes the date in its form. Chosen: quoted here like the
// other texts, so a picture that makes a quoted text keeps its quotes.
int FormatDate(CFuncPara* para, int argc) {
  if (argc < 2) return 0;
  CString date(Arg(para, 0)), result(Arg(para, 1));
  CUtilityCalc::FormatDate(date, result);
  return PutText(para, result);
}

int FormatNum(CFuncPara* para, int argc) {
  if (argc < 2) return 0;
  CString result(Arg(para, 0)), picture(Arg(para, 1));
  CUtilityCalc::FormatNum(result, picture);
  return PutText(para, result);
}

// In the order of the built-in table.
constexpr BuiltinBody kStringBodies[] = {
    {u"compare", &Compare},         {u"concatenate", &Concatenate},
    {u"encodeURI", &EncodeURI},     {u"encodeURIComponent", &EncodeURIComponent},
    {u"endWith", &EndWith},         {u"formatDate", &FormatDate},
    {u"formatNum", &FormatNum},     {u"indexOf", &IndexOf},
    {u"indexOfArray", &IndexOfArray}, {u"indexOneOf", &IndexOneOf},
    {u"lastIndexOf", &LastIndexOf}, {u"left", &Left},
    {u"len", &Len},                 {u"like", &Like},
    {u"mid", &Mid},                 {u"phonetic", &Phonetic},
    {u"replace", &Replace},         {u"replaceAll", &ReplaceAll},
    {u"replaceOneOf", &ReplaceOneOf}, {u"right", &Right},
    {u"toLowerCase", &ToLowerCase}, {u"toUpperCase", &ToUpperCase},
    {u"trim", &Trim},               {u"trimLeft", &TrimLeft},
    {u"trimRight", &TrimRight},     {u"trimToNumber", &TrimToNumber},
};

}  // namespace

std::span<const BuiltinBody> StringBodies() { return kStringBodies; }

}  // namespace vkt::func
