// toolbox/StreamHelpers.cpp: the stream helpers of CUtilityCalc, which write
// points, dates, handles and arrays through the host's stream interfaces
// and read them back. They settle only the order of the values and the
// stream operation that carries each; the byte layout belongs to the
// stream.
#include "CUtilityCalc.h"

#include <climits>
#include <cstdint>

#include "foundation/StreamIO.h"
#include "platform/DateTime.h"
#include "platform/Geometry.h"
#include "platform/Maps.h"

namespace {

constexpr int kFlag = 1;        // the trailing flag of the stream operations
constexpr int kHandleBytes = 8;  // a handle travels as 8 bytes on any platform
constexpr int kUIntBytes = 4;

// An array read from a stream takes its size before its elements, but
// never more than it already holds (at least kSizeAhead) ahead of those
// read: a damaged or hostile count of two billion then costs about what the
// stream really holds, not gigabytes. Below kSizeAhead the array takes the
// whole count at once.
constexpr int kSizeAhead = 65536;

// Makes room for the element at `done` of `count`: at the start, and when
// the elements read have filled the array.
template <class Array>
void SizeAhead(Array& items, int count, int done) {
  if (done != 0 && done != items.GetSize()) return;
  const long long ahead = done > kSizeAhead ? done : kSizeAhead;
  items.SetSize(static_cast<int>(count - done < ahead ? count : done + ahead));
}

static_assert(sizeof(double) == 8, "a date travels as the 8 bytes of a double");
static_assert(sizeof(UINT) == kUIntBytes);
static_assert(sizeof(void*) <= kHandleBytes);

void WriteHandle(IStreamOutput* out, void* handle) {
  const std::uint64_t value = reinterpret_cast<std::uintptr_t>(handle);
  out->WriteData(&value, kHandleBytes);
}

bool ReadHandle(IStreamInput* in, void*& handle) {
  std::uint64_t value = 0;
  if (!in->ReadData(&value, kHandleBytes)) return false;
  handle = reinterpret_cast<void*>(static_cast<std::uintptr_t>(value));
  return true;
}

// A count read as an unsigned word: only one an array can hold will do.
bool ReadDWordCount(IStreamInput* in, int& count) {
  DWORD value = 0;
  if (!in->ReadDWord(&value, kFlag) || value > static_cast<DWORD>(INT_MAX)) return false;
  count = static_cast<int>(value);
  return true;
}

// A count read as a signed word; a negative one fails.
bool ReadIntCount(IStreamInput* in, int& count) {
  int value = 0;
  if (!in->ReadInt(&value, kFlag) || value < 0) return false;
  count = value;
  return true;
}

}  // namespace

void CUtilityCalc::SerializePoint(IStreamOutput* out, CPoint& point) {
  if (out == nullptr) return;
  out->WriteDWord(static_cast<DWORD>(point.x), kFlag);
  out->WriteDWord(static_cast<DWORD>(point.y), kFlag);
}

int CUtilityCalc::DeserializePoint(IStreamInput* in, CPoint& point) {
  if (in == nullptr) return 0;
  DWORD value = 0;
  if (!in->ReadDWord(&value, kFlag)) return 0;
  point.x = static_cast<LONG>(value);
  if (!in->ReadDWord(&value, kFlag)) return 0;
  point.y = static_cast<LONG>(value);
  return 1;
}

void CUtilityCalc::SerializeDate(IStreamOutput* out, COleDateTime& date) {
  if (out == nullptr) return;
  const double serial = date.m_dt;
  out->WriteData(&serial, sizeof serial);
}

int CUtilityCalc::DeserializeDate(IStreamInput* in, COleDateTime& date) {
  if (in == nullptr) return 0;
  double serial = 0.0;
  if (!in->ReadData(&serial, sizeof serial)) return 0;
  date = serial;  // the status follows from the serial
  return 1;
}

void CUtilityCalc::SerializeHandle(IStreamOutput* out, void* handle) {
  if (out == nullptr) return;
  WriteHandle(out, handle);
}

int CUtilityCalc::DeserializeHandle(IStreamInput* in, void*& handle) {
  if (in == nullptr) return 0;
  return ReadHandle(in, handle) ? 1 : 0;
}

void CUtilityCalc::SerializeByteArray(IStreamOutput* out, CByteArray& items) {
  if (out == nullptr) return;
  const int count = items.GetSize();
  out->WriteDWord(static_cast<DWORD>(count), kFlag);
  if (count != 0) out->WriteData(items.GetData(), count);
}

