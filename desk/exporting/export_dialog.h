// What to export, as what, and where.
#pragma once

#include <QDialog>
#include <filesystem>
#include <vector>

#include "cli/media/frame_range.h"
#include "desk/document/scene_document.h"
#include "desk/exporting/export_memory.h"
#include "desk/exporting/export_queue.h"

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace desk {

/// Adds a job to the queue when it is accepted.
class ExportDialog : public QDialog {
  Q_OBJECT

 public:
  /// `range` is what it starts with; frames of the scene, counted from 0.
  ExportDialog(const SceneDocument& document, ExportQueue& queue, ExportMemory& memory,
               cli::FrameRange range, QWidget* parent = nullptr);

 private:
  void fill(cli::FrameRange range);
  void browse();
  void takeFormat();
  void add();
  void warn(const QString& sentence);
  bool mayReplace(const std::vector<std::filesystem::path>& files);

  const SceneDocument& document_;
  ExportQueue& queue_;
  ExportMemory& memory_;
  QComboBox* format_;
  QLineEdit* output_;
  QSpinBox* first_;
  QSpinBox* last_;
  QComboBox* scale_;
};

}  // namespace desk
