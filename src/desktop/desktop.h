#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "desktop/announcer.h"
#include "desktop/certificate_question.h"
#include "desktop/close_question.h"
#include "desktop/diagnosis_window.h"
#include "desktop/dialog_frame.h"
#include "desktop/entry_layout.h"
#include "desktop/entry_place.h"
#include "desktop/main_frame.h"
#include "desktop/manual_key.h"
#include "desktop/manual_window.h"
#include "desktop/message_in_front.h"
#include "desktop/user_hands.h"
#include "desktop/window_focus.h"

namespace lineweir {

struct Console;

// Where background pictures lie: beside the program; a station's own, for a program that a package
// put there; and those of the package.
QStringList background_folders();

// The windows of one console.
class Desktop {
 public:
  // The console must outlive this object. `backgrounds` are the folders of the pictures behind
  // the main form's elements, best first.
  explicit Desktop(Console& console, const QStringList& backgrounds = background_folders());
  ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  MainFrame& main_frame() { return main_frame_; }
  UserHands& hands() { return hands_; }
  WindowFocus& focus() { return focus_; }
  Announcer& announcer() { return announcer_; }
  CloseQuestion& close_question() { return close_question_; }
  CertificateQuestion& certificate_question() { return certificate_question_; }
  ManualWindow& manual() { return manual_; }
  DiagnosisWindow& diagnosis() { return diagnosis_; }
  DialogFrame* dialog(const Form& form) const;

  // The window of the form of that name; null while it has none.
  QWidget* window_of(const QString& form_name) const;

  // Shows all changes now, and announces them.
  void flush();

 private:
  std::string form_of(const QWindow& window) const;

  Console& console_;
  UserHands hands_;
  WindowFocus focus_{hands_};
  MessageInFront message_;
  MainFrame main_frame_;
  std::vector<std::unique_ptr<DialogFrame>> dialogs_;
  EntryLayout entry_layout_;
  EntryPlace entry_place_;
  CloseQuestion close_question_;
  CertificateQuestion certificate_question_;
  ManualWindow manual_;
  DiagnosisWindow diagnosis_;
  ManualKey manual_key_;
  Announcer announcer_;
};

}  // namespace lineweir
