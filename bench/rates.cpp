#include "rates.h"

#include <cstdio>

namespace bench {

void Rates::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median") continue;
    const auto items = run.counters.find("items_per_second");
    const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
    rates_[run.run_name.function_name] =
        items != run.counters.end() ? items->second.value : 1.0 / seconds;
  }
}

double Rates::of(const std::string& name) const {
  const auto found = rates_.find(name);
  return found == rates_.end() ? 0.0 : found->second;
}

double Rates::ratio(const std::string& name, const std::string& unit) const {
  return of(unit) > 0.0 ? of(name) / of(unit) : 0.0;
}

std::string column(double ratio) {
  char text[16] = "       -";
  if (ratio > 0.0) std::snprintf(text, sizeof text, "%8.2f", ratio);
  return text;
}

}  // namespace bench
