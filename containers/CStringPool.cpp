// containers/CStringPool.cpp: a read-mostly string list in one block with
// an offset table, and the binary and linear searches over any indexed
// string source. The function manager keeps its built-in names in a pool
// and finds them with BSearch; the order of the names is its duty.
#include "CStringPool.h"

#include <climits>
#include <cstring>

#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "platform/WideRuntime.h"

namespace {

constexpr int kUnit = static_cast<int>(sizeof(char16_t));

// Equal units, or with !bCase ASCII letters that differ in case only.
bool SameUnit(char16_t a, char16_t b, int bCase) {
  if (a == b) return true;
  if (bCase) return false;
  auto fold = [](char16_t c) -> char16_t {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
  };
  return fold(a) == fold(b);
}

// True when `prefix` begins `text`, unit by unit.
bool IsPrefixOf(const char16_t* prefix, const char16_t* text, int bCase) {
  for (; *prefix != 0; ++prefix, ++text) {
    if (*text == 0 || !SameUnit(*prefix, *text, bCase)) return false;
  }
  return true;
}

// The bytes a text takes in the block, with its terminator.
int BytesOf(const CString& text) { return (text.GetLength() + 1) * kUnit; }

// A text's units with the terminator, as the block's Add and Insert take them.
BYTE* BytesPtr(const CString& text) {
  return reinterpret_cast<BYTE*>(const_cast<char16_t*>(text.GetString()));
}

}  // namespace

// The range is halved while more than the last two or three candidates are
// left; those are then compared one by one.
int ISortedStringQuery::BSearch(const char16_t* text) {
  if (text == nullptr) return -1;
  const int size = GetSize();
  int high = size - 1;
  int low = 0;
  if (size >= 3) {
    int probe = high / 2;
    for (;;) {
      if (probe >= high) break;
      const int order = CUtilityCalc::StrCmpW(text, GetAt(probe), 1);
      if (order == 0) return probe;
      if (order > 0)
        low = probe + 1;
      else
        high = probe - 1;
      if (low > high) return -1;
      probe = low + (high - low) / 2;
      if (probe <= low) break;
    }
  }
  for (int i = low; i <= high; ++i) {
    if (CUtilityCalc::StrCmpW(text, GetAt(i), 1) == 0) return i;
  }
  return -1;
}

int ISortedStringQuery::Find(const char16_t* text, int bCase, int bPrefix) {
  if (text == nullptr) return -1;
  const int size = GetSize();
  for (int i = 0; i < size; ++i) {
    const char16_t* item = GetAt(i);
    if (item == nullptr) continue;
    if (bPrefix ? IsPrefixOf(item, text, bCase) : CUtilityCalc::StrCmpW(text, item, bCase) == 0)
      return i;
  }
  return -1;
}

CStringPool::CStringPool() : mem(0) { aOffsets.SetSize(0, 16); }

CStringPool::~CStringPool() = default;

const char16_t* CStringPool::GetAt(int i) {
  if (i < 0 || i >= aOffsets.GetSize()) return nullptr;
  const UINT offset = aOffsets[i];
  // A string must begin with a whole unit inside the content; GuardTail
  // keeps a terminator behind the content for the last one.
  if (offset % kUnit != 0 || mem.pBuf == nullptr || mem.nSize < kUnit ||
      offset > static_cast<UINT>(mem.nSize - kUnit))
    return u"";
  return reinterpret_cast<const char16_t*>(mem.pBuf + offset);
}

int CStringPool::GetSize() { return aOffsets.GetSize(); }

void CStringPool::Empty() {
  aOffsets.RemoveAll();
  aExtras.RemoveAll();
  mem.Clear();
}

void CStringPool::Copy(CStringPool* from) {
  if (from == nullptr || from == this) return;
  aOffsets.Copy(from->aOffsets);
  aExtras.Copy(from->aExtras);
  mem.Set(from->mem.pBuf, from->mem.nSize);
  mem.Trim();
  GuardTail();
}

int CStringPool::LoadSortedBuf(CMem& src, int bLower, const char16_t* sep) {
  if (src.GetSize() < kUnit) return 0;
  mem.MoveIn(&src);
  mem.Trim();

  const int units = mem.GetSize() / kUnit;
  char16_t* text = reinterpret_cast<char16_t*>(mem.GetBuf());
  char16_t mark = 0;
  int width = 1;
  int expected = 10;
  // Chosen: an empty sep cuts like none; a cut of width 0 would never move on.
  if (sep != nullptr && sep[0] != 0) {
    mark = sep[0];
    width = static_cast<int>(vkt::wcslen(sep));
    expected = CStrKit::strstrs(text, sep, units, width, 1);
  }
  aOffsets.RemoveAll();
  aOffsets.SetSize(0, expected < INT_MAX ? expected + 1 : expected);
  aOffsets.Add(0);

  for (int i = 0; i < units;) {
    if (text[i] == mark) {
      text[i] = 0;
      // Only the first unit of a wider cut is compared and cleared; the
      // rest of the cut is skipped as it stands.
      i = i > INT_MAX - width ? INT_MAX : i + width;
      aOffsets.Add(static_cast<UINT>(i) * kUnit);
      continue;
    }
    if (bLower && text[i] >= u'A' && text[i] <= u'Z') text[i] = vkt::towlower(text[i]);
    ++i;
  }
  GuardTail();
  return 1;
}

