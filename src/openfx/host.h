// The host: its suites, and its property sets read with care.
#pragma once

#include <optional>
#include <string>

#include "openfx/api/openfx.h"

namespace brisel::openfx {

/// What the host offers. Good until the binary is unloaded.
struct Host {
  OfxPropertySetHandle description = nullptr;
  const OfxPropertySuite1* property = nullptr;
  const OfxImageEffectSuite1* effect = nullptr;
  const OfxParameterSuite1* parameter = nullptr;
  const OfxMessageSuite2* message = nullptr;  // which hosts may lack

  bool isComplete() const {
    return property != nullptr && effect != nullptr && parameter != nullptr;
  }
};

/// Asks the host for its suites; null gives none.
Host hostOf(const OfxHost* host);

/// A property set of the host's, or none. Hosts lack properties that the interface promises, and
/// may leave a variable alone when they fail: then there is the fallback.
class Properties {
 public:
  Properties(const Host& host, OfxPropertySetHandle set) : suite_(host.property), set_(set) {}

  /// Returns whether the host took the value.
  bool set(const char* name, const char* value, int index = 0) const;
  bool set(const char* name, int value, int index = 0) const;
  bool set(const char* name, double value, int index = 0) const;

  int integer(const char* name, int fallback, int index = 0) const;
  double number(const char* name, double fallback, int index = 0) const;
  std::string text(const char* name) const;  // or empty; throws std::bad_alloc
  void* pointer(const char* name) const;     // or null
  std::optional<OfxRectI> rectangle(const char* name) const;

 private:
  const OfxPropertySuite1* suite_;
  OfxPropertySetHandle set_;
};

/// Of an effect, whether a descriptor or an instance.
Properties propertiesOf(const Host& host, OfxImageEffectHandle effect);
/// Of a clip of an instance; null has none.
Properties propertiesOf(const Host& host, OfxImageClipHandle clip);

}  // namespace brisel::openfx
