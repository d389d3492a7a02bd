// Where values stand in a JSON text, for changes that leave the rest of it as it is. Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krv::tool {

// Of a text that is known to be JSON; a byte order mark may stand before it. Borrows the text.
class JsonPlaces {
 public:
  struct Span {
    size_t begin = 0;
    size_t end = 0;
  };

  struct NamedValue {
    std::string name;
    Span whole;  // from the name to the end of the value
    Span value;
  };
  using Members = std::vector<NamedValue>;

  explicit JsonPlaces(std::string_view text) : text_(text) {}

  std::string_view Text(Span span) const { return text_.substr(span.begin, span.end - span.begin); }

  Span Whole() const;

  // In order, several of a name too. None when `object` is none.
  Members MembersOf(Span object) const;

  // The value of the object's last member of that name, as parsers take it. Nothing when there is
  // none, or `object` is none.
  std::optional<Span> Member(Span object, std::string_view name) const;

  // Nothing when `array` is none.
  std::vector<Span> Elements(Span array) const;

 private:
  size_t SkipSpace(size_t at) const;
  size_t Next(Span value) const;
  size_t SkipString(size_t at) const;
  Span ValueAt(size_t begin) const;

  std::string_view text_;
};

// The text of an object with `value`, itself JSON, as the member of that name: in place of the last
// one of the name, or as the first member. The rest of the text stays as it is. Nothing when the
// text is not an object in JSON.
std::optional<std::string> SetJsonMember(std::string_view text, std::string_view name,
                                         std::string_view value);

}  // namespace krv::tool
