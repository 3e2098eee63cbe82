// Colors as people write them.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scene {

/// "#ffcc66", "#fc6" or a name of CSS as red, green and blue, 0..255. Capitals do not count.
std::optional<std::array<double, 3>> colorFromText(std::string_view text);

/// The names of CSS.
std::vector<std::string> colorNames();

}  // namespace scene
