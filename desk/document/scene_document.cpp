#include "desk/document/scene_document.h"

#include <QFileSystemWatcher>
#include <QTimer>
#include <algorithm>

#include "desk/document/scene_document_parsed.h"
#include "desk/document/text_step.h"

namespace desk {
namespace {

constexpr int kSettlingTime = 50;        // milliseconds in which an editor writes a file
constexpr int kRecoveryInterval = 2000;  // milliseconds after a change

}  // namespace

SceneDocument::SceneDocument(scene::PresetLibrary presets, QObject* parent)
    : QObject(parent),
      presets_(std::move(presets)),
      probe_(std::make_unique<InputProbe>()),
      recovery_(std::make_unique<RecoveryFile>()),
      watcher_(new QFileSystemWatcher(this)),
      settling_(new QTimer(this)),
      untilRecovery_(new QTimer(this)) {
  settling_->setSingleShot(true);
  settling_->setInterval(kSettlingTime);
  connect(watcher_, &QFileSystemWatcher::fileChanged, settling_, qOverload<>(&QTimer::start));
  connect(watcher_, &QFileSystemWatcher::directoryChanged, settling_, qOverload<>(&QTimer::start));
  connect(settling_, &QTimer::timeout, this, &SceneDocument::lookAtDisk);
  untilRecovery_->setSingleShot(true);
  untilRecovery_->setInterval(kRecoveryInterval);
  connect(untilRecovery_, &QTimer::timeout, this, &SceneDocument::keepForRecovery);
  connect(&undoStack_, &QUndoStack::cleanChanged, this, [this](bool clean) {
    if (clean) forgetRecovery();
    emit savedStateChanged();
  });
  startNew();
}

SceneDocument::~SceneDocument() {
  undoStack_.disconnect(this);
  recovery_->remove();
}

void SceneDocument::take(std::shared_ptr<PlacedText> text) {
  now_ = std::move(text);
  *now_ = {seenFrom(path_, *now_), path_};
  const QString oldProblem = std::exchange(textProblem_, QString());
  try {
    parsed_ = parse(now_->text);
    keep(parsed_);
  } catch (const std::exception& error) {
    textProblem_ = QString::fromUtf8(error.what());
  }
  if (!untilRecovery_->isActive()) untilRecovery_->start();  // however long changes go on
  emit changed();
  if (textProblem_ != oldProblem) emit textProblemChanged();
}

SharedState SceneDocument::stateOf(const PlacedText& text) const {
  try {
    const auto other = parse(seenFrom(path_, text));
    keep(other);
    return other->state;
  } catch (const std::exception&) {
    return nullptr;
  }
}

SharedState SceneDocument::stateBeforeLastStep() const {
  if (undoStack_.index() == 0) return nullptr;
  return stateOf(
      static_cast<const TextStep*>(undoStack_.command(undoStack_.index() - 1))->before());
}

/// `makeText` makes another text of the one there is. What is no sound scene then is refused.
void SceneDocument::edit(const QString& label,
                         const std::function<std::string(const SceneText& text)>& makeText) {
  if (!textProblem_.isEmpty()) {
    return refuse(
        tr("Nothing can be changed until the scene's text is sound: %1").arg(textProblem_));
  }
  try {
    const QString text = QString::fromStdString(makeText(parsed_->text));
    if (text == now_->text) return;
    keep(parse(text));
    push(text, label);
  } catch (const std::exception& error) {
    refuse(QString::fromUtf8(error.what()));
  }
}

/// What asked for the edit shows its value already.
void SceneDocument::refuse(const QString& why) {
  emit changed();
  emit problem(why);
}

void SceneDocument::push(const QString& text, const QString& label) {
  undoStack_.push(
      new TextStep(*this, std::make_shared<PlacedText>(PlacedText{text, path_}), label, gesture_));
}

void SceneDocument::setText(const PlacedText& text, const QString& label) {
  const QString seen = seenFrom(path_, text);
  if (seen != now_->text) push(seen, label);
}

int SceneDocument::beginGesture() {
  if (gesturesOpen_++ == 0) gesture_ = ++gestures_;
  return gesture_;
}

void SceneDocument::resumeGesture(int gesture) {
  if (gesturesOpen_++ == 0) gesture_ = gesture;
}

void SceneDocument::endGesture() {
  if (--gesturesOpen_ == 0) gesture_ = 0;
}

void SceneDocument::cancelGesture() {
  if (undoStack_.index() > 0) {
    const auto* last = static_cast<const TextStep*>(undoStack_.command(undoStack_.index() - 1));
    // Merged with what led away from it, that step is none.
    if (last->gesture() == gesture_) setText(PlacedText(last->before()), last->text());
  }
  endGesture();
}

}  // namespace desk
