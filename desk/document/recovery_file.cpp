#include "desk/document/recovery_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUuid>

namespace desk {
namespace {

constexpr char kSuffix[] = ".unsaved";

QDir folder() {
  return {QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
          QStringLiteral("/recovery")};
}

std::unique_ptr<QLockFile> lockOf(const QString& file) {
  auto lock = std::make_unique<QLockFile>(file + QStringLiteral(".lock"));
  lock->setStaleLockTime(0);  // for as long as its process runs
  return lock;
}

}  // namespace

RecoveryFile::~RecoveryFile() = default;

/// The first line is the path of the scene's file, the others are its text.
QString RecoveryFile::write(const QString& path, const QString& text) {
  if (file_.isEmpty()) {
    if (!QDir().mkpath(folder().path())) {
      return QObject::tr("the folder \"%1\" cannot be made").arg(folder().path());
    }
    file_ = folder().filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) +
                              QLatin1String(kSuffix));
    lock_ = lockOf(file_);
    lock_->tryLock();
  }
  QSaveFile file(file_);
  const QByteArray bytes = (path + QLatin1Char('\n') + text).toUtf8();
  const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                         file.flush() && file.commit();
  return isWritten ? QString() : file.errorString();
}

void RecoveryFile::remove() {
  if (file_.isEmpty()) return;
  QFile::remove(file_);
  lock_.reset();
  file_.clear();
}

std::optional<Recovered> RecoveryFile::findOne() {
  const QFileInfoList files =
      folder().entryInfoList({QLatin1Char('*') + QLatin1String(kSuffix)}, QDir::Files, QDir::Time);
  for (const QFileInfo& info : files) {
    auto lock = lockOf(info.filePath());
    if (!lock->tryLock()) continue;
    QFile file(info.filePath());
    if (!file.open(QIODevice::ReadOnly)) continue;
    const QString content = QString::fromUtf8(file.readAll());
    const qsizetype line = content.indexOf(QLatin1Char('\n'));
    return Recovered{content.left(line), content.mid(line + 1), info.lastModified(),
                     info.filePath(), std::move(lock)};
  }
  return std::nullopt;
}

void RecoveryFile::discard(const Recovered& recovered) {
  if (!recovered.file.isEmpty()) QFile::remove(recovered.file);
}

}  // namespace desk
