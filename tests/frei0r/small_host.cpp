#include "tests/frei0r/small_host.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <stdexcept>

namespace tests {
namespace {

constexpr std::size_t kGuard = 64;  // pixels before and after a frame
constexpr std::uint32_t kGuardPixel = 0xA55A3CC3;

template <typename Function>
void load(void* handle, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(handle, name));
  if (function == nullptr) throw std::runtime_error(std::string("no function ") + name);
}

double withSixDecimals(double number) {
  char text[64];
  std::snprintf(text, sizeof text, "%.6f", number);
  return std::atof(text);
}

}  // namespace

ClipFrame patternedFrame(unsigned width, unsigned height, std::uint32_t seed) {
  ClipFrame frame{width, height, std::vector<std::uint32_t>(std::size_t{width} * height)};
  std::minstd_rand random(seed);
  for (std::uint32_t& pixel : frame.pixels)
    pixel = static_cast<std::uint32_t>(random()) * 2654435761u;
  return frame;
}

FilterLibrary::FilterLibrary(const char* path) : handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
  load(handle_, "f0r_construct", construct);
  load(handle_, "f0r_destruct", destruct);
  load(handle_, "f0r_set_param_value", setValue);
  load(handle_, "f0r_get_param_value", getValue);
  load(handle_, "f0r_get_param_info", getInfo);
  load(handle_, "f0r_get_plugin_info", getPluginInfo);
  load(handle_, "f0r_update", update);
  load(handle_, "f0r_update2", update2);
  load(handle_, "f0r_deinit", deinit_);
  // Hosts that scan folders ask before they set up, and set up once for each filter.
  const f0r_plugin_info_t before = info();
  decltype(&f0r_init) init;
  load(handle_, "f0r_init", init);
  EXPECT_NE(init(), 0);
  EXPECT_NE(init(), 0);
  EXPECT_STREQ(info().name, before.name);
  for (int i = 0; i < info().num_params; ++i) {
    f0r_param_info_t parameter{};
    getInfo(&parameter, i);
    parameters_.push_back(parameter);
  }
}

FilterLibrary::~FilterLibrary() {
  deinit_();
  deinit_();
  dlclose(handle_);
}

f0r_plugin_info_t FilterLibrary::info() const {
  f0r_plugin_info_t info{};
  getPluginInfo(&info);
  return info;
}

int FilterLibrary::indexOf(const std::string& name) const {
  for (std::size_t i = 0; i < parameters_.size(); ++i) {
    if (parameters_[i].name == name) return static_cast<int>(i);
  }
  return -1;
}

FilterLibrary& theLibrary() {
  static FilterLibrary library;
  return library;
}

HostedFilter::HostedFilter(unsigned width, unsigned height, FilterLibrary& library)
    : instance(library.construct(width, height)),
      library_(library),
      width_(width),
      height_(height) {
  if (instance == nullptr) throw std::runtime_error("no instance");
}

int HostedFilter::find(const std::string& name, int type) {
  const int index = library_.indexOf(name);
  if (index < 0) throw std::runtime_error("no parameter " + name);
  EXPECT_EQ(library_.parameters()[static_cast<std::size_t>(index)].type, type) << name;
  return index;
}

HostedFilter& HostedFilter::set(const std::string& name, double number) {
  const int index = library_.indexOf(name);
  const bool isBool =
      index >= 0 && library_.parameters()[static_cast<std::size_t>(index)].type == F0R_PARAM_BOOL;
  library_.setValue(instance, &number, find(name, isBool ? F0R_PARAM_BOOL : F0R_PARAM_DOUBLE));
  return *this;
}

HostedFilter& HostedFilter::set(const std::string& name, std::string text) {
  char* bytes = text.data();
  library_.setValue(instance, &bytes, find(name, F0R_PARAM_STRING));
  text.assign(text.size(), '?');  // nobody said that it stays
  return *this;
}

HostedFilter& HostedFilter::set(const std::string& name, f0r_param_color_t color) {
  library_.setValue(instance, &color, find(name, F0R_PARAM_COLOR));
  return *this;
}

double HostedFilter::number(const std::string& name) {
  double number = -1;
  library_.getValue(instance, &number, library_.indexOf(name));
  return number;
}

std::string HostedFilter::text(const std::string& name) {
  char* text = nullptr;
  library_.getValue(instance, &text, find(name, F0R_PARAM_STRING));
  return text;
}

void HostedFilter::setAllAgain() {
  for (const f0r_param_info_t& parameter : library_.parameters()) {
    if (parameter.type == F0R_PARAM_STRING) {
      set(parameter.name, text(parameter.name));
    } else if (parameter.type == F0R_PARAM_COLOR) {
      f0r_param_color_t color{};
      library_.getValue(instance, &color, find(parameter.name, F0R_PARAM_COLOR));
      set(parameter.name, color);
    } else {
      set(parameter.name, withSixDecimals(number(parameter.name)));
    }
  }
}

ClipFrame HostedFilter::update(double time, const ClipFrame& clip) {
  const ClipFrame before = clip;
  std::vector<std::uint32_t> guarded(clip.pixels.size() + 2 * kGuard, kGuardPixel);
  library_.update(instance, time, clip.pixels.data(), guarded.data() + kGuard);
  EXPECT_EQ(clip, before) << "the clip was changed";
  const auto begin = guarded.begin() + kGuard;
  const auto end = guarded.end() - kGuard;
  for (std::size_t i = 0; i < kGuard; ++i) {
    EXPECT_EQ(guarded[i], kGuardPixel);
    EXPECT_EQ(end[static_cast<std::ptrdiff_t>(i)], kGuardPixel);
  }
  return {width_, height_, {begin, end}};
}

}  // namespace tests
