// The frames that a wild host asks for.
#include <algorithm>
#include <cstdlib>

#include "effect/parameters.h"
#include "target.h"
#include "wild_layer.h"

namespace fuzz {

using hostkit::Depth;
using hostkit::World;

/// Whether what is to be painted is little enough. Counts it.
bool WildLayer::canAfford() {
  constexpr A_long kMostStars = 100;
  hostkit::ParameterSet& parameters = session_.parameters();
  if (parameters.count() < brisel::kParamCount) return true;  // no star is
  A_long& stars = parameters.value(brisel::kMaximumNumberOfStars).u.sd.value;
  stars = std::min(stars, kMostStars);
  const std::int64_t rays = parameters.value(brisel::kRaysCount).u.sd.value;
  const std::int64_t spread = parameters.value(brisel::kRaysCountDispersion).u.fd.value;
  work_.mostRays = std::max(
      work_.mostRays, std::clamp<std::int64_t>(rays, 0, 1000) + 15 * std::abs(spread) / 6'553'600);
  work_.left -= kMostStars * (1 + work_.mostRays / 8);
  return work_.left > 0;
}

/// Of any size that is small, also none.
World WildLayer::picture() {
  const Depth depth = bytes_.flag() ? Depth::Bits16 : Depth::Bits8;
  const A_long padding = bytes_.integerIn(0, 9) * (depth == Depth::Bits16 ? 2 : 1);
  const A_long width = bytes_.integerIn(0, 40);
  const A_long height = bytes_.integerIn(0, 30);
  World world(width, height, depth, {.rowPadding = padding});
  const unsigned seed = bytes_.integer<std::uint8_t>();
  unsigned at = 0;
  for (std::uint8_t& byte : world.bytes()) {
    byte = static_cast<std::uint8_t>((++at * seed) >> 2);
    if (depth == Depth::Bits16 && at % 2 == 0) byte &= 0x7F;  // on the scale
  }
  return world;
}

/// Makes the world claim what cannot be, or less than it has.
void WildLayer::spoil(PF_EffectWorld& world) {
  const A_long any = bytes_.integer<A_long>();
  switch (bytes_.integerIn(0, 6)) {
    case 0:
      world.data = nullptr;
      break;
    case 1:
      world.width = any;  // more than its rows hold, or less
      break;
    case 2:
      world.rowbytes = std::min(any, world.rowbytes) & ~1;
      break;
    case 3:
      world.height = std::min(any, world.height);
      break;
    case 4:
      if (world.rowbytes % 2 == 0) world.world_flags ^= PF_WorldFlag_DEEP;
      break;
    case 5:
      world.world_flags ^= any & ~PF_WorldFlag_DEEP;
      break;
    default:
      world.extent_hint = {any, any, -1, any};
  }
}

void WildLayer::render() {
  if (!canAfford()) return;
  World input = picture();
  World output = picture();
  const std::vector<std::uint8_t> before(input.bytes().begin(), input.bytes().end());
  const unsigned oddities = bytes_.integer<std::uint8_t>();
  const auto scale = [&] { return PF_RationalScale{1, 1 + (oddities & 1u)}; };
  session_.prepareFrame(
      input, output,
      {.frame = bytes_.integerIn(0, 20), .downsampleX = scale(), .downsampleY = scale()});
  PF_InData& in = session_.inData();
  if ((oddities & 2) != 0) in.current_time = bytes_.integer<A_long>();
  if ((oddities & 4) != 0) in.width = bytes_.integer<A_long>();
  if ((oddities & 8) != 0) in.quality = bytes_.integer<A_long>();
  PF_EffectWorld& given = session_.parameters().value(0).u.ld;
  if ((oddities & 16) != 0) spoil(given);
  if ((oddities & 32) != 0) spoil(output.record());
  const bool isInPlace = (oddities & 64) != 0;
  if (isInPlace) given = output.record();

  const auto all = session_.parameters().pointersAt(in.downsample_x, in.downsample_y);
  std::vector<PF_ParamDef*> params(all, all + session_.parameters().count());
  if ((oddities & 128) != 0) {
    params[static_cast<std::size_t>(bytes_.integerIn(0, 255)) % params.size()] = nullptr;
  }
  callWith(PF_Cmd_RENDER, params.data(), &output.record(), nullptr);
  require(output.guardsIntact(), "nothing is written outside of the output");
  require(input.guardsIntact() && std::ranges::equal(before, input.bytes()),
          "the input is not written");
}

}  // namespace fuzz
