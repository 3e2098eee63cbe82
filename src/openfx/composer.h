// One frame of the host's in the making: stars over the clip, pixel for pixel in the host's layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/image_view.h"
#include "core/options.h"
#include "openfx/host_image.h"
#include "openfx/pixel_rows.h"

namespace brisel::openfx {

/// Memory that frames of an instance share, one after the other.
struct FrameBuffers {
  std::vector<std::uint8_t> stars;
  std::vector<std::uint8_t> input;  // the clip for the stars that read it
  std::vector<std::uint8_t> below;  // the clip and the layers so far, where there are several;
                                    // floats are straight
};

/// What a host wants. Rows of the window with `firstRow` modulo `rowStep` are written, and no
/// others: what lies outside the frame is transparent black there.
struct FrameTask {
  OfxRectI frame;   // the whole picture
  OfxRectI window;  // of the output, which has its pixels
  HostPixels output;
  HostPixels source;  // of the output's depth; without data there is none
  int firstRow = 0;
  int rowStep = 1;
};

/// Either pass(); or beginAlone(), and put() while or after the only layer's stars are drawn; or
/// begin(), add() after the stars of each of several layers and end(). Pixels without a star are
/// the clip's to the bit, with one layer. What begins throws std::bad_alloc.
class Composer {
 public:
  Composer(const FrameTask& task, FrameBuffers& buffers);

  FrameSize size() const { return size_; }

  /// Where the effect draws the stars of a layer over nothing, once it has begun.
  MutableImageView stars() const { return stars_; }

  /// The clip as the effect reads it; there is none before fillInput(), which throws
  /// std::bad_alloc.
  ImageView input() const { return input_; }
  void fillInput();

  void pass() const;

  void beginAlone();
  /// For rows of the stars from `begin` to before `end`, which may be any threads' own.
  void put(FloatMix mix, std::int32_t begin, std::int32_t end) const;

  void begin();
  void add(FloatMix mix);
  void end() const;

 private:
  bool isFloat() const { return task_.output.layout.depth == Depth::Float; }
  bool canDrawInOutput() const;
  MutableImageView viewIn(std::vector<std::uint8_t>& buffer) const;
  std::uint8_t* below(std::int32_t column, std::int32_t row) const;
  template <class Function>
  void eachRow(const OfxRectI& window, const Function& writeRow) const;
  template <class Function>
  void splitBySource(const OfxRectI& row, const Function& function) const;
  template <class Function>
  void eachSourceRow(const Function& function) const;
  void copyRun(const std::uint8_t* from, const PixelLayout& layout, int count,
               const PixelLayout& toLayout, std::uint8_t* to) const;

  FrameTask task_;
  FrameBuffers& buffers_;
  FrameSize size_;
  const PixelRows& rows_;
  std::ptrdiff_t starBytes_;  // of a pixel
  MutableImageView stars_{};
  ImageView input_{};
};

}  // namespace brisel::openfx
