#pragma once

#include <functional>
#include <string>

#include "desktop/dialog_frame.h"
#include "elements/button.h"
#include "elements/form.h"
#include "elements/label.h"
#include "platform/qt/qt_client_socket.h"

namespace lineweir {

struct Console;
class TrustedServers;
class WindowFocus;

// What is asked when a server shows a certificate that nobody vouches for.
class CertificateForm : public Form {
 public:
  CertificateForm();

  Label WhoLabel{*this, "WhoLabel"};
  Label FingerprintLabel{*this, "FingerprintLabel"};
  Label WhatLabel{*this, "WhatLabel"};
  Button TrustButton{*this, "TrustButton"};
  Button RefuseButton{*this, "RefuseButton"};
};

// Asks whether the certificate is trusted, in a window of its own that blocks nothing. Trusted, it
// is kept and the connection is asked for anew. One that has taken the place of a trusted one isn't
// connected to: the user may only forget the trusted one, and is asked again as for an unknown
// server when he connects the next time. Of several servers the next one is connected to where he
// doesn't trust the one that he is asked about.
class CertificateQuestion {
 public:
  using Certificate = platform::QtClientSocket::DoubtfulCertificate;

  CertificateQuestion(Console& console, WindowFocus& focus, std::function<QWidget*()> main_window);

  // Null where nothing can be trusted. It outlives this object.
  TrustedServers* trusted = nullptr;

  CertificateForm& form() { return form_; }
  const CertificateForm& form() const { return form_; }
  // Null until it is first asked.
  QWidget* window() const { return frame_.window(); }

  // What the user has refused isn't asked again by a console that tries to connect by itself.
  void ask(const Certificate& certificate);
  void flush();

 private:
  void tell();
  void refuse();
  void agree();
  void connect_anew();
  bool is_changed() const { return !certificate_.trusted_fingerprint.empty(); }

  Console& console_;
  WindowFocus& focus_;
  std::function<QWidget*()> main_window_;
  CertificateForm form_;
  DialogFrame frame_;
  Certificate certificate_;
  std::string refused_;
  // It stands there before the main window does, which would cover it.
  bool awaits_main_window_ = false;
};

}  // namespace lineweir
