// Writes what is installed with the program for people, editors and hosts into a folder: man pages,
// completion for shells, the schema of scenes, descriptions of the filter.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <string>

#include "cli/commands/commands.h"
#include "cli/commands/scene_schema.h"
#include "cli/reference/completions.h"
#include "cli/reference/filter_description.h"
#include "cli/reference/man_pages.h"
#include "cli/scene/effect.h"
#include "cli/support/temporary_file.h"

namespace {

void write(const std::filesystem::path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  cli::writeWholeFile(file, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

void writeAll(const std::filesystem::path& folder,
              const std::map<std::string, std::string>& textsByFile) {
  for (const auto& [name, text] : textsByFile) write(folder / name, text);
}

void writeReference(const std::filesystem::path& share) {
  CLI::App app;
  cli::describeProgram(app, [] { return std::string(BRISEL_VERSION); });
  const cli::CommandTree tree = cli::commandTree(app);
  writeAll(share / "man/man1", cli::manPages(tree, BRISEL_VERSION));
  write(share / "bash-completion/completions/brisel", cli::bashCompletion(tree));
  write(share / "zsh/site-functions/_brisel", cli::zshCompletion(tree));
  write(share / "fish/vendor_completions.d/brisel.fish", cli::fishCompletion(tree));

  cli::Effect effect(cli::loadModule(""));
  const auto parameters = cli::listedParameters(effect.session().parameters());
  write(share / "brisel/scene.schema.json", cli::sceneSchema(parameters).dump(1) + "\n");

  writeAll(share / "kdenlive/effects", cli::kdenliveEffects());
  writeAll(share / "mlt-7/frei0r", cli::mltMetadata());
  writeAll(share / "flowblade", cli::flowbladeFilters());
  writeAll(share / "shotcut/qml/filters/brisel", cli::shotcutFilter());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: brisel_reference FOLDER\n");
    return 2;
  }
  try {
    writeReference(argv[1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "brisel_reference: %s\n", error.what());
    return 1;
  }
}
