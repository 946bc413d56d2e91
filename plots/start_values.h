#pragma once

#include "record/response_record.h"

namespace polefit {

/// What Suggest Start Values comes to.
struct SuggestedStart {
  enum class Outcome {
    found,
    allTyped,  ///< every list in use has as many values as asked for
    faulty     ///< other answers have a fault
  };
  Outcome outcome = Outcome::faulty;
  ResponseRecord record;  ///< with the suggested values, when they were found
};

/// Starting values from the points for those of questions 7 to 11c that are in use and empty, or
/// whose list does not match its count; with `replacesTyped` for all in use. Both lists of a pair
/// are replaced together.
SuggestedStart SuggestStart(const ResponseRecord& record, bool replacesTyped);

}  // namespace polefit
