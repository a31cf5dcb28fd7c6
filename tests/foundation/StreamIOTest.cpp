// tests/foundation/StreamIOTest.cpp: the stream interfaces through the
// tests' in-memory pair: every value written reads back, in the declared
// byte order, and reads past the end fail without side effects.
#include "foundation/StreamIO.h"

#include <gtest/gtest.h>

#include "foundation/CMem.h"
#include "tests/support/MemoryStream.h"

namespace {

using vkt::test::MemoryInput;
using vkt::test::MemoryOutput;

TEST(StreamIO, RoundTripThroughTheInterfaces) {
  MemoryOutput sink;
  IStreamOutput* out = &sink;
  CString text(u"a\0\u4e2d", 3);
  CMem block;
  block.Add(reinterpret_cast<BYTE*>(const_cast<char*>("xyz")), 3);
  EXPECT_EQ(out->WriteByte(0xAB), 1);
  EXPECT_EQ(out->WriteWord(0x1234, 1), 1);
  EXPECT_EQ(out->WriteDWord(0xFFFFFFFEu, 1), 1);
  EXPECT_EQ(out->WriteData("raw", 3), 1);
  EXPECT_EQ(out->WriteString(&text, 1), 1);
  EXPECT_EQ(out->WriteMem(&block, 1), 1);
  ASSERT_EQ(sink.bytes.size(), 1u + 2 + 4 + 3 + (4 + 6) + (4 + 3));
  EXPECT_EQ(sink.bytes[1], 0x34);  // low byte first
  EXPECT_EQ(sink.bytes[2], 0x12);

  MemoryInput source(sink.bytes);
  IStreamInput* in = &source;
  BYTE b = 0;
  WORD w = 0;
  int i = 0;
  char raw[3] = {};
  CString back;
  CMem mem;
  EXPECT_EQ(in->ReadByte(&b), 1);
  EXPECT_EQ(b, 0xAB);
  EXPECT_EQ(in->ReadWord(&w, 1), 1);
  EXPECT_EQ(w, 0x1234);
  EXPECT_EQ(in->ReadInt(&i, 1), 1);  // what WriteDWord wrote, read signed
  EXPECT_EQ(i, -2);
  EXPECT_EQ(in->ReadData(raw, 3), 1);
  EXPECT_EQ(std::string(raw, 3), "raw");
  EXPECT_EQ(in->ReadString(&back), 1);
  EXPECT_EQ(back, text);
  EXPECT_EQ(in->ReadMem(&mem), 1);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(mem.GetBuf()), 3), "xyz");
  EXPECT_EQ(in->ReadRaw(), -1);
  EXPECT_EQ(in->ReadByte(&b), 0);
}

TEST(StreamIO, ShortReadsFailAndKeepThePosition) {
  MemoryInput in({5, 0, 0, 0, 'a', 0});  // a string of 5 units with 1 present
  CString s(u"kept");
  EXPECT_EQ(in.ReadString(&s), 0);
  EXPECT_EQ(s, u"kept");
  EXPECT_EQ(in.pos, 0u);
  DWORD d = 0;
  EXPECT_EQ(in.ReadDWord(&d, 1), 1);
  EXPECT_EQ(d, 5u);
  EXPECT_EQ(in.ReadDWord(&d, 1), 0);
  EXPECT_EQ(in.ReadRaw(), 'a');
  EXPECT_EQ(in.ReadRaw(), 0);
  EXPECT_EQ(in.ReadRaw(), -1);
}

}  // namespace
