#include "desk/document/scene_document.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QSaveFile>
#include <QTimer>
#include <algorithm>

#include "cli/scene/starter_scene.h"
#include "desk/document/scene_document_parsed.h"
#include "desk/document/value_text.h"
#include "scene/file_access.h"

namespace desk {
namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

/// Throws WorkError beginning with `name` where the file cannot be read, or is no text that would
/// be saved as it is.
QByteArray bytesOfScene(const QString& path, const QString& name) {
  QByteArray bytes =
      QByteArray::fromStdString(scene::textOfFile(path.toStdString(), name.toStdString()));
  const QByteArray text = QString::fromUtf8(bytes).toUtf8();  // without such a mark
  if (text != bytes && kByteOrderMark + text != bytes) {
    throw scene::WorkError(name.toStdString() + " is no text in UTF-8");
  }
  return bytes;
}

}  // namespace

void SceneDocument::startNew(const QString& preset) {
  std::vector<std::string> presets;
  if (!preset.isEmpty()) presets.push_back(preset.toStdString());
  start(QString::fromStdString(cli::starterScene("scene.toml", presets)), {});
}

bool SceneDocument::open(const QString& path) {
  try {
    const QByteArray bytes = bytesOfScene(path, tr("The scene \"%1\"").arg(path));
    start(QString::fromUtf8(bytes), QFileInfo(path).absoluteFilePath());
    onDisk_ = bytes;
    return true;
  } catch (const std::exception& error) {
    emit problem(QString::fromUtf8(error.what()));
    return false;
  }
}

/// Of a text that is no sound scene an empty one is shown until it is mended.
void SceneDocument::start(const QString& text, const QString& path) {
  path_ = path;
  forgetRecovery();
  kept_.clear();
  allowed_.clear();  // for the scene before
  undoStack_.clear();
  onDisk_.clear();
  diskProblem_.clear();
  watch();
  parsed_ = parse(QString());
  take(std::make_shared<PlacedText>(PlacedText{text, path}));
  emit replaced();
  emit savedStateChanged();
}

bool SceneDocument::save() {
  const QByteArray known = onDisk_;
  if (!known.isNull()) lookAtDisk();
  if (!onDisk_.isNull() && onDisk_ != known) return false;
  if (!write(path_, text())) return false;
  undoStack_.setClean();
  return true;
}

bool SceneDocument::saveAs(const QString& path) {
  const QString absolute = QFileInfo(path).absoluteFilePath();
  if (!write(absolute, seenFrom(absolute, *now_))) return false;
  // What the scene could read so far it still can, as do the texts that undo brings back.
  if (!path_.isEmpty()) allowed_.push_back(sceneFile(path_).parent_path().string());
  path_ = absolute;
  watch();
  kept_.clear();  // whose messages and inputs are those of the old place
  take(now_);
  undoStack_.setClean();
  emit savedStateChanged();
  return true;
}

bool SceneDocument::write(const QString& path, const QString& text) {
  QByteArray bytes = text.toUtf8();
  if ((onDisk_ + bytes).contains("\r\n")) bytes.replace("\r\n", "\n").replace("\n", "\r\n");
  if (onDisk_.startsWith(kByteOrderMark)) bytes.prepend(kByteOrderMark);
  QSaveFile file(path);
  // commit() alone overlooks that what was buffered finds no room, and replaces the file by
  // nothing.
  const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                         file.flush() && file.commit();
  if (!isWritten) {
    emit problem(tr("The scene could not be saved as \"%1\": %2").arg(path, file.errorString()));
    return false;
  }
  onDisk_ = bytes;
  diskProblem_.clear();
  forgetRecovery();
  return true;
}

QString SceneDocument::name() const {
  return path_.isEmpty() ? tr("Untitled") : QFileInfo(path_).fileName();
}

void SceneDocument::setInput(const QString& path) {
  input_ = path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
  kept_.clear();
  take(now_);
}

void SceneDocument::allow(const QString& folder) {
  allowed_.push_back(folder.toStdString());
  kept_.clear();
  take(now_);
}

