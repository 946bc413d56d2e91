#pragma once

namespace polefit {

/// What a program does first: standard input, output and error are open, so that no file that it
/// opens is taken for one of them, and a file that may not grow any more is an error like a full
/// disk, not the end of the program.
void PrepareProcess();

}  // namespace polefit
