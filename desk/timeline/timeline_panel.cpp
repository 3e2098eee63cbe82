#include "desk/timeline/timeline_panel.h"

#include <QLabel>
#include <QMenu>
#include <QSpinBox>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "desk/timeline/tinted_icon.h"

namespace desk {
namespace {

constexpr int kLongStep = 10;  // frames, with Shift held

/// "in-out" as "In-out".
QString capitalized(QString text) {
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  return text;
}

}  // namespace

TimelinePanel::TimelinePanel(Preview& preview, QWidget* parent)
    : QWidget(parent),
      preview_(preview),
      playback_(preview),
      keys_(new KeyView(preview, playback_)),
      eases_(new QMenu("&Ease to the next key", this)) {
  addPlayActions();
  addKeyActions();
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins({});
  column->setSpacing(0);
  addTools();
  column->addWidget(keys_, 1);
}

QAction* TimelinePanel::action(const QString& text, const QList<QKeySequence>& keys,
                               std::function<void()> act) {
  auto* action = new QAction(text, this);
  action->setShortcuts(keys);
  connect(action, &QAction::triggered, this, std::move(act));
  return action;
}

void TimelinePanel::addPlayActions() {
  play_ = action("&Play", {Qt::Key_Space}, [this] { playback_.toggle(); });
  play_->setIcon(tintedIcon(*style(), QStyle::SP_MediaPlay));
  connect(&playback_, &Playback::speedChanged, this, [this](int speed) {
    play_->setText(speed == 0 ? "&Play" : "&Pause");
    play_->setIcon(tintedIcon(*style(), speed == 0 ? QStyle::SP_MediaPlay : QStyle::SP_MediaPause));
  });
  loop_ =
      action("&Loop", {Qt::CTRL | Qt::Key_L}, [this] { playback_.setLoops(!playback_.loops()); });
  loop_->setIcon(tintedIcon(*style(), QStyle::SP_BrowserReload));
  loop_->setCheckable(true);
  loop_->setChecked(playback_.loops());
  start_ = action("To &start", {Qt::Key_Home}, [this] { playback_.toStart(); });
  start_->setIcon(tintedIcon(*style(), QStyle::SP_MediaSkipBackward));
  end_ = action("To &end", {Qt::Key_End}, [this] { playback_.toEnd(); });
  end_->setIcon(tintedIcon(*style(), QStyle::SP_MediaSkipForward));
  playActions_ = {
      play_,
      action("Play &backward", {Qt::Key_J}, [this] { playback_.backward(); }),
      action("Pa&use", {Qt::Key_K}, [this] { playback_.pause(); }),
      action("Play &forward", {Qt::Key_L}, [this] { playback_.forward(); }),
      loop_,
      nullptr,
      action("Frame b&efore", {Qt::Key_Left}, [this] { playback_.step(-1); }),
      action("Frame af&ter", {Qt::Key_Right}, [this] { playback_.step(1); }),
      action("Ten frames before", {Qt::SHIFT | Qt::Key_Left},
             [this] { playback_.step(-kLongStep); }),
      action("Ten frames after", {Qt::SHIFT | Qt::Key_Right},
             [this] { playback_.step(kLongStep); }),
      start_,
      end_,
      nullptr,
      action("&In here", {Qt::Key_I}, [this] { playback_.setIn(preview_.frame()); }),
      action("&Out here", {Qt::Key_O}, [this] { playback_.setOut(preview_.frame()); }),
      action("&Whole scene", {Qt::SHIFT | Qt::Key_I}, [this] { playback_.clearRange(); }),
  };
}

void TimelinePanel::addKeyActions() {
  for (const std::string& name : scene::easeNames()) {
    const QString text = QString::fromStdString(name);
    eases_->addAction(capitalized(text), this,
                      [this, ease = *scene::easeByName(name)] { keys_->easeSelected(ease); });
  }
  QAction* copy = action("&Copy", QKeySequence::keyBindings(QKeySequence::Copy),
                         [this] { keys_->copySelected(); });
  QAction* paste = action("&Paste at this frame", QKeySequence::keyBindings(QKeySequence::Paste),
                          [this] { keys_->paste(); });
  QAction* remove = action("&Delete", QKeySequence::keyBindings(QKeySequence::Delete),
                           [this] { keys_->removeSelected(); });
  QAction* earlier =
      action("Move &earlier", {Qt::ALT | Qt::Key_Left}, [this] { keys_->moveSelected(-1); });
  QAction* later =
      action("Move &later", {Qt::ALT | Qt::Key_Right}, [this] { keys_->moveSelected(1); });
  keyActions_ = {
      action("Key &before", {Qt::CTRL | Qt::Key_Left}, [this] { keys_->toPreviousKey(); }),
      action("Key &after", {Qt::CTRL | Qt::Key_Right}, [this] { keys_->toNextKey(); }),
      action("&New in the current row", {Qt::Key_Insert}, [this] { keys_->addKey(); }),
      nullptr,
      copy,
      paste,
      remove,
      eases_->menuAction(),
      earlier,
      later,
      nullptr,
      action("&Select all", QKeySequence::keyBindings(QKeySequence::SelectAll),
             [this] { keys_->selectAll(); }),
      action("&Zoom in", {Qt::Key_Plus, Qt::Key_Equal}, [this] { keys_->zoomBy(2); }),
      action("Z&oom out", {Qt::Key_Minus}, [this] { keys_->zoomBy(0.5); }),
  };
  const auto enable = [=, this] {
    for (QAction* of : {copy, remove, eases_->menuAction(), earlier, later}) {
      of->setEnabled(keys_->hasSelection());
    }
  };
  enable();
  connect(keys_, &KeyView::selectionChanged, this, enable);
  connect(keys_, &KeyView::menuWanted, this, [=, this](QPoint place) {
    QMenu::exec({copy, paste, remove, eases_->menuAction()}, place, nullptr, this);
  });
}

void TimelinePanel::addTools() {
  auto* tools = new QToolBar;
  tools->setIconSize(QSize(1, 1) * style()->pixelMetric(QStyle::PM_SmallIconSize));
  for (QAction* shown : {start_, play_, end_, loop_}) {
    tools->addAction(shown);
  }
  tools->addSeparator();
  auto* frame = new QSpinBox;
  frame->setAccessibleName("Frame");
  frame->setToolTip("The frame shown");
  frame->setKeyboardTracking(false);
  const auto limit = [this, frame] {
    const QSignalBlocker quiet(frame);
    const int frames = preview_.document().state()->plan.frames;
    const QString suffix = QString(" of %1").arg(frames);
    if (frame->suffix() != suffix) {  // which lays out the panel anew
      frame->setMaximum(frames - 1);
      frame->setSuffix(suffix);
    }
    frame->setValue(preview_.frame());
  };
  limit();
  connect(&preview_.document(), &SceneDocument::changed, frame, limit);
  connect(&preview_, &Preview::frameChanged, frame, limit);
  connect(frame, &QSpinBox::valueChanged, this, [this](int to) {
    playback_.pause();
    preview_.setFrame(to);
  });
  tools->addWidget(frame);
  auto* rate = new QLabel;
  rate->setMargin(6);
  connect(&playback_, &Playback::rateChanged, rate, [this, rate] { showRate(*rate); });
  connect(&preview_.document(), &SceneDocument::changed, rate, [this, rate] { showRate(*rate); });
  showRate(*rate);
  tools->addWidget(rate);
  layout()->addWidget(tools);
}

void TimelinePanel::showRate(QLabel& label) const {
  const QString rate = QString("%1 fps").arg(playback_.framesPerSecond(), 0, 'g', 5);
  const double shown = playback_.picturesPerSecond();
  label.setText(shown > 0 ? QString("%1 of ").arg(shown, 0, 'f', 1) + rate : rate);
}

void TimelinePanel::fillPlayMenu(QMenu& menu) const {
  for (QAction* entry : playActions_) entry ? menu.addAction(entry) : void(menu.addSeparator());
}

void TimelinePanel::fillKeyMenu(QMenu& menu) const {
  for (QAction* entry : keyActions_) entry ? menu.addAction(entry) : void(menu.addSeparator());
}

}  // namespace desk
