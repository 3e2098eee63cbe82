// A scene's unsaved text, for after a crash.
#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QString>
#include <memory>
#include <optional>

namespace desk {

/// A scene that an earlier run did not save.
struct Recovered {
  QString path;  // of the scene's file; or empty
  QString text;
  QDateTime changed;
  QString file;  // that keeps it; or empty
  std::shared_ptr<QLockFile> lock;
};

/// One for each window, in the folder of the program's data. Another process leaves it alone for as
/// long as this one runs.
class RecoveryFile {
 public:
  ~RecoveryFile();

  /// Why it could not; empty when it could. What was written before is kept then.
  QString write(const QString& path, const QString& text);
  void remove();

  /// One that a process has left that runs no longer; it stays on the disk, for no other process
  /// while its lock is held, until it is discarded.
  static std::optional<Recovered> findOne();
  static void discard(const Recovered& recovered);

 private:
  QString file_;  // empty until something is written
  std::unique_ptr<QLockFile> lock_;
};

}  // namespace desk
