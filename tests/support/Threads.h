// tests/support/Threads.h: runs a body on several threads released at once.
#pragma once

#include <latch>
#include <thread>
#include <vector>

namespace vkt::test {

constexpr int kThreads = 4;

// Runs body(t) for t = 0 .. count - 1, each on a thread of its own, all released at once.
template <class Body> void OnThreads(Body body, int count = kThreads) {
  std::latch start(count);
  std::vector<std::thread> threads;
  for (int t = 0; t < count; ++t) threads.emplace_back([&, t] { start.arrive_and_wait(), body(t); });
  for (std::thread& thread : threads) thread.join();
}

}  // namespace vkt::test
