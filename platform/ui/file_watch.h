#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace polefit {

/// Watches one file, also when it is replaced by another of its name.
class FileWatch final : public QObject {
  Q_OBJECT

 public:
  FileWatch();

  /// From now on this file, a whole path; none for an empty one.
  void Watch(const QString& path);

 Q_SIGNALS:
  /// Something was written in the file or its folder a moment ago, and nothing since.
  void changed();

 private:
  void Rearm();

  QFileSystemWatcher watcher_;
  QTimer settled_;
  QString path_;
};

}  // namespace polefit
