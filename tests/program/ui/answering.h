#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTimer>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace polefit::testing {

/// Answers the boxes and dialogs that come up, in the order in which the answers were given, and
/// keeps what the boxes said. One without an answer fails the test and is closed; so does an
/// answer that nobody asked for.
class Answering {
 public:
  Answering() { Look(); }
  ~Answering() {
    EXPECT_TRUE(answers_.empty()) << answers_.size() << " answers were not asked for";
  }

  /// Presses a button of the next message box.
  void Press(QMessageBox::StandardButton button) {
    answers_.emplace_back([button](QDialog& dialog) {
      auto* box = qobject_cast<QMessageBox*>(&dialog);
      ASSERT_TRUE(box != nullptr && box->button(button) != nullptr) << NameOf(dialog);
      const int title = box->fontMetrics().horizontalAdvance(box->windowTitle());
      if (box->objectName() == "messageBox") {
        EXPECT_GT(box->width(), title + 100);
      }
      box->button(button)->click();
    });
  }
  /// Types a name into the next file dialog and accepts it.
  void Choose(const std::string& name) {
    answers_.emplace_back([name](QDialog& dialog) {
      auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
      ASSERT_NE(edit, nullptr) << NameOf(dialog);
      // Typing would let go of what the list has chosen.
      dialog.findChild<QListView*>("listView")->clearSelection();
      edit->setText(QString::fromStdString(name));
      QMetaObject::invokeMethod(&dialog, "accept");
    });
  }
  /// Presses the button with this name in the next dialog.
  void PressIn(const char* name) {
    answers_.emplace_back([name](QDialog& dialog) {
      auto* button = dialog.findChild<QPushButton*>(name);
      ASSERT_NE(button, nullptr) << NameOf(dialog);
      EXPECT_TRUE(button->isEnabled()) << name;
      button->click();
    });
  }
  /// Does with the next box or dialog what a test wants.
  void Do(std::function<void(QDialog&)> answer) { answers_.push_back(std::move(answer)); }
  void Cancel() { answers_.emplace_back(&QDialog::reject); }

  /// "title|text" of each message box so far.
  std::vector<std::string> said;

 private:
  /// The title, and the text of a message box behind it.
  static std::string NameOf(const QDialog& dialog) {
    const std::string title = dialog.windowTitle().toStdString();
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    return box == nullptr ? title : title + "|" + box->text().toStdString();
  }

  void Look() {
    // The next look is set up first: an answer may bring up the next box and wait for its end.
    QTimer::singleShot(5, &looks_, [this] { Look(); });
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog == answered_) return;
    if (qobject_cast<QMessageBox*>(dialog) != nullptr) said.push_back(NameOf(*dialog));
    if (answers_.empty()) {
      ADD_FAILURE() << "no answer for: " << NameOf(*dialog);
      Cancel();
    }
    const auto answer = answers_.front();
    answers_.pop_front();
    const QScopedValueRollback<QDialog*> waits(answered_, dialog);
    answer(*dialog);
  }

  QObject looks_;
  /// The one whose answer goes on: it may wait for something that the dialog does.
  QDialog* answered_ = nullptr;
  std::deque<std::function<void(QDialog&)>> answers_;
};

}  // namespace polefit::testing
