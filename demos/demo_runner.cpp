#include "demos/demo_runner.h"

#include "app/file_commands.h"
#include "app/solver_start.h"
#include "app/start_up.h"

namespace polefit {

bool MayShowDemos(Program& program) {
  return PromptSaveChanges(program, program.document.DataChanged) == kGoOn;
}

void ChooseDemo(Program& program, int index) {
  // Kept: the example becomes the current file at the click, before it is run.
  program.files.currentFileName = kDemos.at(static_cast<std::size_t>(index - 1)).fileName;
  program.files.currentFolder = UserFolder(program);
}

std::string WhatRuns(const Program& program, bool isChosen) {
  const std::string& name = program.files.currentFileName;
  if (name.empty()) return "No example chosen";
  return "Runs " + name + (isChosen ? "" : ", the current file");
}

void RunDemo(Program& program) {
  program.files.currentFolder = UserFolder(program);
  program.document.RunMode = "Demo";
  RunSolver(program);
}

}  // namespace polefit
