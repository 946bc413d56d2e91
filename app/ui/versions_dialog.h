#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "app/version_list.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace polefit {

/// Lists the former versions of one file and says which one is wanted for what. It decides nothing
/// and touches no file.
class VersionsDialog final : public QDialog {
  Q_OBJECT

 public:
  using Lister = std::function<std::vector<VersionLine>(const std::string& path)>;

  /// `paths` are the files to choose from, `chosen` the one that is listed first.
  VersionsDialog(const std::vector<std::string>& paths, const std::string& chosen, Lister lister,
                 QWidget* parent);

  enum class Wish { none, putBack, openAsNew };
  Wish WishedFor() const { return wish_; }
  std::string Path() const;
  const VersionLine& Line() const;

 private:
  void BuildTable();
  void BuildButtons();
  void ShowPath();
  void ShowRow(int row, const VersionLine& line);
  void FollowSelection();
  void Take(Wish wish);

  Lister lister_;
  std::vector<VersionLine> lines_;
  Wish wish_ = Wish::none;
  QComboBox* files_;
  QTableWidget* table_;
  QLabel* none_;
  QPushButton* putBack_ = nullptr;
  QPushButton* openAsNew_ = nullptr;
};

}  // namespace polefit
