#include "desk/exporting/export_memory.h"

#include <QFileInfo>
#include <QSettings>

namespace desk {
namespace {

constexpr char kFormat[] = "export/format";
constexpr char kFolder[] = "export/folder";

}  // namespace

ExportChoice ExportMemory::of(const QString& scenePath) const {
  const auto own = own_.find(scenePath);
  if (own != own_.end()) return *own;
  const QSettings settings;
  ExportChoice last{settings.value(kFormat).toString(), settings.value(kFolder).toString(), {}, {}};
  if (!QFileInfo(last.folder).isDir()) last.folder.clear();
  return last;
}

void ExportMemory::keep(const QString& scenePath, const ExportChoice& choice) {
  own_.insert(scenePath, choice);
  QSettings settings;
  settings.setValue(kFormat, choice.format);
  settings.setValue(kFolder, choice.folder);
}

}  // namespace desk
