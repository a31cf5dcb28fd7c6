// tests/support/MemoryStream.cpp: the in-memory stream pair of the tests,
// little-endian, with counted strings and blocks.
#include "tests/support/MemoryStream.h"

#include <cstring>
#include <utility>

#include "foundation/CMem.h"

namespace vkt::test {

namespace {

void PutLE(std::vector<BYTE>& bytes, DWORD value, int width) {
  for (int i = 0; i < width; ++i) bytes.push_back(static_cast<BYTE>(value >> (8 * i)));
}

}  // namespace

int MemoryOutput::WriteByte(BYTE value) {
  bytes.push_back(value);
  return 1;
}

int MemoryOutput::WriteWord(WORD value, int) {
  PutLE(bytes, value, 2);
  return 1;
}

int MemoryOutput::WriteDWord(DWORD value, int) {
  PutLE(bytes, value, 4);
  return 1;
}

int MemoryOutput::WriteData(const void* data, int size) {
  if (size < 0 || (size > 0 && data == nullptr)) return 0;
  const BYTE* p = static_cast<const BYTE*>(data);
  bytes.insert(bytes.end(), p, p + size);
  return 1;
}

int MemoryOutput::WriteString(CString* text, int) {
  if (text == nullptr) return 0;
  int n = text->GetLength();
  PutLE(bytes, static_cast<DWORD>(n), 4);
  const char16_t* s = text->GetString();
  for (int i = 0; i < n; ++i) PutLE(bytes, s[i], 2);
  return 1;
}

int MemoryOutput::WriteMem(CMem* block, int) {
  if (block == nullptr) return 0;
  int n = block->GetSize();
  PutLE(bytes, static_cast<DWORD>(n), 4);
  if (n > 0) bytes.insert(bytes.end(), block->GetBuf(), block->GetBuf() + n);
  return 1;
}

int MemoryInput::ReadRaw() {
  if (pos >= bytes.size()) return -1;
  return bytes[pos++];
}

int MemoryInput::ReadByte(BYTE* out) {
  if (out == nullptr || Remaining() < 1) return 0;
  *out = bytes[pos++];
  return 1;
}

int MemoryInput::ReadWord(WORD* out, int) {
  if (out == nullptr || Remaining() < 2) return 0;
  *out = static_cast<WORD>(bytes[pos] | (bytes[pos + 1] << 8));
  pos += 2;
  return 1;
}

int MemoryInput::ReadDWord(DWORD* out, int) {
  if (out == nullptr || Remaining() < 4) return 0;
  DWORD v = 0;
  for (int i = 3; i >= 0; --i) v = (v << 8) | bytes[pos + static_cast<std::size_t>(i)];
  pos += 4;
  *out = v;
  return 1;
}

int MemoryInput::ReadInt(int* out, int bFlag) {
  DWORD v = 0;
  if (out == nullptr || !ReadDWord(&v, bFlag)) return 0;
  *out = static_cast<int>(v);
  return 1;
}

int MemoryInput::ReadData(void* out, int size) {
  if (size < 0 || (size > 0 && out == nullptr)) return 0;
  if (Remaining() < static_cast<std::size_t>(size)) return 0;
  if (size > 0) std::memcpy(out, bytes.data() + pos, static_cast<std::size_t>(size));
  pos += static_cast<std::size_t>(size);
  return 1;
}

int MemoryInput::ReadString(CString* out) {
  std::size_t start = pos;
  DWORD n = 0;
  if (out == nullptr || !ReadDWord(&n, 1)) return 0;
  if (Remaining() / 2 < n) {
    pos = start;
    return 0;
  }
  CString text;
  char16_t* units = text.GetBufferSetLength(static_cast<int>(n));
  for (DWORD i = 0; i < n; ++i, pos += 2)
    units[i] = static_cast<char16_t>(bytes[pos] | (bytes[pos + 1] << 8));
  text.ReleaseBuffer(static_cast<int>(n));
  *out = std::move(text);
  return 1;
}

int MemoryInput::ReadMem(CMem* out) {
  std::size_t start = pos;
  DWORD n = 0;
  if (out == nullptr || !ReadDWord(&n, 1)) return 0;
  if (Remaining() < n || n > 0x7FFFFFFFu) {
    pos = start;
    return 0;
  }
  out->Set(bytes.data() + pos, static_cast<int>(n));
  pos += n;
  return 1;
}

}  // namespace vkt::test
