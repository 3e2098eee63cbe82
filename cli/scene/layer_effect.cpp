#include "cli/scene/layer_effect.h"

#include <utility>

namespace cli {
namespace {

using brisel::ParamKind;

// The instance's first mask.
constexpr PF_PathID kMaskId = 1;

hostkit::MaskShape hostShape(const scene::MaskShape& shape) {
  hostkit::MaskShape result{{}, shape.closed};
  for (const auto& [point, in, out] : shape.vertices) {
    result.vertices.push_back({point.x, point.y, in.x, in.y, out.x, out.y});
  }
  return result;
}

void giveValue(const brisel::Value& value, ParamKind kind, PF_ParamDefUnion& u) {
  switch (kind) {
    case ParamKind::Number:
      u.fd.value = value.number;
      break;
    case ParamKind::WholeNumber:
      u.sd.value = value.number;
      break;
    case ParamKind::Angle:
      u.ad.value = value.number;
      break;
    case ParamKind::Checkbox:
      u.bd.value = value.number;
      break;
    case ParamKind::Popup:
      u.pd.value = value.number;
      break;
    case ParamKind::Color: {
      const brisel::ByteColor color = brisel::toColor(value);
      u.cd.value = {color.alpha, color.red, color.green, color.blue};
      break;
    }
    case ParamKind::Point:
      u.td.x_value = value.number;
      u.td.y_value = value.y;
      break;
    case ParamKind::Mask:
      u.path_d.path_id = value.number != 0 ? kMaskId : 0;
      break;
    default:
      break;
  }
}

}  // namespace

LayerEffect::LayerEffect(SharedModule module, const ScenePlan& plan, std::size_t layer)
    : effect_(std::move(module)),
      layer_(plan.scene, layer, {plan.layer, plan.rate, plan.input.has_value()},
             presetsBeside(effect_.path())),
      values_(plan.layer) {
  session().parameters().resetToDefaults(plan.layer.width, plan.layer.height);
  session().setLayerSize(plan.layer.width, plan.layer.height);
  if (!layer_.mask()) return;
  const auto shapeAtTime = [mask = *layer_.mask(), rate = plan.rate,
                            preroll = plan.scene.preroll](const hostkit::MaskTime& time) {
    return hostShape(scene::shapeAt(mask, std::max(frameAt(time, rate) - preroll, 0.0)));
  };
  session().records().masks.add(shapeAtTime, layer_.mask()->inverted);
}

// Those that have changed alone, since a host asks the effect what that means to its controls.
void LayerEffect::setFrame(double frame) {
  const brisel::Values values = layer_.at(frame);
  for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
    if (values[index] == values_[index]) continue;
    giveValue(values[index], brisel::parameterSpec(index).kind,
              session().parameters().value(index).u);
  }
  values_ = values;
}

std::deque<LayerEffect> layerEffects(const ScenePlan& plan, const std::string& modulePath) {
  const SharedModule module = loadModule(modulePath);
  std::deque<LayerEffect> effects;
  for (std::size_t i = 0; i < plan.scene.layers.size(); ++i) effects.emplace_back(module, plan, i);
  return effects;
}

double frameAt(const hostkit::MaskTime& time, scene::FrameRate rate) {
  // Both products are whole and below 2^53, so that a whole frame comes out exactly.
  return static_cast<double>(time.time) * rate.frames /
         (static_cast<double>(time.scale) * rate.seconds);
}

}  // namespace cli
