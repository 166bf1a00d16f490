#include "desktop/main_window.h"

#include <QEvent>
#include <QMenuBar>
#include <algorithm>

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
  const QSize least_bar(0, bar_height_above(least));
  const QSize bar(0, bar_height_above(given));
  // The window may stand between two sizes now; the form hears of the last one only.
  fitting_ = true;
  setMinimumSize(least + least_bar);
  resize(given + bar);
  fitting_ = false;
  lay_out();
  if (on_content_resized && canvas_->size() != content) on_content_resized(canvas_->size());
}

bool MainWindow::fit_menu_letters() {
  return menu_letters && menus_.set_letters(menu_letters(size()));
}

int MainWindow::bar_height(QSize window) {
  if (!menus_.shown()) return 0;
  if (menu_letters) menus_.set_letters(menu_letters(window));
  return bar_->heightForWidth(window.width());
}

int MainWindow::bar_height_above(QSize content) {
  // A higher window never has a lower bar, so each step goes up, and the steps end.
  int height = 0;
  for (int next = bar_height(content); next > height;) {
    height = next;
    next = bar_height(content + QSize(0, height));
  }
  return height;
}

void MainWindow::fit_bar() {
  const QRect before = canvas_->geometry();
  bar_->setVisible(menus_.shown());
  lay_out();
  if (on_content_resized && canvas_->geometry() != before) on_content_resized(canvas_->size());
}

void MainWindow::lay_out() {
  const int bar = bar_height(size());
  bar_->setGeometry(0, 0, width(), bar);
  canvas_->setGeometry(0, bar, width(), std::max(0, height() - bar));
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
