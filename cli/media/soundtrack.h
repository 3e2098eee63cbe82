// The sound that goes with a clip, taken from a file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/media/media_source.h"
#include "cli/media/output_target.h"

namespace cli {

struct Soundtrack {
  std::string name;                  // of the file, for messages
  std::string file;                  // as ffmpeg is to be told it
  std::vector<std::string> options;  // how ffmpeg is to open it
  std::vector<std::string> codecs;   // of each of the file's audio streams, by ffmpeg's names
  double start = 0;                  // seconds from the beginning of the file's first stream
  double seconds = 0;                // length
};

// Whether clips of this format can have sound.
bool hasSound(OutputFormat format);

// All audio streams of the file from `start` on, in seconds on its own clock, which is where frame
// 0 of a clip is at 0; none when it has no audio. Throws WorkError naming the file when it cannot
// be read.
std::optional<Soundtrack> findSoundtrack(const MediaSource& source, double start, double seconds);

// The sound as the second input of an ffmpeg command, and what becomes of it in the output: streams
// are copied where the container takes them, others become AAC, or Opus in a .webm.
void appendSoundInput(std::vector<std::string>& command, const Soundtrack& sound);
void appendSoundOutput(std::vector<std::string>& command, const Soundtrack& sound,
                       OutputFormat format);

}  // namespace cli
