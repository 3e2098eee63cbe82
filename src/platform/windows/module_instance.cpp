#include "platform/windows/module_instance.h"

namespace {

HINSTANCE instance = nullptr;

}  // namespace

namespace brisel {

HINSTANCE moduleInstance() {
  return instance;
}

}  // namespace brisel

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) instance = library;
  return TRUE;
}
