#pragma once

#include "record/question_catalogue.h"

class QWidget;

namespace polefit {

/// The box of a question, its check box, or its three count boxes side by side.
QWidget* MakeResponse(const Question& question);

/// How wide the widest of them is, in pixels.
int WidestResponse();

}  // namespace polefit
