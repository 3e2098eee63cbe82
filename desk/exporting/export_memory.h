// What exports were asked for last, for the next.
#pragma once

#include <QMap>
#include <QString>

namespace desk {

/// As the dialog's fields have it.
struct ExportChoice {
  QString format;  // its name
  QString folder;  // of the output
  QString name;    // of the output
  QString scale;
};

class ExportMemory {
 public:
  /// The scene's last one in this session; otherwise the format and folder of the last of all, of
  /// this session or one before: a name or a reduced scale of another scene would be a surprise.
  /// What is not known, or a folder that is gone, is empty.
  ExportChoice of(const QString& scenePath) const;
  void keep(const QString& scenePath, const ExportChoice& choice);

 private:
  QMap<QString, ExportChoice> own_;
};

}  // namespace desk
