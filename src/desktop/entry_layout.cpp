#include "desktop/entry_layout.h"

#include <QFontMetrics>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <algorithm>

#include "desktop/core_color.h"
#include "desktop/element_looks.h"
#include "desktop/theme.h"
#include "forms/caller_data_form.h"

namespace lineweir {
namespace {

constexpr int comments_entry = entry_of(CallerField::Comments);
constexpr int comment_lines = 3;
constexpr int field_digits = 34;
constexpr int memory_lines = 4;
constexpr int flag_lines = 4;
constexpr int edge_of_field = 3;

// The longest line of what is told of a caller's earlier calls.
const QString longest_memory_line = QStringLiteral("Last on air 00/00/0000 00:00:00 AM ");

const QString server_hint =
    QStringLiteral("What the server and the call log know of the telephone number is shown here.");

// Row 0 is free for the field that is asked for before the others; each has its own row below.
int row_of(int entry, bool number_first) {
  return number_first && entry == phone_number_entry ? 0 : entry;
}

QWidget* widget_of(QWidget& window, const Control& control) {
  return window.findChild<QWidget*>(object_name(control));
}

void put_in_row(QGridLayout& grid, QWidget* widget, int row) {
  const int index = widget == nullptr ? -1 : grid.indexOf(widget);
  if (index < 0) return;
  int present = 0;
  int column = 0;
  int rows = 0;
  int columns = 0;
  grid.getItemPosition(index, &present, &column, &rows, &columns);
  if (present == row) return;
  grid.removeWidget(widget);
  grid.addWidget(widget, row, column);
}

}  // namespace

void EntryLayout::arrange(QWidget& window) {
  put_number_in_place(window);
  lead_tab_through(window);
  fit_comments(window);
  fit_memory(window);
  fit_flag(window);
  fit_notice(window);
}

void EntryLayout::put_number_in_place(QWidget& window) const {
  auto* grid = window.findChild<QGridLayout*>(QStringLiteral("fields"));
  if (grid == nullptr) return;
  const int row = row_of(phone_number_entry, form_.number_first);
  const int digit = window.fontMetrics().horizontalAdvance(QLatin1Char('0'));
  grid->setColumnMinimumWidth(1, field_digits * digit);
  put_in_row(*grid, widget_of(window, form_.Label(phone_number_entry)), row);
  put_in_row(*grid, widget_of(window, form_.TheText(phone_number_entry)), row);
}

void EntryLayout::lead_tab_through(QWidget& window) {
  const std::vector<int> order = form_.order();
  if (order == order_) return;
  order_ = order;
  std::vector<const Control*> stops;
  for (const int entry : order) stops.push_back(&form_.TheText(entry));
  for (const Button* button : {&form_.Command3D1, &form_.SaveReady, &form_.DiscardCall,
                               &form_.OtherCall, &form_.MemoryFill, &form_.FlagCaller}) {
    stops.push_back(button);
  }
  QWidget* before = nullptr;
  for (const Control* stop : stops) {
    QWidget* widget = widget_of(window, *stop);
    if (before != nullptr && widget != nullptr) QWidget::setTabOrder(before, widget);
    if (widget != nullptr) before = widget;
  }
}

void EntryLayout::fit_comments(QWidget& window) const {
  const auto& box = form_.TheText(comments_entry);
  auto* comments = qobject_cast<QPlainTextEdit*>(widget_of(window, box));
  auto* grid = window.findChild<QGridLayout*>(QStringLiteral("fields"));
  if (comments == nullptr || grid == nullptr) return;
  comments->document()->setDocumentMargin(edge_of_field);
  const int edges = 2 * (edge_of_field + comments->frameWidth());
  comments->setMinimumHeight(comment_lines * comments->fontMetrics().lineSpacing() + edges);
  // It takes what height the window has to spare.
  grid->setRowStretch(comments_entry, box.visible ? 1 : 0);
  // Its heading stands beside the first line.
  if (QWidget* heading = widget_of(window, form_.Label(comments_entry))) {
    heading->setContentsMargins(0, edge_of_field + comments->frameWidth(), 0, 0);
  }
}

void EntryLayout::fit_memory(QWidget& window) const {
  auto* pane = window.findChild<QWidget*>(QStringLiteral("memoryPane"));
  auto* label = qobject_cast<QLabel*>(widget_of(window, form_.MemoryLabel));
  auto* hint = window.findChild<QWidget*>(QStringLiteral("memoryHint"));
  QWidget* fill = widget_of(window, form_.MemoryFill);
  if (pane == nullptr || label == nullptr || hint == nullptr || fill == nullptr) return;
  const QFontMetrics metrics = label->fontMetrics();
  const QMargins edges = pane->layout()->contentsMargins();
  pane->setFixedWidth(metrics.horizontalAdvance(longest_memory_line) + edges.left() +
                      edges.right());
  for (QWidget* text : {static_cast<QWidget*>(label), hint}) {
    text->setMinimumHeight(memory_lines * metrics.lineSpacing());
  }
  QSizePolicy policy = fill->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  fill->setSizePolicy(policy);
  hint->setVisible(!form_.MemoryLabel.visible);
  pane->setVisible(form_.memory() != CallerDataForm::Memory::None || form_.MemoryLabel.visible);
}

void EntryLayout::fit_flag(QWidget& window) const {
  auto* hint = window.findChild<QLabel*>(QStringLiteral("memoryHint"));
  auto* label = qobject_cast<QLabel*>(widget_of(window, form_.FlagLabel));
  QWidget* button = widget_of(window, form_.FlagCaller);
  if (hint == nullptr || label == nullptr || button == nullptr) return;
  const bool server = form_.memory() == CallerDataForm::Memory::Server;
  if (log_hint_.isEmpty()) log_hint_ = hint->text();
  hint->setText(server ? server_hint : log_hint_);
  // Without a server neither takes room.
  for (QWidget* widget : {static_cast<QWidget*>(label), button}) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(server);
    widget->setSizePolicy(policy);
  }
  const QColor ground = shown_color(form_.FlagLabel.back_color);
  QPalette palette = label->palette();
  palette.setColor(QPalette::Window, ground);
  palette.setColor(QPalette::WindowText, readable_on(ground, QColor(Qt::white)));
  label->setPalette(palette);
  label->setAutoFillBackground(true);
  label->setMargin(edge_of_field);
  label->setMinimumHeight(
      server ? flag_lines * label->fontMetrics().lineSpacing() + 2 * edge_of_field : 0);
}

void EntryLayout::fit_notice(QWidget& window) const {
  QWidget* notice = widget_of(window, form_.NoticeLabel);
  if (notice == nullptr) return;
  QSizePolicy policy = notice->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  notice->setSizePolicy(policy);
  const int line = notice->fontMetrics().lineSpacing();
  const bool told = form_.NoticeLabel.visible;
  notice->setMinimumHeight(told ? std::max(line, notice->heightForWidth(notice->width())) : line);
}

}  // namespace lineweir
