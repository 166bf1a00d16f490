// Takes pictures of the windows of a scripted console. A script is one of lineweir-driver with
// these commands besides:
//
//   picture NAME [FORM]     the form's window (the main one where no form is named) as NAME.png
//   menu NAME ITEM          the open menu of this entry of the main window's as NAME.png
//   window WIDTH HEIGHT     the user drags the main window to this size, in logical pixels, or as
//                           near as it goes
//   keyboard FORM KEY...    these keys are typed in the form's window: Tab, Space, A ...
//   mouse FORM ELEMENT      the mouse comes to rest on the element's widget
//   ask NAME KIND           the system's own question of that kind as NAME.png: file, save, text,
//                           seconds, yesno, font or message
//   letters PERCENT         the size of the letters in dialogs and menus, of the present one
//   file NAME               the console finds this file of the script's folder
//   prefix TEXT             stands before the names of all further pictures
//   include FILE            the commands of another script, in the same folder

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFont>
#include <QKeySequence>
#include <QMenu>
#include <QPixmap>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "desktop/desktop.h"
#include "desktop/dialogs.h"
#include "desktop/main_window.h"
#include "desktop/program.h"
#include "driver/interpreter.h"
#include "platform/scripted/memory_files.h"

namespace lineweir {
namespace {

class Gallery {
 public:
  explicit Gallery(QDir folder) : folder_(std::move(folder)) {}

  void run(const std::filesystem::path& script) {
    std::ifstream lines(script);
    if (!lines) throw std::runtime_error(script.string() + ": can't be read");
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
      ++number;
      if (line.empty() || line.front() == '#') continue;
      try {
        carry_out(line, script);
      } catch (const std::exception& problem) {
        throw std::runtime_error(script.filename().string() + ":" + std::to_string(number) + ": " +
                                 line + "\n    " + problem.what());
      }
    }
  }

 private:
  void carry_out(const std::string& line, const std::filesystem::path& script) {
    std::istringstream words(line);
    std::string command;
    words >> command;
    if (command == "include") {
      std::string file;
      words >> file;
      return run(script.parent_path() / file);
    }
    if (command == "picture") return take_picture(words);
    if (command == "menu") return take_menu(words);
    if (command == "window") return resize_window(words);
    if (command == "keyboard") return type_keys(words);
    if (command == "mouse") return rest_mouse(words);
    if (command == "ask") return take_question(words);
    if (command == "letters") return set_letters(words);
    if (command == "file") return hand_over_file(words, script.parent_path());
    if (command == "prefix") {
      words >> prefix_;
      return;
    }
    // The windows go before the console that they show.
    if (command == "quit") desktop_.reset();
    const auto reply = driver::carry_out(session_, line);
    if (reply && reply->line.starts_with("error")) throw std::runtime_error(reply->line);
    if (session_.launched() && desktop_ == nullptr) {
      desktop_ = std::make_unique<Desktop>(session_.console());
    }
    settle();
  }

  void settle() {
    if (desktop_ != nullptr) desktop_->flush();
    QCoreApplication::processEvents();
  }

  QWidget& window(const std::string& form) {
    settle();
    QWidget* found =
        desktop_ == nullptr ? nullptr : desktop_->window_of(QString::fromStdString(form));
    if (found == nullptr) throw std::runtime_error(form + " has no window");
    return *found;
  }

  void take_picture(std::istream& words) {
    std::string name;
    std::string form;
    words >> name >> form;
    QWidget& shown = window(form.empty() ? "Lineweir" : form);
    if (!shown.isVisible()) throw std::runtime_error(form + " is not shown");
    save(shown, name);
  }

  void save(QWidget& widget, const std::string& name) {
    if (!widget.grab().save(folder_.filePath(QString::fromStdString(prefix_ + name + ".png")))) {
      throw std::runtime_error("the picture can't be saved");
    }
  }

  void take_menu(std::istream& words) {
    std::string name;
    std::string item;
    words >> name >> item;
    auto* entry = static_cast<MenuItem*>(session_.console().Lineweir.find(item));
    const QAction* action = entry == nullptr
                                ? nullptr
                                : desktop_->main_frame().main_window()->menus().action_of(*entry);
    if (action == nullptr || action->menu() == nullptr) throw std::runtime_error("no such menu");
    QMenu& menu = *action->menu();
    menu.ensurePolished();
    menu.resize(menu.sizeHint());
    menu.setActiveAction(menu.actions().constFirst());
    save(menu, name);
  }

