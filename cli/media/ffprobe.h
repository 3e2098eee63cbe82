// ffmpeg's programs on files that others have made: these may be anything, whatever they are
// called.
#pragma once

#include <string>
#include <vector>

#include "cli/media/media_source.h"

namespace cli {

// The kinds of files that hold all of their pictures and sound themselves, by ffmpeg's names; those
// that lead to other files or into the network, as playlists do, are not among them.
std::string selfContainedFormats();
// Those of single pictures.
extern const char* const kStillFormats;

// Has what is named after these be opened from disk alone, and as one of these kinds.
std::vector<std::string> openingOptions(const std::string& formats);

struct ProbeAnswer {
  std::string text;
  std::string complaint;  // about what it could not read; or empty
};

// What ffprobe answers to these options about a source. Throws WorkError beginning with `failure`
// when it cannot be read at all.
ProbeAnswer askFfprobe(const MediaSource& source, const std::vector<std::string>& questions,
                       const std::string& failure);

}  // namespace cli
