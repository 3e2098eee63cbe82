#include "desk/controls/presets_panel.h"

#include <QIcon>
#include <QLabel>
#include <QTextDocument>
#include <QVBoxLayout>

namespace desk {
namespace {

constexpr QSize kThumbnail{64, 64};
constexpr int kPresetRole = Qt::UserRole;

}  // namespace

PresetsPanel::PresetsPanel(Preview& preview, QWidget* parent) : QWidget(parent), preview_(preview) {
  auto* column = new QVBoxLayout(this);
  for (std::size_t row = 0; row < scene::kPresetRows.size(); ++row) {
    auto* title = new QLabel(QString::fromUtf8(scene::kPresetRows[row].control));
    QListWidget* list = rowOf(row);
    title->setBuddy(list);
    column->addWidget(title);
    column->addWidget(list, 1);
  }
}

QListWidget* PresetsPanel::rowOf(std::size_t row) {
  auto* list = new QListWidget;
  list->setAccessibleName(QString::fromUtf8(scene::kPresetRows[row].control));
  list->setViewMode(QListView::IconMode);
  list->setIconSize(kThumbnail);
  list->setResizeMode(QListView::Adjust);
  list->setMovement(QListView::Static);
  list->setWordWrap(true);
  list->setFocusPolicy(Qt::TabFocus);  // a click is all there is to do; keys go on playing
  const scene::PresetLibrary& library = preview_.document().presetLibrary();
  for (const scene::Preset& preset : library.presets()) {
    if (preset.row != row) continue;
    const QString name = QString::fromStdString(preset.name);
    auto* item =
        new QListWidgetItem(QIcon(QString::fromStdString(preset.thumbnail.string())), name, list);
    item->setToolTip(Qt::convertFromPlainText(QString::fromStdString(library.describe(preset)),
                                              Qt::WhiteSpaceNormal));
    item->setData(kPresetRole, name);
  }
  const auto apply = [this](const QListWidgetItem* item) {
    preview_.document().applyPreset(preview_.layer(), item->data(kPresetRole).toString());
  };
  connect(list, &QListWidget::itemClicked, this, apply);
  connect(list, &QListWidget::itemActivated, this, apply);
  return list;
}

}  // namespace desk
