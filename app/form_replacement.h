#pragma once

#include <string>
#include <string_view>

#include "form/state.h"

namespace polefit {

/// What is asked before a command of ours replaces what the form shows: whether to save it, when a
/// save would write something else than is left already. `kStop` when the command must not go on.
int AskBeforeReplacing(Program& program);

/// Opens the file at `path`, a whole path, as an accepted Open dialog does: its folder becomes the
/// process's current one.
void OpenFile(Program& program, const std::string& path);

/// Shows the bytes of a Response Input File as data that are in no file yet. Throws RunTimeError
/// where they cannot be taken; the form then stays as it is.
void ShowAsNew(Program& program, std::string_view bytes);

}  // namespace polefit
