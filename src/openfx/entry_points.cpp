// The functions that hosts call. Nothing of the host's is freed at unload, and load may come again:
// hosts do both as they please.
#include <cstring>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <new>

#include "core/floating_point_guard.h"
#include "openfx/description.h"
#include "openfx/effect_instance.h"

#if defined(_WIN32)
#define BRISEL_EXPORT __declspec(dllexport)
#else
#define BRISEL_EXPORT __attribute__((visibility("default")))
#endif

namespace brisel::openfx {
namespace {

const OfxHost* hostRecord = nullptr;
Host host;

/// The instances by the host's handles, so that one can be found and freed whatever a host answers.
class Instances {
 public:
  void add(OfxImageEffectHandle handle, std::shared_ptr<EffectInstance> instance) {
    const std::scoped_lock lock(mutex_);
    instances_[handle] = std::move(instance);
  }
  std::shared_ptr<EffectInstance> find(OfxImageEffectHandle handle) {
    const std::scoped_lock lock(mutex_);
    const auto found = instances_.find(handle);
    return found != instances_.end() ? found->second : nullptr;
  }
  bool remove(OfxImageEffectHandle handle) {
    const std::scoped_lock lock(mutex_);
    return instances_.erase(handle) != 0;
  }

 private:
  std::mutex mutex_;
  std::map<OfxImageEffectHandle, std::shared_ptr<EffectInstance>> instances_;
};

Instances& instances() {
  static Instances all;
  return all;
}

struct Call {
  OfxImageEffectHandle handle;
  Properties in, out;
};

OfxStatus load(const Call&) {
  host = hostOf(hostRecord);
  return host.isComplete() ? kOfxStatOK : kOfxStatErrMissingHostFeature;
}

OfxStatus unload(const Call&) {
  return kOfxStatOK;
}

OfxStatus describeEffect(const Call& call) {
  return describe(host, call.handle);
}

OfxStatus describeEffectInContext(const Call& call) {
  return describeInContext(host, call.handle, call.in);
}

OfxStatus createInstance(const Call& call) {
  instances().add(call.handle, std::make_shared<EffectInstance>(host, call.handle));
  return kOfxStatOK;
}

OfxStatus destroyInstance(const Call& call) {
  return instances().remove(call.handle) ? kOfxStatOK : kOfxStatErrBadHandle;
}

OfxStatus purgeCaches(EffectInstance& instance, const Call&) {
  instance.forget();
  return kOfxStatOK;
}

OfxStatus changeInstance(EffectInstance& instance, const Call& call) {
  return instance.instanceChanged(call.in);
}

OfxStatus getClipPreferences(EffectInstance& instance, const Call& call) {
  return instance.getClipPreferences(call.out);
}

OfxStatus getRegionOfDefinition(EffectInstance& instance, const Call& call) {
  return instance.getRegionOfDefinition(call.in, call.out);
}

OfxStatus getRegionsOfInterest(EffectInstance& instance, const Call& call) {
  return instance.getRegionsOfInterest(call.in, call.out);
}

OfxStatus render(EffectInstance& instance, const Call& call) {
  return instance.render(call.in);
}

/// Of the plug-in and its descriptors, or of an instance.
struct Action {
  const char* name;
  OfxStatus (*run)(const Call& call);
  OfxStatus (*runOnInstance)(EffectInstance& instance, const Call& call);
};

constexpr Action kActions[] = {
    {kOfxActionLoad, load, nullptr},
    {kOfxActionUnload, unload, nullptr},
    {kOfxActionDescribe, describeEffect, nullptr},
    {kOfxActionDescribeInContext, describeEffectInContext, nullptr},
    {kOfxActionCreateInstance, createInstance, nullptr},
    {kOfxActionDestroyInstance, destroyInstance, nullptr},
    {kOfxActionPurgeCaches, nullptr, purgeCaches},
    {kOfxActionInstanceChanged, nullptr, changeInstance},
    {kOfxActionGetClipPreferences, nullptr, getClipPreferences},
    {kOfxActionGetRegionOfDefinition, nullptr, getRegionOfDefinition},
    {kOfxActionGetRegionsOfInterest, nullptr, getRegionsOfInterest},
    {kOfxActionRender, nullptr, render},
};

OfxStatus run(const Action& action, const Call& call) {
  const bool isOfEffect = action.run != load && action.run != unload;
  if (isOfEffect && call.handle == nullptr) return kOfxStatErrBadHandle;
  if (isOfEffect && !host.isComplete()) return kOfxStatErrMissingHostFeature;
  if (action.run != nullptr) return action.run(call);
  const std::shared_ptr<EffectInstance> instance = instances().find(call.handle);
  return instance != nullptr ? action.runOnInstance(*instance, call) : kOfxStatErrBadHandle;
}

void setHost(OfxHost* given) {
  hostRecord = given;
}

OfxStatus mainEntry(const char* name, const void* handle, OfxPropertySetHandle in,
                    OfxPropertySetHandle out) {
  if (name == nullptr) return kOfxStatErrValue;
  const FloatingPointGuard floatingPoint;
  try {
    for (const Action& action : kActions) {
      if (std::strcmp(action.name, name) != 0) continue;
      const auto effect = static_cast<OfxImageEffectHandle>(const_cast<void*>(handle));
      return run(action, {effect, {host, in}, {host, out}});
    }
    return kOfxStatReplyDefault;
  } catch (const std::bad_alloc&) {
    return kOfxStatErrMemory;
  } catch (...) {
    return kOfxStatFailed;
  }
}

OfxPlugin plugin = {
    kOfxImageEffectPluginApi, 1, kPluginIdentifier, kPluginMajor, kPluginMinor, setHost, mainEntry};

}  // namespace
}  // namespace brisel::openfx

// NOLINTBEGIN(readability-identifier-naming): by which hosts find them
extern "C" BRISEL_EXPORT int OfxGetNumberOfPlugins() {
  return 1;
}

extern "C" BRISEL_EXPORT OfxPlugin* OfxGetPlugin(int nth) {
  return nth == 0 ? &brisel::openfx::plugin : nullptr;
}
// NOLINTEND(readability-identifier-naming)
