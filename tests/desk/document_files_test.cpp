// Scenes and their files: what is read, written, followed and found again, and that nothing is
// lost.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QDir>
#include <QStandardPaths>
#include <QTest>
#include <csignal>

#include "desk/document/scene_document.h"
#include "tests/desk/desk_test.h"

namespace {

using desk::SceneDocument;

constexpr char kCommented[] = R"(# A portal, é.
[scene]
frames = 50

[params]  # all of it
"Intensity" = 12.5      # births
"Size" = [ { frame = 0, value = 4 }, { frame = "1s", value = 40 } ]
)";

class DocumentFilesTest : public tests::DeskTest {
 protected:
  bool openIn(const std::string& name) {
    return document().open(QString::fromStdString(path(name).string()));
  }
  /// Three frames, as if its process had ended without a word; the file that keeps it.
  QString leaveUnsaved(const std::string& name) {
    desk::RecoveryFile earlier;
    earlier.write(QString::fromStdString(path(name).string()), "[scene]\nframes = 3\n");
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/recovery";
    QString kept =
        QDir(folder).entryInfoList({"*.unsaved"}, QDir::Files, QDir::Time).front().filePath();
    QFile::remove(kept + ".lock");
    return kept;
  }
  bool saveAs(const std::string& name) {
    return document().saveAs(QString::fromStdString(path(name).string()));
  }
};

TEST_F(DocumentFilesTest, FollowsTheFileOnDiskAndLosesNothing) {
  ASSERT_TRUE(open(kCommented));
  const auto changesTo = [&](const std::string& scene) {
    write("new.toml", scene);  // as editors do
    std::filesystem::rename(path("new.toml"), path("s.toml"));
    return QTest::qWaitFor([&] { return text() == scene; }, 3000);
  };
  const std::string other = with(kCommented, "12.5", "13");
  EXPECT_TRUE(changesTo(other));
  EXPECT_FALSE(document().isModified());
  document().undoStack().undo();
  EXPECT_EQ(text(), kCommented);
  document().undoStack().redo();

  const std::string broken = with(kCommented, "12.5", "13,5");
  const desk::SharedState lastGood = document().state();
  EXPECT_TRUE(changesTo(broken));
  EXPECT_EQ(document().state(), lastGood);
  EXPECT_EQ(document().keyedParameters(0), std::vector{brisel::kSize});
  EXPECT_EQ(document().keys(0, brisel::kSize).size(), 2);
  EXPECT_EQ(document().origin(0, brisel::kSize), desk::ValueOrigin::Scene);
  EXPECT_TRUE(document().textProblem().startsWith("s.toml:6:"))
      << document().textProblem().toStdString();
  document().setValue(0, brisel::kIntensity, {3}, 0);
  EXPECT_EQ(text(), broken) << "what is no scene cannot be edited";
  EXPECT_TRUE(changesTo(other));
  EXPECT_TRUE(document().textProblem().isEmpty());

  document().setValue(0, brisel::kIntensity, {3}, 0);
  const std::string mine = text();
  QSignalSpy asked(&document(), &SceneDocument::changedOnDisk);
  EXPECT_FALSE(changesTo(kCommented));
  EXPECT_EQ(asked.size(), 1);
  EXPECT_EQ(text(), mine);
  document().undoStack().undo();
  EXPECT_TRUE(document().isModified()) << "what was saved here is no longer there";
  document().undoStack().redo();
  document().reload();
  EXPECT_EQ(text(), kCommented);
  document().undoStack().undo();
  EXPECT_EQ(text(), mine);
}

TEST_F(DocumentFilesTest, KeepsItsTextWhereTheFileHasNone) {
  const std::vector<std::pair<const char*, std::function<void()>>> losses{
      {"it is no text in UTF-8", [&] { write("s.toml", "[scene]\nframes = 3 # \xE9t\xE9\n"); }},
      {"it is a folder", [&] { std::filesystem::create_directory(path("s.toml")); }},
      {"it is a device or a pipe, not a file", [&] { mkfifo(path("s.toml").c_str(), 0600); }},
      {"no longer there", [&] {}}};
  for (const auto& [why, lose] : losses) {
    for (const bool isModified : {false, true}) {
      ASSERT_TRUE(open(kCommented)) << problem();
      if (isModified) document().setSize(320, 180);
      const std::string mine = text();
      QSignalSpy told(&document(), &SceneDocument::problem);
      std::filesystem::remove(path("s.toml"));
      lose();
      ASSERT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }, 3000)) << why;
      EXPECT_NE(problem().find(why), std::string::npos) << problem();
      write("other.toml", "");  // in the same folder
      document().reload();
      QTest::qWait(100);
      EXPECT_EQ(told.size(), 1) << problem();
      EXPECT_EQ(text(), mine);
      EXPECT_TRUE(document().isModified()) << why;
      ASSERT_TRUE(saveAs("kept.toml"));
      EXPECT_EQ(read("kept.toml"), mine);
      std::filesystem::remove(path("s.toml"));
    }
  }
}

