// The schema that authors write descriptions by: packages/description.schema.json.
#pragma once

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace krv::test {

class DescriptionSchema {
 public:
  // Reads and compiles a schema file. Throws when it is none.
  explicit DescriptionSchema(const std::filesystem::path& file);
  ~DescriptionSchema();
  DescriptionSchema(const DescriptionSchema&) = delete;
  DescriptionSchema& operator=(const DescriptionSchema&) = delete;

  // What it refuses of a document, as "PLACE: REASON"; empty when it accepts the document.
  std::vector<std::string> Refusals(const nlohmann::json& document) const;

  const nlohmann::json& json() const { return json_; }

 private:
  struct Compiled;

  nlohmann::json json_;
  std::unique_ptr<Compiled> compiled_;
};

}  // namespace krv::test
