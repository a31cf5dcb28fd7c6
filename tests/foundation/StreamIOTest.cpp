// Tests of the stream interfaces through the tests' in-memory pair: values read back, short reads fail.
#include "foundation/StreamIO.h"
#include <gtest/gtest.h>
#include "foundation/CMem.h"
#include "tests/support/MemoryStream.h"
TEST(StreamIO, RoundTripThroughTheInterfaces) {
  vkt::test::MemoryOutput sink;
  IStreamOutput* out = &sink;
  CString text(u"a\0\u4e2d", 3), back;
  CMem block, mem;
  block.Add(reinterpret_cast<BYTE*>(const_cast<char*>("xyz")), 3);
  EXPECT_TRUE(out->WriteByte(0xAB) && out->WriteWord(0x1234, 1) && out->WriteDWord(0xFFFFFFFEu, 1) &&
              out->WriteData("raw", 3) && out->WriteString(&text, 1) && out->WriteMem(&block, 1));
  ASSERT_TRUE(sink.bytes.size() == 1 + 2 + 4 + 3 + (4 + 6) + (4 + 3) && sink.bytes[1] == 0x34);  // low first
  vkt::test::MemoryInput source(sink.bytes);
  IStreamInput* in = &source;
  BYTE b = 0;
  WORD w = 0;
  int i = 0;  // what WriteDWord wrote, read signed
  char raw[3] = {};
  EXPECT_TRUE(in->ReadByte(&b) && in->ReadWord(&w, 1) && in->ReadInt(&i, 1) && in->ReadData(raw, 3) &&
              in->ReadString(&back) && in->ReadMem(&mem) && in->ReadRaw() == -1 && !in->ReadByte(&b));
  EXPECT_TRUE(b == 0xAB && w == 0x1234 && i == -2 && std::string(raw, 3) == "raw" && back == text);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(mem.GetBuf()), mem.GetSize()), "xyz");
  vkt::test::MemoryInput cut({5, 0, 0, 0, 'a', 0});  // a string of 5 units with 1 present
  EXPECT_TRUE(!cut.ReadString(&back) && back == text && cut.pos == 0);  // nothing changed
}
