// The places that emitters find in the input.
#pragma once

#include "core/geometry.h"
#include "core/image_view.h"
#include "engine/contour_emitter.h"
#include "platform/page_array.h"

namespace brisel {

/// Found when they are first asked for, and kept while the input stays the same: finding them takes
/// far longer than a step. Belongs to one thread at a time.
class InputShapes {
 public:
  /// The input has other pixels from now on.
  void forget();

  /// As buildSourceIntensityMap.
  const float* intensityMap(const ImageView& input, FrameSize frame);

  /// The contour of the input's alpha channel; null when there is no memory for it.
  const ContourEmitter* contour(const ImageView& input, FrameSize frame, float resolutionScale);

 private:
  FrameSize mapSize_{};
  PageArray<float> map_;
  FrameSize contourSize_{};
  float contourScale_ = 0.0f;
  bool hasContour_ = false;
  ContourEmitter contour_;
};

}  // namespace brisel
