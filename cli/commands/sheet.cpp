#include <memory>

#include "cli/commands/commands.h"
#include "cli/media/output_files.h"
#include "cli/media/png_writer.h"
#include "cli/pictures/contact_sheet.h"
#include "cli/pipeline/memory_need.h"
#include "cli/pipeline/progress.h"
#include "cli/pipeline/scene_renderer.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

struct SheetOptions {
  std::vector<std::string> scenes;
  SceneOptions overrides;
  std::string output;
  int count = 0;    // 0: as many as look well
  int columns = 0;  // 0: likewise
  int cellWidth = 320;
  bool overwrite = false;
  RendererOptions renderer;
};

// The middles of `count` equal parts of the scene.
std::vector<int> evenlySpaced(int count, int frames) {
  std::vector<int> numbers;
  for (long long i = 0; i < count; ++i) {
    numbers.push_back(static_cast<int>((2 * i + 1) * frames / (2 * count)));
  }
  return numbers;
}

void addScene(ContactSheet& sheet, ScenePlan plan, int count, Progress& progress,
              const RendererOptions& options) {
  const std::string name = plan.scene.file.stem().string();
  sheet.addGroup(name);
  const std::vector<int> numbers = evenlySpaced(std::min(count, plan.frames), plan.frames);
  SceneRenderer renderer(std::move(plan), options, {.state = {}, .firstSeen = numbers.front()});
  int next = renderer.firstFrame();
  hostkit::World output = renderer.newOutput();
  Frame picture;
  for (const std::string& text : renderer.notes()) note(name + ": " + text);
  for (const int number : numbers) {
    for (; next < number; ++next) {
      renderer.stepNext(renderer.readNext());
      progress.stepDone();
    }
    renderer.renderNext(renderer.readNext(), output);
    ++next;
    copyFromWorld(output, picture);
    sheet.addFrame(picture, number);
    progress.frameDone();
  }
  for (const std::string& warning : renderer.warnings()) warn(name + ": " + warning);
  if (const std::string damage = renderer.damage(); !damage.empty()) warn(name + ": " + damage);
}

// The small frames, all of them on a sheet, and that packed.
std::uint64_t bytesForCells(int count, FrameSize frame, int cellWidth) {
  const double pixels = 1.0 * cellWidth * cellWidth * frame.height / frame.width;
  return static_cast<std::uint64_t>(3 * 4 * pixels * count);
}

void makeSheet(const SheetOptions& options) {
  if (!parseOutputTarget(options.output).isOnePng()) {
    throw UsageError("a contact sheet is one picture, such as sheet.png, not " +
                     inQuotes(options.output));
  }
  checkOutputFile(options.output, options.overwrite);
  const bool single = options.scenes.size() == 1;
  const int count = options.count > 0 ? options.count : (single ? 12 : 5);
  const int columns = options.columns > 0 ? options.columns : (single ? 4 : count);

  std::vector<ScenePlan> plans;
  int shownFrames = 0;
  std::uint64_t cells = 0;
  for (const std::string& file : options.scenes) {
    plans.push_back(planScene(readScene(file, options.overrides), options.overrides));
    shownFrames += std::min(count, plans.back().frames);
    cells +=
        bytesForCells(std::min(count, plans.back().frames), plans.back().size, options.cellWidth);
  }
  for (const ScenePlan& plan : plans) checkMemory(plan, options.renderer.jobs, cells);

  ContactSheet sheet(columns, options.cellWidth);
  Progress progress(std::filesystem::path(options.output).filename().string(), 0, shownFrames);
  for (ScenePlan& plan : plans) {
    addScene(sheet, std::move(plan), count, progress, options.renderer);
  }
  writePng(sheet.picture(), options.output);
  progress.finish();
}

}  // namespace

void addSheetCommand(CLI::App& app) {
  const auto options = std::make_shared<SheetOptions>();
  CLI::App* command =
      app.add_subcommand("sheet", "Show evenly spaced frames of scenes on one picture");
  command->add_option("SCENE", options->scenes, "The scene files, TOML")->type_name("")->required();
  command->add_option("-o,--output", options->output, "The picture to write")
      ->type_name("FILE.png")
      ->required();
  addSceneOptions(*command, options->overrides);
  command
      ->add_option("--count", options->count,
                   "Frames of each scene; otherwise 12 of one scene,\n"
                   "5 of each of several")
      ->option_text("N")
      ->check(CLI::Range(1, 100));
  command
      ->add_option("--columns", options->columns,
                   "Frames side by side; otherwise 4 for one scene,\n"
                   "all for several")
      ->option_text("N")
      ->check(CLI::Range(1, 100));
  command
      ->add_option("--cell-width", options->cellWidth,
                   "Width of one frame in pixels, 320 if not given")
      ->option_text("PIXELS")
      ->check(CLI::Range(16, 4096));
  command->add_flag("--overwrite", options->overwrite, "Replace an existing picture");
  addThreadsOption(*command, options->renderer.threads, "one for each\nprocessor that may be used");
  addModuleOption(*command, options->renderer.module);
  command->callback([options] { makeSheet(*options); });
}

}  // namespace cli
