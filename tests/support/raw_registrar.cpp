#include "support/raw_registrar.h"

#include <cstdint>
#include <sstream>

namespace krv::test {
namespace {

constexpr int32_t kResultNobodyReads = 77;

void Append(std::ostream& line, const char* text) { line << " \"" << text << '"'; }
void Append(std::ostream& line, uint8_t value) { line << ' ' << static_cast<int>(value); }
template <class Number>
void Append(std::ostream& line, Number value) {
  line << ' ' << value;
}

// The operation of one slot, with its arguments after the object.
template <int slot, class... Args>
int32_t Record(RawObject<RawRegistrar>* self, Args... args) {
  std::ostringstream line;
  line << slot << ':';
  (Append(line, args), ...);
  self->owner->calls.push_back(line.str());
  return kResultNobodyReads;
}

using Text = const char*;

}  // namespace

RawRegistrar::RawRegistrar() {
  static const RawFunction table[] = {
      Slot(Record<0, Text, Text>),
      Slot(Record<1, uint32_t>),
      Slot(Record<2, int32_t>),
      Slot(Record<3>),
      Slot(Record<4, int32_t, int32_t, Text, Text, float, float, float, uint32_t>),
      Slot(Record<5, int32_t, int32_t, Text, Text, int32_t, int32_t, int32_t, int32_t, uint32_t>),
      Slot(Record<6, int32_t, int32_t, Text, Text, int32_t, int32_t, int32_t, uint32_t>),
      Slot(Record<7, int32_t, int32_t, Text, Text, uint8_t, uint32_t>),
      Slot(Record<8>),
      Slot(Record<9>),
      Slot(Record<10>),
      Slot(Record<11>),
      Slot(Record<12>),
      Slot(Record<13>),
      Slot(Record<14, int32_t, int32_t, Text, Text, Text, uint32_t>),
  };
  object_ = {table, this};
}

}  // namespace krv::test
