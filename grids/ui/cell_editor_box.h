#pragma once

#include <QLineEdit>
#include <string>

#include "grids/cell_editor.h"
#include "grids/grid_view.h"

namespace polefit {

class GridWidget;

/// The text box that floats over the cell being edited, in either grid.
class CellEditorBox final : public QLineEdit, public CellEditorView {
  Q_OBJECT

 public:
  CellEditorBox();

  bool IsVisible() const override { return grid_ != nullptr; }
  std::string Text() const override { return text().toStdString(); }
  void SetText(const std::string& text) override { setText(QString::fromStdString(text)); }
  void SetSelection(int start, int length) override;
  /// `grid` is one of the two grid widgets.
  void ShowOver(GridView& grid) override;
  /// When the editor has the focus, the grid gets it.
  void Hide() override;
  /// Whether the clipboard holds more than one cell; the line break behind a single one is none.
  static bool ClipboardHasBlock();
  /// Stays over its cell when the cells of a grid have moved.
  void FollowCell();

 Q_SIGNALS:
  void keyPressed(polefit::EditorKey key);
  /// The Paste key, with more than one cell on the clipboard.
  void blockPasted();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  GridWidget* grid_ = nullptr;
};

}  // namespace polefit
