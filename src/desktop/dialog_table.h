#pragma once

#include <span>

class QWidget;

namespace lineweir {

struct Console;
class Form;

enum class DialogKind {
  // A window of its own, which other windows may cover.
  Window,
  // Stays in front of the main window.
  Dialog,
  // Comes by itself, in front of the window that the user works in, and leaves that the keyboard
  // unless the user waits for it.
  Message,
  // Without a frame.
  Splash,
};

struct DialogRow {
  Form& (*form)(Console& console);
  // Puts the widgets drawn in Designer into the window.
  void (*set_up)(QWidget& window);
  DialogKind kind;
};

// All forms but the main one. A new dialog is its file in ui/ and its row here.
std::span<const DialogRow> dialog_table();

}  // namespace lineweir
