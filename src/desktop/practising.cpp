#include "desktop/practising.h"

#include "desktop/desktop.h"
#include "desktop/practice_start.h"
#include "desktop/practice_windows.h"
#include "practice/practice_show.h"

namespace lineweir {

Practising::Practising(const CodePage& page, practice::PracticePort* port, Console& console,
                       Desktop& desktop)
    : desktop_(desktop) {
  if (port == nullptr) {
    start_ =
        std::make_unique<PracticeStart>(console, [&page] { return start_practice_process(page); });
    return;
  }
  show_ = std::make_unique<practice::PracticeShow>(console, *port);
  windows_ = std::make_unique<PracticeWindows>(desktop, *show_);
  show_->begin();
  windows_->flush();
}

Practising::~Practising() = default;

QWidget* Practising::window_of(const QString& form) const {
  return windows_ ? windows_->window_of(form) : desktop_.window_of(form);
}

}  // namespace lineweir
