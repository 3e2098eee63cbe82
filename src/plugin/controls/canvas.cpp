#include "plugin/controls/canvas.h"

#include "plugin/resources/bitmap_resource.h"

namespace brisel {

/// A drawing object, released at the end of the scope. Not made at all after an error.
template <class Object>
class Canvas::Owned {
 public:
  explicit Owned(Canvas& canvas) : canvas_(canvas) {}
  ~Owned() {
    if (object_ != nullptr) canvas_.succeeded(canvas_.supply_->ReleaseObject(object_));
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;

  Object* receive() { return &object_; }
  Object get() const { return object_; }

 private:
  Canvas& canvas_;
  Object object_ = nullptr;
};

Canvas::Canvas(const ControlEvent& event, PF_Err& error)
    : error_(error),
      draw_(event.in, event.out, error, kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1),
      supply_(event.in, event.out, error, kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1),
      surfaces_(event.in, event.out, error, kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version1),
      paths_(event.in, event.out, error, kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1),
      customUI_(event.in, event.out, error, kPFEffectCustomUISuite,
                kPFEffectCustomUISuiteVersion1) {
  if (error_ != PF_Err_NONE) return;
  DRAWBOT_DrawRef drawing = nullptr;
  if (!succeeded(customUI_->PF_GetDrawingReference(event.extra.contextH, &drawing))) return;
  if (drawing == nullptr || !succeeded(draw_->GetSupplier(drawing, &supplier_))) return;
  succeeded(draw_->GetSurface(drawing, &surface_));
}

bool Canvas::succeeded(SPErr result) {
  if (error_ == PF_Err_NONE) error_ = result;
  return result == 0;
}

void Canvas::drawBox(const Rect& box, const BoxColors& colors) {
  constexpr float kPenWidth = 1.0f;
  if (!drawable()) return;
  const DRAWBOT_RectF32 outline{box.left, box.top, box.width - kPenWidth, box.height - kPenWidth};
  Owned<DRAWBOT_PenRef> pen(*this);
  Owned<DRAWBOT_BrushRef> brush(*this);
  Owned<DRAWBOT_PathRef> path(*this);
  if (succeeded(supply_->NewPen(supplier_, &colors.stroke, kPenWidth, pen.receive())) &&
      succeeded(supply_->NewBrush(supplier_, &colors.fill, brush.receive())) &&
      succeeded(supply_->NewPath(supplier_, path.receive())) &&
      succeeded(paths_->AddRect(path.get(), &outline)) &&
      succeeded(
          surfaces_->FillPath(surface_, brush.get(), path.get(), kDRAWBOT_FillType_EvenOdd))) {
    succeeded(surfaces_->StrokePath(surface_, pen.get(), path.get()));
  }
}

void Canvas::drawPicture(const Picture& picture, int x, int y, float opacity) {
  if (!drawable()) return;
  Owned<DRAWBOT_ImageRef> image(*this);
  if (!succeeded(supply_->NewImageFromBuffer(
          supplier_, picture.width, picture.height, static_cast<int>(bitmapRowBytes(picture.width)),
          kDRAWBOT_PixelLayout_24BGR, picture.pixels.data(), image.receive()))) {
    return;
  }
  const DRAWBOT_PointF32 origin{static_cast<float>(x), static_cast<float>(y)};
  succeeded(surfaces_->DrawImage(surface_, image.get(), &origin, opacity));
}

}  // namespace brisel
