// platform/CString.cpp: the counted 16-bit text type.
//
// Storage is an inline buffer for short texts and a calloc'd heap block for
// long ones; m_data always points at whichever holds the text. Formatting
// parses the 16-bit format itself and lets the C library render numbers.
#include "platform/CString.h"

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <new>

#include "platform/Config.h"
#include "platform/Format.h"
#include "platform/Utf.h"
#include "platform/WideRuntime.h"

namespace {

int TextLength(const char16_t* text) noexcept {
  if (text == nullptr) return 0;
  const char16_t* p = text;
  while (*p) ++p;
  return static_cast<int>(p - text);
}

bool InSet(char16_t ch, const char16_t* set) noexcept {
  if (set == nullptr) return false;
  for (; *set; ++set)
    if (*set == ch) return true;
  return false;
}

}  // namespace

CString::CString() noexcept : m_data(m_inline), m_length(0), m_capacity(kInlineCapacity) {
  m_inline[0] = 0;
}

CString::CString(const CString& other) : CString() { Assign(other.m_data, other.m_length); }

CString::CString(CString&& other) noexcept : CString() { *this = std::move(other); }

CString::CString(const char16_t* text) : CString() { Assign(text, TextLength(text)); }

CString::CString(const char16_t* text, int length) : CString() {
  if (text == nullptr || length < 0) length = 0;
  Assign(text, length);
}

CString::CString(char16_t ch, int repeat) : CString() {
  if (repeat <= 0) return;
  Reserve(repeat, false);
  std::fill(m_data, m_data + repeat, ch);
  SetLength(repeat);
}

CString::CString(const char* utf8) : CString() {
  if (utf8 != nullptr) *this = FromUtf8(utf8);
}

CString::CString(std::u16string_view text) : CString() {
  Assign(text.data(), static_cast<int>(text.size()));
}

CString::~CString() {
  if (!IsInline()) std::free(m_data);
}

CString& CString::operator=(const CString& other) {
  if (this != &other) Assign(other.m_data, other.m_length);
  return *this;
}

CString& CString::operator=(CString&& other) noexcept {
  if (this == &other) return *this;
  if (other.IsInline()) {
    // Short texts are copied: the inline buffer cannot change hands.
    std::memcpy(m_data, other.m_data, (other.m_length + 1) * sizeof(char16_t));
    m_length = other.m_length;
  } else {
    if (!IsInline()) std::free(m_data);
    m_data = other.m_data;
    m_length = other.m_length;
    m_capacity = other.m_capacity;
    other.m_data = other.m_inline;
    other.m_capacity = kInlineCapacity;
  }
  other.m_length = 0;
  other.m_data[0] = 0;
  return *this;
}

CString& CString::operator=(const char16_t* text) {
  Assign(text, TextLength(text));
  return *this;
}

CString& CString::operator=(char16_t ch) {
  Assign(&ch, 1);
  return *this;
}

CString& CString::operator=(const char* utf8) {
  if (utf8 == nullptr) {
    Empty();
  } else {
    *this = FromUtf8(utf8);
  }
  return *this;
}

// Makes room for capacity units (plus terminator). With keep the text stays,
// else the content is undefined until SetLength.
void CString::Reserve(int capacity, bool keep) {
  if (capacity <= m_capacity) return;
  int grown = m_capacity + m_capacity / 2;
  int newCapacity = std::max(capacity, grown);
  auto* block = static_cast<char16_t*>(std::malloc((static_cast<std::size_t>(newCapacity) + 1) * sizeof(char16_t)));
  if (block == nullptr) throw std::bad_alloc();
  if (keep) std::memcpy(block, m_data, (static_cast<std::size_t>(m_length) + 1) * sizeof(char16_t));
  else block[0] = 0;
  if (!IsInline()) std::free(m_data);
  m_data = block;
  m_capacity = newCapacity;
}

