// Inputs of which only later frames are wanted: these are the same as when all are decoded.
#include "cli/media/seek_point.h"

#include <gtest/gtest.h>

#include "cli/media/frame_reader.h"
#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"

namespace {

using cli::MediaInfo;
using scene::FrameRate;

class SeekPointTest : public tests::ScratchTest {
 protected:
  // Every picture differs from the others all over.
  void makeSource() const {
    ffmpeg(
        "-f lavfi -i testsrc2=s=64x48:r=25,noise=alls=30:allf=t -frames:v 150 -c:v ffv1 src.mkv");
  }
  void encode(const std::string& words) const { ffmpeg("-i src.mkv -pix_fmt yuv420p " + words); }

  MediaInfo probe(const std::string& name, cli::InputChoices choices = {}) const {
    return cli::probeMedia(cli::findSource(path(name), choices), choices);
  }

  // How many of the reads began later than at the start of the input.
  int soughtWithTheSamePictures(const std::string& name, std::optional<FrameRate> rate = {}) const {
    const MediaInfo info = probe(name);
    const auto all = tests::picturesOf(info, cli::Depth::Bits8, rate);
    int sought = 0;
    for (const int wanted : {97, 200}) {
      cli::FrameReader reader(info, info.size, rate.value_or(info.rate), cli::Depth::Bits8, wanted);
      const auto begin = static_cast<std::size_t>(reader.firstFrame());
      EXPECT_LE(reader.firstFrame(), wanted);
      if (begin == 0) continue;
      ++sought;
      cli::InputPicture picture(
          hostkit::World(info.size.width, info.size.height, cli::Depth::Bits8));
      cli::Frame frame;
      std::size_t number = begin;
      for (; number < begin + 9 && reader.read(picture); ++number) {
        copyFromWorld(picture.world(), frame);
        EXPECT_TRUE(frame.bytes == all.at(number).bytes) << name << ": frame " << number;
      }
      EXPECT_EQ(number, std::min(begin + 9, all.size())) << name;
    }
    return sought;
  }
};

TEST_F(SeekPointTest, ClipsBeginAtAKeyPicture) {
  makeSource();
  encode("-c:v libx264 -g 25 -bf 3 closed.mp4");
  EXPECT_EQ(soughtWithTheSamePictures("closed.mp4"), 2);
  encode("-c:v libx264 -x264opts keyint=20:open-gop=1:bframes=5:b-pyramid=normal open.mkv");
  EXPECT_EQ(soughtWithTheSamePictures("open.mkv"), 2);
  encode("-c:v libx264 -g 25 -x264opts tff=1 interlaced.mp4");
  EXPECT_FALSE(probe("interlaced.mp4").firstField.empty());
  EXPECT_EQ(soughtWithTheSamePictures("interlaced.mp4"), 2);
  encode("-c:v png every.mov");
  EXPECT_EQ(soughtWithTheSamePictures("every.mov"), 2);
  EXPECT_EQ(soughtWithTheSamePictures("src.mkv"), 2);
}

TEST_F(SeekPointTest, PicturesKeepTheirTimes) {
  makeSource();
  encode("-c:v libx264 -g 20 a.mp4");
  EXPECT_EQ(soughtWithTheSamePictures("a.mp4", FrameRate{30000, 1001}), 2);
  EXPECT_EQ(soughtWithTheSamePictures("a.mp4", FrameRate{24, 1}), 2);
  ffmpeg("-ss 0.9 -i a.mp4 -c copy edited.mp4");
  EXPECT_EQ(soughtWithTheSamePictures("edited.mp4"), 2);
  ffmpeg("-itsoffset 0.3 -i a.mp4 -f lavfi -i sine=d=6 -c:v copy -c:a pcm_s16le late.mkv");
  EXPECT_EQ(soughtWithTheSamePictures("late.mkv"), 2);
  encode("-vf select=not(eq(mod(n\\,7)\\,3)) -fps_mode vfr -c:v libx264 -g 20 variable.mp4");
  EXPECT_TRUE(probe("variable.mp4").isVariable);
  EXPECT_EQ(soughtWithTheSamePictures("variable.mp4"), 2);
}

TEST_F(SeekPointTest, NumberedPicturesBeginWithAnyOfThem) {
  makeSource();
  ffmpeg("-i src.mkv -start_number 1001 f.%04d.png");
  EXPECT_EQ(soughtWithTheSamePictures("f.####.png"), 2);
  EXPECT_EQ(cli::seekPointFor(probe("f.####.png", {.tolerateDamage = true}), {25, 1}, 50).frame, 0);
}

TEST_F(SeekPointTest, WhereTheSamePicturesAreNotSureAllAreDecoded) {
  makeSource();
  encode("-c:v libx264 -x264opts keyint=40:intra-refresh=1:bframes=0 refreshed.mp4");
  EXPECT_EQ(soughtWithTheSamePictures("refreshed.mp4"), 0);
  encode("-c:v mpeg2video -g 12 -bf 2 -b:v 1M a.ts");
  EXPECT_EQ(soughtWithTheSamePictures("a.ts"), 0);
  ffmpeg("-i src.mkv a.gif");
  EXPECT_EQ(soughtWithTheSamePictures("a.gif"), 0);
  const MediaInfo tolerated = probe("src.mkv", {.tolerateDamage = true});
  EXPECT_EQ(cli::seekPointFor(tolerated, tolerated.rate, 100).frame, 0);
  const MediaInfo info = probe("src.mkv");
  EXPECT_EQ(cli::seekPointFor(info, info.rate, 5).frame, 0) << "nothing to gain";
}

}  // namespace
