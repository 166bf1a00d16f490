#include "desktop/dialog_frame.h"

#include <QLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QWidget>

#include "desktop/form_binder.h"
#include "desktop/menu_tree.h"
#include "desktop/twips.h"

namespace lineweir {
namespace {

// Set in Qt Designer on the button that the Escape key clicks.
constexpr const char* cancels_property = "cancels";

Qt::WindowFlags window_flags(DialogKind kind) {
  switch (kind) {
    case DialogKind::Window:
      return Qt::Window;
    case DialogKind::Splash:
      return Qt::Dialog | Qt::FramelessWindowHint;
    default:
      return Qt::Dialog;
  }
}

}  // namespace

DialogFrame::DialogFrame(Form& form, const DialogRow& row, std::function<QWidget*()> main_window)
    : FormFrame(form), row_(row), main_window_(std::move(main_window)) {}

DialogFrame::~DialogFrame() = default;

QWidget* DialogFrame::make_window() {
  QWidget* parent = row_.kind == DialogKind::Dialog ? main_window_() : nullptr;
  auto* window = new QWidget(parent, window_flags(row_.kind));
  row_.set_up(*window);
  binder_ = std::make_unique<FormBinder>(form(), *window);
  for (QPushButton* button : window->findChildren<QPushButton*>()) {
    if (!button->property(cancels_property).toBool()) continue;
    auto* escape = new QShortcut(Qt::Key_Escape, window);
    QObject::connect(escape, &QShortcut::activated, button, &QPushButton::click);
  }
  if (!form().menu_bar().empty() && window->layout() != nullptr) {
    auto* bar = new QMenuBar(window);
    menus_ = std::make_unique<MenuTree>(form(), *bar);
    window->layout()->setMenuBar(bar);
  }
  return window;
}

QRect DialogFrame::place_to_open() const {
  const QWidget* main = main_window_();
  return main != nullptr && main->isVisible() ? main->frameGeometry() : FormFrame::place_to_open();
}

void DialogFrame::fit_window(QWidget& window) {
  const QSize told(pixel_edge(form().width), pixel_edge(form().height));
  window.resize(told.expandedTo(window.minimumSizeHint()));
}

void DialogFrame::form_changed() {
  binder_->flush();
  if (menus_ != nullptr) menus_->flush();
}

}  // namespace lineweir
