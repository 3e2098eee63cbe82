#include <cstdarg>

#include "hostkit/openfx/host.h"
#include "hostkit/openfx/objects.h"
#include "hostkit/openfx/suites.h"

namespace hostkit {
namespace {

using Set = OfxPropertySetHandle;

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
  if (name == host.manners.refusedParameter) return kOfxStatErrUnsupported;
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
  if (time != nullptr && host.manners.failsTime) return kOfxStatErrUnsupported;
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

OfxStatus beginEdit(OfxParamSetHandle set, const char*) {
  if (set->properties.host->failsNow()) return kOfxStatFailed;
  ++set->openEdits;
  return kOfxStatOK;
}

OfxStatus endEdit(OfxParamSetHandle set) {
  const bool fails = set->properties.host->failsNow();
  if (--set->openEdits < 0) set->properties.host->complain("an edit ends that did not begin");
  return fails ? kOfxStatFailed : kOfxStatOK;
}

}  // namespace

const OfxParameterSuite1 kParameterSuite = {defineParam,
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
                                            beginEdit,
                                            endEdit};

}  // namespace hostkit
