// hostkit: the effect of an OpenFX plug-in in a project: described, created and rendered.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hostkit/openfx/host.h"
#include "hostkit/openfx/objects.h"
#include "hostkit/openfx/picture.h"

namespace hostkit {

struct OpenFxRequest {
  double time = 0;
  const OpenFxPicture* source = nullptr;  // null: there is no image
  std::optional<OfxRectI> window{};       // else the output's bounds
  std::optional<OfxRectI> frame{};        // else the output's bounds
  double scale = 1;
  std::string field = "OfxFieldNone";
  bool isChecked = true;  // what is written; which takes longer than rendering
};

class OpenFxEffect {
 public:
  /// Loads, describes and creates in that context, each on an object of its own, but for hosts that
  /// have one object for all. Throws Error when the plug-in refuses.
  OpenFxEffect(OpenFxHost& host, OfxPlugin& plugin, const char* context, bool isOneObject = false);
  OpenFxEffect(const OpenFxEffect&) = delete;
  OpenFxEffect& operator=(const OpenFxEffect&) = delete;
  ~OpenFxEffect();

  OfxImageEffectStruct& instance() { return *instance_; }
  /// As the effect described itself; its parameters are those of the instance's context.
  const OfxImageEffectStruct& descriptor() const { return *descriptor_; }
  const OfxParamSetStruct& parameters() const { return instance_->params; }

  OfxParamStruct& parameter(const std::string& name) const;  // throws Error when there is none
  void set(const std::string& name, std::vector<double> numbers) const {
    parameter(name).numbers = std::move(numbers);
  }

  void connectSource(bool isConnected, const std::string& alpha = kOfxImageUnPreMultiplied);

  /// An action upon the instance. Notes replies that the interface does not know.
  OfxStatus act(const char* action, OfxPropertySetHandle in = nullptr,
                OfxPropertySetHandle out = nullptr);

  /// Renders into `output`, and notes what is written elsewhere and images that are not given back.
  OfxStatus render(const OpenFxRequest& request, OpenFxPicture& output);

  /// Tells that a parameter changed.
  OfxStatus change(const std::string& name, const char* reason = kOfxChangeUserEdited);

 private:
  OfxStatus actOn(OfxImageEffectStruct* object, const char* action, OfxPropertySetHandle in,
                  OfxPropertySetHandle out);
  void describe(const char* context);
  void makeInstance(const char* context);

  OpenFxHost& host_;
  OfxPlugin& plugin_;
  std::unique_ptr<OfxImageEffectStruct> ownDescriptor_, ownInstance_;
  OfxImageEffectStruct* descriptor_;
  OfxImageEffectStruct* instance_;
};

}  // namespace hostkit
