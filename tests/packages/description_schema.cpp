#include "packages/description_schema.h"

#include <fstream>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

namespace krv::test {

using valijson::adapters::NlohmannJsonAdapter;

struct DescriptionSchema::Compiled {
  valijson::Schema schema;
};

DescriptionSchema::DescriptionSchema(const std::filesystem::path& file)
    : json_(nlohmann::json::parse(std::ifstream(file))), compiled_(std::make_unique<Compiled>()) {
  valijson::SchemaParser parser(valijson::SchemaParser::kDraft7);
  parser.populateSchema(NlohmannJsonAdapter(json_), compiled_->schema);
}

DescriptionSchema::~DescriptionSchema() = default;

std::vector<std::string> DescriptionSchema::Refusals(const nlohmann::json& document) const {
  valijson::Validator validator(valijson::Validator::kStrongTypes);
  valijson::ValidationResults results;
  std::vector<std::string> refusals;
  if (validator.validate(compiled_->schema, NlohmannJsonAdapter(document), &results)) {
    return refusals;
  }
  valijson::ValidationResults::Error error;
  while (results.popError(error)) {
    std::string place;
    for (const std::string& step : error.context) place += step;
    refusals.push_back(place + ": " + error.description);
  }
  return refusals;
}

}  // namespace krv::test
