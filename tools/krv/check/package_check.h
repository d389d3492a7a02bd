// Everything that is wrong with packages.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "check/description_document.h"
#include "check/finding.h"
#include "plugin_host.h"

namespace krv::tool {

// Checks packages one after the other, and that they do not share a name.
class PackageChecker {
 public:
  explicit PackageChecker(std::shared_ptr<host::PluginHost> plugin) : plugin_(std::move(plugin)) {}

  // What is wrong with the package in `folder`, which holds a "description.json".
  Findings Check(const std::filesystem::path& folder);

 private:
  void CheckName(const DescriptionDocument& document, const std::filesystem::path& folder,
                 Findings* findings);

  std::shared_ptr<host::PluginHost> plugin_;
  std::map<std::string, std::string> seen_;  // unique name to folder
};

}  // namespace krv::tool
