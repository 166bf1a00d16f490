#pragma once

#include <QString>
#include <memory>

class QWidget;

namespace lineweir {

class Desktop;
class PracticeStart;
class PracticeWindows;
struct CodePage;
struct Console;

namespace practice {
class PracticePort;
class PracticeShow;
}  // namespace practice

// What a console that has started has to do with practice: one for practice has its show, which
// begins here, and the real one the entry of the menu that starts the other.
class Practising {
 public:
  // The port is that of a console for practice, and null in the real one. All outlive this object.
  Practising(const CodePage& page, practice::PracticePort* port, Console& console,
             Desktop& desktop);
  ~Practising();
  Practising(const Practising&) = delete;
  Practising& operator=(const Practising&) = delete;

  // The window of the form of that name, also of the console's forms; null while it has none.
  QWidget* window_of(const QString& form) const;

 private:
  Desktop& desktop_;
  std::unique_ptr<PracticeStart> start_;
  std::unique_ptr<practice::PracticeShow> show_;
  std::unique_ptr<PracticeWindows> windows_;
};

}  // namespace lineweir
