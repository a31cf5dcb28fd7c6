// Tests of the stream helpers of CUtilityCalc with the in-memory streams:
// the exact bytes each writer leaves, round trips, and readers on truncated
// or damaged input, which must stop at the first failure.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/MemoryStream.h"

namespace {

using vkt::test::MemoryInput;
using vkt::test::MemoryOutput;
using Bytes = std::vector<BYTE>;

Bytes Le32(DWORD value) {
  return {static_cast<BYTE>(value), static_cast<BYTE>(value >> 8), static_cast<BYTE>(value >> 16),
          static_cast<BYTE>(value >> 24)};
}

Bytes Cat(std::initializer_list<Bytes> parts) {
  Bytes out;
  for (const Bytes& part : parts) out.insert(out.end(), part.begin(), part.end());
  return out;
}

// The stream's own form of a string: unit count, then little-endian units.
Bytes StreamString(const char16_t* text) {
  CString s(text);
  MemoryOutput out;
  out.WriteString(&s, 1);
  return out.bytes;
}

Bytes Cut(const Bytes& bytes, std::size_t drop) {
  return Bytes(bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(drop));
}

TEST(StreamHelpers, PointRoundTripAndTruncation) {
  CPoint point;
  point.x = -5;
  point.y = 70000;
  MemoryOutput out;
  CUtilityCalc::SerializePoint(&out, point);
  EXPECT_EQ(out.bytes, Cat({Le32(0xFFFFFFFBu), Le32(70000)}));

  CPoint back;
  MemoryInput in(out.bytes);
  EXPECT_EQ(CUtilityCalc::DeserializePoint(&in, back), 1);
  EXPECT_EQ(back.x, -5);
  EXPECT_EQ(back.y, 70000);

  // Only x arrives: it is kept, y stays as it was.
  CPoint partial;
  partial.x = 1;
  partial.y = 2;
  MemoryInput shortIn(Cut(out.bytes, 1));
  EXPECT_EQ(CUtilityCalc::DeserializePoint(&shortIn, partial), 0);
  EXPECT_EQ(partial.x, -5);
  EXPECT_EQ(partial.y, 2);
  EXPECT_EQ(CUtilityCalc::DeserializePoint(nullptr, partial), 0);
}

TEST(StreamHelpers, DateTravelsAsItsSerial) {
  struct Case {
    double serial;
    COleDateTime::DateTimeStatus status;  // set on reading
  };
  const Case cases[] = {
      {45000.75, COleDateTime::valid},
      {-1.25, COleDateTime::valid},
      {0.0, COleDateTime::valid},
      {1e9, COleDateTime::invalid},  // beyond 9999: the status follows the serial
  };
  for (const Case& c : cases) {
    COleDateTime date;
    date.m_dt = c.serial;
    date.SetStatus(COleDateTime::null);  // not written
    MemoryOutput out;
    CUtilityCalc::SerializeDate(&out, date);
    ASSERT_EQ(out.bytes.size(), 8u) << c.serial;
    Bytes raw(8);
    std::memcpy(raw.data(), &c.serial, 8);
    EXPECT_EQ(out.bytes, raw) << c.serial;

    COleDateTime back;
    MemoryInput in(out.bytes);
    EXPECT_EQ(CUtilityCalc::DeserializeDate(&in, back), 1) << c.serial;
    EXPECT_EQ(back.GetStatus(), c.status) << c.serial;
    EXPECT_EQ(back.m_dt, c.serial);  // assigned whatever its status
  }
  COleDateTime untouched(2020, 1, 2, 3, 4, 5);
  const double before = untouched.m_dt;
  MemoryInput shortIn(Bytes(7, 0));
  EXPECT_EQ(CUtilityCalc::DeserializeDate(&shortIn, untouched), 0);
  EXPECT_EQ(untouched.m_dt, before);
}

TEST(StreamHelpers, HandlesRoundTripInEightBytes) {
  int anchor = 0;
  void* handles[] = {&anchor, nullptr};
  for (void* handle : handles) {
    MemoryOutput out;
    CUtilityCalc::SerializeHandle(&out, handle);
    ASSERT_EQ(out.bytes.size(), 8u);
    void* back = &out;
    MemoryInput in(out.bytes);
    EXPECT_EQ(CUtilityCalc::DeserializeHandle(&in, back), 1);
    EXPECT_EQ(back, handle);
  }
  void* kept = &anchor;
  MemoryInput shortIn(Bytes(4, 0));
  EXPECT_EQ(CUtilityCalc::DeserializeHandle(&shortIn, kept), 0);
  EXPECT_EQ(kept, &anchor);
}

TEST(StreamHelpers, ByteArray) {
  CByteArray items;
  for (BYTE b : {1, 0, 255}) items.Add(b);
  MemoryOutput out;
  CUtilityCalc::SerializeByteArray(&out, items);
  EXPECT_EQ(out.bytes, Cat({Le32(3), Bytes{1, 0, 255}}));

  CByteArray back;
  back.Add(9);
  MemoryInput in(out.bytes);
  EXPECT_EQ(CUtilityCalc::DeserializeByteArray(&in, back), 1);
  EXPECT_EQ(Bytes(back.begin(), back.end()), (Bytes{1, 0, 255}));

  // A count of 0: an empty array and nothing more read.
  MemoryInput empty(Cat({Le32(0), Bytes{7}}));
  EXPECT_EQ(CUtilityCalc::DeserializeByteArray(&empty, back), 1);
  EXPECT_TRUE(back.IsEmpty());
  EXPECT_EQ(empty.Remaining(), 1u);

  MemoryOutput none;
  CUtilityCalc::SerializeByteArray(&none, back);
  EXPECT_EQ(none.bytes, Le32(0));

  // The bytes fall short: the array has its size, the read fails.
  MemoryInput shortIn(Cut(out.bytes, 1));
  EXPECT_EQ(CUtilityCalc::DeserializeByteArray(&shortIn, back), 0);
  EXPECT_EQ(back.GetSize(), 3);
  // A count no array can hold fails before anything changes.
  CByteArray kept;
  kept.Add(4);
  MemoryInput huge(Le32(0x80000000u));
  EXPECT_EQ(CUtilityCalc::DeserializeByteArray(&huge, kept), 0);
  EXPECT_EQ(kept.GetSize(), 1);
}

TEST(StreamHelpers, HandleArray) {
  int a = 0;
  int b = 0;
  CArray<void*, void*> items;
  items.Add(&a);
  items.Add(nullptr);
  items.Add(&b);
  MemoryOutput out;
  CUtilityCalc::SerializeHandleArray(&out, items);
  ASSERT_EQ(out.bytes.size(), 4u + 3 * 8);
  EXPECT_EQ(Bytes(out.bytes.begin(), out.bytes.begin() + 4), Le32(3));

  CArray<void*, void*> back;
  MemoryInput in(out.bytes);
  EXPECT_EQ(CUtilityCalc::DeserializeHandleArray(&in, back), 1);
  ASSERT_EQ(back.GetSize(), 3);
  EXPECT_EQ(back[0], &a);
  EXPECT_EQ(back[1], nullptr);
  EXPECT_EQ(back[2], &b);

  // Two of three handles arrive: the size is right, the third is null.
  CArray<void*, void*> partial;
  MemoryInput shortIn(Cut(out.bytes, 8));
  EXPECT_EQ(CUtilityCalc::DeserializeHandleArray(&shortIn, partial), 0);
  ASSERT_EQ(partial.GetSize(), 3);
  EXPECT_EQ(partial[0], &a);
  EXPECT_EQ(partial[2], nullptr);

  MemoryInput negative(Le32(0xFFFFFFFFu));  // ReadInt gives -1
  EXPECT_EQ(CUtilityCalc::DeserializeHandleArray(&negative, back), 0);
  EXPECT_EQ(back.GetSize(), 3);
}

TEST(StreamHelpers, UIntArrayCountWidths) {
  CUIntArray items;
  for (UINT v : {1u, 0xDEADBEEFu, 0u}) items.Add(v);
  const Bytes elements = Cat({Le32(1), Le32(0xDEADBEEFu), Le32(0)});  // raw, this machine's order
  struct Case {
    int width;
    Bytes count;
  };
  const Case cases[] = {
      {1, {3}},
      {2, {3, 0}},
      {4, Le32(3)},
      {0, Le32(3)},  // any other width is 32 bits
  };
  for (const Case& c : cases) {
    MemoryOutput out;
    CUtilityCalc::SerializeUIntArray(&out, items, c.width);
    EXPECT_EQ(out.bytes, Cat({c.count, elements})) << c.width;

    CUIntArray back;
    MemoryInput in(out.bytes);
    EXPECT_EQ(CUtilityCalc::DeserializeUIntArray(&in, back, c.width), 1) << c.width;
    EXPECT_EQ(std::vector<UINT>(back.begin(), back.end()),
              (std::vector<UINT>{1u, 0xDEADBEEFu, 0u}))
        << c.width;
    EXPECT_EQ(in.Remaining(), 0u) << c.width;
  }

  CUIntArray empty;
  MemoryOutput out;
  CUtilityCalc::SerializeUIntArray(&out, empty, 4);
  EXPECT_EQ(out.bytes, Le32(0));
  CUIntArray back;
  back.Add(5);
  MemoryInput in(out.bytes);
  EXPECT_EQ(CUtilityCalc::DeserializeUIntArray(&in, back, 4), 1);
  EXPECT_TRUE(back.IsEmpty());
}

TEST(StreamHelpers, UIntArrayTooLargeForItsWidth) {
  CUIntArray items;
  items.SetSize(257);
  MemoryOutput out;
  CUtilityCalc::SerializeUIntArray(&out, items, 1);
  // The count is cut to 1, yet all 257 elements follow.
  EXPECT_EQ(out.bytes.size(), 1u + 257 * 4);
  EXPECT_EQ(out.bytes[0], 1);
  CUIntArray back;
  MemoryInput in(out.bytes);
  EXPECT_EQ(CUtilityCalc::DeserializeUIntArray(&in, back, 1), 1);
  EXPECT_EQ(back.GetSize(), 1);  // and the rest cannot be read back
  EXPECT_EQ(in.Remaining(), 256u * 4);
}

TEST(StreamHelpers, UIntArrayTruncated) {
  CUIntArray back;
  MemoryInput noCount(Bytes{3});
  EXPECT_EQ(CUtilityCalc::DeserializeUIntArray(&noCount, back, 2), 0);
  EXPECT_TRUE(back.IsEmpty());

  MemoryInput shortIn(Cat({Le32(3), Le32(7), Bytes{1, 2}}));
  EXPECT_EQ(CUtilityCalc::DeserializeUIntArray(&shortIn, back, 4), 0);
  ASSERT_EQ(back.GetSize(), 3);
  EXPECT_EQ(back[0], 7u);
  EXPECT_EQ(back[1], 0u);
}

TEST(StreamHelpers, StringArrayWithAndWithoutCount) {
  CStringArray items;
  items.Add(CString(u"ab"));
  items.Add(CString(u""));
  items.Add(CString(u"\u4e2d"));
  MemoryOutput counted;
  CUtilityCalc::SerializeStringArray(&counted, items, 1);
  EXPECT_EQ(counted.bytes,
            Cat({Le32(3), StreamString(u"ab"), StreamString(u""), StreamString(u"\u4e2d")}));
  MemoryOutput bare;
  CUtilityCalc::SerializeStringArray(&bare, items, 0);
  EXPECT_EQ(bare.bytes, Bytes(counted.bytes.begin() + 4, counted.bytes.end()));

  CStringArray back;
  back.Add(CString(u"old"));
  MemoryInput in(counted.bytes);
  EXPECT_EQ(CUtilityCalc::DeserializeStringArray(&in, back, -1), 1);
  ASSERT_EQ(back.GetSize(), 3);
  EXPECT_EQ(back[0], CString(u"ab"));
  EXPECT_EQ(back[2], CString(u"\u4e2d"));
}

TEST(StreamHelpers, StringArrayGivenCountKeepsALargerArray) {
  CStringArray back;
  for (const char16_t* s : {u"1", u"2", u"3", u"4", u"5"}) back.Add(CString(s));
  MemoryInput in(Cat({StreamString(u"x"), StreamString(u"y")}));
  EXPECT_EQ(CUtilityCalc::DeserializeStringArray(&in, back, 2), 1);
  ASSERT_EQ(back.GetSize(), 5);
  EXPECT_EQ(back[0], CString(u"x"));
  EXPECT_EQ(back[1], CString(u"y"));
  EXPECT_EQ(back[2], CString(u"3"));

  CStringArray grown;
  MemoryInput one(StreamString(u"z"));
  EXPECT_EQ(CUtilityCalc::DeserializeStringArray(&one, grown, 1), 1);
  ASSERT_EQ(grown.GetSize(), 1);

  MemoryInput nothing(Bytes{});
  EXPECT_EQ(CUtilityCalc::DeserializeStringArray(&nothing, grown, 0), 1);  // nothing expected
  EXPECT_EQ(grown.GetSize(), 1);
}

TEST(StreamHelpers, StringArrayFailures) {
  CStringArray back;
  back.Add(CString(u"keep"));
  MemoryInput negative(Le32(0xFFFFFFFEu));
  EXPECT_EQ(CUtilityCalc::DeserializeStringArray(&negative, back, -1), 0);
  EXPECT_EQ(back.GetSize(), 1);
  MemoryInput noCount(Bytes{1, 0});
  EXPECT_EQ(CUtilityCalc::DeserializeStringArray(&noCount, back, -1), 0);
  EXPECT_EQ(back.GetSize(), 1);

  // The second string is cut: the array has its size, the first string.
  MemoryInput shortIn(Cat({Le32(2), StreamString(u"a"), Cut(StreamString(u"bc"), 1)}));
  EXPECT_EQ(CUtilityCalc::DeserializeStringArray(&shortIn, back, -1), 0);
  ASSERT_EQ(back.GetSize(), 2);
  EXPECT_EQ(back[0], CString(u"a"));
  EXPECT_EQ(back[1], CString(u""));
}

TEST(StreamHelpers, MapStringToString) {
  CMapStringToString map;
  MemoryOutput empty;
  CUtilityCalc::SerializeMapStringToString(map, &empty);
  EXPECT_EQ(empty.bytes, Le32(0));

  map[CString(u"k1")] = CString(u"v1");
  map[CString(u"k2")] = CString(u"");
  MemoryOutput out;
  CUtilityCalc::SerializeMapStringToString(map, &out);
  // Read back in the stream's order and compared with the map's walk.
  MemoryInput in(out.bytes);
  DWORD count = 0;
  ASSERT_TRUE(in.ReadDWord(&count, 1));
  EXPECT_EQ(count, 2u);
  POSITION position = map.GetStartPosition();
  while (position != nullptr) {
    CString key;
    CString value;
    map.GetNextAssoc(position, key, value);
    CString readKey;
    CString readValue;
    ASSERT_TRUE(in.ReadString(&readKey));
    ASSERT_TRUE(in.ReadString(&readValue));
    EXPECT_EQ(readKey, key);
    EXPECT_EQ(readValue, value);
  }
  EXPECT_EQ(in.Remaining(), 0u);
}

TEST(StreamHelpers, ReadChar) {
  struct Case {
    Bytes bytes;
    char16_t expected;
  };
  const Case cases[] = {
      {{0x2D, 0x4E}, u'\u4e2d'},  // low byte first
      {{0x41, 0x00, 0x42}, u'A'},
      {{0x41}, 0},                // one byte only
      {{}, 0},
  };
  for (const Case& c : cases) {
    MemoryInput in(c.bytes);
    EXPECT_EQ(CUtilityCalc::readChar(&in), c.expected) << c.bytes.size();
  }
  EXPECT_EQ(CUtilityCalc::readChar(nullptr), 0);
}

}  // namespace
