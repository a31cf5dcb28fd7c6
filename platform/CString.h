// platform/CString.h: CString, the counted 16-bit text of every interface.
//
// A CString is a value: copying copies, moving steals. Texts of up to
// kInlineCapacity units (a number's 60 digits with sign and point) live inside
// the object; longer ones on the heap. The text is always NUL-terminated in
// memory, but a NUL unit inside the text is kept and counted like any other.
// All lengths and positions count 16-bit units from 0; -1 means none.
// Surrogate pairs are two units and pass through every operation untouched.
//
// Edge rules: Mid/Left/Right cut counts past either end; Find gives -1 for
// nothing and for a start past the end; a null pointer reads as empty text;
// narrow text (const char*) is UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "VKTCalcExport.h"
#include "platform/Types.h"

class VKTCALC_API CString {
 public:
  static constexpr int kInlineCapacity = 63;  // units held without the heap

  CString() noexcept;
  CString(const CString& other);
  CString(CString&& other) noexcept;
  CString(const char16_t* text);              // null gives an empty string
  CString(const char16_t* text, int length);  // exactly length units
  CString(char16_t ch, int repeat = 1);
  CString(const char* utf8);                  // UTF-8; null gives empty
  explicit CString(std::u16string_view text);
  ~CString();

  CString& operator=(const CString& other);
  CString& operator=(CString&& other) noexcept;
  CString& operator=(const char16_t* text);
  CString& operator=(char16_t ch);
  CString& operator=(const char* utf8);

  // Size and access.
  int GetLength() const noexcept { return m_length; }
  bool IsEmpty() const noexcept { return m_length == 0; }
  void Empty() noexcept;
  char16_t GetAt(int index) const noexcept;  // 0 for an index outside
  char16_t operator[](int index) const noexcept { return GetAt(index); }
  void SetAt(int index, char16_t ch) noexcept;  // ignored outside the text
  const char16_t* GetString() const noexcept { return m_data; }
  operator const char16_t*() const noexcept { return m_data; }
  std::u16string_view View() const noexcept { return {m_data, static_cast<std::size_t>(m_length)}; }

  // Raw buffer access. GetBuffer gives room for at least minLength units and
  // keeps the text; ReleaseBuffer(-1) takes the length up to the first NUL.
  char16_t* GetBuffer(int minLength = 0);
  char16_t* GetBufferSetLength(int length);
  void ReleaseBuffer(int newLength = -1);
  void Preallocate(int capacity);

  // Appending.
  CString& operator+=(const CString& other);
  CString& operator+=(const char16_t* text);
  CString& operator+=(char16_t ch);
  void Append(const char16_t* text, int length);
  void AppendChar(char16_t ch) { *this += ch; }

  // Comparison: Compare is by unit value; the NoCase forms fold case per
  // unit; Collate goes by the process locale.
  int Compare(const char16_t* text) const noexcept;
  int CompareNoCase(const char16_t* text) const noexcept;
  int Collate(const char16_t* text) const;
  int CollateNoCase(const char16_t* text) const;

  // Extraction. Counts past the end are cut; negative ones count as 0.
  CString Mid(int first) const;
  CString Mid(int first, int count) const;
  CString Left(int count) const;
  CString Right(int count) const;
  CString SpanIncluding(const char16_t* set) const;
  CString SpanExcluding(const char16_t* set) const;
  // Next token after start that is not made of delimiters; start becomes the
  // position behind it, or -1 with an empty result when none is left.
  CString Tokenize(const char16_t* delimiters, int& start) const;

  // Searching: -1 for nothing, also for a start past the end.
  int Find(char16_t ch, int start = 0) const noexcept;
  int Find(const char16_t* text, int start = 0) const noexcept;
  int ReverseFind(char16_t ch) const noexcept;
  int FindOneOf(const char16_t* set) const noexcept;

  // Changing. Insert past the end appends; each returns the new length.
  int Insert(int index, char16_t ch);
  int Insert(int index, const char16_t* text);
  int Delete(int index, int count = 1);
  int Replace(char16_t oldCh, char16_t newCh) noexcept;  // number replaced
  int Replace(const char16_t* oldText, const char16_t* newText);
  int Remove(char16_t ch) noexcept;                       // number removed
  CString& MakeUpper();
  CString& MakeLower();
  CString& MakeReverse();

  // Trimming: no argument takes all white space, one unit that unit, a text
  // any of its units.
  CString& TrimLeft();
  CString& TrimLeft(char16_t ch);
  CString& TrimLeft(const char16_t* set);
  CString& TrimRight();
  CString& TrimRight(char16_t ch);
  CString& TrimRight(const char16_t* set);
  CString& Trim();
  CString& Trim(char16_t ch);
  CString& Trim(const char16_t* set);
  // The white space that the trims without an argument take: Unicode's,
  // the same in every locale.
  static bool IsWhiteSpace(char16_t ch) noexcept;

  // printf-style formatting on 16-bit text. %s and %c take 16-bit text and
  // units, %S narrow UTF-8 text; I64 and ll mark 64-bit integers.
  void Format(const char16_t* format, ...);
  void AppendFormat(const char16_t* format, ...);

  // Narrow text.
  std::string ToUtf8() const;
  static CString FromUtf8(std::string_view utf8);

  std::size_t Hash() const noexcept;

 private:
  void Reserve(int capacity, bool keep);
  void Assign(const char16_t* text, int length);
  void SetLength(int length) noexcept;
  bool IsInline() const noexcept { return m_data == m_inline; }

  char16_t* m_data;                        // m_inline or a heap block
  int m_length;                            // units, without the terminator
  int m_capacity;                          // units m_data can hold, without the terminator
  char16_t m_inline[kInlineCapacity + 1];  // short texts and their terminator
};

VKTCALC_API CString operator+(const CString& a, const CString& b);
VKTCALC_API CString operator+(const CString& a, const char16_t* b);
VKTCALC_API CString operator+(const char16_t* a, const CString& b);
VKTCALC_API CString operator+(const CString& a, char16_t b);
VKTCALC_API CString operator+(char16_t a, const CString& b);

VKTCALC_API bool operator==(const CString& a, const CString& b) noexcept;
VKTCALC_API bool operator==(const CString& a, const char16_t* b) noexcept;
inline bool operator==(const char16_t* a, const CString& b) noexcept { return b == a; }
inline bool operator!=(const CString& a, const CString& b) noexcept { return !(a == b); }
inline bool operator!=(const CString& a, const char16_t* b) noexcept { return !(a == b); }
inline bool operator!=(const char16_t* a, const CString& b) noexcept { return !(b == a); }
inline bool operator<(const CString& a, const CString& b) noexcept { return a.View() < b.View(); }
inline bool operator>(const CString& a, const CString& b) noexcept { return b < a; }
inline bool operator<=(const CString& a, const CString& b) noexcept { return !(b < a); }
inline bool operator>=(const CString& a, const CString& b) noexcept { return !(a < b); }

template <>
struct std::hash<CString> {
  std::size_t operator()(const CString& s) const noexcept { return s.Hash(); }
};
