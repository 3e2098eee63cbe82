// The library of presets that ships with the effect: whatever its index names is there, says only
// what the effect understands, and says all of it, so that one look leaves nothing to the next.
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "presets/preset_index.h"
#include "tests/plugin/hosted_effect.h"

namespace {

using hostkit::Parameter;
using tests::EffectTest;
using tests::indexOf;

const std::string kFolder = BRISEL_LIBRARY_PATH;

std::string bytesOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  EXPECT_TRUE(stream) << file << " is missing";
  return {std::istreambuf_iterator<char>(stream), {}};
}

// Every line ends with CR LF: after a bare LF the effect's reader would lose a line.
std::vector<std::string> linesOf(const std::string& file) {
  std::vector<std::string> lines;
  std::istringstream text(bytesOf(file));
  for (std::string line; std::getline(text, line);) {
    EXPECT_TRUE(line.ends_with('\r')) << file << ": " << line;
    lines.push_back(line.substr(0, line.size() - 1));
  }
  return lines;
}

class PresetLibrary : public EffectTest {
 protected:
  // Sets what the file says; the small host refuses what lies outside the declared range.
  std::set<PF_ParamIndex> apply(const std::string& file) {
    std::set<PF_ParamIndex> named;
    const std::vector<std::string> lines = linesOf(file);
    EXPECT_EQ(lines.at(0), "Tessaro parameters");
    std::size_t i = 1;
    while (lines.at(i).starts_with(';')) ++i;
    EXPECT_GT(i, 1u) << "no word about the look";
    for (; i + 1 < lines.size(); i += 2) {
      SCOPED_TRACE(lines[i]);
      const PF_ParamIndex index = indexOf(session, lines[i]);
      EXPECT_TRUE(named.insert(index).second) << "named twice";
      std::istringstream text(lines[i + 1]);
      const std::vector<double> numbers{std::istream_iterator<double>(text), {}};
      EXPECT_TRUE(text.eof()) << lines[i + 1];
      const PF_ParamType type = session.parameters().value(index).param_type;
      const std::size_t needed = type == PF_Param_COLOR ? 4 : type == PF_Param_POINT ? 2 : 1;
      EXPECT_EQ(numbers.size(), needed);
      for (const double number : numbers) {
        EXPECT_TRUE(type != PF_Param_COLOR || (number >= 0 && number <= 255));
        if (needed == 1) tests::set(session, lines[i], number);
      }
      if (type == PF_Param_POPUP)
        used[lines[i]].insert(session.parameters().value(index).u.pd.value);
    }
    EXPECT_EQ(i, lines.size()) << "a name without a value";
    return named;
  }

  // Every parameter with a value in a range of indices, except the mask, which no file can name.
  std::set<PF_ParamIndex> valuesBetween(const char* first, const char* last) {
    std::set<PF_ParamIndex> indices;
    for (PF_ParamIndex i = indexOf(session, first); i <= indexOf(session, last); ++i) {
      const PF_ParamType type = session.parameters().value(i).param_type;
      if (type != PF_Param_GROUP_START && type != PF_Param_GROUP_END) indices.insert(i);
    }
    return indices;
  }

  std::map<std::string, std::set<A_long>> used;  // popup items, by label
};

TEST_F(PresetLibrary, EveryLookIsCompleteAndEveryChoiceHasOne) {
  tests::openWithDefaults(session);
  const auto star = valuesBetween("Type", "Add mode");
  auto emitter = valuesBetween("Standard path", "Frequency of oscillation");
  emitter.insert(star.begin(), star.end());
  // A header of 40 bytes; 88 x 65 pixels, bottom row first; one plane, 24 bits, uncompressed.
  const std::string header("\x28\0\0\0\x58\0\0\0\x41\0\0\0\1\0\x18\0\0\0\0\0", 20);
  for (const auto& [section, named] : {std::pair{"Emmiter", emitter}, {"Geometry", star}}) {
    const auto presets = brisel::ReadPresetIndex({kFolder + "Drizzen.prs", kFolder}, section);
    EXPECT_FALSE(presets.empty());
    for (const brisel::PresetFiles& files : presets) {
      SCOPED_TRACE(files.parameters);
      EXPECT_EQ(apply(files.parameters), named);
      EXPECT_EQ(bytesOf(files.thumbnail).substr(14, header.size()), header);
    }
  }
  for (const char* popup : {"Standard path", "Orientation", "Terminate type", "Oscillation", "Type",
                            "Type of halo", "Type of blink", "Color schema", "Add mode"}) {
    const std::size_t items = session.parameters().find(popup)->items.size();
    const bool hasDots = popup == std::string_view("Type");  // pixels too small to be seen
    EXPECT_EQ(used[popup].size(), items - (hasDots ? 1 : 0)) << popup;
  }
}

}  // namespace
