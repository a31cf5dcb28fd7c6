// toolbox/TextCleaning.cpp: making text fit for output: cutting it to a
// width, evening out line ends, and replacing or dropping the characters an
// export cannot hold. Each pass is linear in the text.
#include <string>

#include "CUtilityCalc.h"
#include "foundation/CBuffer.h"
#include "platform/WideRuntime.h"

namespace {

constexpr char16_t kCR = u'\r';
constexpr char16_t kLF = u'\n';

// U+2124F has no place in the code pages exports are read with; the
// character U+572E stands in for it.
constexpr char16_t kBadHigh = 0xD844;
constexpr char16_t kBadLow = 0xDE4F;
constexpr char16_t kStandIn = 0x572E;

// Writable and process-wide: a host may change it before other threads run.
char16_t g_invalidChars[] = {0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x0B, 0x0C, 0x0E, 0x0F,
                             0x10, 0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18, 0x19,
                             0x1A, 0x1B, 0x1C, 0x1D, 0x1E, 0x1F, 0x00};

bool IsListed(const char16_t* list, char16_t ch) {
  for (; *list != 0; ++list)
    if (*list == ch) return true;
  return false;
}

}  // namespace

int CUtilityCalc::StrChrs(CString& text, WORD c) {
  int count = 0;
  for (char16_t ch : text.View()) count += ch == c ? 1 : 0;
  return count;
}

int CUtilityCalc::LimitString(CString& text, int nLimit) {
  const int length = text.GetLength();
  if (nLimit == 0) return 0;
  if (nLimit > 0) {
    if (length <= nLimit) return 0;
    text.Delete(nLimit, length - nLimit);
    return 1;
  }
  // Display columns: a unit below 129 takes one, any other two. Kept wide so
  // that INT_MIN has its magnitude.
  const long long columns = -static_cast<long long>(nLimit);
  long long used = 0;
  for (int i = 0; i < length; ++i) {
    used += text[i] < 129 ? 1 : 2;
    if (used > columns) {
      text.Delete(i, length - i);
      return 1;
    }
  }
  return 0;
}

void CUtilityCalc::NormalizeEnter(CString& text) {
  std::u16string out;
  out.reserve(static_cast<std::size_t>(text.GetLength()) + 16);
  const int length = text.GetLength();
  for (int i = 0; i < length; ++i) {
    const char16_t ch = text[i];
    if (ch == kCR) {
      if (i + 1 < length && text[i + 1] == kLF) ++i;  // a CR LF stays as it is
      out += u"\r\n";
    } else if (ch == kLF) {
      out += u"\r\n";
    } else {
      out.push_back(ch);
    }
  }
  if (static_cast<int>(out.size()) != length) text = CString(std::u16string_view(out));
}

char16_t* CUtilityCalc::GetInvalidStringChar() { return g_invalidChars; }

// One pass with a read and a write position. A stand-in never starts or ends
// a pair, so no new pair can form behind a replacement, and a pass that goes
// on from the replaced position gives what a search restarted from the front
// would, in linear time. The units freed at the end go with one deletion,
// which moves a trailing odd byte down and keeps the terminator.
int CUtilityCalc::ReplaceInvalidStringChar(CBuffer& text) {
  if (text.pBuf == nullptr || text.nSize <= 0) return 0;
  const int n = text.nSize / 2;
  char16_t* p = reinterpret_cast<char16_t*>(text.pBuf);
  int write = 0;
  for (int read = 0; read < n; ++read) {
    if (p[read] == kBadHigh && read + 1 < n && p[read + 1] == kBadLow) {
      p[write++] = kStandIn;
      ++read;
    } else {
      p[write++] = p[read];
    }
  }
  if (write < n) text.DeleteBytes(write * 2, (n - write) * 2);
  return text.GetSize();
}

int CUtilityCalc::ReplaceInvalidStringChar_ExportExcel(CString& text, WORD replacement) {
  const char16_t* list = GetInvalidStringChar();
  const char16_t with = static_cast<char16_t>(replacement);
  std::u16string kept;
  kept.reserve(static_cast<std::size_t>(text.GetLength()));
  int count = 0;
  for (char16_t ch : text.View()) {
    if (!IsListed(list, ch)) {
      kept.push_back(ch);
      continue;
    }
    ++count;
    if (with != 0) kept.push_back(with);
  }
  if (count > 0) text = CString(std::u16string_view(kept));
  return count;
}

int CUtilityCalc::IsMatchStr(CString& text, CString& pattern, WORD mode) {
  if (text.IsEmpty()) return 0;
  if (pattern.IsEmpty()) return mode == u'*' ? 1 : 0;
  if (mode == u'*') return vkt::_wcsicmp(text.Left(pattern.GetLength()), pattern) == 0 ? 1 : 0;
  return vkt::_wcsicmp(text, pattern) == 0 ? 1 : 0;
}

void CUtilityCalc::SafeDelete(CString& text, int start, int count) {
  const int length = text.GetLength();
  if (start < 0 || count < 1 || start >= length) return;
  text.Delete(start, count < length - start ? count : length - start);
}
