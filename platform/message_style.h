#pragma once

namespace polefit {

/// The button that ended a message box.
enum class Reply { ok = 1, cancel = 2, yes = 6, no = 7 };

/// Message styles, as the numbers that the boxes take. Some callers join digits to other
/// numbers; those stand at their call.
namespace message_style {
inline constexpr int kOk = 0;
inline constexpr int kCritical = 16;
inline constexpr int kOkCancelQuestion = 33;
inline constexpr int kYesNoCancelQuestion = 35;
inline constexpr int kYesNoQuestion = 36;
inline constexpr int kExclamation = 48;
inline constexpr int kYesNoExclamation = 52;
}  // namespace message_style

}  // namespace polefit
