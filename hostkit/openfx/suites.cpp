#include "hostkit/openfx/suites.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "hostkit/openfx/host.h"
#include "hostkit/openfx/objects.h"

namespace hostkit {
namespace {

using Set = OfxPropertySetHandle;

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