int CUtilityCalc::DeserializeByteArray(IStreamInput* in, CByteArray& items) {
  if (in == nullptr) return 0;
  int count = 0;
  if (!ReadDWordCount(in, count)) return 0;
  SizeAhead(items, count, 0);
  for (int done = 0; done < count; done = items.GetSize()) {
    SizeAhead(items, count, done);
    if (!in->ReadData(items.GetData() + done, items.GetSize() - done)) return 0;
  }
  return 1;
}

void CUtilityCalc::SerializeHandleArray(IStreamOutput* out, CArray<void*, void*>& items) {
  if (out == nullptr) return;
  const int count = items.GetSize();
  out->WriteDWord(static_cast<DWORD>(count), kFlag);
  for (int i = 0; i < count; ++i) WriteHandle(out, items[i]);
}

int CUtilityCalc::DeserializeHandleArray(IStreamInput* in, CArray<void*, void*>& items) {
  if (in == nullptr) return 0;
  int count = 0;
  if (!ReadIntCount(in, count)) return 0;
  SizeAhead(items, count, 0);
  for (int i = 0; i < count; ++i) {
    SizeAhead(items, count, i);
    void* handle = nullptr;
    if (!ReadHandle(in, handle)) return 0;
    items.SetAt(i, handle);
  }
  return 1;
}

void CUtilityCalc::SerializeUIntArray(IStreamOutput* out, CUIntArray& items, int nCountWidth) {
  if (out == nullptr) return;
  const int count = items.GetSize();
  if (nCountWidth == 1)
    out->WriteByte(static_cast<BYTE>(count & 0xFF));
  else if (nCountWidth == 2)
    out->WriteWord(static_cast<WORD>(count & 0xFFFF), kFlag);
  else
    out->WriteDWord(static_cast<DWORD>(count), kFlag);
  // The true size decides, whatever the count could carry.
  for (int i = 0; i < count; ++i) {
    const UINT value = items[i];
    out->WriteData(&value, kUIntBytes);
  }
}

int CUtilityCalc::DeserializeUIntArray(IStreamInput* in, CUIntArray& items, int nCountWidth) {
  if (in == nullptr) return 0;
  int count = 0;
  if (nCountWidth == 1) {
    BYTE value = 0;
    if (!in->ReadByte(&value)) return 0;
    count = value;
  } else if (nCountWidth == 2) {
    WORD value = 0;
    if (!in->ReadWord(&value, kFlag)) return 0;
    count = value;
  } else if (!ReadIntCount(in, count)) {
    return 0;
  }
  SizeAhead(items, count, 0);
  for (int i = 0; i < count; ++i) {
    SizeAhead(items, count, i);
    UINT value = 0;
    if (!in->ReadData(&value, kUIntBytes)) return 0;
    items.SetAt(i, value);
  }
  return 1;
}

void CUtilityCalc::SerializeStringArray(IStreamOutput* out, CStringArray& items, int bCount) {
  if (out == nullptr) return;
  const int count = items.GetSize();
  if (bCount) out->WriteDWord(static_cast<DWORD>(count), kFlag);
  for (int i = 0; i < count; ++i) {
    CString text(items[i]);
    out->WriteString(&text, kFlag);
  }
}

int CUtilityCalc::DeserializeStringArray(IStreamInput* in, CStringArray& items, int nCount) {
  if (in == nullptr) return 0;
  int count = nCount;
  if (count < 0) {
    if (!ReadIntCount(in, count)) return 0;
    SizeAhead(items, count, 0);
  } else if (items.GetSize() < count) {
    items.SetSize(count);  // the caller's own count
  }
  const bool fromStream = nCount < 0;
  for (int i = 0; i < count; ++i) {
    if (fromStream) SizeAhead(items, count, i);
    CString text;
    if (!in->ReadString(&text)) return 0;
    items.SetAt(i, text);
  }
  return 1;
}

void CUtilityCalc::SerializeMapStringToString(CMapStringToString& map, IStreamOutput* out) {
  if (out == nullptr) return;
  out->WriteDWord(static_cast<DWORD>(map.GetCount()), kFlag);
  POSITION position = map.GetStartPosition();
  while (position != nullptr) {
    CString key;
    CString value;
    map.GetNextAssoc(position, key, value);
    out->WriteString(&key, kFlag);
    out->WriteString(&value, kFlag);
  }
}

char16_t CUtilityCalc::readChar(IStreamInput* in) {
  if (in == nullptr) return 0;
  const int low = in->ReadRaw();
  if (low < 0) return 0;
  const int high = in->ReadRaw();
  if (high < 0) return 0;
  return static_cast<char16_t>(((high & 0xFF) << 8) | (low & 0xFF));
}
