// The whole window, by the mouse and the keyboard.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <set>
#include <vector>

#include "desk/exporting/export_queue.h"
#include "tests/desk/window_fixture.h"

namespace {

using desk::ExportJob;
using desk::MessageArea;
using tests::kStarsAlone;
using tests::WindowTest;

/// Whether it comes to be so: what a hand does arrives when the X server sends it.
template <class Condition>
bool comes(const Condition& condition) {
  constexpr int kPatience = 20000;  // milliseconds
  return QTest::qWaitFor(condition, kPatience);
}

/// The X server's own mouse and keyboard where there is one, Qt's events elsewhere.
class Hand {
 public:
  void click(QWidget& widget, QPoint at) { drag(widget, {at}); }
  void click(QWidget& widget) { click(widget, widget.rect().center()); }

  void drag(QWidget& widget, const QList<QPoint>& way) {
    if (isReal_) {
      QStringList words = moveTo(widget, way.front());
      words += {"mousedown", "1"};
      for (const QPoint& at : way.mid(1)) words += moveTo(widget, at);
      return act(words + QStringList{"mouseup", "1"});
    }
    QTest::mousePress(&widget, Qt::LeftButton, {}, way.front());
    for (const QPoint& at : way.mid(1)) QTest::mouseMove(&widget, at);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, way.back());
  }

  void press(const QString& keys) {
    if (isReal_) return act({"key", keys});
    QTest::keySequence(QApplication::focusWidget(), QKeySequence(keys));
  }

  /// Over what a field holds.
  void fill(QLineEdit& field, const QString& text) {
    EXPECT_TRUE(comes([&] { return field.window()->isActiveWindow(); }));
    click(field);
    press("ctrl+a");
    if (isReal_) {
      act({"type", "--delay", "4", text});
    } else {
      QTest::keyClicks(&field, text);
    }
    EXPECT_TRUE(comes([&] { return field.text() == text; })) << field.text().toStdString();
    press("Return");
  }

 private:
  static QStringList moveTo(const QWidget& widget, QPoint at) {
    const QPoint there = widget.mapToGlobal(at);
    return {"mousemove", QString::number(there.x()), QString::number(there.y())};
  }
  static void act(const QStringList& words) {
    EXPECT_EQ(QProcess::execute("xdotool", words), 0) << words.join(' ').toStdString();
  }

  const bool isReal_ = QGuiApplication::platformName() == QLatin1String("xcb");
};

