#include "runs/ui/compare_dialog.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "widgets/controls.h"

namespace polefit {

namespace {

QStringList Texts(const std::vector<std::string>& cells) {
  QStringList texts;
  for (const std::string& cell : cells) texts << QString::fromStdString(cell);
  return texts;
}

void Show(QTreeWidget& tree, const ComparedTable& table) {
  auto* heading = new QTreeWidgetItem(&tree, Texts(table.heading));
  QFont font = tree.font();
  font.setBold(true);
  for (int column = 0; column < tree.columnCount(); ++column) heading->setFont(column, font);
  for (const auto& row : table.rows) {
    auto* item = new QTreeWidgetItem(heading, Texts(row));
    for (int column = 0; column < item->columnCount(); ++column) {
      item->setToolTip(column, item->text(column));
    }
  }
  if (table.rows.empty()) new QTreeWidgetItem(heading, {QObject::tr("None")});
}

QTreeWidget* MakeTree(const std::vector<ComparedTable>& tables) {
  auto* tree = new QTreeWidget;
  tree->setObjectName("compared");
  tree->setAccessibleName(QObject::tr("Comparison of two runs"));
  tree->setHeaderHidden(true);
  tree->setRootIsDecorated(false);
  tree->setAlternatingRowColors(true);
  tree->setColumnCount(static_cast<int>(tables.front().heading.size()));
  for (const ComparedTable& table : tables) Show(*tree, table);
  tree->expandAll();
  constexpr int kWidest = 30;  // characters
  for (int column = 0; column < tree->columnCount(); ++column) {
    tree->resizeColumnToContents(column);
    const int most = kWidest * tree->fontMetrics().averageCharWidth();
    tree->setColumnWidth(
        column, std::min(tree->columnWidth(column), most) + tree->fontMetrics().averageCharWidth());
  }
  return tree;
}

}  // namespace

CompareDialog::CompareDialog(const std::vector<ComparedTable>& tables, const QStringList& titles,
                             QWidget* parent)
    : QDialog(parent) {
  setObjectName("frmCompare");
  setWindowTitle(tr("Compare Runs"));
  auto* rows = new QVBoxLayout(this);
  for (const QString& title : titles) rows->addWidget(MakeText("", title));
  QTreeWidget* tree = MakeTree(tables);
  rows->addWidget(tree, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QPushButton* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
  copy->setObjectName("cmdCompareCopy");
  copy->setToolTip(tr("Puts the tables onto the clipboard, for a spreadsheet"));
  const QString text = titles.join('\n') + "\n\n" + QString::fromStdString(TextOf(tables));
  connect(copy, &QPushButton::clicked, this,
          [text] { QGuiApplication::clipboard()->setText(text); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);
  resize(fontMetrics().averageCharWidth() * 120, fontMetrics().height() * 32);
  tree->setFocus();
}

}  // namespace polefit
