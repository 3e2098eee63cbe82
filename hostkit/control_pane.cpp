#include "hostkit/control_pane.h"

#include <cstddef>
#include <utility>

#include "plugin/sdk/codes.h"

namespace hostkit {

namespace {

constexpr int kBytesPerPixel = 3;

}  // namespace

// A number as a pointer: the module cannot read through it, and no number is used twice.
template <class Ref>
Ref ControlPane::nextRef() {
  return reinterpret_cast<Ref>(++lastRef_);
}

void ControlPane::beginEvent(PF_ContextH context, bool drawing, Painter* painter) {
  context_ = context;
  drawing_ = drawing;
  painter_ = painter;
  draw_ = nextRef<DRAWBOT_DrawRef>();
  supplier_ = nextRef<DRAWBOT_SupplierRef>();
  surface_ = nextRef<DRAWBOT_SurfaceRef>();
}

void ControlPane::endEvent() {
  context_ = nullptr;
  drawing_ = false;
  painter_ = nullptr;
}

bool ControlPane::failsNow() {
  ++calls_;
  return failedCall_ > 0 && --failedCall_ == 0;
}

PF_Err ControlPane::invalidateRect(PF_ContextH context, const PF_Rect* rect) {
  if (context == nullptr || context != context_) {
    ++wrongReferences_;
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  invalidated_.push_back(rect == nullptr ? std::nullopt : std::optional(*rect));
  return PF_Err_NONE;
}

PF_Err ControlPane::getDrawingReference(PF_ContextH context, DRAWBOT_DrawRef* draw) {
  if (!isDrawing(context, context_) || draw == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *draw = painter_ == nullptr ? nullptr : draw_;
  return PF_Err_NONE;
}

SPErr ControlPane::getSupplier(DRAWBOT_DrawRef draw, DRAWBOT_SupplierRef* supplier) {
  if (!isDrawing(draw, draw_) || supplier == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *supplier = supplier_;
  return PF_Err_NONE;
}

SPErr ControlPane::getSurface(DRAWBOT_DrawRef draw, DRAWBOT_SurfaceRef* surface) {
  if (!isDrawing(draw, draw_) || surface == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *surface = surface_;
  return PF_Err_NONE;
}

SPErr ControlPane::newPen(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color, float size,
                          DRAWBOT_PenRef* pen) {
  if (color == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  return make(supplier, Pen{*color, size}, pen);
}

SPErr ControlPane::newBrush(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color,
                            DRAWBOT_BrushRef* brush) {
  if (color == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  return make(supplier, Brush{*color}, brush);
}

SPErr ControlPane::newImage(DRAWBOT_SupplierRef supplier, int width, int height, int rowBytes,
                            DRAWBOT_PixelLayout layout, const void* pixels,
                            DRAWBOT_ImageRef* image) {
  const bool known = layout == kDRAWBOT_PixelLayout_24BGR || layout == kDRAWBOT_PixelLayout_24RGB;
  if (!known || pixels == nullptr || width <= 0 || height <= 0 ||
      rowBytes / kBytesPerPixel < width) {
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  const auto* bytes = static_cast<const std::uint8_t*>(pixels);
  return make(supplier, Image{width, height, rowBytes, layout, bytes, std::nullopt}, image);
}

SPErr ControlPane::newPath(DRAWBOT_SupplierRef supplier, DRAWBOT_PathRef* path) {
  return make(supplier, Path{}, path);
}

SPErr ControlPane::releaseObject(DRAWBOT_ObjectRef object) {
  const auto found = objects_.find(object);
  if (found == objects_.end()) {
    find<Path>(object);
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  const auto* image = std::get_if<Image>(&found->second);
  // A host that paints late reads the pixels only now.
  if (image != nullptr && image->drawn && read(*image) != *image->drawn) ++changedImages_;
  objects_.erase(found);
  return PF_Err_NONE;
}

SPErr ControlPane::addRect(DRAWBOT_PathRef path, const DRAWBOT_RectF32* rect) {
  Path* rects = find<Path>(path);
  if (rects == nullptr || rect == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  rects->push_back(*rect);
  return PF_Err_NONE;
}

SPErr ControlPane::fillPath(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush,
                            DRAWBOT_PathRef path) {
  const bool drawing = isDrawing(surface, surface_);
  const Brush* with = find<Brush>(brush);
  const Path* rects = find<Path>(path);
  if (!drawing || with == nullptr || rects == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  for (const DRAWBOT_RectF32& rect : *rects) painter_->fillRect(rect, with->color);
  return PF_Err_NONE;
}

SPErr ControlPane::strokePath(DRAWBOT_SurfaceRef surface, DRAWBOT_PenRef pen,
                              DRAWBOT_PathRef path) {
  const bool drawing = isDrawing(surface, surface_);
  const Pen* with = find<Pen>(pen);
  const Path* rects = find<Path>(path);
  if (!drawing || with == nullptr || rects == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  for (const DRAWBOT_RectF32& rect : *rects) painter_->strokeRect(rect, with->color, with->width);
  return PF_Err_NONE;
}

SPErr ControlPane::drawImage(DRAWBOT_SurfaceRef surface, DRAWBOT_ImageRef image,
                             const DRAWBOT_PointF32* origin, float alpha) {
  const bool drawing = isDrawing(surface, surface_);
  Image* picture = find<Image>(image);
  if (!drawing || picture == nullptr || origin == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  picture->drawn = read(*picture);
  painter_->drawImage(*picture->drawn, *origin, alpha);
  return PF_Err_NONE;
}

bool ControlPane::balanced() const {
  return objects_.empty() && staleObjects_ == 0 && wrongObjects_ == 0 && wrongReferences_ == 0 &&
         drawingOutside_ == 0 && changedImages_ == 0;
}

template <class Ref>
SPErr ControlPane::make(DRAWBOT_SupplierRef supplier, Object object, Ref* ref) {
  if (!isDrawing(supplier, supplier_) || ref == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *ref = nextRef<Ref>();
  objects_.emplace(*ref, std::move(object));
  return PF_Err_NONE;
}

template <class Kind>
Kind* ControlPane::find(DRAWBOT_ObjectRef ref) {
  const auto found = objects_.find(ref);
  if (found != objects_.end()) {
    if (auto* object = std::get_if<Kind>(&found->second)) return object;
    ++wrongObjects_;
    return nullptr;
  }
  const auto number = reinterpret_cast<std::uintptr_t>(ref);
  ++(number >= 1 && number <= lastRef_ ? staleObjects_ : wrongObjects_);
  return nullptr;
}

bool ControlPane::isDrawing(const void* ref, const void* current) {
  if (!drawing_) {
    ++drawingOutside_;
    return false;
  }
  if (ref != current) ++wrongReferences_;
  return ref == current;
}

PaintedImage ControlPane::read(const Image& image) {
  PaintedImage picture{image.width, image.height, {}};
  const bool redFirst = image.layout == kDRAWBOT_PixelLayout_24RGB;
  std::vector<std::uint8_t>& pixels = picture.pixels;
  for (int y = 0; y < image.height; ++y) {
    const std::uint8_t* row = image.pixels + std::ptrdiff_t{y} * image.rowBytes;
    pixels.insert(pixels.end(), row, row + kBytesPerPixel * image.width);
  }
  for (std::size_t i = 0; !redFirst && i < pixels.size(); i += kBytesPerPixel) {
    std::swap(pixels[i], pixels[i + 2]);
  }
  return picture;
}

}  // namespace hostkit
