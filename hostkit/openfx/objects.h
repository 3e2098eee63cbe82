// hostkit: what OpenFX handles point to. Strict: a property that the interface does not give an
// object, one of another type, or a gap in a list is answered as the interface says, and noted.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "openfx/api/openfx.h"

namespace hostkit {

class OpenFxHost;

using PropertyValue = std::variant<int, double, std::string, void*>;

struct Property {
  PropertyValue initial;  // of the property's type
  std::size_t dimension;  // 0: any
  std::vector<PropertyValue> values;
};

}  // namespace hostkit

struct OfxPropertySetStruct {
  OfxPropertySetStruct(hostkit::OpenFxHost& itsHost, std::string itsName)
      : host(&itsHost), name(std::move(itsName)) {}

  /// One that has these values.
  void has(const char* property, std::vector<hostkit::PropertyValue> values) {
    properties[property] = {values.front(), values.size(), values};
  }
  /// A list, empty at first, of values of that one's type.
  void lists(const char* property, hostkit::PropertyValue initial) {
    properties[property] = {std::move(initial), 0, {}};
  }
  template <class Value>
  Value get(const char* property, std::size_t index = 0) const {
    return std::get<Value>(properties.at(property).values.at(index));
  }
  bool has(const char* property) const { return properties.contains(property); }

  hostkit::OpenFxHost* host;
  std::string name;     // for complaints
  bool isGone = false;  // nobody may use it any more
  std::map<std::string, hostkit::Property> properties;
};

/// A parameter of a descriptor or an instance; numbers of all its components, or a text.
struct OfxParamStruct {
  OfxPropertySetStruct properties;
  std::string type;
  std::vector<double> numbers{};
  std::string text{};
  std::function<std::vector<double>(double time)> curve{};  // in place of the numbers
};

struct OfxParamSetStruct {
  OfxPropertySetStruct properties;
  bool mayDefine = false;
  int openEdits = 0;
  std::vector<std::unique_ptr<OfxParamStruct>> params{};  // in order

  OfxParamStruct* find(const std::string& name) const;  // or null
};

struct OfxImageClipStruct {
  OfxPropertySetStruct properties;
  /// An image of its own for each call, or null.
  std::function<std::unique_ptr<OfxPropertySetStruct>(double time)> image{};
  OfxRectD region{};
  /// Of an action, those that were given back among them: they are gone.
  std::vector<std::unique_ptr<OfxPropertySetStruct>> images{};
};

struct OfxImageEffectStruct {
  explicit OfxImageEffectStruct(hostkit::OpenFxHost& itsHost);

  OfxImageClipStruct* find(const std::string& name) const;  // or null

  hostkit::OpenFxHost* host;
  OfxPropertySetStruct properties;
  OfxParamSetStruct params;
  std::vector<std::unique_ptr<OfxImageClipStruct>> clips;
  bool isInstance = false;
  std::string message;              // that stays with the effect
  std::atomic<int> abortAfter{-1};  // calls of abort() that say no; below 0: all
};
