#include "plots/ui/logarithmic_ticker.h"

#include <cmath>
#include <initializer_list>

namespace polefit {

namespace {

QVector<double> MultiplesOfPowers(std::initializer_list<double> factors, const QCPRange& range) {
  QVector<double> ticks;
  if (!(range.lower > 0)) return ticks;
  for (int power = static_cast<int>(std::floor(std::log10(range.lower)));
       std::pow(10, power) <= range.upper; ++power) {
    for (const double factor : factors) {
      const double tick = factor * std::pow(10, power);
      if (range.contains(tick)) ticks << tick;
    }
  }
  return ticks;
}

}  // namespace

QVector<double> LogarithmicTicker::createTickVector(double step, const QCPRange& range) {
  constexpr int kFew = 3;
  constexpr int kMostSubTicks = 40;
  subTicks_.clear();
  QVector<double> fine = MultiplesOfPowers({1, 2, 5}, range);
  if (fine.size() < kFew) return QCPAxisTicker::createTickVector(step, range);
  if (fine.size() <= tickCount() + 1) return fine;
  const QVector<double> between = MultiplesOfPowers({2, 3, 4, 5, 6, 7, 8, 9}, range);
  if (between.size() <= kMostSubTicks) subTicks_ = between;
  const QVector<double> powers = MultiplesOfPowers({1}, range);
  const qsizetype each = (powers.size() + tickCount() - 1) / tickCount();
  QVector<double> some;
  for (qsizetype i = 0; i < powers.size(); i += each) some << powers[i];
  return some;
}

QVector<double> LogarithmicTicker::createSubTickVector(int /*count*/,
                                                       const QVector<double>& /*ticks*/) {
  return subTicks_;
}

}  // namespace polefit
