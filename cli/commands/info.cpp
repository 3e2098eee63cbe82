#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/scene/effect.h"
#include "plugin/sdk/codes.h"

namespace cli {
namespace {

using FlagNames = std::vector<std::pair<PF_OutFlags, const char*>>;

const FlagNames kOutFlags = {
    {PF_OutFlag_NON_PARAM_VARY, "varies without its parameters"},
    {PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING, "sequence data needs flattening"},
    {PF_OutFlag_USE_OUTPUT_EXTENT, "uses the output extent"},
    {PF_OutFlag_PIX_INDEPENDENT, "pixel independent"},
    {PF_OutFlag_CUSTOM_UI, "custom controls"},
    {PF_OutFlag_DEEP_COLOR_AWARE, "16 bits per channel"},
    {PF_OutFlag_SEND_UPDATE_PARAMS_UI, "updates its controls"}};
const FlagNames kOutFlags2 = {
    {PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG, "groups may start collapsed"}};

std::string flagText(PF_OutFlags flags, const FlagNames& names) {
  char number[16];
  std::snprintf(number, sizeof number, "0x%08x", static_cast<unsigned>(flags));
  std::string text = number;
  for (const auto& [flag, name] : names) {
    if (flags & flag) text += std::string(text == number ? ": " : ", ") + name;
  }
  return text;
}

void printInfo(const std::string& modulePath) {
  Effect effect(loadModule(modulePath));
  const hostkit::ModuleReport& report = effect.session().report();
  std::printf("module      %s\n", effect.path().c_str());
  std::printf("version     %s (0x%08x)\n", versionText(report.version).c_str(), report.version);
  std::printf("flags       %s\n", flagText(report.outFlags, kOutFlags).c_str());
  std::printf("flags 2     %s\n", flagText(report.outFlags2, kOutFlags2).c_str());
  std::printf("parameters  %d, with the input layer\n", report.numParams);
  // The host's messages separate lines with carriage returns.
  std::string about = effect.session().about();
  std::ranges::replace(about, '\r', '\n');
  std::printf("\n%s\n", about.c_str());
}

}  // namespace

void addInfoCommand(CLI::App& app) {
  const auto modulePath = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand("info", "Tell which module is used and what it says");
  addModuleOption(*command, *modulePath);
  command->callback([modulePath] { printInfo(*modulePath); });
}

}  // namespace cli
