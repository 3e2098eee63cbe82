#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QUndoStack>
#include <array>
#include <tuple>

#include "desk/window/main_window.h"
#include "desk/window/scene_settings.h"
#include "desk/window/theme.h"

namespace desk {

QAction* MainWindow::command(QMenu* menu, const QString& text, const QKeySequence& keys,
                             std::function<void()> act) {
  QAction* action = menu->addAction(text, this, std::move(act));
  action->setShortcut(keys);
  return action;
}

QAction* MainWindow::toggle(QMenu* menu, const QString& text, const QKeySequence& keys, bool on,
                            std::function<void(bool)> act) {
  QAction* action = menu->addAction(text);
  action->setShortcut(keys);
  action->setCheckable(true);
  action->setChecked(on);
  connect(action, &QAction::toggled, this, std::move(act));
  return action;
}

QAction* MainWindow::choice(QMenu* menu, QActionGroup* group, const QString& text,
                            const QKeySequence& keys, std::function<void()> act) {
  QAction* action = command(menu, text, keys, std::move(act));
  action->setCheckable(true);
  group->addAction(action);
  return action;
}

void MainWindow::addFileMenu() {
  fileMenu_ = menuBar()->addMenu("&File");
  command(fileMenu_, "&New", QKeySequence::New, [this] { startNew(); });
  QMenu* looks = fileMenu_->addMenu("New from &preset");
  for (const scene::Preset& preset : document_.presetLibrary().presets()) {
    const QString name = QString::fromStdString(preset.name);
    looks->addAction(name, this, [this, name] { startNew(name); });
  }
  command(fileMenu_, "&Open…", QKeySequence::Open, [this] { openByDialog(); });
  addRecentMenu();
  fileMenu_->addSeparator();
  command(fileMenu_, "Choose &input…", QKeySequence("Ctrl+I"), [this] { chooseInput(); });
  command(fileMenu_, "&Without input", {}, [this] { document_.setSceneInput({}); });
  fileMenu_->addSeparator();
  command(fileMenu_, "&Save", QKeySequence::Save, [this] { save(); });
  QKeySequence saveAsKeys(QKeySequence::SaveAs);  // not every desktop has any
  if (saveAsKeys.isEmpty()) saveAsKeys = QKeySequence("Ctrl+Shift+S");
  command(fileMenu_, "Save &as…", saveAsKeys, [this] { saveAs(); });
  fileMenu_->addSeparator();
  command(fileMenu_, "&Export…", QKeySequence("Ctrl+E"), [this] { exportScene(); });
  fileMenu_->addSeparator();
  command(fileMenu_, "&Quit", QKeySequence::Quit, [this] {
    close();
  })->setMenuRole(QAction::QuitRole);
}

void MainWindow::addEditMenu() {
  editMenu_ = menuBar()->addMenu("&Edit");
  QAction* undo = document_.undoStack().createUndoAction(this, "&Undo");
  undo->setShortcut(QKeySequence::Undo);
  QAction* redo = document_.undoStack().createRedoAction(this, "&Redo");
  redo->setShortcuts(QKeySequence::keyBindings(QKeySequence::Redo));
  editMenu_->addActions({undo, redo});
  editMenu_->addSeparator();
  QMenu* mask = editMenu_->addMenu("&Mask");
  MaskEditor& editor = view_->mask();
  command(mask, "&Circle", {}, [&editor] { editor.makeCircle(); });
  command(mask, "&Rectangle", {}, [&editor] { editor.makeRectangle(); });
  command(mask, "&Draw", QKeySequence("G"), [this, &editor] {
    view_->setFocus();
    editor.draw();
    statusBar()->showMessage(
        "Click for corners, drag for bends; the first vertex closes, Return ends, Escape cancels. "
        "By keys: arrows, Space for a corner, Shift+Return to close.");
  });
  mask->addSeparator();
  QAction* invert = command(mask, "&Invert", {}, [&editor] { editor.invert(); });
  QAction* remove = command(mask, "Re&move", {}, [&editor] { editor.remove(); });
  const auto enable = [&editor, invert, remove] {
    invert->setEnabled(editor.hasMask());
    remove->setEnabled(editor.hasMask());
  };
  connect(&editor, &MaskEditor::maskChanged, this, enable);
  enable();
  editMenu_->addSeparator();
  command(editMenu_, "Scene &settings…", QKeySequence("Ctrl+K"),
          [this] { SceneSettings(document_, this).exec(); });
}

void MainWindow::addViewMenu() {
  viewMenu_ = menuBar()->addMenu("&View");
  command(viewMenu_, "Zoom &in", QKeySequence::ZoomIn, [this] { view_->zoomIn(); });
  command(viewMenu_, "Zoom &out", QKeySequence::ZoomOut, [this] { view_->zoomOut(); });
  command(viewMenu_, "&Fit", QKeySequence("Ctrl+0"), [this] { view_->fit(); });
  command(viewMenu_, "&Actual size", QKeySequence("Ctrl+1"), [this] { view_->setZoom(1); });
  QMenu* pan = viewMenu_->addMenu("Pa&n");
  constexpr int kPanStep = 80;  // pixels
  constexpr std::array kWays{std::tuple{"&Left", Qt::Key_Left, QPoint(kPanStep, 0)},
                             std::tuple{"&Right", Qt::Key_Right, QPoint(-kPanStep, 0)},
                             std::tuple{"&Up", Qt::Key_Up, QPoint(0, kPanStep)},
                             std::tuple{"&Down", Qt::Key_Down, QPoint(0, -kPanStep)}};
  for (const auto& [text, key, way] : kWays) {
    command(pan, text, Qt::CTRL | Qt::SHIFT | key, [this, by = way] { view_->pan(by); });
  }

  viewMenu_->addSeparator();
  QMenu* resolutions = viewMenu_->addMenu("&Resolution");
  auto* resolution = new QActionGroup(this);
  constexpr std::array kResolutions{"&Full", "&Half", "&Third", "&Quarter"};
  for (int part = 1; part <= 4; ++part) {
    choice(resolutions, resolution, kResolutions[static_cast<std::size_t>(part) - 1],
           QKeySequence(QString("Alt+%1").arg(part)), [this, part] { preview_.setReduction(part); })
        ->setChecked(part == preview_.reduction());
  }
  QMenu* backdrops = viewMenu_->addMenu("&Backdrop");
  auto* backdrop = new QActionGroup(this);
  constexpr std::array kBackdrops{std::pair{"&Checkerboard", Backdrop::Transparent},
                                  std::pair{"&Black", Backdrop::Black},
                                  std::pair{"C&lip", Backdrop::Clip}};
  for (const auto& [text, chosen] : kBackdrops) {
    choice(backdrops, backdrop, text, {}, [this, to = chosen] {
      preview_.setBackdrop(to);
    })->setChecked(chosen == preview_.backdrop());
  }
  toggle(viewMenu_, "&Handles", QKeySequence("H"), true,
         [this](bool on) { view_->showHandles(on); });
  toggle(viewMenu_, "&Snap", QKeySequence("S"), true,
         [this](bool on) { view_->guides().setSnaps(on); });
  viewMenu_->addSeparator();
  QMenu* themes = viewMenu_->addMenu("&Theme");
  auto* group = new QActionGroup(this);
  constexpr std::array kThemes{std::pair{"As the &desktop", Theme::Desktop},
                               std::pair{"&Light", Theme::Light}, std::pair{"D&ark", Theme::Dark}};
  for (const auto& [text, chosen] : kThemes) {
    choice(themes, group, text, {}, [to = chosen] { setTheme(to); })->setChecked(chosen == theme());
  }
  panelMenu_ = viewMenu_->addMenu("&Panels");
}

void MainWindow::addTimelineMenus() {
  timeline_->fillPlayMenu(*menuBar()->addMenu("&Play"));
  timeline_->fillKeyMenu(*menuBar()->addMenu("&Keys"));
}

void MainWindow::addHelpMenu() {
  QMenu* help = menuBar()->addMenu("&Help");
  command(help, "&About Brisel", {}, [this] {
    QMessageBox::about(this, "Brisel",
                       "Brisel " + QApplication::applicationVersion() +
                           "\n\nStars on footage: see a scene while you turn its values.");
  })->setMenuRole(QAction::AboutRole);
}

}  // namespace desk
