#include "desk/controls/effect_panel.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace desk {
namespace {

using brisel::ParamIndex;
using brisel::ParamKind;

constexpr int kMargin = 8;
constexpr ParamIndex kDrawnByEffect[] = {brisel::kInformation, brisel::kEmitterPresets,
                                         brisel::kStarPresets};

QColor colorOf(const DRAWBOT_ColorRGBA& color) {
  return QColor::fromRgbF(color.red, color.green, color.blue, color.alpha);
}

QRectF rectOf(const DRAWBOT_RectF32& rect) {
  return {rect.left, rect.top, rect.width, rect.height};
}

class QtPainter : public hostkit::Painter {
 public:
  explicit QtPainter(QPainter& painter) : painter_(painter) {}

  void fillRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color) override {
    painter_.fillRect(rectOf(rect), colorOf(color));
  }
  void strokeRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color,
                  float width) override {
    painter_.setPen(QPen(colorOf(color), width));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(rectOf(rect).translated(0.5, 0.5));  // through the middles of pixels
  }
  void drawImage(const hostkit::PaintedImage& image, const DRAWBOT_PointF32& origin,
                 float alpha) override {
    painter_.setOpacity(alpha);
    painter_.drawImage(QPointF(origin.x, origin.y),
                       QImage(image.pixels.data(), image.width, image.height, 3 * image.width,
                              QImage::Format_RGB888));
    painter_.setOpacity(1);
  }

 private:
  QPainter& painter_;
};

/// The value as the effect keeps it; nothing for kinds that are no single number.
std::optional<std::int32_t> numberOf(const PF_ParamDef& shown, ParamKind kind) {
  switch (kind) {
    case ParamKind::Number:
      return shown.u.fd.value;
    case ParamKind::WholeNumber:
      return shown.u.sd.value;
    case ParamKind::Angle:
      return shown.u.ad.value;
    case ParamKind::Checkbox:
      return shown.u.bd.value;
    case ParamKind::Popup:
      return shown.u.pd.value;
    default:
      return std::nullopt;
  }
}

PF_Point pointOf(QPointF place) {
  return {static_cast<A_long>(std::floor(place.x())), static_cast<A_long>(std::floor(place.y()))};
}

}  // namespace

EffectPanel::EffectPanel(Preview& preview, QWidget* parent) : QWidget(parent), preview_(preview) {
  setAccessibleName("The effect's own controls");
  setAccessibleDescription("For the mouse; the panel \"Presets\" does the same");
  setMouseTracking(true);
  try {
    effect_ = std::make_unique<cli::Effect>(cli::loadModule({}));
  } catch (const std::exception& error) {
    fail(error);
    return;
  }
  int top = kMargin;
  int width = 0;
  for (const ParamIndex index : kDrawnByEffect) {
    const brisel::ParameterSpec& spec = brisel::parameterSpec(index);
    controls_.push_back({index, {kMargin, top, kMargin + spec.panelWidth, top + spec.panelHeight}});
    top += spec.panelHeight + kMargin;
    width = std::max<int>(width, spec.panelWidth);
  }
  setFixedHeight(top);
  setMinimumWidth(width + 2 * kMargin);
}

void EffectPanel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  QtPainter adapter(painter);
  for (const auto& [index, rect] : controls_) {
    if (!problem_.isEmpty()) break;
    painter.save();
    painter.setClipRect(
        QRect(QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1)));
    try {
      effect_->session().draw(index, rect, &adapter);
    } catch (const std::exception& error) {
      fail(error);
    }
    painter.restore();
  }
  painter.drawText(rect().adjusted(kMargin, kMargin, -kMargin, -kMargin), Qt::TextWordWrap,
                   problem_);
}

void EffectPanel::fail(const std::exception& error) {
  if (!problem_.isEmpty()) return;
  problem_ = QString::fromUtf8(error.what());
  setAccessibleDescription(problem_);
  update();
}

const EffectPanel::Control* EffectPanel::controlAt(QPointF place) const {
  const auto found = std::ranges::find_if(controls_, [&](const Control& control) {
    const PF_Rect& rect = control.rect;
    return QRectF(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top)
        .contains(place);
  });
  return found == controls_.end() ? nullptr : &*found;
}

void EffectPanel::mouseMoveEvent(QMouseEvent* event) {
  hover(pointOf(event->position()));
}

void EffectPanel::leaveEvent(QEvent* /*event*/) {
  hover({-1, -1});
}

/// All are told, as one that the pointer leaves is no longer lit.
void EffectPanel::hover(PF_Point place) {
  if (!problem_.isEmpty()) return;
  try {
    for (const auto& [index, rect] : controls_) {
      if (!effect_->session().hover(index, rect, place).invalidated.empty()) update();
    }
  } catch (const std::exception& error) {
    fail(error);
  }
}

void EffectPanel::mousePressEvent(QMouseEvent* event) {
  const Control* control = controlAt(event->position());
  if (!problem_.isEmpty() || !control || event->button() != Qt::LeftButton) return;
  try {
    takeChanges(
        effect_->session().click(control->index, control->rect, pointOf(event->position())));
  } catch (const std::exception& error) {
    fail(error);
  }
  update();
}

/// What the effect has set is one of its presets, which a scene names.
void EffectPanel::takeChanges(const hostkit::EventReport& report) {
  const hostkit::ParameterSet& parameters = std::as_const(*effect_).session().parameters();
  const auto isNumber = [&](PF_ParamIndex index) {
    return numberOf(parameters.value(index), brisel::parameterSpec(index).kind).has_value();
  };
  // Others alone are what the effect keeps of its own controls, as which thumbnails are in sight.
  if (std::ranges::none_of(report.changed, isNumber)) return;
  const scene::PresetLibrary& library = preview_.document().presetLibrary();
  const auto isSet = [&](const scene::Preset& preset) {
    brisel::Values values(preview_.document().state()->plan.layer);
    const auto set = library.apply(preset, preview_.document().state()->plan.layer, values);
    return std::ranges::all_of(report.changed, [&](PF_ParamIndex index) {
      const auto number = numberOf(parameters.value(index), brisel::parameterSpec(index).kind);
      const bool isOfPreset = std::ranges::find(set, index) != set.end();
      return !number || (isOfPreset && values[index].number == *number);
    });
  };
  const auto preset = std::ranges::find_if(library.presets(), isSet);
  if (preset == library.presets().end()) return;
  preview_.document().applyPreset(preview_.layer(), QString::fromStdString(preset->name));
}

}  // namespace desk
