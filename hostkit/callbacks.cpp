#include "hostkit/callbacks.h"

#include <cstring>
#include <utility>

namespace hostkit {

namespace {

// A module may call back on the thread that called it only, so every thread has its own.
thread_local HostRecords* currentHost = nullptr;

// Null outside a command. Counts a reference that is not the running command's.
HostRecords* hostOf(PF_ProgPtr effectRef) {
  if (currentHost != nullptr && effectRef != currentHost->effectRef) {
    ++currentHost->wrongEffectRefs;
  }
  return currentHost;
}

PF_Err addParam(PF_ProgPtr effectRef, PF_ParamIndex index, PF_ParamDef* def) {
  HostRecords* host = hostOf(effectRef);
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  if (def == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (host->addParamError != PF_Err_NONE && host->parameters.count() == host->addParamErrorIndex) {
    return host->addParamError;
  }
  return host->parameters.add(index, *def);
}

PF_Err registerUI(PF_ProgPtr effectRef, PF_CustomUIInfo* info) {
  HostRecords* host = hostOf(effectRef);
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  if (info == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  host->customUI = *info;
  return host->registerUIError;
}

PF_Handle newHandle(A_u_longlong size) {
  return currentHost == nullptr ? nullptr : currentHost->handles.allocate(size);
}

void* lockHandle(PF_Handle handle) {
  return currentHost == nullptr ? nullptr : currentHost->handles.lock(handle);
}

void unlockHandle(PF_Handle handle) {
  if (currentHost != nullptr) currentHost->handles.unlock(handle);
}

void disposeHandle(PF_Handle handle) {
  if (currentHost != nullptr) currentHost->handles.dispose(handle);
}

A_u_longlong handleSize(PF_Handle handle) {
  return currentHost == nullptr ? 0 : currentHost->handles.size(handle);
}

PF_Err resizeHandle(A_u_longlong newSize, PF_Handle* handle) {
  if (currentHost == nullptr) return PF_Err_INVALID_CALLBACK;
  return currentHost->handles.resize(*handle, newSize) ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
}

SPErr acquireSuite(const char* name, std::int32_t version, const void** suite) {
  if (currentHost != nullptr) currentHost->suites.refused.push_back({name, version});
  *suite = nullptr;
  return PF_Err_INVALID_CALLBACK;
}

SPErr releaseSuite(const char*, std::int32_t) {
  if (currentHost != nullptr) ++currentHost->suites.unbalancedReleases;
  return PF_Err_INVALID_CALLBACK;
}

}  // namespace

CurrentHost::CurrentHost(HostRecords& records) : previous_(std::exchange(currentHost, &records)) {}

CurrentHost::~CurrentHost() {
  currentHost = previous_;
}

PF_InteractCallbacks interactCallbacks() {
  PF_InteractCallbacks callbacks{};
  callbacks.add_param = addParam;
  callbacks.register_ui = registerUI;
  return callbacks;
}

PF_UtilCallbacks utilCallbacks() {
  PF_UtilCallbacks callbacks{};
  callbacks.host_new_handle = newHandle;
  callbacks.host_lock_handle = lockHandle;
  callbacks.host_unlock_handle = unlockHandle;
  callbacks.host_dispose_handle = disposeHandle;
  callbacks.host_get_handle_size = handleSize;
  callbacks.host_resize_handle = resizeHandle;
  callbacks.ansi.strcpy = [](char* to, const char* from) { return std::strcpy(to, from); };
  return callbacks;
}

SPBasicSuite basicSuite() {
  SPBasicSuite suite{};
  suite.AcquireSuite = acquireSuite;
  suite.ReleaseSuite = releaseSuite;
  return suite;
}

}  // namespace hostkit
