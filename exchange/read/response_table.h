#pragma once

#include <string_view>

#include "exchange/read/table.h"
#include "record/response_record.h"

namespace polefit {

/// Whether a text is a Response Input File: its five yes-or-no answers stand where they belong.
bool IsResponseFile(std::string_view text);

/// The passband points of a record, frequencies in MHz.
SourceTable PassbandTable(const ResponseRecord& record);
/// The delay points of a record, in MHz and ns.
SourceTable DelayTable(const ResponseRecord& record);

}  // namespace polefit
