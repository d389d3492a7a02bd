#include "check/description_document.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <vector>

#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

using Json = nlohmann::ordered_json;

// Walks over a text and keeps the line of the character read last. The parser looks one character
// ahead only at the end of a number, so this is the line of the value that it reports.
class LineIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  LineIterator(const char* position, int* line) : position_(position), line_(line) {}

  reference operator*() const { return *position_; }
  LineIterator& operator++() {
    *line_ += after_line_end_ ? 1 : 0;
    after_line_end_ = *position_++ == '\n';
    return *this;
  }
  LineIterator operator++(int) {
    LineIterator before = *this;
    ++*this;
    return before;
  }
  bool operator==(const LineIterator& other) const { return position_ == other.position_; }
  bool operator!=(const LineIterator& other) const { return !(*this == other); }

 private:
  const char* position_;
  int* line_;
  bool after_line_end_ = false;
};

std::string EscapeToken(const std::string& key) {
  std::string token;
  for (const char c : key) {
    if (c == '~') {
      token += "~0";
    } else if (c == '/') {
      token += "~1";
    } else {
      token += c;
    }
  }
  return token;
}

// Follows the parser through the document.
class Placer : public nlohmann::json_sax<Json> {
 public:
  Placer(const int* line, std::map<std::string, int>* lines) : line_(line), lines_(lines) {}

  // The keys that an object holds already, by pointer, with their lines.
  const std::vector<std::pair<std::string, int>>& duplicates() const { return duplicates_; }

  bool null() override { return Value(); }
  bool boolean(bool) override { return Value(); }
  bool number_integer(number_integer_t) override { return Value(); }
  bool number_unsigned(number_unsigned_t) override { return Value(); }
  bool number_float(number_float_t, const string_t&) override { return Value(); }
  bool string(string_t&) override { return Value(); }
  bool binary(binary_t&) override { return Value(); }
  bool start_object(std::size_t) override { return Open(false); }
  bool end_object() override { return Close(); }
  bool start_array(std::size_t) override { return Open(true); }
  bool end_array() override { return Close(); }

  bool key(string_t& name) override {
    Level& level = levels_.back();
    level.token = EscapeToken(name);
    const std::string pointer = Pointer();
    if (!level.keys.insert(name).second) duplicates_.emplace_back(pointer, *line_);
    (*lines_)[pointer] = *line_;
    return true;
  }

  bool parse_error(std::size_t, const std::string&, const Json::exception&) override {
    return false;
  }

 private:
  struct Level {
    bool is_array;
    size_t index = 0;
    std::string token;  // of the member being read; objects only
    std::set<std::string> keys;
  };

  std::string Pointer() const {
    std::string pointer;
    for (const Level& level : levels_) {
      pointer += "/" + (level.is_array ? std::to_string(level.index) : level.token);
    }
    return pointer;
  }

  // A value of an object counts as where its key is.
  void Place() {
    if (levels_.empty() || levels_.back().is_array) (*lines_)[Pointer()] = *line_;
  }

  void Next() {
    if (!levels_.empty() && levels_.back().is_array) ++levels_.back().index;
  }

  bool Value() {
    Place();
    Next();
    return true;
  }

  bool Open(bool is_array) {
    Place();
    levels_.push_back({is_array, 0, {}, {}});
    return true;
  }

  bool Close() {
    levels_.pop_back();
    Next();
    return true;
  }

  const int* line_;
  std::map<std::string, int>* lines_;
  std::vector<Level> levels_;
  std::vector<std::pair<std::string, int>> duplicates_;
};

// The library's "[json.exception.parse_error.101] parse error at line 3, column 5: REASON" taken
// apart, or its "[json.exception.out_of_range.406] REASON", which names no line.
Finding ParseFinding(const std::string& file, const std::string& what) {
  Finding finding;
  finding.file = file;
  const size_t tag = what.find("] ");
  finding.message = "not valid JSON: " + (tag == std::string::npos ? what : what.substr(tag + 2));
  const size_t at = what.find("at line ");
  if (at == std::string::npos) return finding;
  int line = 0;
  int column = 0;
  int length = 0;
  const char* place = what.c_str() + at;
  if (std::sscanf(place, "at line %d, column %d: %n", &line, &column, &length) == 2) {
    finding.line = line;
    finding.column = column;
    finding.message = std::string("not valid JSON: ") + (place + length);
  }
  return finding;
}

}  // namespace

std::string TypeName(const Json& value) {
  switch (value.type()) {
    case Json::value_t::null:
      return "null";
    case Json::value_t::object:
      return "an object";
    case Json::value_t::array:
      return "an array";
    case Json::value_t::string:
      return "a text";
    case Json::value_t::boolean:
      return "true or false";
    default:
      return "a number";
  }
}

std::optional<DescriptionDocument> DescriptionDocument::Read(const std::filesystem::path& path,
                                                             Findings* findings) {
  DescriptionDocument document;
  document.file_ = host::Utf8(path);
  std::error_code ignored;
  if (!std::filesystem::exists(host::platform::OpenablePath(path), ignored)) {
    findings->push_back({.file = document.file_, .message = "there is no such file"});
    return std::nullopt;
  }
  std::ifstream file(host::platform::OpenablePath(path), std::ios::binary);
  std::ostringstream content;
  if (!file || !(content << file.rdbuf())) {
    findings->push_back({.file = document.file_, .message = "the file is empty or unreadable"});
    return std::nullopt;
  }
  document.text_ = content.str();
  const std::string& text = document.text_;
  int line = 1;
  Placer placer(&line, &document.lines_);
  Json::sax_parse(LineIterator(text.data(), &line), LineIterator(text.data() + text.size(), &line),
                  &placer);
  try {
    document.json_ = Json::parse(text);
  } catch (const Json::exception& exception) {
    Finding finding = ParseFinding(document.file_, exception.what());
    if (finding.line == 0) finding.line = line;  // where the placer's parser gave up
    findings->push_back(std::move(finding));
    return std::nullopt;
  }
  for (const auto& [pointer, where] : placer.duplicates()) {
    Finding finding = document.At(pointer, Severity::kError,
                                  "the key stands in this object before; the last one counts");
    finding.line = where;
    findings->push_back(std::move(finding));
  }
  return document;
}

Finding DescriptionDocument::At(const std::string& pointer, Severity severity,
                                std::string message) const {
  Finding finding{
      .severity = severity, .file = file_, .pointer = pointer, .message = std::move(message)};
  const auto found = lines_.find(pointer);
  if (found != lines_.end()) finding.line = found->second;
  return finding;
}

}  // namespace krv::tool
