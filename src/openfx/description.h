// What the plug-in tells a host of itself, its clips and its parameters.
#pragma once

#include "openfx/host.h"

namespace brisel::openfx {

inline constexpr char kPluginIdentifier[] = "corvane.brisel.stars";  // frozen; projects store it
inline constexpr unsigned kPluginMajor = 1;  // rises only when a stored setup looks different
inline constexpr unsigned kPluginMinor = 0;

/// The replies to the two actions. What a host may lack is passed over. Throw std::bad_alloc.
OfxStatus describe(const Host& host, OfxImageEffectHandle descriptor);
OfxStatus describeInContext(const Host& host, OfxImageEffectHandle descriptor,
                            const Properties& arguments);

}  // namespace brisel::openfx
