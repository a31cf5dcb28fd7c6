// tests/support/MemoryStream.h: an in-memory stream pair for the tests.
//
// MemoryOutput writes into a byte vector and MemoryInput reads one back.
// Layout: little-endian integers; a string is a 32-bit unit count followed by
// its 16-bit units; a block is a 32-bit byte count followed by its bytes. The
// trailing int flag of the interface is ignored. A read that runs past the
// end fails and leaves both the output argument and the read position alone.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "foundation/CMem.h"
#include "foundation/StreamIO.h"

namespace vkt::test {

class MemoryOutput : public IStreamOutput {
 public:
  int WriteByte(BYTE value) override { return Put(value, 1); }
  int WriteWord(WORD value, int) override { return Put(value, 2); }
  int WriteDWord(DWORD value, int) override { return Put(value, 4); }
  int WriteData(const void* data, int size) override {
    if (size < 0 || (size > 0 && data == nullptr)) return 0;
    const BYTE* p = static_cast<const BYTE*>(data);
    bytes.insert(bytes.end(), p, p + size);
    return 1;
  }
  int WriteString(CString* text, int) override {
    if (text == nullptr) return 0;
    Put(static_cast<DWORD>(text->GetLength()), 4);
    for (char16_t unit : text->View()) Put(unit, 2);
    return 1;
  }
  int WriteMem(CMem* block, int) override {
    return block != nullptr && Put(static_cast<DWORD>(block->GetSize()), 4) &&
           WriteData(block->GetBuf(), block->GetSize());
  }

  std::vector<BYTE> bytes;  // everything written so far

 private:
  int Put(DWORD value, int width) {
    for (int i = 0; i < width; ++i) bytes.push_back(static_cast<BYTE>(value >> (8 * i)));
    return 1;
  }
};

class MemoryInput : public IStreamInput {
 public:
  MemoryInput() = default;
  explicit MemoryInput(std::vector<BYTE> data) : bytes(std::move(data)) {}

  int ReadRaw() override { return pos < bytes.size() ? bytes[pos++] : -1; }
  int ReadByte(BYTE* out) override { return Get(out, 1); }
  int ReadWord(WORD* out, int) override { return Get(out, 2); }
  int ReadInt(int* out, int) override { return Get(out, 4); }
  int ReadDWord(DWORD* out, int) override { return Get(out, 4); }
  int ReadData(void* out, int size) override {
    if (size < 0 || (size > 0 && out == nullptr) || Remaining() < static_cast<std::size_t>(size)) return 0;
    if (size > 0) std::memcpy(out, bytes.data() + pos, static_cast<std::size_t>(size));
    pos += static_cast<std::size_t>(size);
    return 1;
  }
  int ReadString(CString* out) override {
    DWORD n = 0;
    if (out == nullptr || !At(0, 4, n) || (Remaining() - 4) / 2 < n) return 0;
    std::u16string units(n, u'\0');
    for (DWORD i = 0, unit = 0; i < n && At(4 + 2 * i, 2, unit); ++i) units[i] = static_cast<char16_t>(unit);
    pos += 4 + 2 * std::size_t{n};
    *out = CString(std::u16string_view(units));
    return 1;
  }
  int ReadMem(CMem* out) override {
    DWORD n = 0;
    if (out == nullptr || !At(0, 4, n) || Remaining() - 4 < n || n > 0x7FFFFFFFu) return 0;
    out->Set(bytes.data() + pos + 4, static_cast<int>(n));
    pos += 4 + std::size_t{n};
    return 1;
  }

  std::size_t Remaining() const { return bytes.size() - pos; }

  std::vector<BYTE> bytes;  // the whole stream
  std::size_t pos = 0;      // next byte to read

 private:
  // The little-endian value of `width` bytes that start `skip` bytes ahead.
  bool At(std::size_t skip, int width, DWORD& value) const {
    if (Remaining() < skip + static_cast<std::size_t>(width)) return false;
    value = 0;
    for (int i = width - 1; i >= 0; --i) value = value << 8 | bytes[pos + skip + static_cast<std::size_t>(i)];
    return true;
  }
  template <class T>
  int Get(T* out, int width) {
    DWORD value = 0;
    if (out == nullptr || !At(0, width, value)) return 0;
    *out = static_cast<T>(value);
    pos += static_cast<std::size_t>(width);
    return 1;
  }
};

}  // namespace vkt::test
