#include "plugin/controls/opener.h"

#include <atomic>
#include <utility>

#include "platform/open_document.h"
#include "platform/short_thread.h"
#include "plugin/sdk/codes.h"

namespace brisel {
namespace {

/// The one request that may be under way. Written by the host's thread while it is not busy; the
/// thread that serves it only reads, and clears `busy` at the end.
struct OpenRequest {
  std::atomic<bool> busy = false;
  std::string target;
  void* mainWindow = nullptr;
};

OpenRequest& openRequest() {
  // Never destroyed: a thread may still be serving it when the process ends.
  static auto* request = new OpenRequest;
  return *request;
}

void serveRequest() {
  OpenRequest& request = openRequest();
  openDocument(request.target.c_str(), request.mainWindow);
  request.busy.store(false);
}

void* mainWindowOf(const PF_InData& in) {
  void* window = nullptr;
  if (in.utils == nullptr || in.utils->get_platform_data == nullptr ||
      in.utils->get_platform_data(in.effect_ref, PF_PlatData_MAIN_WND, &window) != PF_Err_NONE) {
    return nullptr;
  }
  return window;
}

}  // namespace

void openBesideHost(const PF_InData& in, std::string target) {
  OpenRequest& request = openRequest();
  void* const window = mainWindowOf(in);
  if (request.busy.exchange(true)) return;
  request.target = std::move(target);  // a copy could fail and leave it busy for ever
  request.mainWindow = window;
  if (!runInShortThread(serveRequest)) request.busy.store(false);
}

}  // namespace brisel
