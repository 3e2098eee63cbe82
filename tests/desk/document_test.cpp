// Scenes edited as text: what changes, what stays, and what comes back.
#include <gtest/gtest.h>

#include "desk/document/scene_document.h"
#include "tests/desk/desk_test.h"

namespace {

using desk::SceneDocument;
using desk::ValueOrigin;

constexpr char kWithComments[] = R"(#:schema file:///scene.schema.json
# A portal, é.
[scene]   # what to render
size = [640, 360]
frames = 50

[params]  # all of it
"Intensity" = 12.5      # births
  "Start" = [0.5, 0.5]
"Size" = [ { frame = 0, value = 4 },   # small
           { frame = "1s", value = 40, ease = "in-out" } ]
"Color of particles" = "gold"  # as the logo
)";

class DocumentTest : public tests::DeskTest {
 protected:
  using Edit = std::function<void(SceneDocument& document)>;

  /// The text after the edit, which undo takes back altogether.
  std::string after(const std::string& scene, const Edit& edit) {
    EXPECT_TRUE(open(scene)) << problem();
    const int steps = document().undoStack().count();
    edit(document());
    std::string result = text();
    EXPECT_EQ(document().textProblem(), QString());
    while (document().undoStack().count() > steps && document().undoStack().canUndo()) {
      document().undoStack().undo();
    }
    EXPECT_EQ(text(), scene);
    return result;
  }
};

TEST_F(DocumentTest, EditsChangeNoMoreThanTheyMust) {
  struct Case {
    const char* old;
    const char* other;
    Edit edit;
  };
  for (const Case& c : std::vector<Case>{
           {"12.5 ", "30 ", [](auto& d) { d.setValue(0, brisel::kIntensity, {30}, 7); }},
           {"[0.5, 0.5]", "[0.25, 0.33333]",
            [](auto& d) {
              d.setValue(0, brisel::kStart, {0.25, 1 / 3.0}, 0);
            }},
           {"value = 4 ", "value = 5 ", [](auto& d) { d.setValue(0, brisel::kSize, {5}, 0); }},
           {"value = 40", "value = 41", [](auto& d) { d.setValue(0, brisel::kSize, {41}, 25); }},
           {"\"1s\"", "30", [](auto& d) { d.moveKey(0, brisel::kSize, 25, 30); }},
           {", ease = \"in-out\"", "",
            [](auto& d) { d.setEase(0, brisel::kSize, 25, scene::Ease{}); }},
           {"{ frame = 0, value = 4 }", "{ frame = 0, value = 4, ease = [0.1, 0, 0.2, 1] }",
            [](auto& d) {
              d.setEase(0, brisel::kSize, 0, {false, 0.1, 0, 0.2, 1});
            }},
           {" \"in-out\" } ]", " \"in-out\" },\n           { frame = 40, value = 4 } ]",
            [](auto& d) { d.copyKey(0, brisel::kSize, 0, 40); }},
           {",   # small\n           { frame = \"1s\", value = 40, ease = \"in-out\" }", "",
            [](auto& d) { d.removeKey(0, brisel::kSize, 25); }},
           {"12.5", "[ { frame = 9, value = 12.5 } ]",
            [](auto& d) { d.addKey(0, brisel::kIntensity, 9); }},
           {"  \"Start\" = [0.5, 0.5]\n", "", [](auto& d) { d.reset(0, brisel::kStart); }},
           {"logo\n", "logo\n\"Type\" = \"Type 6\"\n",
            [](auto& d) { d.setValue(0, brisel::kType, {7}, 0); }},
           {"frames = 50\n", "frames = 50\nfps = \"30000/1001\"\n",
            [](auto& d) { d.setRate("30000/1001"); }},
           {"[640, 360]", "[1920, 1080]", [](auto& d) { d.setSize(1920, 1080); }},
           {"logo\n", "logo\n\n[mask]\npath = \"M 1 2 C 3 4 5 6 7 8 L 9 9 Z\"\n",
            [](auto& d) {
              d.setMaskShape(0,
                             scene::MaskShape{{{{1, 2}, {1, 2}, {3, 4}},
                                               {{7, 8}, {5, 6}, {7, 8}},
                                               {{9, 9}, {9, 9}, {9, 9}}},
                                              true},
                             0);
            }},
       }) {
    const std::string expected = with(kWithComments, c.old, c.other);
    EXPECT_EQ(after(kWithComments, c.edit), expected) << problem();
  }
}

