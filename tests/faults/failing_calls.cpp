#include "tests/faults/failing_calls.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>
#include <sys/types.h>
#include <sys/uio.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

struct CodeRange {
  std::string name;  // the end of a library's path; empty: the program
  std::uintptr_t begin = 0, end = 0;
};

// Fixed arrays, since memory may be what fails.
char ordered[256] = "";  // blanks around each name
int orderedError = 0;
std::atomic<int> callsLeft = 0;  // until the one that fails; 0: none does
std::atomic<bool> hasFailed = false;
std::atomic<std::size_t> mapped = 0;  // bytes
CodeRange within, program;
const char* logFile = nullptr;

int findRange(dl_phdr_info* info, std::size_t, void* into) {
  auto& range = *static_cast<CodeRange*>(into);
  const std::string_view path = info->dlpi_name;
  if (range.name.empty() ? !path.empty() : !path.ends_with(range.name)) return 0;
  for (int i = 0; i < info->dlpi_phnum; ++i) {
    const auto& part = info->dlpi_phdr[i];
    if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0) continue;
    range.begin = info->dlpi_addr + part.p_vaddr;
    range.end = range.begin + part.p_memsz;
  }
  return 1;
}

/// Whether the call comes from the library in question, and not from the program that it has
/// called back. `caller` is where the call returns to.
bool isWithin(const void* caller) {
  if (within.name.empty()) return true;
  void* frames[64];
  void** const end = frames + backtrace(frames, 64);
  for (void** frame = std::find(frames, end, caller); frame < end; ++frame) {
    const auto address = reinterpret_cast<std::uintptr_t>(*frame);
    if (address >= within.begin && address < within.end) return true;
    if (address >= program.begin && address < program.end) return false;
  }
  return false;
}

template <class Function>
Function* systems(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void note(const char* call) {
  if (logFile == nullptr) return;
  if (std::FILE* log = systems<decltype(std::fopen)>("fopen")(logFile, "a")) {
    std::fprintf(log, "%s\n", call);
    systems<decltype(std::fclose)>("fclose")(log);
  }
}

/// Whether this call is the one that fails; errno is then set.
bool failsNow(const char* call, const void* caller) {
  if (callsLeft.load(std::memory_order_relaxed) <= 0) return false;
  const char* const found = std::strstr(ordered, call);
  if (found == nullptr || found[-1] != ' ' || found[std::strlen(call)] != ' ') return false;
  if (!isWithin(caller) || --callsLeft != 0) return false;
  hasFailed = true;
  note(call);
  errno = orderedError;
  return orderedError != 0;
}

/// Likewise of a call that may come short: how much of `count` it gets to do.
bool failsOrShortens(const char* call, const void* caller, std::size_t& count) {
  const bool failedBefore = hasFailed;
  if (failsNow(call, caller)) return true;
  if (hasFailed && !failedBefore && count > 1) count /= 2;
  return false;
}

void order(const char* calls, int nth, int error) {
  std::snprintf(ordered, sizeof ordered, " %s ", calls);
  orderedError = error;
  hasFailed = false;
  callsLeft = nth;
}

void takeOrder() {
  const char* const calls = std::getenv("FAIL_CALL");
  const char* const nth = std::getenv("FAIL_NTH");
  const char* const error = std::getenv("FAIL_ERROR");
  const char* const name = std::getenv("FAIL_PROGRAM");
  if (calls == nullptr || nth == nullptr || error == nullptr) return;
  if (name != nullptr && std::strcmp(name, program_invocation_short_name) != 0) return;
  logFile = std::getenv("FAIL_LOG");
  order(calls, std::atoi(nth), std::atoi(error));
}

int (*realMain)(int, char**, char**) = nullptr;

/// What fails before nobody can catch.
int mainWithOrder(int count, char** arguments, char** variables) {
  takeOrder();
  return realMain(count, arguments, variables);
}

void* allocate(std::size_t bytes, const void* caller) {
  if (failsNow("new", caller)) return nullptr;
  return std::malloc(bytes != 0 ? bytes : 1);
}

}  // namespace

namespace tests {

void failCall(const std::string& calls, int nth, int error, const std::string& library) {
  within.name = library;
  dl_iterate_phdr(findRange, &within);
  dl_iterate_phdr(findRange, &program);
  void* first[1];
  backtrace(first, 1);  // takes memory the first time
  order(calls.c_str(), nth, error);
}

std::size_t mappedBytes() {
  return mapped;
}

bool endFailing() {
  callsLeft = 0;
  return hasFailed;
}

}  // namespace tests