// On a screen as well: see CMakeLists.txt.
TEST_F(WindowTest, AWorkingDay) {
  write("s.toml", kStarsAlone);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  const desk::SceneDocument& document = window.document();
  const desk::Preview& preview = window.preview();
  Hand hand;

  const QString scene = QString::fromStdString(path("s.toml").string());
  QTimer dialogs;
  QObject::connect(&dialogs, &QTimer::timeout, &window, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    dialogs.stop();
    hand.fill(*dialog->findChild<QLineEdit*>("fileNameEdit"), scene);
  });
  dialogs.start(50);
  hand.press("ctrl+o");
  ASSERT_TRUE(comes([&] { return document.path() == scene; }));
  window.activateWindow();  // which a window manager has done already
  ASSERT_TRUE(comes([&] { return window.isActiveWindow(); }));

  auto* presets = named<QListWidget>("Stars presets");
  ASSERT_TRUE(presets);
  QListWidgetItem* preset = presets->item(3);
  presets->scrollToItem(preset);
  hand.click(*presets->viewport(), presets->visualItemRect(preset).center());
  ASSERT_TRUE(comes([&] { return document.presets(0) == QStringList{preset->text()}; }));

  const auto* view = window.findChild<desk::PictureView*>();
  const auto at = [&](double x, double y) {
    const QRectF frame = view->frameRect();
    return view->mapFromScene(frame.left() + x * frame.width(), frame.top() + y * frame.height());
  };
  const auto isAt = [&](double x, double y) {
    const scene::ParamValue start = document.value(0, brisel::kStart, 0);
    return std::abs(start[0] - x) < 0.02 && std::abs(start[1] - y) < 0.02;
  };
  hand.drag(*view->viewport(), {at(0.5, 0.5), at(0.4, 0.4), at(0.3, 0.7)});
  EXPECT_TRUE(comes([&] { return isAt(0.3, 0.7); }));

  auto* key = named<QToolButton>("Key of Intensity");
  ASSERT_TRUE(key);
  const auto keys = [&] { return document.keys(0, brisel::kIntensity).size(); };
  hand.click(*key);
  EXPECT_TRUE(comes([&] { return keys() == 1; }));
  hand.press("End");
  EXPECT_TRUE(comes([&] { return preview.frame() == 29; }));
  hand.click(*key);
  EXPECT_TRUE(comes([&] { return keys() == 2; }));
  const QString keyed = document.text();
  hand.drag(*view->viewport(), {at(0.3, 0.7), at(0.4, 0.6), at(0.8, 0.2)});
  EXPECT_TRUE(comes([&] { return isAt(0.8, 0.2); }));
  hand.press("ctrl+z");
  EXPECT_TRUE(comes([&] { return document.text() == keyed; }));
  EXPECT_TRUE(comes([&] { return preview.isUpToDate(); }));
  EXPECT_EQ(preview.picture().frame, 29);

  hand.press("ctrl+s");
  EXPECT_TRUE(comes([&] { return !window.isWindowModified(); }));
  EXPECT_EQ(read("s.toml"), keyed.toStdString());
  EXPECT_NE(read("s.toml").find("frames = 30   # short\n"), std::string::npos);

  hand.press("ctrl+e");
  ASSERT_TRUE(comes([&] { return QApplication::activeModalWidget() != nullptr; }));
  hand.fill(*named<QLineEdit>("Output"), QString::fromStdString(path("a.apng").string()));
  ASSERT_TRUE(comes([&] { return std::filesystem::exists(path("a.apng")); }));
  EXPECT_EQ(read("a.apng"), render("s.toml", "r.apng"));
}

TEST_F(WindowTest, ExportsAreWhatARenderMakes) {
  write("s.toml", kStarsAlone);
  desk::ExportQueue queue;
  const auto add = [&](const char* text, const char* output) {
    ExportJob job;
    job.name = "s.toml";
    job.scene = {text, QString::fromStdString(path("s.toml").string())};
    job.output = QString::fromStdString(path(output).string());
    queue.add(job);
  };
  add(kStarsAlone, "a.apng");
  add("[scene]\nframes = 1\ninput = \"no.mp4\"\n", "b.png");
  add(kStarsAlone, "c.gif");
  add("[scene]\nsize = [3000, 3000]\nframes = 100000\n", "d.mp4");
  queue.cancel(2);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return queue.job(3).state == ExportJob::State::Running; }, 60000));
  QTest::qWait(300);
  queue.cancel(3);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !queue.isBusy(); }, 30000));
  EXPECT_EQ(queue.job(0).state, ExportJob::State::Done) << queue.job(0).message.toStdString();
  EXPECT_TRUE(queue.job(0).message.startsWith("30 frames")) << "the list has the name already";
  EXPECT_EQ(read("a.apng"), render("s.toml", "r.apng"));
  EXPECT_EQ(queue.job(1).state, ExportJob::State::Failed);
  EXPECT_TRUE(queue.job(1).message.contains("s.toml:3: ")) << queue.job(1).message.toStdString();
  EXPECT_EQ(queue.job(2).state, ExportJob::State::Canceled);
  EXPECT_EQ(queue.job(3).state, ExportJob::State::Canceled);
  std::vector<std::string> left;
  for (const auto& entry : std::filesystem::directory_iterator(path(""))) {
    left.push_back(entry.path().filename());
  }
  std::ranges::sort(left);
  EXPECT_EQ(left, (std::vector<std::string>{"a.apng", "r.apng", "s.toml"}));
  queue.removeFinished();
  EXPECT_EQ(queue.rowCount(), 0);
}

