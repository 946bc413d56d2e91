#pragma once

#include <QWidget>
#include <vector>

class QLabel;
class QLineEdit;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

namespace polefit {

/// The manual in a window of our own: its contents on the left, the text with find and zoom.
class HelpWindow final : public QWidget {
  Q_OBJECT

 public:
  /// Over `parent`, when it has to be reachable beside a modal dialog.
  explicit HelpWindow(QWidget* parent = nullptr);

  /// Brings the chapter or section with this heading to the top and the window to the front; the
  /// beginning when there is none.
  void ShowChapter(const QString& heading);
  /// The headings of chapters and sections, in order.
  QStringList Headings() const;
  /// The heading that what stands at the top belongs to.
  QString HeadingAtTop() const;

 private:
  struct Heading {
    QString text;
    int level = 0;
    int position = 0;
    QTreeWidgetItem* item = nullptr;
  };

  void LoadManual();
  void FitPictures();
  void SpaceOut();
  void ListHeadings();
  QWidget* MakeBar();
  void GoTo(int position);
  void Find(bool backward);
  void FollowLink(const QString& target);
  void MarkContents();

  QTreeWidget* contents_;
  QTextBrowser* page_;
  QLineEdit* wanted_;
  QLabel* outcome_;
  std::vector<Heading> headings_;
};

}  // namespace polefit
