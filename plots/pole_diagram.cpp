#include <algorithm>
#include <cmath>

#include "plots/diagram_parts.h"

namespace polefit {

namespace {

/// Adds the marks of all locations of one set of curves in the upper half-plane.
void AddLocations(const FitCurves& curves, SeriesRole polesRole, SeriesRole zerosRole,
                  Diagram& diagram) {
  Series poles = {"", polesRole, {}, {}, curves.isPale, RoleOf(curves.role)};
  Series zeros = {"", zerosRole, {}, {}, curves.isPale, RoleOf(curves.role)};
  for (const Location& at : curves.locations) {
    Series& series = at.IsPole() ? poles : zeros;
    series.x.push_back(at.real);
    series.y.push_back(at.imaginary);
    if (at.onBothSides && !at.bringsPole) {
      series.x.push_back(-at.real);
      series.y.push_back(at.imaginary);
    }
    if (at.bringsPole) {
      poles.x.push_back(-at.real);
      poles.y.push_back(0);
    }
  }
  diagram.series.push_back(std::move(zeros));
  diagram.series.push_back(std::move(poles));
}

/// Those that the points tell, of both mirror images.
void AddEllipses(const FitCurves& curves, Diagram& diagram) {
  for (std::size_t i = 0; i < curves.deviations.size(); ++i) {
    const Location& at = curves.locations[i];
    const Deviation& deviation = curves.deviations[i];
    if (deviation.real == 0 && deviation.imaginary == 0) continue;
    Ellipse ellipse = {at.real, at.imaginary, deviation.real, deviation.imaginary,
                       RoleOf(curves.role)};
    diagram.ellipses.push_back(ellipse);
    if (!at.onBothSides) continue;
    ellipse.x = -at.real;
    diagram.ellipses.push_back(ellipse);
  }
}

/// From the allowed real parts and the locations: the axes end a little beyond what is there, not
/// at the bounds, which may lie far outside.
void FindAxes(Diagram& diagram) {
  double farthest = 0;
  for (const Series& series : diagram.series) {
    for (std::size_t i = 0; i < series.x.size(); ++i) {
      farthest = std::max(farthest, std::hypot(series.x[i], series.y[i]));
    }
  }
  // All of them may lie near 0: those of a low-pass far below the frequency norm.
  const double size = farthest > 0 ? std::min(1.0, 2 * farthest) : 1;
  double left = -size;
  double right = .3 * size;
  double top = 1.1 * size;
  for (const Series& series : diagram.series) {
    for (std::size_t i = 0; i < series.x.size(); ++i) {
      left = std::min(left, series.x[i]);
      right = std::max(right, series.x[i]);
      top = std::max(top, series.y[i]);
    }
  }
  diagram.x.from = left - .12 * top;
  diagram.x.to = right + .12 * top;
  diagram.y.from = -.1 * top;
  diagram.y.to = 1.12 * top;
}

}  // namespace

void DiagramParts::DrawPoles(Diagram& diagram) const {
  const FitCurves& first = *shown_.front();
  diagram.hasEqualScales = true;
  diagram.x.label = "real part, normalised";
  diagram.y.label = "imaginary part";
  diagram.stopKind = StopKind::location;
  for (const FitCurves* const curves : shown_) {
    if (curves == &main_ || !IsSeen(*curves)) continue;
    AddLocations(*curves, SeriesRole::ghostPoles, SeriesRole::ghostZeros, diagram);
  }
  if (IsSeen(main_)) {
    AddLocations(main_, SeriesRole::poles, SeriesRole::zeros, diagram);
    AddEllipses(main_, diagram);
  }
  FindAxes(diagram);
  diagram.verticals.push_back(0);
  const double largest = first.h->LargestLocation();
  diagram.frames = {{-largest, largest, 0, largest},
                    {-first.h->LowestLocation(), first.h->LowestLocation(), 0, largest}};
  // The typed ones first: they are what can be moved.
  for (std::size_t curve = 0; curve < shown_.size(); ++curve) {
    if (!IsSeen(*shown_[curve])) continue;
    const std::vector<Location>& locations = shown_[curve]->locations;
    for (std::size_t i = 0; i < locations.size(); ++i) {
      const Location& at = locations[i];
      diagram.stops.push_back({at.real, at.imaginary, i, curve});
      if (at.onBothSides || at.bringsPole) {
        diagram.stops.push_back({-at.real, at.imaginary, i, curve, true});
      }
    }
  }
  diagram.sentence = CountSentence();
}

}  // namespace polefit
