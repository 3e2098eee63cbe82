// A slow contour tracer with shared vertices, an ordered vertex set and doubly linked lines, one
// step after the other. It is what the fast tracer is compared with.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "mask.h"

namespace reference {

constexpr std::uint8_t kOutsideLabel = 121;

enum VertexFlag : std::uint32_t { kFixed = 1, kStepMidpoint = 2, kRemove = 4 };

struct Vertex {
  std::uint32_t flags = 0;
  float x = 0, y = 0, z = -10.0f;
};

using VertexRef = std::shared_ptr<Vertex>;

/// Less than 0.01 apart in each coordinate.
bool equal(const Vertex& a, const Vertex& b);

/// By x, then y.
struct Precedes {
  bool operator()(const VertexRef& a, const VertexRef& b) const;
};

class VertexSet {
 public:
  /// The vertex of the set next to (x, y) in order, if it equals (x, y), or else a new one, which
  /// then joins the set.
  VertexRef unify(float x, float y);

 private:
  std::set<VertexRef, Precedes> vertices_;
};

struct Line {
  std::list<VertexRef> points;
  bool closed = false;
  std::uint8_t rightLabel = 0, leftLabel = 0;
};

struct Contour {
  std::string error;                                              ///< empty when none was raised
  std::vector<std::pair<float, float>> points;                    ///< x, y
  std::vector<std::pair<std::uint32_t, std::uint32_t>> segments;  ///< first and last point
};

/// Smooths `line`, resampling it to segments of at most `maxSegmentLength`.
void simplifyLine(Line& line, VertexSet& vertices, float tolerance, int maxSegmentLength);

Contour traceContour(const Mask& mask, float tolerance, int maxSegmentLength);

}  // namespace reference
