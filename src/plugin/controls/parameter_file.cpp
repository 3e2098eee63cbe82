#include "plugin/controls/parameter_file.h"

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "platform/whole_file.h"
#include "plugin/sdk/codes.h"
#include "plugin/sdk/suite_handle.h"
#include "presets/text_reader.h"

namespace brisel {
namespace {

constexpr std::string_view kHeader = "Tessaro parameters";
constexpr float kFixedOne = 65536.0f;

/// Truncates toward zero and saturates; not-a-number becomes the least integer.
template <class Integer>
Integer truncateTo(float value) {
  constexpr float kLimit = -static_cast<float>(std::numeric_limits<Integer>::min());
  if (value >= kLimit) return std::numeric_limits<Integer>::max();
  if (!(value >= -kLimit)) return std::numeric_limits<Integer>::min();
  return static_cast<Integer>(value);
}

std::int32_t lowWord(float value) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(truncateTo<std::int64_t>(value)));
}

A_u_char lowByte(float value) {
  return static_cast<A_u_char>(static_cast<std::uint32_t>(truncateTo<std::int32_t>(value)));
}

PF_Fixed toFixed(float value) {
  return truncateTo<std::int32_t>(value * kFixedOne);
}

PF_Fixed pointCoordinate(float part, std::int32_t extent) {
  const std::int64_t pixels = std::int64_t{toFixed(part)} * extent;
  if (pixels > std::numeric_limits<PF_Fixed>::max()) return std::numeric_limits<PF_Fixed>::max();
  if (pixels < std::numeric_limits<PF_Fixed>::min()) return std::numeric_limits<PF_Fixed>::min();
  return static_cast<PF_Fixed>(pixels);
}

void markChanged(PF_ParamDef& param) {
  param.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
}

void storeIfOther(PF_ParamDef& param, std::int32_t& stored, std::int32_t value) {
  if (stored == value) return;
  stored = value;
  markChanged(param);
}

PF_ParamDef* findParameter(PF_ParamDef* const* params, std::int32_t count, std::string_view name) {
  for (std::int32_t i = 0; i < count; ++i) {
    if (params[i] == nullptr) continue;
    const std::string_view field(params[i]->name, sizeof params[i]->name);
    if (field.substr(0, field.find('\0')) == name) return params[i];
  }
  return nullptr;
}

/// The numbers of one file, read on demand. A number that is missing repeats the one before.
class NumberSource {
 public:
  explicit NumberSource(TextReader& reader) : reader_(reader) {}

  float next() {
    reader_.SkipToNumber();  // passes one "]" over, where ReadNumber alone would stop
    reader_.ReadNumber(number_);
    return number_;
  }

 private:
  TextReader& reader_;
  float number_ = 0.0f;
};

void readValue(NumberSource& numbers, const FrameSize& frame, PF_ParamDef& param) {
  const float first = numbers.next();
  PF_ParamDefUnion& u = param.u;
  switch (param.param_type) {
    case PF_Param_SLIDER:
      storeIfOther(param, u.sd.value, truncateTo<std::int32_t>(first));
      break;
    case PF_Param_FIX_SLIDER:
      storeIfOther(param, u.fd.value, toFixed(first));
      break;
    case PF_Param_ANGLE:
      u.ad.value = toFixed(first);
      markChanged(param);
      break;
    case PF_Param_CHECKBOX:
      storeIfOther(param, u.bd.value, lowWord(first));
      break;
    case PF_Param_COLOR:
      u.cd.value.red = lowByte(first);
      u.cd.value.green = lowByte(numbers.next());
      u.cd.value.blue = lowByte(numbers.next());
      u.cd.value.alpha = lowByte(numbers.next());
      markChanged(param);
      break;
    case PF_Param_POINT:
      u.td.x_value = pointCoordinate(first, frame.width);
      u.td.y_value = pointCoordinate(numbers.next(), frame.height);
      markChanged(param);
      break;
    case PF_Param_POPUP:
      u.pd.value = lowWord(first);
      markChanged(param);
      break;
    case PF_Param_FLOAT_SLIDER:
      u.fs_d.value = static_cast<double>(first);
      markChanged(param);
      break;
    default:
      break;
  }
}

void ApplyParameters(TextReader& reader, std::int32_t parameterCount, const PF_InData& in,
                     PF_OutData& out, PF_ParamDef* const* params, FrameSize& frame) {
  if (in.width != 0) frame = {in.width, in.height};
  if (reader.ReadChars(kHeader.size()) != kHeader || !reader.NextLine()) return;
  const SuiteHandle<PF_ParamUtilsSuite2> suite(in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion2);
  if (suite.get() == nullptr) return;

  NumberSource numbers(reader);
  do {
    const auto name = reader.ReadLineText();
    if (!name) break;
    if (PF_ParamDef* param = findParameter(params, parameterCount, *name)) {
      readValue(numbers, frame, *param);
    }
  } while (reader.NextLine());
  out.out_flags |= PF_OutFlag_REFRESH_UI;
}

}  // namespace

void ApplyParameterFile(const char* path, std::int32_t parameterCount, const PF_InData& in,
                        PF_OutData& out, PF_ParamDef* const* params, FrameSize& frame) {
  const auto content = readWholeFile(path);
  if (!content) return;
  TextReader reader(content->bytes());
  ApplyParameters(reader, parameterCount, in, out, params, frame);
}

}  // namespace brisel
