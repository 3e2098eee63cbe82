#include "plugin/params_setup.h"

#include <algorithm>
#include <string_view>

#include "effect/parameters.h"
#include "plugin/sdk/codes.h"

namespace brisel {
namespace {

constexpr PF_Fixed toFixed(std::int32_t value) {
  return value * 65536;
}

void fillFixedSlider(const ParameterSpec& spec, PF_FixedSliderDef& def) {
  def.valid_min = toFixed(spec.validMin);
  def.valid_max = toFixed(spec.validMax);
  def.slider_min = toFixed(spec.sliderMin);
  def.slider_max = toFixed(spec.sliderMax);
  def.value = def.dephault = toFixed(spec.initial);
  def.precision = 2;
}

void fillSlider(const ParameterSpec& spec, PF_SliderDef& def) {
  def.valid_min = spec.validMin;
  def.valid_max = spec.validMax;
  def.slider_min = spec.sliderMin;
  def.slider_max = spec.sliderMax;
  def.value = def.dephault = spec.initial;
}

void fillPopup(const ParameterSpec& spec, PF_PopupDef& def) {
  const std::string_view items = spec.items;
  def.value = spec.initial;
  def.dephault = static_cast<A_short>(spec.initial);
  def.num_choices = static_cast<A_short>(std::count(items.begin(), items.end(), '|') + 1);
  def.names = spec.items;
}

PF_ParamType typeOf(ParamKind kind) {
  switch (kind) {
    case ParamKind::Number:
      return PF_Param_FIX_SLIDER;
    case ParamKind::WholeNumber:
      return PF_Param_SLIDER;
    case ParamKind::Angle:
      return PF_Param_ANGLE;
    case ParamKind::Checkbox:
      return PF_Param_CHECKBOX;
    case ParamKind::Popup:
      return PF_Param_POPUP;
    case ParamKind::Color:
      return PF_Param_COLOR;
    case ParamKind::Point:
      return PF_Param_POINT;
    case ParamKind::Mask:
      return PF_Param_PATH;
    case ParamKind::GroupStart:
      return PF_Param_GROUP_START;
    case ParamKind::GroupEnd:
      return PF_Param_GROUP_END;
    case ParamKind::Panel:
      break;
  }
  return PF_Param_NO_DATA;
}

PF_Pixel colorOf(const ParameterSpec& spec) {
  const auto byte = [](std::int32_t channel) { return static_cast<A_u_char>(channel); };
  return {spec.colorAlpha, byte(spec.color.red), byte(spec.color.green), byte(spec.color.blue)};
}

PF_ParamDef definitionOf(const ParameterSpec& spec) {
  PF_ParamDef def{};
  def.param_type = typeOf(spec.kind);
  switch (spec.kind) {
    case ParamKind::Number:
      fillFixedSlider(spec, def.u.fd);
      break;
    case ParamKind::WholeNumber:
      fillSlider(spec, def.u.sd);
      break;
    case ParamKind::Angle:
      def.u.ad.value = def.u.ad.dephault = toFixed(spec.initial);
      break;
    case ParamKind::Point:
      def.u.td.x_value = def.u.td.x_dephault = toFixed(spec.initial);
      def.u.td.y_value = def.u.td.y_dephault = toFixed(spec.initialY);
      break;
    case ParamKind::Popup:
      fillPopup(spec, def.u.pd);
      break;
    case ParamKind::Color:
      def.u.cd.value = def.u.cd.dephault = colorOf(spec);
      break;
    case ParamKind::Checkbox:
      def.u.bd.text = "";
      break;
    case ParamKind::Panel:
      def.ui_flags = PF_PUI_CONTROL;
      def.ui_width = spec.panelWidth;
      def.ui_height = spec.panelHeight;
      break;
    default:
      break;
  }
  return def;
}

}  // namespace

PF_Err setUpParameters(PF_InData& in, PF_OutData& out) {
  if (in.inter.add_param == nullptr || in.inter.register_ui == nullptr || in.utils == nullptr ||
      in.utils->ansi.strcpy == nullptr) {
    return PF_Err_INVALID_CALLBACK;
  }
  for (const ParameterSpec& spec : declaredParameters()) {
    PF_ParamDef def = definitionOf(spec);
    in.utils->ansi.strcpy(def.name, spec.label);
    const PF_Err error = in.inter.add_param(in.effect_ref, -1, &def);
    if (error != PF_Err_NONE) return error;
  }
  out.num_params = kParamCount;

  PF_CustomUIInfo panel{};
  panel.events = PF_CustomEFlag_COMP | PF_CustomEFlag_LAYER | PF_CustomEFlag_EFFECT;
  return in.inter.register_ui(in.effect_ref, &panel);
}

}  // namespace brisel
