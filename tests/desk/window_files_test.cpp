// Files on the window: dropped, named in messages, exported to.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>
#include <algorithm>
#include <vector>

#include "desk/exporting/export_dialog.h"
#include "tests/desk/window_fixture.h"

namespace {

using desk::ExportJob;
using desk::MessageArea;

class WindowFilesTest : public tests::WindowTest {
 protected:
  QString name(const std::string& file) const {
    return QString::fromStdString(path(file).string());
  }

  void makeStill(const std::string& file) const {
    QImage image(64, 36, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(name(file)));
  }

  /// As Qt has it from the system: whoever takes the drag gets the drop.
  void drop(QWidget& on, const QStringList& files) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& file : files) urls.append(QUrl::fromUserInput(file));
    data.setUrls(urls);
    data.setText(files.join(' '));  // as file managers do
    const QPoint at = on.rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&on, &enter);
    ASSERT_TRUE(enter.isAccepted()) << on.metaObject()->className();
    QDragMoveEvent move(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&on, &move);
    ASSERT_TRUE(move.isAccepted()) << on.metaObject()->className();
    QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&on, &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    QCoreApplication::processEvents();
  }
};

TEST_F(WindowFilesTest, TakesDropsOnEachOfItsParts) {
  makeStill("still.png");
  write("s.toml", tests::kStarsAlone);
  const desk::SceneDocument& document = window.document();
  auto* dock = window.findChild<QDockWidget*>("layers");
  dock->setFloating(true);
  std::vector<QWidget*> parts{&window};
  parts.insert(parts.end(), {dock, window.statusBar(), window.menuBar()});
  for (auto* view : window.findChildren<QAbstractScrollArea*>()) parts.push_back(view->viewport());
  for (auto* field : window.findChildren<QLineEdit*>()) parts.push_back(field);
  ASSERT_GT(parts.size(), 50);
  for (QWidget* part : parts) {
    if (part->window() != &window && part->window() != dock) continue;  // a menu's list
    drop(*part, {name("s.toml")});
    ASSERT_EQ(document.path(), name("s.toml")) << part->metaObject()->className();
    window.document().startNew();
    const auto* field = qobject_cast<QLineEdit*>(part);
    EXPECT_FALSE(field && field->text().contains("s.toml")) << "it is no text";
  }
}

TEST_F(WindowFilesTest, TakesEveryKindOfFileAndOneOfEachAtOnce) {
  makeStill("still.png");
  makeStill("other.png");
  write("s.toml", tests::kStarsAlone);
  desk::SceneDocument& document = window.document();
  const scene::Preset& preset = document.presetLibrary().presets()[3];
  std::filesystem::copy_file(preset.file, path("mine.txt"));
  QWidget& picture = *window.findChild<desk::PictureView*>()->viewport();
  const auto refused = [&] { return message(MessageArea::Subject::Failure); };

  drop(picture, {QString::fromStdString(preset.thumbnail.string())});
  EXPECT_EQ(document.presets(0), QStringList{QString::fromStdString(preset.name)});
  drop(picture, {name("still.png")});
  EXPECT_NE(document.text().indexOf("still.png\""), -1) << document.text().toStdString();
  EXPECT_EQ(refused(), "");

  const QString before = document.text();
  for (const QStringList& files : {QStringList{name("still.png"), name("other.png")},
                                   {name("")},
                                   {"https://example.com/s.toml"},
                                   {name("s.toml"), name("s.toml"), name("still.png")}}) {
    drop(picture, files);
    EXPECT_NE(refused(), "") << files.join(' ').toStdString();
    EXPECT_EQ(document.text(), before);
    window.findChild<MessageArea*>()->withdraw(MessageArea::Subject::Failure);
  }

  document.undoStack().setClean();
  drop(picture, {name("mine.txt"), name("still.png"), name("s.toml")});
  EXPECT_EQ(refused(), "");
  EXPECT_EQ(document.path(), name("s.toml"));
  EXPECT_NE(document.text().indexOf("input = \"still.png\""), -1);
  EXPECT_EQ(document.undoStack().undoText(), "Preset mine.txt");
}

