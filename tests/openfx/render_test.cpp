// Frames of the built plug-in: the effect's own, in every layout of pixels and in any order.
#include <gtest/gtest.h>

#include "tests/openfx/frames.h"

namespace {

using namespace tests;
using hostkit::OpenFxEffect;
using hostkit::OpenFxPicture;
using hostkit::PictureKind;

brisel::Values alwaysBusy(int) {
  return busyValues();
}

TEST(OpenFxRender, DrawsWhatTheEffectDraws) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  const OpenFxPicture source = pattern({}, kFrame, false, true);
  for (const int frame : {0, 12}) {
    OpenFxPicture output({}, kFrame);
    ASSERT_EQ(effect.render({.time = static_cast<double>(frame), .source = &source}, output),
              kOfxStatOK);
    expectFrame(output, effectFrame(alwaysBusy, frame, &source, false), 0);
  }
}

}  // namespace
