// hostkit: the pane in which a module draws its controls, and a record of what it does there.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "hostkit/painter.h"
#include "plugin/sdk/suites.h"

namespace hostkit {

class ControlPane {
 public:
  // Around an event. Only a draw event is for drawing; without a painter it has no drawing
  // reference, which is no error.
  void beginEvent(PF_ContextH context, bool drawing, Painter* painter);
  void endEvent();

  // The n-th call of a function of the user interface from now (1 is the next), PF_UpdateParamUI
  // and get_platform_data included, answers an error and does nothing, except that a release
  // counts; 0 cancels this.
  void failCall(int nth) { failedCall_ = nth; }
  bool failsNow();  // counts a call

  // Behind the suites; each is the function of its name and answers as that does. Paths hold
  // rectangles only, images have 24 bits per pixel.
  PF_Err invalidateRect(PF_ContextH context, const PF_Rect* rect);
  PF_Err getDrawingReference(PF_ContextH context, DRAWBOT_DrawRef* draw);
  SPErr getSupplier(DRAWBOT_DrawRef draw, DRAWBOT_SupplierRef* supplier);
  SPErr getSurface(DRAWBOT_DrawRef draw, DRAWBOT_SurfaceRef* surface);
  SPErr newPen(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color, float size,
               DRAWBOT_PenRef* pen);
  SPErr newBrush(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color,
                 DRAWBOT_BrushRef* brush);
  SPErr newImage(DRAWBOT_SupplierRef supplier, int width, int height, int rowBytes,
                 DRAWBOT_PixelLayout layout, const void* pixels, DRAWBOT_ImageRef* image);
  SPErr newPath(DRAWBOT_SupplierRef supplier, DRAWBOT_PathRef* path);
  SPErr releaseObject(DRAWBOT_ObjectRef object);
  SPErr addRect(DRAWBOT_PathRef path, const DRAWBOT_RectF32* rect);
  SPErr fillPath(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush, DRAWBOT_PathRef path);
  SPErr strokePath(DRAWBOT_SurfaceRef surface, DRAWBOT_PenRef pen, DRAWBOT_PathRef path);
  SPErr drawImage(DRAWBOT_SurfaceRef surface, DRAWBOT_ImageRef image,
                  const DRAWBOT_PointF32* origin, float alpha);

  // What was invalidated since the last call; an empty entry means the whole pane.
  std::vector<std::optional<PF_Rect>> takeInvalidated() { return std::exchange(invalidated_, {}); }

  int calls() const { return calls_; }                // of any function of the user interface
  int staleObjects() const { return staleObjects_; }  // uses of one that was released
  int wrongObjects() const { return wrongObjects_; }  // uses of another kind, or not from here
  // Of a context, drawing reference, supplier or surface that is not this event's.
  int wrongReferences() const { return wrongReferences_; }
  int drawingOutside() const { return drawingOutside_; }  // of a draw event
  // Whose pixels changed between being drawn and being released, when a host may still read them.
  int changedImages() const { return changedImages_; }
  bool balanced() const;  // no object live and no misuse

 private:
  struct Pen {
    DRAWBOT_ColorRGBA color;
    float width;
  };
  struct Brush {
    DRAWBOT_ColorRGBA color;
  };
  using Path = std::vector<DRAWBOT_RectF32>;
  struct Image {
    int width, height, rowBytes;
    DRAWBOT_PixelLayout layout;
    const std::uint8_t* pixels;
    std::optional<PaintedImage> drawn;  // as it was last drawn
  };
  using Object = std::variant<Pen, Brush, Path, Image>;

  template <class Ref>
  Ref nextRef();
  template <class Ref>
  SPErr make(DRAWBOT_SupplierRef supplier, Object object, Ref* ref);
  template <class Kind>
  Kind* find(DRAWBOT_ObjectRef ref);                     // counts a misuse when it is not live
  bool isDrawing(const void* ref, const void* current);  // counts a misuse when it is not
  static PaintedImage read(const Image& image);

  std::map<DRAWBOT_ObjectRef, Object> objects_;  // those that are live
  std::vector<std::optional<PF_Rect>> invalidated_;
  PF_ContextH context_ = nullptr;
  bool drawing_ = false;
  Painter* painter_ = nullptr;
  DRAWBOT_DrawRef draw_ = nullptr;
  DRAWBOT_SupplierRef supplier_ = nullptr;
  DRAWBOT_SurfaceRef surface_ = nullptr;

  std::uintptr_t lastRef_ = 0;
  int failedCall_ = 0;
  int calls_ = 0;
  int staleObjects_ = 0;
  int wrongObjects_ = 0;
  int wrongReferences_ = 0;
  int drawingOutside_ = 0;
  int changedImages_ = 0;
};

}  // namespace hostkit
