#pragma once

#include <string>
#include <string_view>

namespace polefit {

/// The bare text of a rich text (RTF) document as UTF-8: paragraphs as lines, tabs and special
/// characters kept; fonts, styles, pictures and everything else that is no text left out.
std::string PlainTextOfRtf(std::string_view rtf);

}  // namespace polefit
