// What a still or clip is, before its frames are read.
#pragma once

#include <string>
#include <vector>

#include "cli/media/clip_timing.h"
#include "cli/media/media_source.h"
#include "cli/pictures/frame.h"
#include "scene/frame_rate.h"

namespace cli {

struct MediaInfo {
  MediaSource source;
  FrameSize size;  // as seen: square pixels, turned upright
  scene::FrameRate
      rate;            // meaningless for a still; of a sequence, what it has unless told otherwise
  int frameCount = 1;  // pictures in the file; 1 is a still
  bool isVariable = false;  // some pictures do not keep the rate
  double seconds = 0;       // how long a clip lasts, from the start of its first stream

  std::string decoder;    // the decoder to ask for, when the usual one would lose the alpha channel
  std::string matrix;     // the color matrix to assume, when the file does not name the one it has
  bool isRgb = false;     // or gray or a palette; else luma and chroma
  bool isDeep = false;    // more than 8 bits per channel
  bool hasAlpha = false;  // of luma and chroma, whether alpha goes with them
  bool isWideGamut = false;  // of BT.2020's primaries, or undeclared HDR
  std::string hdr;           // "PQ" or "HLG"; empty for the usual range
  std::string firstField;    // "tff" or "bff" of pictures to be deinterlaced; empty for none
  bool hasTimes = false;     // whether the clip says when its pictures are shown
  double clockStart = 0;     // the time at which the first stream starts, where that is below 0
  // Of a clip in which decoding may begin at any key picture, all pictures in the order in which
  // they are shown; else empty. A tick of their times lasts so many seconds, and the file starts at
  // a time in seconds.
  std::vector<PictureTime> pictures;
  double tick = 0;
  double fileStart = 0;
  std::string fingerprint;         // the same for the same pictures under another name
  std::vector<std::string> notes;  // what the user should know about how it is read

  bool isStill() const { return frameCount == 1; }
};

// Asks ffprobe. Throws WorkError naming the input when it holds no picture.
MediaInfo probeMedia(const MediaSource& source, InputChoices choices = {});

// How many frames the input covers when played at the given rate.
int framesAtRate(const MediaInfo& info, scene::FrameRate rate);

}  // namespace cli
