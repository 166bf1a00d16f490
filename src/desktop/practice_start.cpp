#include "desktop/practice_start.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

#include "core/console.h"
#include "letters/code_pages.h"
#include "state/wire.h"

namespace lineweir {

PracticeStart::PracticeStart(Console& console, std::function<bool()> start) : console_(console) {
  wire(console.Lineweir.PracticeMenu.on_click, console.trace, "Lineweir_PracticeMenu_Click",
       [this, start = std::move(start)] {
         if (!start()) console_.messages.ShowMessage("The practice show could not be started!");
       });
}

PracticeStart::~PracticeStart() { console_.Lineweir.PracticeMenu.on_click.forget_handler(); }

bool start_practice_process(const CodePage& page) {
  QProcess process;
  process.setProgram(QCoreApplication::applicationFilePath());
  process.setArguments({QStringLiteral("--practice"), QStringLiteral("--charset"),
                        QString::fromLatin1(page.name.data(), qsizetype(page.name.size()))});
  process.setWorkingDirectory(QDir::currentPath());
  // Ports, reports and pictures that are asked for are this console's.
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const QString& name : environment.keys()) {
    if (name.startsWith(QLatin1String("LINEWEIR_"))) environment.remove(name);
  }
  process.setProcessEnvironment(environment);
  return process.startDetached();
}

}  // namespace lineweir