void CStringPool::Load(CStringArray& items) {
  mem.Clear();
  const int count = items.GetSize();
  aOffsets.SetSize(count);
  if (count == 0) return;
  for (int i = 0; i < count; ++i) {
    const CString& item = items[i];
    aOffsets[i] = static_cast<UINT>(mem.GetSize());
    mem.Add(BytesPtr(item), BytesOf(item));
  }
  mem.Trim();
  GuardTail();
}

int CStringPool::Add(CString& text) {
  const int index = aOffsets.Add(static_cast<UINT>(mem.GetSize()));
  mem.Add(BytesPtr(text), BytesOf(text));
  GuardTail();
  return index;
}

void CStringPool::InsertAt(int i, CString& text) {
  if (i < 0 || i >= aOffsets.GetSize()) return;
  const UINT offset = aOffsets[i];
  // Chosen: a string whose offset lies past the block (a damaged table) is
  // left alone; the block would clamp the insert elsewhere.
  if (offset > static_cast<UINT>(mem.GetSize())) return;
  const int bytes = BytesOf(text);
  if (!mem.Insert(BytesPtr(text), static_cast<int>(offset), bytes)) return;
  aOffsets.InsertAt(i, offset);
  const int size = aOffsets.GetSize();
  for (int j = i + 1; j < size; ++j) aOffsets[j] += static_cast<UINT>(bytes);
  if (i < aExtras.GetSize()) aExtras.InsertAt(i, 0u);
  GuardTail();
}

void CStringPool::RemoveAt(int i) {
  if (i >= 0 && i < aOffsets.GetSize()) aOffsets.RemoveAt(i);
  if (i >= 0 && i < aExtras.GetSize()) aExtras.RemoveAt(i);
}

void CStringPool::SetAt(int i, CString& text) {
  const int size = aOffsets.GetSize();
  if (i < 0 || i >= size) return;
  const UINT offset = aOffsets[i];
  if (offset > static_cast<UINT>(mem.GetSize())) return;  // as in InsertAt
  // Chosen: the room never reaches past the block, and a next string that
  // lies in front of this one (a damaged table) leaves no room.
  long long end = i + 1 < size ? aOffsets[i + 1] : static_cast<UINT>(mem.GetSize());
  if (end > mem.GetSize()) end = mem.GetSize();
  long long room = end - static_cast<long long>(offset);
  if (room < 0) room = 0;
  const int bytes = BytesOf(text);
  if (bytes > room) {
    const int missing = bytes - static_cast<int>(room);
    if (!mem.Insert(nullptr, static_cast<int>(offset), missing)) return;
    for (int j = i + 1; j < size; ++j) aOffsets[j] += static_cast<UINT>(missing);
  }
  std::memcpy(mem.pBuf + offset, text.GetString(), static_cast<std::size_t>(bytes));
  GuardTail();
}

void CStringPool::Serialize(IStreamOutput* out) {
  if (out == nullptr) return;
  const int count = aOffsets.GetSize();
  const int extras = aExtras.GetSize();
  out->WriteDWord(static_cast<DWORD>(count), 1);
  out->WriteDWord(static_cast<DWORD>(extras), 1);
  if (count == 0) return;
  out->WriteMem(&mem, 1);
  out->WriteData(aOffsets.GetData(), count * static_cast<int>(sizeof(UINT)));
  // Chosen: an empty aExtras writes nothing at all rather than a call with
  // no bytes, which a host's stream need not expect.
  if (extras > 0) out->WriteData(aExtras.GetData(), extras * static_cast<int>(sizeof(UINT)));
}

void CStringPool::Deserialize(IStreamInput* in) {
  if (in == nullptr) return;
  Empty();
  int count = 0;
  int extras = 0;
  in->ReadInt(&count, 1);
  in->ReadInt(&extras, 1);
  if (count == 0) return;
  // Chosen: sizes from a damaged stream that are negative or whose bytes
  // pass an int read as 0; the reads themselves stay unchecked.
  constexpr int kMaxElements = INT_MAX / static_cast<int>(sizeof(UINT));
  if (count < 0 || count > kMaxElements) return;
  if (extras < 0 || extras > kMaxElements) extras = 0;
  in->ReadMem(&mem);
  GuardTail();
  aOffsets.SetSize(count);
  in->ReadData(aOffsets.GetData(), count * static_cast<int>(sizeof(UINT)));
  aExtras.SetSize(extras);
  if (extras > 0) in->ReadData(aExtras.GetData(), extras * static_cast<int>(sizeof(UINT)));
}

// Keeps zero bytes right behind the content, so that the last string ends
// even when the block came from elsewhere (a host's block, a stream) without
// its terminator. When no room can be had, the last whole unit of the
// content becomes the terminator instead.
void CStringPool::GuardTail() {
  if (mem.pBuf == nullptr || mem.nSize < 0) return;
  constexpr int kGuard = 2 * kUnit;  // a whole unit even behind an odd size
  if (mem.nSize <= INT_MAX - kGuard &&
      (mem.nAlloc >= mem.nSize + kGuard || mem.Reserve(mem.nSize + kGuard))) {
    std::memset(mem.pBuf + mem.nSize, 0, kGuard);
    return;
  }
  const int last = mem.nSize / kUnit * kUnit - kUnit;
  if (last >= 0) std::memset(mem.pBuf + last, 0, kUnit);
}
