// The whole window, by the mouse and the keyboard.
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <algorithm>
#include <cstdlib>

#include "desk/exporting/export_queue.h"
#include "desk/window/main_window.h"
#include "tests/desk/desk_test.h"

namespace {

using desk::ExportJob;
using desk::MessageArea;

class WindowTest : public tests::FolderTest {
 protected:
  WindowTest() : window(cli::presetsBeside(cli::findModule({}))) {
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }

  template <class Widget>
  Widget* named(const char* accessibleName) {
    for (Widget* widget : window.findChildren<Widget*>()) {
      if (widget->accessibleName() == accessibleName) return widget;
    }
    ADD_FAILURE() << "nothing is named " << accessibleName;
    return nullptr;
  }

  std::string render(const std::string& scene, const std::string& output) {
    const std::string command = desk::ExportQueue::program().toStdString() + " render " +
                                path(scene).string() + " -o " + path(output).string() +
                                " 2>/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return read(output);
  }

  QString message(MessageArea::Subject subject) {
    return window.findChild<MessageArea*>()->sentence(subject);
  }
  /// Presses the button of the next question.
  static void answer(QMessageBox::StandardButton button) {
    QTimer::singleShot(0, qApp, [button] {
      auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(question, nullptr);
      question->button(button)->click();
    });
  }

  desk::MainWindow window;
};

constexpr char kStarsAlone[] = R"([scene]
size = [320, 180]
frames = 30   # short
[params]
"Standard path" = "Point"
"Start" = [0.5, 0.5]
)";

/// The X server's own mouse and keyboard where there is one, Qt's events elsewhere.
class Hand {
 public:
  void click(QWidget& widget, QPoint at) { drag(widget, {at}); }

  void drag(QWidget& widget, const QList<QPoint>& way) {
    if (isReal_) {
      QStringList words = moveTo(widget, way.front());
      words += {"mousedown", "1"};
      for (const QPoint& at : way) words += moveTo(widget, at);
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

  void type(const QString& text) {
    if (isReal_) return act({"type", "--delay", "2", text});
    QTest::keyClicks(QApplication::focusWidget(), text);
  }

 private:
  static QStringList moveTo(const QWidget& widget, QPoint at) {
    const QPoint there = widget.mapToGlobal(at);
    return {"mousemove", QString::number(there.x()), QString::number(there.y())};
  }
  static void act(const QStringList& words) {
    EXPECT_EQ(QProcess::execute("xdotool", words), 0) << words.join(' ').toStdString();
    QTest::qWait(200);  // until it has come
  }

  const bool isReal_ = QGuiApplication::platformName() == QLatin1String("xcb");
};

TEST_F(WindowTest, AWorkingDay) {
  write("s.toml", kStarsAlone);
  ASSERT_TRUE(window.open(QString::fromStdString(path("s.toml").string())));
  window.activateWindow();
  desk::SceneDocument& document = window.document();
  desk::Preview& preview = window.preview();
  Hand hand;

  auto* presets = named<QListWidget>("Stars presets");
  ASSERT_TRUE(presets);
  presets->scrollToItem(presets->item(3));
  hand.click(*presets->viewport(), presets->visualItemRect(presets->item(3)).center());
  ASSERT_EQ(document.presets(0), QStringList{presets->item(3)->text()});

  auto* view = window.findChild<desk::PictureView*>();
  const auto at = [&](double x, double y) {
    const QRectF frame = view->frameRect();
    return view->mapFromScene(frame.left() + x * frame.width(), frame.top() + y * frame.height());
  };
  view->fit();
  hand.drag(*view->viewport(), {at(0.5, 0.5), at(0.4, 0.4), at(0.3, 0.7)});
  EXPECT_NEAR(document.value(0, brisel::kStart, 0)[0], 0.3, 0.02);
  EXPECT_NEAR(document.value(0, brisel::kStart, 0)[1], 0.7, 0.02);

  auto* key = named<QToolButton>("Key of Intensity");
  ASSERT_TRUE(key);
  hand.click(*key, key->rect().center());
  hand.press("End");
  hand.click(*key, key->rect().center());
  EXPECT_EQ(document.keys(0, brisel::kIntensity).size(), 2);
  const QString keyed = document.text();
  document.setValue(0, brisel::kStart, {0.9, 0.1}, 0);
  EXPECT_NE(document.text(), keyed);
  hand.press("ctrl+z");
  EXPECT_EQ(document.text(), keyed);

  EXPECT_TRUE(QTest::qWaitFor([&] { return preview.isUpToDate(); }));
  EXPECT_EQ(preview.picture().frame, 29);
  hand.press("ctrl+s");
  EXPECT_FALSE(window.isWindowModified());
  EXPECT_EQ(read("s.toml"), keyed.toStdString());
  EXPECT_NE(read("s.toml").find("frames = 30   # short\n"), std::string::npos);

  hand.press("ctrl+e");
  auto* output = named<QLineEdit>("Output");
  ASSERT_TRUE(output);
  output->window()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(output->window()));
  hand.click(*output, output->rect().center());
  hand.press("ctrl+a");
  hand.type(QString::fromStdString(path("a.apng").string()));
  hand.press("Return");
  ASSERT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(path("a.apng")); }, 60000));
  EXPECT_EQ(read("a.apng"), render("s.toml", "r.apng"));
}

