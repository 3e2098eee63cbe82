// The panels around the picture: what is turned, chosen and moved in them is in the scene.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDial>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTreeWidget>
#include <set>

#include "desk/compare/compare_key.h"
#include "desk/controls/controls_panel.h"
#include "desk/controls/effect_panel.h"
#include "desk/layers/layers_panel.h"
#include "tests/desk/desk_test.h"

namespace {

using brisel::ParamIndex;
using brisel::ParamKind;
using desk::ValueOrigin;

class PanelsTest : public tests::DeskTest {
 protected:
  PanelsTest() : preview(document()) {}

  template <class Widget>
  static Widget* named(const QWidget& panel, const QString& accessibleName) {
    for (Widget* widget : panel.findChildren<Widget*>()) {
      if (widget->accessibleName() == accessibleName) return widget;
    }
    ADD_FAILURE() << "nothing is named " << accessibleName.toStdString();
    return nullptr;
  }
  static void click(const QWidget& panel, const QString& button) {
    auto* found = named<QAbstractButton>(panel, button);
    if (found) found->click();
  }

  desk::Preview preview;
};

/// Turns what the editor holds; a color has a dialog for that.
void turn(desk::ValueEditor& editor) {
  if (auto* menu = editor.findChild<QComboBox*>()) {
    menu->setCurrentIndex((menu->currentIndex() + 1) % menu->count());
  } else if (auto* box = editor.findChild<QCheckBox*>()) {
    box->click();
  } else if (auto* field = editor.findChild<QDoubleSpinBox*>()) {
    field->stepBy(field->value() < field->maximum() ? 1 : -1);
  } else {
    emit editor.edited({12, 34, 56});
  }
}

TEST_F(PanelsTest, EveryParameterIsTurnedResetAndKeyed) {
  ASSERT_TRUE(open("[scene]\nframes = 50\n"));
  desk::ControlsPanel panel(preview);
  panel.show();
  const auto editors = panel.findChildren<desk::ValueEditor*>();
  auto editor = editors.begin();
  for (std::int32_t i = 1; i < brisel::kParamCount; ++i) {
    const auto index = static_cast<ParamIndex>(i);
    const brisel::ParameterSpec& spec = brisel::parameterSpec(index);
    if (!scene::takesValue(spec.kind)) continue;
    SCOPED_TRACE(spec.label);
    ASSERT_NE(editor, editors.end());
    const scene::ParamValue before = document().value(0, index, 0);
    turn(**editor++);
    EXPECT_NE(document().value(0, index, 0), before);
    click(panel, QString("Reset of %1").arg(spec.label));
    EXPECT_EQ(document().value(0, index, 0), before);
    EXPECT_EQ(document().origin(0, index), ValueOrigin::Default);
    click(panel, QString("Key of %1").arg(spec.label));
    EXPECT_EQ(document().keys(0, index).size(), 1);
    EXPECT_TRUE(named<QAbstractButton>(panel, QString("Key of %1").arg(spec.label))->isChecked());
  }
  EXPECT_EQ(editor, editors.end());
  panel.findChild<QPushButton*>()->click();
  EXPECT_TRUE(document().keyedParameters(0).empty());
}

TEST_F(PanelsTest, TurningInQuickSuccessionIsOneStep) {
  ASSERT_TRUE(open("[scene]\nframes = 50\n"));
  desk::ControlsPanel panel(preview);
  auto* size = named<QDoubleSpinBox>(panel, "Size");
  auto* gravity = named<QDoubleSpinBox>(panel, "Gravity");
  for (QDoubleSpinBox* turned : {size, size, size, gravity, gravity, size, size}) turned->stepUp();
  EXPECT_EQ(document().undoStack().count(), 3);
  document().undoStack().undo();
  size->stepUp();  // not a part of what is left
  EXPECT_EQ(document().undoStack().count(), 3);
  QTest::qWait(800);
  size->stepUp();
  EXPECT_EQ(document().undoStack().count(), 4);
}

TEST_F(PanelsTest, ScreenReadersGetValuesAsTheyAre) {
  ASSERT_TRUE(open("[params]\nSize = 30.5\n\"Direction of wind\" = 300\n"));
  desk::ControlsPanel panel(preview);
  panel.show();
  const auto readerOf = [&](QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->valueInterface();
  };
  auto* slider = readerOf(named<QSlider>(panel, "Size"));
  EXPECT_EQ(slider->currentValue().toDouble(), 30.5);
  slider->setCurrentValue(42.5);
  EXPECT_EQ(document().value(0, brisel::kSize, 0), scene::ParamValue{42.5});
  auto* dial = named<QDial>(panel, "Direction of wind");
  EXPECT_EQ(readerOf(dial)->currentValue().toDouble(), -60);
  dial->setValue(-50);
  EXPECT_EQ(document().value(0, brisel::kDirectionOfWind, 0), scene::ParamValue{310});
  const auto* tree = panel.findChild<QTreeWidget*>();
  const QTreeWidgetItem* row =
      tree->findItems("Size", Qt::MatchExactly | Qt::MatchRecursive).front();
  EXPECT_EQ(row->data(1, Qt::AccessibleTextRole), "42.5");
}

TEST_F(PanelsTest, WhatIsRefusedIsNotShown) {
  ASSERT_TRUE(open("[params]\nSize = 30\n"));
  desk::ControlsPanel panel(preview);
  panel.show();
  auto* size = named<QDoubleSpinBox>(panel, "Size");
  document().setText({"[params]\nSize = \n", document().path()}, "Break");
  size->setValue(40);
  EXPECT_EQ(size->value(), 30);
  EXPECT_NE(problem(), "");
}

TEST_F(PanelsTest, GraysWhatHasNoEffectAndFindsNamesAndGroups) {
  ASSERT_TRUE(open("[params]\n\"Standard path\" = \"Point\"\n"));
  desk::ControlsPanel panel(preview);
  panel.show();
  auto* end = named<QDoubleSpinBox>(panel, "End across");
  EXPECT_FALSE(end->isEnabled());
  document().setValue(0, brisel::kStandardPath, {2}, 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return end->isEnabled(); }));

  const auto* tree = named<QTreeWidget>(panel, "Parameters");
  const auto shown = [&] {
    std::set<std::string> names;
    for (QTreeWidgetItemIterator at(const_cast<QTreeWidget*>(tree)); *at; ++at) {
      bool isShown = !(*at)->isHidden();
      for (const auto* group = (*at)->parent(); group; group = group->parent()) {
        isShown = isShown && group->isExpanded() && !group->isHidden();
      }
      if (isShown) names.insert((*at)->text(0).toStdString());
    }
    return names;
  };
  const auto before = shown();
  auto* search = named<QLineEdit>(panel, "Search for a parameter");
  search->setText("halo VOL");
  EXPECT_EQ(shown(), (std::set<std::string>{"Geometry", "Additional elements", "Volume of halo"}));
  search->setText("control p");
  EXPECT_EQ(shown(), (std::set<std::string>{"Emmiter", "Control points", "Start", "End",
                                            "Control start", "Control end"}));
  search->clear();
  EXPECT_EQ(shown(), before);
}

