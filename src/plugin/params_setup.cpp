#include "plugin/params_setup.h"

#include <algorithm>
#include <string_view>

#include "plugin/parameter_table.h"
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

PF_ParamDef definitionOf(const ParameterSpec& spec) {
  PF_ParamDef def{};
  def.param_type = spec.type;
  switch (spec.type) {
    case PF_Param_FIX_SLIDER:
      fillFixedSlider(spec, def.u.fd);
      break;
    case PF_Param_SLIDER:
      fillSlider(spec, def.u.sd);
      break;
    case PF_Param_ANGLE:
      def.u.ad.value = def.u.ad.dephault = toFixed(spec.initial);
      break;
    case PF_Param_POINT:
      def.u.td.x_value = def.u.td.x_dephault = toFixed(spec.initial);
      def.u.td.y_value = def.u.td.y_dephault = toFixed(spec.initialY);
      break;
    case PF_Param_POPUP:
      fillPopup(spec, def.u.pd);
      break;
    case PF_Param_COLOR:
      def.u.cd.value = def.u.cd.dephault = spec.color;
      break;
    case PF_Param_CHECKBOX:
      def.u.bd.text = "";
      break;
    case PF_Param_NO_DATA:
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
