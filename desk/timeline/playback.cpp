#include "desk/timeline/playback.h"

#include <algorithm>
#include <cmath>

namespace desk {
namespace {

constexpr qint64 kSecond = 1000;

/// Of all whole numbers, also below 0, into 0 .. length - 1.
qint64 wrappedInto(qint64 number, qint64 length) {
  const qint64 rest = number % length;
  return rest < 0 ? rest + length : rest;
}

}  // namespace

Playback::Playback(Preview& preview, QObject* parent) : QObject(parent), preview_(preview) {
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &Playback::advance);
  connect(&preview_, &Preview::pictureChanged, this, &Playback::countPicture);
  connect(&preview_.document(), &SceneDocument::changed, this, [this] {
    if (isPlaying() && preview_.document().state()->plan.rate != rate_) start();
    emit rangeChanged();
  });
  connect(&preview_.document(), &SceneDocument::replaced, this, [this] {
    pause();
    clearRange();
  });
}

int Playback::lastFrame() const {
  return preview_.document().state()->plan.frames - 1;
}

int Playback::in() const {
  return std::clamp(in_, 0, lastFrame());
}

int Playback::out() const {
  return out_ < 0 ? lastFrame() : std::clamp(out_, in(), lastFrame());
}

double Playback::framesPerSecond() const {
  return preview_.document().state()->plan.rate.perSecond() * std::max(std::abs(speed_), 1);
}

double Playback::picturesPerSecond() const {
  if (shownAt_.size() < 2) return 0;
  const auto span = static_cast<double>(shownAt_.back() - shownAt_.front());
  return span > 0 ? static_cast<double>(shownAt_.size() - 1) * kSecond / span : 0;
}

void Playback::toggle() {
  play(isPlaying() ? 0 : 1);
}

void Playback::pause() {
  play(0);
}

void Playback::forward() {
  play(speed_ > 0 ? std::min(2 * speed_, kMostSpeed) : 1);
}

void Playback::backward() {
  play(speed_ < 0 ? std::max(2 * speed_, -kMostSpeed) : -1);
}

void Playback::play(int speed) {
  if (speed == speed_) return;
  speed_ = speed;
  shownAt_.clear();
  if (isPlaying()) {
    const int frame = preview_.frame();
    // From the end it begins anew, as it does from outside the range.
    if (frame < in() || frame > out() || frame == (speed > 0 ? out() : in())) {
      preview_.setFrame(speed > 0 ? in() : out());
    }
    start();
  } else {
    timer_.stop();
    preview_.setFrame(preview_.frame());  // none that is still to come
  }
  emit speedChanged(speed_);
  emit rateChanged();
}

void Playback::start() {
  from_ = preview_.frame();
  rate_ = preview_.document().state()->plan.rate;
  shownAt_.clear();
  clock_.start();
  timer_.start(std::max(1, static_cast<int>(kSecond / framesPerSecond())));
}

void Playback::advance() {
  // Its picture calls again; one of values that are no longer the newest will do, as while they are
  // turned.
  if (preview_.picture().frame != preview_.askedFrame()) return;
  const auto passed = static_cast<qint64>(
      std::floor(static_cast<double>(clock_.elapsed()) * framesPerSecond() / kSecond));
  const qint64 frame = from_ + (speed_ > 0 ? passed : -passed);
  if (frame >= in() && frame <= out()) return preview_.playTo(static_cast<int>(frame));
  if (loops_) {
    const qint64 length = out() - in() + 1;
    return preview_.playTo(in() + static_cast<int>(wrappedInto(frame - in(), length)));
  }
  const int end = speed_ > 0 ? out() : in();
  preview_.frame() == end ? pause() : preview_.playTo(end);
}

void Playback::countPicture() {
  if (!isPlaying()) return;
  const qint64 now = clock_.elapsed();
  shownAt_.push_back(now);
  while (shownAt_.size() > 2 && shownAt_.front() < now - kSecond) shownAt_.pop_front();
  emit rateChanged();
  advance();
}

void Playback::step(int frames) {
  pause();
  preview_.setFrame(preview_.frame() + frames);
}

void Playback::toStart() {
  preview_.setFrame(preview_.frame() > in() ? in() : 0);
  if (isPlaying()) start();
}

void Playback::toEnd() {
  preview_.setFrame(preview_.frame() < out() ? out() : lastFrame());
  if (isPlaying()) start();
}

void Playback::setLoops(bool loops) {
  if (loops == loops_) return;
  loops_ = loops;
  emit loopsChanged(loops);
}

void Playback::setIn(int frame) {
  in_ = frame;
  if (out_ >= 0 && out_ < frame) out_ = -1;
  emit rangeChanged();
}

void Playback::setOut(int frame) {
  out_ = frame;
  if (in_ > frame) in_ = -1;
  emit rangeChanged();
}

void Playback::clearRange() {
  in_ = -1;
  out_ = -1;
  emit rangeChanged();
}

}  // namespace desk
