#include "openfx/host_values.h"

#include <algorithm>
#include <cmath>

namespace brisel::openfx {
namespace {

using Kind = EffectParameter::Kind;

/// Hosts that keep single precision move a default by less.
bool isNear(double a, double b) {
  return std::abs(a - b) < 1e-6;
}

const EffectParameter& parameterOfKind(Kind kind) {
  return *std::ranges::find(effectParameters(), kind, &EffectParameter::kind);
}

}  // namespace

HostValues::HostValues(const Host& host, OfxImageEffectHandle instance) : host_(host) {
  handles_.resize(effectParameters().size());
  OfxParamSetHandle set = nullptr;
  if (host.effect->getParamSet(instance, &set) != kOfxStatOK) return;
  set_ = set;
  for (std::size_t i = 0; i < handles_.size(); ++i) {
    OfxParamHandle handle = nullptr;
    const char* name = effectParameters()[i].name.c_str();
    const OfxStatus status = host.parameter->paramGetHandle(set, name, &handle, nullptr);
    if (status == kOfxStatOK) handles_[i] = handle;
  }
}

OfxParamHandle HostValues::handleOf(const EffectParameter& parameter) const {
  return handles_[static_cast<std::size_t>(&parameter - effectParameters().data())];
}

/// Returns whether all components are read. A null time is now, as is one that a host does not
/// know.
template <class... Component>
bool HostValues::get(const EffectParameter& parameter, const OfxTime* time,
                     Component*... components) const {
  const OfxParamHandle handle = handleOf(parameter);
  if (handle == nullptr) return false;
  if (time != nullptr &&
      host_.parameter->paramGetValueAtTime(handle, *time, components...) == kOfxStatOK) {
    return true;
  }
  return host_.parameter->paramGetValue(handle, components...) == kOfxStatOK;
}

void HostValues::addChoice(const EffectParameter& parameter, const OfxTime* time, FrameSize frame,
                           Choices& choices) const {
  static const Values initial;
  const ParamIndex index = parameter.index;
  const auto add = [&](double number) {
    if (std::isnan(number)) return;
    const double held = withinRange(parameterSpec(index), number);
    const std::int32_t value = valueNumber(index, held);
    if (value == valueNumber(index, initialNumber(parameter))) return;
    choices.push_back({index, false, value});
  };
  int whole = 0;
  double number = 0, second = 0, third = 0;
  switch (parameter.kind) {
    case Kind::Number:
    case Kind::Angle:
      if (get(parameter, time, &number)) add(number);
      break;
    case Kind::WholeNumber:
      if (get(parameter, time, &whole)) add(whole);
      break;
    case Kind::Checkbox:
      if (get(parameter, time, &whole)) add(whole != 0);
      break;
    case Kind::Popup: {
      const std::string_view items = parameterSpec(index).items;
      if (get(parameter, time, &whole) && whole >= 0 && whole <= std::ranges::count(items, '|')) {
        add(whole + 1);
      }
      break;
    }
    case Kind::Color: {
      if (!get(parameter, time, &number, &second, &third)) break;
      if (std::isnan(number) || std::isnan(second) || std::isnan(third)) break;
      const std::int32_t color = colorNumber(index, {number, second, third});
      if (color != initial[index].number) choices.push_back({index, false, color});
      break;
    }
    case Kind::Point: {
      if (!get(parameter, time, &number, &second)) break;
      const Share initialShare = initialPoint(parameter);
      if (!std::isnan(number) && !isNear(number, initialShare.x)) {
        choices.push_back({index, false, coordinate(number, false, frame)});
      }
      if (!std::isnan(second) && !isNear(second, initialShare.y)) {
        choices.push_back({index, true, coordinate(1 - second, true, frame)});
      }
      break;
    }
    default:  // says nothing by itself
      break;
  }
}

Choices HostValues::choicesAt(const OfxTime* time, FrameSize frame) const {
  Choices choices;
  for (const EffectParameter& parameter : effectParameters()) {
    addChoice(parameter, time, frame, choices);
  }
  return choices;
}

Choices HostValues::at(OfxTime time, FrameSize frame) const {
  return choicesAt(&time, frame);
}

Values HostValues::now() const {
  Values values;
  values.setNumber(kMixWithOriginal, kInitialMix);
  brisel::apply(choicesAt(nullptr, {1, 1}), values);
  values.setNumber(kPath, text(Kind::Mask).empty() ? 0 : 1);
  return values;
}

std::string HostValues::text(Kind kind) const {
  // These do not move in time, and may be asked for in a render by their time only.
  const OfxTime time = 0;
  char* text = nullptr;
  const bool isRead = get(parameterOfKind(kind), &time, &text);
  return isRead && text != nullptr ? text : "";
}

int HostValues::startFrame() const {
  const OfxTime time = 0;
  int frame = 0;
  return get(parameterOfKind(Kind::StartFrame), &time, &frame) ? frame : 0;
}

int HostValues::chosenPreset(const EffectParameter& parameter) const {
  int item = 0;
  return get(parameter, nullptr, &item) ? item : 0;
}

const EffectParameter* HostValues::parameterOf(ParamIndex index) const {
  const auto found = std::ranges::find(effectParameters(), index, &EffectParameter::index);
  return found != effectParameters().end() && handleOf(*found) != nullptr ? &*found : nullptr;
}

void HostValues::set(const std::vector<ParamIndex>& indices, const Values& values) const {
  const bool isOneStep = host_.parameter->paramEditBegin(set_, "Preset") == kOfxStatOK;
  for (const ParamIndex index : indices) setOne(index, values);
  if (isOneStep) host_.parameter->paramEditEnd(set_);
}

void HostValues::setOne(ParamIndex index, const Values& values) const {
  const EffectParameter* parameter = parameterOf(index);
  if (parameter == nullptr) return;
  const OfxParamHandle handle = handleOf(*parameter);
  const Value& value = values[index];
  const double number = values.number(index);
  const ByteColor color = toColor(value);
  const auto setValue = host_.parameter->paramSetValue;
  switch (parameter->kind) {
    case Kind::Number:
    case Kind::Angle:
      setValue(handle, number);
      break;
    case Kind::WholeNumber:
    case Kind::Checkbox:
      setValue(handle, value.number);
      break;
    case Kind::Popup:
      setValue(handle, value.number - 1);
      break;
    case Kind::Color:
      setValue(handle, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
      break;
    case Kind::Point:
      setValue(handle, value.number / 65536.0, 1 - value.y / 65536.0);
      break;
    default:  // presets set none of these
      break;
  }
}

void HostValues::setEnabled(ParamIndex index, bool isEnabled) const {
  const EffectParameter* parameter = parameterOf(index);
  if (parameter == nullptr) return;
  OfxPropertySetHandle set = nullptr;
  if (host_.parameter->paramGetPropertySet(handleOf(*parameter), &set) != kOfxStatOK) return;
  Properties(host_, set).set(kOfxParamEnabled, isEnabled);
}

}  // namespace brisel::openfx
