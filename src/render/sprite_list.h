// The sprites of a frame in the order in which they are painted, and which rows each of them may
// touch.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <variant>
#include <vector>

#include "core/geometry.h"
#include "render/raster/grid.h"
#include "render/sprites/ray_shape.h"
#include "render/sprites/specs.h"

namespace brisel {

/// Rays as the list keeps them. The shapes of those that lie in several bands are built once for
/// all: `count` of the list's, from `first` on. Others have none.
struct ListedRays {
  RaySpec spec;
  std::uint32_t first = 0, count = 0;
};

/// A sprite in the list.
struct ListedSprite {
  std::variant<DotSpec, GlowSpec, BlicsSpec, CrossSpec, ListedRays> spec;
  PixelBox box;  // of glow, blics and cross, where it is known
};

/// Takes sprites as they are composed. The frame is divided into bands of rows, and each band knows
/// its own sprites, so that bands can be painted one by one, or by several threads at once. Sprites
/// that cannot touch the frame are not kept.
///
/// Whatever the number of sprites, the list holds a bounded portion of them: when it is full, it
/// has them painted and starts anew. Its memory stays below kMostBytes, and kMostBytesPerBand for
/// each band.
class SpriteList {
 public:
  static constexpr std::size_t kMostSprites = 4096;
  static constexpr std::size_t kMostRays = 2048;
  static constexpr std::size_t kMostBytes = std::size_t{1} << 20;
  static constexpr std::size_t kMostBytesPerBand = 640;

  /// Starts a frame, with no sprites. `rowsPerBand` is a power of two. `whenFull` is to paint the
  /// sprites.
  void begin(FrameSize frame, std::int32_t rowsPerBand, std::function<void()> whenFull);

  /// A failure, for want of memory or of `whenFull`, is kept and not thrown: whoever composes takes
  /// random numbers on the way and must come to the end. What is added from then on is dropped.
  void add(const DotSpec& dot);
  void add(const GlowSpec& glow);
  void add(const BlicsSpec& blics);
  void add(const CrossSpec& cross);
  void add(const RaySpec& rays);
  /// Throws the failure that begin() or add() met, if any.
  void throwFailure();

  /// The sprites in parts of which different threads may build the rays.
  std::int32_t partCount() const;
  void buildRaysIn(std::int32_t part);

  /// The shapes that buildRaysIn() built; null where there are none.
  const RayShape* shapesOf(const ListedRays& rays) const {
    return rays.count != 0 ? shapes_.data() + rays.first : nullptr;
  }

  std::int32_t bandCount() const { return static_cast<std::int32_t>(bands_.size()); }
  IndexRange rowsOf(std::int32_t band) const;
  /// Those of the band's rows that sprites may touch; an empty range within the band without any.
  IndexRange touchedRowsOf(std::int32_t band) const;

  /// All bands in the order in which threads had best take them up, so that none is left with much
  /// at the end.
  std::vector<std::int32_t> bandsDearestFirst() const;

  /// Visits the band's sprites, in order, as visit(sprite).
  template <class Visit>
  void forEachIn(std::int32_t band, const Visit& visit) const {
    const Band& marks = bands_[static_cast<std::size_t>(band)];
    for (std::size_t word = 0; word * 64 < sprites_.size(); ++word) {
      for (std::uint64_t left = marks.sprites[word]; left != 0; left &= left - 1) {
        visit(sprites_[word * 64 + static_cast<std::size_t>(std::countr_zero(left))]);
      }
    }
  }

  std::size_t memoryBytes() const;  // at present

 private:
  static constexpr std::size_t kPart = 64;  // sprites

  struct Band {
    IndexRange touched;
    std::int64_t work;                                     // roughly, in pixels
    std::array<std::uint64_t, kMostSprites / 64> sprites;  // a bit each
  };

  template <class Spec>
  void keep(const Spec& spec, IndexRange rows, const PixelBox& box = {});
  template <class Spec>
  void keepOnGrid(const Spec& spec);
  void paintNow();
  void resetBands();
  /// Keeps what `action` throws as the frame's failure.
  template <class Action>
  void attempt(Action action);

  FrameSize frame_{};
  int rowShift_ = 0;  // rows of a band, as a power of two
  std::function<void()> whenFull_;
  std::vector<ListedSprite> sprites_;
  std::vector<RayShape> shapes_;  // shapeCount_ of them in use; kept, since making them takes time
  std::uint32_t shapeCount_ = 0;
  std::vector<Band> bands_;
  std::exception_ptr failure_;  // of this frame; from then on nothing is kept
};

}  // namespace brisel