TEST_F(WindowFilesTest, TellsLongMessagesInANarrowWindow) {
  const int width = window.minimumSizeHint().width();
  const QString path = "/" + QString("folder").repeated(60) + "/<b>s</b>.toml";
  auto* area = window.findChild<MessageArea*>();
  area->say(MessageArea::Subject::Failure, "The scene \"" + path + "\" is gone.",
            {{"Allow " + path + "/", [] {}}, {"Undo", [] {}}});
  QCoreApplication::processEvents();
  EXPECT_EQ(window.minimumSizeHint().width(), width);
  const auto labels = area->findChildren<QLabel*>();
  const auto text =
      std::ranges::find_if(labels, [](QLabel* label) { return label->hasHeightForWidth(); });
  ASSERT_NE(text, labels.end());
  EXPECT_TRUE((*text)->toolTip().contains("&lt;b&gt;s&lt;/b&gt;"));
  EXPECT_EQ((*text)->textFormat(), Qt::PlainText);
}

TEST_F(WindowFilesTest, ExportsWhereTheScenesFolderTakesNoFile) {
  makeStill("still.png");
  std::filesystem::create_directory(path("a"));
  constexpr char kOverStill[] = "[scene]\nframes = 2\ninput = \"../still.png\"\n";
  write("a/s.toml", kOverStill);
  desk::ExportQueue queue;
  ExportJob job;
  job.name = "s.toml";
  job.scene = {kOverStill, name("gone/s.toml")};
  job.output = name("a.apng");
  job.arguments = QStringList{"--allow", name("")};
  queue.add(job);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !queue.isBusy(); }, 30000));
  EXPECT_EQ(queue.job(0).state, ExportJob::State::Done) << queue.job(0).message.toStdString();
  EXPECT_EQ(read("a.apng"), render("a/s.toml --allow " + path("").string(), "b.apng"));
}

TEST_F(WindowFilesTest, RemembersHowScenesWereExported) {
  write("s.toml", tests::kStarsAlone);
  write("t.toml", tests::kStarsAlone);
  std::filesystem::create_directory(path("out"));
  desk::SceneDocument& document = window.document();
  desk::ExportQueue queue;
  const auto asks = [&](desk::ExportMemory& memory, const char* scene, const QString& output) {
    EXPECT_TRUE(document.open(name(scene)));
    desk::ExportDialog dialog(document, queue, memory, {0, 0});
    const auto boxes = dialog.findChildren<QComboBox*>();
    const auto fields = dialog.findChildren<QLineEdit*>();
    auto* field = *std::ranges::find(fields, "Output", &QLineEdit::accessibleName);
    QStringList found{boxes[0]->currentText(), field->text(), boxes[1]->currentText()};
    if (output.isEmpty()) return found;
    boxes[0]->setCurrentIndex(4);
    field->setText(output);
    boxes[1]->setCurrentIndex(2);
    emit dialog.findChild<QDialogButtonBox*>()->accepted();
    return found;
  };
  desk::ExportMemory memory;
  EXPECT_EQ(asks(memory, "s.toml", name("out/x_%04d.png"))[1], name("s.mp4"));
  const QString pictures = "PNG pictures with alpha";
  EXPECT_EQ(asks(memory, "s.toml", ""), (QStringList{pictures, name("out/x_%04d.png"), "1/3"}));
  EXPECT_EQ(asks(memory, "t.toml", ""), (QStringList{pictures, name("out/t_%04d.png"), "Full"}));
  desk::ExportMemory nextRun;
  EXPECT_EQ(asks(nextRun, "s.toml", ""), (QStringList{pictures, name("out/s_%04d.png"), "Full"}));
  std::filesystem::remove_all(path("out"));
  EXPECT_EQ(asks(nextRun, "s.toml", "")[1], name("s_%04d.png"));
}

}  // namespace
