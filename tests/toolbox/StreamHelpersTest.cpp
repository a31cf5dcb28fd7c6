// tests/toolbox/StreamHelpersTest.cpp: the stream helpers of CUtilityCalc with the in-memory streams:
// the exact bytes each writer leaves, reading them back, and readers on cut or damaged input.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/MemoryStream.h"

namespace {

using Bytes = std::vector<BYTE>;
using vkt::test::MemoryOutput;

Bytes operator+(Bytes a, const Bytes& b) { a.insert(a.end(), b.begin(), b.end()); return a; }

// Words of 32 bits, low byte first; a value's bytes in this machine's order; a handle's 8 bytes on
// any platform; and the stream's own form of a string.
Bytes Le(std::initializer_list<DWORD> words) {
  MemoryOutput out;
  for (DWORD word : words) out.WriteDWord(word, 1);
  return out.bytes;
}
template <class T> Bytes Raw(T v) { Bytes out(sizeof v); std::memcpy(out.data(), &v, sizeof v); return out; }
Bytes U64(std::uint64_t value) { return Raw(value); }
Bytes Str(CString text) { MemoryOutput out; out.WriteString(&text, 1); return out.bytes; }

std::string Item(std::uint64_t value) { return std::to_string(value); }
std::string Item(void* handle) { return std::to_string(reinterpret_cast<std::uintptr_t>(handle)); }
std::string Item(const CString& text) { return text.ToUtf8(); }
void* H(std::uintptr_t value) { return reinterpret_cast<void*>(value); }
template <class Array>
std::string Join(Array& items) {
  std::string out;
  for (int i = 0; i < items.GetSize(); ++i) out += (i > 0 ? "," : "") + Item(items[i]);
  return out;
}
template <class Array, class T>
Array& Fill(Array& items, std::initializer_list<T> values, int size) {
  for (T value : values) items.Add(value);
  items.SetSize(size);
  return items;
}

// Runs the helpers of `kind` ("uint4": UINT arrays with a count of width 4; "strings2": string arrays
// written without a count and read with nCount 2): writes the kind's sample, and reads `bytes` into an
// object that held old values. Gives the bytes written and "answer | what the object holds | bytes
// left". A trailing '-' empties the sample, '+' makes it 257 long; a leading '!' takes null streams.
std::pair<Bytes, std::string> Trip(std::string kind, const Bytes& bytes) {
  MemoryOutput written;
  vkt::test::MemoryInput stream(bytes);
  IStreamOutput* out = kind[0] == '!' ? nullptr : &written;
  IStreamInput* in = kind[0] == '!' ? nullptr : &stream;
  kind.erase(0, kind[0] == '!' ? 1 : 0);
  const int size = kind.back() == '-' ? 0 : kind.back() == '+' ? 257 : 3;
  int answer = 0;
  std::ostringstream held;
  held.precision(12);
  if (kind == "point") {
    CPoint point(-5, 70000), back(1, 2);
    CUtilityCalc::SerializePoint(out, point);
    answer = CUtilityCalc::DeserializePoint(in, back);
    held << back.x << "," << back.y;
  } else if (kind == "date") {
    COleDateTime date(45000.75), back(1.5);
    date.SetStatus(COleDateTime::null);  // not written
    CUtilityCalc::SerializeDate(out, date);
    answer = CUtilityCalc::DeserializeDate(in, back);
    held << back.m_dt << " status " << back.GetStatus();
  } else if (kind == "handle") {
    void* back = H(9);
    CUtilityCalc::SerializeHandle(out, H(77));
    answer = CUtilityCalc::DeserializeHandle(in, back);
    held << Item(back);
  } else if (kind.starts_with("bytes")) {
    CByteArray items, back;
    CUtilityCalc::SerializeByteArray(out, Fill(items, {BYTE{1}, BYTE{0}, BYTE{255}}, size));
    answer = CUtilityCalc::DeserializeByteArray(in, Fill(back, {BYTE{9}}, 1));
    held << Join(back);
  } else if (kind == "handles") {
    CArray<void*, void*> items, back;
    CUtilityCalc::SerializeHandleArray(out, Fill(items, {H(16), H(0), H(32)}, size));
    answer = CUtilityCalc::DeserializeHandleArray(in, Fill(back, {H(5)}, 1));
    held << Join(back);
  } else if (kind.starts_with("uint")) {
    CUIntArray items, back;
    CUtilityCalc::SerializeUIntArray(out, Fill(items, {1u, 0xDEADBEEFu, 0u}, size), kind[4] - '0');
    answer = CUtilityCalc::DeserializeUIntArray(in, Fill(back, {5u}, 1), kind[4] - '0');
    held << Join(back);
  } else if (kind.starts_with("strings")) {
    CStringArray items, back;
    const int nCount = kind.size() > 7 ? std::stoi(kind.substr(7)) : -1;
    CUtilityCalc::SerializeStringArray(out, Fill(items, {u"ab", u"", u"\u4e2d"}, size), nCount < 0);
    answer = CUtilityCalc::DeserializeStringArray(in, Fill(back, {u"p", u"q", u"r"}, 3), nCount);
    held << Join(back);
  } else if (kind.starts_with("map")) {
    CMapStringToString map;
    if (size > 0) map[CString(u"k")] = CString(u"v");
    CUtilityCalc::SerializeMapStringToString(map, out);
  } else {
    answer = CUtilityCalc::readChar(in);
  }
  held << " | " << stream.Remaining();
  return {written.bytes, std::to_string(answer) + " | " + held.str()};
}

// Rows marked as the sample's own bytes are also what the writer leaves; then null streams must write
// nothing and read nothing.
TEST(StreamHelpers, WritersAndReaders) {
  const Bytes three = Str(u"ab") + Str(u"") + Str(u"\u4e2d");
  const struct { const char* kind; Bytes bytes; const char* expected; bool sample = false; } cases[] = {
      {"point", Le({0xFFFFFFFB, 70000}), "1 | -5,70000 | 0", true},
      {"point", Le({0xFFFFFFFB}) + Bytes{1, 2, 3}, "0 | -5,2 | 3"},  // x arrives, y stays
      {"date", Raw(45000.75), "1 | 45000.75 status 0 | 0", true},
      {"date", Raw(1e9), "1 | 1000000000 status 1 | 0"},  // beyond 9999: the status follows the serial
      {"date", Bytes(7, 0), "0 | 1.5 status 0 | 7"}, {"handle", Bytes(4, 0), "0 | 9 | 4"},
      {"handle", U64(77), "1 | 77 | 0", true},
      {"bytes", Le({3}) + Bytes{1, 0, 255}, "1 | 1,0,255 | 0", true}, {"bytes-", Le({0}), "1 |  | 0", true},
      {"bytes", Le({0}) + Bytes{7}, "1 |  | 1"},          // nothing more read behind a count of 0
      {"bytes", Le({3}) + Bytes{1, 0}, "0 | 9,0,0 | 2"},  // the array has its size, the read fails
      {"bytes", Le({0x80000000}), "0 | 9 | 0"},           // a count no array can hold changes nothing
      {"handles", Le({3}) + U64(16) + U64(0) + U64(32), "1 | 16,0,32 | 0", true},
      {"handles", Le({3}) + U64(16) + U64(0), "0 | 16,0,0 | 0"}, {"handles", Le({0xFFFFFFFF}), "0 | 5 | 0"},
      {"uint1", Bytes{3} + Le({1, 0xDEADBEEF, 0}), "1 | 1,3735928559,0 | 0", true},
      {"uint2", Bytes{3, 0} + Le({1, 0xDEADBEEF, 0}), "1 | 1,3735928559,0 | 0", true},
      {"uint4", Le({3, 1, 0xDEADBEEF, 0}), "1 | 1,3735928559,0 | 0", true},
      {"uint0", Le({3, 1, 0xDEADBEEF, 0}), "1 | 1,3735928559,0 | 0", true},  // any other width is 32 bits
      {"uint1+", Bytes{1} + Le({1, 0xDEADBEEF, 0}) + Bytes(1016, 0), "1 | 1 | 1024", true},  // 257 cut to 1
      {"uint2", Bytes{3}, "0 | 5 | 1"}, {"uint4", Le({0xFFFFFFFF}), "0 | 5 | 0"},  // no count, a negative one
      {"uint4", Le({3, 7}) + Bytes{1, 2}, "0 | 7,0,0 | 2"},
      {"strings", Le({3}) + three, "1 | ab,,\xE4\xB8\xAD | 0", true},
      {"strings3", three, "1 | ab,,\xE4\xB8\xAD | 0", true},  // no count written
      {"strings", Le({0xFFFFFFFE}), "0 | p,q,r | 0"},
      {"strings", Le({2}) + Str(u"a") + Bytes{2, 0, 0, 0, 'b', 0, 'c'}, "0 | a,q | 7"},  // the second is cut
      {"strings1", Str(u"x"), "1 | x,q,r | 0"}, {"strings0", {}, "1 | p,q,r | 0"},  // a larger array stays
      {"strings4", Str(u"w") + Str(u"x") + Str(u"y") + Str(u"z"), "1 | w,x,y,z | 0"},
      {"map", Le({1}) + Str(u"k") + Str(u"v"), "0 |  | 16", true}, {"char", {}, "0 |  | 0", true},
      {"char", Bytes{0x2D, 0x4E}, "20013 |  | 0"}, {"char", Bytes{0x41}, "0 |  | 0"},
  };
  for (const auto& c : cases) {
    const auto [written, shown] = Trip(c.kind, c.bytes);
    EXPECT_EQ(shown, c.expected) << c.kind;
    if (!c.sample) continue;
    EXPECT_EQ(written, c.bytes) << c.kind;
    EXPECT_EQ(Trip(std::string("!") + c.kind, {}), std::pair(Bytes{}, Trip(c.kind, {}).second)) << c.kind;
  }
}

// A count of two billion over a few bytes: the read fails having sized the array only one step ahead
// (65,536 elements), as a long valid stream would grow it, never to the whole count.
TEST(StreamHelpers, HostileCountsCostWhatTheStreamHolds) {
  const Bytes bytes = Le({0x7FFFFFFF, 1, 2});
  CByteArray b; CArray<void*, void*> h; CUIntArray u; CStringArray s;
  vkt::test::MemoryInput in1(bytes), in2(bytes), in3(bytes), in4(bytes);
  EXPECT_EQ(CUtilityCalc::DeserializeByteArray(&in1, b) + CUtilityCalc::DeserializeHandleArray(&in2, h) +
                CUtilityCalc::DeserializeUIntArray(&in3, u, 4) + CUtilityCalc::DeserializeStringArray(&in4, s, -1),
            0);
  EXPECT_EQ(std::vector<int>({b.GetSize(), h.GetSize(), u.GetSize(), s.GetSize()}),
            std::vector<int>(4, 65536));
  EXPECT_EQ(u[0] + u[1] * 10 + u[2], 21U);  // what was read stays
}

}  // namespace
