// Frames of the plug-in, and what the effect itself makes of the same values.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "core/image_view.h"
#include "effect/values.h"
#include "hostkit/openfx/effect.h"

namespace tests {

inline constexpr OfxRectI kFrame{0, 0, 83, 47};
inline constexpr double kStep = 1.0 / 32768;  // of the effect's 16 bits

/// The built plug-in, which stays loaded.
OfxPlugin& thePlugin();

/// A host that fails the test when the plug-in does what it may not.
struct StrictHost : hostkit::OpenFxHost {
  ~StrictHost();
};

/// Every pixel of its own color, wherever the bounds lie. Alpha is full, but where `hasAlpha`. What
/// is premultiplied is what is not, multiplied.
hostkit::OpenFxPicture pattern(const hostkit::PictureKind& kind, const OfxRectI& bounds = kFrame,
                               bool rowsGoDown = false, bool hasAlpha = false);

/// Sets parameters to values at which all about the stars varies from frame to frame.
void makeBusy(hostkit::OpenFxEffect& effect);

/// The effect's values that makeBusy means, for frames of kFrame.
brisel::Values busyValues();

/// A frame over the source.
OfxStatus renderFrame(hostkit::OpenFxEffect& effect, double time,
                      const hostkit::OpenFxPicture& source, hostkit::OpenFxPicture& output);

/// Frames 0 .. count - 1 by the effect itself over a picture of straight or no alpha, as the effect
/// has them: alpha first, the top row first. 16 bits are 0 to 32768.
using EffectFrame = std::vector<double>;  // channels, 0 to 1
EffectFrame effectFrame(const std::function<brisel::Values(int frame)>& valuesAt, int frame,
                        const hostkit::OpenFxPicture* source, bool isDeep);

/// A channel of it in the host's place and order.
double channelOf(const EffectFrame& frame, int x, int y, std::size_t channel);

/// Fails the test unless the picture is that frame, `above` added, within `tolerance` of a channel.
void expectFrame(const hostkit::OpenFxPicture& picture, const EffectFrame& expected,
                 double tolerance, double above = 0);

/// A frame of the busy effect rendered by an instance of its own.
std::vector<std::uint8_t> freshFrame(int frame);

}  // namespace tests
