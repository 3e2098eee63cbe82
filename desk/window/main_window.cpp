#include "desk/window/main_window.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "desk/compare/compare_key.h"
#include "desk/exporting/export_dialog.h"
#include "desk/window/key_rights.h"
#include "desk/window/paint_trace.h"

namespace desk {
namespace {

constexpr int kLongWait = 400;  // milliseconds
constexpr char kScenes[] = "Scenes (*.toml);;All files (*)";

// Where dialogs about files begin.
QString folderOf(const SceneDocument& document) {
  return document.path().isEmpty() ? QString() : QFileInfo(document.path()).absolutePath();
}

}  // namespace

MainWindow::MainWindow(scene::PresetLibrary presets)
    : document_(std::move(presets)),
      preview_(document_),
      messages_(new MessageArea),
      view_(new PictureView(preview_)),
      timeline_(new TimelinePanel(preview_)) {
  new KeyRights(this);
  new CompareKey(preview_, Qt::Key_B, this);
  setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);
  // The timeline is as wide as the picture alone, and panels as high as the window.
  setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
  setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
  auto* middle = new QWidget;
  auto* column = new QVBoxLayout(middle);
  column->setContentsMargins({});
  column->setSpacing(0);
  column->addWidget(messages_);
  column->addWidget(view_, 1);
  setCentralWidget(middle);

  addFileMenu();
  addEditMenu();
  addViewMenu();
  addTimelineMenus();
  addPanels();
  addHelpMenu();
  takeDrops();
  addStatus();
  tellMessages();
  connect(&document_, &SceneDocument::savedStateChanged, this, &MainWindow::showTitle);
  connect(&document_, &SceneDocument::replaced, this, &MainWindow::showTitle);
  showTitle();
  restoreState();
  PaintTrace::start(preview_, *view_->viewport());
  view_->setFocus();
}

bool MainWindow::open(const QString& path) {
  return document_.open(path);
}

bool MainWindow::mayLeaveScene() {
  if (!document_.isModified()) return true;
  QMessageBox question(QMessageBox::Question, "Brisel",
                       "Save the changes of " + document_.name() + "?",
                       QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
  question.setTextFormat(Qt::PlainText);
  question.setInformativeText("They are lost otherwise.");
  question.setDefaultButton(QMessageBox::Save);
  switch (question.exec()) {
    case QMessageBox::Save:
      return save();
    case QMessageBox::Discard:
      return true;
    default:
      return false;
  }
}

/// They end with the window.
bool MainWindow::mayLeaveExports() {
  if (!exports_.isBusy()) return true;
  QMessageBox question(QMessageBox::Question, "Brisel", "Cancel the exports and close?",
                       QMessageBox::Yes | QMessageBox::No, this);
  question.setInformativeText("They are not finished.");
  question.setDefaultButton(QMessageBox::No);
  return question.exec() == QMessageBox::Yes;
}

void MainWindow::startNew(const QString& preset) {
  if (mayLeaveScene()) document_.startNew(preset);
}

void MainWindow::openByDialog() {
  if (!mayLeaveScene()) return;
  const QString path =
      QFileDialog::getOpenFileName(this, "Open a scene", folderOf(document_), kScenes);
  if (!path.isEmpty()) open(path);
}

void MainWindow::chooseInput() {
  const QString path =
      QFileDialog::getOpenFileName(this, "Choose a clip or still", folderOf(document_));
  if (!path.isEmpty()) document_.setSceneInput(path);
}

bool MainWindow::save() {
  return document_.path().isEmpty() ? saveAs() : document_.save();
}

bool MainWindow::saveAs() {
  QFileDialog dialog(this, "Save the scene", folderOf(document_), kScenes);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix("toml");
  dialog.selectFile(document_.path().isEmpty() ? "scene.toml" : document_.name());
  return dialog.exec() == QDialog::Accepted && document_.saveAs(dialog.selectedFiles().first());
}

void MainWindow::exportScene() {
  const Playback& playback = timeline_->playback();
  auto* dialog =
      new ExportDialog(document_, exports_, exportMemory_, {playback.in(), playback.out()}, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!mayLeaveExports() || !mayLeaveScene()) {
    event->ignore();
    return;
  }
  keepState();
  event->accept();
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) document_.lookAtDisk();
}

