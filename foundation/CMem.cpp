// foundation/CMem.cpp: the growable zeroed byte block under every buffer.
//
// Blocks come from calloc and go back with free, and their capacity moves in
// whole pages. A failed allocation leaves the block as it was and makes the
// operation answer 0.
#include "foundation/CMem.h"

#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

// Rounds up to whole pages; -1 when that would not fit an int.
int RoundToPages(int size) {
  if (size <= 0) return 0;
  if (size > INT_MAX - (CMem::PageSize - 1)) return -1;
  return (size + CMem::PageSize - 1) / CMem::PageSize * CMem::PageSize;
}

// True when `p` points into the `n` bytes at `block` (the caller passes a part
// of our own block, which a reallocation would free under it).
bool PointsInto(const BYTE* p, const BYTE* block, int n) {
  if (p == nullptr || block == nullptr) return false;
  auto a = reinterpret_cast<std::uintptr_t>(p);
  auto b = reinterpret_cast<std::uintptr_t>(block);
  return a >= b && a < b + static_cast<std::uintptr_t>(n);
}

}  // namespace

CMem::CMem(int size) : nAlloc(0), nSize(0), pBuf(nullptr) {
  if (size > 0) Reserve(size);
}

CMem::~CMem() { std::free(pBuf); }

int CMem::GetSize() { return nSize; }

int CMem::GetAllocSize() { return nAlloc; }

BYTE* CMem::GetBuf() { return pBuf; }

void CMem::ClearTail() {
  if (pBuf != nullptr && nAlloc > nSize)
    std::memset(pBuf + nSize, 0, static_cast<std::size_t>(nAlloc - nSize));
}

int CMem::Set(BYTE* data, int size) {
  if (size < 0) return 0;
  if (data == nullptr) size = 0;
  if (size > 0 && PointsInto(data, pBuf, nAlloc)) {
    if (size > nAlloc - static_cast<int>(data - pBuf)) return 0;
    // A stretch of our own content: move it to the front.
    std::memmove(pBuf, data, static_cast<std::size_t>(size));
    if (nSize > size) std::memset(pBuf + size, 0, static_cast<std::size_t>(nSize - size));
    nSize = size;
    return 1;
  }
  if (size > nAlloc && !Reserve(size)) return 0;
  if (size > 0) std::memcpy(pBuf, data, static_cast<std::size_t>(size));
  if (nSize > size) std::memset(pBuf + size, 0, static_cast<std::size_t>(nSize - size));
  nSize = size;
  return 1;
}

int CMem::Add(BYTE value) { return Add(&value, 1); }

int CMem::Add(WORD value) {
  BYTE bytes[2];
  std::memcpy(bytes, &value, 2);
  return Add(bytes, 2);
}

int CMem::Add(BYTE* data, int size) { return Insert(data, nSize, size); }

int CMem::Insert(BYTE* data, int pos, int size) {
  if (size < 0) return 0;
  if (size == 0) return 1;
  if (nSize > INT_MAX - size) return 0;
  if (pos < 0) pos = 0;
  if (pos > nSize) pos = nSize;
  // A source inside our own block would move or be freed under us: copy it
  // aside first.
  BYTE* copy = nullptr;
  if (PointsInto(data, pBuf, nAlloc)) {
    if (size > nAlloc - static_cast<int>(data - pBuf)) return 0;
    copy = static_cast<BYTE*>(std::malloc(static_cast<std::size_t>(size)));
    if (copy == nullptr) return 0;
    std::memcpy(copy, data, static_cast<std::size_t>(size));
    data = copy;
  }
  if (nSize + size > nAlloc && !Reserve(nSize + size)) {
    std::free(copy);
    return 0;
  }
  BYTE* at = pBuf + pos;
  std::memmove(at + size, at, static_cast<std::size_t>(nSize - pos));
  if (data != nullptr)
    std::memcpy(at, data, static_cast<std::size_t>(size));
  else
    std::memset(at, 0, static_cast<std::size_t>(size));
  nSize += size;
  std::free(copy);
  return 1;
}

int CMem::MoveIn(CMem* from) {
  if (from == nullptr || from == this) return 0;
  std::free(pBuf);
  pBuf = from->pBuf;
  nAlloc = from->nAlloc;
  nSize = from->nSize;
  from->pBuf = nullptr;
  from->nAlloc = 0;
  from->nSize = 0;
  return 1;
}

int CMem::MoveIn(BYTE* data, int size) {
  if (size < 0 || (data == nullptr && size > 0)) return 0;
  if (data == pBuf) return 1;
  std::free(pBuf);
  pBuf = data;
  nAlloc = data == nullptr ? 0 : size;
  nSize = nAlloc;
  return 1;
}

BYTE* CMem::MoveOut() {
  BYTE* block = pBuf;
  pBuf = nullptr;
  nAlloc = 0;
  nSize = 0;
  return block;
}

int CMem::Increase(int size) {
  if (size <= 0) return 1;
  if (nSize > INT_MAX - size) return 0;
  return Reserve(nSize + size);
}

int CMem::Reserve(int size) {
  if (pBuf != nullptr && nAlloc >= size) return 1;
  int pages = RoundToPages(size);
  if (pages < 0) return 0;
  // Chosen: a first block has at least one page, so Reserve(0) on an empty
  // object still gives a block to write a terminator into.
  if (pages < PageSize) pages = PageSize;
  if (pBuf != nullptr && pages <= nAlloc) return 1;
  BYTE* block = static_cast<BYTE*>(std::calloc(static_cast<std::size_t>(pages), 1));
  if (block == nullptr) return 0;
  if (pBuf != nullptr && nSize > 0) std::memcpy(block, pBuf, static_cast<std::size_t>(nSize));
  std::free(pBuf);
  pBuf = block;
  nAlloc = pages;
  return 1;
}

void CMem::Clear() {
  if (pBuf != nullptr && nSize > 0) std::memset(pBuf, 0, static_cast<std::size_t>(nSize));
  nSize = 0;
}

void CMem::Empty() {
  std::free(pBuf);
  pBuf = nullptr;
  nAlloc = 0;
  nSize = 0;
}

void CMem::Trim() {
  if (pBuf == nullptr || nAlloc <= PageSize) return;
  int allocPages = RoundToPages(nAlloc) / PageSize;
  // Chosen: an empty block keeps one page rather than none, the same floor
  // that a block of one page already has.
  int sizePages = nSize > 0 ? RoundToPages(nSize) / PageSize : 1;
  if (allocPages == sizePages) return;
  int bytes = sizePages * PageSize;
  BYTE* block = static_cast<BYTE*>(std::calloc(static_cast<std::size_t>(bytes), 1));
  if (block == nullptr) return;  // keeping the larger block is harmless
  if (nSize > 0) std::memcpy(block, pBuf, static_cast<std::size_t>(nSize));
  std::free(pBuf);
  pBuf = block;
  nAlloc = bytes;
}

void* CMem::ToGHND() { return nullptr; }
