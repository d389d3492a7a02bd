// Result codes, value kinds and small records that cross the boundary between a host and the
// plug-in.
//
// Rules that hold for every table of operations in include/krv/:
//
// - An object is a pointer to a block whose first 8 bytes point to its table: an array of function
//   pointers, counted from slot 0. The object itself is always the first argument; the calling
//   convention is the platform's ordinary C one. The C++ classes below have exactly that form under
//   the common C++ ABIs, because none of them declares a virtual destructor, overloads an
//   operation or returns a record. A host in another language fills the tables by hand.
// - Only fixed-width integers, float, double, uint8_t as truth value (0 or 1) and pointers cross.
//   No C++ library type and no exception does, in either direction.
// - Texts are UTF-8 and NUL-terminated, and valid for the call only, unless said otherwise.
//
// Words used for threads:
// - [main-thread]   the one thread that starts the plug-in up and registers effects.
// - [gl-thread]     any thread, as long as the host's OpenGL context is current on it. One instance
//                   is used by one thread at a time, except where an operation says otherwise.
// - [any-thread]    no condition.
#pragma once

#include <cstdint>

namespace krv {

// Result codes of the operations that a host calls.
enum ResultCode : int32_t {
  kOk = 0,
  // Nothing to work on: unknown name, index out of range, nothing found, device kind mismatch,
  // missing context or output frame.
  kNothingToDo = 2,
  // Something could not be created, loaded or drawn.
  kFailed = 4,
};

// Levels of HostUtilSuite::Log.
enum LogLevel : int32_t {
  kLogInformation = 1,
  kLogError = 4,
};

// What a ParameterValue holds. A host receives these kinds by the registrar's operations and
// answers EffectContext::GetParameterValue with them.
enum ParameterKind : int32_t {
  kKindNone = 0,
  kKindInt = 3,
  kKindIntInternal = 4,  // as kKindInt, never announced to a host
  kKindFloat = 5,
  kKindDouble = 6,  // never announced to a host
  kKindBool = 7,
  kKindText = 8,
  kKindColor = 15,  // 0xRRGGBB in a 32-bit integer; answered as kKindInt or kKindColor
};

// A kind and a value, 16 bytes. The value sits at offset 8 in the form that the kind says.
struct ParameterValue {
  int32_t kind;
  int32_t reserved;  // keeps the value at offset 8; 0
  union {
    int32_t as_int;       // kinds 3, 4 and 15
    float as_float;       // kind 5
    double as_double;     // kind 6
    uint8_t as_bool;      // kind 7; 0 or 1
    const char* as_text;  // kind 8; valid until the next call on the object that filled it
  };
};
static_assert(sizeof(ParameterValue) == 16);

}  // namespace krv
