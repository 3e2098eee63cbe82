// The interface's functions. Hosts call those of the library before f0r_init and after f0r_deinit,
// too, and each once for every filter: there is nothing to set up or down.
extern "C" {
#include <frei0r.h>
}

#include <limits>
#include <string>
#include <variant>

#include "frei0r/filter.h"
#include "frei0r/filter_parameters.h"
#include "platform/library_at.h"

namespace {

using brisel::Filter;
using brisel::FilterParameter;
using brisel::filterParameters;
using brisel::FilterSettings;

/// Null for a number that no parameter has.
const FilterParameter* parameterAt(int index) {
  const auto parameters = filterParameters();
  if (index < 0 || static_cast<std::size_t>(index) >= parameters.size()) return nullptr;
  return &parameters[static_cast<std::size_t>(index)];
}

int typeOf(FilterParameter::Kind kind) {
  switch (kind) {
    case FilterParameter::Kind::Number:
      return F0R_PARAM_DOUBLE;
    case FilterParameter::Kind::Checkbox:
      return F0R_PARAM_BOOL;
    case FilterParameter::Kind::Color:
      return F0R_PARAM_COLOR;
    case FilterParameter::Kind::Text:
      break;
  }
  return F0R_PARAM_STRING;
}

FilterSettings::Setting settingOf(FilterParameter::Kind kind, f0r_param_t value) {
  switch (kind) {
    case FilterParameter::Kind::Number:
    case FilterParameter::Kind::Checkbox:
      return *static_cast<const f0r_param_double*>(value);
    case FilterParameter::Kind::Color: {
      const auto& color = *static_cast<const f0r_param_color_t*>(value);
      return FilterSettings::Color{color.r, color.g, color.b};
    }
    case FilterParameter::Kind::Text:
      break;
  }
  const char* text = *static_cast<const f0r_param_string*>(value);
  return std::string(text != nullptr ? text : "");
}

/// Hands a setting over as the interface has it.
struct Give {
  f0r_param_t value;

  void operator()(double number) const { *static_cast<f0r_param_double*>(value) = number; }
  void operator()(const FilterSettings::Color& color) const {
    *static_cast<f0r_param_color_t*>(value) = {color[0], color[1], color[2]};
  }
  void operator()(const std::string& text) const {
    // Which the interface asks for without const, and hosts only read.
    *static_cast<f0r_param_string*>(value) = const_cast<char*>(text.c_str());
  }
};

}  // namespace

int f0r_init() {
  return 1;
}

void f0r_deinit() {}

void f0r_get_plugin_info(f0r_plugin_info_t* info) try {
  *info = {.name = "Brisel",
           .author = "Corvane",
           .plugin_type = F0R_PLUGIN_TYPE_FILTER,
           .color_model = F0R_COLOR_MODEL_RGBA8888,
           .frei0r_version = FREI0R_MAJOR_VERSION,
           .major_version = BRISEL_MAJOR,
           .minor_version = BRISEL_MINOR,
           .num_params = static_cast<int>(filterParameters().size()),
           .explanation = "Stars on footage: sparkles, snow, fire, fireworks, magic"};
} catch (...) {
}

void f0r_get_param_info(f0r_param_info_t* info, int index) try {
  const FilterParameter* parameter = parameterAt(index);
  if (parameter == nullptr) return;
  *info = {.name = parameter->name.c_str(),
           .type = typeOf(parameter->kind),
           .explanation = parameter->explanation.c_str()};
} catch (...) {
}

f0r_instance_t f0r_construct(unsigned int width, unsigned int height) try {
  const auto unit = brisel::timeUnitOfHost(brisel::libraryAt(__builtin_return_address(0)));
  constexpr unsigned kMost = std::numeric_limits<std::int16_t>::max();  // pixels of a 16.16 point
  if (width > kMost || height > kMost) return nullptr;
  return new Filter({static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)}, unit);
} catch (...) {
  return nullptr;
}

void f0r_destruct(f0r_instance_t instance) {
  delete static_cast<Filter*>(instance);
}

void f0r_set_param_value(f0r_instance_t instance, f0r_param_t value, int index) try {
  const FilterParameter* parameter = parameterAt(index);
  if (instance == nullptr || value == nullptr || parameter == nullptr) return;
  static_cast<Filter*>(instance)->set(static_cast<std::size_t>(index),
                                      settingOf(parameter->kind, value));
} catch (...) {
}

void f0r_get_param_value(f0r_instance_t instance, f0r_param_t value, int index) try {
  if (instance == nullptr || value == nullptr || parameterAt(index) == nullptr) return;
  std::visit(Give{value}, static_cast<Filter*>(instance)->get(static_cast<std::size_t>(index)));
} catch (...) {
}

void f0r_update(f0r_instance_t instance, double time, const uint32_t* in, uint32_t* out) {
  if (instance == nullptr || in == nullptr || out == nullptr) return;
  static_cast<Filter*>(instance)->update(time, in, out);
}

void f0r_update2(f0r_instance_t instance, double time, const uint32_t* in, const uint32_t*,
                 const uint32_t*, uint32_t* out) {
  f0r_update(instance, time, in, out);
}
