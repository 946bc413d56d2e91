#include "program/ui/plot_command.h"

#include <optional>

#include "plots/ui/plot_page.h"
#include "program/console_exit.h"
#include "program/console_files.h"
#include "responsefile/reader.h"
#include "widgets/controls.h"

namespace polefit {

int PlotFile(Host& host, const std::string& file, const std::string& out) {
  ResponseRecord record;
  try {
    record = ReadResponseFile(host, file);
  } catch (const RunTimeError& error) {
    return FailReading(file, error);
  }
  std::vector<Finding> findings;
  const std::optional<FitCurves> curves = CurvesOf(record, CurveRole::typed, "typed", findings);
  if (!curves) {
    for (const std::string& fault : FaultTexts(findings)) Say(fault);
    return Fail(kNothingUsable, "'" + file + "' gives no curve");
  }
  const QByteArray picture = PlotPage(*curves, ToQString(file), ToQString(out));
  return WriteOutput(host, out, picture.toStdString());
}

}  // namespace polefit
