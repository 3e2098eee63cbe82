// Parameter files, and what they make of an effect's values and settings.
#include "presets/parameter_file.h"

#include <algorithm>

#include "effect/presets.h"
#include "effect/settings.h"
#include "target.h"

void fuzz::runInput(std::span<const std::uint8_t> input) {
  constexpr brisel::FrameSize kFrame{1920, 1080};
  const auto file = brisel::parseParameterFile(input, brisel::numberCountOf);
  require(file.state != brisel::ParameterFile::State::Missing, "what was parsed is there");
  require(file.state == brisel::ParameterFile::State::Read || file.parameters.empty(),
          "no parameters of another kind of file");
  require(file.description.find('\n') == file.description.npos, "a description is one line");

  brisel::Values values(kFrame);
  const brisel::Values before = values;
  const auto set = brisel::applyParameters(file, kFrame, values);
  require(set.size() <= file.parameters.size(), "sets no more than the file names");
  for (std::int32_t index = 0; index < brisel::kParamCount; ++index) {
    const bool isSet =
        std::find(set.begin(), set.end(), static_cast<brisel::ParamIndex>(index)) != set.end();
    require(isSet || values[index] == before[index], "leaves what the file does not name");
  }
  static_cast<void>(brisel::settingsOf(values, {.size = kFrame}));
}
