// The module's entry point, driven by a host with several layers that sends any command with any
// arguments in any order.
#include <array>
#include <optional>

#include "platform/open_document.h"
#include "plugin/module_state.h"
#include "target.h"
#include "wild_layer.h"

namespace brisel {

// In place of the system's: a click on the header opens pages, which is not for a fuzzer.
void openDocument(const char*, void*) {}

}  // namespace brisel

namespace {

/// As when the module is loaded.
void beginAnew() {
  brisel::ModuleState& module = brisel::moduleState();
  module.folders = {};
  module.header = {};
  module.drawing.sprites = {};
  module.drawing.frameSize = {};
  brisel::randomGenerator() = {};
}

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  constexpr int kMostSteps = 40;
  beginAnew();
  Bytes bytes(input);
  Work work;
  std::array<std::optional<WildLayer>, 2> layers;
  for (int step = 0; step < kMostSteps && !bytes.empty(); ++step) {
    auto& layer = layers[bytes.flag() ? 1 : 0];
    if (!layer) layer.emplace(bytes, work);
    layer->step();
  }
}
