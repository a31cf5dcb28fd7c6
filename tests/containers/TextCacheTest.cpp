// tests/containers/TextCacheTest.cpp: CTextCache (handles, its pages after removals and compactions, long
// texts, a seeded model run with empty texts and unknown handles), CLockText and the CSingleData ticket.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "containers/TextCachePage.h"
#include "tests/support/Text.h"

namespace {

// The text; "<none>" when Get answers 0 and empties its output, "<kept>" when it answers 0 but does not.
std::u16string Read(CTextCache& cache, UINT handle) {
  CString out(u"old");
  return cache.Get(handle, out) ? vkt::test::U(out) : out.IsEmpty() ? u"<none>" : u"<kept>";
}
// Pages as "nCount nWasted size capacity" or "null" (N equal: "*N"), "/" between; "|nFirstFree nRemoved".
std::string Pages(CTextCache& cache) {
  std::string out, last;
  for (int i = 0, run = 0, size = cache.aPages.GetSize(); i <= size; ++i, ++run) {
    char page[64] = "null";
    if (CTextCachePage* p = i < size ? cache.aPages[i] : nullptr)
      std::snprintf(page, 64, "%d %d %d %d", p->Head().nCount, p->Head().nWasted, p->nSize, p->nAlloc);
    if (run > 0 && (page != last || i == size))
      out += (out.empty() ? "" : "/") + last + (run > 1 ? "*" + std::to_string(run) : ""), run = 0;
    last = page;
  }
  return out + "|" + std::to_string(cache.nFirstFree) + " " + std::to_string(cache.nRemoved);
}
// Texts of `units` units, the i-th with handle (i / 100 << 8 | i % 100) + 1, removals by number ("c": then
// compact): all read back, the pages, one more Add's handle and nRemoved (1,001 removals: Add compacts).
struct PageCase { int texts, units; const char* removals; const char* expected; };
const PageCase kPages[] = {
    {7, 4, "5", "7 10 878 4096|0 1|8 1"},   // a slot below the top: its bytes are wasted
    {7, 4, "5 6", "5 0 858 4096|0 2|6 2"},  // then the top one: the page measures itself anew
    {7, 4, "6", "6 0 868 4096|0 1|7 1"},    // the slot below is live: only the top goes
    {7, 4, "2 5 6", "5 10 858 4096|0 3|6 3"},
    {7, 4, "5 5", "7 10 878 4096|0 2|8 2"},
    {7, 4, "6 5 4 3 2 1 0", "0 0 808 4096|0 7|1 7"},
    {7, 4, "0-6", "0 0 808 4096|0 7|1 7"},  // the last page stays, empty,
    {7, 4, "0-6 c", "null|0 0|1 0"},        // until a compaction
    {250, 4, "100-249", "100 0 1808 4096/null/0 0 808 4096|1 150|257 150"},
    {100, 100, "0-48", "100 9898 21008 24576|0 49|257 49"},
    {100, 100, "0-48 c", "100 0 11110 12288|0 0|257 0"},  // packed: 4 KB or more wasted
    {1, 1643, "", "1 0 4096 4096|0 0|2 0"},
    {1, 1644, "", "1 0 4098 8192|0 0|2 0"},
    {1, 5120, "c", "1 0 11050 12288|0 0|2 0"},  // 10 KB, whole
    {10000, 4, "9000-9999", "100 0 1808 4096*90/null*9/0 0 808 4096|90 1000|23041 1000"},
    {10000, 4, "8999-9999", "100 0 1808 4096*89/99 0 1798 4096/null*9/0 0 808 4096|90 1001|22884 0"},
    {10000, 4, "100-9999 c", "100 0 1808 4096/null*64|0 0|257 0"},  // 65 entries behind the last page
};
TEST(TextCache, PagesAfterRemovals) {
  for (const PageCase& c : kPages) {
    CTextCache cache;
    const std::u16string text(c.units, u'w');
    std::vector<UINT> handles(c.texts), removed(c.texts);
    for (int i = 0; i < c.texts; ++i) handles[i] = cache.Add(text.c_str(), -1);
    std::istringstream in(c.removals);  // "a-b" reads as a and -b: a, then a + 1 to b
    for (int n = 0, last = 0; in >> n; last = n < 0 ? -n : n)
      for (int i = n < 0 ? last + 1 : n; i <= (n < 0 ? -n : n); ++i) cache.Remove(handles[i]), removed[i] = 1;
    if (std::string(c.removals).find('c') != std::string::npos) cache.Compact();
    for (int i = 0; i < c.texts; ++i)
      EXPECT_EQ(std::make_pair(handles[i], Read(cache, handles[i])),
                std::make_pair(UINT((i / 100) << 8 | i % 100) + 1, removed[i] ? u"<none>" : text)) << i;
    std::string state = Pages(cache) + "|";  // before the Add
    state += std::to_string(cache.Add(u"x", 1));
    EXPECT_EQ(state + " " + std::to_string(cache.nRemoved), c.expected) << c.removals;
  }
}

// Seeded steps against a map, in phases of growth and shrinking. Every live handle is read back after
// each compaction; any other handle (0, slots of 100 and above, pages outside aPages) reads as none.
TEST(TextCache, ModelRun) {
  CTextCache cache;
  std::map<UINT, std::u16string> model;
  std::mt19937 random(20240611);
  auto check = [&] { for (const auto& [handle, text] : model) ASSERT_EQ(Read(cache, handle), text); };
  EXPECT_EQ(cache.Add(u"", -1) + cache.Add(nullptr, -1) + cache.Add(u"x", 0) + cache.Add(u"\0x", 2), 0u);
  for (int step = 0; step < 100000; ++step) {
    const unsigned pick = random() % 100, adds = step / 10000 % 2 ? 25 : 55;
    auto some = model.lower_bound(random() % (model.empty() ? 1 : model.rbegin()->first + 1));
    const int removed = cache.nRemoved;
    if (pick < adds) {
      std::u16string text(random() % 200 == 0 ? 1500 + random() % 2000 : 1 + random() % 30, u'a');
      for (char16_t& unit : text) unit = char16_t(u'a' + random() % 26 + (random() % 8 ? 0 : 0x4dff));
      const UINT handle = cache.Add(text.c_str(), pick % 2 ? -1 : static_cast<int>(text.size()));
      ASSERT_TRUE(handle != 0 && model.emplace(handle, text).second) << handle;
    } else if (pick < 85 && some != model.end()) {
      for (UINT handle : {0u, some->first, 0xFFFFFFFFu}) cache.Remove(handle);  // one removal
      ASSERT_EQ(cache.nRemoved, removed + 1) << step;
      model.erase(some);
    } else if (pick < 99) {
      const UINT handle = step % 1000 ? random() % 8192 : 0;
      ASSERT_EQ(Read(cache, handle), model.count(handle) ? model[handle] : u"<none>") << handle;
    } else if (random() % 20 == 0) {
      cache.Compact();
    }
    if (cache.nRemoved == 0 && (removed > 0 || pick == 99)) check();  // after each compaction
  }
}

TEST(Locks, LockTextSingleDataAndCache) {
  CLockText a, b;
  CString text(u"old");
  const int results[] = {a.IsEmpty(), a.Set(u"one"), a.Set(a), b.Set(a), a.Set(u"two"), a.IsEmpty()};
  a.Get(text);
  EXPECT_EQ(std::vector<int>(results, results + 6), std::vector<int>({1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(vkt::test::U(text) + u"|" + vkt::test::U(b.m_text), u"two|one");
  EXPECT_EQ(CSingleDataLock().GetLowerData(), CSingleDataLock().GetLowerData());  // the lock is re-entrant
  EXPECT_EQ(GetCache(), GetCache());
}

}  // namespace
