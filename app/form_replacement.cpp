#include "app/form_replacement.h"

#include "app/file_commands.h"
#include "form/changes.h"
#include "form/transfer.h"
#include "responsefile/file_look.h"
#include "responsefile/reader.h"

namespace polefit {

int AskBeforeReplacing(Program& program) {
  return Differs(program) ? PromptSaveChanges(program, 1) : kGoOn;
}

void OpenFile(Program& program, const std::string& path) {
  Host& host = program.host;
  // As an accepted dialog leaves it: Save looks for the bare name in the current folder.
  std::string folder;
  SplitPath(host, path, folder);
  host.ChangeFolder(host.ShortPath(folder));
  OpenResponseFile(program, path);
}

void ShowAsNew(Program& program, std::string_view bytes) {
  if (!LookAt(bytes).isResponseFile) {
    throw RunTimeError{error_number::kInputPastEndOfFile,
                       "This is no whole Response Input File, so it cannot be shown"};
  }
  ResponseRecord record = ReadResponseBytes(bytes);
  record.LastFileName = kNewData;
  const std::string folder = program.host.CurrentFolder();
  program.document.record = std::move(record);
  program.files.currentFileName = program.document.record.LastFileName;
  program.files.currentFolder = folder;
  GetAnswers(program);
  program.document.DataChanged = 1;  // nothing holds these data yet
}

}  // namespace polefit
