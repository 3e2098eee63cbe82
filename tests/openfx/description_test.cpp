// What the plug-in says of itself, which projects store and hosts show.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "tests/openfx/frames.h"

namespace {

using namespace tests;
using hostkit::OpenFxEffect;

std::string textOf(const OfxPropertySetStruct& set, const char* name) {
  std::ostringstream text;
  const auto found = set.properties.find(name);
  if (found == set.properties.end()) return "";
  const char* separator = "";
  for (const hostkit::PropertyValue& value : found->second.values) {
    text << std::exchange(separator, "|");
    if (const auto* whole = std::get_if<int>(&value)) text << *whole;
    if (const auto* number = std::get_if<double>(&value)) text << *number;
    if (const auto* words = std::get_if<std::string>(&value)) text << *words;
  }
  return text.str();
}

/// A line for each parameter: all that makes a stored project mean what it meant.
std::string listOf(const OfxParamSetStruct& set) {
  std::string list;
  for (const auto& param : set.params) {
    const OfxPropertySetStruct& p = param->properties;
    list += p.name + ": " + param->type.substr(std::string("OfxParamType").size());
    for (const char* name : {kOfxPropLabel, kOfxParamParent, kOfxParamDefault, kOfxParamMin,
                             kOfxParamMax, kOfxParamDisplayMin, kOfxParamDisplayMax,
                             kOfxParamDoubleType, kOfxParamChoiceOption, kOfxParamPageChild}) {
      list += "; " + textOf(p, name);
    }
    list.erase(list.find_last_not_of("; ") + 1);
    list += '\n';
  }
  return list;
}

TEST(OpenFxDescription, IsFrozen) {
  const OfxPlugin& plugin = thePlugin();
  EXPECT_STREQ(plugin.pluginApi, "OfxImageEffectPluginAPI");
  EXPECT_EQ(plugin.apiVersion, 1);
  EXPECT_STREQ(plugin.pluginIdentifier, "corvane.brisel.stars");
  EXPECT_EQ(plugin.pluginVersionMajor, 1);

  std::ifstream file(PARAMETERS_PATH);
  const std::string expected{std::istreambuf_iterator<char>(file), {}};
  StrictHost host;
  for (const char* context : {kOfxContextFilter, kOfxContextGeneral, kOfxContextGenerator}) {
    const OpenFxEffect effect(host, thePlugin(), context);
    EXPECT_EQ(listOf(effect.parameters()), expected) << context;
  }
}

TEST(OpenFxDescription, AsksForWholeFramesInTurn) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextGeneral);
  const OfxPropertySetStruct& own = effect.descriptor().properties;
  EXPECT_EQ(
      textOf(own, kOfxEffectSupportedContexts),
      "OfxImageEffectContextFilter|OfxImageEffectContextGeneral|OfxImageEffectContextGenerator");
  EXPECT_EQ(textOf(own, kOfxEffectSupportedPixelDepths),
            "OfxBitDepthByte|OfxBitDepthShort|OfxBitDepthFloat");
  EXPECT_EQ(textOf(own, kOfxEffectRenderThreadSafety), "OfxImageEffectRenderUnsafe");
  EXPECT_NE(textOf(own, kOfxPropPluginDescription), "");
  EXPECT_NE(textOf(own, kOfxPropVersionLabel), "");
  for (const char* name :
       {kOfxEffectSupportsTiles, kOfxEffectHostFrameThreading, kOfxEffectTemporalClipAccess}) {
    EXPECT_EQ(textOf(own, name), "0") << name;
  }
  const OfxPropertySetStruct& instance = effect.instance().properties;
  EXPECT_EQ(textOf(instance, kOfxEffectSequentialRender), "2");
  EXPECT_EQ(textOf(instance, kOfxEffectSupportsTiles), "0");
  for (const auto& clip : effect.instance().clips) {
    const OfxPropertySetStruct& p = clip->properties;
    EXPECT_EQ(textOf(p, kOfxEffectSupportsTiles), "0");
    EXPECT_EQ(textOf(p, kOfxEffectSupportedComponents), "OfxImageComponentRGBA");
    EXPECT_EQ(textOf(p, kOfxClipOptional), textOf(p, kOfxPropName) == "Source" ? "1" : "0");
  }
  for (const auto& param : effect.parameters().params) {
    const std::string invalidation = textOf(param->properties, kOfxParamCacheInvalidation);
    if (invalidation.empty() || param->properties.name.ends_with("Presets")) continue;
    EXPECT_EQ(invalidation, kOfxParamInvalidateAll) << param->properties.name;
  }
}

}  // namespace
