#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "desktop/frame_timer.h"
#include "desktop/row_look.h"
#include "desktop/theme.h"
#include "elements/form.h"
#include "elements/line.h"
#include "forms/columns.h"

namespace lineweir {

class ElementWidget;
class FontProperties;

// Where the pictures behind the elements lie, and who is told of a file that can't be shown.
struct BackgroundFolder {
  // A picture is that of the first of them which has a file of its name.
  QStringList paths;
  std::function<void(const QString& file, const QString& reason)> on_failure;
};

// The content area of a form that this program draws: a widget for each control, in the stacking
// order of the elements. Changes of elements are gathered, and once a frame each changed element is
// put in its place and drawn again, and nothing else.
class FormCanvas : public QWidget, private FormWatch {
 public:
  FormCanvas(Form& form, QWidget* parent);
  ~FormCanvas() override;

  Form& form() const { return watched_form(); }

  const Theme& theme() const { return *theme_; }
  void set_theme(const Theme& theme);
  // What the rows are drawn with: dimmed while there is no link.
  const Theme& row_theme() const { return no_link_.isEmpty() ? *theme_ : without_link(*theme_); }

  // Why there is no link to the telephone system; empty while there is one.
  const QString& no_link() const { return no_link_; }
  // Which of several servers it goes to; empty where there is one alone, and without a link.
  const QString& linked_to() const { return linked_to_; }

  // What the link goes to, in a word.
  const QString& link_word() const { return link_word_; }
  void set_link_word(const QString& word);

  // The widget whose press, release or double click is being handled; null while there is none.
  QWidget* in_hand() const { return in_hand_; }
  void set_in_hand(QWidget* widget) { in_hand_ = widget; }

  // How much larger than designed lines and corners are drawn, and texts, which grow only when the
  // user wants them to.
  double zoom() const { return zoom_; }
  double text_zoom() const { return text_zoom_; }
  void set_zoom(double zoom, double text_zoom);

  const BackgroundFolder& background_folder() const { return background_folder_; }
  void set_background_folder(BackgroundFolder folder) { background_folder_ = std::move(folder); }

  // Whether a caller waits for the next caller's keys, which then show a line of light.
  bool next_caller_waits() const { return next_caller_waits_; }
  void set_next_caller_waits(bool waits);

  // What the rows tell beside their texts; draws again what shows another thing now.
  const RowLook& row_look(int line) const;
  void set_row_look(int line, const RowLook& look);

  // The column that stands last on the rows.
  std::size_t last_column() const { return last_column_; }
  void set_last_column(std::size_t column);

  // Pixels of the device in one logical pixel.
  double device_scale() const { return devicePixelRatioF(); }
  // Puts everything in place again, as when the window has come to another screen.
  void place_all();

  // The font in pixels, of the device where the scale is the device's.
  QFont font_of(const FontProperties& font, double scale) const;

  // The column in which a caller's flag stands in front of the text.
  std::size_t flag_column() const { return flag_column_; }
  void set_flag_column(std::size_t column);

  // The widget of the control; null while the control is so new that no frame has shown it.
  ElementWidget* widget_of(const Control& control) const;

  // The control of that name; null while no frame has shown it.
  const Control* control_named(std::string_view name, int index = no_index) const;

  // The line of that name; null if there is none.
  const Line* line_named(std::string_view name) const;

  // All widgets of controls.
  std::vector<ElementWidget*> element_widgets() const;

  // A descendant's upper left corner in logical pixels of this canvas.
  QPoint origin_of(const QWidget& widget) const { return widget.mapTo(this, QPoint(0, 0)); }

  // What a line does, in words; set by the one who knows the lines.
  std::function<QString(int line)> spoken_state;

  // How long the caller on a line has been waiting in all, in words; set by the same.
  std::function<QString(int line)> spoken_wait;

  // What the studio's server remembers of the caller on a line, in words: his flag, how often he
  // has called, name and city; empty where that is nothing.
  std::function<QString(int line)> spoken_memory;

  // Whether an icon blinks, and so is only dark for a moment when it isn't visible; set by the one
  // who knows the lines.
  std::function<bool(const Control& icon)> icon_blinks;

  // Shows all changes now.
  void flush() { frame_.flush(); }

 protected:
  bool focusNextPrevChild(bool next) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Marks {
    bool place = false;
    bool paint = false;
  };

  void changed(Element& element, PropertyId property) override;
  void added(Element& element) override;
  void removed(Element& element) override;
  void raised(Control& control) override;
  void moved_to_container(Control& control) override;
  void focus_moved(Control* control) override;

  // The key that has the ring may go or be switched off: then no other one takes its place, which a
  // press of Space would press; it has the ring again as soon as it can.
  void keep_ring();

  void show_row_look(int line, const RowLook& before);
  void show_changes();
  void make_widgets();
  void put_into_containers();
  // What stands in a container that is placed is placed again, since edges round anew.
  void mark_contents_of_placed();
  void mark(Control& control, bool place, bool paint);
  void hand_changed(const Line& hand);
  // The rows with their icons, the lamp, and what the keys show and say of themselves go by the
  // link.
  void take_link();

  const Theme* theme_ = &metal_theme;
  QString no_link_;
  QString linked_to_;
  QString link_word_;
  bool link_changed_ = true;
  QPointer<QWidget> in_hand_;
  BackgroundFolder background_folder_;
  double zoom_ = 1;
  double text_zoom_ = 1;
  bool next_caller_waits_ = false;
  std::vector<RowLook> row_looks_;
  std::unordered_map<int, std::vector<ElementWidget*>> widgets_of_rows_;
  std::size_t last_column_ = number_column;
  std::size_t flag_column_ = number_column;
  std::unordered_map<const Element*, ElementWidget*> widgets_;
  std::unordered_map<std::string, const Control*> controls_;
  // Elements of which no more is known than that they are there: they may still be in the making.
  std::vector<Element*> new_elements_;
  std::vector<Control*> moved_;
  // The control that had the keyboard last.
  const Control* ring_ = nullptr;
  bool ring_waits_ = false;
  std::unordered_map<Control*, Marks> marks_;
  FrameTimer frame_;
};

}  // namespace lineweir
