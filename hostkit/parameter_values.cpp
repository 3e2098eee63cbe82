#include <cmath>
#include <cstdio>
#include <utility>

#include "hostkit/error.h"
#include "hostkit/parameters.h"

namespace hostkit {

namespace {

constexpr Range kFixedRange{-32768.0, 32767.0};

std::string readable(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", number);
  return text;
}

// What every complaint starts with.
std::string quoted(const Parameter& parameter) {
  return '"' + parameter.label + '"';
}

void checkRange(const Parameter& parameter, const Range& range, double value) {
  if (value >= range.min && value <= range.max) return;  // false for not-a-number
  throw Error(quoted(parameter) + " takes " + readable(range.min) + " to " + readable(range.max) +
              ", not " + readable(value));
}

PF_Fixed toFixed(double value) {
  return static_cast<PF_Fixed>(std::lround(value * kFixedOne));
}

// Point defaults are 16.16 percentages of the layer's size.
PF_Fixed percentOf(PF_Fixed percent, A_long size) {
  return static_cast<PF_Fixed>(std::int64_t{percent} * size / 100);
}

PF_Fixed reduced(PF_Fixed value, PF_RationalScale scale) {
  return static_cast<PF_Fixed>(std::lround(double(value) * scale.num / scale.den));
}

}  // namespace

void ParameterSet::resetToDefaults(A_long layerWidth, A_long layerHeight) {
  for (PF_ParamDef& value : values_) {
    PF_ParamDefUnion& u = value.u;
    switch (value.param_type) {
      case PF_Param_SLIDER:
        u.sd.value = u.sd.dephault;
        break;
      case PF_Param_FIX_SLIDER:
        u.fd.value = u.fd.dephault;
        break;
      case PF_Param_ANGLE:
        u.ad.value = u.ad.dephault;
        break;
      case PF_Param_CHECKBOX:
        u.bd.value = u.bd.dephault;
        break;
      case PF_Param_COLOR:
        u.cd.value = u.cd.dephault;
        break;
      case PF_Param_POINT:
        u.td.x_value = percentOf(u.td.x_dephault, layerWidth);
        u.td.y_value = percentOf(u.td.y_dephault, layerHeight);
        break;
      case PF_Param_POPUP:
        u.pd.value = u.pd.dephault;
        break;
      case PF_Param_PATH:
        u.path_d.path_id = u.path_d.dephault;
        break;
      default:
        break;
    }
  }
  changed_ = true;
}

void ParameterSet::setNumber(PF_ParamIndex index, double number) {
  PF_ParamDef& target = value(index);
  const Parameter& parameter = list().at(static_cast<std::size_t>(index));
  switch (parameter.type()) {
    case PF_Param_SLIDER:
      checkRange(parameter, *validRange(parameter), number);
      if (number != std::trunc(number)) {
        throw Error(quoted(parameter) + " takes whole numbers, not " + readable(number));
      }
      target.u.sd.value = static_cast<A_long>(number);
      break;
    case PF_Param_FIX_SLIDER:
      checkRange(parameter, *validRange(parameter), number);
      target.u.fd.value = toFixed(number);
      break;
    case PF_Param_ANGLE:
      checkRange(parameter, kFixedRange, number);
      target.u.ad.value = toFixed(number);
      break;
    default:
      throw Error(quoted(parameter) + " is a " + std::string(typeName(parameter.type())) +
                  " and takes no number");
  }
}

void ParameterSet::setChecked(PF_ParamIndex index, bool checked) {
  valueOfType(index, PF_Param_CHECKBOX).u.bd.value = checked ? 1 : 0;
}

void ParameterSet::setItem(PF_ParamIndex index, int item) {
  PF_ParamDef& target = valueOfType(index, PF_Param_POPUP);
  const Parameter& parameter = list().at(static_cast<std::size_t>(index));
  checkRange(parameter, *validRange(parameter), item);
  target.u.pd.value = item;
}

void ParameterSet::setColor(PF_ParamIndex index, A_u_char red, A_u_char green, A_u_char blue) {
  PF_Pixel& color = valueOfType(index, PF_Param_COLOR).u.cd.value;
  color.red = red;
  color.green = green;
  color.blue = blue;
}

void ParameterSet::setPoint(PF_ParamIndex index, double x, double y) {
  PF_PointDef& point = valueOfType(index, PF_Param_POINT).u.td;
  const Parameter& parameter = list().at(static_cast<std::size_t>(index));
  checkRange(parameter, kFixedRange, x);
  checkRange(parameter, kFixedRange, y);
  point.x_value = toFixed(x);
  point.y_value = toFixed(y);
}

void ParameterSet::setPath(PF_ParamIndex index, PF_PathID mask) {
  valueOfType(index, PF_Param_PATH).u.path_d.path_id = mask;
}

void ParameterSet::setInput(const PF_LayerDef& layer) {
  values_.front().u.ld = layer;
}

const PF_ParamDef& ParameterSet::value(PF_ParamIndex index) const {
  return values_.at(static_cast<std::size_t>(index));
}

PF_ParamDef& ParameterSet::value(PF_ParamIndex index) {
  changed_ = true;
  return values_.at(static_cast<std::size_t>(index));
}

PF_ParamDef** ParameterSet::pointersAt(PF_RationalScale x, PF_RationalScale y) {
  reducedPoints_.clear();
  reducedPoints_.reserve(values_.size());  // so that none moves
  reducedPointers_ = pointers_;
  for (PF_ParamDef*& pointer : reducedPointers_) {
    if (pointer->param_type != PF_Param_POINT) continue;
    PF_ParamDef& point = reducedPoints_.emplace_back(*pointer);
    point.u.td.x_value = reduced(point.u.td.x_value, x);
    point.u.td.y_value = reduced(point.u.td.y_value, y);
    pointer = &point;
  }
  return reducedPointers_.data();
}

bool ParameterSet::takeChanged() {
  return std::exchange(changed_, false);
}

PF_ParamDef& ParameterSet::valueOfType(PF_ParamIndex index, PF_ParamType type) {
  const Parameter& parameter = list().at(static_cast<std::size_t>(index));
  if (parameter.type() != type) {
    throw Error(quoted(parameter) + " is a " + std::string(typeName(parameter.type())) +
                " and takes no " + std::string(typeName(type)) + " value");
  }
  return value(index);
}

}  // namespace hostkit