TEST_F(PanelsTest, AClickInTheEffectsOwnRowsIsAPreset) {
  ASSERT_TRUE(open("[scene]\nframes = 50\n"));
  desk::EffectPanel panel(preview);
  panel.resize(panel.minimumWidth(), panel.height());
  const QImage drawn = panel.grab().toImage();
  std::set<QRgb> colors;
  for (int x = 0; x < drawn.width(); ++x) colors.insert(drawn.pixel(x, drawn.height() - 40));
  EXPECT_GT(colors.size(), 20);  // thumbnails
  const auto clicked = [&](int fromBottom) {
    QTest::mouseClick(&panel, Qt::LeftButton, {}, {300, panel.height() - fromBottom});
    return document().presets(0).value(0).toStdString();
  };
  const scene::PresetLibrary& library = document().presetLibrary();
  const auto rowOf = [&](const std::string& name) { return library.find({name, name}).row; };
  EXPECT_EQ(rowOf(clicked(40)), 1);
  EXPECT_EQ(rowOf(clicked(130)), 0);
  for (const int arrow : {panel.width() - 20, 20}) {  // which shows other thumbnails
    QTest::mouseClick(&panel, Qt::LeftButton, {}, {arrow, panel.height() - 40});
  }
  EXPECT_EQ(document().undoStack().count(), 2);
}

TEST_F(PanelsTest, LayersAreAddedNamedMovedAndRemoved) {
  ASSERT_TRUE(open("[params]\nSize = 30\n"));
  desk::LayersPanel panel(preview);
  auto* list = named<QListWidget>(panel, "Layers");
  const auto names = [&] {
    QStringList shown;
    for (int row = 0; row < list->count(); ++row) shown += list->item(row)->text();
    return shown.join(' ').toStdString();
  };
  click(panel, "Add a layer");
  click(panel, "Add a layer");
  EXPECT_EQ(names(), "Layer 3 Layer 2 Layer 1");
  EXPECT_EQ(preview.layer(), 2);
  list->item(0)->setText("sparks");
  click(panel, "Move the layer down");
  EXPECT_EQ(names(), "Layer 2 sparks Layer 1");
  EXPECT_EQ(document().layerName(1), "sparks");
  EXPECT_EQ(preview.layer(), 1);
  list->model()->moveRow({}, 2, {}, 0);  // as a drag does
  QCoreApplication::processEvents();
  EXPECT_EQ(names(), "Layer 1 Layer 2 sparks");
  EXPECT_EQ(document().layerName(2), "Layer 1");
  click(panel, "Remove the layer");
  EXPECT_EQ(names(), "Layer 2 sparks");
  while (document().undoStack().canUndo()) document().undoStack().undo();
  EXPECT_EQ(text(), "[params]\nSize = 30\n");
}

TEST_F(PanelsTest, AKeyHeldShowsTheStepBefore) {
  ASSERT_TRUE(open("[params]\nSize = 30\n"));
  const desk::CompareKey key(preview, Qt::Key_B, nullptr);
  QWidget window;
  window.show();
  document().setValue(0, brisel::kSize, {40}, 0);
  QTest::keyPress(&window, Qt::Key_B);
  ASSERT_TRUE(preview.comparedState());
  EXPECT_EQ(preview.comparedState()->layers[0].at(0).number(brisel::kSize), 30);
  QTest::keyRelease(&window, Qt::Key_B, Qt::ShiftModifier);
  EXPECT_FALSE(preview.comparedState());
  QTest::keyPress(&window, Qt::Key_B);
  QEvent away(QEvent::ApplicationDeactivate);
  QCoreApplication::sendEvent(qApp, &away);
  EXPECT_FALSE(preview.comparedState());
}

}  // namespace
