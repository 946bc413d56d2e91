#pragma once

#include <array>
#include <string_view>

#include "form/state.h"

namespace polefit {

/// One example problem as the demo dialog offers it.
struct Demo {
  std::string_view fileName;
  /// The caption as the label takes it: "&&" is a literal ampersand.
  std::string_view description;
  /// About how long a run took, in seconds.
  std::string_view runTime;
};

/// The option buttons 1 to 7, in order.
inline constexpr std::array<Demo, 7> kDemos = {{
    {"Ex-Yzero.101", "4 Poles && 3 (Omega) Zeros to equalize sidelobe peaks", "550"},
    {"Ex-Yzero.102", "'Ex-Yzero.101' with improved initial values from previous run", "55"},
    {"Ex-CNTL.1", "'Ex-Yzero.101' problem with Solver controls.", "170"},
    // Kept: "losless"
    {"Ex-Delay.101", "Equalize Group Delay, no specific Tmin, 'losless' Sigma Zero", "170"},
    {"Ex-Delay.111", "'Ex-Delay.101' problem with specific Tmin value", "140"},
    {"Ex-Delay.112", "'Ex-Delay.111' with improved initial values", "55"},
    {"Ex-Zpair.1", "'Ex-Yzero.101' with Omega Zeros replaced with 1 Zero Pair", "510"},
}};

/// Offers to save changed data before the demo dialog takes the main form's place; true when it
/// may.
bool MayShowDemos(Program& program);

/// Makes the example with this option index, from 1, the file to run.
void ChooseDemo(Program& program, int index);

/// What RunDemo would run now, for eyes: `isChosen` when an example has been chosen in the dialog.
std::string WhatRuns(const Program& program, bool isChosen);

/// Runs the chosen example. Kept: with none chosen, whatever file is current is looked for in the
/// examples' folder.
void RunDemo(Program& program);

}  // namespace polefit
