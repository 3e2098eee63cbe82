#include "platform/short_thread.h"

#include <dlfcn.h>
#include <pthread.h>

namespace brisel {
namespace {

// Unloading the module would take the running thread's code away. A thread cannot close the
// library it runs in, so once one was started the module stays for the life of the process.
void keepModuleLoaded() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&keepModuleLoaded), &info) == 0) return;
  dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}

void* runWork(void* work) {
  reinterpret_cast<void (*)()>(work)();
  return nullptr;
}

}  // namespace

bool runInShortThread(void (*work)()) {
  keepModuleLoaded();
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return false;
  pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  pthread_t thread{};
  const int error = pthread_create(&thread, &attributes, runWork, reinterpret_cast<void*>(work));
  pthread_attr_destroy(&attributes);
  return error == 0;
}

}  // namespace brisel
