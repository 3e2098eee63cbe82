// Moves through the frames of a scene in real time.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <deque>

#include "desk/render/preview.h"

namespace desk {

/// Where pictures take longer than a frame lasts, frames are left out rather than late, and the
/// next is asked for once the last one is shown. Frames outside the range between in and out are
/// reached by hand, not by playing.
class Playback : public QObject {
  Q_OBJECT

 public:
  explicit Playback(Preview& preview, QObject* parent = nullptr);

  /// Frames by frames of real time: 1 as it is meant, 2 twice as fast, -1 backward, 0 standing.
  int speed() const { return speed_; }
  bool isPlaying() const { return speed_ != 0; }
  bool loops() const { return loops_; }
  /// The first and last frame that are played; those of the scene where nobody has set them.
  int in() const;
  int out() const;
  bool hasRange() const { return in_ >= 0 || out_ >= 0; }
  /// That are due at this speed, or were it playing.
  double framesPerSecond() const;
  /// As shown in the last second, or by the last two where one takes longer; 0 while standing.
  double picturesPerSecond() const;

 public slots:
  void toggle();
  void pause();
  /// Plays; twice as fast when it does so already, up to kMostSpeed.
  void forward();
  void backward();
  void step(int frames);
  void toStart();  // of the range; of the scene when it is there or before
  void toEnd();
  void setLoops(bool loops);
  void setIn(int frame);
  void setOut(int frame);
  void clearRange();

 signals:
  void speedChanged(int speed);
  void loopsChanged(bool loops);
  void rangeChanged();
  void rateChanged();  // of the pictures shown

 private:
  void play(int speed);
  void start();
  void advance();
  void countPicture();
  int lastFrame() const;

  Preview& preview_;
  QTimer timer_;  // runs while it plays
  QElapsedTimer clock_;
  scene::FrameRate rate_;       // by which timer_ runs
  std::deque<qint64> shownAt_;  // milliseconds of clock_, of the last second
  int speed_ = 0;
  bool loops_ = true;
  int from_ = 0;  // the frame at which clock_ began
  int in_ = -1;
  int out_ = -1;
};

inline constexpr int kMostSpeed = 8;

}  // namespace desk