void CString::Assign(const char16_t* text, int length) {
  if (length <= 0) {
    SetLength(0);
    return;
  }
  if (length > m_capacity) {
    // The source may live in our own block (s = s.GetString() + 2): copy first.
    CString copy;
    copy.Reserve(length, false);
    std::memcpy(copy.m_data, text, length * sizeof(char16_t));
    copy.SetLength(length);
    *this = std::move(copy);
    return;
  }
  std::memmove(m_data, text, length * sizeof(char16_t));
  SetLength(length);
}

void CString::SetLength(int length) noexcept {
  m_length = length;
  m_data[length] = 0;
}

void CString::Empty() noexcept { SetLength(0); }

char16_t CString::GetAt(int index) const noexcept {
  VKTCALC_ASSERT(index >= 0 && index <= m_length);
  if (index < 0 || index >= m_length) return 0;
  return m_data[index];
}

void CString::SetAt(int index, char16_t ch) noexcept {
  if (index < 0 || index >= m_length) return;
  m_data[index] = ch;
}

char16_t* CString::GetBuffer(int minLength) {
  Reserve(std::max(minLength, m_length), true);
  return m_data;
}

char16_t* CString::GetBufferSetLength(int length) {
  if (length < 0) length = 0;
  Reserve(length, true);
  if (length > m_length) std::fill(m_data + m_length, m_data + length, u'\0');
  SetLength(length);
  return m_data;
}

void CString::ReleaseBuffer(int newLength) {
  if (newLength < 0) {
    newLength = 0;
    while (newLength < m_capacity && m_data[newLength]) ++newLength;
  }
  SetLength(std::min(newLength, m_capacity));
}

void CString::Preallocate(int capacity) { Reserve(capacity, true); }

void CString::Append(const char16_t* text, int length) {
  if (text == nullptr || length <= 0) return;
  if (m_length + length > m_capacity) {
    // text may point into our own block, which Reserve frees.
    if (text >= m_data && text <= m_data + m_length) {
      CString copy(text, length);
      Append(copy.m_data, length);
      return;
    }
    Reserve(m_length + length, true);
  }
  std::memmove(m_data + m_length, text, length * sizeof(char16_t));
  SetLength(m_length + length);
}

CString& CString::operator+=(const CString& other) {
  Append(other.m_data, other.m_length);
  return *this;
}

CString& CString::operator+=(const char16_t* text) {
  Append(text, TextLength(text));
  return *this;
}

CString& CString::operator+=(char16_t ch) {
  if (m_length + 1 > m_capacity) Reserve(m_length + 1, true);
  m_data[m_length] = ch;
  SetLength(m_length + 1);
  return *this;
}

