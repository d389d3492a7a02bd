#include "gallery/browser.h"

#include <sstream>
#include <stdexcept>

#include "support/process.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

std::string Arguments(const std::filesystem::path& page, const BrowserOptions& options,
                      const ScratchFolder& profile) {
  std::string arguments =
      "--headless --no-sandbox --disable-gpu --no-first-run --disable-background-networking "
      "--window-size=1400,1000 --hide-scrollbars "
      "--autoplay-policy=no-user-gesture-required --enable-logging=stderr --dump-dom";
  arguments += " \"--user-data-dir=" + profile.text() + "\"";
  arguments += std::string(" --blink-settings=preferredColorScheme=") + (options.dark ? "0" : "1");
  if (options.reduced_motion) arguments += " --force-prefers-reduced-motion";
  return arguments + " \"file://" + page.string() + "\"";
}

// What is between the tags, with the characters that the dump escapes.
std::string TitleOf(const std::string& page) {
  const std::string open = "<title>";
  const size_t start = page.find(open);
  const size_t end = page.find("</title>");
  if (start == std::string::npos || end == std::string::npos) return {};
  std::string title = page.substr(start + open.size(), end - start - open.size());
  for (const auto& [from, to] : {std::pair<std::string, std::string>("&lt;", "<"),
                                 {"&gt;", ">"},
                                 {"&nbsp;", "\u00A0"},
                                 {"&amp;", "&"}}) {
    for (size_t at = 0; (at = title.find(from, at)) != std::string::npos; at += to.size()) {
      title.replace(at, from.size(), to);
    }
  }
  return title;
}

}  // namespace

BrowserOutcome OpenPage(const std::filesystem::path& page, const BrowserOptions& options) {
  const ScratchFolder profile;
  const ProgramOutcome outcome = RunProgram(KRV_BROWSER, Arguments(page, options, profile));
  if (outcome.code != 0) throw std::runtime_error("the browser fails: " + outcome.error_output);
  BrowserOutcome result;
  result.title = TitleOf(outcome.output);
  std::istringstream lines(outcome.error_output);
  for (std::string line; std::getline(lines, line);) {
    if (line.find(":CONSOLE") != std::string::npos) result.console.push_back(line);
  }
  return result;
}

std::string WithScript(std::string page, std::string_view script) {
  const std::string head = "<head>\n<meta charset=\"utf-8\">\n";
  const size_t at = page.find(head);
  if (at == std::string::npos) throw std::runtime_error("the page has no head");
  page.insert(at + head.size(), "<script>\n" + std::string(script) + "</script>\n");
  return page;
}

}  // namespace krv::test
