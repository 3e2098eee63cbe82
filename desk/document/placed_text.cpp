#include "desk/document/placed_text.h"

#include <QDir>

#include "desk/document/scene_text.h"

namespace desk {

std::filesystem::path sceneFile(const QString& path) {
  const QString file =
      path.isEmpty() ? QDir().absoluteFilePath(QStringLiteral("Untitled.toml")) : path;
  return file.toStdString();
}

QString seenFrom(const QString& path, const PlacedText& text) {
  const std::filesystem::path folder = sceneFile(path).parent_path();
  const std::filesystem::path old = sceneFile(text.path);
  if (old.parent_path() == folder) return text.text;
  try {
    return QString::fromStdString(SceneText(text.text.toStdString(), old).withFilesFrom(folder));
  } catch (const std::exception&) {
    return text.text;
  }
}

}  // namespace desk
