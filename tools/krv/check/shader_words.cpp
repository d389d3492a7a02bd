#include "check/shader_words.h"

#include <algorithm>
#include <cctype>

namespace krv::tool {
namespace {

// Each comment as one space. A line ends a comment even after a backslash, over which some drivers
// go on: too much is better kept than too little.
std::string WithoutComments(std::string_view shader) {
  std::string code;
  size_t at = 0;
  while (at < shader.size()) {
    const std::string_view rest = shader.substr(at);
    if (rest.starts_with("//")) {
      at = std::min(shader.find_first_of("\r\n", at), shader.size());
      code += ' ';
    } else if (rest.starts_with("/*")) {
      const size_t end = shader.find("*/", at + 2);
      at = end == std::string_view::npos ? shader.size() : end + 2;
      code += ' ';
    } else {
      code += shader[at++];
    }
  }
  return code;
}

bool IsNumberType(std::string_view word) {
  return word == "int" || word == "float" || word == "bool";
}

// Finds the names in "uniform highp float a, b[4];", fed with what the code is made of. Those after
// a value of the first are passed over.
class UniformReader {
 public:
  explicit UniformReader(std::vector<std::string>* numbers) : numbers_(numbers) {}

  void Word(std::string_view word) {
    if (word == "uniform") {
      is_number_ = false;
      inside_ = true;
    }
    is_number_ = is_number_ || IsNumberType(word);
    last_ = word;
  }

  void Mark(char mark) {
    constexpr std::string_view kAfterNames = ",;[=";
    const bool names = kAfterNames.find(mark) != std::string_view::npos && !last_.empty();
    if (inside_ && is_number_ && names) numbers_->emplace_back(last_);
    if (mark == ';' || mark == '{' || mark == '=') inside_ = false;
    last_ = {};
  }

 private:
  std::vector<std::string>* numbers_;
  bool inside_ = false;  // of a declaration
  bool is_number_ = false;
  std::string_view last_;  // the word before, unless a mark has come since
};

}  // namespace

void ShaderWords::Add(std::string_view shader) {
  const std::string code = WithoutComments(shader);
  pastes_names_ = pastes_names_ || code.find("##") != std::string::npos;
  UniformReader uniforms(&numbers_);
  auto at = code.begin();
  while (at != code.end()) {
    const auto end = std::find_if_not(at, code.end(), IsWordCharacter);
    if (end != at) {
      const std::string_view word(at, end);
      words_.emplace(word);
      uniforms.Word(word);
      at = end;
    } else {
      if (std::isspace(static_cast<unsigned char>(*at)) == 0) uniforms.Mark(*at);
      ++at;
    }
  }
}

bool IsWordCharacter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x80 || c == '_' || std::isalnum(byte) != 0;
}

}  // namespace krv::tool
