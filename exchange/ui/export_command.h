#pragma once

#include <QWidget>
#include <functional>

#include "form/state.h"

namespace polefit {

/// Runs what it is given and deals with the errors that come out.
using ErrorGuard = std::function<void(const std::function<void()>&)>;

/// Shows the last run's result to be exported, or says that there is none. Throws RunTimeError when
/// it cannot be read; `guard` deals with what a save throws, so that the dialog stays.
void ExportLastResult(Program& program, const ErrorGuard& guard, QWidget* parent);

}  // namespace polefit