int CString::Compare(const char16_t* text) const noexcept {
  std::u16string_view other(text ? text : u"");
  int c = View().compare(other);
  return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

int CString::CompareNoCase(const char16_t* text) const noexcept {
  return vkt::_wcsicmp(m_data, text ? text : u"");
}

int CString::Collate(const char16_t* text) const { return vkt::wcscoll(m_data, text ? text : u""); }

int CString::CollateNoCase(const char16_t* text) const {
  return vkt::_wcsicoll(m_data, text ? text : u"");
}

CString CString::Mid(int first) const { return Mid(first, m_length); }

CString CString::Mid(int first, int count) const {
  if (first < 0) first = 0;
  if (count < 0) count = 0;
  if (first >= m_length) return CString();
  count = std::min(count, m_length - first);
  return CString(m_data + first, count);
}

CString CString::Left(int count) const { return Mid(0, count); }

CString CString::Right(int count) const {
  if (count < 0) count = 0;
  if (count >= m_length) return *this;
  return CString(m_data + m_length - count, count);
}

CString CString::SpanIncluding(const char16_t* set) const {
  int n = 0;
  while (n < m_length && InSet(m_data[n], set)) ++n;
  return Left(n);
}

CString CString::SpanExcluding(const char16_t* set) const {
  int n = 0;
  while (n < m_length && !InSet(m_data[n], set)) ++n;
  return Left(n);
}

CString CString::Tokenize(const char16_t* delimiters, int& start) const {
  if (start < 0 || start >= m_length) {
    start = -1;
    return CString();
  }
  int from = start;
  while (from < m_length && InSet(m_data[from], delimiters)) ++from;
  if (from >= m_length) {
    start = -1;
    return CString();
  }
  int to = from;
  while (to < m_length && !InSet(m_data[to], delimiters)) ++to;
  start = to + 1;
  return CString(m_data + from, to - from);
}

int CString::Find(char16_t ch, int start) const noexcept {
  if (start < 0) start = 0;
  for (int i = start; i < m_length; ++i)
    if (m_data[i] == ch) return i;
  return -1;
}

int CString::Find(const char16_t* text, int start) const noexcept {
  if (start < 0) start = 0;
  if (start > m_length) return -1;
  std::u16string_view what(text ? text : u"");
  std::size_t at = View().find(what, static_cast<std::size_t>(start));
  return at == std::u16string_view::npos ? -1 : static_cast<int>(at);
}

int CString::ReverseFind(char16_t ch) const noexcept {
  for (int i = m_length - 1; i >= 0; --i)
    if (m_data[i] == ch) return i;
  return -1;
}

int CString::FindOneOf(const char16_t* set) const noexcept {
  for (int i = 0; i < m_length; ++i)
    if (InSet(m_data[i], set)) return i;
  return -1;
}

int CString::Insert(int index, char16_t ch) {
  return Insert(index, CString(ch).GetString());
}

int CString::Insert(int index, const char16_t* text) {
  int n = TextLength(text);
  if (n == 0) return m_length;
  if (index < 0) index = 0;
  if (index > m_length) index = m_length;
  CString copy(text, n);  // text may point into our own block
  Reserve(m_length + n, true);
  std::memmove(m_data + index + n, m_data + index, (m_length - index) * sizeof(char16_t));
  std::memcpy(m_data + index, copy.m_data, n * sizeof(char16_t));
  SetLength(m_length + n);
  return m_length;
}

int CString::Delete(int index, int count) {
  if (index < 0) index = 0;
  if (count <= 0 || index >= m_length) return m_length;
  count = std::min(count, m_length - index);
  std::memmove(m_data + index, m_data + index + count, (m_length - index - count) * sizeof(char16_t));
  SetLength(m_length - count);
  return m_length;
}

int CString::Replace(char16_t oldCh, char16_t newCh) noexcept {
  int count = 0;
  for (int i = 0; i < m_length; ++i) {
    if (m_data[i] == oldCh) {
      m_data[i] = newCh;
      ++count;
    }
  }
  return count;
}

int CString::Replace(const char16_t* oldText, const char16_t* newText) {
  int oldLength = TextLength(oldText);
  if (oldLength == 0) return 0;
  std::u16string_view from(oldText, oldLength);
  std::u16string_view to(newText ? newText : u"");
  std::u16string_view self = View();
  std::size_t at = self.find(from);
  if (at == std::u16string_view::npos) return 0;
  CString result;
  result.Preallocate(m_length);
  int count = 0;
  std::size_t done = 0;
  while (at != std::u16string_view::npos) {
    result.Append(m_data + done, static_cast<int>(at - done));
    result.Append(to.data(), static_cast<int>(to.size()));
    done = at + from.size();
    ++count;
    at = self.find(from, done);
  }
  result.Append(m_data + done, static_cast<int>(m_length - done));
  *this = std::move(result);
  return count;
}

int CString::Remove(char16_t ch) noexcept {
  int kept = 0;
  for (int i = 0; i < m_length; ++i)
    if (m_data[i] != ch) m_data[kept++] = m_data[i];
  int removed = m_length - kept;
  SetLength(kept);
  return removed;
}

CString& CString::MakeUpper() {
  for (int i = 0; i < m_length; ++i) m_data[i] = vkt::towupper(m_data[i]);
  return *this;
}

CString& CString::MakeLower() {
  for (int i = 0; i < m_length; ++i) m_data[i] = vkt::towlower(m_data[i]);
  return *this;
}

CString& CString::MakeReverse() {
  std::reverse(m_data, m_data + m_length);
  return *this;
}

namespace {

template <class Keep>
int LeadingCount(const char16_t* data, int length, Keep isTrimmed) {
  int n = 0;
  while (n < length && isTrimmed(data[n])) ++n;
  return n;
}

template <class Keep>
int TrailingCount(const char16_t* data, int length, Keep isTrimmed) {
  int n = 0;
  while (n < length && isTrimmed(data[length - 1 - n])) ++n;
  return n;
}

}  // namespace

// Chosen: the white space of the no-argument trims is Unicode's, fixed, so
// that a cell trims the same way whatever locale the host process runs in.
bool CString::IsWhiteSpace(char16_t ch) noexcept {
  if (ch == u' ' || (ch >= 0x09 && ch <= 0x0D)) return true;
  if (ch < 0x85) return false;
  return ch == 0x85 || ch == 0xA0 || ch == 0x1680 || (ch >= 0x2000 && ch <= 0x200A) ||
         ch == 0x2028 || ch == 0x2029 || ch == 0x202F || ch == 0x205F || ch == 0x3000;
}

CString& CString::TrimLeft() {
  Delete(0, LeadingCount(m_data, m_length, [](char16_t c) { return IsWhiteSpace(c); }));
  return *this;
}

CString& CString::TrimLeft(char16_t ch) {
  Delete(0, LeadingCount(m_data, m_length, [ch](char16_t c) { return c == ch; }));
  return *this;
}

CString& CString::TrimLeft(const char16_t* set) {
  Delete(0, LeadingCount(m_data, m_length, [set](char16_t c) { return InSet(c, set); }));
  return *this;
}

CString& CString::TrimRight() {
  SetLength(m_length - TrailingCount(m_data, m_length, [](char16_t c) { return IsWhiteSpace(c); }));
  return *this;
}

CString& CString::TrimRight(char16_t ch) {
  SetLength(m_length - TrailingCount(m_data, m_length, [ch](char16_t c) { return c == ch; }));
  return *this;
}

CString& CString::TrimRight(const char16_t* set) {
  SetLength(m_length - TrailingCount(m_data, m_length, [set](char16_t c) { return InSet(c, set); }));
  return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(char16_t ch) { return TrimRight(ch).TrimLeft(ch); }
CString& CString::Trim(const char16_t* set) { return TrimRight(set).TrimLeft(set); }

std::string CString::ToUtf8() const { return vkt::platform::Utf16ToUtf8(View()); }

CString CString::FromUtf8(std::string_view utf8) {
  std::u16string wide = vkt::platform::Utf8ToUtf16(utf8);
  return CString(wide.data(), static_cast<int>(wide.size()));
}

std::size_t CString::Hash() const noexcept {
  // Chosen: FNV-1a over the 16-bit units; maps need spread, not secrecy.
  std::size_t h = 1469598103934665603ull;
  for (int i = 0; i < m_length; ++i) {
    h ^= m_data[i];
    h *= 1099511628211ull;
  }
  return h;
}

void CString::Format(const char16_t* format, ...) {
  CString result;
  va_list args;
  va_start(args, format);
  vkt::platform::FormatInto(result, format, args);
  va_end(args);
  *this = std::move(result);
}

void CString::AppendFormat(const char16_t* format, ...) {
  CString tail;  // an argument may point into our own text
  va_list args;
  va_start(args, format);
  vkt::platform::FormatInto(tail, format, args);
  va_end(args);
  *this += tail;
}

// ---------------------------------------------------------------------------

CString operator+(const CString& a, const CString& b) {
  CString r;
  r.Preallocate(a.GetLength() + b.GetLength());
  r += a;
  r += b;
  return r;
}

CString operator+(const CString& a, const char16_t* b) {
  CString r(a);
  r += b;
  return r;
}

CString operator+(const char16_t* a, const CString& b) {
  CString r(a);
  r += b;
  return r;
}

CString operator+(const CString& a, char16_t b) {
  CString r(a);
  r += b;
  return r;
}

CString operator+(char16_t a, const CString& b) {
  CString r(a);
  r += b;
  return r;
}

bool operator==(const CString& a, const CString& b) noexcept { return a.View() == b.View(); }

bool operator==(const CString& a, const char16_t* b) noexcept {
  return a.View() == std::u16string_view(b ? b : u"");
}
