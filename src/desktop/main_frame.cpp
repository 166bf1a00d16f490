#include "desktop/main_frame.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QScreen>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "core/console.h"
#include "desktop/core_text.h"
#include "desktop/dialog_letters.h"
#include "desktop/element_widget.h"
#include "desktop/finger_reach.h"
#include "desktop/frame_place.h"
#include "desktop/growing_texts.h"
#include "desktop/main_window.h"
#include "desktop/spoken_lines.h"
#include "desktop/twips.h"
#include "forms/layout.h"
#include "screen/blinking.h"

namespace lineweir {
namespace {

// The part of the form's height that its menu bar takes; the bar on the screen has its own height.
int bar_twips(const MainForm& form) { return form.Options.visible ? menu_bar_height : 0; }

bool blinks(const Console& console, const Control& icon) {
  const auto& letters = console.lines.StatusLetter;
  const char letter = icon.index() < letters.size() ? letters(icon.index()) : ' ';
  return blinking_of(letter) != Blinking::No;
}

// Tells that the window has got a frame, or another one, and the form with that its place. A window
// manager may change its mind before the frame is there.
class FrameWatch final : public QObject {
 public:
  FrameWatch(QWidget& window, std::function<void()> tell)
      : QObject(&window), window_(window), tell_(std::move(tell)) {
    window.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::UpdateRequest) return false;
    const QPoint frame = window_.geometry().topLeft() - frame_place(window_);
    if (!window_.isVisible() || frame == frame_) return false;
    frame_ = frame;
    tell_();
    return false;
  }

 private:
  QWidget& window_;
  std::function<void()> tell_;
  QPoint frame_;
};

}  // namespace

MainFrame::MainFrame(Console& console, WindowFocus& focus, const QStringList& backgrounds)
    : FormFrame(console.Lineweir, focus),
      console_(console),
      backgrounds_(backgrounds),
      least_letters_(QApplication::font()) {}

MainFrame::~MainFrame() {
  console_.row_states.on_change = nullptr;
  console_.known_callers.on_rows_change = nullptr;
  QApplication::setFont(least_letters_);
}

MainWindow* MainFrame::main_window() const { return static_cast<MainWindow*>(window()); }

void MainFrame::show_band(QWidget* band) {
  const auto fit = [this] {
    if (form().window_state == window_normal) return fit_window(*main_window());
    main_window()->fit_bar();
  };
  main_window()->set_band(band);
  main_window()->on_band_changed = fit;
  fit();
}

void MainFrame::tell_at_hand(const QString& why) {
  if (window() == nullptr) return;
  const FormCanvas& canvas = main_window()->canvas();
  QWidget* at = canvas.in_hand();
  if (at == nullptr) at = canvas.widget_of(console_.Lineweir.Shape1);
  if (at == nullptr) return;
  QToolTip::showText(at->mapToGlobal(at->rect().center()), why, at);
  told_at_hand_ = true;
}

QWidget* MainFrame::make_window() {
  auto* window = new MainWindow(form());
  window->on_content_resized = [this](QSize content) { content_resized(content); };
  window->canvas().set_background_folder(
      {backgrounds_, [this](const QString& file, const QString& reason) {
         console_.trace.WriteTrace("Picture " + core_text(form(), file) + " can't be shown - " +
                                   core_text(form(), reason));
       }});
  window->canvas().spoken_state = [this](int line) { return spoken_state(console_, line); };
  window->canvas().spoken_wait = [this](int line) { return spoken_wait(console_, line); };
  window->canvas().spoken_memory = [this](int line) { return spoken_memory(console_, line); };
  console_.row_states.on_change = [this](int) { mark(); };
  console_.known_callers.on_rows_change = [this] { mark(); };
  window->canvas().icon_blinks = [this](const Control& icon) { return blinks(console_, icon); };
  window->menu_letters = [this](QSize size) { return letter_pixels(size); };
  window->on_scale_changed = [window] { window->canvas().place_all(); };
  new FingerReach(*window, window->canvas());
  // Asked behind the form, which has taken its place by then.
  new FrameWatch(*window, [this] { console_.messages.follow_main_form(); });
  QApplication::setPalette(palette_of(window->canvas().theme()));
  return window;
}

void MainFrame::fit_window(QWidget& window) {
  const int bar = bar_twips(console_.Lineweir);
  QSize content(pixel_edge(form().width), pixel_edge(form().height - bar));
  // A window that opens has its edges within reach, whatever screen its size was stored for.
  if (!window.isVisible()) content = content.boundedTo(place_to_open().size());
  static_cast<MainWindow&>(window).fit_content(content, least_content());
}

QSize MainFrame::least_content() const {
  // At the design's size every column, word and digit has the room that it needs, and no more.
  const int visible = console_.program.VisibleLines;
  const bool menus = console_.Lineweir.Options.visible;
  const int height = std::min(root_height(visible, menus), reset_height(visible, menus));
  return {pixel_edge(root_width(visible)), pixel_edge(height - bar_twips(console_.Lineweir))};
}

void MainFrame::content_resized(QSize content) {
  // A size that the form has already keeps its twips, so that rounding never creeps into them.
  const int bar = bar_twips(console_.Lineweir);
  const bool same_width = pixel_edge(form().width) == content.width();
  const bool same_height = pixel_edge(form().height - bar) == content.height();
  if (!same_width) form().width = twips_of(content.width());
  if (!same_height) form().height = twips_of(content.height()) + bar;
  // The program knows of the sizes that it gives the form itself.
  if (!same_width || !same_height) form().on_resize();
}

