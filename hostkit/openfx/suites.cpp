#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "hostkit/openfx/host.h"
#include "hostkit/openfx/objects.h"

namespace hostkit {
namespace {

using Set = OfxPropertySetHandle;

/// The place of a value, or null with the status to answer.
PropertyValue* findValue(Set set, const char* name, int index, const PropertyValue& type,
                         bool isSetting, OfxStatus& status) {
  const auto refuse = [&](OfxStatus reply, const char* why) -> PropertyValue* {
    set->host->complain(set->name + ": " + name + " " + why);
    status = reply;
    return nullptr;
  };
  const auto found = set->properties.find(name);
  if (found == set->properties.end()) return refuse(kOfxStatErrUnknown, "is no property of it");
  Property& property = found->second;
  if (property.initial.index() != type.index()) {
    return refuse(kOfxStatErrUnknown, "is of another type");
  }
  const auto place = static_cast<std::size_t>(index);
  const bool isNext = isSetting && property.dimension == 0 && place == property.values.size();
  if (index < 0 || (place >= property.values.size() && !isNext)) {
    return refuse(kOfxStatErrBadIndex, "has no such index");
  }
  if (isNext) property.values.push_back(property.initial);
  status = kOfxStatOK;
  return &property.values[place];
}

OfxStatus setValue(Set set, const char* name, int index, const PropertyValue& value) {
  if (set == nullptr) return kOfxStatErrBadHandle;
  if (set->host->failsNow()) return kOfxStatFailed;
  OfxStatus status = kOfxStatOK;
  if (auto* place = findValue(set, name, index, value, true, status)) *place = value;
  return status;
}

template <class Value, class Result, class Convert>
OfxStatus getValue(Set set, const char* name, int index, Result* result, const Convert& convert) {
  if (set == nullptr) return kOfxStatErrBadHandle;
  if (set->host->failsNow()) return kOfxStatFailed;
  OfxStatus status = kOfxStatOK;
  const auto* place = findValue(set, name, index, Value(), false, status);
  if (place != nullptr) *result = convert(std::get<Value>(*place));
  return status;
}

template <class Value>
Value same(const Value& value) {
  return value;
}

OfxStatus setPointer(Set set, const char* name, int index, void* value) {
  return setValue(set, name, index, value);
}
OfxStatus setString(Set set, const char* name, int index, const char* value) {
  return setValue(set, name, index, std::string(value));
}
OfxStatus setDouble(Set set, const char* name, int index, double value) {
  return setValue(set, name, index, value);
}
OfxStatus setInt(Set set, const char* name, int index, int value) {
  return setValue(set, name, index, value);
}
OfxStatus getPointer(Set set, const char* name, int index, void** value) {
  return getValue<void*>(set, name, index, value, same<void*>);
}
OfxStatus getString(Set set, const char* name, int index, char** value) {
  return getValue<std::string>(set, name, index, value, lentText);
}
OfxStatus getDouble(Set set, const char* name, int index, double* value) {
  return getValue<double>(set, name, index, value, same<double>);
}
OfxStatus getInt(Set set, const char* name, int index, int* value) {
  return getValue<int>(set, name, index, value, same<int>);
}

constexpr OfxPropertySuite1 kPropertySuite = {
    setPointer, setString, setDouble, setInt,  nullptr, nullptr, nullptr, nullptr, getPointer,
    getString,  getDouble, getInt,    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};

OfxStatus getPropertySet(OfxImageEffectHandle effect, Set* set) {
  *set = &effect->properties;
  return kOfxStatOK;
}

OfxStatus getParamSet(OfxImageEffectHandle effect, OfxParamSetHandle* set) {
  *set = &effect->params;
  return kOfxStatOK;
}

OfxStatus defineClip(OfxImageEffectHandle effect, const char* name, Set* set) {
  if (!effect->params.mayDefine) effect->host->complain("a clip is defined outside of a context");
  if (effect->find(name) != nullptr) return kOfxStatErrExists;
  auto& clip = *effect->clips.emplace_back(
      new OfxImageClipStruct{OfxPropertySetStruct(*effect->host, std::string("clip ") + name)});
  OfxPropertySetStruct& p = clip.properties;
  p.has(kOfxPropName, {std::string(name)});
  p.has(kOfxPropLabel, {std::string()});
  p.has(kOfxClipOptional, {0});
  p.has(kOfxEffectSupportsTiles, {1});
  p.has(kOfxEffectTemporalClipAccess, {0});
  p.lists(kOfxEffectSupportedComponents, std::string());
  *set = &p;
  return kOfxStatOK;
}

OfxStatus getClipHandle(OfxImageEffectHandle effect, const char* name, OfxImageClipHandle* clip,
                        Set* set) {
  if (!effect->isInstance) effect->host->complain("a descriptor is asked for clips");
  *clip = effect->find(name);
  if (*clip == nullptr) return kOfxStatErrBadHandle;
  if (set != nullptr) *set = &(*clip)->properties;
  return kOfxStatOK;
}

OfxStatus getClipPropertySet(OfxImageClipHandle clip, Set* set) {
  *set = &clip->properties;
  return kOfxStatOK;
}

OfxStatus getImage(OfxImageClipHandle clip, OfxTime time, const OfxRectD*, Set* image) {
  if (!clip->image) return kOfxStatFailed;
  std::unique_ptr<OfxPropertySetStruct> made = clip->image(time);
  if (made == nullptr) return kOfxStatFailed;
  *image = clip->open.emplace_back(std::move(made)).get();
  return kOfxStatOK;
}

OfxStatus releaseImage(Set image) {
  auto* clip = static_cast<OfxImageClipStruct*>(image->get<void*>("clip"));
  std::erase_if(clip->open, [image](const auto& open) { return open.get() == image; });
  return kOfxStatOK;
}

OfxStatus getRegion(OfxImageClipHandle clip, OfxTime, OfxRectD* region) {
  *region = clip->region;
  return kOfxStatOK;
}

int abortEffect(OfxImageEffectHandle effect) {
  return effect->abortAfter >= 0 && effect->abortAfter-- == 0 ? 1 : 0;
}

constexpr OfxImageEffectSuite1 kEffectSuite = {
    getPropertySet, getParamSet,  defineClip, getClipHandle, getClipPropertySet,
    getImage,       releaseImage, getRegion,  abortEffect,   nullptr,
    nullptr,        nullptr,      nullptr};

std::size_t componentsOf(const std::string& type) {
  if (type == kOfxParamTypeRGB) return 3;
  return type == kOfxParamTypeDouble2D ? 2 : 1;
}

bool isWhole(const std::string& type) {
  return type == kOfxParamTypeInteger || type == kOfxParamTypeBoolean ||
         type == kOfxParamTypeChoice;
}

void addNumberProperties(OfxParamStruct& param) {
  OfxPropertySetStruct& p = param.properties;
  const std::size_t count = componentsOf(param.type);
  const PropertyValue zero = isWhole(param.type) ? PropertyValue(0) : PropertyValue(0.0);
  for (const char* name :
       {kOfxParamDefault, kOfxParamMin, kOfxParamMax, kOfxParamDisplayMin, kOfxParamDisplayMax}) {
    p.has(name, std::vector(count, zero));
  }
  if (param.type == kOfxParamTypeChoice) p.lists(kOfxParamChoiceOption, std::string());
  if (isWhole(param.type)) return;
  p.has(kOfxParamIncrement, {1.0});
  p.has(kOfxParamDoubleType, {std::string()});
}

OfxStatus defineParam(OfxParamSetHandle set, const char* type, const char* name, Set* properties) {
  OpenFxHost& host = *set->properties.host;
  if (host.failsNow()) return kOfxStatFailed;
  if (!set->mayDefine) host.complain("a parameter is defined outside of a context");
  if (set->find(name) != nullptr) {
    host.complain(std::string(name) + " is defined twice");
    return kOfxStatErrExists;
  }
  auto& param =
      *set->params.emplace_back(new OfxParamStruct{OfxPropertySetStruct(host, name), type});
  OfxPropertySetStruct& p = param.properties;
  p.has(kOfxPropName, {std::string(name)});
  for (const char* text : {kOfxPropLabel, kOfxParamHint, kOfxParamParent}) {
    p.has(text, {std::string()});
  }
  p.has(kOfxParamEnabled, {1});
  const std::string kind = type;
  if (kind == kOfxParamTypeGroup) {
    p.has(kOfxParamGroupOpen, {1});
  } else if (kind == kOfxParamTypePage) {
    p.lists(kOfxParamPageChild, std::string());
  } else {
    p.has(kOfxParamAnimates, {1});
    p.has(kOfxParamEvaluateOnChange, {1});
    p.has(kOfxParamCacheInvalidation, {std::string("OfxParamInvalidateValueChange")});
    if (kind == kOfxParamTypeString) {
      p.has(kOfxParamDefault, {std::string()});
      p.has(kOfxParamStringMode, {std::string()});
    } else {
      addNumberProperties(param);
    }
  }
  *properties = &p;
  return kOfxStatOK;
}

OfxStatus getParamHandle(OfxParamSetHandle set, const char* name, OfxParamHandle* param,
                         Set* properties) {
  if (set->properties.host->failsNow()) return kOfxStatFailed;
  *param = set->find(name);
  if (*param == nullptr) return kOfxStatErrUnknown;
  if (properties != nullptr) *properties = &(*param)->properties;
  return kOfxStatOK;
}

OfxStatus getParamSetProperties(OfxParamSetHandle set, Set* properties) {
  if (set->properties.host->failsNow()) return kOfxStatFailed;
  *properties = &set->properties;
  return kOfxStatOK;
}

OfxStatus getParamProperties(OfxParamHandle param, Set* properties) {
  if (param->properties.host->failsNow()) return kOfxStatFailed;
  *properties = &param->properties;
  return kOfxStatOK;
}

OfxStatus giveValue(const OfxParamStruct& param, const OfxTime* time, std::va_list arguments) {
  OpenFxHost& host = *param.properties.host;
  if (host.failsNow() || host.manners.failsValues) return kOfxStatFailed;
  if (param.type == kOfxParamTypeString) {
    *va_arg(arguments, char**) = lentText(param.text);
    return kOfxStatOK;
  }
  const bool isNow = time == nullptr || host.manners.ignoresTime;
  const std::vector<double> numbers =
      param.curve ? param.curve(isNow ? host.manners.now.load() : *time) : param.numbers;
  for (const double number : numbers) {
    if (isWhole(param.type)) {
      *va_arg(arguments, int*) = static_cast<int>(number);
    } else {
      *va_arg(arguments, double*) = number;
    }
  }
  return kOfxStatOK;
}

OfxStatus getParamValue(OfxParamHandle param, ...) {
  std::va_list arguments;
  va_start(arguments, param);
  const OfxStatus status = giveValue(*param, nullptr, arguments);
  va_end(arguments);
  return status;
}

OfxStatus getParamValueAtTime(OfxParamHandle param, OfxTime time, ...) {
  std::va_list arguments;
  va_start(arguments, time);
  const OfxStatus status = giveValue(*param, &time, arguments);
  va_end(arguments);
  return status;
}

OfxStatus setParamValue(OfxParamHandle param, ...) {
  if (param->properties.host->failsNow()) return kOfxStatFailed;
  std::va_list arguments;
  va_start(arguments, param);
  for (double& number : param->numbers) {
    number = isWhole(param->type) ? va_arg(arguments, int) : va_arg(arguments, double);
  }
  if (param->type == kOfxParamTypeString) param->text = va_arg(arguments, const char*);
  va_end(arguments);
  return kOfxStatOK;
}

constexpr OfxParameterSuite1 kParameterSuite = {defineParam,
                                                getParamHandle,
                                                getParamSetProperties,
                                                getParamProperties,
                                                getParamValue,
                                                getParamValueAtTime,
                                                nullptr,
                                                nullptr,
                                                setParamValue,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr,
                                                nullptr};

OfxStatus showMessage(void*, const char*, const char*, const char*, ...) {
  return kOfxStatOK;
}

OfxStatus setMessage(void* effect, const char*, const char*, const char* format, ...) {
  char text[1024];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  static_cast<OfxImageEffectStruct*>(effect)->message = text;
  return kOfxStatOK;
}

OfxStatus clearMessage(void* effect) {
  static_cast<OfxImageEffectStruct*>(effect)->message.clear();
  return kOfxStatOK;
}

constexpr OfxMessageSuite2 kMessageSuite = {showMessage, setMessage, clearMessage};

}  // namespace

const void* openFxSuite(const char* name, int version) {
  struct Suite {
    const char* name;
    int version;
    const void* table;
  };
  static constexpr Suite kSuites[] = {{kOfxPropertySuite, 1, &kPropertySuite},
                                      {kOfxImageEffectSuite, 1, &kEffectSuite},
                                      {kOfxParameterSuite, 1, &kParameterSuite},
                                      {kOfxMessageSuite, 2, &kMessageSuite}};
  for (const Suite& suite : kSuites) {
    if (std::strcmp(suite.name, name) == 0 && suite.version == version) return suite.table;
  }
  return nullptr;
}

}  // namespace hostkit
