// Objects and tables as a host in another language lays them out: a block that begins with a
// pointer to an array of function pointers.
#pragma once

#include <cstddef>
#include <cstring>

namespace krv::test {

using RawFunction = void (*)();

// The part of an object that the other side sees, followed by what its own operations need.
template <class Owner>
struct RawObject {
  const RawFunction* table;
  Owner* owner;
};

template <class Function>
RawFunction Slot(Function* function) {
  return reinterpret_cast<RawFunction>(function);
}

inline const RawFunction* TableOf(const void* object) {
  const RawFunction* table = nullptr;
  std::memcpy(&table, object, sizeof(table));
  return table;
}

// Calls an operation by its slot. The arguments must have exactly the operation's types.
template <class Result, class... Args>
Result CallSlot(void* object, size_t slot, Args... args) {
  return reinterpret_cast<Result (*)(void*, Args...)>(TableOf(object)[slot])(object, args...);
}

}  // namespace krv::test
