// tests/foundation/CGlobalInfoTest.cpp: one object for the process, and a
// local-to-UTC span that is read once and fits a real time zone.
#include "foundation/CGlobalInfo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>
#include <vector>

namespace {

TEST(CGlobalInfo, OneObjectWithAWholeMinuteSpan) {
  CGlobalInfo* info = CGlobalInfo::GetInstance();
  EXPECT_EQ(info, CGlobalInfo::GetInstance());
  COleDateTimeSpan* span = info->GetLocalDateTimeSpan();
  ASSERT_NE(span, nullptr);
  EXPECT_EQ(span->GetStatus(), COleDateTimeSpan::valid);
  EXPECT_EQ(span, info->GetLocalDateTimeSpan());  // computed once
  EXPECT_LE(std::fabs(span->GetTotalHours()), 15.0);
  EXPECT_EQ(span->GetSeconds(), 0);
}

TEST(CGlobalInfo, FirstUseFromManyThreads) {
  std::vector<CGlobalInfo*> seen(8, nullptr);
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i)
    threads.emplace_back([&seen, i] { seen[i] = CGlobalInfo::GetInstance(); });
  for (std::thread& t : threads) t.join();
  for (CGlobalInfo* p : seen) EXPECT_EQ(p, CGlobalInfo::GetInstance());
}

}  // namespace
