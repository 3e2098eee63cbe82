#include "hostkit/openfx/suites.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

#include "hostkit/openfx/host.h"
#include "hostkit/openfx/objects.h"

namespace hostkit {
namespace {

using Set = OfxPropertySetHandle;

OfxStatus getPropertySet(OfxImageEffectHandle effect, Set* set) {
  if (effect->host->failsNow()) return kOfxStatFailed;
  *set = &effect->properties;
  return kOfxStatOK;
}

OfxStatus getParamSet(OfxImageEffectHandle effect, OfxParamSetHandle* set) {
  if (effect->host->failsNow()) return kOfxStatFailed;
  *set = &effect->params;
  return kOfxStatOK;
}

OfxStatus defineClip(OfxImageEffectHandle effect, const char* name, Set* set) {
  if (effect->host->failsNow()) return kOfxStatFailed;
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
  if (effect->host->failsNow()) return kOfxStatFailed;
  if (!effect->isInstance) effect->host->complain("a descriptor is asked for clips");
  *clip = effect->find(name);
  if (*clip == nullptr) return kOfxStatErrBadHandle;
  if (set != nullptr) *set = &(*clip)->properties;
  return kOfxStatOK;
}

OfxStatus getClipPropertySet(OfxImageClipHandle clip, Set* set) {
  if (clip->properties.host->failsNow()) return kOfxStatFailed;
  *set = &clip->properties;
  return kOfxStatOK;
}

OfxStatus getImage(OfxImageClipHandle clip, OfxTime time, const OfxRectD*, Set* image) {
  if (clip->properties.host->failsNow() || !clip->image) return kOfxStatFailed;
  std::unique_ptr<OfxPropertySetStruct> made = clip->image(time);
  if (made == nullptr) return kOfxStatFailed;
  *image = clip->images.emplace_back(std::move(made)).get();
  return kOfxStatOK;
}

/// Takes the image back even where it answers a failure.
OfxStatus releaseImage(Set image) {
  const bool fails = image->host->failsNow();
  if (std::exchange(image->isGone, true)) {
    image->host->complain(image->name + " is given back twice");
    return kOfxStatErrBadHandle;
  }
  return fails ? kOfxStatFailed : kOfxStatOK;
}

OfxStatus getRegion(OfxImageClipHandle clip, OfxTime, OfxRectD* region) {
  if (clip->properties.host->failsNow()) return kOfxStatFailed;
  *region = clip->region;
  return kOfxStatOK;
}

/// Has no status; one that fails says no.
int abortEffect(OfxImageEffectHandle effect) {
  if (effect->host->failsNow()) return 0;
  return effect->abortAfter >= 0 && effect->abortAfter-- == 0 ? 1 : 0;
}

constexpr OfxImageEffectSuite1 kEffectSuite = {
    getPropertySet, getParamSet,  defineClip, getClipHandle, getClipPropertySet,
    getImage,       releaseImage, getRegion,  abortEffect,   nullptr,
    nullptr,        nullptr,      nullptr};

OfxStatus showMessage(void*, const char*, const char*, const char*, ...) {
  return kOfxStatOK;
}

OfxStatus setMessage(void* handle, const char*, const char*, const char* format, ...) {
  auto* effect = static_cast<OfxImageEffectStruct*>(handle);
  if (effect->host->failsNow()) return kOfxStatFailed;
  char text[1024];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  effect->message = text;
  return kOfxStatOK;
}

OfxStatus clearMessage(void* handle) {
  auto* effect = static_cast<OfxImageEffectStruct*>(handle);
  if (effect->host->failsNow()) return kOfxStatFailed;
  effect->message.clear();
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
