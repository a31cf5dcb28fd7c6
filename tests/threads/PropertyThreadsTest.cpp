// Property lists on several threads sharing one CMapProp: interning the same and different names at once
// gives every thread one pointer per name, and each list reads back its own values from the cache.
#include <gtest/gtest.h>

#include "VKTCalc.h"
#include "tests/support/Text.h"
#include "tests/support/Threads.h"

namespace {
using vkt::test::kThreads;
using vkt::test::U;

struct List : CProperty2 {
  int SetProperty(const char16_t*, const char16_t*, int) override { return 0; }
};

TEST(PropertyThreads, OneSharedStoreGivesEveryThreadTheSamePointerPerName) {
  constexpr int kNames = kThreads + 1;
  const char16_t* names[kNames] = {u"width", u"t0", u"t1", u"t2", u"t3"};  // t<n>: thread n's value
  const char16_t* seen[kThreads][kNames] = {};  // [thread][name]: the pointer its list got
  std::u16string read[kThreads];
  auto* store = new CMapProp;
  store->AddRef();
  vkt::test::OnThreads([&](int t) {
    List list;
    list.SetMapProp(store);
    for (int i = 0, k = t; i < 500; ++i, k = (k + 1) % kNames)  // the threads start at different names
      list.Prop_Add(names[k], names[t + 1], 0), seen[t][k] = list.aNames[i];
    CString value;
    list.GetStr(value, u"WIDTH", u"none");
    read[t] = U(value) + (list.Prop_GetCount() == 500 ? u"/500" : u"/lost");
  });
  for (int t = 0; t < kThreads; ++t) {
    EXPECT_EQ(read[t], U(names[t + 1]) + u"/500");
    for (int k = 0; k < kNames; ++k) EXPECT_EQ(seen[t][k], store->Lookup(names[k])) << t << " " << k;
  }
  EXPECT_EQ(store->Release(), 0);
}

}  // namespace
