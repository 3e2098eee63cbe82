#include "openfx/description.h"

#include <initializer_list>
#include <map>
#include <new>
#include <string>

#include "openfx/parameter_list.h"

namespace brisel::openfx {
namespace {

using Kind = EffectParameter::Kind;

constexpr char kPage[] = "controls";

const char* typeOf(Kind kind) {
  switch (kind) {
    case Kind::Group:
      return kOfxParamTypeGroup;
    case Kind::Number:
    case Kind::Angle:
      return kOfxParamTypeDouble;
    case Kind::WholeNumber:
    case Kind::StartFrame:
      return kOfxParamTypeInteger;
    case Kind::Checkbox:
      return kOfxParamTypeBoolean;
    case Kind::Popup:
    case Kind::Preset:
      return kOfxParamTypeChoice;
    case Kind::Color:
      return kOfxParamTypeRGB;
    case Kind::Point:
      return kOfxParamTypeDouble2D;
    case Kind::Scene:
    case Kind::Mask:
      break;
  }
  return kOfxParamTypeString;
}

/// Valid ranges come before those of sliders, which they reset in some hosts.
template <class Number>
void setRange(const Properties& properties, const ParameterSpec& spec) {
  properties.set(kOfxParamMin, static_cast<Number>(spec.validMin));
  properties.set(kOfxParamMax, static_cast<Number>(spec.validMax));
  properties.set(kOfxParamDisplayMin, static_cast<Number>(spec.sliderMin));
  properties.set(kOfxParamDisplayMax, static_cast<Number>(spec.sliderMax));
  properties.set(kOfxParamDefault, static_cast<Number>(spec.initial));
}

void setColor(const Properties& properties, const ParameterSpec& spec) {
  const int channels[] = {spec.color.red, spec.color.green, spec.color.blue};
  for (int i = 0; i < 3; ++i) properties.set(kOfxParamDefault, channels[i] / 255.0, i);
}

/// In shares of the frame, as hosts do not agree on points in pixels.
void setPoint(const Properties& properties, const EffectParameter& parameter) {
  const Share initial = initialPoint(parameter);
  for (int i = 0; i < 2; ++i) {
    properties.set(kOfxParamDisplayMin, 0.0, i);
    properties.set(kOfxParamDisplayMax, 1.0, i);
    properties.set(kOfxParamDefault, i == 0 ? initial.x : initial.y, i);
  }
  properties.set(kOfxParamIncrement, 0.01);
}

void setItems(const Properties& properties, const EffectParameter& parameter) {
  int index = 0;
  for (const std::string& item : itemsOf(parameter)) {
    properties.set(kOfxParamChoiceOption, item.c_str(), index++);
  }
  const bool isPopup = parameter.kind == Kind::Popup;
  properties.set(kOfxParamDefault, isPopup ? static_cast<int>(initialNumber(parameter)) - 1 : 0);
}

void setValue(const Host& host, const Properties& properties, const EffectParameter& parameter) {
  const Properties ofHost(host, host.description);
  switch (parameter.kind) {
    case Kind::Group:
      properties.set(kOfxParamGroupOpen, parameter.parent.empty());
      return;
    case Kind::Number:
      setRange<double>(properties, parameterSpec(parameter.index));
      break;
    case Kind::WholeNumber:
      setRange<int>(properties, parameterSpec(parameter.index));
      break;
    case Kind::Angle:
      properties.set(kOfxParamDoubleType, kOfxParamDoubleTypeAngle);
      properties.set(kOfxParamDisplayMin, -360.0);
      properties.set(kOfxParamDisplayMax, 360.0);
      properties.set(kOfxParamDefault, initialNumber(parameter));
      break;
    case Kind::Checkbox:
      properties.set(kOfxParamDefault, static_cast<int>(initialNumber(parameter)));
      properties.set(kOfxParamAnimates, ofHost.integer(kOfxParamHostBooleanAnimation, 0));
      break;
    case Kind::Popup:
      setItems(properties, parameter);
      properties.set(kOfxParamAnimates, ofHost.integer(kOfxParamHostChoiceAnimation, 0));
      break;
    case Kind::Preset:
      setItems(properties, parameter);
      properties.set(kOfxParamAnimates, 0);
      properties.set(kOfxParamEvaluateOnChange, 0);
      return;
    case Kind::Color:
      setColor(properties, parameterSpec(parameter.index));
      break;
    case Kind::Point:
      setPoint(properties, parameter);
      break;
    case Kind::Scene:
    case Kind::Mask:
      properties.set(kOfxParamStringMode, parameter.kind == Kind::Scene
                                              ? kOfxParamStringIsFilePath
                                              : kOfxParamStringIsMultiLine);
      properties.set(kOfxParamDefault, "");
      properties.set(kOfxParamAnimates, 0);
      break;
    case Kind::StartFrame:
      properties.set(kOfxParamDisplayMin, 0);
      properties.set(kOfxParamDisplayMax, 1000);
      properties.set(kOfxParamDefault, 0);
      properties.set(kOfxParamAnimates, 0);
      break;
  }
  // A frame follows from those before it, so a key moves all later ones.
  properties.set(kOfxParamCacheInvalidation, kOfxParamInvalidateAll);
}

/// What a host does not take stays at its default, and what is in a group that it does not take
/// lies in the one around that. Throws std::bad_alloc.
void defineParameters(const Host& host, OfxParamSetHandle set) {
  std::map<std::string, std::string> groups{{"", ""}};  // by name, as the host knows them
  for (const EffectParameter& parameter : effectParameters()) {
    OfxPropertySetHandle handle = nullptr;
    const OfxStatus status =
        host.parameter->paramDefine(set, typeOf(parameter.kind), parameter.name.c_str(), &handle);
    if (status == kOfxStatErrMemory) throw std::bad_alloc();
    const std::string& parent = groups[parameter.parent];
    const bool isDefined = status == kOfxStatOK;
    if (parameter.kind == Kind::Group) groups[parameter.name] = isDefined ? parameter.name : parent;
    if (!isDefined) continue;
    const Properties properties(host, handle);
    properties.set(kOfxPropLabel, parameter.label.c_str());
    properties.set(kOfxParamHint, parameter.hint.c_str());
    if (!parent.empty()) properties.set(kOfxParamParent, parent.c_str());
    setValue(host, properties, parameter);
  }
}

/// For hosts that show pages; the others go by the groups.
void definePage(const Host& host, OfxParamSetHandle set) {
  OfxPropertySetHandle handle = nullptr;
  if (host.parameter->paramDefine(set, kOfxParamTypePage, kPage, &handle) != kOfxStatOK) return;
  const Properties page(host, handle);
  page.set(kOfxPropLabel, "Controls");
  int index = 0;
  for (const EffectParameter& parameter : effectParameters()) {
    if (parameter.parent.empty()) page.set(kOfxParamPageChild, parameter.name.c_str(), index++);
  }
  OfxPropertySetHandle ofSet = nullptr;
  if (host.parameter->paramSetGetPropertySet(set, &ofSet) != kOfxStatOK) return;
  Properties(host, ofSet).set(kOfxParamPageOrder, kPage);
}

/// Returns whether the descriptor has the clip; it may be there since an earlier description.
bool defineClip(const Host& host, OfxImageEffectHandle descriptor, const char* name,
                bool isOptional) {
  OfxPropertySetHandle handle = nullptr;
  const OfxStatus status = host.effect->clipDefine(descriptor, name, &handle);
  if (status != kOfxStatOK) return status == kOfxStatErrExists;
  const Properties clip(host, handle);
  clip.set(kOfxPropLabel, name);
  clip.set(kOfxClipOptional, isOptional);
  clip.set(kOfxEffectSupportsTiles, 0);
  clip.set(kOfxEffectTemporalClipAccess, 0);
  // Hosts convert to it. RGB, too, would bring pixels of three channels into stars with alpha.
  return clip.set(kOfxEffectSupportedComponents, kOfxImageComponentRGBA);
}

/// Returns how many of the values a host took.
int setList(const Properties& properties, const char* name,
            std::initializer_list<const char*> values) {
  int count = 0;
  for (const char* value : values) count += properties.set(name, value, count);
  return count;
}

}  // namespace

OfxStatus describe(const Host& host, OfxImageEffectHandle descriptor) {
  const Properties effect = propertiesOf(host, descriptor);
  effect.set(kOfxPropLabel, "Brisel");
  effect.set(kOfxEffectGrouping, "Corvane");
  effect.set(kOfxPropPluginDescription,
             "Stars on footage: sparkles, snow, fire, fireworks, magic. An emitter releases small "
             "lights that fly, drift in the wind, swing, fade, burst and flash.");
  effect.set(kOfxPropVersionLabel, BRISEL_VERSION);
  const int contexts = setList(effect, kOfxEffectSupportedContexts,
                               {kOfxContextFilter, kOfxContextGeneral, kOfxContextGenerator});
  const int depths = setList(effect, kOfxEffectSupportedPixelDepths,
                             {kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthFloat});
  // One frame, one call: a star crosses windows. And where a host may render two instances at once,
  // some make a new one for each frame.
  effect.set(kOfxEffectRenderThreadSafety, kOfxImageEffectRenderUnsafe);
  effect.set(kOfxEffectHostFrameThreading, 0);
  effect.set(kOfxEffectSupportsTiles, 0);
  effect.set(kOfxEffectSupportsMultiResolution, 1);
  effect.set(kOfxEffectTemporalClipAccess, 0);
  effect.set(kOfxEffectFieldRenderTwice, 0);
  return contexts > 0 && depths > 0 ? kOfxStatOK : kOfxStatFailed;
}

OfxStatus describeInContext(const Host& host, OfxImageEffectHandle descriptor,
                            const Properties& arguments) {
  const std::string context = arguments.text(kOfxEffectContext);
  const bool hasSource = context != kOfxContextGenerator;
  const bool isOptional = context == kOfxContextGeneral;
  if (hasSource && !defineClip(host, descriptor, kOfxSourceClip, isOptional) && !isOptional) {
    return kOfxStatFailed;
  }
  if (!defineClip(host, descriptor, kOfxOutputClip, false)) return kOfxStatFailed;
  OfxParamSetHandle set = nullptr;
  if (host.effect->getParamSet(descriptor, &set) != kOfxStatOK) return kOfxStatFailed;
  defineParameters(host, set);
  definePage(host, set);
  return kOfxStatOK;
}

}  // namespace brisel::openfx
