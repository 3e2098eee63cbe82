// The OpenFX interface of image effects, as far as the plug-in and the small host use it: records,
// functions and status codes. Names are those of the interface.
#pragma once

#include <climits>
#include <cstddef>

#include "openfx/api/names.h"

using OfxStatus = int;
using OfxTime = double;  // frames

struct OfxPropertySetStruct;
struct OfxImageEffectStruct;
struct OfxImageClipStruct;
struct OfxImageMemoryStruct;
struct OfxParamStruct;
struct OfxParamSetStruct;
using OfxPropertySetHandle = OfxPropertySetStruct*;
using OfxImageEffectHandle = OfxImageEffectStruct*;
using OfxImageClipHandle = OfxImageClipStruct*;
using OfxImageMemoryHandle = OfxImageMemoryStruct*;
using OfxParamHandle = OfxParamStruct*;
using OfxParamSetHandle = OfxParamSetStruct*;

/// Half open: x1 <= x < x2. Rows go up.
struct OfxRectI {
  int x1, y1, x2, y2;
};
struct OfxRectD {
  double x1, y1, x2, y2;
};
struct OfxRangeD {
  double min, max;
};
static_assert(sizeof(OfxRectI) == 16 && sizeof(OfxRectD) == 32 && sizeof(OfxRangeD) == 16);

// Sides of rectangles without an end there.
inline constexpr int kOfxFlagInfiniteMin = INT_MIN;
inline constexpr int kOfxFlagInfiniteMax = INT_MAX;

struct OfxHost {
  OfxPropertySetHandle host;
  const void* (*fetchSuite)(OfxPropertySetHandle host, const char* name, int version);
};
static_assert(sizeof(OfxHost) == 16 && offsetof(OfxHost, fetchSuite) == 8);

using OfxPluginEntryPoint = OfxStatus(const char* action, const void* handle,
                                      OfxPropertySetHandle inArgs, OfxPropertySetHandle outArgs);

struct OfxPlugin {
  const char* pluginApi;
  int apiVersion;
  const char* pluginIdentifier;
  unsigned int pluginVersionMajor;
  unsigned int pluginVersionMinor;
  void (*setHost)(OfxHost* host);
  OfxPluginEntryPoint* mainEntry;
};
static_assert(sizeof(OfxPlugin) == 48 && offsetof(OfxPlugin, apiVersion) == 8);
static_assert(offsetof(OfxPlugin, pluginIdentifier) == 16);
static_assert(offsetof(OfxPlugin, pluginVersionMajor) == 24);
static_assert(offsetof(OfxPlugin, pluginVersionMinor) == 28);
static_assert(offsetof(OfxPlugin, setHost) == 32 && offsetof(OfxPlugin, mainEntry) == 40);

// Suites: tables of functions, fetched by name and version.

struct OfxPropertySuite1 {
  using Set = OfxPropertySetHandle;
  OfxStatus (*propSetPointer)(Set set, const char* property, int index, void* value);
  OfxStatus (*propSetString)(Set set, const char* property, int index, const char* value);
  OfxStatus (*propSetDouble)(Set set, const char* property, int index, double value);
  OfxStatus (*propSetInt)(Set set, const char* property, int index, int value);
  OfxStatus (*propSetPointerN)(Set set, const char* property, int count, void* const* values);
  OfxStatus (*propSetStringN)(Set set, const char* property, int count, const char* const* values);
  OfxStatus (*propSetDoubleN)(Set set, const char* property, int count, const double* values);
  OfxStatus (*propSetIntN)(Set set, const char* property, int count, const int* values);
  OfxStatus (*propGetPointer)(Set set, const char* property, int index, void** value);
  OfxStatus (*propGetString)(Set set, const char* property, int index, char** value);
  OfxStatus (*propGetDouble)(Set set, const char* property, int index, double* value);
  OfxStatus (*propGetInt)(Set set, const char* property, int index, int* value);
  OfxStatus (*propGetPointerN)(Set set, const char* property, int count, void** values);
  OfxStatus (*propGetStringN)(Set set, const char* property, int count, char** values);
  OfxStatus (*propGetDoubleN)(Set set, const char* property, int count, double* values);
  OfxStatus (*propGetIntN)(Set set, const char* property, int count, int* values);
  OfxStatus (*propReset)(Set set, const char* property);
  OfxStatus (*propGetDimension)(Set set, const char* property, int* count);
};
static_assert(sizeof(OfxPropertySuite1) == 18 * 8);
static_assert(offsetof(OfxPropertySuite1, propSetString) == 1 * 8);
static_assert(offsetof(OfxPropertySuite1, propSetIntN) == 7 * 8);
static_assert(offsetof(OfxPropertySuite1, propGetInt) == 11 * 8);
static_assert(offsetof(OfxPropertySuite1, propGetDimension) == 17 * 8);

