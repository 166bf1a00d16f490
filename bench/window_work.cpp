// Measures the work of the main window from inside, beside a bare Qt window with as many labels:
// the time from a change of a text to its painting, and a storm of resizes.
//
//   window_work CHANGES RESIZES    on a display

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "desktop/program.h"
#include "desktop/shown_console.h"
#include "support/rebuild_count.h"

namespace lineweir {
namespace {

constexpr int pause_milliseconds = 40;
constexpr int bare_columns = 20;
// The time between two sizes that a hand gives a window by its edge.
constexpr int drag_milliseconds = 20;

class CountedLabel : public QLabel {
 public:
  using QLabel::QLabel;
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    ++paints;
  }
};

// Lets the loop sleep and work until so much time has passed.
void rest(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

double milliseconds_of(const QElapsedTimer& time) {
  return static_cast<double>(time.nsecsElapsed()) / 1e6;
}

double until(const std::function<bool()>& painted) {
  QElapsedTimer time;
  time.start();
  while (!painted()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  return milliseconds_of(time);
}

void report(const char* what, std::vector<double> times) {
  std::ranges::sort(times);
  double sum = 0;
  for (const double time : times) sum += time;
  std::printf("%-44s median %7.2f  99 of 100 %7.2f  most %7.2f  sum %8.1f ms\n", what,
              times[times.size() / 2], times[times.size() * 99 / 100], times.back(), sum);
}

// A window of labels in rows, which it moves by itself as the console does.
struct BareWindow {
  explicit BareWindow(int count) {
    for (int i = 0; i < count; ++i) {
      labels.push_back(new CountedLabel(QString::number(i), &window));
    }
    window.resize(800, 592);
    lay_out();
    window.show();
  }

  void lay_out() {
    const int rows = (static_cast<int>(labels.size()) + bare_columns - 1) / bare_columns;
    const int width = window.width() / bare_columns;
    const int height = std::max(1, window.height() / rows);
    for (int i = 0; i < static_cast<int>(labels.size()); ++i) {
      labels[static_cast<std::size_t>(i)]->setGeometry(i % bare_columns * width,
                                                       i / bare_columns * height, width, height);
    }
  }

  QWidget window;
  std::vector<CountedLabel*> labels;
};

int shown_labels(test::ShownConsole& desk) {
  int count = 0;
  for (const ElementWidget* widget : desk.canvas().element_widgets()) count += widget->isVisible();
  return count;
}

void show_20_rows(test::ShownConsole& desk) {
  desk.console.layout.set_line_count(20);
  desk.console.layout.RedefineScreen();
  desk.form().EventClockMenu.on_click();
  desk.form().TimeClockMenuItem.on_click();
  desk.platform.loop.advance(platform::Milliseconds(1000));
  desk.settle();
  rest(500);
}

void measure_changes(test::ShownConsole& desk, BareWindow& bare, int changes) {
  std::vector<double> console_times;
  std::vector<double> bare_times;
  for (int i = 0; i < changes; ++i) {
    rest(pause_milliseconds);
    Label& name = desk.form().LineName(i % 20);
    const ElementWidget& widget = desk.widget(name);
    const int before = widget.paint_count();
    name.caption = "Caller " + std::to_string(i);
    console_times.push_back(until([&] { return widget.paint_count() > before; }));

    rest(pause_milliseconds);
    CountedLabel& label = *bare.labels[static_cast<std::size_t>(i % 20)];
    const int painted = label.paints;
    label.setText(QString::number(1000 + i));
    bare_times.push_back(until([&] { return label.paints > painted; }));
  }
  report("change to paint, console", std::move(console_times));
  report("change to paint, bare window", std::move(bare_times));
}

void measure_resizes(test::ShownConsole& desk, BareWindow& bare, int resizes) {
  std::vector<double> console_times;
  std::vector<double> bare_times;
  test::RebuildCount rebuilds(desk.form());
  QElapsedTimer time;
  for (int i = 0; i < resizes; ++i) {
    const QSize size(820 + 4 * i, 620 + 3 * i);
    rest(drag_milliseconds);
    time.start();
    desk.window().resize(size);
    // The console's own time goes on as the clock on the wall does.
    desk.platform.loop.advance(platform::Milliseconds(drag_milliseconds));
    QCoreApplication::processEvents();
    desk.settle();
    console_times.push_back(milliseconds_of(time));

    rest(drag_milliseconds);
    time.start();
    bare.window.resize(size);
    bare.lay_out();
    QCoreApplication::processEvents();
    bare_times.push_back(milliseconds_of(time));
  }
  report("a resize in a storm, console", std::move(console_times));
  report("a resize in a storm, bare window", std::move(bare_times));
  std::printf("rebuilds of the console in %d resizes of %d ms: %d\n", resizes, drag_milliseconds,
              rebuilds.count);
}

}  // namespace
}  // namespace lineweir

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  lineweir::dress_application();
  const int changes = argc > 1 ? std::atoi(argv[1]) : 200;
  const int resizes = argc > 2 ? std::atoi(argv[2]) : 100;
  lineweir::test::ShownConsole desk;
  lineweir::show_20_rows(desk);
  lineweir::BareWindow bare(lineweir::shown_labels(desk));
  lineweir::rest(500);
  std::printf("20 rows: %d widgets on the screen\n", lineweir::shown_labels(desk));
  lineweir::measure_changes(desk, bare, changes);
  lineweir::measure_resizes(desk, bare, resizes);
  return 0;
}
