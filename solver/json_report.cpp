#include "solver/json_report.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>
#include <string_view>
#include <utility>

#include "record/question_catalogue.h"

namespace polefit {

namespace {

using Json = nlohmann::ordered_json;

/// What the library writes for NaN and infinity is null already; this is for what is not there.
const Json kNone = nullptr;

const char* KindOf(const LocationFigures& location) {
  if (location.kind != FactorKind::sigmaZero) return ShortName(location.kind);
  if (location.isOwnPole) return location.isDoublet ? "own double pole" : "own pole";
  if (location.isLossless) return location.isDoublet ? "lossless doublet" : "lossless sigma zero";
  return location.isDoublet ? "sigma zero doublet" : ShortName(location.kind);
}

const char* NameOf(Bound bound) {
  switch (bound) {
    case Bound::lower:
      return "lower";
    case Bound::held:
      return "held";
    default:
      return "upper";
  }
}

Json BoundOf(const LocationFigures& location) {
  for (const LocationPart* const part : {&location.real, &location.imaginary}) {
    if (part->bound != Bound::none) return NameOf(part->bound);
  }
  return kNone;
}

Json LocationObject(const LocationFigures& location, int index, double freqNorm) {
  constexpr double kHertzPerMegahertz = 1e6;
  const double radians = 2 * std::numbers::pi * freqNorm * kHertzPerMegahertz;
  const double sign = location.side == Side::left && location.real.value != 0 ? -1 : 1;
  const double real = sign * location.real.value;
  const double imaginary = location.imaginary.value;
  return {{"kind", KindOf(location)},
          {"question", QuestionNumber(SlotsOf(location.kind).front())},
          {"index", index},
          {"real", real},
          {"imag", imaginary},
          {"real_rads", real * radians},
          {"imag_rads", imaginary * radians},
          {"Q", location.IsPair() ? Json(location.Quality()) : kNone},
          {"dev_real", location.real.deviation},
          {"dev_imag", location.imaginary.deviation},
          {"determined", location.IsFree() ? Json(location.IsDetermined()) : kNone},
          {"bound", BoundOf(location)}};
}

/// Pairs and quads are one list of answers, so that the index counts on from the one to the other.
Json LocationArray(const Figures& figures) {
  Json array = Json::array();
  int slot = 0;
  int index = 0;
  for (const LocationFigures& location : figures.locations) {
    if (!location.isOwnPole) {
      const int former = std::exchange(slot, SlotsOf(location.kind).front());
      index = slot == former ? index + 1 : 1;
    }
    array.push_back(LocationObject(location, index, figures.freqNorm));
  }
  return array;
}

Json LargestObject(const PassbandFigures& passband) {
  return {
      {"error", passband.largestWeighted.size},       {"mhz", passband.largestWeighted.frequency},
      {"row", passband.largestWeighted.row},          {"db", passband.largestDecibels.size},
      {"db_mhz", passband.largestDecibels.frequency}, {"db_row", passband.largestDecibels.row}};
}

Json SidelobeArray(const Figures& figures) {
  Json array = Json::array();
  for (const Sidelobe& sidelobe : figures.sidelobes) {
    array.push_back({{"zero", sidelobe.zero}, {"peak", sidelobe.peak}, {"db", sidelobe.decibels}});
  }
  return array;
}

Json DelayObject(const Figures& figures) {
  if (!figures.delay) return kNone;
  return {{"t0_ns", figures.delay->constant},
          {"ripple_ns", figures.delay->peakToPeak},
          {"rms_ns", figures.delay->rms}};
}

const char* NameOf(FindingTable table) {
  switch (table) {
    case FindingTable::passband:
      return "passband";
    case FindingTable::delay:
      return "delay";
    default:
      return "solver settings";
  }
}

const char* NameOf(Severity severity) {
  switch (severity) {
    case Severity::fault:
      return "fault";
    case Severity::open:
      return "open";
    default:
      return "warning";
  }
}

Json FindingArray(const std::vector<Finding>& findings) {
  Json array = Json::array();
  for (const Finding& finding : findings) {
    const FindingPlace& place = finding.place;
    const auto numberOrNone = [](int number) { return number > 0 ? Json(number) : kNone; };
    array.push_back({{"question", place.question.empty() ? kNone : Json(place.question)},
                     {"table", place.table == FindingTable::none ? kNone : NameOf(place.table)},
                     {"row", numberOrNone(place.row)},
                     {"column", numberOrNone(place.column)},
                     {"severity", NameOf(finding.severity)},
                     {"text", SentenceOf(finding)}});
  }
  return array;
}

Json PatternName(ErrorPattern pattern) {
  switch (pattern) {
    case ErrorPattern::random:
      return "random";
    case ErrorPattern::systematic:
      return "systematic";
    default:
      return kNone;
  }
}

/// The figures of an answer; all of them null where there is none.
void AddFigures(const std::optional<Figures>& found, Json& object) {
  const auto add = [&](const char* name, auto value) {
    object[name] = found ? Json(value(*found)) : kNone;
  };
  add("F", [](const Figures& figures) { return figures.cost; });
  add("F_round", [](const Figures& figures) { return figures.roundingCost; });
  add("rms", [](const Figures& figures) { return figures.rms; });
  add("rms_delay_ns",
      [](const Figures& figures) { return figures.delay ? Json(figures.delay->rms) : kNone; });
  add("evaluations", [](const Figures& figures) { return figures.evaluations; });
}

}  // namespace

std::string OutcomeAsJson(const RunOutcome& outcome) {
  const std::optional<Figures>& found = outcome.figures;
  Json object;
  object["result"] = {{"exit", static_cast<int>(outcome.exit)},
                      {"words", outcome.result},
                      {"agree", found ? Json(found->agreeing) : kNone},
                      {"witnesses", found ? Json(found->witnesses) : kNone},
                      {"optima", found ? Json(found->optima.size()) : kNone},
                      {"unseen", found ? Json(found->unseen) : kNone}};
  AddFigures(found, object);
  object["seconds"] = outcome.seconds;
  object["freqnorm_mhz"] = found ? Json(found->freqNorm) : kNone;
  object["largest"] = found ? LargestObject(found->passband) : kNone;
  object["gain"] = found ? Json(found->gain) : kNone;
  object["K"] = found ? Json(found->constant) : kNone;
  object["locations"] = found ? LocationArray(*found) : Json::array();
  object["delay"] = found ? DelayObject(*found) : kNone;
  object["sidelobes"] = found ? SidelobeArray(*found) : Json::array();
  object["optima"] = found ? Json(found->optima) : Json::array();
  object["errors"] = found ? PatternName(found->errors) : kNone;
  object["findings"] = FindingArray(outcome.findings);
  constexpr int kIndent = 1;
  return object.dump(kIndent, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace polefit
