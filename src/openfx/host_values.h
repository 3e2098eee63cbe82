// The values of an instance's parameters in the host.
#pragma once

#include <string>
#include <vector>

#include "look/choices.h"
#include "openfx/host.h"
#include "openfx/parameter_list.h"

namespace brisel::openfx {

/// Finds the parameters once. What a host does not answer is at its default.
class HostValues {
 public:
  HostValues(const Host& host, OfxImageEffectHandle instance);

  /// What differs from the defaults at the host's time, for frames of that size.
  Choices at(OfxTime time, FrameSize frame) const;

  std::string text(EffectParameter::Kind kind) const;  // the scene's or the mask's, or empty
  int startFrame() const;

  /// The parameters as they are now, for graying. Not while a frame is rendered.
  Values now() const;

  /// From 0, which sets nothing. Not while a frame is rendered, as the setters below.
  int chosenPreset(const EffectParameter& parameter) const;

  /// Sets these of the values, which are of a frame of 1 by 1, as one step to undo.
  void set(const std::vector<ParamIndex>& indices, const Values& values) const;
  void setEnabled(ParamIndex index, bool isEnabled) const;

 private:
  const EffectParameter* parameterOf(ParamIndex index) const;
  OfxParamHandle handleOf(const EffectParameter& parameter) const;
  template <class... Component>
  bool get(const EffectParameter& parameter, const OfxTime* time, Component*... components) const;
  void addChoice(const EffectParameter& parameter, const OfxTime* time, FrameSize frame,
                 Choices& choices) const;
  void setOne(ParamIndex index, const Values& values) const;
  Choices choicesAt(const OfxTime* time, FrameSize frame) const;

  const Host& host_;
  OfxParamSetHandle set_ = nullptr;
  std::vector<OfxParamHandle> handles_;  // in the order of effectParameters(); null where missing
};

}  // namespace brisel::openfx
