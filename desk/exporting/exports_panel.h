// The exports: what waits, how far the one that runs is, and what has become of the others.
#pragma once

#include <QListView>

#include "desk/exporting/export_queue.h"

class QProgressBar;
class QPushButton;

namespace desk {

class ExportsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit ExportsPanel(ExportQueue& queue, QWidget* parent = nullptr);

 private:
  void refresh();
  int chosenRow() const;

  ExportQueue& queue_;
  QListView* list_;
  QProgressBar* progress_;
  QPushButton* cancel_;
};

}  // namespace desk
