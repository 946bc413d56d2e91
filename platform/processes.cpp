#include "platform/processes.h"

#include <charconv>

namespace polefit {

namespace {

/// Takes the next number off the front of `text` and the blank or line end behind it.
template <typename Number>
bool TakeNumber(std::string_view& text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const auto length = static_cast<std::size_t>(end - text.data());
  if (error != std::errc() || length == text.size()) return false;
  text.remove_prefix(length + 1);
  return true;
}

}  // namespace

std::optional<ProcessEnding> EndingIn(std::string_view text) {
  ProcessEnding ending;
  if (!TakeNumber(text, ending.id)) return std::nullopt;
  ending.isSignal = text.starts_with("signal ");
  if (!ending.isSignal && !text.starts_with("exit ")) return std::nullopt;
  text.remove_prefix(text.find(' ') + 1);
  return TakeNumber(text, ending.number) ? std::optional(ending) : std::nullopt;
}

}  // namespace polefit
