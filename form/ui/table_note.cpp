#include "form/ui/table_note.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/controls.h"

namespace polefit {

TableNote::TableNote(Table table, const QString& tableName)
    : table_(table),
      text_(MakeText(("lblUnsaved" + tableName).toStdString(), "")),
      keep_(MakeButton(("cmdKeep" + tableName).toStdString(), tr("&Keep Typed Rows"))) {
  keep_->setToolTip(tr("Makes the rows from the top, down to the first empty cell, points"));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(text_);
  rows->addWidget(keep_, 0, Qt::AlignLeft);
  connect(keep_, &QPushButton::clicked, this, &TableNote::keepWanted);
  hide();
}

void TableNote::ShowFor(const FormCells& cells) {
  const std::string unsaved = UnsavedRows(cells, table_);
  text_->setText(QString::fromStdString(unsaved));
  keep_->setVisible(CanKeepRows(cells, table_));
  setVisible(!unsaved.empty());
}

}  // namespace polefit
