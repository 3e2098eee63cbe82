#include <QFileInfo>
#include <QMenu>
#include <QSettings>
#include <QTextDocument>
#include <QUrl>
#include <algorithm>

#include "desk/window/file_drops.h"
#include "desk/window/main_window.h"

namespace desk {
namespace {

constexpr char kRecent[] = "files/recent";
constexpr int kMostRecent = 10;

bool hasSuffix(const QFileInfo& file, const char* suffix) {
  return file.suffix().compare(QLatin1String(suffix), Qt::CaseInsensitive) == 0;
}

/// The one whose file or thumbnail it is; or null.
const scene::Preset* presetOf(const scene::PresetLibrary& library, const QFileInfo& file) {
  const auto isFile = [&](const std::filesystem::path& other) {
    return QFileInfo(QString::fromStdString(other.string())) == file;
  };
  const auto found = std::ranges::find_if(library.presets(), [&](const scene::Preset& preset) {
    return isFile(preset.file) || isFile(preset.thumbnail);
  });
  return found == library.presets().end() ? nullptr : &*found;
}

}  // namespace

void MainWindow::addRecentMenu() {
  recentMenu_ = fileMenu_->addMenu("Open &recent");
  recentMenu_->setToolTipsVisible(true);
  connect(recentMenu_, &QMenu::aboutToShow, this, [this] {
    recentMenu_->clear();
    for (const QString& path : QSettings().value(kRecent).toStringList()) {
      QString name = QFileInfo(path).fileName();
      name.replace(QLatin1Char('&'), QLatin1String("&&"));  // no mnemonic
      QAction* action = recentMenu_->addAction(name, this, [this, path] {
        if (mayLeaveScene()) open(path);
      });
      action->setToolTip(Qt::convertFromPlainText(path, Qt::WhiteSpaceNormal));
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

void MainWindow::takeDrops() {
  connect(new FileDrops(*this), &FileDrops::dropped, this, &MainWindow::takeFiles,
          Qt::QueuedConnection);  // what they come from does not wait for questions
}

/// A scene is opened, and a preset's file or thumbnail applied to it, over what else there is.
void MainWindow::takeFiles(const QList<QUrl>& urls) {
  const auto refuse = [this](const QString& sentence) {
    messages_->say(MessageArea::Subject::Failure, sentence);
  };
  QString scene;
  QString preset;
  QString input;
  for (const QUrl& url : urls) {
    const QFileInfo file(url.toLocalFile());
    if (!url.isLocalFile() || file.isDir()) {
      return refuse("\"" + (url.isLocalFile() ? file.filePath() : url.toDisplayString()) +
                    "\" is no file that can be dropped here.");
    }
    const bool isScene = hasSuffix(file, "toml");
    const bool isPreset =
        presetOf(document_.presetLibrary(), file) != nullptr || hasSuffix(file, "txt");
    QString& place = isScene ? scene : isPreset ? preset : input;
    if (!place.isEmpty()) {
      return refuse("Drop one scene, one clip or still and one preset at once, not two of a kind.");
    }
    place = file.filePath();
  }
  if (!scene.isEmpty() && (!mayLeaveScene() || !open(scene))) return;
  if (!input.isEmpty()) document_.setSceneInput(input);
  if (preset.isEmpty()) return;
  if (const scene::Preset* known = presetOf(document_.presetLibrary(), QFileInfo(preset))) {
    document_.applyPreset(preview_.layer(), QString::fromStdString(known->name));
  } else {
    document_.applyPresetFile(preview_.layer(), preset);
  }
}

}  // namespace desk
