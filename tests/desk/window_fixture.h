// The whole window, and a folder with scenes.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <string>

#include "cli/scene/effect.h"
#include "desk/exporting/export_queue.h"
#include "desk/window/main_window.h"
#include "tests/support/folder_test.h"

namespace tests {

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

  QString message(desk::MessageArea::Subject subject) {
    return window.findChild<desk::MessageArea*>()->sentence(subject);
  }
  /// Presses the button of the next question.
  void answer(QMessageBox::StandardButton button) {
    questions.disconnect();
    questions.callOnTimeout(&window, [button] {
      auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(question, nullptr);
      question->button(button)->click();
    });
    questions.setSingleShot(true);
    questions.start(0);
  }

  QTimer questions;
  desk::MainWindow window;
};

inline constexpr char kStarsAlone[] = R"([scene]
size = [320, 180]
frames = 30   # short
[params]
"Standard path" = "Point"
"Start" = [0.5, 0.5]
)";

}  // namespace tests
