#include "validate/validate_report.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <numeric>
#include <set>
#include <sstream>

#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

constexpr char kIndent[] = "          ";
constexpr size_t kFailuresShown = 3;  // of one test; the report file has more

constexpr char kMore[] = "and ";  // begins the line that counts the failures left out

// What a failure is about: what was expected, whatever was done, and whatever came instead.
std::string About(const std::string& failure) {
  const size_t begin = failure.find("expected ");
  if (begin == std::string::npos) return failure;
  return failure.substr(begin, failure.find(", came ", begin) - begin);
}

// Failures of a test, its crash included.
std::vector<std::string> AllFailures(const CheckResult& result) {
  std::vector<std::string> failures = result.journal.failures;
  if (!result.reason.empty()) failures.push_back(result.reason);
  return failures;
}

nlohmann::ordered_json ToJson(const CheckResult& result) {
  nlohmann::ordered_json json{{"name", result.check->name},
                              {"demand", result.check->demand},
                              {"outcome", OutcomeName(result.outcome)},
                              {"seconds", result.seconds},
                              {"checks", result.journal.checks}};
  for (const auto& [name, value] : result.journal.numbers) json[name] = value;
  json["failures"] = AllFailures(result);
  if (!result.output.empty()) json["output"] = result.output;
  return json;
}

}  // namespace

int64_t Validation::Failures() const {
  return std::count_if(results.begin(), results.end(), [](const CheckResult& result) {
    return result.outcome != Outcome::kPassed;
  });
}

int64_t Validation::Checks() const {
  return std::accumulate(
      results.begin(), results.end(), int64_t{0},
      [](int64_t sum, const CheckResult& result) { return sum + result.journal.checks; });
}

std::vector<Complaint> Validation::Complaints() const {
  std::vector<Complaint> complaints;
  for (const CheckResult& result : results) {
    std::set<std::string> seen;
    for (const std::string& failure : AllFailures(result)) {
      const std::string about = About(failure);
      if (failure.starts_with(kMore) || !seen.insert(about).second) continue;
      const auto same = [&](const Complaint& complaint) { return complaint.what == about; };
      auto found = std::find_if(complaints.begin(), complaints.end(), same);
      if (found == complaints.end()) {
        complaints.push_back({about, 0, std::string(result.check->name) + ": " + failure});
        found = std::prev(complaints.end());
      }
      ++found->tests;
    }
  }
  std::stable_sort(complaints.begin(), complaints.end(),
                   [](const Complaint& a, const Complaint& b) { return a.tests > b.tests; });
  return complaints;
}

std::string ToText(const CheckResult& result) {
  char line[160];
  std::snprintf(line, sizeof line, "%-8s  %-32s %8" PRId64 " checks %7.1f s\n",
                OutcomeName(result.outcome), result.check->name, result.journal.checks,
                result.seconds);
  std::string text = line;
  if (result.outcome == Outcome::kPassed) return text;
  text += std::string(kIndent) + result.check->demand + "\n";
  const std::vector<std::string>& failures = result.journal.failures;
  for (size_t i = 0; i < std::min(failures.size(), kFailuresShown); ++i) {
    text += std::string(kIndent) + "- " + failures[i] + "\n";
  }
  if (failures.size() > kFailuresShown) text += std::string(kIndent) + "- ...\n";
  if (!result.reason.empty()) text += std::string(kIndent) + "- " + result.reason + "\n";
  std::istringstream output(result.output);
  for (std::string one; std::getline(output, one);)
    text += std::string(kIndent) + "  | " + one + "\n";
  return text;
}

std::string Summary(const Validation& validation) {
  std::string text;
  for (const Complaint& complaint : validation.Complaints()) {
    text += (text.empty() ? "\nFound:\n" : "") + std::to_string(complaint.tests) + " x  " +
            complaint.what + "\n" + kIndent + "first in " + complaint.first + "\n";
  }
  char line[160];
  std::snprintf(line, sizeof line,
                "%zu tests, %" PRId64 " checks at strictness %d in %.1f s: %" PRId64 " failed\n",
                validation.results.size(), validation.Checks(), validation.options.strictness,
                validation.seconds, validation.Failures());
  return text + (text.empty() ? "" : "\n") + line;
}

bool WriteReport(const Validation& validation, const std::filesystem::path& file) {
  nlohmann::ordered_json json{{"plugin", host::Utf8(validation.options.plugin)},
                              {"strictness", validation.options.strictness},
                              {"tests", validation.results.size()},
                              {"checks", validation.Checks()},
                              {"failed", validation.Failures()},
                              {"seconds", validation.seconds}};
  json["findings"] = nlohmann::ordered_json::array();
  for (const Complaint& complaint : validation.Complaints()) {
    json["findings"].push_back(
        {{"what", complaint.what}, {"tests", complaint.tests}, {"first", complaint.first}});
  }
  json["results"] = nlohmann::ordered_json::array();
  for (const CheckResult& result : validation.results) json["results"].push_back(ToJson(result));
  std::ofstream stream(host::platform::OpenablePath(file), std::ios::binary);
  stream << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
  stream.close();
  return stream.good();
}

}  // namespace krv::tool
