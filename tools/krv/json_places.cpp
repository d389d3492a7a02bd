#include "json_places.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace krv::tool {
namespace {

using nlohmann::json;

constexpr std::string_view kSpace = " \t\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string Quoted(std::string_view text) {
  return json(text).dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace

JsonPlaces::Span JsonPlaces::Whole() const {
  const size_t start = text_.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  return ValueAt(SkipSpace(start));
}

JsonPlaces::Members JsonPlaces::MembersOf(Span object) const {
  Members members;
  if (text_[object.begin] != '{') return members;
  size_t at = SkipSpace(object.begin + 1);
  while (text_[at] == '"') {
    const Span key = ValueAt(at);
    const Span value = ValueAt(SkipSpace(SkipSpace(key.end) + 1));
    members.push_back({json::parse(Text(key)).get<std::string>(), {key.begin, value.end}, value});
    at = Next(value);
  }
  return members;
}

std::optional<JsonPlaces::Span> JsonPlaces::Member(Span object, std::string_view name) const {
  std::optional<Span> found;
  for (const NamedValue& member : MembersOf(object)) {
    if (member.name == name) found = member.value;
  }
  return found;
}

std::vector<JsonPlaces::Span> JsonPlaces::Elements(Span array) const {
  std::vector<Span> elements;
  if (text_[array.begin] != '[') return elements;
  size_t at = SkipSpace(array.begin + 1);
  while (at + 1 < array.end) {
    elements.push_back(ValueAt(at));
    at = Next(elements.back());
  }
  return elements;
}

size_t JsonPlaces::SkipSpace(size_t at) const {
  return std::min(text_.find_first_not_of(kSpace, at), text_.size());
}

// Where the next member or element begins, or the bracket behind the last one stands.
size_t JsonPlaces::Next(Span value) const {
  const size_t at = SkipSpace(value.end);
  return text_[at] == ',' ? SkipSpace(at + 1) : at;
}

size_t JsonPlaces::SkipString(size_t at) const {
  for (++at; text_[at] != '"'; ++at) {
    if (text_[at] == '\\') ++at;
  }
  return at + 1;
}

JsonPlaces::Span JsonPlaces::ValueAt(size_t begin) const {
  const char first = text_[begin];
  if (first == '"') return {begin, SkipString(begin)};
  if (first != '{' && first != '[') {
    return {begin, std::min(text_.find_first_of(" \t\r\n,]}", begin), text_.size())};
  }
  int depth = 0;
  size_t at = begin;
  do {
    const char c = text_[at];
    if (c == '{' || c == '[') ++depth;
    if (c == '}' || c == ']') --depth;
    at = c == '"' ? SkipString(at) : at + 1;
  } while (depth > 0);
  return {begin, at};
}

std::optional<std::string> SetJsonMember(std::string_view text, std::string_view name,
                                         std::string_view value) {
  if (!json::accept(text)) return std::nullopt;
  const JsonPlaces places(text);
  const JsonPlaces::Span whole = places.Whole();
  if (text[whole.begin] != '{') return std::nullopt;
  std::string changed(text);
  if (const auto member = places.Member(whole, name)) {
    return changed.replace(member->begin, member->end - member->begin, value);
  }
  const size_t inside = whole.begin + 1;
  const size_t first = text.find_first_not_of(kSpace, inside);
  const std::string_view indent = text.substr(inside, first - inside);
  const std::string member = Quoted(name) + ": " + std::string(value);
  if (text[first] == '}') return changed.insert(inside, member);
  return changed.insert(inside, std::string(indent) + member + ",");
}

}  // namespace krv::tool
