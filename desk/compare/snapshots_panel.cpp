#include "desk/compare/snapshots_panel.h"

#include <QGridLayout>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>

namespace desk {
namespace {

constexpr int kTextRole = Qt::UserRole;
constexpr QSize kThumbnail{96, 54};

}  // namespace

SnapshotsPanel::SnapshotsPanel(Preview& preview, QWidget* parent)
    : QWidget(parent), preview_(preview), list_(new QListWidget) {
  list_->setAccessibleName("Snapshots");
  list_->setIconSize(kThumbnail);
  list_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
  auto* take = new QPushButton("Take");
  auto* show = new QPushButton("Show");
  auto* goBack = new QPushButton("Go back to");
  auto* remove = new QPushButton("Remove");
  show->setToolTip("Shows the selected snapshot for as long as the button is held");
  auto* grid = new QGridLayout(this);
  grid->addWidget(list_, 0, 0, 1, 2);
  grid->addWidget(take, 1, 0);
  grid->addWidget(show, 1, 1);
  grid->addWidget(goBack, 2, 0);
  grid->addWidget(remove, 2, 1);

  SceneDocument& document = preview_.document();
  connect(take, &QPushButton::clicked, this, &SnapshotsPanel::take);
  connect(show, &QPushButton::pressed, this, [this, &document] {
    if (list_->currentItem()) preview_.compare(document.stateOf(chosenText()));
  });
  connect(show, &QPushButton::released, this, [this] { preview_.compare(nullptr); });
  connect(goBack, &QPushButton::clicked, this, [this, &document] {
    if (list_->currentItem()) document.setText(chosenText(), "Go back to a snapshot");
  });
  connect(remove, &QPushButton::clicked, this, [this] { delete list_->currentItem(); });
  connect(&document, &SceneDocument::replaced, list_, &QListWidget::clear);
  const auto enable = [this, show, goBack, remove] {
    for (QPushButton* button : {show, goBack, remove}) {
      button->setEnabled(list_->currentItem() != nullptr);
    }
  };
  connect(list_, &QListWidget::currentItemChanged, this, enable);
  enable();
}

void SnapshotsPanel::take() {
  const QImage& image = preview_.picture().image;
  const QImage small = image.scaled(kThumbnail, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  auto* item = new QListWidgetItem(QIcon(QPixmap::fromImage(small)),
                                   QString("Snapshot %1").arg(list_->count() + 1), list_);
  item->setData(kTextRole, QVariant::fromValue(preview_.document().placedText()));
  item->setFlags(item->flags() | Qt::ItemIsEditable);
  list_->setCurrentItem(item);
}

PlacedText SnapshotsPanel::chosenText() const {
  const QListWidgetItem* item = list_->currentItem();
  return item ? item->data(kTextRole).value<PlacedText>() : PlacedText();
}

}  // namespace desk
