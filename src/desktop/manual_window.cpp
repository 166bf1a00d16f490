#include "desktop/manual_window.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>

#include "core/console.h"
#include "desktop/core_text.h"
#include "desktop/main_window.h"
#include "desktop/manual_pages.h"
#include "desktop/manual_sections.h"
#include "desktop/window_focus.h"
#include "state/wire.h"
#include "ui_manual.h"

namespace lineweir {
namespace {

constexpr DialogRow manual_row = {nullptr, [](QWidget& window) { Ui::Manual().setupUi(&window); },
                                  DialogKind::Window};

// Deeper headings stand in the text alone.
constexpr int deepest_listed = 3;
constexpr int list_width = 210;

}  // namespace

ManualForm::ManualForm() : Form("Manual") {
  caption = "Lineweir - Manual";
  width = 13500;
  height = 9600;
}

ManualWindow::ManualWindow(Console& console, WindowFocus& focus,
                           std::function<MainWindow*()> main_window)
    : console_(console),
      focus_(focus),
      frame_(form_, manual_row, focus, main_window),
      place_(std::move(main_window)) {
  form_.letters = console.Lineweir.letters;
  frame_.place = [this](QWidget& window) { place_.place(window); };
  wire(console.Lineweir.ManualMenuItem.on_click, console.trace, "Lineweir_ManualMenuItem_Click",
       [this] { open_for(console_.Lineweir.name()); });
  wire(form_.on_close, console.trace, "Manual_Form_Unload", [this] { form_.hide(); });
}

void ManualWindow::open_for(const std::string& form_name) {
  // A modal window lets the keyboard go to those alone that stand in front of it.
  form_.reachable_beside_modal = QApplication::activeModalWidget() != nullptr;
  form_.show();
  frame_.flush();
  const bool is_new = pages_ == nullptr;
  if (is_new) take_window();
  if (form_name != console_.Lineweir.name()) {
    go_to_form(form_name);
  } else if (console_.MyMsgbox.visible) {
    go_to_form(console_.MyMsgbox.name());
  } else if (is_new) {
    pages_->go_to(manual_section_of(console_.Lineweir));
  }
  frame_.window()->findChild<QLineEdit*>(QStringLiteral("searchText"))->setFocus();
  focus_.give_to(*frame_.window());
}

void ManualWindow::go_to_form(const std::string& form_name) {
  pages_->go_to(manual_section_of(form_name));
  if (form_name != console_.MyMsgbox.name()) return;
  search_->go_to_message(shown_text(console_.MyMsgbox, console_.MyMsgbox.Label1.caption.get()));
}

void ManualWindow::take_window() {
  QWidget& window = *frame_.window();
  pages_ = window.findChild<ManualPages*>(QStringLiteral("pages"));
  headings_ = window.findChild<QListWidget*>(QStringLiteral("headings"));
  hits_ = window.findChild<QLabel*>(QStringLiteral("hits"));
  search_ = std::make_unique<ManualSearch>(*pages_);
  window.findChild<QSplitter*>()->setSizes({list_width, window.width() - list_width});
  window.findChild<QSplitter*>()->setStretchFactor(1, 1);
  show_headings();

  auto* words = window.findChild<QLineEdit*>(QStringLiteral("searchText"));
  const auto next = [this] {
    search_->next();
    tell_hits();
  };
  const auto former = [this] {
    search_->former();
    tell_hits();
  };
  QObject::connect(words, &QLineEdit::textChanged, words, [this](const QString& text) {
    search_->look_for(text);
    tell_hits();
  });
  QObject::connect(words, &QLineEdit::returnPressed, words, next);
  QObject::connect(window.findChild<QPushButton*>(QStringLiteral("nextHit")), &QPushButton::clicked,
                   words, next);
  QObject::connect(window.findChild<QPushButton*>(QStringLiteral("formerHit")),
                   &QPushButton::clicked, words, former);
  QObject::connect(new QShortcut(Qt::Key_F3, &window), &QShortcut::activated, words, next);
  QObject::connect(new QShortcut(QKeySequence(QStringLiteral("Shift+F3")), &window),
                   &QShortcut::activated, words, former);
  QObject::connect(new QShortcut(QKeySequence::Find, &window), &QShortcut::activated, words,
                   [words] {
                     words->setFocus();
                     words->selectAll();
                   });
}

void ManualWindow::show_headings() {
  const auto& headings = pages_->headings();
  for (std::size_t i = 0; i < headings.size(); ++i) {
    const ManualPages::Heading& heading = headings[i];
    if (heading.level > deepest_listed) continue;
    const QString indent(qsizetype{3} * std::max(0, heading.level - 2), u' ');
    auto* item = new QListWidgetItem(indent + heading.text, headings_);
    item->setData(Qt::UserRole, static_cast<int>(i));
    item->setData(Qt::AccessibleTextRole, heading.text);
    QFont font = item->font();
    font.setBold(heading.level < deepest_listed);
    item->setFont(font);
  }
  QObject::connect(headings_, &QListWidget::currentItemChanged, headings_,
                   [this](const QListWidgetItem* item) {
                     if (item == nullptr) return;
                     const auto at = static_cast<std::size_t>(item->data(Qt::UserRole).toInt());
                     pages_->go_to(pages_->headings()[at]);
                   });
  QObject::connect(pages_->verticalScrollBar(), &QScrollBar::valueChanged, headings_, [this] {
    mark_heading();
    search_->mark();
  });
}

void ManualWindow::mark_heading() {
  if (headings_->hasFocus()) return;
  const ManualPages::Heading* in_sight = pages_->heading_in_sight();
  if (in_sight == nullptr) return;
  const int at = static_cast<int>(in_sight - pages_->headings().data());
  const QSignalBlocker reader_stays(headings_);
  for (int row = headings_->count() - 1; row >= 0; --row) {
    if (headings_->item(row)->data(Qt::UserRole).toInt() > at) continue;
    headings_->setCurrentRow(row);
    return;
  }
}

void ManualWindow::tell_hits() {
  mark_heading();
  const QString words =
      frame_.window()->findChild<QLineEdit*>(QStringLiteral("searchText"))->text().simplified();
  if (words.isEmpty()) return hits_->clear();
  hits_->setText(search_->hits() == 0
                     ? QStringLiteral("not found")
                     : QStringLiteral("%1 of %2").arg(search_->place()).arg(search_->hits()));
}

}  // namespace lineweir
