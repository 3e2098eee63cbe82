#include "cli/scene/preset_choice.h"

#include <algorithm>
#include <filesystem>

#include "cli/support/errors.h"
#include "cli/support/nearest_name.h"

namespace cli {
namespace {

// How the row of thumbnails is laid out, pixels.
constexpr A_long kStripLeft = 24;     // from the control's left
constexpr A_long kStripMargins = 48;  // control's width beyond the strip's
constexpr A_long kCellWidth = 94;
constexpr A_long kRowHeight = 75;

// No number of a preset file, a float, becomes this: its set bits lie too far apart.
constexpr A_long kUnreachable = 0x55555555;

// Takes a drawing for which nobody looks.
class NoPainter : public hostkit::Painter {
  void fillRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&) override {}
  void strokeRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&, float) override {}
  void drawImage(const hostkit::PaintedImage&, const DRAWBOT_PointF32&, float) override {}
};

[[noreturn]] void reject(const PresetChoice& choice, const std::string& what) {
  const std::string message = choice.place + ": " + what;
  if (choice.origin == Origin::kOption) throw UsageError(message);
  throw WorkError(message);
}

// The module marks sliders and checkboxes as changed only when their value differs.
void makeUnreachable(hostkit::ParameterSet& parameters) {
  for (const hostkit::Parameter& parameter : parameters.list()) {
    PF_ParamDefUnion& u = parameters.value(parameter.index).u;
    if (parameter.type() == PF_Param_SLIDER) u.sd.value = kUnreachable;
    if (parameter.type() == PF_Param_FIX_SLIDER) u.fd.value = kUnreachable;
    if (parameter.type() == PF_Param_CHECKBOX) u.bd.value = kUnreachable;
  }
}

hostkit::EventReport clickCell(hostkit::Session& session, const PresetIndex& index,
                               const Preset& preset) {
  const char* const label = kPresetRows[preset.row].control;
  const hostkit::Parameter* control = session.parameters().find(label);
  if (control == nullptr) throw WorkError("the module has no " + inQuotes(label));
  // So wide that no preset is scrolled out of sight.
  const PF_Rect frame{0, 0, kStripMargins + index.cells[preset.row] * kCellWidth, kRowHeight};
  NoPainter painter;  // the drawing tells the module where its cells are
  session.draw(control->index, frame, &painter);
  const A_long middle = kStripLeft + preset.cell * kCellWidth + kCellWidth / 2;
  return session.click(control->index, frame, {middle, kRowHeight / 2});
}

}  // namespace

const Preset& findPreset(const PresetIndex& index, const PresetChoice& choice) {
  const auto isMeant = [&](const Preset& preset) {
    return preset.name == choice.name || preset.file.filename() == choice.name;
  };
  const auto found = std::ranges::find_if(index.presets, isMeant);
  if (found != index.presets.end()) {
    const auto second = std::find_if(found + 1, index.presets.end(), isMeant);
    if (second == index.presets.end() || second->file == found->file) return *found;
    reject(choice, inQuotes(choice.name) + " may be " + inQuotes(found->file.string()) + " or " +
                       inQuotes(second->file.string()));
  }
  if (index.presets.empty()) {
    reject(choice, "there are no presets, as " + inQuotes(index.file.string()) +
                       " does not exist or lists none");
  }
  std::vector<std::string> names;
  for (const Preset& preset : index.presets) names.push_back(preset.name);
  reject(choice, "there is no preset " + inQuotes(choice.name) + "; the nearest is " +
                     inQuotes(nearestName(choice.name, names)));
}

std::vector<PF_ParamIndex> applyPreset(hostkit::Session& session, const PresetIndex& index,
                                       const Preset& preset) {
  hostkit::ParameterSet& parameters = session.parameters();
  std::vector<PF_ParamDefUnion> before;
  for (const hostkit::Parameter& parameter : parameters.list()) {
    before.push_back(parameters.value(parameter.index).u);
  }
  makeUnreachable(parameters);
  const hostkit::EventReport report = clickCell(session, index, preset);
  for (const hostkit::Parameter& parameter : parameters.list()) {
    if (std::ranges::find(report.changed, parameter.index) == report.changed.end()) {
      parameters.value(parameter.index).u = before[static_cast<std::size_t>(parameter.index)];
    }
  }
  if ((report.outFlags & PF_OutFlag_REFRESH_UI) == 0) {
    std::string fault = presetFault(preset);
    if (fault.empty()) fault = " is sound, but the effect looks elsewhere";
    throw WorkError("the effect does not take the preset " + inQuotes(preset.name) + ": " +
                    inQuotes(preset.file.string()) + fault);
  }
  return report.changed;
}

}  // namespace cli
