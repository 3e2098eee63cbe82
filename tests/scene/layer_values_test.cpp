// What a layer gives the effect: which of presets, scene, layer and options wins, and how layers
// mix.
#include "scene/layer_values.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/support/folder_test.h"

namespace {

using brisel::kIntensity;
using brisel::kMixWithOriginal;
using brisel::kRaysCount;
using brisel::kSize;

constexpr int kReplace = 1;
constexpr int kAdd = 3;

// Presets that a program carries.
scene::PresetLibrary presets() {
  static const std::map<std::string, std::string> files = {
      {"Drizzen.prs",
       "\r\n[Emmiter]\r\nfew.txt few.bmp\r\nmany.txt many.bmp\r\n[Geometry]\r\n"
       "big.txt big.bmp\r\nalone.txt alone.bmp\r\n"},
      {"few.txt", "Tessaro parameters\r\nIntensity\r\n1\r\nStart\r\n0.5 0.25\r\n"},
      {"many.txt", "Tessaro parameters\r\n; A crowd\r\nIntensity\r\n40\r\n"},
      // The second is the default.
      {"big.txt", "Tessaro parameters\r\nSize\r\n80\r\nRays count\r\n4\r\n"},
      {"alone.txt", "Tessaro parameters\r\nMix with original\r\n1\r\n"}};
  return scene::PresetLibrary(
      "", [](const std::filesystem::path& file) -> std::optional<std::vector<std::uint8_t>> {
        const auto found = files.find(file.string());
        if (found == files.end()) return std::nullopt;
        return std::vector<std::uint8_t>(found->second.begin(), found->second.end());
      });
}

class LayerValuesTest : public tests::FolderTest {
 protected:
  scene::Scene sceneOf(const std::string& text) const {
    write("s.toml", text);
    return scene::readScene(path("s.toml"));
  }
  static scene::LayerValues layer(const scene::Scene& scene, std::size_t index = 0,
                                  bool hasInput = true) {
    return {scene, index, {{100, 80}, {}, hasInput}, presets()};
  }
  // The item of each layer; 0 where the stars are to be added as light.
  static std::vector<int> mixes(const scene::Scene& scene, bool hasInput = true) {
    std::vector<int> items;
    for (std::size_t i = 0; i < scene.layers.size(); ++i) {
      const scene::LayerValues values = layer(scene, i, hasInput);
      const brisel::Values first = values.at(0);
      items.push_back(values.isToBeAdded(first) ? 0 : first[kMixWithOriginal].number);
    }
    return items;
  }
};

TEST_F(LayerValuesTest, ALayersPresetsWinOverTheSceneAndItsValuesOverBoth) {
  scene::Scene scene = sceneOf(R"([[layer]]
[[layer]]
presets = ["big"]
[layer.params]
"Intensity" = 7
[params]
"Rays count" = [ { frame = 0, value = 9 } ]
"Size" = 60
"Width" = 90
[scene]
presets = ["few", "many"]
)");
  const brisel::Values first = layer(scene, 0).at(0);
  EXPECT_EQ(first.number(kIntensity), 40) << "the last preset";
  EXPECT_EQ(first[brisel::kStart], (brisel::Value{50 << 16, 20 << 16}));
  EXPECT_EQ(first.number(kSize), 60);
  const brisel::Values second = layer(scene, 1).at(0);
  EXPECT_EQ(second.number(kIntensity), 7);
  EXPECT_EQ(second.number(kSize), 80);
  EXPECT_EQ(second.number(kRaysCount), 4) << "even where the preset says the default";
  EXPECT_EQ(second.number(brisel::kWidth), 90) << "of which it says nothing";

  scene.layers[1].presets.push_back({"few", "--preset", scene::Origin::Option});
  scene.layers[1].settings.push_back({"Size", {{{0}, 5.0}}, "--set", scene::Origin::Option});
  const brisel::Values chosen = layer(scene, 1).at(0);
  EXPECT_EQ(chosen.number(kIntensity), 1);
  EXPECT_EQ(chosen.number(kSize), 5);
}

TEST_F(LayerValuesTest, TellsWhatIsSet) {
  const auto values = layer(sceneOf(R"([scene]
presets = ["few"]
[params]
"Size" = 25
[mask]
path = "M 5 5 Z"
)"));
  for (const auto index : {kIntensity, brisel::kStart, kSize, brisel::kPath}) {
    EXPECT_TRUE(values.sets(index)) << index;
  }
  EXPECT_FALSE(values.sets(kRaysCount) || values.sets(kMixWithOriginal));
  EXPECT_EQ(values.at(3).number(brisel::kPath), 1);
  EXPECT_TRUE(values.maskAt(3)->isOpen) << "a single vertex";
}

TEST_F(LayerValuesTest, StarsAreAddedWhereNothingSaysHowToMix) {
  const scene::Scene open = sceneOf("[[layer]]\n[[layer]]");
  EXPECT_EQ(mixes(open), (std::vector{kAdd, kAdd}));
  EXPECT_EQ(layer(open).notes().size(), 1u);
  EXPECT_EQ(mixes(open, false), (std::vector{kReplace, 0}));
  EXPECT_TRUE(layer(open, 0, false).notes().empty());
  // For all layers it leaves out the input, and no layer.
  const scene::Scene alone = sceneOf("[scene]\npresets = [\"alone\"]\n[[layer]]\n[[layer]]");
  EXPECT_EQ(mixes(alone), (std::vector{kReplace, 0}));
  EXPECT_TRUE(layer(alone).notes().empty());
  const scene::Scene added = sceneOf("[params]\n\"Mix with original\" = 3\n[[layer]]\n[[layer]]");
  EXPECT_EQ(mixes(added), (std::vector{kAdd, kAdd}));
  EXPECT_EQ(mixes(added, false), (std::vector{kAdd, 0}));
  const scene::Scene hiding = sceneOf("[[layer]]\n[[layer]]\npresets = [\"alone\"]");
  EXPECT_EQ(mixes(hiding), (std::vector{kAdd, kReplace}));
  EXPECT_EQ(layer(hiding, 1).notes().size(), 1u);
}

TEST(PresetLibrary, CanBeCarriedByTheProgram) {
  const scene::PresetLibrary library = presets();
  ASSERT_EQ(library.presets().size(), 4u);
  EXPECT_EQ(library.presets()[2].row, 1u);
  const scene::Preset& many = library.find({"many.txt", "", scene::Origin::Option});
  EXPECT_EQ(many.name, "many");
  EXPECT_EQ(library.describe(many), "A crowd");
}

}  // namespace
