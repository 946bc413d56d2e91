#pragma once

#include <functional>

#include "exchange/export.h"

class QMenu;

namespace polefit {

/// Fills a menu with the formats of an exported result.
void AddExportFormats(QMenu& menu, const std::function<void(const ExportFormatName&)>& chosen);

/// Puts a result onto the clipboard as a format writes it; what keeps it from being one, if
/// anything.
std::vector<std::string> CopyAs(const ResponseRecord& record, const ExportRequest& request);

}  // namespace polefit
