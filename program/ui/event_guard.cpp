#include "program/ui/event_guard.h"

#include <QCoreApplication>
#include <exception>

namespace polefit {

void EventGuard::Run(const std::function<void()>& action, const QString& afterwards) {
  if (ended_) return;
  try {
    action();
  } catch (const ProgramEnded&) {
    atRisk();
    ended_ = true;
    QCoreApplication::exit(0);
  } catch (const RunTimeError& error) {
    const std::string path = error.path.empty() ? "" : ": " + error.path;
    const std::string reason = error.reason.empty() ? "" : "\n\n" + error.reason + ".";
    Show("Error " + std::to_string(error.number) + ": " + error.description + path + reason,
         afterwards);
  } catch (const std::exception& error) {
    Show(std::string("Internal error: ") + error.what(), afterwards);
  }
}

void EventGuard::Show(const std::string& error, const QString& afterwards) {
  host_.AbandonFile();
  atRisk();
  host_.MessageBox(error + "\n\n" + afterwards.toStdString(), message_style::kCritical, "Polefit");
}

}  // namespace polefit