/// What a person acts on with a mouse, apart from parts that Qt makes: they do no more than what
/// they are a part of, and docks' buttons no more than the menu of panels.
std::vector<QWidget*> widgetsToActOn(QWidget& window) {
  std::vector<QWidget*> found;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    const bool acts = (widget->focusPolicy() & Qt::TabFocus) != 0 ||
                      qobject_cast<QAbstractButton*>(widget) != nullptr ||
                      qobject_cast<QAbstractItemView*>(widget) != nullptr ||
                      qobject_cast<QLineEdit*>(widget) != nullptr;
    const auto* area = qobject_cast<QAbstractScrollArea*>(widget->parent());
    const bool isPart = widget->objectName().startsWith("qt_") || widget->inherits("QMenuBar") ||
                        (area != nullptr && area->viewport() == widget) ||
                        qobject_cast<QAbstractSpinBox*>(widget->parent()) != nullptr ||
                        qobject_cast<QLineEdit*>(widget->parent()) != nullptr ||
                        widget->inherits("QDockWidgetTitleButton");
    if (acts && !isPart && widget->isVisible() && widget->isEnabled()) found.push_back(widget);
  }
  return found;
}

/// Those of all menus.
std::vector<QAction*> commandsOf(const QMenuBar& bar) {
  std::vector<QAction*> commands;
  for (QAction* action : bar.actions()) commands.push_back(action);
  for (std::size_t i = 0; i < commands.size(); ++i) {
    if (!commands[i]->menu()) continue;
    for (QAction* action : commands[i]->menu()->actions()) commands.push_back(action);
  }
  return commands;
}

