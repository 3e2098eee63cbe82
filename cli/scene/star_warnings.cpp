#include "cli/scene/star_warnings.h"

#include <algorithm>
#include <limits>

#include "cli/support/errors.h"

namespace cli {
namespace {

enum class Trait { Path, Size, Color };

// A value that takes a trait of stars from the input, and what comes of it without one.
struct InputUse {
  Trait trait;
  brisel::ParamIndex parameter;
  const char* value;  // a popup's item, or "true"
  const char* withoutInput;
};
constexpr InputUse kInputUses[] = {
    {Trait::Path, brisel::kStandardPath, "Source as raster mask",
     "nothing is bright enough for a star"},
    {Trait::Path, brisel::kStandardPath, "Contour alpha channel",
     "stars follow the border of the frame"},
    {Trait::Size, brisel::kSizeDependOnSource, "true", "stars have no size"},
    {Trait::Color, brisel::kColorSchema, "Source", "stars start out black"}};

// None can be seen when one of these is 0.
constexpr brisel::ParamIndex kNeeded[] = {brisel::kIntensity, brisel::kMaximumNumberOfStars,
                                          brisel::kCompletenessOfPath, brisel::kSize,
                                          brisel::kValue};

std::string label(brisel::ParamIndex index) {
  return inQuotes(brisel::parameterSpec(index).label);
}

// What a popup shows; nothing when a preset has set it to an item that there is not.
std::string itemOf(const brisel::Values& values, brisel::ParamIndex index) {
  const std::vector<std::string> items = scene::itemsOf(brisel::parameterSpec(index));
  const auto item = static_cast<std::size_t>(values[index].number - 1);
  return item < items.size() ? items[item] : "";
}

bool hasEffect(const InputUse& use, const LayerEffect& layer) {
  const brisel::Values& values = layer.values();
  switch (use.trait) {
    case Trait::Size:
      return values[use.parameter].number != 0 &&
             itemOf(values, brisel::kType) != "Dots";  // always one pixel
    case Trait::Path:
      return itemOf(values, use.parameter) == use.value && !layer.layer().mask();
    default:
      return itemOf(values, use.parameter) == use.value;
  }
}

std::string sizeText(FrameSize size) {
  return std::to_string(size.width) + "x" + std::to_string(size.height);
}

// The box around its vertices and their handles at frame 0 does.
bool liesOutside(const scene::Mask& mask, FrameSize layer) {
  constexpr double kFar = std::numeric_limits<double>::max();
  double left = kFar, top = kFar, right = -kFar, bottom = -kFar;
  for (const auto& [point, in, out] : scene::shapeAt(mask, 0).vertices) {
    left = std::min({left, point.x, in.x, out.x});
    right = std::max({right, point.x, in.x, out.x});
    top = std::min({top, point.y, in.y, out.y});
    bottom = std::max({bottom, point.y, in.y, out.y});
  }
  return right < 0 || bottom < 0 || left >= layer.width || top >= layer.height;
}

std::string likeliestReason(const ScenePlan& plan, const LayerEffect& layer) {
  const brisel::Values& values = layer.values();
  for (const brisel::ParamIndex index : kNeeded) {
    if (values[index].number == 0) return label(index) + " is 0";
  }
  if (const auto& mask = layer.layer().mask(); mask && liesOutside(*mask, plan.layer)) {
    return "the mask lies outside the frame of " + sizeText(plan.layer) + " pixels";
  }
  if (plan.input) {
    for (const InputUse& use : kInputUses) {
      if (!hasEffect(use, layer)) continue;
      return label(use.parameter) + " is " + inQuotes(use.value) +
             ", and the input may be too dark or too transparent for that";
    }
  }
  if (plan.reduction > 1 && itemOf(values, brisel::kOscillation) != "None") {
    return label(brisel::kAmplitudeOfOscillation) +
           " does not shrink with --scale, so they may swing outside the frame";
  }
  return std::string("they may be too small, too dark, outside the frame, ") +
         (plan.input ? "lost on a bright input, " : "") + "or not born yet (then --preroll helps)";
}

}  // namespace

std::vector<std::string> starWarnings(const ScenePlan& plan, const LayerEffect& layer,
                                      bool starsSeen) {
  std::vector<std::string> warnings;
  for (const InputUse& use : kInputUses) {
    if (plan.input || !hasEffect(use, layer)) continue;
    warnings.push_back(label(use.parameter) + " is " + inQuotes(use.value) +
                       ", but there is no input, so that " + use.withoutInput +
                       "; give one with -i");
  }
  if (!starsSeen && warnings.empty()) {
    warnings.push_back("no frame shows a star: " + likeliestReason(plan, layer));
  }
  return warnings;
}

}  // namespace cli
