#include "effect_frames.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "effect/instance.h"
#include "render/painter.h"

namespace bench {

void renderByEffect(benchmark::State& state, const brisel::ImageView& input) {
  std::vector<std::uint8_t> output(static_cast<std::size_t>(input.rowBytes * input.height));
  brisel::Painter painter;
  brisel::FrameViews views;
  views.output = {output.data(), input.width, input.height, input.rowBytes, input.format};
  views.input = input;
  views.painter = &painter;
  brisel::Values values({input.width, input.height});
  values.setNumber(brisel::kMixWithOriginal, 3);
  brisel::Instance instance;
  int frame = 0;
  for ([[maybe_unused]] auto _ : state) {
    instance.render(values, frame, views);
    frame = (frame + 1) % kClipFrames;
  }
}

}  // namespace bench
