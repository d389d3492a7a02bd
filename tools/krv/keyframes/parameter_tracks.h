// The values of an effect's parameters over time, as a host's source of values.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "keyframes/remarks.h"
#include "keyframes/track.h"
#include "parameter_values.h"

namespace krv::tool {

class ParameterTracks final : public host::ParameterSource {
 public:
  void Set(std::string name, Track track) {
    tracks_.insert_or_assign(std::move(name), std::move(track));
  }
  void Remove(std::string_view name);

  // Of the file that the values are from.
  void SetRemarks(std::vector<FileRemark> remarks) { remarks_ = std::move(remarks); }

  std::optional<host::HostValue> ValueAt(std::string_view name, int64_t position) const override;

  const std::map<std::string, Track, std::less<>>& tracks() const { return tracks_; }
  const std::vector<FileRemark>& remarks() const { return remarks_; }

 private:
  std::map<std::string, Track, std::less<>> tracks_;
  std::vector<FileRemark> remarks_;
};

// Values of one source, and of another where the first has none. Borrows both.
class LayeredValues final : public host::ParameterSource {
 public:
  LayeredValues(const host::ParameterSource* upper, const host::ParameterSource* lower)
      : upper_(upper), lower_(lower) {}

  std::optional<host::HostValue> ValueAt(std::string_view name, int64_t position) const override;

 private:
  const host::ParameterSource* upper_;
  const host::ParameterSource* lower_;
};

}  // namespace krv::tool
