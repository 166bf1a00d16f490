#include "desktop/program.h"

#include <QApplication>
#include <QFont>
#include <QMessageBox>
#include <QPalette>
#include <QScreen>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "core/console.h"
#include "desktop/accessibility.h"
#include "desktop/alert_bell.h"
#include "desktop/console_style.h"
#include "desktop/desktop.h"
#include "desktop/dialog_letters.h"
#include "desktop/dialogs.h"
#include "desktop/first_paint.h"
#include "desktop/line_report.h"
#include "desktop/line_report_file.h"
#include "desktop/new_user.h"
#include "desktop/pdf_tables.h"
#include "desktop/practice_place.h"
#include "desktop/practice_titles.h"
#include "desktop/practising.h"
#include "desktop/program_icon.h"
#include "desktop/screenshot.h"
#include "desktop/surroundings.h"
#include "desktop/theme.h"
#include "desktop/trusted_servers.h"
#include "letters/code_page_letters.h"
#include "platform/disk/disk_files.h"
#include "platform/disk_journal/disk_call_journal.h"
#include "platform/icu/icu_transliterator.h"
#include "platform/qt/dbus_remote_objects.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_random_numbers.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/threaded/threaded_user_files.h"
#include "practice/practice_world.h"

namespace lineweir {
namespace {

constexpr int box_speed = 1200;
constexpr int switch_console_speed = 9600;

// The show's thread waits for no other program; the writer of the log has time, and two consoles
// that log at the same moment are no outage.
constexpr std::chrono::milliseconds no_wait{0};
constexpr std::chrono::milliseconds log_wait{1000};

// The console's files and what they are named and guarded by. Threads that wait for one of them may
// outlive the console.
struct FileAccess {
  explicit FileAccess(const CodePage& page) : letters(page, &transliterator) {}

  platform::IcuTransliterator transliterator;
  CodePageLetters letters;
  platform::GuardedFiles guard;
  const std::filesystem::path folder = std::filesystem::current_path();
  platform::DiskFiles files{folder, letters, &guard};
};

std::unique_ptr<platform::DatabaseEngine> make_engine(FileAccess& access,
                                                      std::chrono::milliseconds lock_wait) {
  return std::make_unique<platform::SqliteEngine>(access.folder, access.letters, lock_wait,
                                                  &access.guard);
}

}  // namespace

void dress_application() {
  QApplication::setStyle(new ConsoleStyle);
  QApplication::setPalette(palette_of(metal_theme));
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(design_letter_pixels);
  QApplication::setFont(font);
  QApplication::setWindowIcon(program_icon());
  // By this name a desktop knows which of its entries the windows belong to.
  QGuiApplication::setDesktopFileName(QStringLiteral("org.lineweir.Console"));
  // The main window's parts would become windows of the system as soon as a dialog is made.
  QApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
  // A desktop's own dialogs look otherwise, and open the files that they show.
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  // Closing a window is a matter of its form, not of the application.
  QApplication::setQuitOnLastWindowClosed(false);
  install_accessibility();
}

int run_program(const CommandLine& command_line) {
  std::optional<PracticePlace> place;
  std::optional<PracticeTitles> titles;
  if (command_line.practice) titles.emplace();
  if (command_line.practice && !place.emplace().problem().empty()) {
    QMessageBox::warning(nullptr, QStringLiteral("PRACTICE"),
                         QString::fromStdString(place->problem()));
    return 1;
  }
  const auto access = std::make_shared<FileAccess>(*command_line.code_page);
  const CodePageLetters& letters = access->letters;
  platform::QtEventLoop loop;
  platform::QtSystemClock clock;
  platform::QtRandomNumbers random;
  platform::ThreadedUserFiles user_files(
      {.files = std::shared_ptr<platform::StreamedFiles>(access, &access->files),
       .is_database = [access](const std::string& path) {
         return make_engine(*access, no_wait)->is_database(path);
       }});
  SystemDialogs dialogs(letters);
  const auto databases = make_engine(*access, no_wait);
  platform::DiskCallJournal journal(
      {.folder = access->folder,
       .make_engine = [access] { return make_engine(*access, log_wait); },
       .post = [&loop](std::function<void()> call) { loop.post(std::move(call)); }});
  PdfTables printer;
  AlertBell attention_sound;
  platform::QtSerialPort comm1(loop, box_speed, 1);
  platform::QtSerialPort comm2(loop, switch_console_speed, 2);
  TrustedServers trusted(access->files);
  platform::QtClientSocket winsock1(loop);
  winsock1.trusted_fingerprint = [&trusted](const std::string& host, int port) {
    return trusted.fingerprint(host, port);
  };
  platform::DBusRemoteObjects remote_objects(loop, letters);
  bool ended = false;

  const platform::Services real = {
      .loop = loop,
      .clock = clock,
      .random = random,
      .files = access->files,
      .user_files = user_files,
      .dialogs = dialogs,
      .databases = *databases,
      .journal = journal,
      .printer = printer,
      .attention_sound = attention_sound,
      .letters = letters,
      .comm1 = comm1,
      .comm2 = comm2,
      .winsock1 = winsock1,
      .remote_objects = remote_objects,
      .process_number = static_cast<int>(QCoreApplication::applicationPid()),
      .end_program = [&ended] {
        // The loop ends once all handlers that run in loops of their own are back.
        ended = true;
        QCoreApplication::exit(0);
      }};
  std::optional<practice::PracticeWorld> world;
  if (command_line.practice) world.emplace(real, access->folder);
  Console console(world ? world->services() : real);
  Desktop desktop(console);
  desktop.certificate_question().trusted = &trusted;
  desktop.diagnosis().look_around = [access, page = command_line.code_page] {
    return look_around(access->folder, *page);
  };
  winsock1.on_doubt = [&desktop](const platform::QtClientSocket::DoubtfulCertificate& certificate) {
    desktop.certificate_question().ask(certificate);
  };
  dialogs.owner = [&desktop] { return desktop.focus().user_window(); };

  console.startup.on_new_user = [&console] {
    welcome_new_user(console, QGuiApplication::primaryScreen()->availableSize());
  };
  console.startup.Main(command_line.argument);
  if (ended) return 0;
  const Practising practising(*command_line.code_page, world ? &world->port() : nullptr, console,
                              desktop);
  if (ended) return 0;
  desktop.flush();
  const LineReportFile line_report_file(console);
  const FirstPaint first_paint(desktop.main_frame().window());
  const Screenshot screenshot([&](const QString& form) { return practising.window_of(form); },
                              [&console] {
                                std::fputs(line_report(console).c_str(), stdout);
                                console.Lineweir.unload();
                              });
  return QApplication::exec();
}

}  // namespace lineweir
