#include "hostkit/openfx/objects.h"

#include "hostkit/openfx/host.h"

OfxParamStruct* OfxParamSetStruct::find(const std::string& name) const {
  for (const auto& param : params) {
    if (param->properties.name == name) return param.get();
  }
  return nullptr;
}

OfxImageEffectStruct::OfxImageEffectStruct(hostkit::OpenFxHost& itsHost)
    : host(&itsHost),
      properties(itsHost, "effect"),
      params{OfxPropertySetStruct(itsHost, "parameters")} {
  using Text = std::string;
  for (const char* name : {kOfxPropLabel, kOfxEffectGrouping, kOfxPropPluginDescription,
                           kOfxPropVersionLabel, kOfxEffectRenderThreadSafety}) {
    properties.has(name, {Text()});
  }
  properties.lists(kOfxEffectSupportedContexts, Text());
  properties.lists(kOfxEffectSupportedPixelDepths, Text());
  for (const char* name : {kOfxEffectHostFrameThreading, kOfxEffectSupportsTiles,
                           kOfxEffectSupportsMultiResolution, kOfxEffectFieldRenderTwice}) {
    properties.has(name, {1});
  }
  properties.has(kOfxEffectTemporalClipAccess, {0});
  params.properties.lists(kOfxParamPageOrder, Text());
}

OfxImageClipStruct* OfxImageEffectStruct::find(const std::string& name) const {
  for (const auto& clip : clips) {
    if (clip->properties.get<std::string>(kOfxPropName) == name) return clip.get();
  }
  return nullptr;
}