struct OfxImageEffectSuite1 {
  OfxStatus (*getPropertySet)(OfxImageEffectHandle effect, OfxPropertySetHandle* set);
  OfxStatus (*getParamSet)(OfxImageEffectHandle effect, OfxParamSetHandle* set);
  OfxStatus (*clipDefine)(OfxImageEffectHandle effect, const char* name, OfxPropertySetHandle* set);
  OfxStatus (*clipGetHandle)(OfxImageEffectHandle effect, const char* name,
                             OfxImageClipHandle* clip, OfxPropertySetHandle* set);
  OfxStatus (*clipGetPropertySet)(OfxImageClipHandle clip, OfxPropertySetHandle* set);
  OfxStatus (*clipGetImage)(OfxImageClipHandle clip, OfxTime time, const OfxRectD* region,
                            OfxPropertySetHandle* image);
  OfxStatus (*clipReleaseImage)(OfxPropertySetHandle image);
  OfxStatus (*clipGetRegionOfDefinition)(OfxImageClipHandle clip, OfxTime time, OfxRectD* bounds);
  int (*abort)(OfxImageEffectHandle effect);
  OfxStatus (*imageMemoryAlloc)(OfxImageEffectHandle effect, std::size_t bytes,
                                OfxImageMemoryHandle* memory);
  OfxStatus (*imageMemoryFree)(OfxImageMemoryHandle memory);
  OfxStatus (*imageMemoryLock)(OfxImageMemoryHandle memory, void** bytes);
  OfxStatus (*imageMemoryUnlock)(OfxImageMemoryHandle memory);
};
static_assert(sizeof(OfxImageEffectSuite1) == 13 * 8);
static_assert(offsetof(OfxImageEffectSuite1, clipDefine) == 2 * 8);
static_assert(offsetof(OfxImageEffectSuite1, clipGetImage) == 5 * 8);
static_assert(offsetof(OfxImageEffectSuite1, abort) == 8 * 8);

struct OfxParameterSuite1 {
  using Param = OfxParamHandle;
  OfxStatus (*paramDefine)(OfxParamSetHandle set, const char* type, const char* name,
                           OfxPropertySetHandle* properties);
  OfxStatus (*paramGetHandle)(OfxParamSetHandle set, const char* name, Param* param,
                              OfxPropertySetHandle* properties);
  OfxStatus (*paramSetGetPropertySet)(OfxParamSetHandle set, OfxPropertySetHandle* properties);
  OfxStatus (*paramGetPropertySet)(Param param, OfxPropertySetHandle* properties);
  OfxStatus (*paramGetValue)(Param param, ...);
  OfxStatus (*paramGetValueAtTime)(Param param, OfxTime time, ...);
  OfxStatus (*paramGetDerivative)(Param param, OfxTime time, ...);
  OfxStatus (*paramGetIntegral)(Param param, OfxTime from, OfxTime to, ...);
  OfxStatus (*paramSetValue)(Param param, ...);
  OfxStatus (*paramSetValueAtTime)(Param param, OfxTime time, ...);
  OfxStatus (*paramGetNumKeys)(Param param, unsigned int* count);
  OfxStatus (*paramGetKeyTime)(Param param, unsigned int nth, OfxTime* time);
  OfxStatus (*paramGetKeyIndex)(Param param, OfxTime time, int direction, int* index);
  OfxStatus (*paramDeleteKey)(Param param, OfxTime time);
  OfxStatus (*paramDeleteAllKeys)(Param param);
  OfxStatus (*paramCopy)(Param to, Param from, OfxTime offset, const OfxRangeD* range);
  OfxStatus (*paramEditBegin)(OfxParamSetHandle set, const char* label);
  OfxStatus (*paramEditEnd)(OfxParamSetHandle set);
};
static_assert(sizeof(OfxParameterSuite1) == 18 * 8);
static_assert(offsetof(OfxParameterSuite1, paramGetPropertySet) == 3 * 8);
static_assert(offsetof(OfxParameterSuite1, paramGetValueAtTime) == 5 * 8);
static_assert(offsetof(OfxParameterSuite1, paramSetValue) == 8 * 8);
static_assert(offsetof(OfxParameterSuite1, paramEditEnd) == 17 * 8);

struct OfxMessageSuite2 {
  OfxStatus (*message)(void* effect, const char* type, const char* id, const char* format, ...);
  OfxStatus (*setPersistentMessage)(void* effect, const char* type, const char* id,
                                    const char* format, ...);
  OfxStatus (*clearPersistentMessage)(void* effect);
};
static_assert(sizeof(OfxMessageSuite2) == 3 * 8);
static_assert(offsetof(OfxMessageSuite2, setPersistentMessage) == 1 * 8);

inline constexpr OfxStatus kOfxStatOK = 0;
inline constexpr OfxStatus kOfxStatFailed = 1;
inline constexpr OfxStatus kOfxStatErrUnknown = 3;
inline constexpr OfxStatus kOfxStatErrMissingHostFeature = 4;
inline constexpr OfxStatus kOfxStatErrUnsupported = 5;
inline constexpr OfxStatus kOfxStatErrExists = 6;
inline constexpr OfxStatus kOfxStatErrMemory = 8;
inline constexpr OfxStatus kOfxStatErrBadHandle = 9;
inline constexpr OfxStatus kOfxStatErrBadIndex = 10;
inline constexpr OfxStatus kOfxStatErrValue = 11;
inline constexpr OfxStatus kOfxStatReplyDefault = 14;
