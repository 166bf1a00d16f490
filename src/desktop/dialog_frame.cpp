#include "desktop/dialog_frame.h"

#include <QWidget>

#include "desktop/form_binder.h"
#include "desktop/twips.h"

namespace lineweir {
namespace {

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
  return window;
}

void DialogFrame::fit_window(QWidget& window) {
  const QSize told(pixel_edge(form().width), pixel_edge(form().height));
  window.resize(told.expandedTo(window.minimumSizeHint()));
}

void DialogFrame::form_changed() {
  if (binder_ != nullptr) binder_->flush();
}

}  // namespace lineweir
