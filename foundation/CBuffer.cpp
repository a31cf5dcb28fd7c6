// foundation/CBuffer.cpp: the terminated text buffer and its conversions
// between UTF-16 and UTF-8.
//
// Every change goes through CMem and is followed by Terminate, so the zero
// bytes behind the content survive appends, inserts, deletions and moves.
#include "foundation/CBuffer.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/Utf.h"

namespace {

const char16_t kEmptyText[1] = {0};

int UnitCount(const char16_t* text) {
  int n = 0;
  while (text[n] != 0 && n < INT_MAX) ++n;
  return n;
}

}  // namespace

CBuffer::CBuffer(int size) : CMem(size), m_nGrowBy(0) { Terminate(); }

CBuffer::~CBuffer() = default;

int CBuffer::Terminate() {
  // Two zero bytes end a wide text; an odd byte count needs a third so that
  // the unit straddling the end and the next one both read as ending it.
  int need = (nSize % 2 == 0) ? 2 : 3;
  if (nSize > INT_MAX - need) return 0;
  if (pBuf == nullptr || nAlloc < nSize + need) {
    if (!CMem::Reserve(nSize + need)) return 0;
  }
  std::memset(pBuf + nSize, 0, static_cast<std::size_t>(need));
  return 1;
}

int CBuffer::Set(BYTE* data, int size) {
  int ok = CMem::Set(data, size);
  return Terminate() && ok;
}

int CBuffer::Add(BYTE value) {
  int ok = CMem::Add(value);
  return Terminate() && ok;
}

int CBuffer::Add(WORD value) {
  int ok = CMem::Add(value);
  return Terminate() && ok;
}

int CBuffer::Add(BYTE* data, int size) {
  int ok = CMem::Add(data, size);
  return Terminate() && ok;
}

int CBuffer::Insert(BYTE* data, int pos, int size) {
  int ok = CMem::Insert(data, pos, size);
  return Terminate() && ok;
}

int CBuffer::MoveIn(CMem* from) {
  int ok = CMem::MoveIn(from);
  return Terminate() && ok;
}

int CBuffer::MoveIn(BYTE* data, int size) {
  int ok = CMem::MoveIn(data, size);
  return Terminate() && ok;
}

int CBuffer::Reserve(int size) {
  if (pBuf != nullptr && nAlloc >= size) return 1;
  if (m_nGrowBy > 0 && pBuf != nullptr && nAlloc <= INT_MAX - m_nGrowBy && size < nAlloc + m_nGrowBy)
    size = nAlloc + m_nGrowBy;
  return CMem::Reserve(size);
}

void CBuffer::Clear() {
  CMem::Clear();
  Terminate();
}

void CBuffer::Trim() {
  // The terminator counts as content here, so that trimming never leaves a
  // block that the next Terminate has to grow again.
  if (!Terminate()) return;
  int need = (nSize % 2 == 0) ? 2 : 3;
  nSize += need;
  CMem::Trim();
  nSize -= need;
}

int CBuffer::SetText(CString& text) { return Set(text); }

int CBuffer::AddText(const char16_t* text, int len) {
  if (text == nullptr) return len <= 0 ? 1 : 0;
  if (len < 0) len = UnitCount(text);
  if (len > INT_MAX / 2) return 0;
  return Add(reinterpret_cast<BYTE*>(const_cast<char16_t*>(text)), len * 2);
}

int CBuffer::AddText(CString& text) {
  return AddText(text.GetString(), text.GetLength());
}

void CBuffer::SetGrowBy(int bytes) { m_nGrowBy = bytes > 0 ? bytes : 0; }

int CBuffer::DeleteBytes(int pos, int count) {
  if (pos < 0 || pos >= nSize || count <= 0) return 0;
  if (count > nSize - pos) count = nSize - pos;
  std::memmove(pBuf + pos, pBuf + pos + count, static_cast<std::size_t>(nSize - pos - count));
  std::memset(pBuf + nSize - count, 0, static_cast<std::size_t>(count));
  nSize -= count;
  Terminate();
  return 1;
}

const char16_t* CBuffer::GetStr() {
  if (pBuf == nullptr) return kEmptyText;
  return reinterpret_cast<const char16_t*>(pBuf);
}

int CBuffer::Set(const char16_t* text) {
  if (text == nullptr) return Set(static_cast<BYTE*>(nullptr), 0);
  int len = UnitCount(text);
  if (len > INT_MAX / 2) return 0;
  return Set(reinterpret_cast<BYTE*>(const_cast<char16_t*>(text)), len * 2);
}

int CBuffer::Set(CString& text) {
  int len = text.GetLength();
  if (len > INT_MAX / 2) return 0;
  return Set(reinterpret_cast<BYTE*>(const_cast<char16_t*>(text.GetString())), len * 2);
}

int CBuffer::UTF16ToUTF8() {
  std::u16string_view wide(GetStr(), static_cast<std::size_t>(nSize / 2));
  std::string bytes = vkt::platform::Utf16ToUtf8(wide);
  if (bytes.size() > static_cast<std::size_t>(INT_MAX - 4)) return 0;
  return Set(reinterpret_cast<BYTE*>(bytes.data()), static_cast<int>(bytes.size()));
}

int CBuffer::UTF8ToUTF16() {
  const char* bytes = pBuf == nullptr ? "" : reinterpret_cast<const char*>(pBuf);
  std::string_view narrow(bytes, static_cast<std::size_t>(nSize));
  std::u16string wide = vkt::platform::Utf8ToUtf16(narrow);
  if (wide.size() > static_cast<std::size_t>(INT_MAX / 2 - 4)) return 0;
  return Set(reinterpret_cast<BYTE*>(wide.data()), static_cast<int>(wide.size() * 2));
}

int CBuffer::UTF16ToAnsi() { return UTF16ToUTF8(); }

CBufferEx::CBufferEx(int size) : CBuffer(size) {}

CBufferEx::~CBufferEx() = default;
