// The parameters of the package as the user sets them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "registrar.h"
#include "studio/description_text.h"

namespace krv::studio {

// Only what differs from the package's defaults is kept. One thread.
class ParameterSheet {
 public:
  // The effect as the package announces it now. Values that it still has room for stay; those that
  // have become the default, or have no parameter or another kind of it, go.
  void SetEffect(host::EffectListing effect);
  const host::EffectListing& effect() const { return effect_; }

  // The user's value, or the default.
  host::HostValue Value(const host::ParameterListing& parameter) const;

  // Numbers are limited to the parameter's range.
  void Set(const host::ParameterListing& parameter, host::HostValue value);

  bool IsChanged(std::string_view name) const { return changed_.find(name) != changed_.end(); }
  void Reset(std::string_view name);
  void ResetAll();

  // The values that differ from the defaults.
  const ValuesByName& changed() const { return changed_; }

  // Another number after every change of a value.
  uint64_t revision() const { return revision_; }

 private:
  host::EffectListing effect_;
  ValuesByName changed_;
  uint64_t revision_ = 0;
};

host::HostValue DefaultOf(const host::ParameterListing& parameter);

// The value, or the limit that is nearest to it.
host::HostValue Limited(const host::ParameterListing& parameter, host::HostValue value);

}  // namespace krv::studio
