#include "desktop/desktop.h"

#include <QCoreApplication>

#include "core/console.h"
#include "desktop/core_text.h"
#include "desktop/dialog_table.h"
#include "desktop/main_window.h"
#include "desktop/screen_room.h"
#include "desktop/spoken_message.h"
#include "screen/background_files.h"

namespace lineweir {

QStringList background_folders() {
  const QString name = QLatin1Char('/') + QLatin1String(background_folder.data());
  const QString program = QCoreApplication::applicationDirPath();
  return {program + name, QStringLiteral("/usr/local/share/lineweir") + name,
          program + QStringLiteral("/../share/lineweir") + name};
}

Desktop::Desktop(Console& console, const QStringList& backgrounds)
    : console_(console),
      message_(console, hands_),
      main_frame_(console, focus_, backgrounds),
      entry_layout_(console.Form4),
      entry_place_([this] { return main_frame_.main_window(); }),
      close_question_(console, focus_, [this] { return main_frame_.window(); }),
      certificate_question_(console, focus_, [this] { return main_frame_.window(); }),
      manual_(console, focus_, [this] { return main_frame_.main_window(); }),
      diagnosis_(console, focus_, [this] { return main_frame_.window(); }),
      announcer_(console, [this](const Form& form) {
        return window_of(QString::fromStdString(form.name()));
      }) {
  hands_.at_work = [&console] { return console.Lineweir.mouse_pointer == pointer_hourglass; };
  hands_.has_hot_keys = [this](const QWindow& window) {
    const QWidget* main = main_frame_.window();
    return main != nullptr && main->windowHandle() == &window;
  };
  hands_.message_waits = [this, &console](const QWindow& window) {
    const QWidget* box = dialog(console.MyMsgbox)->window();
    const bool elsewhere = box != nullptr && box->windowHandle() != &window;
    return elsewhere && focus_.knows(window) && message_.seen();
  };
  hands_.answer_message = [this] { message_.answer(); };
  for (const DialogRow& row : dialog_table()) {
    dialogs_.push_back(std::make_unique<DialogFrame>(row.form(console), row, focus_,
                                                     [this] { return main_frame_.window(); }));
  }
  manual_key_.form_of = [this](const QWindow& window) { return form_of(window); };
  manual_key_.open = [this](const std::string& form) { manual_.open_for(form); };
  DialogFrame& entry = *dialog(console.Form4);
  entry.arrange = [this](QWidget& window) { entry_layout_.arrange(window); };
  entry.place = [this](QWidget& window) { entry_place_.place(window); };
  // Who sets a flag has Form4 in mind, and the rows in sight.
  dialog(console.FlagForm)->place = [this, &console](QWidget& window) {
    const QWidget* below = dialog(console.Form4)->window();
    if (below == nullptr || !below->isVisible()) return;
    window.move(below->frameGeometry().center() - window.rect().center());
    keep_on_screen(window);
  };
  console.caller_data.asks_number_first = true;
  message_.before_placing = [this, &console] {
    DialogFrame& box = *dialog(console.MyMsgbox);
    main_frame_.window_moved();
    box.window_moved();
    return main_frame_.has_frame() && box.has_frame();
  };
  console.message_display.on_message = [this](const HeardMessage& message) {
    announcer_.announce(spoken_message(console_.Lineweir, message));
  };
  console.link.on_nothing_comes = [this](const std::string& why) {
    const QString shown = shown_text(console_.Lineweir, why);
    main_frame_.tell_at_hand(shown);
    announcer_.announce(shown);
  };
}

Desktop::~Desktop() {
  console_.link.on_nothing_comes = nullptr;
  console_.message_display.on_message = nullptr;
}

DialogFrame* Desktop::dialog(const Form& form) const {
  for (const auto& dialog : dialogs_) {
    if (&dialog->form() == &form) return dialog.get();
  }
  return nullptr;
}

QWidget* Desktop::window_of(const QString& form_name) const {
  if (form_name.toStdString() == main_frame_.form().name()) return main_frame_.window();
  if (form_name.toStdString() == close_question_.form().name()) return close_question_.window();
  if (form_name.toStdString() == certificate_question_.form().name()) {
    return certificate_question_.window();
  }
  if (form_name.toStdString() == manual_.form().name()) return manual_.window();
  if (form_name.toStdString() == diagnosis_.form().name()) return diagnosis_.window();
  for (const auto& dialog : dialogs_) {
    if (form_name.toStdString() == dialog->form().name()) return dialog->window();
  }
  return nullptr;
}

std::string Desktop::form_of(const QWindow& window) const {
  const auto is_of = [&](const QWidget* widget) {
    return widget != nullptr && widget->windowHandle() == &window;
  };
  if (is_of(main_frame_.window())) return main_frame_.form().name();
  if (is_of(close_question_.window())) return close_question_.form().name();
  if (is_of(certificate_question_.window())) return certificate_question_.form().name();
  if (is_of(diagnosis_.window())) return diagnosis_.form().name();
  for (const auto& dialog : dialogs_) {
    if (is_of(dialog->window())) return dialog->form().name();
  }
  return {};
}

void Desktop::flush() {
  main_frame_.flush();
  for (const auto& dialog : dialogs_) dialog->flush();
  close_question_.flush();
  certificate_question_.flush();
  manual_.flush();
  diagnosis_.flush();
  announcer_.flush();
}

}  // namespace lineweir
