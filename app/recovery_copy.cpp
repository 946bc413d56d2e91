#include "app/recovery_copy.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace polefit {

namespace {

using nlohmann::json;

constexpr const char* kFormat = "polefit recovery 1";

/// Column by column.
template <typename Points>
json ToJson(const Points& points) {
  json columns = json::array();
  for (int column = 1; column <= Points::kColumns; ++column) {
    json cells = json::array();
    for (int row = 1; row < points.RowsOf(column); ++row) cells.push_back(points.At(row, column));
    columns.push_back(std::move(cells));
  }
  return columns;
}

template <typename Points>
Points PointsFrom(const json& columns) {
  std::size_t rows = 0;
  for (const json& cells : columns) rows = std::max(rows, cells.size());
  Points points;
  points.Resize(static_cast<int>(rows) + 1);
  for (int column = 1; column <= Points::kColumns; ++column) {
    int row = 0;
    for (const json& cell : columns.at(static_cast<std::size_t>(column - 1))) {
      points.At(++row, column) = cell.get<std::string>();
    }
  }
  return points;
}

json ToJson(const EditedCell& cell) {
  return {{"delay", cell.isDelay}, {"row", cell.row}, {"column", cell.column}, {"text", cell.text}};
}

/// A cell outside of the tables belongs to no form that this program shows.
std::optional<EditedCell> EditedCellFrom(const json& value) {
  if (value.is_null()) return std::nullopt;
  EditedCell cell{value.at("delay").get<bool>(), value.at("row").get<int>(),
                  value.at("column").get<int>(), value.at("text").get<std::string>()};
  const int columns = cell.isDelay ? DelayLists::kColumns : PassbandLists::kColumns;
  const bool isInTable =
      cell.row >= 1 && cell.row <= kMostPoints + 1 && cell.column >= 1 && cell.column <= columns;
  return isInTable ? std::optional(cell) : std::nullopt;
}

FormCells CellsFrom(const json& value) {
  FormCells cells;
  value.at("answers").get_to(cells.typed.slots);
  value.at("notes").at(0).get_to(cells.typed.Note1);
  value.at("notes").at(1).get_to(cells.typed.Note2);
  value.at("solver").get_to(cells.typed.solver);
  value.at("zeroCounts").get_to(cells.zeroCounts);
  value.at("counts").at(0).get_to(cells.typed.nFreqPoints);
  value.at("counts").at(1).get_to(cells.typed.nDelayPoints);
  cells.typed.passband = PointsFrom<PassbandLists>(value.at("passband"));
  cells.typed.delay = PointsFrom<DelayLists>(value.at("delay"));
  cells.editor = EditedCellFrom(value.at("editor"));
  value.at("names").at(0).get_to(cells.typed.LastFileName);
  value.at("names").at(1).get_to(cells.shownFileName);
  value.at("file").at(0).get_to(cells.files.currentFileName);
  value.at("file").at(1).get_to(cells.files.currentFolder);
  value.at("lastUsed").at(0).get_to(cells.files.lastUsedName);
  value.at("lastUsed").at(1).get_to(cells.files.lastUsedFolder);
  return cells;
}

/// The counts reach no further than the rows.
bool IsSound(const FormCells& cells) {
  const ResponseRecord& typed = cells.typed;
  return typed.nFreqPoints < typed.passband.RowsOf(1) && typed.nDelayPoints < typed.delay.RowsOf(1);
}

}  // namespace

std::string RecoveryText(const RecoveryCopy& copy) {
  const FormCells& cells = copy.cells;
  const ResponseRecord& typed = cells.typed;
  const Files& files = cells.files;
  const json value = {
      {"format", kFormat},
      {"taken", copy.taken},
      {"file", {files.currentFileName, files.currentFolder}},
      {"lastUsed", {files.lastUsedName, files.lastUsedFolder}},
      {"names", {typed.LastFileName, cells.shownFileName}},
      {"answers", typed.slots},
      {"zeroCounts", cells.zeroCounts},
      {"notes", {typed.Note1, typed.Note2}},
      {"solver", typed.solver},
      {"counts", {typed.nFreqPoints, typed.nDelayPoints}},
      {"passband", ToJson(typed.passband)},
      {"delay", ToJson(typed.delay)},
      {"editor", cells.editor ? ToJson(*cells.editor) : json()},
  };
  return value.dump(1, ' ', false, json::error_handler_t::replace);
}

std::optional<RecoveryCopy> ReadRecovery(std::string_view text) {
  try {
    const json value = json::parse(text);
    if (value.at("format") != kFormat) return std::nullopt;
    RecoveryCopy copy{CellsFrom(value), value.at("taken").get<std::int64_t>()};
    if (!IsSound(copy.cells)) return std::nullopt;
    return copy;
  } catch (const json::exception&) {
    return std::nullopt;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

}  // namespace polefit