TEST_F(WindowTest, TheKeyboardReachesEverythingAndItHasAName) {
  write("s.toml", "[params]\nSize = [{ frame = 0, value = 5 }]\n[[layer]]\n[[layer]]\n");
  ASSERT_TRUE(window.open(QString::fromStdString(path("s.toml").string())));
  window.activateWindow();
  const std::vector<QAction*> commands = commandsOf(*window.menuBar());
  std::set<QString> shortcuts;
  for (const QAction* command : commands) {
    for (const QKeySequence& keys : command->shortcuts()) {
      EXPECT_TRUE(shortcuts.insert(keys.toString()).second) << keys.toString().toStdString();
    }
  }

  std::set<const QWidget*> reached;
  std::set<QWidget*> wanted;
  for (auto* tree : window.findChildren<QTreeWidget*>()) tree->expandAll();
  for (QDockWidget* dock : window.findChildren<QDockWidget*>()) {
    dock->raise();
    QCoreApplication::processEvents();
    for (QWidget* widget : widgetsToActOn(window)) wanted.insert(widget);
    window.findChild<desk::PictureView*>()->setFocus();
    std::set<const QWidget*> round;
    constexpr int kMostSteps = 2000;
    for (int step = 0; step < kMostSteps; ++step) {
      const QWidget* widget = QApplication::focusWidget();
      ASSERT_NE(widget, nullptr);
      const bool isHandle = qobject_cast<const desk::PictureView*>(widget) != nullptr;
      if (!round.insert(widget).second && !isHandle) break;
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    reached.insert(round.begin(), round.end());
  }
  EXPECT_GT(wanted.size(), 150);
  for (QWidget* widget : wanted) {
    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
    ASSERT_TRUE(reader);
    const std::string name = reader->text(QAccessible::Name).toStdString();
    EXPECT_NE(name, "") << widget->metaObject()->className() << " in "
                        << widget->parent()->metaObject()->className();
    const auto* button = qobject_cast<const QToolButton*>(widget);
    const bool isInMenu = button && std::ranges::count(commands, button->defaultAction()) > 0;
    EXPECT_TRUE(reached.contains(widget) || isInMenu)
        << widget->metaObject()->className() << " " << name;
  }
}

TEST_F(WindowTest, FitsASmallScreenAndFindsBackToItsFirstArrangement) {
  const QSize room = window.screen()->availableSize();
  EXPECT_EQ(window.size().boundedTo(room), window.size());
  EXPECT_LE(window.minimumSizeHint().width(), 780) << "a screen of 1600x900, twice as dense";
  EXPECT_LE(window.minimumSizeHint().height(), 430);
  std::vector<QRect> places;
  const auto docks = window.findChildren<QDockWidget*>();
  for (const QDockWidget* dock : docks) places.push_back(dock->geometry());
  docks.front()->setFloating(true);
  window.addDockWidget(Qt::LeftDockWidgetArea, docks.back());
  docks[2]->hide();
  for (QAction* command : commandsOf(*window.menuBar())) {
    if (command->text() == "As at &first") command->trigger();
  }
  QCoreApplication::processEvents();
  for (qsizetype i = 0; i < docks.size(); ++i) {
    EXPECT_FALSE(docks[i]->isFloating() || docks[i]->isHidden()) << i;
    EXPECT_EQ(docks[i]->geometry(), places[static_cast<std::size_t>(i)]) << i;
  }
}

TEST_F(WindowTest, TellsWhatIsWrongWithASceneAndKeepsTheLast) {
  write("s.toml", kStarsAlone);
  write("t.toml", "[scene]\nframes = \"many\"\n");
  ASSERT_TRUE(window.open(QString::fromStdString(path("s.toml").string())));
  EXPECT_FALSE(window.open(QString::fromStdString(path("no.toml").string())));
  EXPECT_TRUE(message(MessageArea::Subject::Failure).contains("no.toml"));
  EXPECT_EQ(window.document().state()->plan.frames, 30);
  window.document().setFrames(20);
  EXPECT_TRUE(message(MessageArea::Subject::Failure).isEmpty());
  EXPECT_TRUE(window.open(QString::fromStdString(path("t.toml").string())));
  EXPECT_TRUE(message(MessageArea::Subject::Text).startsWith("t.toml:2"));
  write("t.toml", kStarsAlone);
  EXPECT_TRUE(QTest::qWaitFor([&] { return message(MessageArea::Subject::Text).isEmpty(); }));
  EXPECT_EQ(window.document().state()->plan.frames, 30);
}

TEST_F(WindowTest, AsksBeforeChangesAreLost) {
  write("s.toml", kStarsAlone);
  ASSERT_TRUE(window.open(QString::fromStdString(path("s.toml").string())));
  EXPECT_TRUE(window.mayLeaveScene());
  window.document().setFrames(20);
  EXPECT_TRUE(window.isWindowModified());
  answer(QMessageBox::Cancel);
  EXPECT_FALSE(window.close());
  answer(QMessageBox::Save);
  EXPECT_TRUE(window.mayLeaveScene());
  EXPECT_NE(read("s.toml").find("frames = 20   # short\n"), std::string::npos);
}

TEST_F(WindowTest, GivesKeysToTheWidgetThatNeedsThem) {
  write("s.toml", kStarsAlone);
  ASSERT_TRUE(window.open(QString::fromStdString(path("s.toml").string())));
  QCheckBox box;
  window.statusBar()->addWidget(&box);
  window.activateWindow();
  box.setFocus();
  QTest::keyClick(&box, Qt::Key_Space);
  EXPECT_TRUE(box.isChecked());
  QTest::keyClick(&box, Qt::Key_Right);  // for which a box has no use
  EXPECT_EQ(window.preview().frame(), 1);
  window.findChild<desk::PictureView*>()->setFocus();
  QTest::keyClick(&window, Qt::Key_End);
  EXPECT_EQ(window.preview().frame(), 29);
  QTest::keyClick(&window, Qt::Key_J);
  EXPECT_EQ(window.findChild<desk::TimelinePanel*>()->playback().speed(), -1);
}

}  // namespace
