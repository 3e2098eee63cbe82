#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

constexpr char kProgram[] = "brisel-preview";

struct PreviewOptions {
  std::string scene;
  std::string input;
  std::vector<std::string> allowed;
};

// Takes this program's place, so that the window is what a shell or a script waits for.
void openPreview(const PreviewOptions& options) {
  std::vector<std::string> words{kProgram};
  if (!options.input.empty()) words.insert(words.end(), {"--input", options.input});
  for (const std::string& folder : options.allowed) {
    words.insert(words.end(), {"--allow", folder});
  }
  if (!options.scene.empty()) words.insert(words.end(), {"--", options.scene});
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  const std::filesystem::path beside =
      std::filesystem::read_symlink("/proc/self/exe").replace_filename(kProgram);
  execv(beside.c_str(), arguments.data());
  if (errno == ENOENT) execvp(kProgram, arguments.data());
  if (errno == ENOENT) {
    throw WorkError("there is no " + inQuotes(kProgram) +
                    " beside this program or in PATH; it is " + "in the package brisel-preview");
  }
  throw WorkError("cannot start " + inQuotes(kProgram) + ": " + std::strerror(errno));
}

}  // namespace

void addPreviewCommand(CLI::App& app) {
  const auto options = std::make_shared<PreviewOptions>();
  CLI::App* command =
      app.add_subcommand("preview", "See a scene in a window while you turn its values");
  command->add_option("SCENE", options->scene, "The scene file; a new one where none is named")
      ->type_name("");
  command
      ->add_option("-i,--input", options->input,
                   "Show the stars over this still or clip,\n"
                   "not over the scene's input")
      ->type_name("FILE");
  command
      ->add_option("--allow", options->allowed,
                   "Let the scene name files below this folder, too;\n"
                   "may be repeated")
      ->type_name("FOLDER")
      ->allow_extra_args(false);
  command->callback([options] { openPreview(*options); });
}

}  // namespace cli
