#pragma once

#include <cstdint>
#include <functional>
#include <string>

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

/// Deals with a file that is no Response Input File; false when it is one, or nothing else.
using OtherFile = std::function<bool(const std::string& path)>;

/// Opens a Response Input File that the user chooses. Errors are reported here by their number.
void FileOld(Program& program);

/// The same; `other` is asked first whether the file is another kind of file.
void OpenChosenFile(Program& program, const OtherFile& other);

/// Opens the Response Input File at `path` as if it had been chosen.
void OpenResponseFile(Program& program, const std::string& path);

/// Saves under the current name when such a file exists, otherwise as `FileSaveAs` does.
/// Write errors are passed on.
void FileSave(Program& program);

/// Saves under a name that the user chooses; true when the file was written. Errors are reported
/// here by their number.
bool FileSaveAs(Program& program);

/// Deletes a file that the user chooses, after a question.
void FileDelete(Program& program);

/// Takes the form and writes it under the current name. What the file's character set could not
/// hold is told, once for each new finding. Errors are passed on.
void WriteForm(Program& program);

/// The same where no box of its own tells an error: the error names the file and says what the disk
/// holds.
void WriteNamedForm(Program& program);

}  // namespace polefit
