#include "desktop/diagnosis_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>

#include "core/console.h"
#include "desktop/window_focus.h"
#include "state/wire.h"
#include "ui_diagnosis.h"

namespace lineweir {
namespace {

constexpr DialogRow diagnosis_row = {
    nullptr, [](QWidget& window) { Ui::Diagnosis().setupUi(&window); }, DialogKind::Window};

QPlainTextEdit& page_of(QWidget& window) {
  return *window.findChild<QPlainTextEdit*>(QStringLiteral("page"));
}

}  // namespace

DiagnosisForm::DiagnosisForm() : Form("Diagnosis") {
  caption = "Lineweir - Diagnosis";
  width = 12000;
  height = 7200;
}

DiagnosisWindow::DiagnosisWindow(Console& console, WindowFocus& focus,
                                 std::function<QWidget*()> main_window)
    : focus_(focus), frame_(form_, diagnosis_row, focus, std::move(main_window)) {
  form_.letters = console.Lineweir.letters;
  probes_.on_answers = [this](const std::vector<ServerSeen>& servers) {
    seen_.servers = servers;
    show({});
  };
  wire(console.Lineweir.DiagnosisMenuItem.on_click, console.trace,
       "Lineweir_DiagnosisMenuItem_Click", [this] { open(); });
  wire(form_.on_close, console.trace, "Diagnosis_Form_Unload", [this] { form_.hide(); });
}

void DiagnosisWindow::open() {
  form_.show();
  frame_.flush();
  if (!is_wired_) take_window();
  look();
  page_of(*frame_.window()).setFocus();
  focus_.give_to(*frame_.window());
}

void DiagnosisWindow::take_window() {
  is_wired_ = true;
  QWidget& window = *frame_.window();
  QObject::connect(window.findChild<QPushButton*>(QStringLiteral("lookAgain")),
                   &QPushButton::clicked, &window, [this] { look(); });
  QObject::connect(
      window.findChild<QPushButton*>(QStringLiteral("copy")), &QPushButton::clicked, &window,
      [&window] { QGuiApplication::clipboard()->setText(page_of(window).toPlainText()); });
}

void DiagnosisWindow::look() {
  seen_ = look_around ? look_around() : Surroundings{};
  if (seen_.servers.empty()) return show({});
  show(seen_.servers.size() == 1 ? "The server is being asked …\n"
                                 : "The servers are being asked …\n");
  probes_.start(seen_.servers);
}

void DiagnosisWindow::show(const std::string& server_state) {
  page_of(*frame_.window())
      .setPlainText(QString::fromStdString(text_of(findings_of(seen_)) + server_state));
}

}  // namespace lineweir
