// A small host of frei0r filters, which plays the host's side strictly: it asks for what is there
// before it sets anything, hands over frames between guard bytes, and looks after each call whether
// anything was written that is not the filter's.
#pragma once

extern "C" {
#include <frei0r.h>
}

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

/// Red, green, blue, alpha, a byte each, row by row.
struct ClipFrame {
  unsigned width, height;
  std::vector<std::uint32_t> pixels;

  bool operator==(const ClipFrame&) const = default;
};

/// Every pixel of its own color and alpha; other ones for another `seed`.
ClipFrame patternedFrame(unsigned width, unsigned height, std::uint32_t seed = 1);

/// The built filter, loaded for as long as this lives.
class FilterLibrary {
 public:
  explicit FilterLibrary(const char* path = FILTER_PATH);
  FilterLibrary(const FilterLibrary&) = delete;
  ~FilterLibrary();

  f0r_plugin_info_t info() const;
  const std::vector<f0r_param_info_t>& parameters() const { return parameters_; }
  int indexOf(const std::string& name) const;  // -1 when there is none

  decltype(&f0r_construct) construct;
  decltype(&f0r_destruct) destruct;
  decltype(&f0r_set_param_value) setValue;
  decltype(&f0r_get_param_value) getValue;
  decltype(&f0r_get_param_info) getInfo;
  decltype(&f0r_get_plugin_info) getPluginInfo;
  decltype(&f0r_update) update;
  decltype(&f0r_update2) update2;

 private:
  void* handle_;
  decltype(&f0r_deinit) deinit_;
  std::vector<f0r_param_info_t> parameters_;
};

FilterLibrary& theLibrary();

/// An instance. Settings are by name, and of the parameter's type.
class HostedFilter {
 public:
  HostedFilter(unsigned width, unsigned height, FilterLibrary& library = theLibrary());
  HostedFilter(const HostedFilter&) = delete;
  ~HostedFilter() { library_.destruct(instance); }

  HostedFilter& set(const std::string& name, double number);
  HostedFilter& set(const std::string& name, std::string text);
  HostedFilter& set(const std::string& name, f0r_param_color_t color);
  double number(const std::string& name);
  std::string text(const std::string& name);

  /// Sets every parameter to what it is, with six decimals, as hosts do that store them all.
  void setAllAgain();

  /// Fails the test when the clip or a byte outside of the frame is changed.
  ClipFrame update(double time, const ClipFrame& clip);

  f0r_instance_t instance;

 private:
  int find(const std::string& name, int type);

  FilterLibrary& library_;
  unsigned width_, height_;
};

}  // namespace tests
