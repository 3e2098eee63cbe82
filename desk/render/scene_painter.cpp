#include "desk/render/scene_painter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "cli/support/errors.h"
#include "desk/render/screen_image.h"
#include "effect/settings.h"
#include "scene/add_light.h"

namespace desk {
namespace {

constexpr std::size_t kStatesKept = 3;
constexpr std::size_t kBytesOfStars = std::size_t{64} << 20;  // of each layer

std::size_t bytesOf(brisel::FrameSize size, cli::Depth depth) {
  return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) *
         (depth == cli::Depth::Bits8 ? 4 : 8);
}

template <class Byte>
brisel::BasicImageView<Byte> viewOf(Byte* bytes, const cli::ScenePlan& plan) {
  const bool isDeep = plan.depth == cli::Depth::Bits16;
  return {bytes, plan.size.width, plan.size.height,
          std::ptrdiff_t{isDeep ? 8 : 4} * plan.size.width,
          isDeep ? brisel::PixelFormat::Argb16 : brisel::PixelFormat::Argb8};
}

/// As hosts give points to a layer of which they show a reduced picture.
brisel::Values reducedBy(int reduction, brisel::Values values) {
  if (reduction == 1) return values;
  for (const brisel::ParamIndex point :
       {brisel::kStart, brisel::kEnd, brisel::kControlStart, brisel::kControlEnd}) {
    for (std::int32_t* side : {&values[point].number, &values[point].y}) {
      *side = static_cast<std::int32_t>(std::lround(static_cast<double>(*side) / reduction));
    }
  }
  return values;
}

brisel::MaskOutline reducedOutline(scene::Mask mask, int frame, int reduction) {
  const double scale = 1.0 / reduction;
  for (scene::Mask::Key& key : mask.keys) {
    for (scene::MaskShape::Vertex& vertex : key.value.vertices) {
      for (scene::MaskPoint* point : {&vertex.point, &vertex.in, &vertex.out}) {
        point->x *= scale;
        point->y *= scale;
      }
    }
  }
  return scene::outlineAt(mask, frame);
}

bool isSamePlan(const cli::ScenePlan& a, const cli::ScenePlan& b) {
  return a.layer == b.layer && a.depth == b.depth && a.rate == b.rate &&
         a.scene.preroll == b.scene.preroll && a.scene.highQuality == b.scene.highQuality &&
         a.scene.input == b.scene.input && a.input.has_value() == b.input.has_value() &&
         (!a.input || a.input->fingerprint == b.input->fingerprint) &&
         a.scene.layers.size() == b.scene.layers.size();
}

/// What its pixels depend on.
std::string keyOfInput(const cli::ScenePlan& plan) {
  return plan.input->fingerprint + plan.input->source.file + " " + std::to_string(plan.size.width) +
         "x" + std::to_string(plan.size.height) + " " + plan.rate.text() + " " +
         std::to_string(static_cast<int>(plan.depth));
}

/// Those that no star depends on are left out.
bool haveSameStars(brisel::Values a, const brisel::Values& b) {
  for (const brisel::ParamIndex index : {brisel::kAddMode, brisel::kMixWithOriginal}) {
    a[index] = b[index];
  }
  for (std::int32_t index = 0; index < brisel::kParamCount; ++index) {
    if (a[index] != b[index]) return false;
  }
  return true;
}

bool haveSameShapes(const std::optional<scene::Mask>& a, const std::optional<scene::Mask>& b,
                    int frame) {
  if (!a || !b) return a.has_value() == b.has_value();
  const auto isSame = [](const scene::MaskPoint& p, const scene::MaskPoint& q) {
    return p.x == q.x && p.y == q.y;
  };
  const scene::MaskShape first = scene::shapeAt(*a, frame);
  const scene::MaskShape second = scene::shapeAt(*b, frame);
  return a->inverted == b->inverted && first.closed == second.closed &&
         std::ranges::equal(first.vertices, second.vertices, [&](const auto& v, const auto& w) {
           return isSame(v.point, w.point) && isSame(v.in, w.in) && isSame(v.out, w.out);
         });
}

/// The first frame of a layer whose values make other stars; `last` + 1 where none does before.
int firstDifference(const scene::LayerValues& a, const scene::LayerValues& b, int last) {
  int frame = 0;
  while (frame <= last && haveSameStars(a.at(frame), b.at(frame)) &&
         haveSameShapes(a.mask(), b.mask(), frame)) {
    ++frame;
  }
  return frame;
}

}  // namespace

