// The stars at any frame, and how few steps lead there.
#include "effect/star_history.h"

#include <gtest/gtest.h>

namespace {

using namespace brisel;

/// Stars that are soon as many as there may be; the steps to each frame are counted.
struct CountedStars {
  explicit CountedStars(int most) : most(most) {
    values.setNumber(kMaximumNumberOfStars, most);
    values.setNumber(kIntensity, 10000);
  }
  int goTo(std::int32_t frame) {
    int steps = 0;
    const FrameViews views{{nullptr, kFrame.width, kFrame.height, kFrame.width * 4}};
    history.goTo(frame, [&](Instance& instance, std::int32_t passed) {
      if (instance.starCount() < most) instance.step(values, passed, views);
      ++steps;
    });
    return steps;
  }

  static constexpr FrameSize kFrame{64, 64};
  int most;
  StarHistory history;
  Values values{kFrame};
};

TEST(StarHistory, GoesBackByAFewSteps) {
  CountedStars stars(100);
  EXPECT_EQ(stars.goTo(500), 500);
  EXPECT_EQ(stars.goTo(501), 1);
  EXPECT_EQ(stars.goTo(407), 7);
  EXPECT_EQ(stars.goTo(300), 4);
  EXPECT_EQ(stars.goTo(499), 3);
  EXPECT_EQ(stars.goTo(5), 5);
}

TEST(StarHistory, KeepsNearStatesCloseAndFarOnesApartWhenItIsFull) {
  CountedStars stars(3000);  // of which some 60 states fit
  EXPECT_EQ(stars.goTo(4000), 4000);
  for (const int frame : {3999, 3990, 3850}) EXPECT_LT(stars.goTo(frame), 8) << frame;
  for (const int frame : {2001, 135}) EXPECT_LT(stars.goTo(frame), 128) << frame;
  for (const int frame : {134, 131, 129}) EXPECT_LT(stars.goTo(frame), 8) << frame;
  EXPECT_LT(stars.goTo(3999), 128);
}

TEST(StarHistory, GoesOnFromStatesThatAnEditLeavesAsTheyWere) {
  CountedStars stars(100);
  EXPECT_EQ(stars.goTo(500), 500);
  stars.history.forgetAfter(500);
  EXPECT_EQ(stars.goTo(500), 0);
  stars.history.forgetAfter(400);
  EXPECT_EQ(stars.goTo(500), 100);
  stars.history.forgetAfter(7);
  EXPECT_EQ(stars.goTo(3), 3);
  EXPECT_EQ(stars.goTo(500), 497);
}

TEST(StarHistory, BeginsAnewSoThatNoWayIsEndless) {
  CountedStars stars(100);
  EXPECT_EQ(stars.goTo(3), 3);
  EXPECT_EQ(stars.goTo(1'000'000'000), 0);
  EXPECT_EQ(stars.goTo(2 * StarHistory::kLongestWay + 9), 9);
  EXPECT_EQ(stars.goTo(2 * StarHistory::kLongestWay + 10), 1);
  EXPECT_EQ(stars.goTo(2 * StarHistory::kLongestWay), 0);
  EXPECT_EQ(stars.goTo(4), 4);
}

}  // namespace
