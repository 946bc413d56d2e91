#include "app/settings_file.h"

#include <cmath>
#include <limits>

#include "base/number.h"
#include "responsefile/value_line.h"

namespace polefit {

namespace {

float ToSingle(double number) {
  if (std::abs(number) > std::numeric_limits<float>::max()) {
    throw MakeRunTimeError(error_number::kOverflow);
  }
  return static_cast<float>(number);
}

/// Our own files end before line 3, older ones carry a value there that nothing uses.
void SkipThirdLine(Host& host) {
  try {
    ReadValueLine(host);
  } catch (const RunTimeError& error) {
    if (error.number != error_number::kInputPastEndOfFile) throw;
  }
}

}  // namespace

std::string SettingsPath(const Program& program) {
  return PlacesOf(program).Settings();
}

void ReadSettingsFile(Program& program) {
  Host& host = program.host;
  host.OpenForReading(SettingsPath(program));
  host.ReadLine();
  program.CommandDelay = ToSingle(ReadNumber(ReadValueLine(host)));
  SkipThirdLine(host);
  host.CloseFile();
}

void WriteSettingsFile(Program& program) {
  Host& host = program.host;
  host.OpenForWriting(SettingsPath(program), Saving::whole);
  host.WriteLine("Polefit™ Program                 " + host.FormatNow("%x"));
  host.WriteLine(ShortestText(program.CommandDelay) +
                 "             ! Increase if COMMAND still active and stops your run");
  host.CloseFile();
}

}  // namespace polefit