  void take_question(std::istream& words) {
    std::string name;
    std::string kind;
    words >> name >> kind;
    SystemDialogs dialogs(session_.console().services.letters);
    dialogs.owner = [this] { return &window("Lineweir"); };
    QTimer shown;
    QObject::connect(&shown, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      save(*dialog, name);
      dialog->reject();
    });
    shown.start(200);
    ask_question(dialogs, kind);
  }

  static void ask_question(SystemDialogs& dialogs, const std::string& kind) {
    if (kind == "file" || kind == "save") {
      dialogs.ask_file({.title = "Open Show File",
                        .filter = "Show Files (*.TXT)|*.TXT|All Files (*.*)|*.*",
                        .default_path = {},
                        .for_saving = kind == "save"});
    } else if (kind == "text") {
      dialogs.ask_input({"Please input the new title for the user field!", "User"});
    } else if (kind == "seconds") {
      dialogs.ask_input(
          {"Please enter the new warning time in seconds to mark when the event clock turns red.",
           "90", "seconds"});
    } else if (kind == "yesno") {
      dialogs.ask_yes_no(
          "Do you wish to change the name of the field in the currently open database as well?");
    } else if (kind == "font") {
      dialogs.ask_font({"DejaVu Sans", 8, true, false});
    } else if (kind == "message") {
      dialogs.message("The settings could not be saved: No space left on device");
    } else {
      throw std::runtime_error("no such question");
    }
  }

  void resize_window(std::istream& words) {
    int width = 0;
    int height = 0;
    words >> width >> height;
    window("Lineweir").resize(width, height);
    // The size reaches the form, whose layout follows a moment later.
    settle();
    session_.advance(std::chrono::seconds(2));
    settle();
  }

  void type_keys(std::istream& words) {
    std::string form;
    words >> form;
    QWidget& typed_in = window(form);
    QApplication::setActiveWindow(&typed_in);
    settle();
    for (std::string key; words >> key;) {
      QWidget* focus = QApplication::focusWidget();
      const auto sequence = QKeySequence::fromString(QString::fromStdString(key));
      const QKeyCombination combination = sequence[0];
      QTest::keyClick(focus == nullptr ? &typed_in : focus, combination.key(),
                      combination.keyboardModifiers());
      settle();
    }
  }

  void rest_mouse(std::istream& words) {
    std::string form;
    std::string element;
    words >> form >> element;
    auto* widget = window(form).findChild<QWidget*>(QString::fromStdString(element));
    if (widget == nullptr) throw std::runtime_error(element + " has no widget");
    QTest::mouseMove(widget);
    settle();
  }

  void hand_over_file(std::istream& words, const std::filesystem::path& folder) {
    std::string name;
    words >> name;
    std::ifstream file(folder / name, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    if (!file) throw std::runtime_error(name + ": can't be read");
    files_.replace(name, content.str());
  }

  void set_letters(std::istream& words) {
    int percent = 100;
    words >> percent;
    QFont font = QApplication::font();
    font.setPixelSize(font.pixelSize() * percent / 100);
    QApplication::setFont(font);
  }

  QDir folder_;
  std::string prefix_;
  platform::MemoryFiles files_;
  driver::Session session_{files_};
  std::unique_ptr<Desktop> desktop_;
};

}  // namespace
}  // namespace lineweir

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  if (argc < 3) {
    std::cerr << "usage: screen_gallery FOLDER SCRIPT..." << std::endl;
    return 2;
  }
  const QDir folder(QString::fromLocal8Bit(argv[1]));
  folder.mkpath(QStringLiteral("."));
  bool all_well = true;
  for (int i = 2; i < argc; ++i) {
    try {
      lineweir::dress_application();
      lineweir::Gallery(folder).run(argv[i]);
    } catch (const std::exception& problem) {
      std::cerr << problem.what() << std::endl;
      all_well = false;
    }
  }
  return all_well ? 0 : 1;
}
