#pragma once

#include "exchange/read/table.h"
#include "record/response_record.h"

namespace polefit {

/// The passband points of a record, frequencies in MHz.
SourceTable PassbandTable(const ResponseRecord& record);
/// The delay points of a record, in MHz and ns.
SourceTable DelayTable(const ResponseRecord& record);

}  // namespace polefit
