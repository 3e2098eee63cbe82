#include "desk/exporting/export_queue.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QTextDocument>
#include <algorithm>
#include <csignal>

namespace desk {
namespace {

constexpr int kPatience = 3000;  // milliseconds that a canceled export has for cleaning up

bool isUnfinished(const ExportJob& job) {
  return job.state == ExportJob::State::Waiting || job.state == ExportJob::State::Running;
}

QString stateText(const ExportJob& job) {
  switch (job.state) {
    case ExportJob::State::Waiting:
      return ExportQueue::tr("waiting");
    case ExportJob::State::Running:
      return ExportQueue::tr("frame %1 of %2").arg(job.framesDone).arg(job.frames);
    default:
      return job.message;
  }
}

}  // namespace

ExportQueue::ExportQueue(QObject* parent) : QAbstractListModel(parent) {}

ExportQueue::~ExportQueue() {
  if (!process_) return;
  process_->disconnect(this);
  interrupt();
  if (!process_->waitForFinished(kPatience)) process_->kill();
  process_->waitForFinished(kPatience);
}

QString ExportQueue::program() {
  const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/brisel");
  return QFileInfo(beside).isExecutable()
             ? beside
             : QStandardPaths::findExecutable(QStringLiteral("brisel"));
}

void ExportQueue::add(ExportJob job) {
  const int row = rowCount();
  beginInsertRows({}, row, row);
  jobs_.push_back(std::move(job));
  endInsertRows();
  startNext();
}

void ExportQueue::cancel(int row) {
  ExportJob& canceled = jobs_[static_cast<std::size_t>(row)];
  if (canceled.state == ExportJob::State::Running) {
    interrupt();  // the job's end follows
  } else if (canceled.state == ExportJob::State::Waiting) {
    end(row, ExportJob::State::Canceled, tr("Canceled"));
  }
}

void ExportQueue::removeFinished() {
  for (int row = rowCount() - 1; row >= 0; --row) {
    if (isUnfinished(job(row))) continue;
    beginRemoveRows({}, row, row);
    jobs_.erase(jobs_.begin() + row);
    if (running_ > row) --running_;
    endRemoveRows();
  }
}

bool ExportQueue::isBusy() const {
  return std::ranges::any_of(jobs_, isUnfinished);
}

int ExportQueue::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(jobs_.size());
}

QVariant ExportQueue::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const ExportJob& shown = job(index.row());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
      return tr("%1: %2").arg(QFileInfo(shown.output).fileName(), stateText(shown));
    case Qt::ToolTipRole:
      return Qt::convertFromPlainText(shown.output, Qt::WhiteSpaceNormal);
    case kOutputRole:
      return shown.output;
    case kStateRole:
      return static_cast<int>(shown.state);
    case kFramesDoneRole:
      return shown.framesDone;
    case kFramesRole:
      return shown.frames;
    case kMessageRole:
      return shown.message;
    default:
      return {};
  }
}

/// The scene is rendered from a copy beside its file, so that what it refers to is found; where
/// none can be there, from one elsewhere that names the same files. Why neither can be, or nothing.
QString ExportQueue::writeScene(const PlacedText& scene) {
  QString why;
  for (const QString& folder : {QFileInfo(scene.path).absolutePath(), QDir::tempPath()}) {
    if (scene.path.isEmpty() && folder != QDir::tempPath()) continue;
    scene_ = std::make_unique<QTemporaryFile>(folder + QStringLiteral("/.brisel-XXXXXX.toml"));
    if (scene_->open()) {
      const QByteArray text = seenFrom(scene_->fileName(), scene).toUtf8();
      if (scene_->write(text) == text.size() && scene_->flush()) return {};
    }
    why = tr("the scene cannot be written into \"%1\": %2").arg(folder, scene_->errorString());
  }
  return why;
}

