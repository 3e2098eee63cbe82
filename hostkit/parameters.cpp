#include "hostkit/parameters.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace hostkit {

namespace {

struct TypeName {
  PF_ParamType type;
  std::string_view name;
};

// The types this host takes.
constexpr std::array kTypeNames{
    TypeName{PF_Param_LAYER, "layer"},
    TypeName{PF_Param_SLIDER, "slider"},
    TypeName{PF_Param_FIX_SLIDER, "fixed slider"},
    TypeName{PF_Param_ANGLE, "angle"},
    TypeName{PF_Param_CHECKBOX, "checkbox"},
    TypeName{PF_Param_COLOR, "color"},
    TypeName{PF_Param_POINT, "point"},
    TypeName{PF_Param_POPUP, "popup"},
    TypeName{PF_Param_NO_DATA, "panel"},
    TypeName{PF_Param_PATH, "path"},
    TypeName{PF_Param_GROUP_START, "group start"},
    TypeName{PF_Param_GROUP_END, "group end"},
};

std::vector<std::string> splitItems(std::string_view names) {
  std::vector<std::string> items;
  for (;;) {
    const auto bar = names.find('|');
    items.emplace_back(names.substr(0, bar));
    if (bar == std::string_view::npos) return items;
    names.remove_prefix(bar + 1);
  }
}

Parameter inputLayer() {
  Parameter layer;
  layer.declared.param_type = PF_Param_LAYER;
  return layer;
}

}  // namespace

std::string_view typeName(PF_ParamType type) {
  const auto found = std::ranges::find(kTypeNames, type, &TypeName::type);
  return found == kTypeNames.end() ? "unknown" : found->name;
}

std::optional<Range> validRange(const Parameter& parameter) {
  const PF_ParamDefUnion& u = parameter.declared.u;
  switch (parameter.type()) {
    case PF_Param_SLIDER:
      return Range{double(u.sd.valid_min), double(u.sd.valid_max)};
    case PF_Param_FIX_SLIDER:
      return Range{u.fd.valid_min / kFixedOne, u.fd.valid_max / kFixedOne};
    case PF_Param_POPUP:
      return Range{1, double(u.pd.num_choices)};
    default:
      return std::nullopt;
  }
}

std::optional<Range> sliderRange(const Parameter& parameter) {
  const PF_ParamDefUnion& u = parameter.declared.u;
  switch (parameter.type()) {
    case PF_Param_SLIDER:
      return Range{double(u.sd.slider_min), double(u.sd.slider_max)};
    case PF_Param_FIX_SLIDER:
      return Range{u.fd.slider_min / kFixedOne, u.fd.slider_max / kFixedOne};
    default:
      return std::nullopt;
  }
}

std::optional<double> defaultNumber(const Parameter& parameter) {
  const PF_ParamDefUnion& u = parameter.declared.u;
  switch (parameter.type()) {
    case PF_Param_SLIDER:
      return u.sd.dephault;
    case PF_Param_FIX_SLIDER:
      return u.fd.dephault / kFixedOne;
    case PF_Param_ANGLE:
      return u.ad.dephault / kFixedOne;
    case PF_Param_CHECKBOX:
      return u.bd.dephault;
    case PF_Param_POPUP:
      return u.pd.dephault;
    default:
      return std::nullopt;
  }
}

ParameterSet::ParameterSet() {
  clear();
}

void ParameterSet::clear() {
  parameters_.assign(1, inputLayer());
  values_.assign(1, parameters_.front().declared);
  openGroups_ = 0;
  renewPointers();
}

PF_Err ParameterSet::add(PF_ParamIndex index, const PF_ParamDef& def) {
  if (index != -1 && index != count()) return PF_Err_INVALID_INDEX;
  const auto known = std::ranges::find(kTypeNames, def.param_type, &TypeName::type);
  if (known == kTypeNames.end()) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
  const bool labelEnds = std::memchr(def.name, '\0', sizeof def.name) != nullptr;
  const bool hasItems = def.param_type != PF_Param_POPUP || def.u.pd.names != nullptr;
  const bool closesNothing = def.param_type == PF_Param_GROUP_END && openGroups_ == 0;
  if (!labelEnds || !hasItems || closesNothing) return PF_Err_BAD_CALLBACK_PARAM;

  if (def.param_type == PF_Param_GROUP_END) --openGroups_;
  Parameter parameter;
  parameter.index = count();
  parameter.groupDepth = openGroups_;
  parameter.label = def.name;
  parameter.declared = def;
  if (def.param_type == PF_Param_POPUP) parameter.items = splitItems(def.u.pd.names);
  if (def.param_type == PF_Param_CHECKBOX && def.u.bd.text != nullptr) {
    parameter.checkboxText = def.u.bd.text;
  }
  if (def.param_type == PF_Param_GROUP_START) ++openGroups_;

  parameters_.push_back(std::move(parameter));
  values_.push_back(def);
  renewPointers();
  return PF_Err_NONE;
}

PF_Err ParameterSet::updateUI(PF_ParamIndex index, const PF_ParamDef& def) {
  if (index < 1 || index >= count()) return PF_Err_INVALID_INDEX;
  PF_ParamDef& shown = values_[static_cast<std::size_t>(index)];
  if (def.param_type != shown.param_type) return PF_Err_BAD_CALLBACK_PARAM;
  shown.ui_flags = def.ui_flags;
  shown.ui_width = def.ui_width;
  shown.ui_height = def.ui_height;
  shown.flags = def.flags;
  std::memcpy(shown.name, def.name, sizeof shown.name);
  return PF_Err_NONE;
}

void ParameterSet::beginChanges() {
  for (PF_ParamDef& value : values_) value.uu.change_flags = 0;
  valuesBefore_ = values_;
}

std::vector<PF_ParamIndex> ParameterSet::endChanges() {
  std::vector<PF_ParamIndex> changed;
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if ((values_[i].uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) != 0) {
      changed.push_back(static_cast<PF_ParamIndex>(i));
    } else {
      values_[i].u = valuesBefore_[i].u;
    }
    values_[i].uu.change_flags = 0;
  }
  if (!changed.empty()) changed_ = true;
  return changed;
}

const Parameter* ParameterSet::find(std::string_view label) const {
  const auto found = std::ranges::find_if(parameters_, [&](const Parameter& parameter) {
    return parameter.label == label && parameter.type() != PF_Param_GROUP_END &&
           parameter.type() != PF_Param_LAYER;
  });
  return found == parameters_.end() ? nullptr : &*found;
}

void ParameterSet::renewPointers() {
  pointers_.clear();
  for (PF_ParamDef& value : values_) pointers_.push_back(&value);
}

}  // namespace hostkit
