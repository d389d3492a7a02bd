// A "description.json" with the places of its values.
#pragma once

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "check/finding.h"

namespace krv::tool {

// A value's type in words: "an object", "a text".
std::string TypeName(const nlohmann::ordered_json& value);

// Keys that occur twice in one object are reported when the file is read: the value that the
// plug-in sees is the last.
class DescriptionDocument {
 public:
  // Reads and parses the file. Nothing when it cannot be read or is not JSON; the findings say what
  // and where.
  static std::optional<DescriptionDocument> Read(const std::filesystem::path& file,
                                                 Findings* findings);

  const nlohmann::ordered_json& json() const { return json_; }

  // As the file has it.
  const std::string& text() const { return text_; }

  // A finding about the value at a JSON pointer, at its line.
  Finding At(const std::string& pointer, Severity severity, std::string message) const;

 private:
  std::string file_;
  std::string text_;
  nlohmann::ordered_json json_;
  std::map<std::string, int> lines_;  // by JSON pointer
};

}  // namespace krv::tool