TEST_F(DocumentTest, TextsWrittenInOtherWaysAreEditedToo) {
  struct Case {
    const char* scene;
    const char* result;
    Edit edit;
  };
  const auto setSize = [](auto& d) { d.setValue(d.layerCount() - 1, brisel::kSize, {3}, 0); };
  for (const Case& c : std::vector<Case>{
           {"", "[params]\n\"Size\" = 3\n", setSize},
           {"# nothing", "# nothing\n\n[params]\n\"Size\" = 3\n", setSize},
           {"params = {}\n", "params = { \"Size\" = 3 }\n", setSize},
           {"params = { \"Width\" = 4 } # w\n", "params = { \"Width\" = 4, \"Size\" = 3 } # w\n",
            setSize},
           {"params.\"Width\" = 4\n", "params.\"Width\" = 4\nparams.\"Size\" = 3\n", setSize},
           {"[params]\n\"Width\" = 4", "[params]\n\"Width\" = 4\n\"Size\" = 3\n", setSize},
           {"[[layer]]\nname = \"a\"\n[params]\n\"Width\" = 2\n",
            "[[layer]]\nname = \"a\"\n\n[layer.params]\n\"Size\" = 3\n\n[params]\n\"Width\" = 2\n",
            setSize},
           {"[params]\n\"Size\" = 1\n[[layer]]\n", "[params]\n\"Size\" = 3\n[[layer]]\n", setSize},
           {"[params]\n\"Size\" = 1\n[[layer]]\npresets = [\"sparkle\"]\n",
            "[params]\n\"Size\" = 1\n[[layer]]\npresets = [\"sparkle\"]\n\n[layer.params]\n"
            "\"Size\" = 3\n",
            setSize},
           {"# c\n[params]\n\"Size\" = 1\n\n[scene]\nframes = 9\n",
            "[scene]\nframes = 9\n\n[[layer]]\nname = \"Layer 1\"\n\n# c\n[layer.params]\n"
            "\"Size\" = 1\n\n[[layer]]\nname = \"sparks\"\n",
            [](auto& d) { d.addLayer("sparks"); }},
           {"# b\n[[layer]]\nname = \"b\"\n\n[[layer]]\nname = \"t\"\n",
            "[[layer]]\nname = \"t\"\n\n# b\n[[layer]]\nname = \"b\"\n",
            [](auto& d) { d.moveLayer(0, 1); }},
           {"[[layer]]\nname = \"b\"\n[layer.params]\n\"Size\" = 2\n# top\n[[layer]]\n",
            "# top\n[[layer]]\n", [](auto& d) { d.removeLayer(0); }},
           {"[scene]\npresets = [\"ember\", \"sparkle\"]\n[params]\n\"Size\" = 2\n\"Add mode\" = "
            "2\n",
            "[scene]\npresets = [\"bokeh\"]\n[params]\n",
            [](auto& d) {
              d.applyPreset(0, "bokeh");
              d.reset(0, brisel::kAddMode);
            }},
           {"[params]\n\"Size\" = [ { frame = \"0.28s\", value = 1 } ]\n",
            "[params]\n\"Size\" = 1\n", [](auto& d) { d.removeKey(0, brisel::kSize, 7); }},
       }) {
    EXPECT_EQ(after(c.scene, c.edit), c.result) << problem();
  }
}

