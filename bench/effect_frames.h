// The effect by itself, beside which plug-ins are measured.
#pragma once

#include <benchmark/benchmark.h>

#include "core/image_view.h"

namespace bench {

inline constexpr int kClipFrames = 100;  // after which the clip begins anew

/// One frame after the other with the effect's defaults, the stars added to the input.
void renderByEffect(benchmark::State& state, const brisel::ImageView& input);

}  // namespace bench
