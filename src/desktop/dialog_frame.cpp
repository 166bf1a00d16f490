#include "desktop/dialog_frame.h"

#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "desktop/dialog_letters.h"
#include "desktop/form_binder.h"
#include "desktop/length_field.h"
#include "desktop/menu_tree.h"
#include "desktop/screen_room.h"
#include "desktop/splash_window.h"
#include "desktop/twips.h"
#include "desktop/window_focus.h"

namespace lineweir {
namespace {

// Set in Qt Designer on the button that the Escape key clicks, and on a window without such a
// button that Escape closes where no field has a use for it.
constexpr const char* cancels_property = "cancels";
constexpr const char* escape_closes_property = "escapeCloses";

// Set in Qt Designer on a field that is to be as wide as so many digits.
constexpr const char* digits_property = "digits";
constexpr int field_edges = 16;

// Set in Qt Designer on a window that opens with all that its lists hold in sight; on a smaller
// screen they scroll.
constexpr const char* opens_whole_property = "opensWhole";

// Set in Qt Designer on a field for a length in twips, in which the eye finds it in millimetres.
constexpr const char* length_property = "length";

QWidget* new_window(DialogKind kind, QWidget* parent) {
  switch (kind) {
    case DialogKind::Splash:
      return new SplashWindow(parent);
    case DialogKind::Window:
      return new QWidget(parent, Qt::Window);
    default:
      return new QWidget(parent, Qt::Dialog);
  }
}

void dress_fields(QWidget& window) {
  for (QLineEdit* field : window.findChildren<QLineEdit*>()) {
    const int digits = field->property(digits_property).toInt();
    if (digits == 0) continue;
    const int unit = field->property(length_property).toBool() ? LengthField::room(*field) : 0;
    field->setFixedWidth(field->fontMetrics().horizontalAdvance(QLatin1Char('0')) * digits +
                         field_edges + unit);
  }
}

void dress_lengths(QWidget& window) {
  for (QLineEdit* field : window.findChildren<QLineEdit*>()) {
    if (field->property(length_property).toBool()) new LengthField(*field);
  }
}

// Pages are turned by their letters, which lead to what is on them.
void dress_pages(QTabWidget& pages) {
  pages.tabBar()->setFocusPolicy(Qt::NoFocus);
  QObject::connect(&pages, &QTabWidget::currentChanged, &pages, [&pages] {
    QWidget* page = pages.currentWidget();
    for (QWidget* next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain()) {
      if (!page->isAncestorOf(next) || next->focusPolicy() == Qt::NoFocus) continue;
      return next->setFocus(Qt::OtherFocusReason);
    }
  });
}

QRect shown_controls(const QWidget& window) {
  QRect all;
  for (const QWidget* child : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (!child->isHidden()) all = all.united(child->geometry());
  }
  return all;
}

}  // namespace

DialogFrame::DialogFrame(Form& form, const DialogRow& row, WindowFocus& focus,
                         std::function<QWidget*()> main_window)
    : FormFrame(form, focus), row_(row), main_window_(std::move(main_window)) {}

DialogFrame::~DialogFrame() = default;

QWidget* DialogFrame::make_window() {
  const bool in_front = row_.kind == DialogKind::Dialog || row_.kind == DialogKind::Message;
  QWidget* parent = in_front ? main_window_() : nullptr;
  QWidget* window = new_window(row_.kind, parent);
  row_.set_up(*window);
  binder_ = std::make_unique<FormBinder>(form(), *window);
  for (QPushButton* button : window->findChildren<QPushButton*>()) {
    if (!button->property(cancels_property).toBool()) continue;
    auto* escape = new QShortcut(Qt::Key_Escape, window);
    escape->setAutoRepeat(false);
    QObject::connect(escape, &QShortcut::activated, button, &QPushButton::click);
  }
  dress_fields(*window);
  dress_lengths(*window);
  for (QTabWidget* pages : window->findChildren<QTabWidget*>()) dress_pages(*pages);
  if (!form().menu_bar().empty() && window->layout() != nullptr) {
    auto* bar = new QMenuBar(window);
    menus_ = std::make_unique<MenuTree>(form(), *bar);
    window->layout()->setMenuBar(bar);
  }
  if (arrange) arrange(*window);
  return window;
}

QRect DialogFrame::place_to_open() const {
  const QWidget* main = main_window_();
  return main != nullptr && main->isVisible() ? main->frameGeometry() : FormFrame::place_to_open();
}

bool DialogFrame::takes_keyboard(bool awaited) const {
  if (row_.kind != DialogKind::Message) return FormFrame::takes_keyboard(awaited);
  // The main window's keys work on while a message stands in front of it.
  return awaited && focus().user_window() != main_window_();
}

void DialogFrame::fit_window(QWidget& window) {
  // Until its layout is through with what has gone, the window can't become smaller.
  if (QLayout* layout = window.layout()) layout->activate();
  QSize told(pixel_edge(form().width, letter_scale()), pixel_edge(form().height, letter_scale()));
  if (window.layout() == nullptr) {
    // What a dialog keeps room for and doesn't show now leaves no empty half.
    const QRect shown = shown_controls(window);
    told.setWidth(std::min(told.width(), shown.right() + 1 + shown.left()));
  }
  // A window that the user has made wider stays so.
  if (window.isVisible() && window.layout() != nullptr) {
    told.setWidth(std::max(told.width(), window.width()));
  }
  const bool whole = window.property(opens_whole_property).toBool();
  const int height = window.height();
  window.resize(told.expandedTo(whole ? window.sizeHint() : window.minimumSizeHint()));
  if (window.isVisible() && window.height() > height) keep_on_screen(window);
}

bool DialogFrame::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window() && event->type() == QEvent::ApplicationFontChange) {
    // What stands in the window hears of it behind the window.
    other_letters_ = true;
    mark();
  }
  if (FormFrame::eventFilter(watched, event)) return true;
  if (watched != window() || event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Escape && window()->property(escape_closes_property).toBool()) {
    window()->close();
    return true;
  }
  return (key == Qt::Key_Return || key == Qt::Key_Enter) && press_default();
}

void DialogFrame::take_letters() {
  QWidget& shown = *window();
  dress_fields(shown);
  binder_->take_letters();
  if (shown.layout() == nullptr) {
    fit_window(shown);
  } else {
    shown.layout()->activate();
    shown.resize(shown.size().expandedTo(shown.minimumSizeHint()));
  }
}

bool DialogFrame::press_default() {
  for (QPushButton* button : window()->findChildren<QPushButton*>()) {
    if (!button->isDefault() || !button->isVisible()) continue;
    // The field that is left says so before.
    button->setFocus(Qt::OtherFocusReason);
    button->click();
    return true;
  }
  return false;
}

bool DialogFrame::shows_in_window(const Element& element) const {
  // A dialog without a layout is as wide as what it shows; what is typed changes nothing of that.
  const bool laid_out = window() != nullptr && window()->layout() != nullptr;
  return (arrange || !laid_out) && window() != nullptr &&
         (element.kind() == ElementKind::Label || element.kind() == ElementKind::Button);
}

void DialogFrame::about_to_show() {
  if (!place) return;
  window()->resize(window()->size().expandedTo(window()->minimumSizeHint()));
  place(*window());
}

void DialogFrame::form_changed() {
  binder_->flush();
  if (arrange) arrange(*window());
  if (std::exchange(other_letters_, false)) take_letters();
  if (window() != nullptr && window()->layout() == nullptr) fit_window(*window());
  if (menus_ != nullptr) menus_->flush();
}

}  // namespace lineweir
