// Takes texts apart. Pure functions, for any thread.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace krv::host {

// The part in front of the separator, or everything; `rest` keeps what follows.
inline std::string_view TakeUntil(char separator, std::string_view* rest) {
  const size_t at = rest->find(separator);
  const std::string_view taken = rest->substr(0, at);
  *rest = at == std::string_view::npos ? std::string_view() : rest->substr(at + 1);
  return taken;
}

// The number that the whole text is, whatever the locale; nothing for anything else. `base`: of an
// integer, 10 when left out.
template <class Number, class... Base>
std::optional<Number> ParseNumber(std::string_view text, Base... base) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number, base...);
  if (error != std::errc() || rest != end) return std::nullopt;
  return number;
}

}  // namespace krv::host
