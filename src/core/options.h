// The choices a person makes from the effect's popups, as the engine and the renderer see them. A
// value equals the popup's 1-based item number, except for StarType, which counts from 0. A host
// may hand over a number outside its popup; every switch over these types lets such a value do
// nothing.
#pragma once

#include <cstdint>

namespace brisel {

enum class StandardPath : std::uint8_t {
  Point = 1,
  Bezier,
  Line,
  Polyline,
  Circle,
  SourceAsRasterMask,
  WholeField,
  ContourAlphaChannel
};

enum class Orientation : std::uint8_t {
  Direct = 1,
  Centripetal,
  Perpendicularly,
  PerpendicularlyOpposite,
  PerpendicularlyRandom,
  Along,
  AlongOpposite,
  AddAngle,
  RandomAllDirections
};

enum class TerminateType : std::uint8_t {
  Infinity = 1,
  TimeLimited,
  Fade,
  Explode,
  ExplodeGlow,
  ExplodeSparks,
  Flash,
  FlashGlow,
  Mixt
};

enum class TerminateColorSchema : std::uint8_t { Initial = 1, Custom, Random };

/// Used for the motion of a star and for its angle alike.
enum class Oscillation : std::uint8_t {
  None = 1,
  Swing,
  SwingSynchronous,
  Round,
  RoundSynchronous
};

enum class StarType : std::uint8_t {
  Dots,
  Type1,
  Type2,
  Type3,
  Type4,
  Type5,
  Type6,
  Type7,
  Glow1,
  Glow2,
  Blics,
  Random
};

enum class HaloType : std::uint8_t { None = 1, Simple, Normal, Star, Random };

enum class BlinkType : std::uint8_t { None = 1, Ring, Blink, Rainbow, Random };

enum class ColorSchema : std::uint8_t { Solid = 1, Source };

enum class AddMode : std::uint8_t { Mode1 = 1, Mode2, Mode3 };

enum class MixMode : std::uint8_t { Replace = 1, Normal, Add };

}  // namespace brisel
