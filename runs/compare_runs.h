#pragma once

#include <optional>
#include <string>
#include <vector>

#include "exchange/filter_result.h"
#include "runs/kept_run.h"

namespace polefit {

/// Two locations that are each other's nearest of their kind; what has no partner stands alone.
struct LocationPair {
  std::optional<ResultLocation> one;
  std::optional<ResultLocation> other;
};

/// Pairs poles with poles and zeros with zeros, single ones and conjugate pairs apart, the nearest
/// in MHz first; those left over come last.
std::vector<LocationPair> PairLocations(const FilterResult& one, const FilterResult& other);

struct ComparedRun {
  KeptRun run;
  RunContents contents;
};

/// A part of the comparison; every row has as many cells as the heading.
struct ComparedTable {
  std::vector<std::string> heading;
  std::vector<std::vector<std::string>> rows;
};

/// Poles and zeros with f0, Q and their change, then the answers that differ, then the results.
std::vector<ComparedTable> CompareRuns(const ComparedRun& one, const ComparedRun& other);

/// The tables with a tab between the cells.
std::string TextOf(const std::vector<ComparedTable>& tables);

}  // namespace polefit
