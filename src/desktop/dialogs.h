#pragma once

#include <QString>
#include <functional>

#include "letters/letters.h"
#include "platform/dialogs.h"

class QWidget;

namespace lineweir {

// The system's own questions. Each belongs to the window in which it was asked for, and gives the
// keyboard back to it.
class SystemDialogs final : public platform::Dialogs {
 public:
  // All texts are in the letters, which must outlive this object.
  explicit SystemDialogs(const Letters& letters) : letters_(letters) {}

  // Gives the window that the user works in; null while there is none.
  std::function<QWidget*()> owner;

  std::optional<std::string> ask_file(const platform::FileQuestion& question) override;
  std::optional<std::string> ask_input(const platform::InputQuestion& question) override;
  bool ask_yes_no(const std::string& question) override;
  std::optional<platform::FontChoice> ask_font(const platform::FontChoice& present) override;
  void message(const std::string& text) override;

 private:
  // Runs the question in front of the window that the user works in.
  void ask(const std::function<void(QWidget* window)>& question) const;
  QString shown(const std::string& text) const;
  std::string text_of(const QString& shown) const;

  const Letters& letters_;
};

// The filter of a file question as Qt writes it: "All Files (*.*)|*.*" becomes "All Files (*)".
QString qt_filter(const std::string& filter);

}  // namespace lineweir
