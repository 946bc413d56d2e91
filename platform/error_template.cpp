#include "platform/error_template.h"

#include "base/number.h"

namespace polefit {

namespace {

// Kept: the digits "48" and "1" joined, which gives OK and Cancel with Cancel as the default.
constexpr int kInsertMediumStyle = 481;

AfterError AskForMedium(Host& host, const std::string& title) {
  const Reply reply =
      host.MessageBox("Put a floppy disk in the drive and cloce the drive door.",  // Kept: "cloce"
                      kInsertMediumStyle, title);
  return reply == Reply::ok ? AfterError::retry : AfterError::skip;
}

}  // namespace

std::string RoutineTitle(const std::string& routine) {
  return "In '" + routine + "' routine ...";
}

void ReportUnexpected(Host& host, const RunTimeError& error, const std::string& routine) {
  host.MessageBox("Unexpected error #" + SignedText(error.number) +
                      " occured: " + error.description,  // Kept: "occured"
                  message_style::kCritical, RoutineTitle(routine));
}

AfterError ReportError(Host& host, const RunTimeError& error, const ErrorTable& table) {
  const std::string title = RoutineTitle(table.routine);
  switch (error.number) {
    case error_number::kDiskNotReady:
      return AskForMedium(host, title);
    case error_number::kDeviceUnavailable:
      // Kept: the message comes back for as long as the device stays unavailable.
      host.MessageBox("This drive or path does not exist: " + table.unavailableName,
                      table.unavailableStyle, title);
      return AfterError::retry;
    default:
      break;
  }
  if (error.number != error_number::kDialogCancelled) {
    ReportUnexpected(host, error, table.routine);
    host.EndProgram();
  }
  return AfterError::leave;
}

}  // namespace polefit
