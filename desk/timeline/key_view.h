// The keys of a layer over time: a ruler, and below it a row for each parameter that has keys.
#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <map>
#include <optional>
#include <utility>

#include "desk/render/preview.h"
#include "desk/timeline/key_edits.h"
#include "desk/timeline/playback.h"

class QMenu;

namespace desk {

/// Drags on the ruler go through the frames; keys are selected, dragged, and copied with Ctrl held;
/// a double click on a row makes a key. Each edit is one step of the document. Escape takes a drag
/// back.
class KeyView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  KeyView(Preview& preview, Playback& playback, QWidget* parent = nullptr);

  bool hasSelection() const { return !selected_.empty(); }
  /// Keys that copySelected() has put aside.
  bool canPaste() const { return !copied_.empty(); }
  QSize sizeHint() const override;

 public slots:
  void selectAll();
  void removeSelected();
  void copySelected();
  /// The first of the keys at the frame shown, the others as far from it as they were.
  void paste();
  void easeSelected(const scene::Ease& ease);
  void moveSelected(int frames);
  /// A key of the parameter whose row is current, at the frame shown.
  void addKey();
  /// To the nearest key before or after, of any row.
  void toPreviousKey();
  void toNextKey();
  /// Around the frame shown; not below what shows all frames.
  void zoomBy(double factor);

 signals:
  void selectionChanged();
  /// For a menu of what can be done with the selected keys.
  void menuWanted(QPoint globalPlace);

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void timerEvent(QTimerEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Row {
    brisel::ParamIndex parameter;
    std::vector<ParamKey> keys{};
    std::vector<scene::MaskShape> shapes{};  // of the mask's row, whose values are numbers of these
  };
  struct Place {
    int row;
    double time;
  };
  enum class Drag { None, Frame, In, Out, Keys, Rectangle };
  static constexpr int kReach = 6;  // pixels from the middle of a key or marker

  void readRows();
  void select(std::map<brisel::ParamIndex, KeyTimes> keys);
  void setCurrentRow(int row);
  void setKeysOfMask(const Row& row, const std::vector<ParamKey>& keys, const QString& label);
  template <class Edit>
  void editSelected(const std::vector<Row>& rows,
                    const std::map<brisel::ParamIndex, KeyTimes>& selected, const QString& label,
                    const Edit& edit);
  void dragTo(QPoint at, Qt::KeyboardModifiers modifiers);
  int beyondTracks(int x) const;
  void dragKeys(int frames, bool copies);
  void selectAgain(Place key, Qt::KeyboardModifiers modifiers);
  void stopDrag();
  void cancelDrag();
  void selectIn(const QRect& rectangle);
  std::optional<Place> keyAt(QPoint place) const;
  brisel::ParamIndex parameterOf(Place key) const;
  std::vector<double> allTimes() const;

  int rowAt(int y) const;  // negative where there is none
  QRect rowRect(int row) const;
  QRect tracks() const;  // right of the names
  QString keyText(Place key) const;
  double pixelsPerFrame() const;
  double xOf(double frame) const;
  int frameAt(int x) const;
  void layOut();
  void keepInSight(int frame);

  // In key_view_painting.cpp.
  void paintRuler(QPainter& painter) const;
  void paintRow(QPainter& painter, int row) const;
  void paintTrack(QPainter& painter, int row) const;

  Preview& preview_;
  Playback& playback_;
  std::vector<Row> rows_;
  int currentRow_ = 0;
  std::map<brisel::ParamIndex, KeyTimes> selected_;  // none of them empty
  std::map<brisel::ParamIndex, std::vector<ParamKey>> copied_;
  double zoom_ = 1;  // 1: all frames fit

  Drag drag_ = Drag::None;
  QPoint pressed_;  // which scrolls with what was pressed
  QPoint draggedTo_;
  QBasicTimer scrolling_;  // while a drag is held beyond the tracks
  QRect rectangle_;
  bool moved_ = false;
  bool wasSelected_ = false;  // the key that was pressed
  // As the drag began.
  std::vector<Row> rowsBefore_;
  std::map<brisel::ParamIndex, KeyTimes> selectedBefore_;
  int frameBefore_ = 0;
  std::pair<int, int> rangeBefore_;
};

}  // namespace desk
