// Clips that are parts of one: what each says of itself in its container, so that the parts can be
// put together without being encoded again.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/media/frame_range.h"
#include "cli/media/output_target.h"
#include "scene/frame_rate.h"

namespace cli {

// The containers that parts come in, by ffmpeg's names.
inline constexpr char kPartFormats[] = "mov,matroska";

struct ClipPart {
  // What all parts of a clip must have in common, for messages: {"depth", "8"}.
  using Setting = std::pair<std::string, std::string>;

  FrameRange range;
  int frames = 0;  // of the whole scene
  scene::FrameRate rate;
  std::vector<Setting> settings;  // of all parts the same names in the same order
  std::string sound;              // the file that it was taken from; empty without sound

  std::string setting(const std::string& name) const;  // empty when there is no such
};

// Whether clips of this format can be put together from parts.
bool isJoinable(OutputFormat format);

// The part as a line of text for a clip's comment, and back; nothing when a comment is about
// something else.
std::string commentOf(const ClipPart& part);
std::optional<ClipPart> partFromComment(const std::string& comment);

// A part's file.
struct PartFile {
  std::filesystem::path path;
  ClipPart part;
  std::string sharedHeader;  // what the encoder wrote once for all pictures, as a checksum
  int pictures = 0;          // in the file
};

// Throws WorkError naming the file when it cannot be read, or does not say which part it is.
PartFile readPart(const std::filesystem::path& file);

// How many pictures a clip holds. Throws WorkError naming the file when it cannot be read.
int picturesIn(const std::filesystem::path& file, const std::string& name);

}  // namespace cli
