// toolbox/Uri.cpp: percent escapes of text and the query part of web
// addresses. An escape holds the UTF-8 bytes of one 16-bit unit; a unit above
// 127 is converted alone by CBuffer::UTF16ToUTF8, which makes U+FFFD of a
// lone surrogate. So either half of a pair, like a lone half, becomes
// %ef%bf%bd, and a pair decodes back as two U+FFFD. Queries are not decoded.
#include <string>

#include "CUtilityCalc.h"
#include "foundation/CBuffer.h"
#include "foundation/CStrKit.h"
#include "foundation/CStringBuilder.h"
#include "platform/WideRuntime.h"

namespace {

// The units EncodeURI escapes besides blanks and units above 128, one set for
// each flag; built at load and only read afterwards, so threads share them.
const CString kUriSet("!'()*-_.~@$#&=:;/?+,");
const CString kComponentSet(u"!'()*-_.~");

constexpr char kHexDigits[] = "0123456789abcdef";

// The unit 128 itself goes out as one byte, not as an escape.
bool NeedsEscape(char16_t unit, const CString& set) {
  return unit > 128 || unit == u' ' || set.Find(unit) >= 0;
}

void AppendEscape(std::string& out, BYTE byte) {
  out += '%';
  out += kHexDigits[byte >> 4];
  out += kHexDigits[byte & 15];
}

int HexValue(char16_t unit) {
  return unit >= u'0' && unit <= u'9' ? unit - u'0' : vkt::towlower(unit) - 87;
}

}  // namespace

int CUtilityCalc::EncodeURI(CString& text, int bComponent) {
  const CString& set = bComponent ? kComponentSet : kUriSet;
  // Both passes stop at a zero unit: what stands behind it is dropped.
  const int length = text.GetLength();
  int first = 0;
  while (first < length && text[first] != 0 && !NeedsEscape(text[first], set)) ++first;
  if (first == length || text[first] == 0) return 0;

  // The output bytes gather in a string: a byte at a time through a CBuffer
  // cost more than the conversions themselves.
  std::string out;
  out.reserve(static_cast<std::size_t>(length) * 3);
  CBuffer unitBytes;
  for (int i = 0; i < length && text[i] != 0; ++i) {
    const char16_t unit = text[i];
    if (!NeedsEscape(unit, set)) {
      out += static_cast<char>(unit);
    } else if (unit < 128) {
      AppendEscape(out, static_cast<BYTE>(unit));  // its own one byte in UTF-8
    } else {
      unitBytes.Clear();
      unitBytes.Add(static_cast<WORD>(unit));
      unitBytes.UTF16ToUTF8();
      for (int b = 0; b < unitBytes.GetSize(); ++b) AppendEscape(out, unitBytes.GetBuf()[b]);
    }
  }
  // Chosen: narrow text is UTF-8 here, so the unit 128, stored as the lone
  // byte 0x80, comes back as U+FFFD once anything else needed an escape.
  text = out.c_str();
  return 1;
}

int CUtilityCalc::EncodeURL(CString& url, int bComponent) {
  const int mark = url.Find(u'?');
  if (mark < 0) return 0;
  CString query = url.Mid(mark + 1);
  if (EncodeURI(query, bComponent) == 0) return 0;
  url = url.Left(mark + 1) + query;
  return 1;
}

void CUtilityCalc::EncodeURI_Chinese(CString& text) {
  CString out;
  out.Preallocate(text.GetLength());
  for (char16_t unit : text.View()) {
    if (unit < 128) {
      out += unit;
      continue;
    }
    CString piece(unit);
    EncodeURI(piece, 1);  // leaves the unit 128 as it is
    out += piece;
  }
  text = std::move(out);
}

void CUtilityCalc::DecodeURI(CString& text) {
  const int length = text.GetLength();
  if (length == 0) return;
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(length));
  for (int i = 0; i < length; ++i) {
    const char16_t unit = text[i];
    if (unit == u'+') {
      bytes += ' ';
    } else if (unit != u'%') {
      bytes += static_cast<char>(unit & 0xFF);  // a zero unit too, kept as U+0000
    } else if (i + 2 >= length || text[i + 1] == 0 || text[i + 2] == 0) {
      break;  // an escape cut short ends the decoding
    } else {
      WORD digits[2] = {text[i + 1], text[i + 2]};
      bytes += static_cast<char>(DecodeHexChars(digits));
      i += 2;
    }
  }
  // The same conversion as CBuffer::UTF8ToUTF16, malformed bytes to U+FFFD.
  text = CString::FromUtf8(bytes);
}

BYTE CUtilityCalc::DecodeHexChars(WORD* digits) {
  if (digits == nullptr) return 0;
  return static_cast<BYTE>(HexValue(digits[0]) * 16 + HexValue(digits[1]));
}

int CUtilityCalc::ParseURLPara(CString& query, CStringArray& names, CStringArray& values, int bKeepBare) {
  if (query.IsEmpty()) return 0;
  CStrKit::CString2Array(names, query, u'&', 0);
  values.SetSize(names.GetSize());  // every slot kept below is written
  // Kept pairs move to the front, so dropping bare items stays linear.
  int kept = 0;
  for (int i = 0; i < names.GetSize(); ++i) {
    CString item = std::move(names[i]);
    const int equals = item.Find(u'=');
    if (equals < 0 && !bKeepBare) continue;
    values[kept] = equals < 0 ? CString() : item.Mid(equals + 1);
    names[kept++] = equals < 0 ? std::move(item) : item.Left(equals);
  }
  names.SetSize(kept);
  values.SetSize(kept);
  return kept;
}

int CUtilityCalc::ParseURL(const char16_t* url, CString& base, CStringArray& names, CStringArray& values,
                           int bKeepBare) {
  base = url;
  const int mark = base.Find(u'?');
  if (mark < 0 || mark == base.GetLength() - 1) return 0;
  CString query = base.Mid(mark + 1);
  base = base.Left(mark);
  return ParseURLPara(query, names, values, bKeepBare);
}

void CUtilityCalc::GenURL(CString& out, const char16_t* base, CStringArray& names, CStringArray& values,
                          int bKeepEmpty) {
  // base may point into out: it is read in full before out is written.
  CStringBuilder builder(512);
  builder.Append(base);
  CString none;  // the value of a name that values is too short for
  int pairs = 0;
  for (int i = 0; i < names.GetSize(); ++i) {
    CString& value = i < values.GetSize() ? values[i] : none;
    if (names[i].IsEmpty() || (value.IsEmpty() && !bKeepEmpty)) continue;
    builder.Append(static_cast<WORD>(pairs++ == 0 ? u'?' : u'&'));
    builder.Append(names[i]);
    builder.Append(static_cast<WORD>(u'='));
    builder.Append(value);
  }
  builder.GetStr(out);
}
