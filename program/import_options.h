#pragma once

#include <optional>
#include <span>
#include <string>

#include "exchange/import/choices.h"
#include "exchange/import/merging.h"

namespace polefit {

/// The command line of an import, as it was given; names are not yet looked up in the file.
struct ImportOptions {
  std::string file;
  /// "-" is standard output.
  std::string out;
  Role role = Role::model;
  std::string frequency;
  std::string yin;
  std::string yout;
  std::string weight;
  std::string delay;
  std::string angle;
  std::string imag;
  std::string parameter;
  std::optional<FrequencyUnit> unit;
  std::optional<ValueKind> values;
  std::optional<DelayUnit> delayUnit;
  std::string delayFrom;
  bool delayFromPhase = false;
  RowChoices rows;
  /// Question 6, "" for the built-in answer or the other file's.
  std::string poles;
  /// The file whose answers stay.
  std::string into;
  std::optional<Frequencies> grid;
};

/// The words behind "--import"; nothing when they are no command line of it. Options may stand
/// anywhere, behind "--" none does.
std::optional<ImportOptions> ReadImportOptions(std::span<const std::string> words);

}  // namespace polefit