TEST_F(DocumentFilesTest, SavesOverNothingThatItHasNotSeen) {
  std::filesystem::create_directory(path("far"));
  write("far/s.toml", std::string("\xEF\xBB\xBF") + kCommented);
  ASSERT_TRUE(openIn("far/s.toml"));
  document().setSize(320, 180);
  QSignalSpy asked(&document(), &SceneDocument::changedOnDisk);
  write("far/s.toml", "[scene]\n");  // too late for the system to tell
  EXPECT_FALSE(document().save());
  EXPECT_EQ(asked.size(), 1);
  EXPECT_EQ(read("far/s.toml"), "[scene]\n");
  EXPECT_TRUE(document().save()) << "it was asked";
  EXPECT_EQ(read("far/s.toml"), text());
}

TEST_F(DocumentFilesTest, TellsThatItsFileIsGone) {
  for (const std::string& scene : {std::string(kCommented), std::string("[scene]\r\n")}) {
    ASSERT_TRUE(open(scene));
    std::filesystem::remove(path("s.toml"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return document().isModified(); }, 3000));
    EXPECT_EQ(problem(), "s.toml is no longer there; save to write it again");
    write("s.toml", scene);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !document().isModified(); }, 3000)) << "it is back";
    std::filesystem::remove(path("s.toml"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return document().isModified(); }, 3000));
    EXPECT_TRUE(document().save());
    EXPECT_EQ(read("s.toml"), scene);
    EXPECT_FALSE(document().isModified());
  }
}

TEST_F(DocumentFilesTest, KeepsUnsavedScenesForTheNextRun) {
  while (const auto old = SceneDocument::findRecovered()) SceneDocument::discard(*old);
  ASSERT_TRUE(open(kCommented));
  document().setSize(320, 180);
  QTest::qWait(2500);
  EXPECT_FALSE(SceneDocument::findRecovered()) << "it belongs to a window that is open";
  EXPECT_TRUE(document().save());
  document().saveAs("/nowhere/s.toml");
  EXPECT_NE(problem().find("/nowhere/s.toml"), std::string::npos) << problem();
  EXPECT_FALSE(document().isModified());
  EXPECT_EQ(read("s.toml"), text());

  const QString kept = leaveUnsaved("s.toml");
  EXPECT_TRUE(SceneDocument::findRecovered());
  const auto recovered = SceneDocument::findRecovered();
  ASSERT_TRUE(recovered) << "it was offered, and not answered";
  EXPECT_FALSE(SceneDocument::findRecovered()) << "it is being offered";
  document().allow("/somewhere");
  document().restore(*recovered);
  EXPECT_EQ(document().allowed(), std::vector<std::string>{"/somewhere"}) << "it is the same scene";
  EXPECT_TRUE(document().isModified());
  EXPECT_EQ(document().state()->plan.frames, 3);
  EXPECT_FALSE(QFile::exists(kept));

  const QString ofGone = leaveUnsaved("gone.toml");
  document().restore(*SceneDocument::findRecovered());
  EXPECT_FALSE(QFile::exists(ofGone));
  EXPECT_EQ(document().allowed(), std::vector<std::string>()) << "it is another scene";
  EXPECT_TRUE(document().isModified());
  ASSERT_TRUE(document().save()) << problem();
  EXPECT_EQ(read("gone.toml"), "[scene]\nframes = 3\n");
}

TEST_F(DocumentFilesTest, AFullDiskLeavesTheFileThatIsThere) {
  ASSERT_TRUE(open(kCommented));
  document().setSize(320, 180);
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit full{16, limit.rlim_max};
  const auto old = std::signal(SIGXFSZ, SIG_IGN);  // it is an error then
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
  EXPECT_FALSE(document().save());
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, old);
  EXPECT_NE(problem().find("s.toml"), std::string::npos) << problem();
  EXPECT_EQ(read("s.toml"), kCommented);
  EXPECT_TRUE(document().isModified());
  EXPECT_TRUE(document().save());
}

TEST_F(DocumentFilesTest, TellsOnceThatNothingIsKeptForTheNextRun) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  QDir(folder + "/recovery").removeRecursively();
  ASSERT_TRUE(QDir().mkpath(folder));
  QFile inTheWay(folder + "/recovery");
  ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
  ASSERT_TRUE(open(kCommented));
  QSignalSpy told(&document(), &SceneDocument::problem);
  document().setSize(320, 180);
  EXPECT_TRUE(told.wait(4000));
  EXPECT_NE(problem().find("recovery"), std::string::npos) << problem();
  document().setSize(320, 181);
  EXPECT_FALSE(told.wait(2500));
  inTheWay.remove();
}

