// bench/CacheBench.cpp: the text cache against a std::unordered_map of std::u16string under a std::mutex,
// doing the same work: Add, Get and Remove mixed on one and two threads, and the bytes a million texts of
// about 12 units take. CProperty2, which keeps its values in the cache, has its place at the end.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "VKTCalc.h"
#include "containers/TextCachePage.h"

namespace {

// 1,024 texts of 8 to 16 units (12 on average), lower-case letters, fixed seed.
const std::vector<std::u16string>& Texts() {
  static const std::vector<std::u16string> texts = [] {
    std::mt19937 random(12);
    std::vector<std::u16string> out(1024);
    for (std::u16string& text : out)
      for (unsigned n = 8 + random() % 9; n > 0; --n) text += static_cast<char16_t>(u'a' + random() % 26);
    return out;
  }();
  return texts;
}

// What glibc's malloc takes for a request of n bytes: 8 bytes of header, rounded up to 16, at least 32.
double Chunk(double n) {
  const double chunk = std::ceil((n + 8) / 16) * 16;
  return chunk < 32 ? 32 : chunk;
}

// The bytes the map side asks of the heap, and what malloc takes for them. Every allocation and release
// happens under the map's mutex, so plain counters are enough.
struct Heap {
  static inline double asked = 0, taken = 0;
  static void Count(std::size_t bytes, double sign) {
    asked += sign * static_cast<double>(bytes), taken += sign * Chunk(static_cast<double>(bytes));
  }
};
template <class T> struct Counting {
  using value_type = T;
  Counting() = default;
  template <class U> Counting(const Counting<U>&) {}
  T* allocate(std::size_t n) { return Heap::Count(n * sizeof(T), 1), std::allocator<T>().allocate(n); }
  void deallocate(T* p, std::size_t n) {
    Heap::Count(n * sizeof(T), -1), std::allocator<T>().deallocate(p, n);
  }
  template <class U> bool operator==(const Counting<U>&) const { return true; }
};

// A side is made on the process's store (fresh = false) or on one of its own, and gives its bytes as
// {asked of the heap, taken by malloc}.
struct CacheSide {
  std::unique_ptr<CTextCache> own;
  CTextCache* cache;
  explicit CacheSide(bool fresh)
      : own(fresh ? new CTextCache : nullptr), cache(fresh ? own.get() : GetCache()) {}
  UINT Add(const std::u16string& text) { return cache->Add(text.c_str(), static_cast<int>(text.size())); }
  int Get(UINT handle, CString& out) { return cache->Get(handle, out); }
  void Remove(UINT handle) { cache->Remove(handle); }
  // The page blocks, the page objects and the page list.
  std::pair<double, double> Bytes() const {
    const double list = static_cast<double>(cache->aPages.GetAllocSize() * sizeof(void*));
    const double object = sizeof(CTextCachePage);
    std::pair<double, double> bytes{list, Chunk(list)};
    for (CTextCachePage* p : cache->aPages)
      if (p != nullptr) bytes.first += p->nAlloc + object, bytes.second += Chunk(p->nAlloc) + Chunk(object);
    return bytes;
  }
};

struct MapSide {
  using Text = std::basic_string<char16_t, std::char_traits<char16_t>, Counting<char16_t>>;
  using Map = std::unordered_map<std::uint32_t, Text, std::hash<std::uint32_t>, std::equal_to<std::uint32_t>,
                                 Counting<std::pair<const std::uint32_t, Text>>>;
  struct Store { std::mutex lock; Map map; std::uint32_t next = 0; };
  std::unique_ptr<Store> own;
  Store* store;
  double asked0 = 0, taken0 = 0;  // the counters when a store of its own was made
  explicit MapSide(bool fresh) : own(fresh ? new Store : nullptr), store(fresh ? own.get() : Shared()) {
    if (fresh) asked0 = Heap::asked, taken0 = Heap::taken;
  }
  static Store* Shared() { static Store shared; return &shared; }
  UINT Add(const std::u16string& text) {
    std::lock_guard<std::mutex> guard(store->lock);
    store->map.emplace(++store->next, Text(text.begin(), text.end()));
    return store->next;
  }
  int Get(UINT handle, CString& out) {
    std::lock_guard<std::mutex> guard(store->lock);
    const auto found = store->map.find(handle);
    const bool live = found != store->map.end();
    out = live ? CString(found->second.data(), static_cast<int>(found->second.size())) : CString();
    return live ? 1 : 0;
  }
  void Remove(UINT handle) {
    std::lock_guard<std::mutex> guard(store->lock);
    store->map.erase(handle);
  }
  // The nodes, the bucket array and the texts' own blocks, counted since the side was made.
  std::pair<double, double> Bytes() const { return {Heap::asked - asked0, Heap::taken - taken0}; }
};

// Each thread keeps 1,024 live texts of its own. One item is one call: per round the oldest text is
// removed, a new one added and two random ones read.
template <class Side> void BM_AddGetRemove(benchmark::State& state) {
  Side side(false);
  const std::vector<std::u16string>& texts = Texts();
  std::vector<UINT> ring(texts.size());
  for (std::size_t i = 0; i < ring.size(); ++i) ring[i] = side.Add(texts[i]);
  std::minstd_rand random(static_cast<unsigned>(state.thread_index() + 1));
  CString out;
  if (side.Get(ring[5], out) != 1 || out.View() != texts[5]) state.SkipWithError("a text does not come back");
  std::size_t round = 0;
  for (auto _ : state) {
    const std::size_t oldest = round++ % ring.size();
    side.Remove(ring[oldest]);
    ring[oldest] = side.Add(texts[(oldest + round) % texts.size()]);
    benchmark::DoNotOptimize(side.Get(ring[random() % ring.size()], out));
    benchmark::DoNotOptimize(side.Get(ring[random() % ring.size()], out));
  }
  for (UINT handle : ring) side.Remove(handle);
  state.SetItemsProcessed(state.iterations() * 4);
}
BENCHMARK_TEMPLATE(BM_AddGetRemove, CacheSide)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK_TEMPLATE(BM_AddGetRemove, MapSide)->Threads(1)->Threads(2)->UseRealTime();

// A million texts into a store of its own; the time is that of the million Adds.
template <class Side> void BM_BytesPerText(benchmark::State& state) {
  constexpr int kCount = 1000000;
  for (auto _ : state) {
    Side side(true);
    for (int i = 0; i < kCount; ++i) side.Add(Texts()[static_cast<std::size_t>(i) % Texts().size()]);
    const auto [asked, taken] = side.Bytes();
    state.counters["bytes_per_text"] = asked / kCount;
    state.counters["with_malloc_headers"] = taken / kCount;
  }
}
BENCHMARK_TEMPLATE(BM_BytesPerText, CacheSide)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BM_BytesPerText, MapSide)->Iterations(1)->Unit(benchmark::kMillisecond);

