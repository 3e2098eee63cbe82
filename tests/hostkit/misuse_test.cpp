// The small host's own books: what the other tests rely on to notice a module's misuse.
#include <gtest/gtest.h>

#include "hostkit/callbacks.h"
#include "hostkit/path_suites.h"
#include "hostkit/ui_suites.h"
#include "hostkit/world.h"
#include "plugin/sdk/codes.h"
#include "tests/plugin/hosted_effect.h"
#include "tests/plugin/recording_painter.h"

namespace {

using hostkit::World;

TEST(HostKit, GuardsNoticeAByteWrittenBeforeOrAfterThePixels) {
  World world(4, 4, hostkit::Depth::Bits8, {.rowPadding = 3});
  auto* first = reinterpret_cast<std::uint8_t*>(world.record().data);
  for (std::uint8_t* outside : {first - 1, first + 4 * 19}) {
    EXPECT_TRUE(world.guardsIntact());
    *outside ^= 1;
    EXPECT_FALSE(world.guardsIntact());
    *outside ^= 1;
  }
}

TEST(HostKit, MisuseOfMasksAndSuitesIsCounted) {
  hostkit::HostRecords host;
  const hostkit::CurrentHost current(host);
  const PF_PathQuerySuite1& query = hostkit::pathQuerySuite();
  const PF_PathDataSuite1& data = hostkit::pathDataSuite();
  const PF_PathID id = host.masks.add([](const hostkit::MaskTime&) {
    return hostkit::MaskShape{{{0, 0, 0, 0, 0, 0}}, true};
  });
  A_long count = 0;
  query.PF_NumPaths(host.effectRef, &count);
  EXPECT_EQ(host.suites.callsUnheld(), 1);

  PF_PathOutlinePtr path = nullptr;
  query.PF_CheckoutPath(host.effectRef, id, 0, 1, 25, &path);
  EXPECT_FALSE(host.masks.balanced()) << "not handed back yet";
  query.PF_CheckinPath(host.effectRef, id, 0, path);
  EXPECT_TRUE(host.masks.balanced());
  query.PF_CheckinPath(host.effectRef, id, 0, path);
  EXPECT_EQ(host.masks.wrongCheckins(), 1);
  EXPECT_EQ(data.PF_PathNumSegments(host.effectRef, path, &count), PF_Err_BAD_CALLBACK_PARAM);
  EXPECT_EQ(host.masks.staleOutlines(), 1);
}

// The suites as a module sees them, a draw event and what a module needs for drawing in it.
class DrawingTest : public ::testing::Test {
 protected:
  DrawingTest() {
    offerUiSuites(host.suites);
    custom = suite<PF_EffectCustomUISuite1>(kPFEffectCustomUISuite);
    draw = suite<DRAWBOT_DrawbotSuite1>(kDRAWBOT_DrawSuite);
    supplier = suite<DRAWBOT_SupplierSuite1>(kDRAWBOT_SupplierSuite);
    surface = suite<DRAWBOT_SurfaceSuite1>(kDRAWBOT_SurfaceSuite);
    beginDrawing();
  }

  void beginDrawing() {
    pane.beginEvent(&context, true, &painter);
    DRAWBOT_DrawRef drawRef = nullptr;
    custom->PF_GetDrawingReference(&context, &drawRef);
    draw->GetSupplier(drawRef, &from);
    draw->GetSurface(drawRef, &on);
  }

  DRAWBOT_ImageRef newImage() {
    DRAWBOT_ImageRef image = nullptr;
    supplier->NewImageFromBuffer(from, 1, 2, 4, kDRAWBOT_PixelLayout_24BGR, pixels, &image);
    return image;
  }

  template <class Suite>
  const Suite* suite(const char* name) {
    return static_cast<const Suite*>(host.suites.acquire({name, 1}));
  }

  hostkit::HostRecords host;
  const hostkit::CurrentHost current{host};
  hostkit::ControlPane& pane = host.pane;
  tests::RecordingPainter painter;
  PF_Context* context = nullptr;
  std::uint8_t pixels[8] = {1, 2, 3, 99, 4, 5, 6, 99};
  const DRAWBOT_PointF32 corner{7, 8};
  const PF_EffectCustomUISuite1* custom = nullptr;
  const DRAWBOT_DrawbotSuite1* draw = nullptr;
  const DRAWBOT_SupplierSuite1* supplier = nullptr;
  const DRAWBOT_SurfaceSuite1* surface = nullptr;
  DRAWBOT_SupplierRef from = nullptr;
  DRAWBOT_SurfaceRef on = nullptr;
};

TEST_F(DrawingTest, ImagesArriveUprightAndMayNotChangeUntilReleased) {
  const DRAWBOT_ImageRef image = newImage();
  surface->DrawImage(on, image, &corner, 0.5f);
  ASSERT_EQ(painter.drawings.size(), 1u);
  const hostkit::PaintedImage upright{1, 2, {3, 2, 1, 6, 5, 4}};
  EXPECT_EQ(painter.drawings[0].image, upright);
  EXPECT_FALSE(pane.balanced()) << "not released yet";
  pixels[0] = 9;
  supplier->ReleaseObject(image);
  EXPECT_EQ(pane.changedImages(), 1);
}

TEST_F(DrawingTest, MisuseOfObjectsAndReferencesIsCounted) {
  const DRAWBOT_ImageRef image = newImage();
  pane.failCall(1);
  EXPECT_NE(supplier->ReleaseObject(image), PF_Err_NONE);
  EXPECT_TRUE(pane.balanced()) << "a release counts, whatever it answers";
  surface->DrawImage(on, image, &corner, 1);
  EXPECT_EQ(pane.staleObjects(), 1);
  surface->DrawImage(on, nullptr, &corner, 1);
  EXPECT_EQ(pane.wrongObjects(), 1);

  const DRAWBOT_SurfaceRef ofTheLastEvent = on;
  beginDrawing();
  const DRAWBOT_ImageRef another = newImage();
  surface->DrawImage(ofTheLastEvent, another, &corner, 1);
  EXPECT_EQ(pane.wrongReferences(), 1);
  pane.endEvent();
  surface->DrawImage(on, another, &corner, 1);
  EXPECT_EQ(pane.drawingOutside(), 1);
  EXPECT_TRUE(painter.drawings.empty());
}

TEST(HostKit, OnlyChangesThatAModuleFlagsAreTakenOver) {
  hostkit::Session session(tests::theModule());
  tests::openWithDefaults(session);
  hostkit::ParameterSet& parameters = session.parameters();
  const PF_ParamIndex size = tests::indexOf(session, "Size");
  const PF_ParamIndex type = tests::indexOf(session, "Type");
  parameters.takeChanged();
  parameters.beginChanges();
  parameters.pointers()[size]->u.fd.value = 40 << 16;
  parameters.pointers()[type]->u.pd.value = 5;
  parameters.pointers()[type]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
  EXPECT_EQ(parameters.endChanges(), std::vector<PF_ParamIndex>{type});
  EXPECT_TRUE(parameters.takeChanged());
  const hostkit::ParameterSet& after = parameters;
  EXPECT_EQ(after.value(size).u.fd.value, 25 << 16);
  EXPECT_EQ(after.value(type).u.pd.value, 5);
}

}  // namespace
