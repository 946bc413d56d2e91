#include "program/ui/plot_command.h"

#include <QSaveFile>
#include <iostream>
#include <optional>

#include "plots/ui/plot_page.h"
#include "responsefile/reader.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr int kFaultyAnswers = 1;
constexpr int kCannotRead = 2;
constexpr int kNoSuchFile = 3;
constexpr int kCannotWrite = 4;

int Fail(int exitCode, const std::string& message) {
  std::cerr << "polefit: " << message << '\n';
  return exitCode;
}

}  // namespace

int PlotFile(Host& host, const std::string& file, const std::string& out) {
  ResponseRecord record;
  try {
    host.OpenForReading(file);
    std::string name;
    std::string folder;
    ReadResponse(host, record, name, folder);
    host.CloseFile();
  } catch (const RunTimeError& error) {
    host.CloseFile();
    const bool isMissing =
        error.number == error_number::kFileNotFound || error.number == error_number::kPathNotFound;
    return Fail(isMissing ? kNoSuchFile : kCannotRead,
                "cannot read '" + file + "': " + error.description);
  }
  std::vector<Finding> findings;
  const std::optional<FitCurves> curves = CurvesOf(record, CurveRole::typed, "typed", findings);
  if (!curves) {
    for (const std::string& fault : FaultTexts(findings)) Fail(kFaultyAnswers, fault);
    return Fail(kFaultyAnswers, "'" + file + "' gives no curve");
  }
  const QByteArray picture = PlotPage(*curves, ToQString(file), ToQString(out));
  QSaveFile saved(ToQString(out));
  const bool isSaved = !picture.isEmpty() && saved.open(QIODevice::WriteOnly) &&
                       saved.write(picture) == picture.size() && saved.commit();
  if (isSaved) return 0;
  return Fail(kCannotWrite, "cannot write '" + out + "': " + saved.errorString().toStdString());
}

}  // namespace polefit
