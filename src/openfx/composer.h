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
  std::vector<std::uint8_t> below;  // the clip and the layers so far, where there are several
  std::vector<std::uint8_t> run;    // of pixels in a row
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

/// Either pass(); or put() after stars are drawn on the only layer; or begin(), add() after each of
/// several layers and end(). Pixels without a star are the clip's to the bit, with one layer.
class Composer {
 public:
  Composer(const FrameTask& task, FrameBuffers& buffers);  // throws std::bad_alloc

  FrameSize size() const { return size_; }

  /// Where the effect draws its stars over nothing.
  MutableImageView stars() const { return viewOf(buffers_.stars); }

  /// The clip as the effect reads it; its pixels are there after fillInput().
  ImageView input() const { return viewOf(buffers_.input); }
  void fillInput();

  void pass() const;
  void put(FloatMix mix) const;

  void begin() const;
  void add(FloatMix mix) const;
  void end() const;

 private:
  bool isFloat() const { return task_.output.layout.depth == Depth::Float; }
  MutableImageView viewOf(std::vector<std::uint8_t>& buffer) const;
  float* floatsBelow(std::int32_t row) const;
  template <class Function>
  void eachRow(const Function& writeRow) const;
  template <class Function>
  void splitBySource(const OfxRectI& row, const Function& function) const;
  void copyUnder(const std::uint8_t* source, int count, std::uint8_t* output) const;
  void mixOver(std::uint8_t* stars, const std::uint8_t* source, int count, FloatMix mix,
               std::uint8_t* output) const;
  template <class Channel>
  void putRun(const std::uint8_t* source, std::uint8_t* stars, int count, FloatMix mix,
              std::uint8_t* output) const;

  FrameTask task_;
  FrameBuffers& buffers_;
  FrameSize size_;
  bool isInputFilled_ = false;
};

}  // namespace brisel::openfx
