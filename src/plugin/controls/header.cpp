#include "plugin/controls/header.h"

#include <atomic>
#include <string>
#include <utility>

#include "platform/module_folder.h"
#include "platform/open_document.h"
#include "platform/short_thread.h"
#include "plugin/controls/resource_image.h"
#include "plugin/sdk/codes.h"

namespace brisel {
namespace {

constexpr char kMakersPage[] = "https://corvane.example/";

constexpr ResourcePicture kBanner{998, 445, 100};

/// Offsets are from the header's top left corner.
struct Button {
  std::int32_t left;
  std::int32_t top;
  ResourcePicture picture;
  ResourcePicture hotPicture;

  bool contains(const ControlPoint& point, std::int32_t headerLeft, std::int32_t headerTop) const {
    const std::int32_t x = point.x - headerLeft - left;
    const std::int32_t y = point.y - headerTop - top;
    return x >= 0 && x <= picture.width && y >= 0 && y <= picture.height;
  }
};

constexpr Button kDocumentation{48, 61, {992, 41, 36}, {993, 41, 36}};
constexpr Button kLogo{2, 2, {994, 52, 55}, {995, 52, 55}};

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

/// Asks the system, in a thread of its own, to open a full path or a web address above the host's
/// main window. A request is dropped while another one is being served; failure is not reported.
void openAboveHost(const PF_InData& in, std::string target) {
  OpenRequest& request = openRequest();
  void* const window = mainWindowOf(in);
  if (request.busy.exchange(true)) return;
  request.target = std::move(target);  // a copy could fail and leave it busy for ever
  request.mainWindow = window;
  if (!runInShortThread(serveRequest)) request.busy.store(false);
}

}  // namespace

PF_Err drawHeader(ControlEvent& event, HeaderState& header) {
  const ControlRect update = updateRect(event);
  header.originLeft = update.left;
  header.originTop = update.top;
  const ControlRect frame = currentFrame(event);
  const auto drawButton = [&](Canvas& canvas, const Button& button, bool hot) {
    drawResource(canvas, hot ? button.hotPicture : button.picture, frame.left + button.left,
                 frame.top + button.top, 1.0f);
  };
  PF_Err error = PF_Err_NONE;
  bool drawn = false;
  {
    Canvas canvas(event, error);
    drawn = canvas.drawable();
    if (drawn) {
      drawResource(canvas, kBanner, frame.left, frame.top, 1.0f);
      drawButton(canvas, kDocumentation, header.documentationHot);
      drawButton(canvas, kLogo, header.logoHot);
    }
  }
  if (drawn && error == PF_Err_NONE) markHandled(event);
  return error;
}

PF_Err hoverHeader(ControlEvent& event, HeaderState& header) {
  const ControlPoint point = hoverPoint(event);
  const bool documentationHot = kDocumentation.contains(point, header.originLeft, header.originTop);
  const bool logoHot = kLogo.contains(point, header.originLeft, header.originTop);
  if (documentationHot == header.documentationHot && logoHot == header.logoHot) return PF_Err_NONE;
  header.documentationHot = documentationHot;
  header.logoHot = logoHot;
  return requestRedraw(event);
}

PF_Err clickHeader(ControlEvent& event, const char* presetRootFolder) {
  const ControlPoint point = clickPoint(event);
  const ControlRect frame = currentFrame(event);
  if (kDocumentation.contains(point, frame.left, frame.top)) {
    const std::string folder = presetRootFolder;
    if (!folder.empty()) {
      openAboveHost(event.in,
                    folder + kPathSeparator + "Documentation" + kPathSeparator + "corvanedoc.html");
    }
  } else if (kLogo.contains(point, frame.left, frame.top)) {
    openAboveHost(event.in, kMakersPage);
  }
  return requestRedraw(event);
}

}  // namespace brisel
