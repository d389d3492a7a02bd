// What one thread hands to another.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace krv::tool {

// First in, first out, at most `capacity` items at once. Any thread. T can be moved.
template <typename T>
class BoundedQueue {
 public:
  explicit BoundedQueue(size_t capacity) : capacity_(capacity) { items_.reserve(capacity); }

  // Waits for room. False when the queue is closed; the item is gone then.
  bool Push(T item) {
    std::unique_lock lock(mutex_);
    taken_.wait(lock, [this] { return closed_ || items_.size() < capacity_; });
    if (closed_) return false;
    items_.push_back(std::move(item));
    lock.unlock();
    added_.notify_one();
    return true;
  }

  // Waits for an item. Nothing when the queue is closed and empty.
  std::optional<T> Pop() {
    std::unique_lock lock(mutex_);
    added_.wait(lock, [this] { return closed_ || !items_.empty(); });
    if (items_.empty()) return std::nullopt;
    std::optional<T> item(std::move(items_.front()));
    items_.erase(items_.begin());
    lock.unlock();
    taken_.notify_one();
    return item;
  }

  // Takes no more items; those in the queue can still be popped.
  void Close() { End(false); }

  // Takes no more items and drops those in the queue.
  void Cancel() { End(true); }

 private:
  void End(bool drop) {
    {
      const std::lock_guard lock(mutex_);
      closed_ = true;
      if (drop) items_.clear();
    }
    added_.notify_all();
    taken_.notify_all();
  }

  const size_t capacity_;
  std::mutex mutex_;
  std::condition_variable added_;
  std::condition_variable taken_;
  std::vector<T> items_;  // a handful: moving the rest up costs less than memory per item
  bool closed_ = false;
};

}  // namespace krv::tool
