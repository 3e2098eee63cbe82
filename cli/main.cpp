#include <algorithm>
#include <cstdio>
#include <iostream>
#include <new>

#include "cli/commands/commands.h"
#include "cli/support/errors.h"
#include "cli/support/interrupt.h"
#include "cli/support/nearest_name.h"

namespace {

constexpr int kWorkFailed = 1;
constexpr int kWrongUsage = 2;

int failure(int exitCode, const std::string& message) {
  std::fprintf(stderr, "brisel: %s\n", message.c_str());
  return exitCode;
}

// The parser alone would only say that a command is missing.
void checkCommandName(const CLI::App& app, int argc, char** argv) {
  if (argc < 2 || argv[1][0] == '-') return;
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands({})) names.push_back(command->get_name());
  if (std::ranges::find(names, argv[1]) != names.end()) return;
  throw cli::UsageError("there is no command " + cli::inQuotes(argv[1]) + "; the nearest is " +
                        cli::inQuotes(cli::nearestName(argv[1], names)));
}

// Parsing runs the command that was named.
int run(int argc, char** argv) {
  CLI::App app("Star particles for titles and footage, rendered through the effect module.");
  app.name("brisel");
  app.set_version_flag("--version", "brisel " BRISEL_VERSION);
  app.require_subcommand(1);
  app.footer("Exit codes: 0 done, 1 the work failed, 2 wrong usage.");
  cli::addRenderCommand(app);
  cli::addSheetCommand(app);
  cli::addPanelCommand(app);
  cli::addParamsCommand(app);
  cli::addPresetsCommand(app);
  cli::addInfoCommand(app);
  app.get_formatter()->column_width(26);
  checkCommandName(app, argc, argv);
  try {
    app.parse(argc, argv);
    std::cout.flush();
    if (std::fflush(stdout) != 0 || std::cout.fail()) {
      return failure(kWorkFailed, "cannot write to standard output");
    }
    return 0;
  } catch (const CLI::Success& success) {  // --help and --version
    return app.exit(success);
  } catch (const CLI::ParseError& error) {
    return failure(kWrongUsage, std::string(error.what()) + " (brisel --help tells more)");
  }
}

}  // namespace

int main(int argc, char** argv) {
  cli::installInterruptHandlers();
  try {
    return run(argc, argv);
  } catch (const cli::UsageError& error) {
    return failure(kWrongUsage, error.what());
  } catch (const std::bad_alloc&) {
    return failure(kWorkFailed, "out of memory");
  } catch (const std::exception& error) {
    return failure(kWorkFailed, error.what());
  }
}
