// tests/support/MemoryStream.h: an in-memory stream pair for the tests.
//
// MemoryOutput writes into a byte vector and MemoryInput reads one back.
// Layout: little-endian integers; a string is a 32-bit unit count followed by
// its 16-bit units; a block is a 32-bit byte count followed by its bytes. The
// trailing int flag of the interface is ignored. A read that runs past the
// end fails and leaves both the output argument and the read position alone.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "foundation/StreamIO.h"

namespace vkt::test {

class MemoryOutput : public IStreamOutput {
 public:
  int WriteByte(BYTE value) override;
  int WriteWord(WORD value, int bFlag) override;
  int WriteDWord(DWORD value, int bFlag) override;
  int WriteData(const void* data, int size) override;
  int WriteString(CString* text, int bFlag) override;
  int WriteMem(CMem* block, int bFlag) override;

  std::vector<BYTE> bytes;  // everything written so far
};

class MemoryInput : public IStreamInput {
 public:
  MemoryInput() = default;
  explicit MemoryInput(std::vector<BYTE> data) : bytes(std::move(data)) {}

  int ReadRaw() override;
  int ReadByte(BYTE* out) override;
  int ReadWord(WORD* out, int bFlag) override;
  int ReadInt(int* out, int bFlag) override;
  int ReadDWord(DWORD* out, int bFlag) override;
  int ReadData(void* out, int size) override;
  int ReadString(CString* out) override;
  int ReadMem(CMem* out) override;

  std::size_t Remaining() const { return bytes.size() - pos; }

  std::vector<BYTE> bytes;  // the whole stream
  std::size_t pos = 0;      // next byte to read
};

}  // namespace vkt::test
