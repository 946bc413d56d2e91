#include "program/console_files.h"

#include <iostream>

#include "program/console_exit.h"

namespace polefit {

int WriteOutput(Host& host, const std::string& out, std::string_view bytes) {
  if (out == "-") {
    std::cout << bytes << std::flush;
    return std::cout ? 0 : Fail(kCannotWrite, "cannot write to standard output");
  }
  try {
    host.ReplaceFile(out, bytes);
  } catch (const RunTimeError& error) {
    return Fail(kCannotWrite, "cannot write '" + out + "': " + error.description);
  }
  return 0;
}

}  // namespace polefit
