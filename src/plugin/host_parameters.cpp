#include "plugin/host_parameters.h"

#include <algorithm>

#include "effect/graying.h"
#include "plugin/sdk/codes.h"
#include "plugin/sdk/suite_handle.h"

namespace brisel {
namespace {

void setBit(std::int32_t& flags, std::int32_t bit, bool on) {
  flags = on ? flags | bit : flags & ~bit;
}

/// Nothing of kinds without a value.
Value readValue(const PF_ParamDef& param, ParamKind kind) {
  const PF_ParamDefUnion& u = param.u;
  switch (kind) {
    case ParamKind::Number:
      return {u.fd.value};
    case ParamKind::WholeNumber:
      return {u.sd.value};
    case ParamKind::Angle:
      return {u.ad.value};
    case ParamKind::Checkbox:
      return {u.bd.value};
    case ParamKind::Popup:
      return {u.pd.value};
    case ParamKind::Color:
      return toValue({u.cd.value.alpha, u.cd.value.red, u.cd.value.green, u.cd.value.blue});
    case ParamKind::Point:
      return {u.td.x_value, u.td.y_value};
    case ParamKind::Mask:
      return {static_cast<std::int32_t>(u.path_d.path_id)};
    default:
      return {};
  }
}

}  // namespace

std::int32_t suppliedParameters(const PF_InData& in, PF_ParamDef* const* params) {
  if (params == nullptr) return 0;
  return in.num_params == 0 ? kParamCount : std::min<std::int32_t>(in.num_params, kParamCount);
}

bool hasAllParameters(const PF_InData& in, PF_ParamDef* const* params) {
  if (suppliedParameters(in, params) < kParamCount) return false;
  return std::all_of(params, params + kParamCount,
                     [](const PF_ParamDef* param) { return param != nullptr; });
}

Values readValues(PF_ParamDef* const* params) {
  Values values;
  for (std::int32_t i = 1; i < kParamCount; ++i) {
    values[i] = readValue(*params[i], parameterSpec(i).kind);
  }
  return values;
}

void updateParameterUI(const PF_InData& in, PF_ParamDef* const* params, const Values& values,
                       std::int32_t changedIndex) {
  const auto states = grayingOf(values, changedIndex);
  if (!states) return;
  const SuiteHandle<PF_ParamUtilsSuite2> suite(in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion2);
  if (suite.get() == nullptr) return;
  for (const ControlState& state : *states) {
    PF_ParamDef copy = *params[state.index];
    setBit(copy.ui_flags, PF_PUI_DISABLED, !state.enabled);
    if (state.collapses) setBit(copy.flags, PF_ParamFlag_COLLAPSE_TWIRLY, !state.enabled);
    suite->PF_UpdateParamUI(in.effect_ref, state.index, &copy);
  }
}

void updateAllParameterUI(const PF_InData& in, PF_ParamDef* const* params, const Values& values) {
  for (std::int32_t index = 2; index < kParamCount; ++index) {
    updateParameterUI(in, params, values, index);
  }
}

}  // namespace brisel
