// The warning of parameters that no shader reads, against what is known to be read.
#include "check/unread_parameters.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "package_files.h"
#include "packages/uniform_table.h"
#include "support/file_system.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using ::testing::IsEmpty;
using ::testing::Not;

// The lines about the package in a folder.
std::vector<std::string> Warnings(const std::filesystem::path& folder) {
  tool::Findings findings;
  const auto document =
      tool::DescriptionDocument::Read(folder / host::kDescriptionFileName, &findings).value();
  tool::LintUnreadParameters(document, folder, &findings);
  std::vector<std::string> lines;
  for (const tool::Finding& finding : findings) lines.push_back(tool::ToText(finding));
  return lines;
}

TEST(UnreadParameterWarning, IsNotGivenForAnyShippedPackage) {
  const auto folders = host::FindPackageFolders(KRV_PACKAGES);
  ASSERT_THAT(folders, Not(IsEmpty()));
  for (const auto& folder : folders) EXPECT_THAT(Warnings(folder), IsEmpty());
}

TEST(UnreadParameterWarning, IsNotGivenForWhatTheTableSaysIsRead) {
  for (const auto& [name, shader] : ReadUniformTable(KRV_PACKAGES "/uniforms.json")) {
    nlohmann::json parameters = {{{"name", shader.kind_parameter}, {"type", 3}}};
    for (const TableParameter& parameter : shader.parameters) {
      if (parameter.kinds.empty()) continue;
      parameters.push_back({{"name", parameter.name}, {"type", parameter.type}});
    }
    const ScratchFolder folder;
    folder.Write("description.json",
                 nlohmann::json{{"opengl_frag", {name}}, {"params", parameters}}.dump());
    EXPECT_THAT(Warnings(folder.path()), IsEmpty()) << name;
  }
}

}  // namespace
}  // namespace krv::test
