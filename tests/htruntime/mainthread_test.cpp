#include "htruntime/mainthread.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <pthread.h>
#include <stdexcept>
#include <string>
#include <thread>

#include "htruntime/exception.h"

namespace ht {
namespace {

TEST(MainThread, RunsCallsOfAnyThreadInOrder) {
  std::string log;
  std::atomic<int> woken = 0;
  HtSetMainThreadWake([&] { ++woken; });
  HtQueueMainThread([&] { log += "a"; });
  std::thread([&] {
    EXPECT_FALSE(HtIsMainThread());
    HtQueueMainThread([&] { log += HtIsMainThread() ? "b" : "?"; });
    EXPECT_THROW(HtPumpMainThread(), EAssertionFailed);
  }).join();
  EXPECT_EQ(woken, 2);
  EXPECT_EQ(log, "");
  EXPECT_EQ(HtPumpMainThread(), 2);
  EXPECT_EQ(log, "ab");
  EXPECT_EQ(HtPumpMainThread(), 0);
  HtSetMainThreadWake(nullptr);
}

TEST(MainThread, CallsThatQueueWaitForTheNextPump) {
  std::string log;
  HtQueueMainThread([&] {
    log += "a";
    HtQueueMainThread([&] { log += "c"; });
  });
  HtQueueMainThread([&] { log += "b"; });
  EXPECT_EQ(HtPumpMainThread(), 2);
  EXPECT_EQ(log, "ab");
  EXPECT_EQ(HtPumpMainThread(), 1);
  EXPECT_EQ(log, "abc");
}

TEST(MainThread, AnExceptionPassesAndTheRestStays) {
  std::string log;
  HtQueueMainThread([&] { log += "a"; });
  HtQueueMainThread([] { throw std::runtime_error("stop"); });
  HtQueueMainThread([&] { log += "b"; });
  EXPECT_THROW(HtPumpMainThread(), std::runtime_error);
  EXPECT_EQ(log, "a");
  EXPECT_EQ(HtPumpMainThread(), 1);
  EXPECT_EQ(log, "ab");
}

TEST(MainThread, WhatACallHoldsMayQueueWhenItDies) {
  std::string log;
  const auto farewell = [&](int*) { HtQueueMainThread([&] { log += "late"; }); };
  HtQueueMainThread([held = std::shared_ptr<int>(nullptr, farewell)] {});
  EXPECT_EQ(HtPumpMainThread(), 1);
  EXPECT_EQ(HtPumpMainThread(), 1);
  EXPECT_EQ(log, "late");
}

TEST(MainThread, AnotherThreadMayBeTheMainOne) {
  std::thread([] {
    HtSetMainThread();
    EXPECT_TRUE(HtIsMainThread());
  }).join();
  EXPECT_FALSE(HtIsMainThread());
  HtSetMainThread();
  EXPECT_TRUE(HtIsMainThread());
}

TEST(MainThread, NamesAreCutBetweenCharacters) {
  const std::pair<const char16_t*, const char*> kRows[] = {{u"HTAnimation", "HTAnimation"},
                                                           {u"0123456789abcdefgh", "0123456789abcde"},
                                                           {u"0123456789abcdж", "0123456789abcd"}};
  for (const auto& [name, kept] : kRows)
    std::thread([name = name, kept = kept] {
      HtSetThreadName(name);
      char buffer[16] = {};
      pthread_getname_np(pthread_self(), buffer, sizeof buffer);
      EXPECT_STREQ(buffer, kept);
    }).join();
}

}  // namespace
}  // namespace ht
