// Chunks side by side on this machine, by GNU parallel.
#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>

#include "cli/farm/farm_engine.h"
#include "cli/support/child_process.h"
#include "cli/support/errors.h"
#include "cli/support/processors.h"

namespace cli {
namespace {

// There is another program of that name.
void checkParallel() {
  std::string version;
  try {
    version = outputOf({"parallel", "--version"}, "parallel");
  } catch (const WorkError&) {
  }
  if (!version.starts_with("GNU parallel")) {
    throw WorkError("--engine local needs GNU parallel; install the package \"parallel\"");
  }
}

class LocalEngine : public FarmEngine {
 public:
  explicit LocalEngine(const EngineOptions& options) : options_(options) { checkParallel(); }
  ~LocalEngine() override { stop(); }

  int slots() override { return std::max(1, usableProcessors() / options_.jobs); }
  bool attach(const FarmJob&) override { return false; }
  void start(const FarmJob& job, const std::vector<int>& chunks) override;
  bool isRunning() override;
  std::string verdict() override { return complaint_; }
  std::string leave() override;

 private:
  void finish();
  void stop();

  EngineOptions options_;
  std::string finishScript_;
  bool isFinishing_ = false;
  std::string complaint_;  // of GNU parallel about itself
  std::optional<ChildProcess> running_;
};

void LocalEngine::start(const FarmJob& job, const std::vector<int>& chunks) {
  finishScript_ = job.finishScript().string();
  isFinishing_ = false;
  complaint_.clear();
  if (chunks.empty()) return finish();
  std::vector<std::string> command = {"parallel",   "--will-cite",
                                      "--joblog",   (job.folder() / "joblog").string(),
                                      "--retries",  std::to_string(options_.retries + 1),
                                      "--halt",     "soon,fail=1",
                                      "--jobs",     std::to_string(slots()),
                                      "sh {1} {2}",  // a path there would be a pattern, too
                                      ":::",        job.chunkScript().string(),
                                      ":::"};
  for (const int number : chunks) command.push_back(std::to_string(number));
  running_.emplace(command, ChildProcess::Pipe::FromItsOutput);
}

void LocalEngine::finish() {
  isFinishing_ = true;
  running_.emplace(std::vector<std::string>{"sh", finishScript_},
                   ChildProcess::Pipe::FromItsOutput);
}

bool LocalEngine::isRunning() {
  if (!running_ || !running_->hasEnded()) return running_.has_value();
  const bool succeeded = running_->finish();
  const std::string complaint = running_->firstComplaint();
  if (complaint.starts_with("parallel: Error")) complaint_ = complaint;
  running_.reset();
  if (succeeded && !isFinishing_) finish();
  return running_.has_value();
}

std::string LocalEngine::leave() {
  stop();
  return "--resume goes on with what is missing";
}

// GNU parallel lets running chunks end when it is asked once, and ends them when it is asked twice.
void LocalEngine::stop() {
  constexpr int kMostLooks = 50;
  for (int look = 0; running_ && !running_->hasEnded() && look < kMostLooks; ++look) {
    if (look < 2) running_->terminate();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  running_.reset();
}

}  // namespace

std::unique_ptr<FarmEngine> localEngine(const EngineOptions& options) {
  return std::make_unique<LocalEngine>(options);
}

}  // namespace cli
