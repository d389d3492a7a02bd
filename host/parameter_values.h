// The user's parameter values, and their text form `name=value`.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "registrar.h"

namespace krv::host {

// An integer (also a colour, 0xRRGGBB), a float, a boolean or a text.
using HostValue = std::variant<int32_t, float, bool, std::string>;

// Where an effect's parameter values come from. Called on the thread that renders.
class ParameterSource {
 public:
  virtual ~ParameterSource() = default;
  // The value at a frame index, or nothing when the declared default holds.
  virtual std::optional<HostValue> ValueAt(std::string_view name, int64_t position) const = 0;
};

// Values that hold for every frame.
class ParameterValues final : public ParameterSource {
 public:
  // Takes one `name=value` for a parameter of `effect`. False, with one line in *error that says
  // what is wrong, when the effect has no such parameter, or the value is not of its kind or
  // outside the announced limits. Values by kind:
  //   int, float   a decimal number
  //   bool         true, false, yes, no, on, off, 1, 0
  //   colour       #RRGGBB, 0xRRGGBB or a decimal number
  //   text         everything after the first "="; of a gradient one that makes one, or nothing
  bool Assign(const EffectListing& effect, std::string_view assignment, std::string* error);

  // Sets a value without looking at an announcement.
  void Set(std::string name, HostValue value);

  std::optional<HostValue> ValueAt(std::string_view name, int64_t position) const override;

 private:
  std::map<std::string, HostValue, std::less<>> values_;
};

// Reads the text form of one parameter's value, as Assign does.
std::optional<HostValue> ParseParameterValue(const ParameterListing& parameter,
                                             std::string_view text, std::string* error);

// Reads a colour as Assign does: 0xRRGGBB, or nothing.
std::optional<int32_t> ParseColour(std::string_view text);

// What to say, in one line, of a name that no parameter of the effect has.
std::string UnknownParameter(const EffectListing& effect, std::string_view name);

// What to say, in one line, of a value of another kind than the parameter's; `value` as the user
// wrote it.
std::string WrongKind(const ParameterListing& parameter, std::string_view value);

// What to say, in one line, of a value outside the announced limits, which `text` is as the user
// wrote it; nothing when it is within them.
std::optional<std::string> BeyondLimits(const ParameterListing& parameter, const HostValue& value,
                                        std::string_view text);

}  // namespace krv::host
