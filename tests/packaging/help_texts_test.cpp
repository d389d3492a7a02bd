// The manual page and the completion of bash, as the build makes them, against `krv --help`.
#include <gmock/gmock.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "support/process.h"
#include "support/scratch_folder.h"

namespace krv::host {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::MatchesRegex;
using ::testing::Not;

std::string ReadText(const char* file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string Help(const std::string& command) {
  const test::ProgramOutcome outcome = test::RunProgram(KRV_PROGRAM, command + " --help");
  EXPECT_EQ(outcome.code, 0);
  return outcome.output;
}

// What a pattern's first group matches at the start of the text's lines.
std::set<std::string> AtLineStarts(const std::string& text, const std::regex& pattern) {
  std::set<std::string> found;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    while (std::regex_search(line, match, pattern, std::regex_constants::match_continuous)) {
      found.insert(match[1]);
      line = match.suffix();
    }
  }
  return found;
}

std::set<std::string> Commands() {
  const std::string help = Help("");
  return AtLineStarts(help.substr(help.find("Subcommands:")), std::regex("  ([a-z]+) .*"));
}

// "-o" and "--output" of "  -o,--output TEXT ...".
std::set<std::string> OptionsOf(const std::string& command) {
  return AtLineStarts(Help(command), std::regex("(?:  |,)(--?[a-z][a-z-]*)"));
}

// The manual's part about a command, with its dashes as people read them.
std::string ManualOf(const std::string& command) {
  std::string text = std::regex_replace(ReadText(KRV_MANUAL "/krv.1"), std::regex(R"(\\-)"), "-");
  if (command.empty()) return text;
  const size_t start = text.find("\n.SS " + command + "\n");
  EXPECT_NE(start, std::string::npos) << command;
  return text.substr(start, text.find("\n.S", start + 1) - start);
}

// What bash offers behind `words`, of which the last is unfinished.
std::set<std::string> Completed(const std::string& words) {
  const test::ScratchFolder folder;
  folder.Write("complete.sh", "source " KRV_MANUAL "/krv.bash\nCOMP_WORDS=(" + words +
                                  ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_krv\n"
                                  "printf '%s\\n' \"${COMPREPLY[@]}\"\n");
  const test::ProgramOutcome outcome =
      test::RunProgram("/bin/bash", "\"" + folder.text() + "/complete.sh\"");
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_EQ(outcome.error_output, "");
  std::set<std::string> replies;
  std::istringstream lines(outcome.output);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) replies.insert(line);
  }
  return replies;
}

TEST(HelpTexts, TheManualHasEveryOptionOfEveryCommand) {
  ASSERT_THAT(Commands(), IsSupersetOf({"render", "demo", "new", "encipher", "validate"}));
  for (const std::string& command : Commands()) {
    EXPECT_THAT(OptionsOf(command), Not(IsEmpty()));
    for (const std::string& option : OptionsOf(command)) {
      EXPECT_THAT(ManualOf(command), HasSubstr("\\fB" + option + "\\fR")) << command;
    }
  }
  for (const std::string& option : OptionsOf("")) {
    EXPECT_THAT(ManualOf(""), HasSubstr("\\fB" + option + "\\fR"));
  }
}

// But for the date that it leaves out, as it would change with every build.
TEST(HelpTexts, TheManualPassesTheLint) {
  const test::ProgramOutcome outcome =
      test::RunProgram(KRV_MANDOC, "-T lint -W warning " KRV_MANUAL "/krv.1");
  EXPECT_THAT(outcome.output + outcome.error_output,
              MatchesRegex("[^\n]*:1:11: WARNING: missing date[^\n]*\n"));
}

TEST(HelpTexts, TheCompletionOffersEveryCommandAndOption) {
  const std::set<std::string> commands = Commands();
  EXPECT_THAT(Completed("krv \"\""), IsSupersetOf(commands));
  for (const std::string& command : commands) {
    EXPECT_EQ(Completed("krv " + command + " -"), OptionsOf(command)) << command;
  }
}

TEST(HelpTexts, TheCompletionTakesWhatIsTypedIntoAccount) {
  EXPECT_EQ(Completed("krv ren"), std::set<std::string>{"render"});
  EXPECT_EQ(Completed("krv render clip.mp4 --back"), std::set<std::string>{"--background"});
  EXPECT_THAT(Completed("krv render cl"), IsEmpty()) << "files are completed by bash itself";
}

TEST(HelpTexts, HiddenOptionsStayHidden) {
  for (const char* hidden : {"--run-check", "--journal", "--print-manual"}) {
    EXPECT_THAT(ReadText(KRV_MANUAL "/krv.bash"), Not(HasSubstr(hidden)));
    EXPECT_THAT(ManualOf(""), Not(HasSubstr(hidden)));
  }
}

}  // namespace
}  // namespace krv::host
