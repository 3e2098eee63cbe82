// When pictures were shown, for scripts that measure it.
#pragma once

#include <QObject>
#include <cstdio>
#include <memory>

#include "desk/render/preview.h"

namespace desk {

/// Where the environment's BRISEL_PREVIEW_TRACE names a file, a line for each time that the view
/// was painted: the nanoseconds of the system's monotonic clock, the picture's frame, the number of
/// its request, and whether that is the newest.
class PaintTrace : public QObject {
  Q_OBJECT

 public:
  static void start(const Preview& preview, QWidget& view);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  PaintTrace(const Preview& preview, QWidget& view, std::FILE* file);

  const Preview& preview_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

}  // namespace desk
