#include "desk/document/value_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "scene/text/numbers.h"

namespace desk {
namespace {

constexpr double kDigits = 1e5;

/// To the hundredth of a pixel.
std::string pixels(scene::MaskPoint point) {
  const auto text = [](double side) {
    return scene::numberText(std::round(side * 100) / 100 + 0.0);
  };
  return text(point.x) + " " + text(point.y);
}

bool isSame(const scene::MaskPoint& a, const scene::MaskPoint& b) {
  return a.x == b.x && a.y == b.y;
}

bool isSame(const scene::Ease& a, const scene::Ease& b) {
  if (a.hold || b.hold) return a.hold == b.hold;
  if (a.isStraight() && b.isStraight()) return true;
  return a.x1 == b.x1 && a.y1 == b.y1 && a.x2 == b.x2 && a.y2 == b.y2;
}

}  // namespace

scene::ParamValue personsValue(const brisel::Values& values, brisel::ParamIndex parameter,
                               brisel::FrameSize frame) {
  constexpr double kOne = 65536;
  switch (brisel::parameterSpec(parameter).kind) {
    case brisel::ParamKind::Color: {
      const brisel::ByteColor color = values.color(parameter);
      return {static_cast<double>(color.red), static_cast<double>(color.green),
              static_cast<double>(color.blue)};
    }
    case brisel::ParamKind::Point:
      return {values[parameter].number / kOne / frame.width,
              values[parameter].y / kOne / frame.height};
    default:
      return {values.number(parameter)};
  }
}

std::string tomlString(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04X", static_cast<unsigned>(c));
      result += escaped;
    } else {
      result += c;
    }
  }
  return result + '"';
}

std::string shortNumber(double number) {
  return scene::numberText(std::round(number * kDigits) / kDigits + 0.0);  // never "-0"
}

std::string valueText(const brisel::ParameterSpec& parameter, const scene::ParamValue& value) {
  switch (parameter.kind) {
    case brisel::ParamKind::Checkbox:
      return value[0] != 0 ? "true" : "false";
    case brisel::ParamKind::Popup: {
      const std::vector<std::string> items = scene::itemsOf(parameter);
      const auto item =
          static_cast<std::size_t>(std::clamp(value[0], 1.0, static_cast<double>(items.size())));
      return tomlString(items[item - 1]);
    }
    case brisel::ParamKind::Color: {
      char text[16];
      const auto byte = [&](std::size_t i) {
        return static_cast<unsigned>(std::clamp(std::lround(value[i]), 0L, 255L));
      };
      std::snprintf(text, sizeof text, "\"#%02x%02x%02x\"", byte(0), byte(1), byte(2));
      return text;
    }
    case brisel::ParamKind::Point:
      return "[" + shortNumber(value[0]) + ", " + shortNumber(value[1]) + "]";
    default:
      return shortNumber(value[0]);
  }
}

std::string easeText(const scene::Ease& ease) {
  for (const std::string& name : scene::easeNames()) {
    if (isSame(*scene::easeByName(name), ease)) return tomlString(name);
  }
  return "[" + shortNumber(ease.x1) + ", " + shortNumber(ease.y1) + ", " + shortNumber(ease.x2) +
         ", " + shortNumber(ease.y2) + "]";
}

std::string shapeText(const scene::MaskShape& shape) {
  const auto& vertices = shape.vertices;
  std::string data;
  for (std::size_t i = 0; i < vertices.size() + (shape.closed ? 1 : 0); ++i) {
    const scene::MaskShape::Vertex& vertex = vertices[i % vertices.size()];
    if (i == 0) {
      data = "M " + pixels(vertex.point);
      continue;
    }
    const scene::MaskShape::Vertex& before = vertices[i - 1];
    const bool isStraight = isSame(before.out, before.point) && isSame(vertex.in, vertex.point);
    if (isStraight && i == vertices.size()) break;  // Z leads back
    data += isStraight ? " L " : " C " + pixels(before.out) + " " + pixels(vertex.in) + " ";
    data += pixels(vertex.point);
  }
  return tomlString(shape.closed ? data + " Z" : data);
}

}  // namespace desk
