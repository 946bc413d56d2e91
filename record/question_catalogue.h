#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "record/response_record.h"

namespace polefit {

/// The tabs of the main form, in order.
enum class Tab { start, polesAndZeros, misc, passbandData, delayData, solverSettings, run };

inline constexpr std::array<std::string_view, 7> kTabCaptions = {
    "&1. Start",      "&2. Poles && Zeros",  "&3. Misc.", "&4. Passband Data",
    "&5. Delay Data", "&6. Solver Settings", "&7. Run"};

/// How an answer is typed.
enum class AnswerKind {
  flag,    ///< a check box; "Y" or "N" in the record
  number,  ///< one number
  list,    ///< numbers separated by blanks
  counts   ///< three whole numbers, each in a box of its own
};

/// One control that shows an answer or a part of it.
struct AnswerBox {
  std::string_view name;
  /// The text of a fresh form; flags have none and are not ticked.
  std::string_view defaultText;
  /// The small caption beside the box and that label's name, for counts only.
  std::string_view caption = {};
  std::string_view captionName = {};
};

/// One numbered question: everything that the form, the transfer and the file know of it.
struct Question {
  /// The answer slot and the index of the label; both count from 1.
  int slot;
  /// The number as the user sees it, and what the answer is in two or three words.
  std::string_view number;
  std::string_view subject;
  AnswerKind kind;
  Tab tab;
  /// The caption as the label takes it: "&&" is a literal ampersand.
  std::string_view label;
  std::array<AnswerBox, 3> boxes;
  /// Whether the box selects its whole text when it receives the focus.
  bool selectsAll;
  /// Unit and range of the answer, for who rests the mouse on its box.
  std::string_view tip = {};

  std::span<const AnswerBox> Boxes() const {
    return std::span(boxes).first(kind == AnswerKind::counts ? 3 : 1);
  }
};

inline constexpr int kQuestionCount = 22;

/// Slots 1 to 22, in slot order.
extern const std::array<Question, kQuestionCount> kQuestions;

const Question& QuestionOf(int slot);

/// The three boxes of the zero counts, in order.
enum ZeroCountBox : std::size_t { kOmegaAxisZeros, kZeroPairs, kZeroQuads };

/// The name of the control that shows the answer of a slot, or one of the zero counts.
std::string_view BoxName(int slot, std::size_t box = 0);

/// "8" for slot 10; also that of the passband point count.
std::string_view QuestionNumber(int slot);

/// "pole pairs, real" for slot 10; also that of the passband point count.
std::string_view QuestionSubject(int slot);

/// The question of the computed passband point count, for the file only.
inline constexpr std::string_view kPointCountQuestion =
    "23. »  # of Freq. points, nFreqPoints, not a user prompt; i.e. a calculated value.";

/// One of the nine solver values.
struct SolverQuestion {
  std::string_view name;
  std::string_view label;
  /// What the label beside the box shows as the default.
  std::string_view defaultLabel;
  /// The box's text in a fresh form.
  std::string_view designText;
  /// What "&Edit Defaults" puts in. The spacing differs from the two above on purpose.
  std::string_view editText;
  bool selectsAll;
  /// What the value is measured in and may be, for who rests the mouse on its box.
  std::string_view tip = {};
};

extern const std::array<SolverQuestion, kSolverValueCount> kSolverQuestions;

/// What the data columns of the two tables hold, from the first one on.
inline constexpr std::array<std::string_view, 4> kPassbandUnits = {
    "Frequency in MHz", "Given input signal, as a ratio (not in dB)",
    "Desired output signal, as a ratio (not in dB)",
    "Weight of the row's error, without unit; 1 for all alike"};
inline constexpr std::array<std::string_view, 2> kDelayUnits = {"Frequency in MHz",
                                                                "Group delay tx in ns"};

/// A free note and its box.
struct NoteBox {
  std::string_view name;
  std::string_view defaultText;
  std::string ResponseRecord::*field;
};

extern const std::array<NoteBox, 2> kNoteBoxes;

/// The number of the question for the notes.
inline constexpr std::string_view kNotesQuestion = "20";

/// The box that shows the name that the data were last saved under.
inline constexpr std::string_view kLastFileNameBox = "LastFileName";

}  // namespace polefit
