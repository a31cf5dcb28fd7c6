// Tests of the critical section and its guard: re-entry by the holder, the base class, exclusion of threads.
#include "platform/Sync.h"
#include <gtest/gtest.h>
#include <atomic>
#include <thread>
TEST(CCritSec, OwnerMayReenterAlsoThroughTheBaseAndTheGuards) {
  CCritSec lock;
  CSyncObject& base = lock;
  EXPECT_EQ(lock.Lock() + base.Lock(), 2);  // a second enter by the holder does not block
  { CCritSecGuard byPointer(&lock), byReference(lock), none(nullptr); }  // null guards nothing
  EXPECT_EQ(base.Unlock() + lock.Unlock(), 2);
}
// Two threads add to a plain counter under the guard, and each checks that nobody else is inside while it is.
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
