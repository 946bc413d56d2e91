#pragma once

#include <QObject>
#include <QStringList>
#include <functional>

class QWidget;

namespace polefit {

/// Lets files of this machine be dropped on a window, and on those of its parts that would take
/// them as a text. `take` gets their whole paths once the drag is over, so that boxes may follow.
class FileDrop final : public QObject {
 public:
  using Take = std::function<void(const QStringList& paths)>;

  /// Lives as long as the window.
  FileDrop(QWidget& window, Take take);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Take take_;
};

}  // namespace polefit
