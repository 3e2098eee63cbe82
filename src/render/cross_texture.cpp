#include "render/cross_texture.h"

#include <algorithm>
#include <cmath>

#include "engine/numbers.h"
#include "engine/trigonometry.h"
#include "render/drawing.h"

namespace brisel {

CrossTexture::CrossTexture(float textureScale) : textureScale_(textureScale) {
  const std::int32_t wholeDegrees = 360 / std::max(50, truncToInt(200.0f * textureScale));
  sector_ = static_cast<float>(wholeDegrees);
}

float CrossTexture::at(float nx, float ny, float distance) const {
  float angle = distance == 0.0f ? 0.0f : arcTangent2(ny, nx);
  if (angle < 0.0f) angle += 2.0f * kPi;
  const float degrees = angle * 180.0f / kDrawingPi;
  float w = std::min(stripe(distance / 2.0f, degrees), stripe(-distance / 2.0f, degrees));
  if (distance > 0.0f) w = w * distance;
  return 25.5f * (5.0f + std::max(0.0f, 10.0f - w));
}

/// How far the angle is from the stripe that has wound by `spiral`.
float CrossTexture::stripe(float spiral, float degrees) const {
  const auto withinSector = [this](float a) { return a - sector_ * std::trunc(a / sector_); };
  float angle = withinSector(degrees);
  float wound = spiral * textureScale_;
  if (wound < 0.0f) wound += 360.0f;
  wound = withinSector(wound);
  const float half = sector_ / 2.0f;
  if (wound < half && half < angle) {
    angle -= sector_;
  } else if (angle < half && half < wound) {
    wound -= sector_;
  }
  return 0.1f * std::fabs(wound - angle);
}

}  // namespace brisel
