#include "keyframes/parameter_tracks.h"

namespace krv::tool {

void ParameterTracks::Remove(std::string_view name) {
  const auto found = tracks_.find(name);
  if (found != tracks_.end()) tracks_.erase(found);
}

std::optional<host::HostValue> ParameterTracks::ValueAt(std::string_view name,
                                                        int64_t position) const {
  const auto found = tracks_.find(name);
  if (found == tracks_.end()) return std::nullopt;
  return found->second.ValueAt(static_cast<double>(position));
}

std::optional<host::HostValue> LayeredValues::ValueAt(std::string_view name,
                                                      int64_t position) const {
  auto value = upper_->ValueAt(name, position);
  return value ? value : lower_->ValueAt(name, position);
}

}  // namespace krv::tool
