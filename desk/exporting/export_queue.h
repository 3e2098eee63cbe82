// Exports in the background: each is a `brisel render` of the scene as it was when it was asked
// for.
#pragma once

#include <QAbstractListModel>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "desk/document/placed_text.h"

class QTemporaryFile;

namespace desk {

struct ExportJob {
  enum class State { Waiting, Running, Done, Failed, Canceled };

  QString name;  // of the scene, for the list
  PlacedText scene;
  QString output;         // as for `brisel render -o`
  QStringList arguments;  // further ones: "--frames", "0-49", "--scale", "1/2", "--overwrite", ...
  State state = State::Waiting;
  int framesDone = 0;
  int frames = 0;   // of all; 0 while it is not known
  QString message;  // once it is done or failed: one sentence
};

/// One after another, in their order; the list is a model for views, each row a job. What is not
/// done when the queue is destroyed is canceled, and leaves nothing half-written behind.
class ExportQueue : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { kStateRole = Qt::UserRole, kFramesDoneRole, kFramesRole, kMessageRole, kOutputRole };

  explicit ExportQueue(QObject* parent = nullptr);
  ~ExportQueue() override;

  void add(ExportJob job);
  void cancel(int row);   // one that waits or runs
  void removeFinished();  // from the list
  bool isBusy() const;    // whether one waits or runs
  const ExportJob& job(int row) const { return jobs_[static_cast<std::size_t>(row)]; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

  /// Where `brisel` is: beside this program, else in PATH; empty when it is neither.
  static QString program();

 signals:
  void finished(int row);

 private:
  void startNext();
  QString writeScene(const PlacedText& scene);
  void interrupt();
  void takeProgress();
  void takeEnd();
  void end(int row, ExportJob::State state, const QString& message);
  void tellChange(int row);

  std::vector<ExportJob> jobs_;
  int running_ = -1;                       // the row of the job that runs
  std::unique_ptr<QProcess> process_;      // its program
  std::unique_ptr<QTemporaryFile> scene_;  // its scene
  bool isCanceled_ = false;
  QString lastLine_;  // of what it says
};

}  // namespace desk
