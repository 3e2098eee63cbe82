// What runs the chunks of a job: a scheduler that is installed, told by its own tools.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/farm/farm_job.h"

namespace cli {

struct EngineOptions {
  int jobs = 1;           // processors for each chunk
  int retries = 2;        // of a chunk that fails
  std::string partition;  // Slurm's; empty for its default
};

class FarmEngine {
 public:
  virtual ~FarmEngine() = default;

  // How many chunks can run at a time, as far as it tells.
  virtual int slots() = 0;

  // Whether what an earlier process started for the job is still running, and is now waited for.
  virtual bool attach(const FarmJob& job) = 0;

  // Starts those chunks, each as often as it takes and the retries allow, and, for when all of them
  // have succeeded, the last command.
  virtual void start(const FarmJob& job, const std::vector<int>& chunks) = 0;

  // Whether any of it runs or waits. Called about every second.
  virtual bool isRunning() = 0;

  // Why nothing seems to happen, for people; empty when all is well.
  virtual std::string hindrance() const { return {}; }

  // Once it no longer runs: why it is no use to start again what failed; empty when it may be.
  virtual std::string verdict() = 0;

  // We are going away. Says what becomes of the work.
  virtual std::string leave() = 0;
};

// Each throws WorkError naming the package to install when its programs are missing.
std::unique_ptr<FarmEngine> slurmEngine(const EngineOptions& options);
std::unique_ptr<FarmEngine> localEngine(const EngineOptions& options);

}  // namespace cli
