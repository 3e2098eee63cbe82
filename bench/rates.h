// Keeps what benchmarks measure, so that it can be printed as ratios at the end.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

class Rates : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Items a second, or runs a second of a benchmark that counts no items; 0 when it was not run.
  double of(const std::string& name) const;

  /// of(name) / of(unit), or 0.
  double ratio(const std::string& name, const std::string& unit) const;

 private:
  std::map<std::string, double> rates_;
};

/// A ratio as a column of a table; a dash when it was not measured.
std::string column(double ratio);

}  // namespace bench
