#include "desktop/practice_windows.h"

#include <QPushButton>

#include "desktop/core_text.h"
#include "desktop/desktop.h"
#include "desktop/form_binder.h"
#include "desktop/main_window.h"
#include "practice/practice_show.h"
#include "ui_practice_band.h"
#include "ui_practice_choice.h"
#include "ui_practice_score.h"

namespace lineweir {
namespace {

constexpr DialogRow level_row = {
    nullptr, [](QWidget& window) { Ui::PracticeLevel().setupUi(&window); }, DialogKind::Dialog};
constexpr DialogRow score_row = {
    nullptr, [](QWidget& window) { Ui::PracticeScore().setupUi(&window); }, DialogKind::Dialog};

constexpr QRgb band_ground = 0xffffc830;
constexpr QRgb band_text = 0xff000000;

// It looks the same on both faces of the screen, and like nothing of a real show.
void dress_band(QWidget& band) {
  QPalette palette = band.palette();
  palette.setColor(QPalette::Window, QColor(band_ground));
  palette.setColor(QPalette::WindowText, QColor(band_text));
  band.setPalette(palette);
  band.setAutoFillBackground(true);
  // Space and Enter are keys of the show: a button has them only after Tab has led to it.
  for (QPushButton* button : band.findChildren<QPushButton*>()) {
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoDefault(false);
  }
}

}  // namespace

PracticeWindows::PracticeWindows(Desktop& desktop, practice::PracticeShow& show)
    : desktop_(desktop),
      show_(show),
      level_(show.level_form, level_row, desktop.focus(),
             [&desktop] { return desktop.main_frame().window(); }),
      score_(show.score_form, score_row, desktop.focus(),
             [&desktop] { return desktop.main_frame().window(); }) {
  auto* band = new QWidget;
  Ui::PracticeBand().setupUi(band);
  band->setObjectName(QStringLiteral("PracticeBand"));
  dress_band(*band);
  band_ = std::make_unique<FormBinder>(show.band, *band);
  desktop.main_frame().show_band(band);
  show.on_news = [&desktop, &show](const std::string& text) {
    desktop.announcer().announce(shown_text(show.band, text));
  };
}

PracticeWindows::~PracticeWindows() { show_.on_news = nullptr; }

QWidget* PracticeWindows::window_of(const QString& form_name) const {
  for (const DialogFrame* frame : {&level_, &score_}) {
    if (form_name.toStdString() == frame->form().name()) return frame->window();
  }
  return desktop_.window_of(form_name);
}

void PracticeWindows::flush() {
  level_.flush();
  score_.flush();
  band_->flush();
}

}  // namespace lineweir
