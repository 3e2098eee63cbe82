// A scene's text, and where it stands: what the names of files in it mean.
#pragma once

#include <QString>
#include <filesystem>

namespace desk {

/// The names of other files in it are seen from its own file's folder.
struct PlacedText {
  QString text;
  QString path;  // absolute; empty for one without a file
};

/// That of a scene without a file is one in the working folder.
std::filesystem::path sceneFile(const QString& path);

/// The text with the names that its files have as seen from the file `path`. One that is no TOML
/// stays as it is.
QString seenFrom(const QString& path, const PlacedText& text);

}  // namespace desk
