#include "cli/farm/farm_job.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "cli/farm/chunks.h"
#include "cli/media/output_files.h"
#include "cli/support/errors.h"
#include "cli/support/temporary_file.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;

void writeText(const std::filesystem::path& file, const std::string& text) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  writeWholeFile(file, {bytes, text.size()});
}

std::string readText(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::string linesOf(const std::vector<std::string>& commands) {
  std::string text;
  for (const std::string& command : commands) text += command + "\n";
  return text;
}

std::string quoted(const std::filesystem::path& path) {
  return shellWord(path.string());
}

// Wrong usage fails again, and who ended it does not want it to begin again.
std::string chunkScriptFor(const FarmPlan& plan, const std::filesystem::path& state) {
  return "#!/bin/sh\n"
         "# Renders one chunk: the line of that number among the commands.\n"
         "number=${1:-$SLURM_ARRAY_TASK_ID}\n"
         "cd " +
         quoted(plan.folder) +
         " || exit\n"
         "command=$(sed -n \"${number}p\" " +
         quoted(state / "commands") +
         ") || exit\n"
         "tries=" +
         std::to_string(plan.tries) +
         "\n"
         "while :; do\n"
         "  eval \"$command\" >>" +
         quoted(state / "logs") +
         "/\"$number\" 2>&1 && exit 0\n"
         "  code=$?\n"
         "  tries=$((tries - 1))\n"
         "  [ \"$tries\" -gt 0 ] && [ \"$code\" -ne 2 ] && [ \"$code\" -ne 130 ] || exit "
         "\"$code\"\n"
         "done\n";
}

std::string finishScriptFor(const FarmPlan& plan, const std::filesystem::path& state) {
  return "#!/bin/sh\n"
         "# Makes the output of the chunks.\n"
         "cd " +
         quoted(plan.folder) + " || exit\n" + plan.finish + " >" +
         quoted(state / "logs" / "finish") +
         " 2>&1 || exit\n"
         "rm -rf " +
         quoted(state / "parts") +
         "\n"
         "touch " +
         quoted(state / "finished") +
         "\n"
         "[ -e " +
         quoted(state / "attended") + " ] || rm -rf " + quoted(state) + "\n";
}

// The last line of its own, without the program's name.
std::string lastWordIn(const std::filesystem::path& log) {
  std::istringstream lines(readText(log));
  std::string last;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("brisel: ")) last = line.substr(line.find(' ') + 1);
  }
  return last;
}

// Of a clip being written: "name: frame 12 of 50, 8.1 fps" was its last line.
int framesInLog(const std::filesystem::path& log) {
  const std::string text = readText(log);
  const std::size_t at = text.rfind(": frame ");
  if (at == text.npos) return 0;
  const std::size_t start = at + 8;
  return scene::parseInteger(text.substr(start, text.find(' ', start) - start)).value_or(0);
}

void checkMade(const std::filesystem::path& folder, const std::error_code& error) {
  if (!error) return;
  throw WorkError("cannot write the folder " + inQuotes(folder.string()) + ": " + error.message());
}

[[noreturn]] void refuse(const OutputTarget& output) {
  throw WorkError(output.name() +
                  " is being rendered, or was left unfinished: --resume goes on, and removing " +
                  inQuotes(FarmJob::folderFor(output).string()) + " begins anew");
}

}  // namespace

FarmJob::FarmJob(OutputTarget output, Depth depth, std::string call, std::vector<FrameRange> chunks)
    : output_(std::move(output)),
      depth_(depth),
      folder_(folderFor(output_)),
      call_(std::move(call)),
      chunks_(std::move(chunks)),
      done_(chunks_.size(), 0) {}

std::filesystem::path FarmJob::folderFor(const OutputTarget& output) {
  std::string name = "." + output.path.filename().string() + ".farm";
  std::ranges::replace(name, '%', '_');  // which Slurm would read as more than a name
  return std::filesystem::absolute(output.path).parent_path() / name;
}

OutputTarget FarmJob::partsOf(const OutputTarget& output) {
  OutputTarget parts = output;
  if (!output.holdsPictures()) {
    parts.path = folderFor(output) / "parts" / output.path.filename();
  }
  return parts;
}

void FarmJob::checkThatNoneIsThere(const OutputTarget& output) {
  if (std::filesystem::exists(folderFor(output))) refuse(output);
}

FarmJob FarmJob::begin(const OutputTarget& output, Depth depth, const FarmPlan& plan) {
  FarmJob job(output, depth, plan.call, plan.chunks);
  const std::filesystem::path& folder = job.folder_;
  std::error_code error;
  std::filesystem::create_directories(folder.parent_path(), error);
  // Only one of several processes makes it.
  if (!error && !std::filesystem::create_directory(folder, error) && !error) refuse(output);
  checkMade(folder, error);
  try {
    job.take();
    job.write(plan);
  } catch (...) {  // half of it could not be gone on with
    std::filesystem::remove_all(folder, error);
    throw;
  }
  return job;
}

void FarmJob::write(const FarmPlan& plan) const {
  for (const char* const name : {"logs", "parts"}) {
    std::error_code error;
    std::filesystem::create_directory(folder_ / name, error);
    checkMade(folder_ / name, error);
  }
  writeText(folder_ / "commands", linesOf(plan.commands));
  writeText(chunkScript(), chunkScriptFor(plan, folder_));
  writeText(finishScript(), finishScriptFor(plan, folder_));
  Json chunks = Json::array();
  for (const FrameRange chunk : plan.chunks) chunks.push_back({chunk.first, chunk.last});
  writeText(folder_ / "job.json", Json{{"call", plan.call}, {"chunks", chunks}}.dump(1) + "\n");
}

