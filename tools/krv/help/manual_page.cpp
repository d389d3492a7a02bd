#include "help/manual_page.h"

#include <algorithm>
#include <cctype>

#include "help/option_text.h"

namespace krv::tool {
namespace {

// A line of text: dashes stay dashes, backslashes stay, and no line begins with a request.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    const bool at_start = escaped.empty() || escaped.back() == '\n';
    if (at_start && (c == '.' || c == '\'')) escaped += "\\&";
    if (c == '\\') {
      escaped += "\\e";
    } else if (c == '-') {
      escaped += "\\-";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string Bold(const std::string& text) { return "\\fB" + Escaped(text) + "\\fR"; }
std::string Italic(const std::string& text) { return "\\fI" + Escaped(text) + "\\fR"; }

// "Lists effects." as "lists effects".
std::string Phrase(std::string sentence) {
  if (sentence.ends_with('.')) sentence.pop_back();
  if (!sentence.empty()) {
    sentence.front() =
        static_cast<char>(std::tolower(static_cast<unsigned char>(sentence.front())));
  }
  return sentence;
}

std::string Sentence(const std::string& phrase) { return Escaped(phrase) + ".\n"; }

std::string OptionEntry(const CLI::Option& option) {
  std::string entry = ".TP\n";
  const char* separator = "";
  for (const std::string& name : OptionNames(option)) {
    entry += separator + Bold(name);
    separator = ", ";
  }
  if (TakesValue(option)) entry += " " + Italic(option.get_type_name());
  entry += "\n" + Sentence(option.get_description());
  if (!option.get_default_str().empty()) {
    entry += "Default: " + Escaped(option.get_default_str()) + ".\n";
  }
  return entry;
}

std::string PositionalEntry(const CLI::Option& option) {
  return ".TP\n" + Italic(option.get_name(true)) + "\n" + Sentence(option.get_description());
}

std::string Synopsis(const CLI::App& command) {
  std::string line = Bold("krv " + command.get_name()) + " [" + Italic("options") + "]";
  for (const CLI::Option* option : ShownPositionals(command)) {
    std::string name = Italic(option->get_name(true));
    if (option->get_expected_max() > 1) name += " ...";
    line += option->get_required() ? " " + name : " [" + name + "]";
  }
  return line + "\n";
}

// Lines whose breaks and spaces mean something.
std::string Literal(const std::string& text) {
  return text.empty() ? "" : ".PP\n.nf\n" + Escaped(text) + "\n.fi\n";
}

std::string CommandSection(const CLI::App& command) {
  std::string section = ".SS " + command.get_name() + "\n" + Synopsis(command) + ".PP\n" +
                        Sentence(command.get_description());
  for (const CLI::Option* option : ShownPositionals(command)) section += PositionalEntry(*option);
  for (const CLI::Option* option : ShownOptions(command)) section += OptionEntry(*option);
  return section + Literal(command.get_footer());
}

constexpr char kEnding[] =
    ".SH EXIT STATUS\n"
    ".TP\n\\fB0\\fR\nDone, and nothing was found.\n"
    ".TP\n\\fB1\\fR\nSomething is wrong with what was checked or rendered.\n"
    ".TP\n\\fB2\\fR\nAn option is wrong, or a file or an effect is not there.\n"
    ".TP\n\\fB130\\fR\nInterrupted.\n"
    ".SH ENVIRONMENT\n"
    ".TP\n\\fBKRV_GL_MESSAGES\\fR\n"
    "\\fBprint\\fR shows what the OpenGL driver has to say; \\fBfatal\\fR ends the program at the "
    "first fault.\n";

}  // namespace

std::string ManualPage(const CLI::App& app) {
  std::string version = app.version();
  version.erase(std::min(version.find('\n'), version.size()));  // without those of the libraries
  std::string page = ".TH KRV 1 \"\" \"" + Escaped(version) + "\" \"User Commands\"\n";
  page += ".SH NAME\nkrv \\- " + Escaped(Phrase(app.get_description())) + "\n";
  page += ".SH SYNOPSIS\n" + Bold("krv") + " " + Italic("command") + " [" + Italic("options") +
          "] ...\n";
  page += ".SH DESCRIPTION\n";
  for (const CLI::App* command : ShownCommands(app)) {
    page +=
        ".TP\n" + Bold("krv " + command->get_name()) + "\n" + Sentence(command->get_description());
  }
  page += ".SH OPTIONS\n";
  for (const CLI::Option* option : ShownOptions(app)) page += OptionEntry(*option);
  page += ".SH COMMANDS\n";
  for (const CLI::App* command : ShownCommands(app)) page += CommandSection(*command);
  return page + kEnding;
}

}  // namespace krv::tool
