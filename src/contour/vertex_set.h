// All vertices of one mask's border lines. A line that makes a vertex where another line has one
// already gets that one, and with it the flags it has gathered.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>

#include "contour/border_codes.h"
#include "platform/page_array.h"

namespace brisel {

using VertexFlags = std::uint8_t;
inline constexpr VertexFlags kVertexFixed = 1;  ///< an anchor that simplification keeps
inline constexpr VertexFlags kVertexStepMidpoint =
    2;                                           ///< in the middle of a one-step notch or bump
inline constexpr VertexFlags kVertexRemove = 4;  ///< marked for removal

/// A vertex of the set, in pixels. Copies share the flags, which live as long as the set.
struct CMeshVertex {
  float x;
  float y;
  VertexFlags* flags;

  bool Has(VertexFlags flag) const { return (*flags & flag) != 0; }
  void Set(VertexFlags added) const { *flags = static_cast<VertexFlags>(*flags | added); }
  void ClearAll() const {
    *flags =
        static_cast<VertexFlags>(*flags & ~(kVertexFixed | kVertexStepMidpoint | kVertexRemove));
  }
};

/// A set ordered by x, then y. Nearly all vertices lie on the edges between pixels, in quarter
/// steps: corners, middles of edges, anchors. Those are bytes of a page array, eight to a pixel,
/// found without a search. The others, made by resampling, are strays in a tree.
class CVertexSet {
 public:
  /// For a mask of `width` by `height` pixels. Throws std::bad_alloc.
  CVertexSet(std::int32_t width, std::int32_t height);

  /// The vertex at a corner of the mask, a new one without flags if need be. New ones may only be
  /// made before the first Unify: until then no other vertex can equal them.
  CMeshVertex CornerVertex(Corner corner);

  /// The vertex of the set that equals (x, y), being less than 0.01 away along x and along y, or
  /// else a new one without flags. As in any search through the order, an equal vertex is only met
  /// next to (x, y): not beyond another one that lies between the two in x but far off in y.
  CMeshVertex Unify(float x, float y);

 private:
  struct Place {
    float x;
    float y;
    bool operator<(const Place& other) const { return x != other.x ? x < other.x : y < other.y; }
  };

  std::size_t CellIndex(std::int32_t row, std::int32_t column) const;
  bool IsStrayNear(Place place) const;
  VertexFlags* LatticeFlags(Place place) const;
  std::optional<CMeshVertex> LatticeVertexNear(Place place) const;
  bool LatticeVertexBetween(Place before, Place after) const;
  std::optional<CMeshVertex> FindEqual(Place place);
  CMeshVertex AddStray(Place place);

  std::int32_t width_;
  std::int32_t height_;
  PageArray<VertexFlags> lattice_;
  std::map<Place, VertexFlags> strays_;
};

}  // namespace brisel
