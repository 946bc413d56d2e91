#pragma once

#include <string>
#include <string_view>

namespace polefit {

/// What the bytes of a file say of themselves, before anything is taken from them.
struct FileLook {
  /// It reads to its end, both counts are numbers from 0 to 32766, the five questions answered by
  /// yes or no are answered so, and the zero counts are three pieces. Comments are not needed.
  bool isResponseFile = false;
  bool readsToItsEnd = false;
  /// Those five stand where they belong, though not all need be answered: a Response Input File,
  /// whole or not, and no list of points.
  bool hasFlags = false;
  /// The points of both tables; 0 for a file that does not read to its end.
  int points = 0;
  /// Line 1 as UTF-8, or "".
  std::string firstLine = {};
};

/// Looks at the bytes of a file in Windows-1252.
FileLook LookAt(std::string_view bytes);

}  // namespace polefit
