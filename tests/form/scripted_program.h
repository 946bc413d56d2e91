#pragma once

#include "form/fake_form.h"
#include "form/state.h"
#include "platform/scripted_host.h"

namespace polefit::testing {

/// A program as it stands after start-up: installed in a temporary folder, the "User" folder
/// current, a fresh form, and no effects so far.
struct ScriptedProgram {
  ScriptedProgram() {
    program.folders.BaseFolder = host.Root();
    program.folders.ProgramFolder = host.Path("Tessel.hz");
    program.folders.LastRunPath = host.Path("Tessel.hz/last-run.ini");
    program.Scratch = user;
    host.MakeFolder(user);
    host.ChangeFolder(user);
    SetCurrentFile(host, program.files, "Start Up Values");
    form.onChange = [this] { program.document.DataChanged = 1; };
    host.TakeTranscript();
  }

  ScriptedHost host;
  FakeForm form;
  Program program{host, form};
  std::string user = host.Path("Tessel.hz/User");
};

}  // namespace polefit::testing
