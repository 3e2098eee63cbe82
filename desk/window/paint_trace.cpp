#include "desk/window/paint_trace.h"

#include <QEvent>
#include <QWidget>
#include <chrono>

namespace desk {

void PaintTrace::start(const Preview& preview, QWidget& view) {
  const QByteArray path = qgetenv("BRISEL_PREVIEW_TRACE");
  if (path.isEmpty()) return;
  if (std::FILE* file = std::fopen(path.constData(), "w")) new PaintTrace(preview, view, file);
}

PaintTrace::PaintTrace(const Preview& preview, QWidget& view, std::FILE* file)
    : QObject(&view), preview_(preview), file_(file, std::fclose) {
  view.installEventFilter(this);
}

bool PaintTrace::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() != QEvent::Paint || preview_.picture().image.isNull()) return false;
  // Once what is painted has gone to the screen.
  const auto write = [this, frame = preview_.picture().frame, request = preview_.picture().request,
                      isNewest = preview_.isUpToDate()] {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::fprintf(file_.get(), "%lld %d %llu %d\n",
                 static_cast<long long>(std::chrono::nanoseconds(now).count()), frame,
                 static_cast<unsigned long long>(request), isNewest ? 1 : 0);
    std::fflush(file_.get());
  };
  QMetaObject::invokeMethod(this, write, Qt::QueuedConnection);
  return false;
}

}  // namespace desk
