#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/host.h"

namespace polefit {

/// Brings the points of a file in that is none of ours.
using PointsImport = std::function<void(const std::string& path)>;

/// What is asked before the file at `path` is opened as a Response Input File: nothing when it
/// looks like one, and nothing when it cannot be read, which the command itself tells. Where it
/// holds points and `import` is set, these can be brought in instead.
std::optional<Choice> DoubtAbout(Host& host, const std::string& path, const PointsImport& import);

/// The button of such a choice that brings the points in; one with two buttons is left by its
/// second one.
inline constexpr std::size_t kImportItsPoints = 1;

/// Whether the file is none of ours but holds points: no Response Input File, and rows of numbers.
bool HoldsOnlyPoints(Host& host, const std::string& path);

}  // namespace polefit
