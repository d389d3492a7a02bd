#include "bounded_queue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace krv::tool {
namespace {

// Long enough for a thread that does not wait to come further.
void GiveTime() { std::this_thread::sleep_for(std::chrono::milliseconds(50)); }

TEST(BoundedQueue, ItemsComeOutInTheirOrder) {
  constexpr int kItems = 10000;
  BoundedQueue<int> queue(3);
  std::thread producer([&queue] {
    for (int i = 0; i < kItems; ++i) queue.Push(i);
    queue.Close();
  });
  int expected = 0;
  while (const auto item = queue.Pop()) EXPECT_EQ(*item, expected++);
  EXPECT_EQ(expected, kItems);
  producer.join();
}

TEST(BoundedQueue, NoMoreItemsThanItsCapacityAreInside) {
  BoundedQueue<int> queue(2);
  std::atomic<int> pushed{0};
  std::thread producer([&] {
    for (int i = 0; i < 5; ++i) {
      queue.Push(i);
      ++pushed;
    }
  });
  for (int popped = 0; popped < 5; ++popped) {
    GiveTime();
    EXPECT_LE(pushed, popped + 2);
    EXPECT_EQ(queue.Pop(), popped);
  }
  producer.join();
}

TEST(BoundedQueue, WhatIsInsideAClosedQueueStillComesOut) {
  BoundedQueue<std::unique_ptr<int>> queue(2);
  EXPECT_TRUE(queue.Push(std::make_unique<int>(7)));
  queue.Close();
  EXPECT_FALSE(queue.Push(std::make_unique<int>(8)));
  const auto item = queue.Pop();
  ASSERT_TRUE(item);
  EXPECT_EQ(**item, 7);
  EXPECT_FALSE(queue.Pop());
}

TEST(BoundedQueue, ACancelledQueueIsEmptyAtOnce) {
  BoundedQueue<int> queue(2);
  queue.Push(1);
  queue.Cancel();
  EXPECT_FALSE(queue.Pop());
  EXPECT_FALSE(queue.Push(2));
}

TEST(BoundedQueue, TheEndWakesThoseWhoWait) {
  for (void (BoundedQueue<int>::*end)() : {&BoundedQueue<int>::Close, &BoundedQueue<int>::Cancel}) {
    BoundedQueue<int> full(1);
    BoundedQueue<int> empty(1);
    full.Push(1);
    std::thread producer([&full] { EXPECT_FALSE(full.Push(2)); });
    std::thread consumer([&empty] { EXPECT_FALSE(empty.Pop()); });
    GiveTime();
    (full.*end)();
    (empty.*end)();
    producer.join();
    consumer.join();
  }
}

}  // namespace
}  // namespace krv::tool
