#include "plugin/host_parameters.h"

#include <algorithm>

namespace brisel {

std::int32_t suppliedParameters(const PF_InData& in, PF_ParamDef* const* params) {
  if (params == nullptr) return 0;
  return in.num_params == 0 ? kParamCount : std::min<std::int32_t>(in.num_params, kParamCount);
}

bool hasAllParameters(const PF_InData& in, PF_ParamDef* const* params) {
  if (suppliedParameters(in, params) < kParamCount) return false;
  return std::all_of(params, params + kParamCount,
                     [](const PF_ParamDef* param) { return param != nullptr; });
}

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

Values readValues(PF_ParamDef* const* params) {
  Values values;
  for (std::int32_t i = 1; i < kParamCount; ++i) {
    values[i] = readValue(*params[i], parameterSpec(i).kind);
  }
  return values;
}

}  // namespace brisel
