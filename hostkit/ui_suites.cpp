#include "hostkit/ui_suites.h"

#include "hostkit/callbacks.h"
#include "plugin/sdk/codes.h"

namespace hostkit {

namespace {

const SuiteName kParamUtils{kPFParamUtilsSuite, kPFParamUtilsSuiteVersion2};
const SuiteName kCustomUI{kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion1};
const SuiteName kApp{kPFAppSuite, kPFAppSuiteVersion6};
const SuiteName kDraw{kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1};
const SuiteName kSupplier{kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1};
const SuiteName kSurface{kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version1};
const SuiteName kPath{kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1};

// Calls a function of the current host's pane as a function of the suite.
template <class... Parameters, class... Arguments>
PF_Err callPane(const SuiteName& suite, PF_Err (ControlPane::*function)(Parameters...),
                Arguments... arguments) {
  HostRecords* host = currentHost();
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  host->suites.noteCall(suite);
  if (host->pane.failsNow()) return PF_Err_OUT_OF_MEMORY;
  return (host->pane.*function)(arguments...);
}

PF_Err updateParamUI(PF_ProgPtr effectRef, PF_ParamIndex index, const PF_ParamDef* def) {
  HostRecords* host = currentHost(effectRef);
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  host->suites.noteCall(kParamUtils);
  if (host->pane.failsNow()) return PF_Err_OUT_OF_MEMORY;
  if (def == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  return host->parameters.updateUI(index, *def);
}

PF_Err getDrawingReference(PF_ContextH context, DRAWBOT_DrawRef* draw) {
  return callPane(kCustomUI, &ControlPane::getDrawingReference, context, draw);
}

PF_Err invalidateRect(PF_ContextH context, const PF_Rect* rect) {
  return callPane(kApp, &ControlPane::invalidateRect, context, rect);
}

SPErr getSupplier(DRAWBOT_DrawRef draw, DRAWBOT_SupplierRef* supplier) {
  return callPane(kDraw, &ControlPane::getSupplier, draw, supplier);
}

SPErr getSurface(DRAWBOT_DrawRef draw, DRAWBOT_SurfaceRef* surface) {
  return callPane(kDraw, &ControlPane::getSurface, draw, surface);
}

SPErr newPen(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color, float size,
             DRAWBOT_PenRef* pen) {
  return callPane(kSupplier, &ControlPane::newPen, supplier, color, size, pen);
}

SPErr newBrush(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color,
               DRAWBOT_BrushRef* brush) {
  return callPane(kSupplier, &ControlPane::newBrush, supplier, color, brush);
}

SPErr newImageFromBuffer(DRAWBOT_SupplierRef supplier, int width, int height, int rowBytes,
                         DRAWBOT_PixelLayout layout, const void* pixels, DRAWBOT_ImageRef* image) {
  return callPane(kSupplier, &ControlPane::newImage, supplier, width, height, rowBytes, layout,
                  pixels, image);
}

SPErr newPath(DRAWBOT_SupplierRef supplier, DRAWBOT_PathRef* path) {
  return callPane(kSupplier, &ControlPane::newPath, supplier, path);
}

// A release counts even when it is made to fail: the object could not be released again.
SPErr releaseObject(DRAWBOT_ObjectRef object) {
  HostRecords* host = currentHost();
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  host->suites.noteCall(kSupplier);
  const bool fails = host->pane.failsNow();
  const SPErr released = host->pane.releaseObject(object);
  return fails ? PF_Err_OUT_OF_MEMORY : released;
}

SPErr fillPath(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush, DRAWBOT_PathRef path,
               DRAWBOT_FillType /*fillType*/) {
  return callPane(kSurface, &ControlPane::fillPath, surface, brush, path);
}

SPErr strokePath(DRAWBOT_SurfaceRef surface, DRAWBOT_PenRef pen, DRAWBOT_PathRef path) {
  return callPane(kSurface, &ControlPane::strokePath, surface, pen, path);
}

SPErr drawImage(DRAWBOT_SurfaceRef surface, DRAWBOT_ImageRef image, const DRAWBOT_PointF32* origin,
                float alpha) {
  return callPane(kSurface, &ControlPane::drawImage, surface, image, origin, alpha);
}

SPErr addRect(DRAWBOT_PathRef path, const DRAWBOT_RectF32* rect) {
  return callPane(kPath, &ControlPane::addRect, path, rect);
}

DRAWBOT_SupplierSuite1 supplierSuite() {
  DRAWBOT_SupplierSuite1 suite{};
  suite.NewPen = newPen;
  suite.NewBrush = newBrush;
  suite.NewImageFromBuffer = newImageFromBuffer;
  suite.NewPath = newPath;
  suite.ReleaseObject = releaseObject;
  return suite;
}

DRAWBOT_SurfaceSuite1 surfaceSuite() {
  DRAWBOT_SurfaceSuite1 suite{};
  suite.FillPath = fillPath;
  suite.StrokePath = strokePath;
  suite.DrawImage = drawImage;
  return suite;
}

}  // namespace

void offerUiSuites(SuiteLedger& suites) {
  static const PF_ParamUtilsSuite2 paramUtils{updateParamUI, {}};
  static const PF_EffectCustomUISuite1 customUI{getDrawingReference};
  static const PFAppSuite6 app{{}, invalidateRect, {}};
  static const DRAWBOT_DrawbotSuite1 draw{getSupplier, getSurface};
  static const DRAWBOT_SupplierSuite1 supplier = supplierSuite();
  static const DRAWBOT_SurfaceSuite1 surface = surfaceSuite();
  static const DRAWBOT_PathSuite1 path{nullptr, nullptr, nullptr, addRect, nullptr, nullptr};
  suites.offer(kParamUtils, &paramUtils);
  suites.offer(kCustomUI, &customUI);
  suites.offer(kApp, &app);
  suites.offer(kDraw, &draw);
  suites.offer(kSupplier, &supplier);
  suites.offer(kSurface, &surface);
  suites.offer(kPath, &path);
}

}  // namespace hostkit
