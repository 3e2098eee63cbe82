// The commands of `brisel`. Each function adds one to the program, with its options and its help;
// parsing the command line then runs it. Commands report failure by throwing.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/media/output_target.h"
#include "cli/scene/scene_plan.h"

namespace cli {

// The whole command line, for the program and for its man pages and completions. `version` gives
// the answer to --version.
void describeProgram(CLI::App& app, std::function<std::string()> version);

void addRenderCommand(CLI::App& app);
void addPreviewCommand(CLI::App& app);
void addCheckpointCommand(CLI::App& app);
void addChunksCommand(CLI::App& app);
void addJoinCommand(CLI::App& app);
void addFarmCommand(CLI::App& app);
void addSheetCommand(CLI::App& app);
void addPanelCommand(CLI::App& app);
void addNewCommand(CLI::App& app);
void addParamsCommand(CLI::App& app);
void addPresetsCommand(CLI::App& app);
void addInfoCommand(CLI::App& app);

// Options that several commands share.
void addModuleOption(CLI::App& command, std::string& modulePath);
void addThreadsOption(CLI::App& command, std::optional<int>& threads,
                      const std::string& otherwise);  // how many there are then
void addSceneOptions(CLI::App& command, SceneOptions& options);
void addValueOptions(CLI::App& command, SceneOptions& options);  // those about parameters alone
void addAllowOption(CLI::App& command, SceneOptions& options);
void addOutputOptions(CLI::App& command, OutputOptions& options);

// On standard error: a problem that does not stop the work, and something worth knowing.
void warn(const std::string& message);
void note(const std::string& message);

}  // namespace cli