TEST_F(DocumentTest, SaysWhereValuesComeFrom) {
  ASSERT_TRUE(
      open("[scene]\npresets = [\"sparkle\"]\n[params]\n\"Size\" = 2\n\"Intensity\" = 7\n"
           "[[layer]]\nname = \"t\"\npresets = [\"ember\"]\n[layer.params]\n"
           "\"Angle\" = 30\n"));
  EXPECT_EQ(document().origin(0, brisel::kAngle), ValueOrigin::Layer);
  EXPECT_EQ(document().origin(0, brisel::kSize), ValueOrigin::Preset);  // the layer's
  EXPECT_EQ(document().origin(0, brisel::kIntensity), ValueOrigin::Scene);
  EXPECT_EQ(document().origin(0, brisel::kStart), ValueOrigin::Default);
  EXPECT_EQ(document().layerName(0), "t");
  EXPECT_EQ(document().value(0, brisel::kAngle, 0)[0], 30);
}

TEST_F(DocumentTest, GesturesAreOneStepAndUnsoundEditsNone) {
  ASSERT_TRUE(open(kWithComments));
  QUndoStack& stack = document().undoStack();
  for (int gesture = 0; gesture < 2; ++gesture) {
    document().beginGesture();
    for (int i = 0; i < 20; ++i) document().setValue(0, brisel::kIntensity, {20.0 + i}, 0);
    document().endGesture();
  }
  EXPECT_EQ(stack.count(), 1) << "the second gesture ends where the first did";
  document().setValue(0, brisel::kIntensity, {21}, 0);
  EXPECT_EQ(stack.count(), 2);
  EXPECT_EQ(stack.undoText(), "Change Intensity");
  const desk::SharedState before = document().stateBeforeLastStep();
  ASSERT_TRUE(before);
  EXPECT_EQ(before->layers[0].at(0).number(brisel::kIntensity), 39);
  EXPECT_EQ(document().stateBeforeLastStep(), before);
  document().setValue(0, brisel::kIntensity, {-5000}, 0);
  EXPECT_NE(problem().find("s.toml:8: \"Intensity\""), std::string::npos) << problem();
  EXPECT_EQ(stack.count(), 2);
}

TEST_F(DocumentTest, TakesBackWhatACanceledGestureChanged) {
  ASSERT_TRUE(open(kWithComments));
  document().setSize(320, 180);
  const std::string before = text();
  document().beginGesture();
  document().cancelGesture();
  EXPECT_EQ(text(), before);
  document().beginGesture();
  document().setValue(0, brisel::kIntensity, {3}, 0);
  document().setValue(0, brisel::kIntensity, {4}, 0);
  document().cancelGesture();
  EXPECT_EQ(text(), before);
  EXPECT_EQ(document().undoStack().index(), 1);
}

TEST_F(DocumentTest, TakesAPresetThatIsNotInTheLibrary) {
  ASSERT_TRUE(open("[params]\nSize = [{ frame = 0, value = 1 }, { frame = 9, value = 2 }]\n"));
  const scene::PresetLibrary& library = document().presetLibrary();
  const scene::Preset& preset = library.presets().front();
  std::filesystem::copy_file(preset.file, path("mine.txt"));
  document().applyPresetFile(0, QString::fromStdString(path("mine.txt").string()));
  EXPECT_TRUE(document().keyedParameters(0).empty());
  const auto values = [&] {
    std::vector<double> all;
    for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
      if (!scene::takesValue(brisel::parameterSpec(index).kind)) continue;
      const auto value = document().value(0, static_cast<brisel::ParamIndex>(index), 5);
      all.insert(all.end(), value.begin(), value.end());
    }
    return all;
  };
  const std::vector<double> taken = values();
  document().undoStack().undo();
  document().applyPreset(0, QString::fromStdString(preset.name));
  const std::vector<double> meant = values();
  ASSERT_EQ(taken.size(), meant.size());
  for (std::size_t i = 0; i < taken.size(); ++i) EXPECT_NEAR(taken[i], meant[i], 0.001) << i;
  write("other.txt", "words");
  document().applyPresetFile(0, QString::fromStdString(path("other.txt").string()));
  EXPECT_NE(problem().find("other.txt"), std::string::npos) << problem();
}

}  // namespace
