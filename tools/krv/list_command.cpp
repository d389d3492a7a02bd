#include "list_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "parameter_text.h"
#include "plugin_host.h"
#include "registered_effects.h"

namespace krv::tool {
namespace {

using host::EffectListing;
using host::ParameterListing;

struct ListOptions {
  FileOptions files;
  bool json = false;
};

nlohmann::ordered_json ToJson(const ParameterListing& parameter) {
  nlohmann::ordered_json json{{"name", parameter.name},
                              {"kind", host::ParameterKindName(parameter.kind)}};
  switch (parameter.kind) {
    case kKindBool:
      json["default"] = parameter.default_number != 0;
      break;
    case kKindText:
      json["default"] = parameter.default_text;
      break;
    case kKindFloat:
      json["minimum"] = ShortestDouble(parameter.minimum);
      json["maximum"] = ShortestDouble(parameter.maximum);
      json["default"] = ShortestDouble(parameter.default_number);
      break;
    default:
      json["minimum"] = static_cast<int32_t>(parameter.minimum);
      json["maximum"] = static_cast<int32_t>(parameter.maximum);
      json["default"] = static_cast<int32_t>(parameter.default_number);
  }
  json["hidden"] = parameter.hidden;
  return json;
}

nlohmann::ordered_json ToJson(const EffectListing& effect) {
  nlohmann::ordered_json json{{"unique_name", effect.unique_name},
                              {"display_name", effect.display_name},
                              {"flags", effect.flags}};
  json["parameters"] = nlohmann::ordered_json::array();
  for (const ParameterListing& parameter : effect.parameters) {
    json["parameters"].push_back(ToJson(parameter));
  }
  return json;
}

// Text that is not UTF-8 is shown with replacement characters rather than refused.
std::string Dump(const nlohmann::ordered_json& json) {
  return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

using Row = std::array<std::string, 6>;

Row ToRow(const ParameterListing& parameter) {
  Row row{parameter.name,
          host::ParameterKindName(parameter.kind),
          "",
          "",
          "",
          parameter.hidden ? "hidden" : ""};
  if (parameter.kind == kKindBool) {
    row[4] = parameter.default_number != 0 ? "true" : "false";
  } else if (parameter.kind == kKindText) {
    row[4] = "\"" + parameter.default_text + "\"";
  } else {
    if (parameter.HasRange()) {
      row[2] = NumberText(parameter.kind, parameter.minimum);
      row[3] = NumberText(parameter.kind, parameter.maximum);
    }
    row[4] = NumberText(parameter.kind, parameter.default_number);
  }
  return row;
}

void PrintTable(const std::vector<Row>& rows) {
  std::array<size_t, std::tuple_size_v<Row>> widths{};
  for (const Row& row : rows) {
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  for (const Row& row : rows) {
    std::string line = " ";
    for (size_t i = 0; i < row.size(); ++i) {
      line += ' ' + row[i] + std::string(widths[i] - row[i].size() + 1, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    std::printf("%s\n", line.c_str());
  }
}

void Print(const EffectListing& effect) {
  std::printf("%s  %s\n", effect.unique_name.c_str(), effect.display_name.c_str());
  if (effect.parameters.empty()) return;
  std::vector<Row> rows{{"parameter", "kind", "minimum", "maximum", "default", ""}};
  for (const ParameterListing& parameter : effect.parameters) rows.push_back(ToRow(parameter));
  PrintTable(rows);
}

void Print(const std::vector<EffectListing>& effects, bool json) {
  if (json) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const EffectListing& effect : effects) list.push_back(ToJson(effect));
    std::printf("%s\n", Dump(list).c_str());
    return;
  }
  for (size_t i = 0; i < effects.size(); ++i) {
    if (i > 0) std::printf("\n");
    Print(effects[i]);
  }
}

int List(const ListOptions& options) {
  std::string error;
  const auto files = host::FindFiles(options.files.wishes(), &error);
  if (!files) return UsageError(error);
  const auto plugin = host::PluginHost::Create({.plugin = files->plugin}, &error);
  if (plugin == nullptr) return UsageError(error);
  bool complete = true;
  const auto effects = RegisterEffects(plugin.get(), files->packages, &complete);
  if (effects.empty()) return kExitUsage;
  Print(effects, options.json);
  return complete ? kExitOk : kExitFound;
}

}  // namespace

void AddListCommand(CLI::App& app, Action* action) {
  CLI::App* command = app.add_subcommand("list", "Shows every effect with its parameters");
  auto options = std::make_shared<ListOptions>();
  options->files.AddPlugin(*command);
  options->files.AddPackages(*command);
  command->add_flag("--json", options->json, "Prints JSON");
  command->callback([options, action] { *action = [options] { return List(*options); }; });
}

}  // namespace krv::tool
