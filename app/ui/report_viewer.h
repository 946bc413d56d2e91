#pragma once

#include <QWidget>
#include <functional>
#include <string>

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace polefit {

/// A report in a window of its own, to be read, searched, printed and saved. It deletes itself when
/// it is closed.
class ReportViewer final : public QWidget {
  Q_OBJECT

 public:
  struct Report {
    /// The data file.
    std::string file;
    /// Windows-1252, as the solver wrote it.
    std::string bytes;
  };
  /// Saves the report's bytes as the user wishes.
  using Saver = std::function<void(const Report& report)>;

  ReportViewer(Report report, Saver save);

  /// Whether the form asks for something else by now.
  void SetOutdated(bool isOutdated);

 private:
  void BuildBar(QBoxLayout* rows);
  void AddKeys();
  /// Lists the headings, each with the block it stands in.
  void FillSections();
  void Find(bool isBackward);
  /// Finds on while the word is typed.
  void FindTyped();
  void Zoom(int steps);
  void Print();

  Report report_;
  Saver save_;
  QPlainTextEdit* text_;
  QLabel* outdated_;
  QComboBox* sections_;
  QLineEdit* find_;
  QLabel* found_;
};

}  // namespace polefit
