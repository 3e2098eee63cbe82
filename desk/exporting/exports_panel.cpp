#include "desk/exporting/exports_panel.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace desk {

ExportsPanel::ExportsPanel(ExportQueue& queue, QWidget* parent)
    : QWidget(parent),
      queue_(queue),
      list_(new QListView),
      progress_(new QProgressBar),
      cancel_(new QPushButton("Cancel")) {
  list_->setModel(&queue_);
  list_->setAccessibleName("Exports");
  list_->setWordWrap(true);
  progress_->setAccessibleName("Progress of the export");
  auto* clear = new QPushButton("Clear finished");
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(progress_, 1);
  buttons->addWidget(cancel_);
  buttons->addWidget(clear);
  auto* column = new QVBoxLayout(this);
  column->addWidget(list_, 1);
  column->addLayout(buttons);
  connect(cancel_, &QPushButton::clicked, this, [this] {
    if (chosenRow() >= 0) queue_.cancel(chosenRow());
  });
  connect(clear, &QPushButton::clicked, &queue_, &ExportQueue::removeFinished);
  connect(&queue_, &QAbstractItemModel::dataChanged, this, &ExportsPanel::refresh);
  connect(&queue_, &QAbstractItemModel::rowsInserted, this, &ExportsPanel::refresh);
  connect(&queue_, &QAbstractItemModel::rowsRemoved, this, &ExportsPanel::refresh);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &ExportsPanel::refresh);
  refresh();
}

/// The selected one, or else the one that runs.
int ExportsPanel::chosenRow() const {
  if (list_->currentIndex().isValid()) return list_->currentIndex().row();
  for (int row = 0; row < queue_.rowCount(); ++row) {
    if (queue_.job(row).state == ExportJob::State::Running) return row;
  }
  return -1;
}

void ExportsPanel::refresh() {
  const int row = chosenRow();
  using State = ExportJob::State;
  const State state = row < 0 ? State::Done : queue_.job(row).state;
  cancel_->setEnabled(state == State::Waiting || state == State::Running);
  progress_->setRange(0, row < 0 ? 1 : queue_.job(row).frames);
  progress_->setValue(row < 0 ? 0 : queue_.job(row).framesDone);
}

}  // namespace desk
