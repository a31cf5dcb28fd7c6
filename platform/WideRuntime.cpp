// platform/WideRuntime.cpp: the runtime's text functions for 16-bit text.
// The C library's wide functions work on 32-bit wchar_t, so each unit or
// text is widened here and the answer narrowed back; all locale knowledge
// stays in the C library.
#include "platform/WideRuntime.h"

#include <climits>
#include <cwchar>
#include <cwctype>
#include <vector>

namespace vkt {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(std::uint32_t u) { return u >= 0xD800 && u <= 0xDFFF; }
bool IsHighSurrogate(char16_t u) { return u >= 0xD800 && u <= 0xDBFF; }
bool IsLowSurrogate(char16_t u) { return u >= 0xDC00 && u <= 0xDFFF; }

// The C library's answer is taken only when it is again one BMP unit that
// is no surrogate; otherwise the unit stays as it was.
char16_t NarrowFolded(char16_t original, std::wint_t folded) {
  const auto value = static_cast<std::uint32_t>(folded);
  if (value > 0xFFFF || IsSurrogate(value)) return original;
  return static_cast<char16_t>(value);
}

// Widens length units into out, which has room for length units, and gives
// the count written. With fold each unit that is no surrogate is folded to
// lower case first; folding keeps surrogates and never makes one, so a pair
// stays the same pair.
std::size_t Widen(const char16_t* text, std::size_t length, bool fold, wchar_t* out) {
  std::size_t k = 0;
  for (std::size_t i = 0; i < length; ++i) {
    const char16_t u = text[i];
    if (IsHighSurrogate(u) && i + 1 < length && IsLowSurrogate(text[i + 1])) {
      const char32_t cp = 0x10000 + ((static_cast<char32_t>(u) - 0xD800) << 10) +
                          (static_cast<char32_t>(text[i + 1]) - 0xDC00);
      out[k++] = static_cast<wchar_t>(cp);
      ++i;
    } else if (IsSurrogate(u)) {
      out[k++] = static_cast<wchar_t>(kReplacement);
    } else {
      out[k++] = static_cast<wchar_t>(fold ? towlower(u) : u);
    }
  }
  return k;
}

// A text widened for the C library's collation, NUL-terminated. Short texts
// stay in a buffer on the stack, so that collating them allocates nothing.
class CollationText {
 public:
  CollationText(const char16_t* text, bool fold) {
    const std::size_t length = wcslen(text);
    wchar_t* out = m_inline;
    if (length >= kInline) {
      m_heap.resize(length + 1);
      out = m_heap.data();
    }
    out[Widen(text, length, fold, out)] = 0;
    m_text = out;
  }
  CollationText(const CollationText&) = delete;
  CollationText& operator=(const CollationText&) = delete;

  const wchar_t* c_str() const { return m_text; }

 private:
  static constexpr std::size_t kInline = 256;
  wchar_t m_inline[kInline];
  std::vector<wchar_t> m_heap;
  const wchar_t* m_text;
};

int Sign(int v) { return (v > 0) - (v < 0); }

// Shared by _wtoi and _wtoi64: skips white space, reads a sign and digits,
// and saturates at [minValue, maxValue].
template <class Int>
Int ReadInteger(const char16_t* text, Int minValue, Int maxValue) {
  if (text == nullptr) return 0;
  const char16_t* p = text;
  while (iswspace(*p)) ++p;
  bool negative = false;
  if (*p == u'+' || *p == u'-') {
    negative = (*p == u'-');
    ++p;
  }
  // Accumulate towards the signed side so that the minimum, whose magnitude
  // is one more than the maximum's, is reachable without overflow.
  Int value = 0;
  for (; *p >= u'0' && *p <= u'9'; ++p) {
    const Int digit = static_cast<Int>(*p - u'0');
    if (negative) {
      if (value < (minValue + digit) / 10) return minValue;
      value = static_cast<Int>(value * 10 - digit);
    } else {
      if (value > (maxValue - digit) / 10) return maxValue;
      value = static_cast<Int>(value * 10 + digit);
    }
  }
  return value;
}

}  // namespace

std::size_t wcslen(const char16_t* text) {
  if (text == nullptr) return 0;
  std::size_t n = 0;
  while (text[n] != 0) ++n;
  return n;
}

std::wstring Utf16ToWide(const char16_t* text, std::size_t length) {
  std::wstring out;
  if (text == nullptr) return out;
  out.resize(length);
  out.resize(Widen(text, length, false, out.data()));
  return out;
}

std::u16string WideToUtf16(const wchar_t* text, std::size_t length) {
  std::u16string out;
  if (text == nullptr) return out;
  out.reserve(length);
  for (std::size_t i = 0; i < length; ++i) {
    auto cp = static_cast<std::uint32_t>(text[i]);
    if (cp > 0x10FFFF || IsSurrogate(cp)) cp = kReplacement;
    if (cp > 0xFFFF) {
      cp -= 0x10000;
      out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(cp));
    }
  }
  return out;
}

int wcscoll(const char16_t* a, const char16_t* b) {
  const CollationText wa(a, false);
  const CollationText wb(b, false);
  return Sign(std::wcscoll(wa.c_str(), wb.c_str()));
}

int _wcsicoll(const char16_t* a, const char16_t* b) {
  const CollationText wa(a, true);
  const CollationText wb(b, true);
  return Sign(std::wcscoll(wa.c_str(), wb.c_str()));
}

int _wcsicmp(const char16_t* a, const char16_t* b) {
  return _wcsnicmp(a, b, static_cast<std::size_t>(-1));
}

int _wcsnicmp(const char16_t* a, const char16_t* b, std::size_t n) {
  static const char16_t kEmpty[] = u"";
  if (a == nullptr) a = kEmpty;
  if (b == nullptr) b = kEmpty;
  for (std::size_t i = 0; i < n; ++i) {
    const char16_t ca = towlower(a[i]);
    const char16_t cb = towlower(b[i]);
    if (ca != cb) return ca < cb ? -1 : 1;
    if (ca == 0) break;
  }
  return 0;
}

char16_t towupper(char16_t ch) {
  if (IsSurrogate(ch)) return ch;
  return NarrowFolded(ch, std::towupper(static_cast<std::wint_t>(ch)));
}

char16_t towlower(char16_t ch) {
  if (IsSurrogate(ch)) return ch;
  return NarrowFolded(ch, std::towlower(static_cast<std::wint_t>(ch)));
}

bool iswdigit(char16_t ch) { return ch >= u'0' && ch <= u'9'; }

bool iswspace(char16_t ch) {
  if (ch == 0 || IsSurrogate(ch)) return false;
  return std::iswspace(static_cast<std::wint_t>(ch)) != 0;
}

int _wtoi(const char16_t* text) { return ReadInteger<int>(text, INT_MIN, INT_MAX); }

std::int64_t _wtoi64(const char16_t* text) {
  return ReadInteger<std::int64_t>(text, INT64_MIN, INT64_MAX);
}

}  // namespace vkt