FarmJob FarmJob::resume(const OutputTarget& output, Depth depth) {
  const std::filesystem::path file = folderFor(output) / "job.json";
  try {
    const Json json = Json::parse(readText(file));
    std::vector<FrameRange> chunks;
    for (const Json& chunk : json.at("chunks")) chunks.push_back({chunk.at(0), chunk.at(1)});
    if (!chunks.empty()) {
      FarmJob job(output, depth, json.at("call"), std::move(chunks));
      job.take();
      return job;
    }
  } catch (const Json::exception&) {
  }
  throw WorkError("cannot go on from " + inQuotes(file.string()) +
                  ", which is damaged; remove its folder and begin anew");
}

// Locks end with their process, however it ends. Some shared disks know none.
void FarmJob::take() {
  taken_ = FileDescriptor(open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (flock(taken_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
  throw WorkError(output_.name() + " is being rendered by another \"brisel farm\"");
}

bool FarmJob::isDone(int number) const {
  if (!output_.holdsPictures()) {
    return std::filesystem::exists(outputOfChunk(partsOf(output_), chunk(number), range().last));
  }
  OutputOptions keeping;
  keeping.skipExisting = true;
  return framesToWrite(output_, chunk(number), depth_, keeping).empty();
}

std::vector<int> FarmJob::chunksToDo() const {
  std::vector<int> numbers;
  for (int number = 1; number <= static_cast<int>(chunks_.size()); ++number) {
    if (!isDone(number)) numbers.push_back(number);
  }
  return numbers;
}

std::string FarmJob::lastWord(int number) const {
  return lastWordIn(folder_ / "logs" / std::to_string(number));
}

std::string FarmJob::lastWordOfFinish() const {
  return lastWordIn(folder_ / "logs" / "finish");
}

std::vector<std::string> FarmJob::words() const {
  std::map<std::string, std::size_t> logsWith;
  for (std::size_t number = 1; number <= chunks_.size(); ++number) {
    std::istringstream lines(readText(folder_ / "logs" / std::to_string(number)));
    std::set<std::string> said;
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("brisel: ") && !line.ends_with(kWrittenAllTheSame)) said.insert(line);
    }
    for (const std::string& line : said) ++logsWith[line];
  }
  std::vector<std::string> words;
  for (const auto& [line, logs] : logsWith) {
    const bool isFailure =
        !line.starts_with("brisel: note: ") && !line.starts_with("brisel: warning: ");
    if (isFailure) {
      words.push_back("brisel: note: mended by another try: " + line.substr(line.find(' ') + 1));
    } else if (logs == chunks_.size()) {
      words.push_back(line);
    }
  }
  return words;
}

std::string FarmJob::damage() const {
  for (std::size_t number = 1; number <= chunks_.size(); ++number) {
    std::istringstream lines(readText(folder_ / "logs" / std::to_string(number)));
    for (std::string line; std::getline(lines, line);) {
      if (!line.starts_with("brisel: ") || !line.ends_with(kWrittenAllTheSame)) continue;
      const std::size_t start = line.find(' ') + 1;
      return line.substr(start, line.rfind("; \"") - start);  // the rest names the chunk
    }
  }
  return {};
}

// Frames of a chunk appear in order, so that only the next one has to be looked for.
int FarmJob::framesDoneOf(std::size_t index) {
  const FrameRange chunk = chunks_[index];
  int& done = done_[index];
  if (!output_.holdsPictures()) {
    const int number = static_cast<int>(index) + 1;
    const int written = framesInLog(folder_ / "logs" / std::to_string(number));
    done = std::max(done, isDone(number) ? chunk.count() : std::min(written, chunk.count() - 1));
  } else {
    std::error_code error;
    while (done < chunk.count() &&
           std::filesystem::exists(output_.fileOf(chunk.first + done), error)) {
      ++done;
    }
  }
  return done;
}

int FarmJob::framesDone() {
  int sum = 0;
  for (std::size_t i = 0; i < chunks_.size(); ++i) {
    const bool isKnown = done_[i] == chunks_[i].count();
    sum += isKnown ? done_[i] : framesDoneOf(i);
  }
  return sum;
}

std::string FarmJob::ticket() const {
  return readText(folder_ / "ticket");
}

void FarmJob::setTicket(const std::string& ticket) const {
  writeText(folder_ / "ticket", ticket);
}

void FarmJob::setAttended(bool attended) const {
  std::error_code ignored;
  if (attended) {
    writeText(folder_ / "attended", "");
  } else {
    std::filesystem::remove(folder_ / "attended", ignored);
  }
}

void FarmJob::remove() const {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
  if (!output_.holdsPictures()) return;
  const std::string end = output_.path.extension().string();
  for (const auto& entry : std::filesystem::directory_iterator(folder_.parent_path(), ignored)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with('.') || !name.ends_with(".part")) continue;
    for (int frame = range().first; frame <= range().last; ++frame) {
      const std::string start = "." + output_.fileOf(frame).filename().string() + ".";
      if (name.starts_with(start)) std::filesystem::remove(entry.path(), ignored);
    }
  }
}

}  // namespace cli
