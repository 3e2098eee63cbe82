#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#include "cli/commands/commands.h"
#include "cli/commands/version.h"
#include "cli/support/errors.h"
#include "cli/support/interrupt.h"
#include "cli/support/memory.h"
#include "scene/text/nearest_name.h"
#include "scene/text/printable.h"

namespace {

constexpr int kWorkFailed = 1;
constexpr int kWrongUsage = 2;

int failure(int exitCode, const std::string& message) {
  std::fprintf(stderr, "brisel: %s\n", scene::printable(message).c_str());
  return exitCode;
}

// Libraries allocate in functions that must not throw, that for JSON in its destructors.
[[noreturn]] void endWhereNothingCatches() {
  try {
    if (const auto error = std::current_exception()) std::rethrow_exception(error);
  } catch (const std::bad_alloc&) {
    cli::endAtOnce(failure(kWorkFailed, "out of memory"));
  } catch (...) {
  }
  std::abort();
}

// The number of a stream that the caller has closed would go to the next file that is opened, and
// that file would get what is printed. It goes to one that can be used no more than a closed one.
void takeClosedStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) >= 0) continue;
    open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);  // takes the lowest number
  }
}

// `help`, `help COMMAND` and `COMMAND help` ask for what --help tells.
void takeHelpAsOption(std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments.size() > 2) return;
  if (arguments.front() == "help") std::ranges::reverse(arguments);
  if (arguments.back() == "help") arguments.back() = "--help";
}

// The parser alone would only say that a command is missing.
void checkCommandName(const CLI::App& app, const std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments.front().starts_with('-')) return;
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands({})) names.push_back(command->get_name());
  const std::string& wanted = arguments.front();
  if (std::ranges::find(names, wanted) != names.end()) return;
  throw cli::UsageError("there is no command " + cli::inQuotes(wanted) +
                        scene::orNearest(wanted, names));
}

// The command being parsed; the program itself until a command is named.
const CLI::App& commandOf(const CLI::App& app) {
  const auto named = app.get_subcommands();
  return named.empty() ? app : *named.front();
}

std::string complaintAbout(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App& command = commandOf(app);
  const std::string name = &command == &app ? "brisel" : "brisel " + command.get_name();
  std::string complaint = error.what();
  const auto strange = app.remaining(true);
  const auto option = std::ranges::find_if(strange, [](auto& s) { return s.starts_with("--"); });
  if (option != strange.end()) {
    std::vector<std::string> known;
    for (const CLI::Option* o : command.get_options()) {
      for (const std::string& longName : o->get_lnames()) known.push_back("--" + longName);
    }
    complaint = "there is no option " + cli::inQuotes(option->substr(0, option->find('='))) +
                scene::orNearest(*option, known);
  }
  return complaint + " (" + name + " --help tells more)";
}

// Of a command that has done its work: whether what it printed has arrived.
int exitCodeOfOutput() {
  std::cout.flush();
  if (std::fflush(stdout) == 0 && !std::cout.fail()) return 0;
  if (errno == EPIPE) return kWorkFailed;  // the reader has stopped early, as `head` does
  return failure(kWorkFailed, "cannot write to standard output");
}

// Parsing runs the command that was named.
int run(int argc, char** argv) {
  CLI::App app;
  cli::describeProgram(app, cli::programVersion);
  std::vector<std::string> arguments(argv + 1, argv + argc);
  takeHelpAsOption(arguments);
  checkCommandName(app, arguments);
  std::ranges::reverse(arguments);  // as the parser wants them
  try {
    app.parse(std::move(arguments));
    return exitCodeOfOutput();
  } catch (const CLI::Success& success) {  // --help and --version
    app.exit(success);
    return exitCodeOfOutput();
  } catch (const CLI::ParseError& error) {
    return failure(kWrongUsage, complaintAbout(app, error));
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::set_terminate(endWhereNothingCatches);
  takeClosedStreams();
  cli::installInterruptHandlers();
  cli::keepFreedMemory();
  try {
    return run(argc, argv);
  } catch (const cli::UsageError& error) {
    return failure(kWrongUsage, error.what());
  } catch (const cli::Interrupted& error) {
    return failure(cli::kInterruptedExitCode, error.what());
  } catch (const std::bad_alloc&) {
    return failure(kWorkFailed, "out of memory");
  } catch (const std::exception& error) {
    return failure(kWorkFailed, error.what());
  }
}
