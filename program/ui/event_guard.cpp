#include "program/ui/event_guard.h"

#include <QCoreApplication>
#include <exception>

namespace polefit {

void EventGuard::Run(const std::function<void()>& action) {
  if (ended_) return;
  try {
    action();
  } catch (const ProgramEnded&) {
    ended_ = true;
    QCoreApplication::exit(0);
  } catch (const RunTimeError& error) {
    Show("Error " + std::to_string(error.number), error.description);
  } catch (const std::exception& error) {
    Show("Internal error", error.what());
  }
}

void EventGuard::Show(const std::string& title, const std::string& text) {
  host_.AbandonFile();
  host_.MessageBox(title + ": " + text + "\n\nThe form and its data are as they were.",
                   message_style::kCritical, "Polefit");
}

}  // namespace polefit
