#include "hostkit/openfx/effect.h"

#include <algorithm>
#include <set>
#include <utility>

#include "hostkit/error.h"

namespace hostkit {
namespace {

using Text = std::string;

/// What a host and its person have of the parameters: those of a context, at their defaults.
void takeDefaults(OfxParamSetStruct& set) {
  for (const auto& param : set.params) {
    const auto found = param->properties.properties.find(kOfxParamDefault);
    if (found == param->properties.properties.end()) continue;
    for (const PropertyValue& value : found->second.values) {
      if (const auto* text = std::get_if<Text>(&value)) {
        param->text = *text;
      } else if (const auto* whole = std::get_if<int>(&value)) {
        param->numbers.push_back(*whole);
      } else {
        param->numbers.push_back(std::get<double>(value));
      }
    }
  }
}

/// What a description may not be.
void checkDescription(const OfxImageEffectStruct& effect, OpenFxHost& host) {
  std::set<Text> groups{""};
  for (const auto& param : effect.params.params) {
    const OfxPropertySetStruct& p = param->properties;
    const auto parent = p.get<Text>(kOfxParamParent);
    if (!groups.contains(parent)) host.complain(p.name + " lies in a group that comes later");
    if (param->type == kOfxParamTypeGroup) groups.insert(p.name);
    if (p.get<Text>(kOfxPropLabel).empty()) host.complain(p.name + " has no label");
    if (param->type == kOfxParamTypeChoice &&
        p.properties.at(kOfxParamChoiceOption).values.empty()) {
      host.complain(p.name + " has no items");
    }
  }
  for (const auto& clip : effect.clips) {
    if (clip->properties.properties.at(kOfxEffectSupportedComponents).values.empty()) {
      host.complain(clip->properties.name + " has no components");
    }
  }
}

}  // namespace

OpenFxEffect::OpenFxEffect(OpenFxHost& host, OfxPlugin& plugin, const char* context,
                           bool isOneObject)
    : host_(host), plugin_(plugin), ownDescriptor_(new OfxImageEffectStruct(host)) {
  descriptor_ = instance_ = ownDescriptor_.get();
  if (!isOneObject) {
    ownInstance_ = std::make_unique<OfxImageEffectStruct>(host);
    instance_ = ownInstance_.get();
  }
  plugin.setHost(host.record());
  const OfxStatus loaded = plugin.mainEntry(kOfxActionLoad, nullptr, nullptr, nullptr);
  if (loaded != kOfxStatOK) throw Error("load: " + std::to_string(loaded));
  describe(context);
  makeInstance(context);
}

OpenFxEffect::~OpenFxEffect() {
  act(kOfxActionDestroyInstance);
}

void OpenFxEffect::describe(const char* context) {
  const auto demand = [](OfxStatus status, const char* what) {
    if (status != kOfxStatOK) throw Error(what + std::to_string(status));
  };
  demand(actOn(descriptor_, kOfxActionDescribe, nullptr, nullptr), "describe: ");
  OfxPropertySetStruct in(host_, "context");
  in.has(kOfxEffectContext, {Text(context)});
  instance_->params.mayDefine = true;
  demand(actOn(instance_, kOfxActionDescribeInContext, &in, nullptr), "describe in context: ");
  instance_->params.mayDefine = false;
  checkDescription(*instance_, host_);
}

void OpenFxEffect::makeInstance(const char* context) {
  OfxPropertySetStruct& p = instance_->properties;
  p.has(kOfxEffectContext, {Text(context)});
  p.has(kOfxEffectSequentialRender, {0});
  p.has(kOfxEffectSupportsTiles, {1});
  p.has(kOfxEffectFrameRate, {25.0});
  p.has(kOfxEffectProjectSize, {1920.0, 1080.0});
  p.has(kOfxEffectProjectOffset, {0.0, 0.0});
  for (const auto& clip : instance_->clips) {
    clip->properties.has(kOfxClipConnected, {1});
    clip->properties.has(kOfxEffectPreMultiplication, {Text(kOfxImageUnPreMultiplied)});
  }
  takeDefaults(instance_->params);
  instance_->isInstance = true;
  const OfxStatus created = act(kOfxActionCreateInstance);
  if (created != kOfxStatOK) throw Error("create: " + std::to_string(created));
}

OfxParamStruct& OpenFxEffect::parameter(const std::string& name) const {
  OfxParamStruct* param = instance_->params.find(name);
  if (param == nullptr) throw Error("there is no parameter " + name);
  return *param;
}

void OpenFxEffect::connectSource(bool isConnected, const std::string& alpha) {
  OfxPropertySetStruct& source = instance_->find(kOfxSourceClip)->properties;
  source.has(kOfxClipConnected, {isConnected ? 1 : 0});
  source.has(kOfxEffectPreMultiplication, {alpha});
}

OfxStatus OpenFxEffect::actOn(OfxImageEffectStruct* object, const char* action,
                              OfxPropertySetHandle in, OfxPropertySetHandle out) {
  constexpr OfxStatus kReplies[] = {kOfxStatOK, kOfxStatFailed, kOfxStatErrMissingHostFeature,
                                    kOfxStatErrMemory, kOfxStatReplyDefault};
  const OfxStatus status = plugin_.mainEntry(action, object, in, out);
  if (std::ranges::find(kReplies, status) == std::end(kReplies)) {
    host_.complain(std::string(action) + " replies " + std::to_string(status));
  }
  return status;
}

OfxStatus OpenFxEffect::act(const char* action, OfxPropertySetHandle in, OfxPropertySetHandle out) {
  return actOn(instance_, action, in, out);
}

OfxStatus OpenFxEffect::render(const OpenFxRequest& request, OpenFxPicture& output) {
  const OfxRectI window = request.window.value_or(output.bounds());
  const OfxRectI frame = request.frame.value_or(output.bounds());
  OfxImageClipStruct& to = *instance_->find(kOfxOutputClip);
  to.image = [&](double) { return output.image(to, frame); };
  OfxImageClipStruct* from = instance_->find(kOfxSourceClip);
  const OpenFxPicture* source = request.source;
  std::vector<std::uint8_t> before;
  if (request.isChecked && source != nullptr) before = source->bytes();
  if (from != nullptr) {
    from->image = nullptr;
    if (source != nullptr)
      from->image = [&](double) { return source->image(*from, source->bounds()); };
  }

  OfxPropertySetStruct in(host_, "render");
  in.has(kOfxPropTime, {request.time});
  in.has(kOfxEffectRenderWindow, {window.x1, window.y1, window.x2, window.y2});
  in.has(kOfxEffectRenderScale, {request.scale, request.scale});
  in.has(kOfxEffectFieldToRender, {request.field});
  const OfxStatus status = act(kOfxActionRender, &in);

  if (!before.empty() && source->bytes() != before) host_.complain("an input is written");
  if (request.isChecked && !output.isUntouchedOutside(window)) {
    const bool isInPicture = output.isUntouchedOutside(output.bounds());
    host_.complain(isInPicture ? "pixels outside the window are written"
                               : "bytes between or around the pixels are written");
  }
  for (OfxImageClipStruct* clip : {&to, from}) {
    if (clip == nullptr) continue;
    for (const auto& image : clip->images) {
      if (!image->isGone) host_.complain(image->name + " is not given back");
    }
    clip->images.clear();
    clip->image = nullptr;
  }
  return status;
}

OfxStatus OpenFxEffect::change(const std::string& name, const char* reason) {
  OfxPropertySetStruct in(host_, "change");
  in.has(kOfxPropType, {Text(kOfxTypeParameter)});
  in.has(kOfxPropName, {name});
  in.has(kOfxPropChangeReason, {Text(reason)});
  in.has(kOfxPropTime, {0.0});
  in.has(kOfxEffectRenderScale, {1.0, 1.0});
  return act(kOfxActionInstanceChanged, &in);
}

}  // namespace hostkit
