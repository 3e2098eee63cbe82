#include "cli/pipeline/render_stats.h"

#include <algorithm>
#include <string>
#include <vector>

#include "cli/support/text_table.h"

namespace cli {
namespace {

std::string fixed(double number, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", digits, number);
  return text;
}

struct Stage {
  const char* name;
  double busySeconds;  // added up over the threads
  int threads;         // that can be at it at a time
};

std::vector<Stage> stagesOf(const StageTimes& times, int jobs, bool isClip) {
  const double encoding = times.encoding.seconds();
  const double writing = times.writing.seconds();
  return {{"decode", times.reading.seconds(), 1},
          {"convert", times.converting.seconds() + (isClip ? encoding : 0), jobs},
          {"step", times.stepping.seconds(), 1},
          {"render", times.painting.seconds(), 1},
          {"encode", isClip ? writing : encoding, isClip ? 1 : jobs},
          {"write", isClip ? 0 : writing, 1}};
}

// While a thread is free it is the stage that most of its own threads are at; with none free, the
// one that takes most of them from the others.
const Stage& slowestOf(const std::vector<Stage>& stages, int jobs, double seconds) {
  double busySeconds = 0;
  for (const Stage& stage : stages) busySeconds += stage.busySeconds;
  constexpr double kAllBusy = 0.9;
  const bool allAreBusy = busySeconds > kAllBusy * jobs * seconds;
  return *std::ranges::max_element(stages, {}, [allAreBusy](const Stage& stage) {
    return allAreBusy ? stage.busySeconds : stage.busySeconds / stage.threads;
  });
}

}  // namespace

void printRenderStats(std::FILE* stream, const StageTimes& times, int jobs, bool isClip, int frames,
                      double seconds) {
  const std::vector<Stage> stages = stagesOf(times, jobs, isClip);
  std::vector<TableRow> rows = {{"stage", "busy", "share", "threads"}};
  for (const Stage& stage : stages) {
    if (stage.busySeconds == 0) continue;
    rows.push_back({stage.name, fixed(stage.busySeconds, 2) + " s",
                    fixed(100 * stage.busySeconds / stage.threads / seconds, 0) + " %",
                    std::to_string(stage.threads)});
  }
  std::fputs(alignedTable(rows, textWidth()).c_str(), stream);
  std::fprintf(stream, "%s frames per second, limited by %s\n", fixed(frames / seconds, 1).c_str(),
               slowestOf(stages, jobs, seconds).name);
}

}  // namespace cli
