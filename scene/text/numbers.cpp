#include "scene/text/numbers.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace scene {
namespace {

template <typename Number>
std::optional<Number> parseWhole(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<double> parseNumber(std::string_view text) {
  const auto number = parseWhole<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<int> parseInteger(std::string_view text) {
  return parseWhole<int>(text);
}

std::optional<std::pair<int, int>> parseSize(std::string_view text) {
  const std::size_t cross = text.find('x');
  if (cross == std::string_view::npos) return std::nullopt;
  const auto width = parseInteger(text.substr(0, cross));
  const auto height = parseInteger(text.substr(cross + 1));
  if (!width || !height) return std::nullopt;
  return std::pair(*width, *height);
}

std::string numberText(double number) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, number);
  return {text, result.ptr};
}

}  // namespace scene
