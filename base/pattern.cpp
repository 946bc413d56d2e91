#include "base/pattern.h"

#include "base/text.h"

namespace polefit {

namespace {

/// Goes through the name once; where it does not fit, the last "*" takes one byte more.
bool Fits(std::string_view name, std::string_view pattern) {
  std::size_t at = 0;
  std::size_t star = std::string_view::npos;
  std::size_t starEnd = 0;
  for (std::size_t i = 0; i < name.size();) {
    const char wanted = at < pattern.size() ? pattern[at] : '\0';
    if (wanted == '*') {
      star = at++;
      starEnd = i;
    } else if (wanted == '?' || (wanted == name[i] && at < pattern.size())) {
      i += wanted == '?' ? FirstCharacters(name.substr(i), 1).size() : 1;
      ++at;
    } else {
      if (star == std::string_view::npos) return false;
      at = star + 1;
      i = ++starEnd;
    }
  }
  return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

}  // namespace

bool FitsPattern(std::string_view name, std::string_view pattern) {
  return pattern == "*.*" || Fits(name, pattern);
}

bool HasWildcards(std::string_view text) {
  return text.find_first_of("*?") != std::string_view::npos;
}

}  // namespace polefit