QString SceneDocument::folderToAllow() const {
  try {
    const SceneText text(now_->text.toStdString(), sceneFile(path_));
    const std::filesystem::path own = text.file().parent_path();
    for (const std::filesystem::path& file : text.files()) {
      const auto covers = [&](const std::filesystem::path& folder) {
        return scene::liesBelow(file, folder);
      };
      if (covers(own) || std::ranges::any_of(allowed_, covers)) continue;
      return QFileInfo(QString::fromStdString(file.string())).absoluteDir().absolutePath();
    }
  } catch (const std::exception&) {  // the text is what is wrong
  }
  return {};
}

void SceneDocument::setSceneInput(const QString& path) {
  input_.clear();
  if (!path.isEmpty()) allowed_.push_back(QFileInfo(path).absolutePath().toStdString());
  kept_.clear();
  const QString absolute = QFileInfo(path).absoluteFilePath();
  const QString name =
      path_.isEmpty() ? absolute : QFileInfo(path_).dir().relativeFilePath(absolute);
  edit(tr("Set Input"), [&](const SceneText& text) {
    return text.withSceneKey("input", path.isEmpty() ? "" : tomlString(name.toStdString()));
  });
}

// --- The file on disk

void SceneDocument::watch() {
  const QStringList old = watcher_->files() + watcher_->directories();
  if (!old.isEmpty()) watcher_->removePaths(old);
  if (path_.isEmpty()) return;
  // Editors that replace the file are seen by its folder.
  watcher_->addPath(QFileInfo(path_).absolutePath());
  if (QFileInfo::exists(path_)) watcher_->addPath(path_);
}

void SceneDocument::lookAtDisk() {
  if (path_.isEmpty()) return;
  try {
    const QByteArray bytes = bytesOfScene(path_, tr("it"));
    diskProblem_.clear();
    if (!watcher_->files().contains(path_)) watcher_->addPath(path_);
    if (bytes == onDisk_) return;
    onDisk_ = bytes;
    if (QString::fromUtf8(bytes) == text()) {  // it is back
      undoStack_.setClean();
    } else if (isModified()) {
      undoStack_.resetClean();  // no step is what is on the disk
      emit changedOnDisk();
    } else {
      reload();
    }
  } catch (const std::exception& error) {
    loseDisk(QString::fromUtf8(error.what()));
  }
}

/// What is here is all that there is of the scene, and unsaved.
void SceneDocument::loseDisk(const QString& why) {
  if (why == diskProblem_) return;  // told already
  diskProblem_ = why;
  onDisk_.clear();
  undoStack_.resetClean();
  untilRecovery_->start();
  emit problem(
      QFileInfo::exists(path_)
          ? tr("%1 has changed on the disk, and %2; what is here is kept, unsaved").arg(name(), why)
          : tr("%1 is no longer there; save to write it again").arg(name()));
}

void SceneDocument::reload() {
  try {
    onDisk_ = bytesOfScene(path_, tr("it"));
  } catch (const std::exception& error) {
    return loseDisk(QString::fromUtf8(error.what()));
  }
  setText({QString::fromUtf8(onDisk_), path_}, tr("Change on Disk"));
  undoStack_.setClean();
}

// --- Recovery

bool SceneDocument::keepForRecovery() {
  if (!isModified()) return true;
  const QString why = recovery_->write(path_, text());
  if (why.isEmpty() || why == std::exchange(recoveryProblem_, why)) return why.isEmpty();
  emit problem(tr("Unsaved changes cannot be kept for after a crash: %1").arg(why));
  return false;
}

void SceneDocument::forgetRecovery() {
  untilRecovery_->stop();
  recovery_->remove();
}

void SceneDocument::restore(const Recovered& recovered) {
  // The one that is open goes on, with its undo and the folders that it may read.
  if (recovered.path != path_ && !open(recovered.path)) start({}, recovered.path);
  setText({recovered.text, path_}, tr("Recover"));
  if (keepForRecovery()) RecoveryFile::discard(recovered);
}

}  // namespace desk
