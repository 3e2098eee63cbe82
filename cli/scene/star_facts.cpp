#include "cli/scene/star_facts.h"

#include <algorithm>

#include "effect/settings.h"

namespace cli {
namespace {

void addValues(const brisel::Values& values, Digest& digest) {
  for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
    if (index == brisel::kMixWithOriginal) continue;  // is about pixels alone
    digest.add(values[index].number);
    digest.add(values[index].y);
  }
}

void addShape(const scene::Mask& mask, double frame, Digest& digest) {
  const scene::MaskShape shape = scene::shapeAt(mask, frame);
  digest.add(mask.inverted);
  digest.add(shape.closed);
  digest.add(shape.vertices.size());
  for (const auto& [point, in, out] : shape.vertices) {
    for (const double number : {point.x, point.y, in.x, in.y, out.x, out.y}) digest.add(number);
  }
}

std::string sizeOf(FrameSize size) {
  return std::to_string(size.width) + "x" + std::to_string(size.height);
}

// The same wherever the input lies and whatever it is called.
std::string inputOf(const ScenePlan& plan) {
  if (!plan.input) return "none";
  return sizeOf(plan.input->size) + " with " + std::to_string(plan.input->frameCount) +
         " pictures, at " + plan.rate.text() + " per second, in " +
         std::to_string(static_cast<int>(plan.depth)) + " bits, #" + plan.input->fingerprint;
}

}  // namespace

std::string differenceOf(const StarFacts& before, const StarFacts& now) {
  for (const auto& [name, value] : now) {
    const auto other = std::ranges::find(before, name, &StarFact::name);
    const std::string was = other == before.end() ? "unknown" : other->value;
    if (was == value) continue;
    return value.starts_with('#') ? name + " have changed"
                                  : name + " was " + was + " and is " + value;
  }
  return {};
}

StarPast::StarPast(const ScenePlan& plan, const std::deque<LayerEffect>& layers)
    : plan_(plan), layers_(layers), values_(layers.size()) {}

StarFacts StarPast::factsBefore(int frame) {
  // The steps of the pre-roll are as at frame 0.
  while (counted_ < std::max(frame, 1)) addFrame(counted_++);
  const auto version = layers_.front().session().report().version;
  StarFacts facts = {{"effect", versionText(version)},
                     {"size", sizeOf(plan_.layer)},
                     {"scale", "1/" + std::to_string(plan_.reduction)},
                     {"pre-roll", std::to_string(plan_.scene.preroll)},
                     {"input", readsInput_ ? inputOf(plan_) : "not read"}};
  for (std::size_t i = 0; i < values_.size(); ++i) {
    facts.push_back({"values of layer " + std::to_string(i + 1), "#" + values_[i].text()});
  }
  return facts;
}

void StarPast::addFrame(int frame) {
  for (std::size_t i = 0; i < values_.size(); ++i) {
    const scene::LayerValues& layer = layers_[i].layer();
    const brisel::Values values = layer.at(frame);
    readsInput_ = readsInput_ || brisel::starsReadInput(values);
    addValues(values, values_[i]);
    if (layer.mask()) addShape(*layer.mask(), frame, values_[i]);
  }
}

}  // namespace cli
