// A web browser without a window.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace krv::test {

struct BrowserOptions {
  bool dark = false;  // what the user prefers
  bool reduced_motion = false;
};

struct BrowserOutcome {
  std::string title;                 // of the page once it has loaded
  std::vector<std::string> console;  // the lines that the page or its loading has logged
};

// Opens the page, waits for its load event and closes it. Throws when the browser fails.
BrowserOutcome OpenPage(const std::filesystem::path& page, const BrowserOptions& options);

// The page with a script in front of everything else in its head.
std::string WithScript(std::string page, std::string_view script);

}  // namespace krv::test
