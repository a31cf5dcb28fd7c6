// The process text cache under four threads that add, read, remove and compact at once, each checking
// its own texts; two CLockTexts copied into each other in opposite directions, which must not block.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/Text.h"
#include "tests/support/Threads.h"

namespace {

TEST(TextCacheThreads, EachThreadReadsBackItsOwnTexts) {
  CTextCache* caches[vkt::test::kThreads] = {};
  int wrong[vkt::test::kThreads] = {};
  vkt::test::OnThreads([&](int t) {
    CTextCache* cache = caches[t] = GetCache();
    std::mt19937 random(static_cast<unsigned>(t));
    std::vector<std::pair<UINT, std::u16string>> live;
    CString out;
    auto misread = [&](const std::pair<UINT, std::u16string>& e) {
      return !cache->Get(e.first, out) || vkt::test::U(out) != e.second;
    };
    for (int step = 0; step < 3000; ++step) {
      const std::size_t pick = random() % 100, any = live.empty() ? 0 : random() % live.size();
      const std::u16string text(1 + random() % 40, char16_t(u'a' + t * 5 + step % 5));  // its own letters
      if (pick < 50 || live.empty()) live.emplace_back(cache->Add(text.c_str(), -1), text);
      else if (pick < 80) wrong[t] += misread(live[any]);
      else if (pick < 99) cache->Remove(live[any].first), live[any] = live.back(), live.pop_back();
      else cache->Compact();
    }
    for (const auto& entry : live) wrong[t] += misread(entry), cache->Remove(entry.first);
  });
  for (int t = 0; t < vkt::test::kThreads; ++t)
    EXPECT_EQ(std::make_pair(caches[t], wrong[t]), std::make_pair(caches[0], 0)) << "thread " << t;
}

TEST(LockTextThreads, CopiesInOppositeDirectionsDoNotBlock) {
  CLockText a, b;
  a.Set(u"a"), b.Set(u"b");
  vkt::test::OnThreads([&](int t) { for (int i = 0; i < 2000; ++i) (t ? b : a).Set(t ? a : b); }, 2);
  CString x, y;
  a.Get(x), b.Get(y);
  for (const CString& text : {x, y}) EXPECT_TRUE(text == u"a" || text == u"b") << text.ToUtf8();
}

}  // namespace
