// Renders frames of a scene in a thread of its own, the newest that was asked for.
#pragma once

#include <QObject>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>

#include "desk/render/picture.h"

namespace desk {

/// Of requests that wait only the newest is rendered, and the last one is always rendered. The way
/// to a frame that is no longer wanted is abandoned, unless it is long since a picture was shown
/// and the way may soon end.
/// Frames are those of `brisel render`, byte for byte before they are brought to the screen's
/// colors. The thread sleeps when nothing is asked for.
class FrameRenderer : public QObject {
  Q_OBJECT

 public:
  explicit FrameRenderer(QObject* parent = nullptr);
  ~FrameRenderer() override;  // waits for the step being made, not for the frame

  /// Returns at once, with a number that ascends.
  std::uint64_t request(const FrameRequest& request);

 signals:
  /// In the receiver's thread, for each frame that was rendered, in the order of the requests.
  void rendered(const desk::Picture& picture);

 private:
  void work(const std::stop_token& stop);

  std::mutex mutex_;
  std::condition_variable_any wanted_;
  std::optional<FrameRequest> next_;
  std::atomic<std::uint64_t> newest_ = 0;
  std::jthread thread_;  // the last: it uses the others
};

}  // namespace desk
