#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

#include "desktop/form_frame.h"

namespace lineweir {

struct Console;
class MainWindow;

// The main form in its window: its size in twips, its growing texts and its face.
class MainFrame final : public FormFrame {
 public:
  MainFrame(Console& console, WindowFocus& focus, const QStringList& backgrounds);
  ~MainFrame() override;

  MainWindow* main_window() const;

  // Puts the band between menus and form; the form keeps its size.
  void show_band(QWidget* band);

  // A press has come to nothing: says why at the key that was pressed or, where no key was, at the
  // lamp of the link.
  void tell_at_hand(const QString& why);

 protected:
  QWidget* make_window() override;
  void fit_window(QWidget& window) override;
  bool shows_in_window(const Element& element) const override;
  bool opens_at_once() const override { return true; }
  void form_changed() override;

 private:
  void content_resized(QSize content);
  // The smallest size of the form, in pixels, at which everything on it can be read.
  QSize least_content() const;
  void apply_zoom();
  // The size of the letters in the menus of a window of that size.
  int letter_pixels(QSize window) const;
  // Menus and dialogs have letters that grow with those of the rows.
  void apply_letters();
  void apply_next_light();
  void apply_row_looks();
  void apply_link_word();
  void apply_last_column();
  // What an icon that stands goes by is more than its element.
  void show_standing_icons();
  void apply_theme();

  Console& console_;
  QStringList backgrounds_;
  // That of dialogs before they grew with the window, and again once this one has gone.
  QFont least_letters_;
  // Why nothing comes of a key was told beside it.
  bool told_at_hand_ = false;
};

}  // namespace lineweir
