// The effect's own controls, as it draws them itself in a host: its header and its preset rows.
#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "cli/scene/effect.h"
#include "desk/render/preview.h"

namespace desk {

/// A click on a thumbnail gives the layer shown that preset. Where the module cannot be loaded, or
/// fails, it says so in their place.
class EffectPanel : public QWidget {
  Q_OBJECT

 public:
  explicit EffectPanel(Preview& preview, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  struct Control {
    PF_ParamIndex index;
    PF_Rect rect;
  };

  void hover(PF_Point place);
  const Control* controlAt(QPointF place) const;
  void takeChanges(const hostkit::EventReport& report);
  void fail(const std::exception& error);

  Preview& preview_;
  std::unique_ptr<cli::Effect> effect_;
  std::vector<Control> controls_;
  QString problem_;  // one sentence; empty while the controls are there
};

}  // namespace desk
