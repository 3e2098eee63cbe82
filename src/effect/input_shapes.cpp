#include "effect/input_shapes.h"

#include <new>

#include "engine/source.h"

namespace brisel {

void InputShapes::forget() {
  map_.reset();
  contour_ = {};
  hasContour_ = false;
}

const float* InputShapes::intensityMap(const ImageView& input, FrameSize frame) {
  if (map_ == nullptr || mapSize_ != frame) {
    map_ = buildSourceIntensityMap(input, frame);
    mapSize_ = frame;
  }
  return map_.get();
}

const ContourEmitter* InputShapes::contour(const ImageView& input, FrameSize frame,
                                           float resolutionScale) try {
  if (hasContour_ && contourSize_ == frame && contourScale_ == resolutionScale) return &contour_;
  hasContour_ = false;
  const auto mask = buildAlphaMask(input, frame);
  contour_ = buildContourEmitter(
      {mask.get(), frame.width, frame.height, frame.width, PixelFormat::Mask8}, resolutionScale);
  contourSize_ = frame;
  contourScale_ = resolutionScale;
  hasContour_ = mask != nullptr;
  return hasContour_ ? &contour_ : nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace brisel
