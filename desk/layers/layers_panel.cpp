#include "desk/layers/layers_panel.h"

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QScopedValueRollback>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

namespace desk {
namespace {

constexpr int kLayerRole = Qt::UserRole;

}  // namespace

LayersPanel::LayersPanel(Preview& preview, QWidget* parent)
    : QWidget(parent),
      preview_(preview),
      list_(new QListWidget),
      up_(new QToolButton),
      down_(new QToolButton),
      remove_(new QToolButton) {
  SceneDocument& document = preview_.document();
  list_->setAccessibleName("Layers");
  list_->setDragDropMode(QAbstractItemView::InternalMove);
  auto* buttons = new QHBoxLayout;
  const auto addButton = [buttons](QToolButton* button, const QString& text, const QString& name) {
    button->setText(text);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    buttons->addWidget(button);
  };
  auto* add = new QToolButton;
  addButton(add, "Add", "Add a layer");
  addButton(up_, "Up", "Move the layer up");
  addButton(down_, "Down", "Move the layer down");
  addButton(remove_, "Remove", "Remove the layer");
  auto* column = new QVBoxLayout(this);
  column->addWidget(list_, 1);
  column->addLayout(buttons);

  connect(add, &QToolButton::clicked, this, [this, &document] {
    document.addLayer(QStringLiteral("Layer %1").arg(document.layerCount() + 1));
    preview_.setLayer(document.layerCount() - 1);
  });
  connect(remove_, &QToolButton::clicked, this,
          [this, &document] { document.removeLayer(preview_.layer()); });
  connect(up_, &QToolButton::clicked, this, [this] { moveLayer(preview_.layer() + 1); });
  connect(down_, &QToolButton::clicked, this, [this] { moveLayer(preview_.layer() - 1); });
  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (!isRefreshing_ && row >= 0) preview_.setLayer(layerOf(row));
  });
  connect(list_, &QListWidget::itemChanged, this, [this, &document](const QListWidgetItem* item) {
    if (!isRefreshing_) document.renameLayer(item->data(kLayerRole).toInt(), item->text());
  });
  connect(list_->model(), &QAbstractItemModel::rowsMoved, this, &LayersPanel::takeOrder,
          Qt::QueuedConnection);
  connect(&document, &SceneDocument::changed, this, &LayersPanel::refresh);
  connect(&preview_, &Preview::layerChanged, this, &LayersPanel::refresh);
  refresh();
}

void LayersPanel::refresh() {
  const QScopedValueRollback refreshing(isRefreshing_, true);
  const SceneDocument& document = preview_.document();
  const int count = document.layerCount();
  while (list_->count() > count) delete list_->takeItem(0);
  while (list_->count() < count) list_->addItem(QString());
  for (int row = 0; row < count; ++row) {
    QListWidgetItem* item = list_->item(row);
    item->setText(document.layerName(layerOf(row)));
    item->setData(kLayerRole, layerOf(row));
    item->setFlags(
        Qt::ItemIsEnabled | Qt::ItemIsSelectable |
        (document.hasLayerTables() ? Qt::ItemIsEditable | Qt::ItemIsDragEnabled : Qt::NoItemFlags));
  }
  list_->setCurrentRow(layerOf(preview_.layer()));
  up_->setEnabled(preview_.layer() + 1 < count);
  down_->setEnabled(preview_.layer() > 0);
  remove_->setEnabled(count > 1);
}

void LayersPanel::moveLayer(int to) {
  preview_.document().moveLayer(preview_.layer(), to);
  preview_.setLayer(to);
}

/// The list was dragged into another order, in which one layer is out of place.
void LayersPanel::takeOrder() {
  std::vector<int> order;  // from the bottom up
  for (int layer = 0; layer < list_->count(); ++layer) {
    order.push_back(list_->item(layerOf(layer))->data(kLayerRole).toInt());
  }
  int to = 0;
  while (to < list_->count() && order[static_cast<std::size_t>(to)] == to) ++to;
  if (to == list_->count()) return;
  int from = order[static_cast<std::size_t>(to)];
  if (from == to + 1) {  // the one that was here has gone up
    from = to;
    to = static_cast<int>(std::ranges::find(order, from) - order.begin());
  }
  preview_.document().moveLayer(from, to);
  preview_.setLayer(to);
  refresh();
}

}  // namespace desk