void MainWindow::tellMessages() {
  using Subject = MessageArea::Subject;
  connect(&document_, &SceneDocument::problem, this,
          [this](const QString& sentence) { messages_->say(Subject::Failure, sentence); });
  // A failure is about what was tried last.
  connect(&document_, &SceneDocument::changed, this,
          [this] { messages_->withdraw(Subject::Failure); });
  // Neither of it is of any more use once the scene is saved.
  connect(&document_, &SceneDocument::savedStateChanged, this, [this] {
    if (document_.isModified()) return;
    for (const Subject subject : {Subject::Failure, Subject::Disk}) messages_->withdraw(subject);
  });
  connect(&document_, &SceneDocument::replaced, this, [this] {
    for (const Subject subject : {Subject::Failure, Subject::Disk}) messages_->withdraw(subject);
  });
  const auto tellText = [this] {
    if (document_.textProblem().isEmpty()) return messages_->withdraw(Subject::Text);
    std::vector<MessageArea::Answer> answers = answersToRefusal();
    if (document_.undoStack().canUndo()) {
      answers.push_back({"Undo", [this] { document_.undoStack().undo(); }});
    }
    messages_->say(Subject::Text, document_.textProblem(), answers);
  };
  connect(&document_, &SceneDocument::textProblemChanged, this, tellText);
  // Of the first step that there is, it changes only once the text has been told.
  connect(&document_.undoStack(), &QUndoStack::canUndoChanged, this, tellText);
  connect(&document_, &SceneDocument::changedOnDisk, this, [this] {
    messages_->say(
        Subject::Disk,
        "Another program has changed " + document_.name() +
            ", and here there are unsaved changes. Undo brings them back after a reload.",
        {{"Reload", [this] { document_.reload(); }}, {"Keep mine", [] {}}});
  });
  connect(&exports_, &ExportQueue::finished, this, [this](int row) {
    const ExportJob& job = exports_.job(row);
    const QString name = QFileInfo(job.output).fileName();
    if (job.state == ExportJob::State::Failed) {
      messages_->say(Subject::Export, "The export " + name + " failed: " + job.message);
    } else if (job.state == ExportJob::State::Done) {
      statusBar()->showMessage("Exported " + name);
    }
  });
  connect(&preview_, &Preview::pictureChanged, this, [this] {
    const QString& problem = preview_.picture().problem;
    if (problem == messages_->sentence(Subject::Picture)) return;
    if (problem.isEmpty()) return messages_->withdraw(Subject::Picture);
    std::vector<MessageArea::Answer> answers = answersToRefusal();
    if (answers.empty()) {
      answers.push_back({"Try again", [this] { document_.setInput(document_.input()); }});
    }
    messages_->say(Subject::Picture, problem, answers);
  });
  offerRecovered(SceneDocument::findRecovered());
}

/// Left unanswered, it is there at the next start, too.
void MainWindow::offerRecovered(const std::optional<Recovered>& lost) {
  if (!lost) return;
  const QString name = lost->path.isEmpty() ? "a new scene" : QFileInfo(lost->path).fileName();
  messages_->say(MessageArea::Subject::Recovery,
                 "An earlier run has ended with unsaved changes of " + name + ", from " +
                     QLocale().toString(lost->changed, QLocale::ShortFormat) +
                     (QFileInfo(lost->path).lastModified() > lost->changed
                          ? "; its file has been changed since, which Undo after Restore shows."
                          : "."),
                 {{"Restore",
                   [this, lost = *lost] {
                     if (!mayLeaveScene()) return offerRecovered(lost);
                     document_.restore(lost);
                     offerRecovered(SceneDocument::findRecovered());
                   }},
                  {"Discard", [this, lost = *lost] {
                     SceneDocument::discard(lost);
                     offerRecovered(SceneDocument::findRecovered());
                   }}});
}

/// Where the scene may not read a file that it names.
std::vector<MessageArea::Answer> MainWindow::answersToRefusal() {
  const QString folder = document_.folderToAllow();
  if (folder.isEmpty()) return {};
  return {{"Allow " + QDir(folder).dirName() + "/", [this, folder] { document_.allow(folder); }}};
}

void MainWindow::showTitle() {
  setWindowTitle(document_.name() + "[*] \u2013 Brisel");
  setWindowFilePath(document_.path());
  setWindowModified(document_.isModified());
}

void MainWindow::addStatus() {
  auto* place = new QLabel;
  auto* zoom = new QLabel;
  auto* facts = new QLabel;
  facts->setAccessibleName("Picture's facts");
  statusBar()->addWidget(place, 1);
  statusBar()->addPermanentWidget(facts);
  statusBar()->addPermanentWidget(zoom);
  connect(view_, &PictureView::pointerMoved, place, [place](QPointF at) {
    place->setText(QString("%1, %2").arg(at.x(), 0, 'f', 0).arg(at.y(), 0, 'f', 0));
  });
  constexpr int kHintTime = 6000;  // milliseconds
  connect(view_, &PictureView::hintChanged, statusBar(),
          [this](const QString& hint) { statusBar()->showMessage(hint, kHintTime); });
  connect(view_, &PictureView::zoomChanged, zoom,
          [zoom](double factor) { zoom->setText(QString("%1 %").arg(100 * factor, 0, 'f', 0)); });
  auto* wait = new QTimer(this);  // for a picture that takes its time
  wait->setSingleShot(true);
  wait->setInterval(kLongWait);
  connect(wait, &QTimer::timeout, facts, [facts] { facts->setText("Rendering\u2026"); });
  const auto startWaiting = [wait] {
    if (!wait->isActive()) wait->start();
  };
  connect(&preview_, &Preview::asked, wait, startWaiting);
  startWaiting();
  connect(&preview_, &Preview::pictureChanged, facts, [this, facts, wait] {
    const Picture& picture = preview_.picture();
    if (!picture.state) return facts->clear();
    preview_.isUpToDate() ? wait->stop() : wait->start();
    facts->setText(
        QString("%1 %2   %3 ms")
            .arg(QLocale().toString(picture.stars), QString(picture.stars == 1 ? "star" : "stars"))
            .arg(picture.milliseconds, 0, 'f', 1));
  });
}

void MainWindow::restoreState() {
  const QSettings settings;
  restoreGeometry(settings.value("window/geometry").toByteArray());
  QMainWindow::restoreState(settings.value("window/panels").toByteArray());
}

void MainWindow::keepState() const {
  QSettings settings;
  settings.setValue("window/geometry", saveGeometry());
  settings.setValue("window/panels", saveState());
}

}  // namespace desk
