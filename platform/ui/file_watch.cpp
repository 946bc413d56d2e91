#include "platform/ui/file_watch.h"

#include <QFileInfo>

namespace polefit {

FileWatch::FileWatch() {
  constexpr int kAfterLastWrite = 300;  // ms
  settled_.setSingleShot(true);
  settled_.setInterval(kAfterLastWrite);
  const auto note = [this] { settled_.start(); };
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, note);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, note);
  connect(&settled_, &QTimer::timeout, this, [this] {
    Rearm();
    Q_EMIT changed();
  });
}

void FileWatch::Watch(const QString& path) {
  if (path == path_) return;
  path_ = path;
  const QStringList watched = watcher_.files() + watcher_.directories();
  if (!watched.isEmpty()) watcher_.removePaths(watched);
  Rearm();
}

/// A file that is replaced falls out of the watch; its folder stays in it.
void FileWatch::Rearm() {
  if (path_.isEmpty()) return;
  const QFileInfo file(path_);
  if (file.exists() && !watcher_.files().contains(path_)) watcher_.addPath(path_);
  if (!watcher_.directories().contains(file.path())) watcher_.addPath(file.path());
}

}  // namespace polefit
