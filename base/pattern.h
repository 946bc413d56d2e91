#pragma once

#include <string_view>

namespace polefit {

/// Whether a file name fits a pattern in which "*" stands for any characters and "?" for one.
/// "*.*" fits every name, with a dot or without. Case counts.
bool FitsPattern(std::string_view name, std::string_view pattern);

/// Whether a text holds a character that makes it a pattern.
bool HasWildcards(std::string_view text);

}  // namespace polefit
