// A package that is being worked on.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "check/finding.h"
#include "effect_session.h"
#include "package_copy.h"
#include "plugin_host.h"
#include "studio/folder_watch.h"

namespace krv::studio {

// Keeps the last version of the package that works, however the files change. On the host's thread
// throughout.
class LivePackage {
 public:
  LivePackage(std::shared_ptr<host::PluginHost> host, std::filesystem::path folder);

  // Looks whether files were saved and loads them. Whether it did.
  bool Refresh();

  // Loads the files as they are. What is wrong with them, as `krv check` says it, is in findings();
  // with errors the version before stays.
  void Load();

  // "low", "medium" or "high" instead of the package's own quality; empty for that.
  void SetQuality(const std::string& quality);

  const tool::Findings& findings() const { return findings_; }

  // The version that works; null before there is one. It has no parameter values of its own.
  host::EffectSession* session() { return session_.get(); }

  // The package's own quality and name, of the version that works.
  const std::string& own_quality() const { return own_quality_; }
  const std::string& unique_name() const { return unique_name_; }

  // Another instance of the version that works, of the package's own quality; its figure alone when
  // `without_blend`. Null on failure, with one line in *error. The object must outlive it.
  std::unique_ptr<host::EffectSession> MakeSession(bool without_blend, std::string* error);

 private:
  struct Version {
    std::unique_ptr<host::PackageCopy> copy;
    std::unique_ptr<host::EffectSession> session;
  };

  // Registers a variant of the package in `folder` and makes an instance of it.
  bool Make(const std::filesystem::path& folder, host::PackageChanges changes, Version* version,
            std::string* error);
  bool MakeShown(std::string* error);  // session_ from snapshot_ and quality_
  void Report(const std::string& message);

  std::shared_ptr<host::PluginHost> host_;
  std::filesystem::path folder_;
  FolderWatch watch_;
  tool::Findings findings_;
  std::string quality_;
  std::string own_quality_;
  std::string unique_name_;
  std::unique_ptr<host::PackageCopy> snapshot_;  // of the version that works
  std::unique_ptr<host::PackageCopy> shown_;     // what session_ is made from
  std::unique_ptr<host::PackageCopy> exported_;  // what MakeSession made last
  std::unique_ptr<host::EffectSession> session_;
};

}  // namespace krv::studio
