// Bytes in, as a file of one kind or another; whatever points come out must be such as the tables
// take, and be made in bounded time and memory.

#include <cmath>
#include <cstdlib>
#include <string>

#include "exchange/import/guess.h"
#include "exchange/import/new_problem.h"
#include "exchange/import/points.h"
#include "exchange/read/number_text.h"
#include "exchange/read/source_file.h"

namespace {

using namespace polefit;

/// The first two bytes choose the kind of file and what is to be done with it.
ImportChoices ChoicesOf(const SourceTable& table, unsigned char kind, unsigned char how) {
  ImportChoices choices = GuessChoices(table, static_cast<Role>(kind / 8 % 3)).choices;
  if (choices.delay != kNoColumn && how % 2 == 1) {
    const bool isPhase = choices.delaySecond != kNoColumn || how % 4 == 1;
    choices.delaySource = isPhase ? DelaySource::phase : DelaySource::column;
  }
  if (how & 4U) choices.rows.points = 2 + how % 16;
  if (how & 8U) choices.rows.smooth = 5;
  choices.rows.logarithmic = (how & 16U) != 0;
  choices.rows.normalise = (how & 32U) != 0;
  if (how & 64U) choices.value.kind = static_cast<ValueKind>(how % 5);
  return choices;
}

void RequireNumber(const std::string& text) {
  if (std::isnan(CellNumber(text, '.')) && text.size() <= 64) std::abort();
}

void Judge(const Points& points) {
  double former = -HUGE_VAL;
  for (const PassbandRow& row : points.passband) {
    if (!(row.frequency.value > former)) std::abort();
    former = row.frequency.value;
    for (const Amount* const amount : {&row.frequency, &row.yin, &row.yout, &row.weight}) {
      RequireNumber(TextOf(*amount));
    }
  }
  if (points.fault.empty() == points.passband.empty()) std::abort();
  if (points.passband.empty()) return;
  const NewProblem problem = LookAtPoints(points.passband);
  ResponseRecord record = BuiltInAnswers();
  StartProblem(problem, "", "", record);
  PutRows(CellsOfPoints(points.passband), record);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  if (size < 2) return 0;
  static const char* const kNames[] = {"a.csv", "a.s1p", "a.s2p", "a.s3p", "a.ts", "a.txt"};
  const std::string bytes(reinterpret_cast<const char*>(data + 2), size - 2);
  const SourceFile source = ReadSourceBytes(kNames[data[0] % 6], bytes);
  if (!source.table.fault.empty()) return 0;
  Judge(MakePoints(source.table, ChoicesOf(source.table, data[0], data[1])));
  return 0;
}
