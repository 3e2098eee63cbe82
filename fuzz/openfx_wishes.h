// What hosts ask the OpenFX plug-in for: values, times and frames out of an input's bytes.
#pragma once

#include <optional>

#include "bytes.h"
#include "hostkit/openfx/effect.h"

namespace fuzz {

/// Every number there is; half of the time one that a person could have meant.
double anyNumber(Bytes& bytes);

/// What would take long to paint is held to a few stars with few rays; by not-a-number, too, which
/// would leave their number to a scene.
void bound(OfxParamStruct& param);

/// Sets the parameter to what it may be, or to anything, but for what it is bound to.
void setAnything(OfxParamStruct& param, Bytes& bytes);

/// To which no long way leads, wherever setAnything has the stars begin.
double anyTime(Bytes& bytes);

/// A frame that a host asks for.
struct WantedFrame {
  hostkit::OpenFxRequest request;
  std::optional<hostkit::OpenFxPicture> source;
  hostkit::OpenFxPicture output;  // as it is before
};
WantedFrame anyFrame(Bytes& bytes);

}  // namespace fuzz