/// The stars of one state at one reduction.
struct ScenePainter::Stars {
  SharedState state;
  int reduction;
  cli::ScenePlan plan;  // with the size of reduced frames
  std::vector<brisel::StarHistory> layers;
  std::vector<std::optional<brisel::MaskOutline>> stillMasks;  // of masks that do not move
  bool lackInput = false;  // some, as it could not be read at the time

  Stars(SharedState shared, int by) : state(std::move(shared)), reduction(by), plan(state->plan) {
    plan.reduction = by;
    plan.size = {(plan.layer.width + by - 1) / by, (plan.layer.height + by - 1) / by};
    for (std::size_t i = 0; i < state->layers.size(); ++i) layers.emplace_back(kBytesOfStars);
    keepStillMasks();
  }

  void keepStillMasks() {
    stillMasks.clear();
    for (const scene::LayerValues& layer : state->layers) {
      auto& outline = stillMasks.emplace_back();
      const auto& mask = layer.mask();
      if (mask && mask->keys.size() == 1) outline = reducedOutline(*mask, 0, reduction);
    }
  }

  brisel::Values valuesAt(std::size_t layer, int frame) const {
    return reducedBy(reduction, state->layers[layer].at(frame));
  }

  std::optional<brisel::MaskOutline> movingMaskAt(std::size_t layer, int frame) const {
    const auto& mask = state->layers[layer].mask();
    if (!mask || stillMasks[layer]) return std::nullopt;
    return reducedOutline(*mask, frame, reduction);
  }
};

ScenePainter::ScenePainter(int threads) : painter_({.threads = threads}) {}
ScenePainter::~ScenePainter() = default;

Picture ScenePainter::paint(const FrameRequest& request, const std::function<void()>& checkWanted) {
  Picture picture;
  problem_ = request.state->inputProblem;
  Stars& stars = starsOf(request);
  drawLayers(stars, request.frame, checkWanted);
  const brisel::ImageView frame = viewOf<const std::uint8_t>(output_.data(), stars.plan);
  picture.image = screenImage(frame, request.backdrop == Backdrop::Black);
  if (request.backdrop == Backdrop::Clip) {
    picture.image = overClip(stars, request.frame, picture.image);
  }
  for (brisel::StarHistory& layer : stars.layers) picture.stars += layer.starCount();
  picture.problem = QString::fromStdString(problem_);
  return picture;
}

/// Where only what comes later has changed, the stars before that stay known.
ScenePainter::Stars& ScenePainter::starsOf(const FrameRequest& request) {
  std::erase_if(stars_, [](const Stars& stars) { return stars.lackInput; });
  const auto found = std::ranges::find_if(stars_, [&](const Stars& stars) {
    return stars.state == request.state && stars.reduction == request.reduction;
  });
  if (found != stars_.end()) {
    stars_.splice(stars_.begin(), stars_, found);
    return stars_.front();
  }
  if (!stars_.empty() && stars_.front().reduction == request.reduction &&
      isSamePlan(stars_.front().state->plan, request.state->plan)) {
    Stars& newest = stars_.front();
    std::vector<int> same;
    for (std::size_t i = 0; i < newest.layers.size(); ++i) {
      same.push_back(
          firstDifference(newest.state->layers[i], request.state->layers[i], request.frame));
    }
    if (std::ranges::any_of(same, [](int frame) { return frame > 0; })) {
      const int preroll = newest.plan.scene.preroll;
      for (std::size_t i = 0; i < newest.layers.size(); ++i) {
        newest.layers[i].forgetAfter(same[i] > 0 ? same[i] + preroll : 0);
      }
      newest.state = request.state;
      newest.plan.scene = request.state->plan.scene;
      newest.keepStillMasks();
      return newest;
    }
  }
  if (stars_.size() == kStatesKept) stars_.pop_back();
  return stars_.emplace_front(request.state, request.reduction);
}

