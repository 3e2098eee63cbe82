#include "cli/pipeline/render_stats.h"

#include <algorithm>

#include "cli/support/text_table.h"

namespace cli {
namespace {

std::string fixed(double number, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", digits, number);
  return text;
}

}  // namespace

void printRenderStats(std::FILE* stream, const std::vector<StageTime>& stages, int frames,
                      double seconds) {
  std::vector<TableRow> rows = {{"stage", "busy", "share", "threads"}};
  for (const StageTime& stage : stages) {
    if (stage.busySeconds == 0) continue;
    rows.push_back({stage.name, fixed(stage.busySeconds, 2) + " s",
                    fixed(100 * stage.busySeconds / seconds, 0) + " %",
                    std::to_string(stage.threads)});
  }
  std::fputs(alignedTable(rows, textWidth()).c_str(), stream);
  const StageTime& slowest = *std::ranges::max_element(stages, {}, &StageTime::busySeconds);
  std::fprintf(stream, "%s frames per second, limited by %s\n", fixed(frames / seconds, 1).c_str(),
               slowest.name.c_str());
}

}  // namespace cli
