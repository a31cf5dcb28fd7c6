// Tests of CGlobalInfo: one object, even when threads race to make it, with a whole-minute local-to-UTC span.
#include "foundation/CGlobalInfo.h"
#include <gtest/gtest.h>
#include <cmath>
#include <thread>
#include <vector>
TEST(CGlobalInfo, OneObjectWithAWholeMinuteSpan) {
  std::vector<CGlobalInfo*> seen(8, nullptr);
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) threads.emplace_back([&seen, i] { seen[i] = CGlobalInfo::GetInstance(); });
  for (std::thread& t : threads) t.join();
  CGlobalInfo* info = CGlobalInfo::GetInstance();
  const COleDateTimeSpan* span = info->GetLocalDateTimeSpan();
  EXPECT_EQ(seen, std::vector<CGlobalInfo*>(8, info));
  ASSERT_TRUE(span != nullptr && span == info->GetLocalDateTimeSpan());  // computed once
  EXPECT_TRUE(span->GetStatus() == span->valid && span->GetSeconds() == 0);
  EXPECT_LE(std::fabs(span->GetTotalHours()), 15.0);  // a real time zone
}
