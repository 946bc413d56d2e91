#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QTimer>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace polefit::testing {

/// Answers the boxes and dialogs that come up, in the order in which the answers were given, and
/// keeps what the boxes said. One without an answer fails the test and is closed; so does an
/// answer that nobody asked for.
class Answering {
 public:
  Answering() {
    timer_.setInterval(5);
    QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
    timer_.start();
  }
  ~Answering() {
    EXPECT_TRUE(answers_.empty()) << answers_.size() << " answers were not asked for";
  }
  Answering(const Answering&) = delete;
  Answering& operator=(const Answering&) = delete;

  /// Presses a button of the next message box.
  void Press(QMessageBox::StandardButton button) {
    answers_.push_back([button](QDialog& dialog) {
      auto* const box = qobject_cast<QMessageBox*>(&dialog);
      ASSERT_NE(box, nullptr) << dialog.windowTitle().toStdString();
      ASSERT_NE(box->button(button), nullptr) << box->text().toStdString();
      box->button(button)->click();
    });
  }
  /// Types a name into the next file dialog and accepts it.
  void Choose(const std::string& name) {
    With([name](QDialog& dialog) {
      auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
      ASSERT_NE(edit, nullptr) << dialog.windowTitle().toStdString();
      // Typing would let go of what the list has chosen.
      dialog.findChild<QListView*>("listView")->clearSelection();
      edit->setText(QString::fromStdString(name));
      QMetaObject::invokeMethod(&dialog, "accept");
    });
  }
  void Cancel() {
    With([](QDialog& dialog) { dialog.reject(); });
  }
  /// Does anything with the next box or dialog.
  void With(std::function<void(QDialog&)> answer) { answers_.push_back(std::move(answer)); }

  /// "title|text" of each message box so far.
  std::vector<std::string> said;

 private:
  void Look() {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || answering_) return;
    if (const auto* const box = qobject_cast<QMessageBox*>(dialog)) {
      said.push_back((box->windowTitle() + "|" + box->text()).toStdString());
    }
    if (answers_.empty()) {
      ADD_FAILURE() << "no answer for: " << dialog->windowTitle().toStdString() << " "
                    << (said.empty() ? "" : said.back());
      dialog->reject();
      return;
    }
    // The timer is silent while it is at work, and an answer may bring up the next box.
    answering_ = true;
    QTimer::singleShot(0, dialog, [this, dialog, answer = std::move(answers_.front())] {
      answering_ = false;
      answer(*dialog);
    });
    answers_.pop_front();
  }

  QTimer timer_;
  std::deque<std::function<void(QDialog&)>> answers_;
  bool answering_ = false;
};

}  // namespace polefit::testing
