#pragma once

#include "desktop/form_frame.h"

namespace lineweir {

struct Console;
class MainWindow;

// The main form in its window: its size in twips, its growing texts and its face.
class MainFrame final : public FormFrame {
 public:
  explicit MainFrame(Console& console);

  MainWindow* main_window() const;

 protected:
  QWidget* make_window() override;
  void fit_window(QWidget& window) override;
  bool shows_in_window(const Element& element) const override;
  void form_changed() override;

 private:
  void content_resized(QSize content);
  // The smallest size of the form, in pixels, at which everything on it can be read.
  QSize least_content() const;
  void apply_zoom();
  void apply_theme();

  Console& console_;
};

}  // namespace lineweir
