#pragma once

#include <QMenu>

#include "platform/host.h"

namespace polefit {

/// File > Open Recent: the files opened or saved last, those that are gone greyed.
class RecentMenu final : public QMenu {
  Q_OBJECT

 public:
  RecentMenu(Host& host, QWidget* parent);

 Q_SIGNALS:
  void chosen(const QString& path);

 private:
  void Fill();

  Host& host_;
};

}  // namespace polefit
