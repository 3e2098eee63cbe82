// A folder with scenes, and a document that opens them.
#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QSignalSpy>
#include <memory>
#include <string>

#include "cli/scene/effect.h"
#include "desk/document/scene_document.h"
#include "tests/support/folder_test.h"

namespace tests {

class DeskTest : public FolderTest {
 protected:
  DeskTest() : document_(cli::presetsBeside(cli::findModule({}))) {
    QObject::connect(&document_, &desk::SceneDocument::problem,
                     [this](const QString& sentence) { problem_ = sentence.toStdString(); });
  }

  desk::SceneDocument& document() { return document_; }
  bool open(const std::string& text) {
    write("s.toml", text);
    return document_.open(QString::fromStdString(path("s.toml").string()));
  }
  /// What the document told last.
  const std::string& problem() const { return problem_; }
  std::string text() const { return document_.text().toStdString(); }

  static std::string with(std::string scene, const std::string& old, const std::string& other) {
    const std::size_t at = scene.find(old);
    EXPECT_NE(at, std::string::npos) << old;
    return at == std::string::npos ? scene : scene.replace(at, old.size(), other);
  }

  /// A small clip of moving test pictures.
  void makeClip(const std::string& name, int frames) const {
    const std::string command =
        "ffmpeg -v error -y -f lavfi -i testsrc=size=96x54:rate=25 -frames:v " +
        std::to_string(frames) + " " + path(name).string();
    ASSERT_EQ(std::system(command.c_str()), 0);
  }

 private:
  desk::SceneDocument document_;
  std::string problem_;
};

}  // namespace tests
