// Tests of the critical section and its guard: re-entry by the holder and
// exclusion between threads.
#include "platform/Sync.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

TEST(CCritSec, OwnerMayReenter) {
  CCritSec lock;
  EXPECT_EQ(lock.Lock(), 1);
  EXPECT_EQ(lock.Lock(), 1);  // a second enter by the holder does not block
  {
    CCritSecGuard guard(&lock);
  }
  EXPECT_EQ(lock.Unlock(), 1);
  EXPECT_EQ(lock.Unlock(), 1);
  CCritSecGuard none(nullptr);  // guards nothing, must not crash
}

TEST(CCritSec, ThroughTheBaseClass) {
  CCritSec lock;
  CSyncObject& base = lock;
  EXPECT_EQ(base.Lock(), 1);
  EXPECT_EQ(base.Unlock(), 1);
}

// Two threads add to a plain counter under the guard, and each checks that
// nobody else is inside while it is.
TEST(CCritSecGuard, ExcludesOtherThreads) {
  CCritSec lock;
  long counter = 0;
  std::atomic<int> inside{0};
  std::atomic<bool> overlap{false};
  auto work = [&] {
    for (int i = 0; i < 20000; ++i) {
      CCritSecGuard guard(&lock);
      if (inside.fetch_add(1) != 0) overlap = true;
      ++counter;
      inside.fetch_sub(1);
    }
  };
  std::thread a(work);
  std::thread b(work);
  a.join();
  b.join();
  EXPECT_EQ(counter, 40000);
  EXPECT_FALSE(overlap.load());
}

// The guard leaves at the end of its scope: another thread can enter then.
TEST(CCritSecGuard, LeavesAtScopeEnd) {
  CCritSec lock;
  { CCritSecGuard guard(lock); }
  bool entered = false;
  std::thread t([&] {
    CCritSecGuard guard(&lock);
    entered = true;
  });
  t.join();
  EXPECT_TRUE(entered);
}

}  // namespace
