#include "desk/render/frame_renderer.h"

#include <chrono>
#include <new>

#include "cli/support/processors.h"
#include "desk/render/scene_painter.h"

namespace desk {
namespace {

using Clock = std::chrono::steady_clock;

/// The way to a picture that is no longer wanted is left once it is long, while pictures come more
/// often than that, and in any case where it is too long to be waited for.
constexpr std::chrono::milliseconds kLongWay{15};
constexpr std::chrono::milliseconds kPatience{100};
constexpr std::chrono::milliseconds kTooLongWay{1000};

}  // namespace

FrameRenderer::FrameRenderer(QObject* parent)
    : QObject(parent), thread_([this](const std::stop_token& stop) { work(stop); }) {
  qRegisterMetaType<desk::Picture>();
}

FrameRenderer::~FrameRenderer() {
  thread_.request_stop();
  thread_.join();
}

std::uint64_t FrameRenderer::request(const FrameRequest& request) {
  std::uint64_t number = 0;
  {
    const std::scoped_lock lock(mutex_);
    next_ = request;
    number = ++newest_;
  }
  wanted_.notify_one();
  return number;
}

void FrameRenderer::work(const std::stop_token& stop) {
  ScenePainter painter(cli::usableProcessors());
  Clock::time_point shown = Clock::now();
  for (;;) {
    FrameRequest request;
    std::uint64_t number = 0;
    {
      std::unique_lock lock(mutex_);
      if (!wanted_.wait(lock, stop, [this] { return next_.has_value(); })) return;
      request = *std::exchange(next_, std::nullopt);
      number = newest_;
    }
    const auto start = Clock::now();
    Picture picture;
    try {
      picture = painter.paint(request, [&] {
        if (stop.stop_requested()) throw Abandoned();
        if (newest_ == number) return;
        const auto now = Clock::now();
        const auto way = now - start;
        if (way > kTooLongWay || (way > kLongWay && now - shown < kPatience)) throw Abandoned();
      });
    } catch (const Abandoned&) {
      continue;
    } catch (const std::bad_alloc&) {
      picture.problem = tr("There is no memory for this picture; a lower resolution needs less.");
    } catch (const std::exception& error) {
      picture.problem = QString::fromUtf8(error.what());
    }
    picture.state = request.state;
    picture.frame = request.frame;
    picture.reduction = request.reduction;
    picture.request = number;
    shown = Clock::now();
    picture.milliseconds = std::chrono::duration<double, std::milli>(shown - start).count();
    emit rendered(picture);
  }
}

}  // namespace desk
