#include "hostkit/callbacks.h"

#include <cstring>
#include <new>
#include <utility>

#include "plugin/sdk/codes.h"

namespace hostkit {

namespace {

// A module may call back only on the thread that called it, so every thread has its own.
thread_local HostRecords* current = nullptr;

// Memory that runs out is told as the interface has it: the module that called would take an
// exception for one of its own.

PF_Err addParam(PF_ProgPtr effectRef, PF_ParamIndex index, PF_ParamDef* def) try {
  HostRecords* host = currentHost(effectRef);
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  if (def == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (host->addParamError != PF_Err_NONE && host->parameters.count() == host->addParamErrorIndex) {
    return host->addParamError;
  }
  return host->parameters.add(index, *def);
} catch (const std::bad_alloc&) {
  return PF_Err_OUT_OF_MEMORY;
}

PF_Err registerUI(PF_ProgPtr effectRef, PF_CustomUIInfo* info) {
  HostRecords* host = currentHost(effectRef);
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  if (info == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  host->customUI = *info;
  return host->registerUIError;
}

PF_Handle newHandle(A_u_longlong size) try {
  return current == nullptr ? nullptr : current->handles.allocate(size);
} catch (const std::bad_alloc&) {
  return nullptr;
}

void* lockHandle(PF_Handle handle) try {
  return current == nullptr ? nullptr : current->handles.lock(handle);
} catch (const std::bad_alloc&) {
  return nullptr;
}

void unlockHandle(PF_Handle handle) {
  if (current != nullptr) current->handles.unlock(handle);
}

void disposeHandle(PF_Handle handle) {
  if (current != nullptr) current->handles.dispose(handle);
}

A_u_longlong handleSize(PF_Handle handle) {
  return current == nullptr ? 0 : current->handles.size(handle);
}

PF_Err resizeHandle(A_u_longlong newSize, PF_Handle* handle) try {
  if (current == nullptr) return PF_Err_INVALID_CALLBACK;
  return current->handles.resize(*handle, newSize) ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
} catch (const std::bad_alloc&) {
  return PF_Err_OUT_OF_MEMORY;
}

PF_Err getPlatformData(PF_ProgPtr effectRef, A_long which, void* data) {
  HostRecords* host = currentHost(effectRef);
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  if (host->pane.failsNow()) return PF_Err_OUT_OF_MEMORY;
  if (which != PF_PlatData_MAIN_WND || data == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  void* const noWindow = nullptr;  // this host has no window of its own
  std::memcpy(data, &noWindow, sizeof noWindow);
  return PF_Err_NONE;
}

SPErr acquireSuite(const char* name, std::int32_t version, const void** suite) try {
  *suite = current == nullptr ? nullptr : current->suites.acquire({name, version});
  return *suite == nullptr ? PF_Err_INVALID_CALLBACK : PF_Err_NONE;
} catch (const std::bad_alloc&) {
  *suite = nullptr;
  return PF_Err_OUT_OF_MEMORY;
}

SPErr releaseSuite(const char* name, std::int32_t version) {
  const bool released = current != nullptr && current->suites.release({name, version});
  return released ? PF_Err_NONE : PF_Err_INVALID_CALLBACK;
}

}  // namespace

CurrentHost::CurrentHost(HostRecords& records) : previous_(std::exchange(current, &records)) {}

CurrentHost::~CurrentHost() {
  current = previous_;
}

HostRecords* currentHost(PF_ProgPtr effectRef) {
  if (current != nullptr && effectRef != current->effectRef) ++current->wrongEffectRefs;
  return current;
}

HostRecords* currentHost() {
  return current;
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
  callbacks.get_platform_data = getPlatformData;
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
