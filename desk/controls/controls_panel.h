// All parameters of the layer shown, in the effect's own groups.
#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <optional>
#include <vector>

#include "desk/controls/value_editor.h"
#include "desk/render/preview.h"

class QLineEdit;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace desk {

/// A row for each: its name, bold where the scene says what it is; what it is turned by, grayed out
/// by the effect's rules; what takes that back; and whether it has a key at the frame shown. The
/// search field leaves the rows whose names, or whose groups' names, hold its words.
class ControlsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit ControlsPanel(Preview& preview, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct Row {
    brisel::ParamIndex parameter;
    QTreeWidgetItem* item;
    // Null where there is nothing to turn: groups, the mask.
    ValueEditor* editor = nullptr;
    QToolButton* reset = nullptr;
    QToolButton* key = nullptr;
    std::optional<scene::ParamValue> shown{};
    std::optional<bool> isKeyed{};
    bool wasExpanded = false;  // before the search
  };

  void addRows();
  void addEditor(Row& row);
  void take(brisel::ParamIndex parameter, const scene::ParamValue& value);
  void refresh();
  void refreshRow(Row& row);
  void gray(const brisel::Values& values);
  void find(const QString& words);
  void openMenu(QPoint at);
  void toggleKey(brisel::ParamIndex parameter);

  Preview& preview_;
  QLineEdit* search_;
  QTreeWidget* tree_;
  std::vector<Row> rows_;
  bool isSearching_ = false;
  std::optional<brisel::ParamIndex> turned_;  // last, by that gesture
  int gesture_ = 0;
  QElapsedTimer sinceTurn_;
};

}  // namespace desk
