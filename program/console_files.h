#pragma once

#include <string>
#include <string_view>

#include "platform/host.h"
#include "record/response_record.h"

namespace polefit {

/// The record of a Response Input File. Throws RunTimeError when it cannot be read to its end.
ResponseRecord ReadRecord(Host& host, const std::string& path);

/// Writes a whole file, or to standard output for "-". Gives the exit code, and says on standard
/// error why it is not 0.
int WriteOutput(Host& host, const std::string& out, std::string_view bytes);

}  // namespace polefit
