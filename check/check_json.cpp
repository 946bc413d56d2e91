#include "check/check_json.h"

#include <array>
#include <nlohmann/json.hpp>

#include "record/question_catalogue.h"

namespace polefit {

namespace {

/// A JSON string; bytes that belong to no character become U+FFFD.
std::string Quoted(std::string_view text) {
  using nlohmann::json;
  return json(text).dump(-1, ' ', false, json::error_handler_t::replace);
}

/// "[a, b]" of `count` items, each given by `item(i)` with i from 0.
template <typename Item>
std::string Array(int count, Item item) {
  std::string array = "[";
  for (int i = 0; i < count; ++i) {
    if (i > 0) array += ", ";
    array += item(i);
  }
  return array + ']';
}

template <std::size_t Count>
std::string TextArray(const std::array<std::string, Count>& texts) {
  return Array(static_cast<int>(Count),
               [&](int i) { return Quoted(texts[static_cast<std::size_t>(i)]); });
}

template <std::size_t Columns>
std::string RowArray(const PointLists<Columns>& points, int count) {
  return Array(count, [&](int row) {
    return Array(static_cast<int>(Columns),
                 [&](int column) { return Quoted(points.At(row + 1, column + 1)); });
  });
}

/// The number of the question that a finding belongs to. The tables have none of their own: the
/// passband points go with their count, the delay points with "equalize group delay", the settings
/// are "22".
std::string NumberOf(const FindingPlace& place) {
  switch (place.table) {
    case FindingTable::passband:
      return std::string(QuestionNumber(slot::kFreqPointCount));
    case FindingTable::delay:
      return std::string(QuestionNumber(slot::kEqualDelay));
    case FindingTable::solverSettings:
      return "22";
    case FindingTable::none:
      break;
  }
  return place.question;
}

std::string FindingArray(const std::vector<Finding>& findings) {
  return Array(static_cast<int>(findings.size()), [&](int i) {
    const Finding& finding = findings[static_cast<std::size_t>(i)];
    return "{\"question\": " + Quoted(NumberOf(finding.place)) +
           ", \"text\": " + Quoted(SentenceOf(finding)) + "}";
  });
}

std::string ErrorObject(const std::optional<RunTimeError>& error) {
  if (!error) return "null";
  return "{\"number\": " + std::to_string(error->number) +
         ", \"description\": " + Quoted(error->description) + "}";
}

}  // namespace

std::string CheckAsJson(const CheckedFile& checked) {
  const ResponseRecord& record = checked.record;
  const std::pair<const char*, std::string> members[] = {
      {"name", Quoted(record.LastFileName)},
      {"folder", Quoted(checked.folder)},
      {"slots", TextArray(record.slots)},
      {"note1", Quoted(record.Note1)},
      {"note2", Quoted(record.Note2)},
      {"solver", TextArray(record.solver)},
      {"solverCount", std::to_string(record.solverCount)},
      {"nFreqPoints", std::to_string(record.nFreqPoints)},
      {"nDelayPoints", std::to_string(record.nDelayPoints)},
      {"passband", RowArray(record.passband, record.nFreqPoints)},
      {"delay", RowArray(record.delay, record.nDelayPoints)},
      {"findings", FindingArray(checked.findings)},
      {"error", ErrorObject(checked.error)}};
  std::string json = "{";
  for (const auto& [key, value] : members) {
    json += json.size() > 1 ? ",\n " : "";
    json += '"' + std::string(key) + "\": " + value;
  }
  return json + "}\n";
}

}  // namespace polefit
