#include "app/ui/help_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTabWidget>
#include <array>
#include <map>

namespace polefit {

namespace {

constexpr std::array<const char*, 7> kTabChapters = {
    "Tab 1: Start", "Tab 2: Poles & Zeros",   "Tab 3: Misc.", "Passband data",
    "Delay data",   "Tab 6: Solver Settings", "Tab 7: Run",
};

/// By the names of windows and panels.
const std::map<QString, QString>& Chapters() {
  static const std::map<QString, QString> kChapters = {
      {"frmIntro", "Start the program"},
      {"frmDemo", "The seven examples"},
      {"frmRun", "The run panel"},
      {"runsPane", "The runs so far"},
      {"frmCompare", "The runs so far"},
      {"reportViewer", "The report"},
      {"frmImport", "Modelling a measured response"},
      {"frmExport", "Taking the result along"},
      {"frmFill", "Fill Column"},
      {"frmVersions", "Former versions of a file"},
      {"frmOrders", "The curves"},
      {"dockCurves", "The curves"},
      {"findingsPanel", "Findings"},
      {"plainViewer", "The report"},
  };
  return kChapters;
}

}  // namespace

QString ChapterOf(const QWidget& window) {
  for (const QWidget* part = window.focusWidget() != nullptr ? window.focusWidget() : &window;
       part != nullptr; part = part->parentWidget()) {
    const auto found = Chapters().find(part->objectName());
    if (found != Chapters().end()) return found->second;
    if (part == &window) break;
  }
  const auto* const tabs = window.findChild<const QTabWidget*>("CVX_Tabs");
  const auto tab =
      tabs == nullptr ? kTabChapters.size() : static_cast<std::size_t>(tabs->currentIndex());
  return tab < kTabChapters.size() ? kTabChapters.at(tab) : "Messages and what to do";
}

HelpKeys::HelpKeys() {
  qApp->installEventFilter(this);
}

void HelpKeys::ShowHelpFor(QWidget& window) {
  const QString chapter = ChapterOf(window);
  if (window.isModal()) {
    // Beside a modal dialog only its own windows can be used.
    auto* help = window.findChild<HelpWindow*>();
    if (help == nullptr) help = new HelpWindow(&window);
    help->ShowChapter(chapter);
    return;
  }
  if (help_ == nullptr) help_ = std::make_unique<HelpWindow>();
  help_->ShowChapter(chapter);
}

bool HelpKeys::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !object->isWidgetType()) return false;
  const auto& key = static_cast<QKeyEvent&>(*event);
  if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier) return false;
  QWidget* const window = static_cast<QWidget*>(object)->window();
  if (window->objectName() == "frmMain" || window->objectName() == "frmHelp") return false;
  ShowHelpFor(*window);
  return true;
}

}  // namespace polefit
