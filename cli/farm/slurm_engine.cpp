// Chunks as the tasks of a Slurm array, and the last command as a job that depends on it.
#include <algorithm>
#include <chrono>
#include <sstream>

#include "cli/farm/farm_engine.h"
#include "cli/support/child_process.h"
#include "cli/support/errors.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

constexpr int kMostSlots = 100;  // unless more chunks are asked for
constexpr std::chrono::seconds kLookInterval(2);

// "1-4,7": a command line of all numbers may be too long.
std::string arrayOf(const std::vector<int>& numbers) {
  std::string text;
  for (std::size_t i = 0; i < numbers.size();) {
    std::size_t end = i;
    while (end + 1 < numbers.size() && numbers[end + 1] == numbers[end] + 1) ++end;
    text += (text.empty() ? "" : ",") + std::to_string(numbers[i]);
    if (end > i) text += "-" + std::to_string(numbers[end]);
    i = end + 1;
  }
  return text;
}

// The tool's answer, without the line break at its end.
std::string answerOf(const std::vector<std::string>& command) {
  std::string answer = outputOf(command, "Slurm's " + command.front() + " failed");
  while (answer.ends_with('\n')) answer.pop_back();
  return answer;
}

void checkSlurm() {
  try {
    outputOf({"sbatch", "--version"}, "sbatch");
  } catch (const WorkError&) {
    throw WorkError("--engine slurm needs Slurm's commands; install the package \"slurm-client\"");
  }
}

bool isOver(const std::string& state) {
  for (const char* const active :
       {"PENDING", "RUNNING", "COMPLETING", "CONFIGURING", "SUSPENDED", "REQUEUED", "REQUEUE_HOLD",
        "RESIZING", "STAGE_OUT", "SIGNALING", "SPECIAL_EXIT", "STOPPED"}) {
    if (state == active) return false;
  }
  return true;
}

class SlurmEngine : public FarmEngine {
 public:
  explicit SlurmEngine(const EngineOptions& options) : options_(options) { checkSlurm(); }

  int slots() override;
  bool attach(const FarmJob& job) override;
  void start(const FarmJob& job, const std::vector<int>& chunks) override;
  bool isRunning() override;
  std::string hindrance() const override { return hindrance_; }
  std::string verdict() override;
  std::string leave() override;

 private:
  std::vector<std::string> submission(const FarmJob& job) const;
  void look();

  EngineOptions options_;
  std::string jobs_;  // "12,13"
  bool isRunning_ = false;
  bool wasCancelled_ = false;
  std::string hindrance_;
  std::chrono::steady_clock::time_point lastLook_;
};

// The processors of the partition, by as many as each chunk gets.
int SlurmEngine::slots() {
  std::vector<std::string> command = {"sinfo", "--noheader", "--format=%C"};
  if (!options_.partition.empty()) command.push_back("--partition=" + options_.partition);
  const std::string counts = answerOf(command);  // allocated/idle/other/total, a line for each
  const auto total = scene::parseInteger(counts.substr(counts.rfind('/') + 1));
  return std::clamp(total.value_or(1) / options_.jobs, 1, kMostSlots);
}

std::vector<std::string> SlurmEngine::submission(const FarmJob& job) const {
  std::vector<std::string> command = {
      "sbatch",    "--parsable",
      "--requeue", "--output=/dev/null",
      "--chdir=/", "--job-name=brisel" + job.folder().filename().string()};
  if (!options_.partition.empty()) command.push_back("--partition=" + options_.partition);
  return command;
}

void SlurmEngine::start(const FarmJob& job, const std::vector<int>& chunks) {
  // "12" or, with several clusters, "12;name".
  const auto submit = [](const std::vector<std::string>& command) {
    const std::string answer = answerOf(command);
    return answer.substr(0, answer.find(';'));
  };
  std::vector<std::string> finish = submission(job);
  jobs_.clear();
  if (!chunks.empty()) {
    std::vector<std::string> array = submission(job);
    array.insert(array.end(),
                 {"--array=" + arrayOf(chunks), "--cpus-per-task=" + std::to_string(options_.jobs),
                  job.chunkScript().string()});
    jobs_ = submit(array);
    finish.insert(finish.end(), {"--dependency=afterok:" + jobs_, "--kill-on-invalid-dep=yes"});
  }
  finish.push_back(job.finishScript().string());
  try {
    const std::string last = submit(finish);
    jobs_ += (jobs_.empty() ? "" : ",") + last;
  } catch (...) {
    if (!jobs_.empty()) outputOf({"scancel", jobs_}, "scancel");
    throw;
  }
  job.setTicket(jobs_);
  isRunning_ = true;
  wasCancelled_ = false;
  lastLook_ = std::chrono::steady_clock::now();
}

bool SlurmEngine::attach(const FarmJob& job) {
  jobs_ = job.ticket();
  if (jobs_.empty()) return false;
  look();
  return isRunning_;
}

bool SlurmEngine::isRunning() {
  if (isRunning_ && std::chrono::steady_clock::now() - lastLook_ >= kLookInterval) look();
  return isRunning_;
}

// Jobs that are over stay in the list for some minutes, then it calls them invalid.
void SlurmEngine::look() {
  lastLook_ = std::chrono::steady_clock::now();
  std::string list;
  try {
    list = answerOf({"squeue", "--noheader", "--array", "--states=all", "--jobs=" + jobs_,
                     "--format=%A %T %r"});
  } catch (const WorkError& error) {
    const bool isGone = std::string(error.what()).find("Invalid job id") != std::string::npos;
    isRunning_ = !isGone;
    hindrance_ = isGone ? "" : error.what();
    return;
  }
  isRunning_ = false;
  hindrance_.clear();
  bool anyRuns = false;
  std::istringstream lines(list);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream columns(line);
    std::string job, state, reason;
    columns >> job >> state;
    std::getline(columns >> std::ws, reason);
    wasCancelled_ = wasCancelled_ || (state == "CANCELLED" && reason != "DependencyNeverSatisfied");
    if (isOver(state)) continue;
    isRunning_ = true;
    anyRuns = anyRuns || state != "PENDING";
    // Usual reasons to wait are no hindrance.
    if (reason != "None" && reason != "Priority" && reason != "Resources" &&
        reason != "Dependency" && reason != "BeginTime") {
      hindrance_ = "Slurm lets the chunks wait: " + reason;
    }
  }
  if (anyRuns) hindrance_.clear();
}

std::string SlurmEngine::verdict() {
  return wasCancelled_ ? "it was cancelled" : "";
}

std::string SlurmEngine::leave() {
  if (jobs_.empty()) return "nothing was submitted yet; --resume does so";
  std::string jobs = jobs_;
  std::ranges::replace(jobs, ',', ' ');
  return "Slurm goes on with the jobs " + jobs + ": --resume waits for them again, \"scancel " +
         jobs + "\" ends them";
}

}  // namespace

std::unique_ptr<FarmEngine> slurmEngine(const EngineOptions& options) {
  return std::make_unique<SlurmEngine>(options);
}

}  // namespace cli