void* operator new(std::size_t bytes) {
  if (void* block = allocate(bytes, __builtin_return_address(0))) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t bytes) {
  if (void* block = allocate(bytes, __builtin_return_address(0))) return block;
  throw std::bad_alloc();
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
  return allocate(bytes, __builtin_return_address(0));
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
  return allocate(bytes, __builtin_return_address(0));
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  std::free(block);
}

// The functions have names of their own here, as the system's headers declare the others.
#define FAILING(Result, name, parameters, arguments, failure)                                    \
  extern "C" __attribute__((visibility("default"))) Result failing_##name parameters asm(#name); \
  Result failing_##name parameters {                                                             \
    static auto* const function = systems<Result parameters>(#name);                             \
    if (failsNow(#name, __builtin_return_address(0))) return failure;                            \
    return function arguments;                                                                   \
  }
#define FAILING_OR_SHORT(name, parameters, arguments, count)                                      \
  extern "C" __attribute__((visibility("default"))) ssize_t failing_##name parameters asm(#name); \
  ssize_t failing_##name parameters {                                                             \
    static auto* const function = systems<ssize_t parameters>(#name);                             \
    if (failsOrShortens(#name, __builtin_return_address(0), count)) return -1;                    \
    return function arguments;                                                                    \
  }

FAILING_OR_SHORT(read, (int file, void* to, std::size_t count), (file, to, count), count)
FAILING_OR_SHORT(pread, (int file, void* to, std::size_t count, off_t at), (file, to, count, at),
                 count)
FAILING_OR_SHORT(write, (int file, const void* from, std::size_t count), (file, from, count), count)
FAILING(ssize_t, writev, (int file, const iovec* parts, int count), (file, parts, count), -1)
FAILING(int, open, (const char* path, int flags, mode_t mode), (path, flags, mode), -1)
FAILING(int, open64, (const char* path, int flags, mode_t mode), (path, flags, mode), -1)
FAILING(std::FILE*, fopen, (const char* path, const char* mode), (path, mode), nullptr)
FAILING(std::FILE*, fopen64, (const char* path, const char* mode), (path, mode), nullptr)
FAILING(std::size_t, fwrite, (const void* from, std::size_t size, std::size_t n, std::FILE* to),
        (from, size, n, to), 0)
FAILING(int, fclose, (std::FILE * file), (file), (function(file), errno = orderedError, EOF))
FAILING(int, fflush, (std::FILE * file), (file), EOF)
FAILING(int, rename, (const char* from, const char* to), (from, to), -1)
FAILING(int, mkostemp, (char* name, int flags), (name, flags), -1)
FAILING(int, memfd_create, (const char* name, unsigned flags), (name, flags), -1)
FAILING(int, pipe2, (int* ends, int flags), (ends, flags), -1)
FAILING(int, poll, (void* files, unsigned long count, int wait), (files, count, wait), -1)
FAILING(int, fstat, (int file, void* status), (file, status), -1)
FAILING(int, stat, (const char* path, void* status), (path, status), -1)
FAILING(int, access, (const char* path, int mode), (path, mode), -1)
FAILING(pid_t, waitpid, (pid_t process, int* status, int flags), (process, status, flags), -1)
FAILING(int, waitid, (int type, unsigned id, void* end, int flags), (type, id, end, flags), -1)
FAILING(void*, dlopen, (const char* path, int flags), (path, flags), nullptr)
FAILING(void*, mmap, (void* at, std::size_t bytes, int protection, int flags, int file, off_t from),
        (at, (mapped += bytes, bytes), protection, flags, file, from), reinterpret_cast<void*>(-1))
FAILING(int, munmap, (void* at, std::size_t bytes), (at, (mapped -= bytes, bytes)), -1)
FAILING(int, pthread_create,
        (unsigned long* thread, const void* attributes, void* (*work)(void*), void* with),
        (thread, attributes, work, with), orderedError)
FAILING(int, posix_spawnp,
        (pid_t * process, const char* name, const void* files, const void* attributes,
         char* const* arguments, char* const* variables),
        (process, name, files, attributes, arguments, variables), orderedError)

using Main = int(int, char**, char**);
extern "C" __attribute__((visibility("default"))) int failingStart(
    Main* main, int count, char** arguments, void* first, void* last, void* linker,
    void* stack) asm("__libc_start_main");
int failingStart(Main* main, int count, char** arguments, void* first, void* last, void* linker,
                 void* stack) {
  realMain = main;
  return systems<int(Main*, int, char**, void*, void*, void*, void*)>("__libc_start_main")(
      mainWithOrder, count, arguments, first, last, linker, stack);
}
