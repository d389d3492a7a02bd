#include "check/parameter_lint.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>

#include "check/unknown_keys.h"
#include "krv/types.h"

namespace krv::tool {
namespace {

using Json = nlohmann::ordered_json;

std::string NumberText(const Json& number) { return number.dump(); }

bool IsNumber(const Json& value) { return value.is_number() || value.is_boolean(); }

double AsNumber(const Json& value) {
  return value.is_boolean() ? (value.get<bool>() ? 1 : 0) : value.get<double>();
}

bool IsInteger(int64_t kind) {
  return kind == kKindInt || kind == kKindIntInternal || kind == kKindColor;
}

const std::vector<std::string>& Keys() {
  static const std::vector<std::string> keys = {"name",      "type",      "ui_type",
                                                "max_value", "min_value", "default_value"};
  return keys;
}

// One entry of "params".
class ParameterLint {
 public:
  ParameterLint(const DescriptionDocument& document, const Json& parameter, std::string pointer,
                Findings* findings)
      : document_(document),
        parameter_(parameter),
        pointer_(std::move(pointer)),
        findings_(findings) {}

  void Run(std::set<std::string>* names) {
    if (!parameter_.is_object()) {
      Report("", Severity::kError, "a parameter is an object, not " + TypeName(parameter_));
      return;
    }
    LintName(names);
    LintUnknownKeys(document_, parameter_, pointer_, "parameters", Keys(), findings_);
    if (const auto kind = Kind()) {
      LintValues(*kind);
      LintRange(*kind);
    }
  }

 private:
  void Report(const std::string& key, Severity severity, std::string message) {
    findings_->push_back(document_.At(pointer_ + key, severity, std::move(message)));
  }

  const Json* Get(const char* key) const {
    const auto found = parameter_.find(key);
    return found == parameter_.end() ? nullptr : &*found;
  }

  void LintName(std::set<std::string>* names) {
    const Json* name = Get("name");
    if (name == nullptr) {
      Report("", Severity::kError, "\"name\" is missing");
    } else if (!name->is_string()) {
      Report("/name", Severity::kError, "must be a text, not " + TypeName(*name));
    } else if (name->get_ref<const std::string&>().empty()) {
      Report("/name", Severity::kError, "is empty");
    } else if (!names->insert(name->get<std::string>()).second) {
      Report("/name", Severity::kError,
             "\"" + name->get<std::string>() + "\" is the name of an earlier parameter too");
    }
  }

  // The parameter's kind if it has values.
  std::optional<int64_t> Kind() {
    const Json* ui_type = Get("ui_type");
    if (ui_type != nullptr && !ui_type->is_string()) {
      Report("/ui_type", Severity::kError, "must be a text, not " + TypeName(*ui_type));
      return std::nullopt;
    }
    if (ui_type != nullptr && *ui_type == "Color") return kKindColor;
    const Json* type = Get("type");
    if (type == nullptr || !type->is_number()) {
      const std::string wrong = type == nullptr ? "\"type\" is missing" : "must be a number";
      Report(type == nullptr ? "" : "/type", Severity::kError, wrong + "; " + kKinds);
      return std::nullopt;
    }
    const auto kind = type->get<int64_t>();
    if (type->get<double>() != static_cast<double>(kind)) {
      Report("/type", Severity::kWarning, "is cut to an integer");
    }
    if ((kind >= kKindInt && kind <= kKindText) || kind == kKindColor) return kind;
    Report("/type", Severity::kError, NumberText(*type) + " is no kind of value; " + kKinds);
    return std::nullopt;
  }

  void LintValues(int64_t kind) {
    for (const char* key : {"max_value", "min_value", "default_value"}) {
      const Json* value = Get(key);
      if (value == nullptr) continue;
      if (kind == kKindText ? value->is_string() : IsNumber(*value)) {
        if (IsInteger(kind)) LintInteger(key, AsNumber(*value));
        continue;
      }
      Report("/" + std::string(key), Severity::kError,
             std::string("must be a ") + (kind == kKindText ? "text" : "number") +
                 ", as \"type\" says, not " + TypeName(*value));
    }
    if (Get("default_value") == nullptr) {
      Report("", Severity::kWarning, "without \"default_value\" hosts do not see the parameter");
    }
  }

  void LintInteger(const char* key, double value) {
    const std::string pointer = "/" + std::string(key);
    if (value < INT32_MIN || value > INT32_MAX) {
      Report(pointer, Severity::kError, "does not fit in a 32-bit integer");
    } else if (value != std::trunc(value)) {
      Report(pointer, Severity::kWarning, "is cut to an integer, as \"type\" says");
    }
  }

  void LintRange(int64_t kind) {
    if (kind == kKindText || kind == kKindBool) return;
    const Json* minimum = Get("min_value");
    const Json* maximum = Get("max_value");
    const Json* value = Get("default_value");
    if (minimum == nullptr || maximum == nullptr || !IsNumber(*minimum) || !IsNumber(*maximum)) {
      return;
    }
    if (AsNumber(*minimum) > AsNumber(*maximum)) {
      Report("/min_value", Severity::kError,
             NumberText(*minimum) + " is above \"max_value\", " + NumberText(*maximum));
    } else if (AsNumber(*minimum) < AsNumber(*maximum) && value != nullptr && IsNumber(*value) &&
               (AsNumber(*value) < AsNumber(*minimum) || AsNumber(*value) > AsNumber(*maximum))) {
      Report("/default_value", Severity::kError,
             NumberText(*value) + " is outside " + NumberText(*minimum) + " to " +
                 NumberText(*maximum));
    }
  }

  static constexpr char kKinds[] =
      "3 and 4 are integers, 5 float, 6 double, 7 boolean, 8 text, 15 colour";

  const DescriptionDocument& document_;
  const Json& parameter_;
  const std::string pointer_;
  Findings* findings_;
};

}  // namespace

void LintParameters(const DescriptionDocument& document, Findings* findings) {
  const auto params = document.json().find("params");
  if (params == document.json().end()) {
    findings->push_back(
        document.At("", Severity::kWarning, "\"params\" is missing: nothing can be set"));
    return;
  }
  if (!params->is_array()) {
    findings->push_back(document.At("/params", Severity::kError,
                                    "must be an array of parameters, not " + TypeName(*params)));
    return;
  }
  std::set<std::string> names;
  for (size_t i = 0; i < params->size(); ++i) {
    ParameterLint(document, (*params)[i], "/params/" + std::to_string(i), findings).Run(&names);
  }
}

}  // namespace krv::tool