void ExportQueue::startNext() {
  if (running_ >= 0) return;
  const auto next = std::ranges::find(jobs_, ExportJob::State::Waiting, &ExportJob::state);
  if (next == jobs_.end()) return;
  const int row = static_cast<int>(next - jobs_.begin());
  const QString why = writeScene(next->scene);
  if (!why.isEmpty()) return end(row, ExportJob::State::Failed, why);
  const QString brisel = program();
  if (brisel.isEmpty()) {
    scene_.reset();
    return end(row, ExportJob::State::Failed,
               tr("there is no program \"brisel\"; install the package brisel"));
  }
  next->state = ExportJob::State::Running;
  running_ = row;
  process_ = std::make_unique<QProcess>();
  connect(process_.get(), &QProcess::readyReadStandardError, this, &ExportQueue::takeProgress);
  connect(process_.get(), &QProcess::finished, this, &ExportQueue::takeEnd);
  connect(process_.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) takeEnd();
  });
  process_->setStandardInputFile(QProcess::nullDevice());
  process_->setStandardOutputFile(QProcess::nullDevice());
  QStringList words{QStringLiteral("render"),     scene_->fileName(),
                    QStringLiteral("-o"),         next->output,
                    QStringLiteral("--progress"), QStringLiteral("0.2")};
  // What it may read of its own folder it may wherever the copy is.
  const QString own = QString::fromStdString(sceneFile(next->scene.path).parent_path().string());
  if (QFileInfo(own).isDir()) words << QStringLiteral("--allow") << own;
  process_->start(brisel, words + next->arguments);
  tellChange(row);
}

/// As Ctrl-C: the program takes away what is not complete.
void ExportQueue::interrupt() {
  isCanceled_ = true;
  if (process_->processId() > 0) ::kill(static_cast<pid_t>(process_->processId()), SIGINT);
}

void ExportQueue::takeProgress() {
  static const QRegularExpression progress(
      QStringLiteral(R"(: (?:frame (\d+) of (\d+),|step \d+ of \d+))"));
  ExportJob& running = jobs_[static_cast<std::size_t>(running_)];
  for (const QByteArray& line : process_->readAllStandardError().split('\n')) {
    const QString text = QString::fromUtf8(line).trimmed();
    if (text.isEmpty()) continue;
    const QRegularExpressionMatch match = progress.match(text);
    if (match.hasMatch()) {
      if (!match.hasCaptured(1)) continue;  // steps towards the first frame
      running.framesDone = match.captured(1).toInt();
      running.frames = match.captured(2).toInt();
    } else {
      lastLine_ = text;
    }
  }
  tellChange(running_);
}

void ExportQueue::takeEnd() {
  takeProgress();
  const int row = std::exchange(running_, -1);
  const bool isDone = process_->error() == QProcess::UnknownError &&
                      process_->exitStatus() == QProcess::NormalExit && process_->exitCode() == 0;
  const bool isCanceled = std::exchange(isCanceled_, false);
  QString message = std::exchange(lastLine_, QString());
  message.remove(QRegularExpression(QStringLiteral("^brisel: ")));
  message.replace(scene_->fileName(), job(row).name);
  const QString output = QFileInfo(job(row).output).fileName() + QStringLiteral(": ");
  if (message.startsWith(output)) message.remove(0, output.size());  // which lists name anyway
  scene_.reset();
  process_.release()->deleteLater();  // which this is a call of
  if (isDone) {
    jobs_[static_cast<std::size_t>(row)].framesDone = job(row).frames;
    end(row, ExportJob::State::Done, message);
  } else if (isCanceled) {
    end(row, ExportJob::State::Canceled, tr("Canceled"));
  } else {
    end(row, ExportJob::State::Failed,
        message.isEmpty() ? tr("\"brisel\" did not run to its end") : message);
  }
}

void ExportQueue::end(int row, ExportJob::State state, const QString& message) {
  ExportJob& ended = jobs_[static_cast<std::size_t>(row)];
  ended.state = state;
  ended.message = message;
  tellChange(row);
  emit finished(row);
  startNext();
}

void ExportQueue::tellChange(int row) {
  emit dataChanged(index(row), index(row));
}

}  // namespace desk