void ScenePainter::drawLayers(Stars& stars, int frame, const std::function<void()>& checkWanted) {
  const cli::ScenePlan& plan = stars.plan;
  const std::size_t bytes = bytesOf(plan.size, plan.depth);
  const std::size_t layers = stars.layers.size();
  output_.resize(bytes);
  if (layers > 1) below_.resize(bytes);

  brisel::FrameViews views;
  views.input = inputAt(stars, frame);
  views.inputShapes = shapesOf(plan);
  views.layerWidth = plan.layer.width;
  views.highQuality = plan.scene.highQuality;
  views.painter = &painter_;
  for (std::size_t layer = 0; layer < layers; ++layer) {
    if (layer > 0) views.backdrop = views.output;
    views.output = viewOf((layers - layer) % 2 == 1 ? output_.data() : below_.data(), plan);
    drawLayer(stars, layer, frame, views, checkWanted);
  }
}

void ScenePainter::drawLayer(Stars& stars, std::size_t layer, int frame,
                             const brisel::FrameViews& views,
                             const std::function<void()>& checkWanted) {
  checkWanted();
  const scene::LayerValues& says = stars.state->layers[layer];
  const int preroll = stars.plan.scene.preroll;
  const auto& still = stars.stillMasks[layer];
  std::optional<brisel::MaskOutline> moving;
  const auto maskAt = [&](int shown) -> const brisel::MaskOutline* {
    if (still) return &*still;
    moving = stars.movingMaskAt(layer, shown);
    return moving ? &*moving : nullptr;
  };
  const auto pass = [&](brisel::Instance& instance, std::int32_t step) {
    checkWanted();
    const int shown = std::max(step - preroll, 0);
    const brisel::Values values = stars.valuesAt(layer, shown);
    brisel::FrameViews unseen = views;
    unseen.input = brisel::starsReadInput(values) ? inputAt(stars, shown) : brisel::ImageView{};
    instance.step(values, step, unseen, maskAt(shown));
  };
  brisel::Instance& instance = stars.layers[layer].goTo(frame + preroll, pass);
  const brisel::Values values = stars.valuesAt(layer, frame);
  const bool isToBeAdded = says.isToBeAdded(values);
  brisel::FrameViews drawn = views;
  drawn.input = inputAt(stars, frame);
  if (isToBeAdded) drawn.backdrop = {};
  instance.render(values, frame + preroll, drawn, maskAt(frame));
  stars.layers[layer].moveOn();
  if (isToBeAdded) scene::addLight(views.output, views.backdrop);
}

/// What the effect is given as its input at that frame: transparent where there is none.
brisel::ImageView ScenePainter::inputAt(Stars& stars, int frame) {
  const cli::ScenePlan& plan = stars.plan;
  if (plan.input && problem_.empty()) {
    const std::string key = keyOfInput(plan);
    try {
      if (clipKey_ != key) {
        clip_ = std::make_unique<ClipFrames>(plan);
        clipKey_ = key;
      }
      const hostkit::World& world = clip_->at(frame);
      return {world.bytes().data(), world.width(), world.height(), world.rowBytes(),
              plan.depth == cli::Depth::Bits16 ? brisel::PixelFormat::Argb16
                                               : brisel::PixelFormat::Argb8};
    } catch (const std::runtime_error& error) {
      problem_ = error.what();
      stars.lackInput = true;
      clip_.reset();
      clipKey_.clear();
    }
  }
  noInput_.resize(bytesOf(plan.size, plan.depth));
  return viewOf<const std::uint8_t>(noInput_.data(), plan);
}

/// Those of the input where all frames have the same; else null.
brisel::InputShapes* ScenePainter::shapesOf(const cli::ScenePlan& plan) {
  const bool hasInput = plan.input && problem_.empty();
  if (hasInput && !plan.input->isStill()) return nullptr;
  const std::string key = hasInput ? keyOfInput(plan) : std::string();
  if (key != shapesKey_) shapes_.forget();
  shapesKey_ = key;
  return &shapes_;
}

QImage ScenePainter::overClip(Stars& stars, int frame, const QImage& image) {
  if (!stars.plan.input) return image;
  QImage below = screenImage(inputAt(stars, frame), false);
  QPainter(&below).drawImage(0, 0, image);
  return below;
}

}  // namespace desk
