#include <array>
#include <vector>

#include "plotter.h"

namespace reference {
namespace {

struct Point {
  float x, y;
};

struct Edge {
  Point start, end;
};

/// How far (x, y) is from the line through p and q.
float distanceFromLine(Point p, Point q, float x, float y) {
  const float a = q.y - p.y;
  const float b = p.x - q.x;
  const float c = -a * p.x - b * p.y;
  const float norm = std::sqrt(a * a + b * b);
  return std::abs(a * x + b * y + c) / (norm == 0 ? 1.0f : norm);
}

float crossing(const Edge& e, float y, bool left) {
  if (std::abs(e.end.y - e.start.y) < 1.0f) {
    return left ? std::min(e.start.x, e.end.x) : std::max(e.start.x, e.end.x);
  }
  return e.start.x + (y - e.start.y) * (e.end.x - e.start.x) / (e.end.y - e.start.y);
}

float coverageBeside(const Edge& e, float x, float y) {
  const float dx = e.end.x - e.start.x;
  const float dy = e.end.y - e.start.y;
  const float along = (x - e.start.x) * dx + (y - e.start.y) * dy;
  if (along >= 0 && along <= dx * dx + dy * dy) {
    return clamp01(1.0f - distanceFromLine(e.start, e.end, x, y) / 2.0f);
  }
  const float toStart = std::sqrt(square(x - e.start.x) + square(y - e.start.y));
  const float toEnd = std::sqrt(square(x - e.end.x) + square(y - e.end.y));
  return clamp01(1.0f - std::min(toStart, toEnd));
}

struct Outline {
  std::vector<Point> corners;
  std::vector<Edge> edges;
  float across;  // the unit of distances across the ray
};

Outline outlineOf(int type, float length, float width) {
  if (type == 1) {
    return {{{-width, 0}, {0, length}, {width, 0}}, {}, std::max(width, 0.0001f)};
  }
  const float bases[] = {width / 2.0f, width / 2.0f, width / 5.0f, width};
  const float tips[] = {width / 2.0f, width / 20.0f, width * 1.5f, width};
  const float w1 = std::max(bases[type - 2], 0.0001f);
  const float w2 = std::max(tips[type - 2], 0.0001f);
  return {{{w1, 0}, {w2, length}, {-w2, length}, {-w1, 0}}, {}, std::max(w1, w2)};
}

void orderEdges(Outline& o) {
  const std::vector<int> triangle = {0, 2, 1};
  const std::vector<int> quad = {0, 1, 2, 3};
  const auto& order = o.corners.size() == 3 ? triangle : quad;
  const auto corner = [&](std::size_t i) {
    return o.corners[static_cast<std::size_t>(order[i % order.size()])];
  };
  std::size_t top = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (corner(i).y >= corner(top).y) top = i;
  }
  for (std::size_t i = 0; i < order.size(); ++i) {
    o.edges.push_back({corner(top + i), corner(top + i + 1)});
  }
}

float shapeIntensity(int type, float u, float v) {
  if (type == 1) {
    const float q = std::min(1.0f, square(v * (1.0f + 0.9f * u)));
    return square(1.0f - q) * square(1.0f - 0.8f * u);
  }
  if (type == 5) {
    const float t = square(1.0f - u);
    return clamp01((v * v + std::max(0.0f, t * t - 0.1f)) * t);
  }
  const float t = square(1.0f - 0.8f * u);
  return t * std::sqrt(v / 2.0f + 1.25f * t);
}

}  // namespace

void Plotter::drawRay(int type, float centreX, float centreY, float length, float width,
                      float angleDegrees, brisel::Hls base, float value) {
  const float a = angleDegrees * kShortPi / 180.0f;
  Outline o = outlineOf(type, length, width);
  for (Point& p : o.corners) {
    p = {p.x * cosine(a) - p.y * sine(a) + centreX, p.x * sine(a) + p.y * cosine(a) + centreY};
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
  }
  orderEdges(o);
  const Point centre = {centreX, centreY};
  std::array<Point, 2> acrossLine = {
      centre, Point{centreX + length * -sine(a), centreY + length * cosine(a)}};
  if (type == 5 && state.currentRandomFactor <= 0.5f) acrossLine = {o.corners[2], o.corners[3]};
  if (type == 5 && state.currentRandomFactor > 0.5f) acrossLine = {o.corners[0], o.corners[1]};

  const auto shade = [&](std::int32_t px, std::int32_t py, float coverage) {
    const float x = real(px);
    const float y = real(py);
    const float u = distanceFromLine(o.corners[0], centre, x, y) / length;
    const float v = distanceFromLine(acrossLine[0], acrossLine[1], x, y) / o.across;
    if (state.rainbowOn) {
      const float p = std::max(0.0f, u - (0.5f - std::min(0.5f, shiftSize() / 5000.0f)));
      const float more = (type == 1 || type == 5 ? 2.0f : 5.0f) * p * shiftSize();
      const float less = type == 1   ? 4.0f * (p * p) * shiftSize()
                         : type == 5 ? 4.0f * p * shiftSize()
                                     : 0.5f * (p * p) * shiftSize();
      recolour(base, (type == 5 ? p : p * p) * state.rainbowShift,
               std::max(120.0f, real(base.lightness) - less),
               std::min(240.0f, real(base.saturation) + more));
    }
    plotPixel(px, py, clamp01(shapeIntensity(type, u, v) * value) * coverage * fullScale());
  };

  float yMin = o.corners[0].y;
  for (const Point& p : o.corners) yMin = std::min(yMin, p.y);
  std::size_t left = 0;
  std::size_t right = o.edges.size() - 1;
  for (std::int32_t row = toInt(o.edges[0].start.y); real(row) > yMin; --row) {
    const float y = real(row);
    while (y <= o.edges[left].end.y) ++left;
    while (y <= o.edges[right].start.y) --right;
    const Edge& l = o.edges[left];
    const Edge& r = o.edges[right];
    const float xl = crossing(l, y, true);
    const float xr = crossing(r, y, false);
    const std::int32_t firstFull = toInt(settings.highQuality ? xl + 1.0f : xl);
    for (std::int32_t px = firstFull; real(px) <= xr; ++px) shade(px, row, 1.0f);
    if (!settings.highQuality) continue;

    const float bandL = std::max(7.0f, 2.0f * std::abs(xl - crossing(l, y - 1.0f, true)));
    for (std::int32_t px = toInt(xl - bandL); real(px) <= xl; ++px) {
      if (const float c = coverageBeside(l, real(px), y); c != 0) shade(px, row, c);
    }
    const float bandR = std::max(7.0f, 2.0f * std::abs(xr - crossing(r, y - 1.0f, false)));
    for (std::int32_t px = std::max(toInt(xr + 1.0f), firstFull); real(px) <= xr + bandR; ++px) {
      if (const float c = coverageBeside(r, real(px), y); c != 0) shade(px, row, c);
    }
  }
}

void Plotter::drawRayStar(int type, float x, float y, float size, float width, float angleDegrees,
                          float rays, brisel::Rgb color, float value) {
  if (rays <= 0 || size <= 0) return;
  if (type < 1 || type > 5) return;
  pen = color;
  float angle = angleDegrees;
  for (std::int32_t i = 0; real(i) < rays; ++i) {
    drawRay(type, x, y, size, width, angle, brisel::rgbToHls(color), value);
    angle = angle + 360.0f / rays;
  }
}

}  // namespace reference
