#include "openfx/host.h"

namespace brisel::openfx {
namespace {

template <class Suite>
void fetch(const OfxHost& host, const char* name, int version, const Suite*& suite) {
  suite = static_cast<const Suite*>(host.fetchSuite(host.host, name, version));
}

}  // namespace

Host hostOf(const OfxHost* host) {
  Host found;
  if (host == nullptr || host->fetchSuite == nullptr) return found;
  found.description = host->host;
  fetch(*host, kOfxPropertySuite, 1, found.property);
  fetch(*host, kOfxImageEffectSuite, 1, found.effect);
  fetch(*host, kOfxParameterSuite, 1, found.parameter);
  fetch(*host, kOfxMessageSuite, 2, found.message);
  return found;
}

bool Properties::set(const char* name, const char* value, int index) const {
  return set_ != nullptr && suite_->propSetString(set_, name, index, value) == kOfxStatOK;
}

bool Properties::set(const char* name, int value, int index) const {
  return set_ != nullptr && suite_->propSetInt(set_, name, index, value) == kOfxStatOK;
}

bool Properties::set(const char* name, double value, int index) const {
  return set_ != nullptr && suite_->propSetDouble(set_, name, index, value) == kOfxStatOK;
}

int Properties::integer(const char* name, int fallback, int index) const {
  int value = fallback;
  const bool isRead =
      set_ != nullptr && suite_->propGetInt(set_, name, index, &value) == kOfxStatOK;
  return isRead ? value : fallback;
}

double Properties::number(const char* name, double fallback, int index) const {
  double value = fallback;
  const bool isRead =
      set_ != nullptr && suite_->propGetDouble(set_, name, index, &value) == kOfxStatOK;
  return isRead ? value : fallback;
}

std::string Properties::text(const char* name) const {
  char* value = nullptr;
  const bool isRead = set_ != nullptr && suite_->propGetString(set_, name, 0, &value) == kOfxStatOK;
  return isRead && value != nullptr ? value : "";
}

void* Properties::pointer(const char* name) const {
  void* value = nullptr;
  const bool isRead =
      set_ != nullptr && suite_->propGetPointer(set_, name, 0, &value) == kOfxStatOK;
  return isRead ? value : nullptr;
}

std::optional<OfxRectI> Properties::rectangle(const char* name) const {
  int sides[4];
  for (int i = 0; i < 4; ++i) {
    if (set_ == nullptr || suite_->propGetInt(set_, name, i, &sides[i]) != kOfxStatOK) return {};
  }
  return OfxRectI{sides[0], sides[1], sides[2], sides[3]};
}

Properties propertiesOf(const Host& host, OfxImageEffectHandle effect) {
  OfxPropertySetHandle set = nullptr;
  const bool isFound = host.effect->getPropertySet(effect, &set) == kOfxStatOK;
  return {host, isFound ? set : nullptr};
}

Properties propertiesOf(const Host& host, OfxImageClipHandle clip) {
  OfxPropertySetHandle set = nullptr;
  const bool isFound = clip != nullptr && host.effect->clipGetPropertySet(clip, &set) == kOfxStatOK;
  return {host, isFound ? set : nullptr};
}

}  // namespace brisel::openfx
