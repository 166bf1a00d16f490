#include "desktop/certificate_question.h"

#include <QWindow>

#include "base/failure.h"
#include "core/console.h"
#include "desktop/trusted_servers.h"
#include "desktop/window_focus.h"
#include "state/guard.h"
#include "state/server_addresses.h"
#include "state/wire.h"
#include "ui_certificate_question.h"

namespace lineweir {
namespace {

constexpr DialogRow certificate_question_row = {
    nullptr, [](QWidget& window) { Ui::CertificateQuestion().setupUi(&window); },
    DialogKind::Message};

// So that it is read and compared in two lines of equal length.
std::string in_two_lines(const std::string& fingerprint) {
  const std::size_t middle = fingerprint.size() / 2;
  if (middle == 0) return fingerprint;
  return fingerprint.substr(0, middle) + "\n" + fingerprint.substr(middle + 1);
}

}  // namespace

CertificateForm::CertificateForm() : Form("CertificateQuestion") {
  width = 7200;
  height = 2700;
}

CertificateQuestion::CertificateQuestion(Console& console, WindowFocus& focus,
                                         std::function<QWidget*()> main_window)
    : console_(console),
      focus_(focus),
      main_window_(std::move(main_window)),
      frame_(form_, certificate_question_row, focus, main_window_) {
  form_.letters = console.Lineweir.letters;
  wire(form_.RefuseButton.on_click, console.trace, "CertificateQuestion_RefuseButton_Click",
       [this] { refuse(); });
  wire(form_.TrustButton.on_click, console.trace, "CertificateQuestion_TrustButton_Click",
       [this] { agree(); });
}

void CertificateQuestion::ask(const Certificate& certificate) {
  const bool by_itself = !console_.server_connection.begun_in_hand();
  // A console that comes back by itself has other servers to go to; only the user is asked.
  const bool several = console_.server_connection.several();
  if (by_itself && (several || certificate.fingerprint == refused_)) return;
  certificate_ = certificate;
  refused_ = certificate.fingerprint;
  tell();
  form_.show();
  form_.RefuseButton.set_focus();
  frame_.flush();
  // One that comes while the console looks for its server may find the user in the middle of a
  // word.
  if (!by_itself) focus_.give_to(*frame_.window());
  const QWidget* main = main_window_();
  awaits_main_window_ = main == nullptr || !main->isVisible();
}

void CertificateQuestion::flush() {
  frame_.flush();
  const QWidget* main = main_window_();
  if (!awaits_main_window_ || main == nullptr || !main->isVisible()) return;
  awaits_main_window_ = false;
  QWidget* window = frame_.window();
  if (!form_.visible || window->windowHandle() == nullptr) return;
  window->windowHandle()->setTransientParent(main->windowHandle());
  window->raise();
  focus_.give_to(*window);
}

void CertificateQuestion::tell() {
  // Of several servers two may be on one host.
  const std::string server = console_.server_connection.several()
                                 ? name_of(StudioServer{certificate_.host, certificate_.port})
                                 : certificate_.host;
  const std::string shown = in_two_lines(certificate_.fingerprint);
  if (is_changed()) {
    form_.caption = "Another certificate";
    form_.WhoLabel.caption =
        "The certificate of " + server + " isn't the one that was trusted before.";
    form_.FingerprintLabel.caption =
        "Now:\n" + shown + "\nTrusted before:\n" + in_two_lines(certificate_.trusted_fingerprint);
    form_.WhatLabel.caption =
        "Somebody may stand between this console and the server. Lineweir doesn't connect. If the "
        "server was set up anew, forget the trusted certificate and connect again.";
    form_.TrustButton.caption = "Forget the &trusted one";
    form_.RefuseButton.caption = "&Keep it";
    return;
  }
  form_.caption = "Trust this certificate?";
  form_.WhoLabel.caption =
      "Nobody whom this machine knows vouches for the certificate of " + server + ".";
  form_.FingerprintLabel.caption = "Its fingerprint (SHA-256):\n" + shown;
  form_.WhatLabel.caption =
      "Compare it with the one that the server's log shows at its start. If they are the same you "
      "may trust it; you are not asked again.";
  form_.TrustButton.caption = "&Trust and connect";
  form_.RefuseButton.caption = "&Don't trust";
}

void CertificateQuestion::refuse() {
  form_.unload();
  if (console_.server_connection.pass_over_asked()) connect_anew();
}

void CertificateQuestion::agree() {
  form_.unload();
  refused_.clear();
  if (trusted == nullptr) return;
  attempt(
      [&] {
        if (is_changed()) return trusted->forget(certificate_.host, certificate_.port);
        trusted->trust(certificate_.host, certificate_.port, certificate_.fingerprint);
      },
      [&](const Failure& failure) { console_.messages.tell(failure); });
  if (!is_changed()) connect_anew();
}

void CertificateQuestion::connect_anew() {
  if (console_.WinsockOptions.visible) return console_.WinsockOptions.SockConnect.on_click();
  console_.MyMsgbox.ReconnectButton.on_click();
}

}  // namespace lineweir
