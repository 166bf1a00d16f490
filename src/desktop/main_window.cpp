#include "desktop/main_window.h"

#include <QEvent>
#include <QMenuBar>

namespace lineweir {

MainWindow::MainWindow(Form& form)
    : bar_(new QMenuBar(this)), canvas_(new FormCanvas(form, this)), menus_(form, *bar_) {
  bar_->setObjectName(QStringLiteral("MenuBar"));
  canvas_->setObjectName(QStringLiteral("FormCanvas"));
  // Without this Qt would give the keyboard to the first key of all.
  canvas_->setFocus();
  setAttribute(Qt::WA_NoSystemBackground);
}

void MainWindow::fit_content(QSize content, QSize least) {
  bar_->setVisible(menus_.shown());
  const QSize given = content.expandedTo(least);
  const QSize bar(0, menus_.shown() ? bar_->heightForWidth(given.width()) : 0);
  // The window may stand between two sizes now; the form hears of the last one only.
  fitting_ = true;
  setMinimumSize(least + bar);
  resize(given + bar);
  fitting_ = false;
  lay_out();
  if (on_content_resized && canvas_->size() != content) on_content_resized(canvas_->size());
}

void MainWindow::fit_bar() {
  if (bar_->isHidden() != menus_.shown()) return;
  bar_->setVisible(menus_.shown());
  lay_out();
  if (on_content_resized) on_content_resized(canvas_->size());
}

void MainWindow::lay_out() {
  const int bar_height = menus_.shown() ? bar_->heightForWidth(width()) : 0;
  bar_->setGeometry(0, 0, width(), bar_height);
  canvas_->setGeometry(0, bar_height, width(), std::max(0, height() - bar_height));
}

void MainWindow::resizeEvent(QResizeEvent*) {
  if (fitting_) return;
  lay_out();
  if (on_content_resized) on_content_resized(canvas_->size());
}

bool MainWindow::event(QEvent* event) {
  const bool result = QWidget::event(event);
  // There is no event of its own for a new scale; each of these comes with one.
  if (event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::Show ||
      event->type() == QEvent::Resize) {
    if (scale_ != devicePixelRatioF()) {
      scale_ = devicePixelRatioF();
      if (on_scale_changed) on_scale_changed();
    }
  }
  return result;
}

}  // namespace lineweir
