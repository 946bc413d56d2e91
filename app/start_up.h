#pragma once

#include <string>

#include "form/state.h"

namespace polefit {

/// The switch between the built program and its authors' development set-up.
constexpr bool IsReleaseBuild() {
  return true;
}

/// Works out `BaseFolder` and `ProgramFolder` from the folder of the running program. A folder
/// that cannot be one is reported and ends the program.
void Start_Path(Program& program);

/// Reads the settings file or makes it, makes the "User" folder when it is missing and the current
/// one, and gives the file dialogs their first folder. Any failure is reported and ends the
/// program.
void Start_INI(Program& program);

/// The data folder kept in the registry, or "" unless it is a whole path.
std::string LastFilePath(Program& program);

/// The "User" folder of the program folder: the examples, and the first place for data.
std::string UserFolder(const Program& program);

/// Makes the "User" folder, which must exist, the process's current one.
void EnterUserFolder(Program& program);

/// The end of every way out: nothing is saved and nothing is asked. It does not return.
void EndProgram(Program& program);

}  // namespace polefit
