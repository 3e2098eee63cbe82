// Where rendered frames go: pictures, or a clip written by ffmpeg.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/media/output_target.h"
#include "cli/media/soundtrack.h"
#include "cli/pictures/frame.h"
#include "hostkit/world.h"
#include "scene/frame_rate.h"

namespace cli {

// What write() takes.
struct EncodedFrame {
  std::span<const std::uint8_t> bytes;  // in the world that was encoded, or in one of these two
  std::vector<std::uint8_t> buffer;
  Frame frame;
};

class FrameWriter {
 public:
  virtual ~FrameWriter() = default;

  // Several threads may call this at a time.
  virtual void encode(const hostkit::World& picture, EncodedFrame& encoded) const = 0;

  // Frames come in order; `number` is the frame's number in the scene. Throws WorkError naming the
  // output when it cannot be written.
  virtual void write(std::span<const std::uint8_t> encoded, int number) = 0;

  // After the last frame: gives a clip its final name. A writer destroyed without it leaves no clip
  // behind; numbered frames already written stay.
  virtual void finish() = 0;

  // What the user should know although the output is complete; empty when all is well.
  virtual std::string warning() const { return {}; }
};

// Pictures have no sound.
std::unique_ptr<FrameWriter> openFrameWriter(const OutputTarget& target, FrameSize size,
                                             scene::FrameRate rate, Depth depth,
                                             const std::optional<Soundtrack>& sound = {});

}  // namespace cli
