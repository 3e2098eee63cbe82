#include "hostkit/openfx/host.h"
#include "hostkit/openfx/objects.h"
#include "hostkit/openfx/suites.h"

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
  if (set->isGone) return refuse(kOfxStatErrBadHandle, "is asked of what was given back");
  if (name == set->host->manners.lackedProperty) {
    status = kOfxStatErrUnknown;
    return nullptr;
  }
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

}  // namespace

const OfxPropertySuite1 kPropertySuite = {
    setPointer, setString, setDouble, setInt,  nullptr, nullptr, nullptr, nullptr, getPointer,
    getString,  getDouble, getInt,    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};

}  // namespace hostkit