TEST_F(WindowTest, ExportsAreWhatARenderMakes) {
  write("s.toml", kStarsAlone);
  desk::ExportQueue queue;
  const auto add = [&](const char* text, const char* output) {
    ExportJob job;
    job.name = "s.toml";
    job.text = text;
    job.scenePath = QString::fromStdString(path("s.toml").string());
    job.output = QString::fromStdString(path(output).string());
    queue.add(job);
  };
  add(kStarsAlone, "a.apng");
  add("[scene]\nframes = 1\ninput = \"no.mp4\"\n", "b.png");
  add(kStarsAlone, "c.gif");
  add("[scene]\nsize = [3000, 3000]\nframes = 100000\n", "d.mp4");
  queue.cancel(2);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return queue.job(3).state == ExportJob::State::kRunning; }, 60000));
  QTest::qWait(300);
  queue.cancel(3);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !queue.isBusy(); }, 30000));
  EXPECT_EQ(queue.job(0).state, ExportJob::State::kDone) << queue.job(0).message.toStdString();
  EXPECT_EQ(read("a.apng"), render("s.toml", "r.apng"));
  EXPECT_EQ(queue.job(1).state, ExportJob::State::kFailed);
  EXPECT_TRUE(queue.job(1).message.contains("s.toml:3: ")) << queue.job(1).message.toStdString();
  EXPECT_EQ(queue.job(2).state, ExportJob::State::kCanceled);
  EXPECT_EQ(queue.job(3).state, ExportJob::State::kCanceled);
  std::vector<std::string> left;
  for (const auto& entry : std::filesystem::directory_iterator(path(""))) {
    left.push_back(entry.path().filename());
  }
  std::ranges::sort(left);
  EXPECT_EQ(left, (std::vector<std::string>{"a.apng", "r.apng", "s.toml"}));
  queue.removeFinished();
  EXPECT_EQ(queue.rowCount(), 0);
}

TEST_F(WindowTest, EverythingHasANameForScreenReaders) {
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const bool takesFocus = widget->focusPolicy() & Qt::TabFocus && widget->isVisibleTo(&window);
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget->parent());
    const bool isPart =
        widget->objectName().startsWith("qt_") || (area != nullptr && area->viewport() == widget);
    if (!takesFocus || isPart) continue;
    const QAccessibleInterface* reader =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
    ASSERT_TRUE(reader);
    EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty())
        << widget->metaObject()->className() << " in "
        << widget->parent()->metaObject()->className();
  }
}

TEST_F(WindowTest, TellsWhatIsWrongWithASceneAndKeepsTheLast) {
  write("s.toml", kStarsAlone);
  write("t.toml", "[scene]\nframes = \"many\"\n");
  ASSERT_TRUE(window.open(QString::fromStdString(path("s.toml").string())));
  EXPECT_FALSE(window.open(QString::fromStdString(path("no.toml").string())));
  EXPECT_TRUE(message(MessageArea::Subject::kFailure).contains("no.toml"));
  EXPECT_EQ(window.document().state()->plan.frames, 30);
  window.document().setFrames(20);
  EXPECT_TRUE(message(MessageArea::Subject::kFailure).isEmpty());
  EXPECT_TRUE(window.open(QString::fromStdString(path("t.toml").string())));
  EXPECT_TRUE(message(MessageArea::Subject::kText).startsWith("t.toml:2"));
  write("t.toml", kStarsAlone);
  EXPECT_TRUE(QTest::qWaitFor([&] { return message(MessageArea::Subject::kText).isEmpty(); }));
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
