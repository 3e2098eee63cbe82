#include "cli/scene/star_warnings.h"

#include <algorithm>
#include <limits>

#include "cli/scene/param_values.h"
#include "cli/support/errors.h"
#include "cli/support/numbers.h"

namespace cli {
namespace {

enum class Trait { kPath, kSize, kColor };

// A value that takes a trait of stars from the input, and what comes of it without one.
struct InputUse {
  Trait trait;
  const char* label;
  const char* value;  // a popup's item, or "true"
  const char* withoutInput;
};
constexpr InputUse kInputUses[] = {
    {Trait::kPath, "Standard path", "Source as raster mask", "nothing is bright enough for a star"},
    {Trait::kPath, "Standard path", "Contour alpha channel",
     "stars follow the border of the frame"},
    {Trait::kSize, "Size depend on source", "true", "stars have no size"},
    {Trait::kColor, "Color schema", "Source", "stars start out black"}};

// None can be seen when one of these is 0.
constexpr const char* kNeededNumbers[] = {"Intensity", "Maximum number of stars",
                                          "Completeness of path", "Size", "Value"};

// As a person sees it; empty for a label that the module does not have.
std::string textOf(const hostkit::ParameterSet& parameters, const char* label) {
  const hostkit::Parameter* parameter = parameters.find(label);
  if (parameter == nullptr) return {};
  const PF_ParamDefUnion& u = parameters.value(parameter->index).u;
  switch (parameter->type()) {
    case PF_Param_SLIDER:
      return numberText(u.sd.value);
    case PF_Param_FIX_SLIDER:
      return numberText(u.fd.value / 65536.0);
    case PF_Param_CHECKBOX:
      return u.bd.value != 0 ? "true" : "false";
    case PF_Param_POPUP:
      return parameter->items.at(static_cast<std::size_t>(u.pd.value - 1));
    default:
      return {};
  }
}

bool hasEffect(const InputUse& use, const Layer& layer, const hostkit::ParameterSet& parameters) {
  if (textOf(parameters, use.label) != use.value) return false;
  switch (use.trait) {
    case Trait::kPath:
      return !layer.mask;
    case Trait::kSize:
      return textOf(parameters, "Type") != "Dots";  // always one pixel
    default:
      return true;
  }
}

std::string sizeText(FrameSize size) {
  return std::to_string(size.width) + "x" + std::to_string(size.height);
}

// The box around its vertices and their handles at frame 0 does.
bool liesOutside(const Mask& mask, FrameSize layer) {
  constexpr double kFar = std::numeric_limits<double>::max();
  double left = kFar, top = kFar, right = -kFar, bottom = -kFar;
  for (const PF_PathVertex& v : shapeAt(mask, 0).vertices) {
    left = std::min({left, v.x, v.tan_in_x, v.tan_out_x});
    right = std::max({right, v.x, v.tan_in_x, v.tan_out_x});
    top = std::min({top, v.y, v.tan_in_y, v.tan_out_y});
    bottom = std::max({bottom, v.y, v.tan_in_y, v.tan_out_y});
  }
  return right < 0 || bottom < 0 || left >= layer.width || top >= layer.height;
}

std::string likeliestReason(const ScenePlan& plan, const Layer& layer,
                            const hostkit::ParameterSet& parameters) {
  for (const char* label : kNeededNumbers) {
    if (textOf(parameters, label) == "0") return inQuotes(label) + " is 0";
  }
  if (layer.mask && liesOutside(*layer.mask, plan.layer)) {
    return "the mask lies outside the frame of " + sizeText(plan.layer) + " pixels";
  }
  if (plan.input) {
    for (const InputUse& use : kInputUses) {
      if (!hasEffect(use, layer, parameters)) continue;
      return inQuotes(use.label) + " is " + inQuotes(use.value) +
             ", and the input may be too dark or too transparent for that";
    }
  }
  if (plan.scene.reduction > 1 && textOf(parameters, "Oscillation") != "None") {
    return inQuotes("Amplitude of oscillation") +
           " does not shrink with --scale, so they may swing outside the frame";
  }
  return std::string("they may be too small, too dark, outside the frame, ") +
         (plan.input ? "lost on a bright input, " : "") + "or not born yet (then --preroll helps)";
}

}  // namespace

std::vector<std::string> starWarnings(const ScenePlan& plan, std::size_t index,
                                      const hostkit::ParameterSet& parameters, bool starsSeen) {
  const Layer& layer = plan.scene.layers[index];
  std::vector<std::string> warnings;
  for (const InputUse& use : kInputUses) {
    if (plan.input || !hasEffect(use, layer, parameters)) continue;
    warnings.push_back(inQuotes(use.label) + " is " + inQuotes(use.value) +
                       ", but there is no input, so that " + use.withoutInput +
                       "; give one with -i");
  }
  if (!starsSeen && warnings.empty()) {
    warnings.push_back("no frame shows a star: " + likeliestReason(plan, layer, parameters));
  }
  return warnings;
}

}  // namespace cli
