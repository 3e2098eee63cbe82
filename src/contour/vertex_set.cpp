#include "contour/vertex_set.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <new>

namespace brisel {
namespace {

constexpr float kReach = 0.01f;
constexpr std::int64_t kStepsPerPixel = 4;

/// A pixel's bytes: four vertices along its upper edge, three down its left edge, and whether any
/// stray lies in it.
constexpr std::size_t kBytesPerPixel = 8;
constexpr std::size_t kFirstOnLeftEdge = 4;
constexpr std::size_t kStrayMark = 7;

/// Stored with the flags of a lattice vertex: it exists.
constexpr VertexFlags kVertexPresent = 8;

float inSteps(float coordinate) {
  return coordinate * static_cast<float>(kStepsPerPixel);
}

float fromSteps(float steps) {
  return steps / static_cast<float>(kStepsPerPixel);
}

std::int32_t pixelAt(float coordinate, std::int32_t count) {
  return static_cast<std::int32_t>(std::clamp<double>(coordinate, 0.0, count));
}

}  // namespace

CVertexSet::CVertexSet(std::int32_t width, std::int32_t height) : width_(width), height_(height) {
  const std::size_t pixels =
      (static_cast<std::size_t>(width) + 1) * (static_cast<std::size_t>(height) + 1);
  lattice_ = allocatePageArray<VertexFlags>(pixels * kBytesPerPixel);
  if (!lattice_) throw std::bad_alloc();
}

CMeshVertex CVertexSet::CornerVertex(Corner corner) {
  VertexFlags& flags = lattice_[CellIndex(corner.row, corner.column)];
  flags |= kVertexPresent;
  return {static_cast<float>(corner.column), static_cast<float>(corner.row), &flags};
}

CMeshVertex CVertexSet::Unify(float x, float y) {
  const Place place{x, y};
  VertexFlags* flags = LatticeFlags(place);
  if (flags != nullptr && (*flags & kVertexPresent)) return {x, y, flags};
  if (const auto equal = FindEqual(place)) return *equal;
  if (flags == nullptr) return AddStray(place);
  *flags |= kVertexPresent;
  return {x, y, flags};
}

std::size_t CVertexSet::CellIndex(std::int32_t row, std::int32_t column) const {
  return (static_cast<std::size_t>(row) * (static_cast<std::size_t>(width_) + 1) +
          static_cast<std::size_t>(column)) *
         kBytesPerPixel;
}

/// Whether a stray lies in a pixel within reach: otherwise none can equal the place.
bool CVertexSet::IsStrayNear(Place place) const {
  if (strays_.empty()) return false;
  const std::int32_t top = pixelAt(place.y - kReach, height_);
  const std::int32_t bottom = pixelAt(place.y + kReach, height_);
  const std::int32_t left = pixelAt(place.x - kReach, width_);
  const std::int32_t right = pixelAt(place.x + kReach, width_);
  return lattice_[CellIndex(top, left) + kStrayMark] ||
         lattice_[CellIndex(top, right) + kStrayMark] ||
         lattice_[CellIndex(bottom, left) + kStrayMark] ||
         lattice_[CellIndex(bottom, right) + kStrayMark];
}

/// The byte of the vertex at exactly this place, or null when the lattice has none there.
VertexFlags* CVertexSet::LatticeFlags(Place place) const {
  const bool inside = place.x >= 0 && place.x <= static_cast<float>(width_) && place.y >= 0 &&
                      place.y <= static_cast<float>(height_);
  if (!inside) return nullptr;
  const auto xStep = static_cast<std::int64_t>(inSteps(place.x));
  const auto yStep = static_cast<std::int64_t>(inSteps(place.y));
  const bool onSteps = static_cast<float>(xStep) == inSteps(place.x) &&
                       static_cast<float>(yStep) == inSteps(place.y);
  const std::int64_t xRest = xStep % kStepsPerPixel, yRest = yStep % kStepsPerPixel;
  if (!onSteps || (xRest != 0 && yRest != 0)) return nullptr;
  const std::int64_t slot = yRest == 0 ? xRest : kFirstOnLeftEdge - 1 + yRest;
  return &lattice_[CellIndex(static_cast<std::int32_t>(yStep / kStepsPerPixel),
                             static_cast<std::int32_t>(xStep / kStepsPerPixel)) +
                   static_cast<std::size_t>(slot)];
}

/// The one vertex of the lattice that may equal `place`: its steps are far longer than the reach.
std::optional<CMeshVertex> CVertexSet::LatticeVertexNear(Place place) const {
  const Place step{fromSteps(std::round(inSteps(place.x))),
                   fromSteps(std::round(inSteps(place.y)))};
  VertexFlags* flags = LatticeFlags(step);
  if (flags == nullptr || !(*flags & kVertexPresent)) return std::nullopt;
  return CMeshVertex{step.x, step.y, flags};
}

/// Whether the lattice has a vertex between two places in order, which are equal but for the
/// reach: at most one of its columns lies between them.
bool CVertexSet::LatticeVertexBetween(Place before, Place after) const {
  const float column = fromSteps(std::ceil(inSteps(before.x)));
  if (column > after.x) return false;
  const auto wholeSteps = [](float steps) { return static_cast<std::int64_t>(steps); };
  const std::int64_t first = column == before.x ? wholeSteps(std::floor(inSteps(before.y))) + 1 : 0;
  const std::int64_t end = column == after.x ? wholeSteps(std::ceil(inSteps(after.y)))
                                             : (std::int64_t{height_} + 1) * kStepsPerPixel;
  for (std::int64_t step = first; step < end; ++step) {
    const VertexFlags* flags = LatticeFlags({column, fromSteps(static_cast<float>(step))});
    if (flags != nullptr && (*flags & kVertexPresent)) return true;
  }
  return false;
}

/// The vertex after `place` in order, or else the one before it, if it equals `place`.
std::optional<CMeshVertex> CVertexSet::FindEqual(Place place) {
  const std::optional<CMeshVertex> latticeVertex = LatticeVertexNear(place);
  if (!latticeVertex && !IsStrayNear(place)) return std::nullopt;

  std::optional<CMeshVertex> before, after;
  const auto nextStray = strays_.lower_bound(place);
  if (nextStray != strays_.end()) {
    after = {nextStray->first.x, nextStray->first.y, &nextStray->second};
  }
  if (nextStray != strays_.begin()) {
    const auto stray = std::prev(nextStray);
    before = {stray->first.x, stray->first.y, &stray->second};
  }
  if (latticeVertex) {
    const Place there{latticeVertex->x, latticeVertex->y};
    if (place < there) {
      if (!after || there < Place{after->x, after->y}) after = latticeVertex;
    } else {
      if (!before || Place{before->x, before->y} < there) before = latticeVertex;
    }
  }
  const auto equalsPlace = [&](const std::optional<CMeshVertex>& vertex) {
    return vertex && std::fabs(vertex->x - place.x) < kReach &&
           std::fabs(vertex->y - place.y) < kReach;
  };
  if (equalsPlace(after) && !LatticeVertexBetween(place, {after->x, after->y})) return after;
  if (equalsPlace(before) && !LatticeVertexBetween({before->x, before->y}, place)) return before;
  return std::nullopt;
}

CMeshVertex CVertexSet::AddStray(Place place) {
  lattice_[CellIndex(pixelAt(place.y, height_), pixelAt(place.x, width_)) + kStrayMark] = 1;
  VertexFlags& flags = strays_[place];
  return {place.x, place.y, &flags};
}

}  // namespace brisel
