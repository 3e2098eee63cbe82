#include "platform/short_thread.h"

#include <windows.h>

namespace brisel {
namespace {

// The module that this code lies in.
HMODULE ownModule(DWORD flags) {
  HMODULE module = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags,
                     reinterpret_cast<LPCSTR>(&ownModule), &module);
  return module;
}

DWORD WINAPI runWork(void* work) {
  reinterpret_cast<void (*)()>(work)();
  FreeLibraryAndExitThread(ownModule(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT), 0);
}

}  // namespace

bool runInShortThread(void (*work)()) {
  const HMODULE module = ownModule(0);  // counts as one more use, until the thread ends
  if (module == nullptr) return false;
  const HANDLE thread =
      CreateThread(nullptr, 0, runWork, reinterpret_cast<void*>(work), 0, nullptr);
  if (thread == nullptr) {
    FreeLibrary(module);
    return false;
  }
  CloseHandle(thread);
  return true;
}

}  // namespace brisel
