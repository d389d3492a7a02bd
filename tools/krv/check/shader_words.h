// The names that stand in the texts of shaders.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace krv::tool {

// Gathers from shader after shader what stands outside of comments. It is not the preprocessor: a
// name counts where it stands in a macro or behind an #if as well.
class ShaderWords {
 public:
  void Add(std::string_view shader);

  bool Holds(std::string_view word) const { return words_.contains(word); }

  // Whether a shader may make names of their pieces, by the operator ##, so that it may read what
  // it does not hold.
  bool pastes_names() const { return pastes_names_; }

  // The uniforms declared as int, float or bool, in the order of their declarations: good for
  // suggestions, since macros are not looked into.
  const std::vector<std::string>& numbers() const { return numbers_; }

 private:
  std::set<std::string, std::less<>> words_;
  std::vector<std::string> numbers_;
  bool pastes_names_ = false;
};

// Whether it may be part of a word: letters, digits, "_", and whatever is not ASCII, which some
// drivers may let pass.
bool IsWordCharacter(char c);

}  // namespace krv::tool
