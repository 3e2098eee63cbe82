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

/// The host, as the last load found one with all suites; instances keep their own, as another
/// may come along.
class CurrentHost {
 public:
  void set(const OfxHost* record) {
    const std::scoped_lock lock(mutex_);
    record_ = record;
  }
  /// Returns whether the host that was set has what is needed.
  bool load() {
    const Host found = hostOf(record());
    if (!found.isComplete()) return false;
    const std::scoped_lock lock(mutex_);
    host_ = found;
    return true;
  }
  Host get() const {
    const std::scoped_lock lock(mutex_);
    return host_;
  }

 private:
  const OfxHost* record() const {
    const std::scoped_lock lock(mutex_);
    return record_;
  }

  mutable std::mutex mutex_;
  const OfxHost* record_ = nullptr;
  Host host_;
};

CurrentHost& currentHost() {
  static CurrentHost host;
  return host;
}

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
  OfxPropertySetHandle in, out;
};

OfxStatus load(const Call&) {
  return currentHost().load() ? kOfxStatOK : kOfxStatErrMissingHostFeature;
}

OfxStatus unload(const Call&) {
  return kOfxStatOK;
}

OfxStatus describeEffect(const Host& host, const Call& call) {
  return describe(host, call.handle);
}

OfxStatus describeEffectInContext(const Host& host, const Call& call) {
  return describeInContext(host, call.handle, {host, call.in});
}

OfxStatus createInstance(const Host& host, const Call& call) {
  instances().add(call.handle, std::make_shared<EffectInstance>(host, call.handle));
  return kOfxStatOK;
}

OfxStatus destroyInstance(const Call& call) {
  return instances().remove(call.handle) ? kOfxStatOK : kOfxStatErrBadHandle;
}

OfxStatus purgeCaches(EffectInstance& instance, const Call&) {
  instance.purge();
  return kOfxStatOK;
}

OfxStatus changeInstance(EffectInstance& instance, const Call& call) {
  return instance.instanceChanged(instance.properties(call.in));
}

OfxStatus getClipPreferences(EffectInstance& instance, const Call& call) {
  return instance.getClipPreferences(instance.properties(call.out));
}

OfxStatus getRegionOfDefinition(EffectInstance& instance, const Call& call) {
  return instance.getRegionOfDefinition(instance.properties(call.in),
                                        instance.properties(call.out));
}

OfxStatus getRegionsOfInterest(EffectInstance& instance, const Call& call) {
  return instance.getRegionsOfInterest(instance.properties(call.in), instance.properties(call.out));
}

OfxStatus render(EffectInstance& instance, const Call& call) {
  return instance.render(instance.properties(call.in));
}

/// Of the plug-in; of descriptors, and of what is to become an instance; or of an instance.
struct Action {
  const char* name;
  OfxStatus (*run)(const Call& call);
  OfxStatus (*runInHost)(const Host& host, const Call& call);
  OfxStatus (*runOnInstance)(EffectInstance& instance, const Call& call);
};

constexpr Action kActions[] = {
    {kOfxActionLoad, load, nullptr, nullptr},
    {kOfxActionUnload, unload, nullptr, nullptr},
    {kOfxActionDescribe, nullptr, describeEffect, nullptr},
    {kOfxActionDescribeInContext, nullptr, describeEffectInContext, nullptr},
    {kOfxActionCreateInstance, nullptr, createInstance, nullptr},
    {kOfxActionDestroyInstance, destroyInstance, nullptr, nullptr},
    {kOfxActionPurgeCaches, nullptr, nullptr, purgeCaches},
    {kOfxActionInstanceChanged, nullptr, nullptr, changeInstance},
    {kOfxActionGetClipPreferences, nullptr, nullptr, getClipPreferences},
    {kOfxActionGetRegionOfDefinition, nullptr, nullptr, getRegionOfDefinition},
    {kOfxActionGetRegionsOfInterest, nullptr, nullptr, getRegionsOfInterest},
    {kOfxActionRender, nullptr, nullptr, render},
};

OfxStatus run(const Action& action, const Call& call) {
  if (action.run != nullptr) return action.run(call);
  if (call.handle == nullptr) return kOfxStatErrBadHandle;
  if (action.runInHost != nullptr) {
    const Host host = currentHost().get();
    return host.isComplete() ? action.runInHost(host, call) : kOfxStatErrMissingHostFeature;
  }
  const std::shared_ptr<EffectInstance> instance = instances().find(call.handle);
  return instance != nullptr ? action.runOnInstance(*instance, call) : kOfxStatErrBadHandle;
}

void setHost(OfxHost* given) {
  currentHost().set(given);
}

OfxStatus mainEntry(const char* name, const void* handle, OfxPropertySetHandle in,
                    OfxPropertySetHandle out) {
  if (name == nullptr) return kOfxStatErrValue;
  const FloatingPointGuard floatingPoint;
  try {
    for (const Action& action : kActions) {
      if (std::strcmp(action.name, name) != 0) continue;
      const auto effect = static_cast<OfxImageEffectHandle>(const_cast<void*>(handle));
      return run(action, {effect, in, out});
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
