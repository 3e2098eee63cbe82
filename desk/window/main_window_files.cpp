#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QSettings>
#include <algorithm>

#include "desk/window/main_window.h"

namespace desk {
namespace {

constexpr char kRecent[] = "files/recent";
constexpr int kMostRecent = 10;

}  // namespace

void MainWindow::addRecentMenu() {
  recentMenu_ = fileMenu_->addMenu("Open &recent");
  recentMenu_->setToolTipsVisible(true);
  connect(recentMenu_, &QMenu::aboutToShow, this, [this] {
    recentMenu_->clear();
    for (const QString& path : QSettings().value(kRecent).toStringList()) {
      QAction* action = recentMenu_->addAction(QFileInfo(path).fileName(), this, [this, path] {
        if (mayLeaveScene()) open(path);
      });
      action->setToolTip(path);
      action->setEnabled(QFileInfo::exists(path));
    }
    if (recentMenu_->isEmpty()) recentMenu_->addAction("None")->setEnabled(false);
  });
  connect(&document_, &SceneDocument::savedStateChanged, this, &MainWindow::keepRecent);
}

void MainWindow::keepRecent() const {
  if (document_.path().isEmpty()) return;
  QSettings settings;
  QStringList paths = settings.value(kRecent).toStringList();
  if (!paths.isEmpty() && paths.front() == document_.path()) return;
  paths.removeAll(document_.path());
  paths.prepend(document_.path());
  settings.setValue(kRecent, paths.mid(0, kMostRecent));
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.size() == 1 && urls.front().isLocalFile()) event->acceptProposedAction();
}

/// A scene is opened, a preset's file or thumbnail applied, and anything else is the input.
void MainWindow::dropEvent(QDropEvent* event) {
  const QString path = event->mimeData()->urls().front().toLocalFile();
  const QFileInfo file(path);
  event->acceptProposedAction();
  if (file.suffix().compare("toml", Qt::CaseInsensitive) == 0) {
    if (mayLeaveScene()) open(path);
    return;
  }
  const std::vector<scene::Preset>& presets = document_.presetLibrary().presets();
  const auto preset = std::ranges::find_if(presets, [&](const scene::Preset& candidate) {
    const auto isFile = [&](const std::filesystem::path& other) {
      return QFileInfo(QString::fromStdString(other.string())) == file;
    };
    return isFile(candidate.file) || isFile(candidate.thumbnail);
  });
  if (preset != presets.end()) {
    document_.applyPreset(preview_.layer(), QString::fromStdString(preset->name));
  } else if (file.suffix().compare("txt", Qt::CaseInsensitive) == 0) {
    document_.applyPresetFile(preview_.layer(), path);
  } else {
    document_.setSceneInput(path);
  }
}

}  // namespace desk
