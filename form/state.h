#pragma once

#include <cstdint>
#include <string>

#include "form/form_view.h"
#include "grids/grid_state.h"
#include "platform/host.h"
#include "platform/paths.h"
#include "record/response_record.h"

namespace polefit {

/// The program-wide values. The session of windows makes the one there is; routines take it first.
struct Program {
  Host& host;
  FormView& frmMain;

  FileState files = {};
  ResponseRecord record = {};

  /// 1 after any edit, 0 once a record is shown and at the end of start-up.
  std::int16_t DataChanged = 0;
  /// " " at start, "*" for a user's run, "Demo" for a demo.
  std::string RunMode = " ";
  /// Seconds; kept in the settings file and used by nothing else.
  float CommandDelay = 1.0F;
  std::string BaseFolder = {};
  std::string ProgramFolder = {};
  std::string RegistryKeyPath = {};
  std::string LastRunPath = {};
  /// The scratch text: what the last operation left in it.
  std::string Scratch = {};
  CommonDialog CMDialog1 = {};
  /// What was last said of characters that a file could not hold.
  std::string lastToldLoss = {};

  /// The grid that the editor and the grid routines act on.
  GridView* CurrentGrid = nullptr;
  /// The cell that the editor writes back to.
  int editedRow = 0;
  int editedColumn = 0;
};

/// What the grid routines work on.
inline GridState Grids(Program& program) {
  return {program.frmMain.PassData(), program.frmMain.DelayData(), program.frmMain.txtCellEditor(),
          program.CurrentGrid,        program.editedRow,           program.editedColumn,
          program.DataChanged,        program.record.nFreqPoints,  program.record.nDelayPoints};
}

}  // namespace polefit