TEST_F(DocumentFilesTest, KeepsWhatAClipSaidWhenItIsGone) {
  makeClip("clip.mov", 3);
  ASSERT_TRUE(open("[scene]\ninput = \"clip.mov\"\n"));
  const cli::ScenePlan before = document().state()->plan;
  std::filesystem::rename(path("clip.mov"), path("gone.mov"));
  document().setPreroll(7);
  const cli::ScenePlan& without = document().state()->plan;
  EXPECT_NE(document().state()->inputProblem, "");
  EXPECT_FALSE(without.input);
  EXPECT_EQ(without.layer, before.layer);
  EXPECT_EQ(without.frames, 3);
  EXPECT_EQ(without.rate, before.rate);
  std::filesystem::rename(path("gone.mov"), path("clip.mov"));
  document().setPreroll(8);
  EXPECT_EQ(document().state()->inputProblem, "");
  EXPECT_TRUE(document().state()->plan.input);
}

/// Undo, redo and snapshots go on from wherever the scene was saved.
TEST_F(DocumentFilesTest, FindsItsFilesAlsoInTextsFromAnotherFolder) {
  makeClip("one.mov", 2);
  makeClip("two.mov", 3);
  std::filesystem::create_directories(path("a/b"));
  std::filesystem::create_directory_symlink(path("a/b"), path("link"));
  ASSERT_TRUE(open("[scene]\ninput = \"one.mov\"  # short\n"));
  const desk::PlacedText snapshot = document().placedText();
  document().setSceneInput(QString::fromStdString(path("two.mov").string()));
  document().setPreroll(7);
  const std::string saved = "[scene]\ninput = \"../../two.mov\"  # short\npreroll = 7\n";
  ASSERT_TRUE(saveAs("a/b/s.toml"));
  EXPECT_EQ(read("a/b/s.toml"), saved);

  const auto finds = [&](int frames) {
    return document().textProblem().isEmpty() && document().state()->inputProblem.empty() &&
           document().state()->plan.frames == frames;
  };
  QUndoStack& stack = document().undoStack();
  stack.undo();
  EXPECT_TRUE(document().isModified());
  EXPECT_TRUE(finds(3)) << document().state()->inputProblem;
  ASSERT_TRUE(document().stateBeforeLastStep());
  EXPECT_EQ(document().stateBeforeLastStep()->plan.frames, 2);
  stack.undo();
  EXPECT_EQ(text(), "[scene]\ninput = \"../../one.mov\"  # short\n");
  EXPECT_TRUE(finds(2)) << document().state()->inputProblem;
  ASSERT_TRUE(saveAs("link/t.toml"));
  EXPECT_EQ(read("link/t.toml"), text());
  EXPECT_TRUE(finds(2)) << document().state()->inputProblem;
  ASSERT_TRUE(saveAs("u.toml"));
  EXPECT_EQ(read("u.toml"), snapshot.text.toStdString());
  while (stack.canRedo()) stack.redo();
  EXPECT_TRUE(finds(3)) << document().state()->inputProblem;
  EXPECT_TRUE(document().save());
  EXPECT_EQ(read("u.toml"), with(saved, "../../", ""));

  ASSERT_TRUE(saveAs("a/b/s.toml"));
  ASSERT_TRUE(document().stateOf(snapshot));
  EXPECT_EQ(document().stateOf(snapshot)->plan.frames, 2);
  document().setText(snapshot, "Go back");
  EXPECT_TRUE(finds(2)) << document().state()->inputProblem;
  stack.undo();
  EXPECT_FALSE(document().isModified());
  EXPECT_EQ(text(), saved);
}

TEST_F(DocumentFilesTest, NamesTheSameFilesFromAnotherFolder) {
  makeClip("clip.mov", 2);
  write("logo.svg", R"(<svg><path id="star" d="M0 0L9 0L9 9Z"/></svg>)");
  std::filesystem::create_directories(path("a/b"));
  constexpr char kMoved[] = R"([scene]
input = "%clip.mov"  # short
[[layer]]
mask = "%logo.svg#star"
)";
  const auto from = [&](const char* folder) {
    return QString(kMoved).replace("%", folder).toStdString();
  };
  ASSERT_TRUE(open(from("")));
  const auto frames = document().state()->plan.frames;
  for (const auto& [scene, folder] : {std::pair{"a/b/s.toml", "../../"}, {"t.toml", ""}}) {
    ASSERT_TRUE(document().saveAs(QString::fromStdString(path(scene).string()))) << problem();
    EXPECT_EQ(read(scene), from(folder));
    EXPECT_EQ(document().textProblem(), "");
    EXPECT_FALSE(document().isModified());
    EXPECT_EQ(document().state()->plan.frames, frames);
    EXPECT_EQ(document().mask(0)->keys.front().value.vertices.size(), 3);
  }
  SceneDocument other(scene::PresetLibrary({}));
  ASSERT_TRUE(other.open(QString::fromStdString(path("a/b/s.toml").string())));
  EXPECT_NE(other.textProblem(), "") << "it comes from a stranger";
  EXPECT_EQ(other.folderToAllow().toStdString(), path("").parent_path().string());
  other.allow(other.folderToAllow());
  EXPECT_EQ(other.textProblem(), "");
  EXPECT_EQ(other.folderToAllow(), "");
  ASSERT_TRUE(other.open(QString(other.path())));
  EXPECT_NE(other.textProblem(), "") << "it was allowed until another is opened";
}

}  // namespace
