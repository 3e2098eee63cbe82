#include "plugin/controls/parameter_file.h"

#include <new>
#include <string_view>

#include "effect/presets.h"
#include "plugin/sdk/codes.h"
#include "plugin/sdk/suite_handle.h"

namespace brisel {
namespace {

PF_ParamDef* findRecord(PF_ParamDef* const* params, std::int32_t count, std::string_view name) {
  for (std::int32_t i = 0; i < count; ++i) {
    if (params[i] == nullptr) continue;
    const std::string_view field(params[i]->name, sizeof params[i]->name);
    if (field.substr(0, field.find('\0')) == name) return params[i];
  }
  return nullptr;
}

int numberCountOf(const PF_ParamDef& param) {
  if (param.param_type == PF_Param_COLOR) return numberCount(ParamKind::Color);
  return numberCount(param.param_type == PF_Param_POINT ? ParamKind::Point : ParamKind::Number);
}

/// The kinds that count as changed only when they are.
bool storeIfOther(std::int32_t& stored, std::int32_t value) {
  if (stored == value) return false;
  stored = value;
  return true;
}

/// Whether the record is to be marked as changed.
bool store(const FileParameter& parameter, const FrameSize& frame, PF_ParamDef& param) {
  const auto value = [&](ParamKind kind) {
    return presetValue(kind, parameter, frame).value_or(Value{});
  };
  PF_ParamDefUnion& u = param.u;
  switch (param.param_type) {
    case PF_Param_SLIDER:
      return storeIfOther(u.sd.value, value(ParamKind::WholeNumber).number);
    case PF_Param_FIX_SLIDER:
      return storeIfOther(u.fd.value, value(ParamKind::Number).number);
    case PF_Param_CHECKBOX:
      return storeIfOther(u.bd.value, value(ParamKind::Checkbox).number);
    case PF_Param_ANGLE:
      u.ad.value = value(ParamKind::Angle).number;
      return true;
    case PF_Param_COLOR: {
      const ByteColor color = toColor(value(ParamKind::Color));
      u.cd.value = {color.alpha, color.red, color.green, color.blue};
      return true;
    }
    case PF_Param_POINT: {
      const Value point = value(ParamKind::Point);
      u.td.x_value = point.number;
      u.td.y_value = point.y;
      return true;
    }
    case PF_Param_POPUP:
      u.pd.value = value(ParamKind::Popup).number;
      return true;
    case PF_Param_FLOAT_SLIDER:  // none of the effect's own
      u.fs_d.value = static_cast<double>(parameter.numbers[0]);
      return true;
    default:
      return false;
  }
}

}  // namespace

void ApplyParameterFile(const char* path, std::int32_t parameterCount, const PF_InData& in,
                        PF_OutData& out, PF_ParamDef* const* params, FrameSize& frame) try {
  const ParameterFile file = ReadParameterFile(path, [&](std::string_view label) {
    const PF_ParamDef* param = findRecord(params, parameterCount, label);
    return param == nullptr ? 0 : numberCountOf(*param);
  });
  if (file.state == ParameterFile::State::Missing) return;
  if (in.width != 0) frame = {in.width, in.height};
  if (file.state == ParameterFile::State::OtherKind) return;
  const SuiteHandle<PF_ParamUtilsSuite2> suite(in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion2);
  if (suite.get() == nullptr) return;
  for (const FileParameter& parameter : file.parameters) {
    PF_ParamDef* param = findRecord(params, parameterCount, parameter.label);
    if (store(parameter, frame, *param)) param->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
  }
  out.out_flags |= PF_OutFlag_REFRESH_UI;
} catch (const std::bad_alloc&) {  // of the reading, before anything is stored
}

}  // namespace brisel
