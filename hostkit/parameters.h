// hostkit: the parameters a module declares, and their current values. Values are set in the units
// a person sees: numbers and degrees as they read, popup items from 1, points in pixels.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/sdk/codes.h"
#include "plugin/sdk/params.h"

namespace hostkit {

// What a PF_Fixed counts as 1.
inline constexpr double kFixedOne = 65536.0;

struct Range {
  double min;
  double max;
};

// One declaration, copied while the module made it.
struct Parameter {
  PF_ParamIndex index = 0;
  int groupDepth = 0;  // groups around it; a group's start and end lie outside the group
  std::string label;
  std::vector<std::string> items;  // of a popup, the first is item 1
  std::string checkboxText;
  PF_ParamDef declared{};

  PF_ParamType type() const { return declared.param_type; }
};

std::string_view typeName(PF_ParamType type);  // "fixed slider", "popup", ...

// What a value may be, and what the slider offers. Sliders, fixed sliders and popups have a valid
// range; sliders and fixed sliders a slider range. None for other types.
std::optional<Range> validRange(const Parameter& parameter);
std::optional<Range> sliderRange(const Parameter& parameter);
// The default of a slider, fixed slider, angle, checkbox (0 or 1) or popup (item).
std::optional<double> defaultNumber(const Parameter& parameter);

// Index 0 is the input layer, which the host supplies.
class ParameterSet {
 public:
  ParameterSet();
  ParameterSet(ParameterSet&&) = default;
  ParameterSet& operator=(ParameterSet&&) = default;

  // What add_param does: index -1 appends. Returns PF_Err_INVALID_INDEX for any other index but
  // the next, PF_Err_UNRECOGNIZED_PARAM_TYPE for a type this host does not have, and
  // PF_Err_BAD_CALLBACK_PARAM for an endless label, a popup without items or a stray group end.
  PF_Err add(PF_ParamIndex index, const PF_ParamDef& def);
  void clear();  // back to the input layer alone

  const std::vector<Parameter>& list() const { return parameters_; }
  A_long count() const { return static_cast<A_long>(parameters_.size()); }
  int openGroups() const { return openGroups_; }
  // By label, exactly; group ends and the input layer are not found. Null when there is none.
  const Parameter* find(std::string_view label) const;

  // Every value as declared; points, declared in percent, in pixels of a layer of that size.
  void resetToDefaults(A_long layerWidth, A_long layerHeight);

  // All of these throw Error, with the label in it, when the parameter is of another type or the
  // value lies outside the valid range, as not-a-number does; an integer slider takes no fraction.
  // An index that was not declared throws std::out_of_range.
  void setNumber(PF_ParamIndex index, double value);  // slider, fixed slider, angle in degrees
  void setChecked(PF_ParamIndex index, bool checked);
  void setItem(PF_ParamIndex index, int item);  // popup, from 1
  void setColor(PF_ParamIndex index, A_u_char red, A_u_char green, A_u_char blue);
  void setPoint(PF_ParamIndex index, double x, double y);  // pixels of the layer
  void setPath(PF_ParamIndex index, PF_PathID mask);       // 0: none

  void setInput(const PF_LayerDef& layer);  // the layer of index 0; no change

  // The value as the module is given it; the mutable one counts as a change.
  const PF_ParamDef& value(PF_ParamIndex index) const;
  PF_ParamDef& value(PF_ParamIndex index);
  // One pointer per parameter, as every command is given. Valid until the next add or clear.
  PF_ParamDef** pointers() { return pointers_.data(); }
  // The same for a frame of reduced size: points are copies, in pixels of that frame. Valid until
  // the next call, too.
  PF_ParamDef** pointersAt(PF_RationalScale x, PF_RationalScale y);

  // Whether a value changed since the last call.
  bool takeChanged();

  // What PF_UpdateParamUI does: takes over flags, size and name, but no value. Returns
  // PF_Err_INVALID_INDEX for one that was not declared and PF_Err_BAD_CALLBACK_PARAM for another
  // type than was declared.
  PF_Err updateUI(PF_ParamIndex index, const PF_ParamDef& def);

  // Around a command in which a module may change values: those it marks as changed stay and are
  // returned, all others are put back.
  void beginChanges();
  std::vector<PF_ParamIndex> endChanges();

 private:
  PF_ParamDef& valueOfType(PF_ParamIndex index, PF_ParamType type);
  void renewPointers();

  std::vector<Parameter> parameters_;
  std::vector<PF_ParamDef> values_;
  std::vector<PF_ParamDef*> pointers_;
  std::vector<PF_ParamDef> reducedPoints_;
  std::vector<PF_ParamDef*> reducedPointers_;
  std::vector<PF_ParamDef> valuesBefore_;
  int openGroups_ = 0;
  bool changed_ = false;
};

}  // namespace hostkit