// --- CProperty2 -------------------------------------------------------------------------------------
// Its benchmarks go here, on Texts() and on the sides above where they fit.

// 20 properties named Texts()[0..19] with the values Texts()[100..119]. One item is one call of each:
// FindProperty and GetStr of a name asked in upper case, so both sides fold. The vector side searches
// linearly too, as plain standard code would: lengths first, then units folded as ASCII (the list
// folds through the locale).
constexpr int kProps = 20;

struct PropertySide {
  struct List : CProperty2 {
    int SetProperty(const char16_t*, const char16_t*, int) override { return 0; }
  } list;
  PropertySide() {
    for (int i = 0; i < kProps; ++i) list.Prop_Add(Texts()[i].c_str(), Texts()[100 + i].c_str(), 0);
  }
  int Find(const std::u16string& name) { return list.FindProperty(name.c_str()); }
  void Get(const std::u16string& name, CString& out) { list.GetStr(out, name.c_str(), u""); }
};

struct VectorSide {
  std::vector<std::pair<std::u16string, std::u16string>> items;
  VectorSide() {
    for (int i = 0; i < kProps; ++i) items.emplace_back(Texts()[i], Texts()[100 + i]);
  }
  int Find(const std::u16string& name) {
    for (std::size_t i = 0; i < items.size(); ++i) {
      const std::u16string& item = items[i].first;
      const auto fold = [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; };
      const auto same = [&](char16_t a, char16_t b) { return fold(a) == fold(b); };
      if (std::equal(item.begin(), item.end(), name.begin(), name.end(), same)) return static_cast<int>(i);
    }
    return -1;
  }
  void Get(const std::u16string& name, CString& out) {
    const int i = Find(name);
    const std::u16string* value = i < 0 ? nullptr : &items[static_cast<std::size_t>(i)].second;
    out = value == nullptr ? CString() : CString(value->data(), static_cast<int>(value->size()));
  }
};

template <class Side> void BM_PropertyFindGet(benchmark::State& state) {
  Side side;
  std::vector<std::u16string> names;
  for (int i = 0; i < kProps; ++i) {
    names.push_back(Texts()[static_cast<std::size_t>(i)]);
    for (char16_t& c : names.back()) c = static_cast<char16_t>(c - u'a' + u'A');
  }
  CString out;
  for (int i = 0; i < kProps; ++i) {  // both sides must find every name and read its value
    side.Get(names[i], out);
    if (side.Find(names[i]) != i || out.View() != Texts()[100 + i]) state.SkipWithError("a property is lost");
  }
  std::size_t round = 0;
  for (auto _ : state) {
    const std::u16string& name = names[round++ % names.size()];
    benchmark::DoNotOptimize(side.Find(name));
    side.Get(name, out);
    benchmark::DoNotOptimize(out);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_TEMPLATE(BM_PropertyFindGet, PropertySide);
BENCHMARK_TEMPLATE(BM_PropertyFindGet, VectorSide);

}  // namespace

BENCHMARK_MAIN();
