#include "studio/description_text.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <vector>

#include "json_places.h"
#include "parameter_text.h"
#include "platform/file_system.h"
#include "studio/saved_file.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

using nlohmann::json;
using tool::JsonPlaces;
using Span = JsonPlaces::Span;

std::string NumberLike(std::string_view old, std::string number) {
  const bool had_fraction = old.find('.') != std::string_view::npos;
  if (had_fraction && number.find_first_of(".e") == std::string::npos) number += ".0";
  return number;
}

// The value as JSON, in the form of the one that it replaces.
std::string JsonText(const host::HostValue& value, std::string_view old) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    return json(*text).dump(-1, ' ', false, json::error_handler_t::replace);
  }
  if (const auto* truth = std::get_if<bool>(&value)) {
    const bool was_word = old == "true" || old == "false";
    if (was_word) return *truth ? "true" : "false";
    return NumberLike(old, *truth ? "1" : "0");
  }
  if (const auto* number = std::get_if<float>(&value)) {
    return NumberLike(old, tool::NumberText(kKindFloat, static_cast<double>(*number)));
  }
  return NumberLike(old, std::to_string(std::get<int32_t>(value)));
}

// Where each parameter's default stands; of parameters of one name the last one's.
std::map<std::string, Span, std::less<>> DefaultsOf(const JsonPlaces& places) {
  std::map<std::string, Span, std::less<>> defaults;
  const auto params = places.Member(places.Whole(), "params");
  if (!params) return defaults;
  for (const Span parameter : places.Elements(*params)) {
    const auto name = places.Member(parameter, "name");
    const auto value = places.Member(parameter, "default_value");
    if (!name || !value) continue;
    const json parsed = json::parse(places.Text(*name));
    if (parsed.is_string()) defaults[parsed.get<std::string>()] = *value;
  }
  return defaults;
}

}  // namespace

std::optional<std::string> ReplaceDefaults(std::string_view text, const ValuesByName& values,
                                           std::string* error) {
  if (!json::accept(text)) {
    *error = "the description is not valid JSON";
    return std::nullopt;
  }
  const JsonPlaces places(text);
  const auto defaults = DefaultsOf(places);
  std::vector<std::pair<Span, std::string>> changes;
  for (const auto& [name, value] : values) {
    const auto found = defaults.find(name);
    if (found == defaults.end()) {
      *error = "the description has no parameter \"" + name + "\" with a default_value";
      return std::nullopt;
    }
    changes.emplace_back(found->second, JsonText(value, places.Text(found->second)));
  }
  // From the end on, so that the places before stay right.
  std::sort(changes.begin(), changes.end(),
            [](const auto& a, const auto& b) { return a.first.begin > b.first.begin; });
  std::string changed(text);
  for (const auto& [span, value] : changes) {
    changed.replace(span.begin, span.end - span.begin, value);
  }
  return changed;
}

bool SaveDefaults(const std::filesystem::path& description, const ValuesByName& values,
                  std::string* error) {
  const std::string name = host::Utf8(description);
  std::ifstream in(host::platform::OpenablePath(description), std::ios::binary);
  std::ostringstream content;
  if (!in || !(content << in.rdbuf())) {
    *error = name + ": cannot be read";
    return false;
  }
  in.close();
  std::string reason;
  const auto changed = ReplaceDefaults(content.str(), values, &reason);
  if (!changed) {
    *error = name + ": " + reason;
    return false;
  }
  // What cannot be written is mostly an installed program's.
  return SaveFile(description, *changed,
                  "make a copy of your own with `krv new NAME --from EFFECT`", error);
}

}  // namespace krv::studio