bool MainFrame::shows_in_window(const Element& element) const {
  const MainForm& main_form = console_.Lineweir;
  // Of the entries of menus many tell of the face, the link and the seat. The panel is placed anew
  // with each rebuild.
  return element.kind() == ElementKind::MenuItem || &element == &main_form.ScreenTopImage ||
         &element == &main_form.ScreenBottom || &element == &main_form.RealTime ||
         element.name() == main_form.LineStatus.name() ||
         element.name() == main_form.DataRow.name() || element.name() == main_form.CIcon1.name();
}

void MainFrame::form_changed() {
  apply_theme();
  apply_zoom();
  apply_letters();
  apply_next_light();
  apply_row_looks();
  apply_link_word();
  apply_last_column();
  main_window()->canvas().flush();
  show_standing_icons();
  main_window()->menus().flush();
  if (form().window_state == window_maximised) main_window()->fit_bar();
}

void MainFrame::apply_zoom() {
  // That of the last rebuild, so that letters grow with what they stand on.
  const DesignScale& scale = console_.scale;
  const double zoom = std::min(scale.ratio_across, scale.ratio_down);
  const bool texts_grow = console_.Lineweir.TextGrowToggle.checked;
  main_window()->canvas().set_zoom(zoom,
                                   text_zoom(scale.ratio_across, scale.ratio_down, texts_grow));
}

int MainFrame::letter_pixels(QSize window) const {
  const int visible = console_.program.VisibleLines;
  const int height = root_height(visible, console_.Lineweir.Options.visible);
  return grown_letters(
      text_zoom(window.width() / static_cast<double>(pixel_edge(root_width(visible))),
                window.height() / static_cast<double>(pixel_edge(height)),
                console_.Lineweir.TextGrowToggle.checked));
}

void MainFrame::apply_letters() {
  MainWindow& window = *main_window();
  if (window.fit_menu_letters()) {
    // The bar has another height now; the form keeps its own, where the window may change.
    if (form().window_state == window_normal) fit_window(window);
  }
  const int room = window.screen()->availableGeometry().height();
  const int pixels =
      std::max(least_letters_.pixelSize(), dialog_letters(letter_pixels(window.size()), room));
  QFont font = least_letters_;
  if (QApplication::font().pixelSize() == pixels) return;
  font.setPixelSize(pixels);
  QApplication::setFont(font);
}

void MainFrame::apply_next_light() {
  const MainForm& main_form = console_.Lineweir;
  const int next = console_.lines.TheNextCall;
  // The row tells of the choice, and of its end when the caller is on air. A producer's keys don't
  // take the next caller.
  const bool waits = main_form.StudioMode.checked && main_form.LineStatus.loaded(next) &&
                     main_form.LineStatus(next).caption == next_caller_status;
  main_window()->canvas().set_next_caller_waits(waits);
}

void MainFrame::apply_row_looks() {
  const MainForm& main_form = console_.Lineweir;
  const RowStates& states = console_.row_states;
  FormCanvas& canvas = main_window()->canvas();
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    RowLook look;
    look.state = states.of(line);
    look.letter_state = states.of_letter(line);
    look.dark = look.letter_state == RowState::Ringing && main_form.no_link.get().empty() &&
                main_form.CIcon1.loaded(line) && !main_form.CIcon1(line).visible;
    const bool holds = look.letter_state == RowState::Held || look.letter_state == RowState::Locked;
    if (const auto waited = states.waited(line); holds && waited) look.wait = wait_of(*waited);
    look.flag = shown_flag(console_, line);
    canvas.set_row_look(line, look);
  }
}

void MainFrame::apply_link_word() {
  const MainForm& main_form = console_.Lineweir;
  const std::array ports = {&main_form.Com1, &main_form.Com2, &main_form.Com3, &main_form.Com4};
  const bool server = main_form.WinsockMenu.checked || main_form.NetworkConnectionOption.checked;
  QString word = server ? QStringLiteral("Server") : QString();
  for (std::size_t port = 0; port < ports.size() && word.isEmpty(); ++port) {
    if (ports[port]->checked) word = QStringLiteral("Com %1").arg(port + 1);
  }
  main_window()->canvas().set_link_word(word);
}

void MainFrame::apply_last_column() {
  std::size_t last = number_column;
  for (const int column : console_.display.ColumnsInUse) {
    if (console_.display.width_of(column) > 0) last = static_cast<std::size_t>(column);
  }
  main_window()->canvas().set_last_column(last);
  // The first that tells of the caller.
  const auto& shown = console_.display.ColumnsInUse;
  const auto tells = [&](int column) {
    return column >= first_caller_column && console_.display.width_of(column) > 0;
  };
  const auto first = std::ranges::find_if(shown, tells);
  main_window()->canvas().set_flag_column(first == shown.end() ? last
                                                               : static_cast<std::size_t>(*first));
}

void MainFrame::show_standing_icons() {
  const FormCanvas& canvas = main_window()->canvas();
  if (canvas.no_link().isEmpty()) {
    if (std::exchange(told_at_hand_, false)) QToolTip::hideText();
    return;
  }
  for (ElementWidget* widget : canvas.element_widgets()) {
    if (widget->element_look().look == Look::KeyIcon) widget->setVisible(widget->shown_on_screen());
  }
}

void MainFrame::apply_theme() {
  const bool grey = console_.Lineweir.GreyScreenOption.checked;
  const Theme& theme = grey ? grey_theme : metal_theme;
  if (&theme == &main_window()->canvas().theme()) return;
  main_window()->canvas().set_theme(theme);
  QApplication::setPalette(palette_of(theme));
}

}  // namespace lineweir
