#include "contour/border_tracer.h"

#include <bit>
#include <limits>
#include <utility>

#include "contour/mesh_builder.h"

namespace brisel {
namespace {

/// No direction yet: it differs from every direction, and the look-ahead treats it as any.
constexpr unsigned kNoDirection = 15;

std::uint8_t without(std::uint8_t code, unsigned direction) {
  return static_cast<std::uint8_t>(code & ~direction);
}

}  // namespace

CBorderTracer::CBorderTracer(const TCRaster<std::uint8_t>& mask, CVertexSet& vertices)
    : mask_(mask), vertices_(vertices), codes_(0, 0, 0) {}

BorderLines CBorderTracer::FindBorderLines() {
  std::int32_t height = 0, width = 0;
  mask_.GetSize(&height, &width);
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  if (height < 1 || width < 1 || height == kMost || width == kMost ||
      !codes_.Resize(height + 1, width + 1)) {
    throw ContourError("Error! CMeshBuilder::FindBorderLines: Cannot create raster of borders.");
  }
  codeBorders(mask_, codes_);
  for (std::int32_t row = 0; row <= height; ++row) {
    const std::uint8_t* codes = codes_.Row(row);
    for (std::int32_t column = 0; column <= width; ++column) {
      const unsigned code = codes[column];
      if (code != 0 && code != kJunction) TraceLine({row, column}, code);
    }
  }
  return std::move(found_);
}

void CBorderTracer::TraceLine(Corner start, unsigned startCode) {
  line_ = {};
  before_.clear();
  after_.clear();
  bool traced = TraceDirection(true, kOutsideLabel, start);
  if (!(startCode & kJunction) && !line_.closed) {
    traced = traced && TraceDirection(false, line_.leftLabel, start);
  }
  if (!traced) {
    throw ContourError("Error! CMeshBuilder::FindBorderLines: Cannot trace line.");
  }
  FinishLine();
}

/// Follows the border from `start` to a junction or back to `start`. Returns false when no edge
/// with `label` on its right leaves `start`, or when the border breaks off.
bool CBorderTracer::TraceDirection(bool forward, std::uint8_t label, Corner start) {
  unsigned direction = 0;
  for (unsigned candidate : kDirections) {
    if ((CodeAt(start) & candidate) &&
        (label == kOutsideLabel || rightLabel(mask_, start, candidate) == label)) {
      direction = candidate;
      break;
    }
  }
  if (direction == 0) return false;
  if (label == kOutsideLabel && forward) {
    label = line_.rightLabel = rightLabel(mask_, start, direction);
    line_.leftLabel = leftLabel(mask_, start, direction);
  }

  Corner place = start;
  unsigned previous = kNoDirection;
  for (;;) {
    if (direction != previous) AddVertex(forward, place);
    const unsigned beforePrevious = previous;
    previous = direction;

    std::uint8_t& left = CodeAt(place);
    left = without(left, direction);
    place = nextCorner(place, direction);
    std::uint8_t& code = CodeAt(place);
    code = without(code, oppositeDirection(direction));

    if ((code & kJunction) || place == start) {
      AddVertex(forward, place);
      return true;
    }
    if (code == 0) return false;
    direction =
        std::has_single_bit(code) ? code : LookAhead(place, label, previous | beforePrevious);
  }
}

/// Where several edges go on: the one that, with the edge after it, keeps `label` on the right and
/// deviates least from the recent directions.
unsigned CBorderTracer::LookAhead(Corner place, std::uint8_t label, unsigned recent) const {
  int best = std::numeric_limits<int>::max();
  unsigned chosen = 0;
  const unsigned code = codes_.GetCell(place.row, place.column);
  for (unsigned first : kDirections) {
    if (!(code & first) || rightLabel(mask_, place, first) != label) continue;
    const Corner next = nextCorner(place, first);
    const unsigned nextCode = codes_.GetCell(next.row, next.column);
    for (unsigned second : kDirections) {
      if (!(nextCode & second) || rightLabel(mask_, next, second) != label) continue;
      const int score = std::popcount(recent ^ (first | second));
      if (score < best) {
        best = score;
        chosen = first;
      }
    }
  }
  if (chosen == 0) throw ContourError("Error! CMeshBuilder::TraceDirection: Cannot trace line.");
  return chosen;
}

/// Adds a corner at the line's end or, backward, at its front. A line that reaches its other end
/// is closed; the corner it already ends with is not repeated.
void CBorderTracer::AddVertex(bool forward, Corner corner) {
  vertices_.CornerVertex(corner);
  if (!after_.empty()) {
    const Corner front = before_.empty() ? after_.front() : before_.back();
    const Corner back = after_.back();
    if (corner == (forward ? front : back)) line_.closed = true;
    if (corner == (forward ? back : front)) return;
  }
  (forward ? after_ : before_).push_back(corner);
}

void CBorderTracer::FinishLine() {
  std::deque<Corner>& corners = found_.corners;
  line_.cornerCount = before_.size() + after_.size();
  corners.insert(corners.end(), before_.rbegin(), before_.rend());
  corners.insert(corners.end(), after_.begin(), after_.end());
  if (!line_.closed) {
    vertices_.CornerVertex(corners[corners.size() - line_.cornerCount]).Set(kVertexFixed);
    vertices_.CornerVertex(corners.back()).Set(kVertexFixed);
  }
  found_.lines.push_back(line_);
}

}  // namespace brisel
