#pragma once

#include <string>

#include "base/notice_board.h"
#include "form/form_view.h"
#include "grids/grid_state.h"
#include "platform/host.h"
#include "platform/places.h"
#include "record/document.h"

namespace polefit {

/// Where the program stands and keeps its own files. Folders have no trailing separator.
struct Folders {
  std::string BaseFolder = {};
  std::string ProgramFolder = {};
  std::string LastRunPath = {};
  std::string RegistryKeyPath = {};
};

/// The main form and what belongs to it.
struct Windows {
  FormView& frmMain;
  GridState grids;
  /// The one file dialog's settings.
  CommonDialog CMDialog1 = {};
};

/// The program-wide values. The session of windows makes the one there is; routines take it, or the
/// part that they need, first.
struct Program {
  Program(Host& effects, FormView& form)
      : host(effects),
        windows{form, {form.PassData(), form.DelayData(), form.txtCellEditor(), document}} {}
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  Host& host;
  Folders folders;
  Files files = {};
  Document document;
  Windows windows;
  /// What waits for a decision of the user, over the tabs.
  NoticeBoard notices = {};

  /// Seconds; kept in the settings file and used by nothing else.
  float CommandDelay = 1.0F;
  /// The scratch text: what the last operation left in it.
  std::string Scratch;
};

/// Where this program's things are, as its folders stand now.
inline Places PlacesOf(const Program& program) {
  return Places::Of(program.host, program.folders.BaseFolder, program.folders.ProgramFolder);
}

}  // namespace polefit
