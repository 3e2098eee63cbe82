// Numbers out of and into text, without the locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace scene {

/// The whole text as a decimal number, spaces around it allowed; nothing when it is not one, or not
/// finite.
std::optional<double> parseNumber(std::string_view text);

/// The whole text as an int.
std::optional<int> parseInteger(std::string_view text);

/// "1920x1080" as width and height.
std::optional<std::pair<int, int>> parseSize(std::string_view text);

/// The shortest text that reads back as the same number: "12.5", "-30".
std::string numberText(double number);

std::string_view trimmed(std::string_view text);

}  // namespace scene
