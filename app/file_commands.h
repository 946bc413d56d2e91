#pragma once

#include <cstdint>
#include <string>

#include "app/open_look.h"
#include "form/state.h"

namespace polefit {

/// What `PromptSaveChanges` answers.
inline constexpr int kGoOn = 0;
inline constexpr int kStop = 1;

/// Takes the form into the record and, when the data changed, asks whether to save it first.
/// `kStop` when the command that asks must not go on.
int PromptSaveChanges(Program& program, std::int16_t DataChanged);

/// Empties the record and the form, after a question, and one before it when the data have changed.
void FileNew(Program& program);

/// Opens a Response Input File that the user chooses. Errors are reported here by their number.
void FileOld(Program& program);

/// The same; a file that is none of ours but holds points can go to `import` instead.
void OpenChosenFile(Program& program, const PointsImport& import);

/// Opens the Response Input File at `path` as if it had been chosen.
void OpenResponseFile(Program& program, const std::string& path);

/// The same once changed data are dealt with as for Open, for a file that no dialog has looked at:
/// one that is not there is reported.
void OpenInsteadOfForm(Program& program, const std::string& path, const PointsImport& import);

/// Saves under the current name when such a file exists, otherwise as `FileSaveAs` does.
/// Write errors are passed on.
void FileSave(Program& program);

/// Saves under a name that the user chooses; true when the file was written. Errors are reported
/// here by their number.
bool FileSaveAs(Program& program);

/// Deletes a file that the user chooses, after a question.
void FileDelete(Program& program);

/// Takes the form and writes it under the current name. What the file's character set could not
/// hold is told, once for each new finding. A name with control characters is refused: line 1 would
/// become two. Errors are passed on.
void WriteForm(Program& program);

/// The same where no box of its own tells an error: the error names the file and says what the disk
/// holds.
void WriteNamedForm(Program& program);

}  // namespace polefit
