#include "desktop/pdf_tables.h"

#include <QFont>
#include <QIODevice>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <QTextOption>
#include <algorithm>
#include <numeric>

#include "base/failure.h"

namespace lineweir {
namespace {

constexpr int dots_per_inch = 300;
constexpr double margin_mm = 12;
constexpr double text_points = 7;
constexpr double title_points = 11;
// In dots.
constexpr double cell_gap = 12;
constexpr double row_gap = 8;
constexpr double title_gap = 30;
constexpr double line_width = 1;

QString shown(const std::string& utf8) { return QString::fromStdString(utf8); }

QFont font_of(double points, bool bold) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPointSizeF(points);
  font.setBold(bold);
  return font;
}

// What is written, until it is taken.
class TakenBytes final : public QIODevice {
 public:
  TakenBytes() { open(QIODevice::WriteOnly); }
  bool isSequential() const override { return true; }
  std::string take() { return std::exchange(bytes_, {}); }

 protected:
  qint64 readData(char*, qint64) override { return -1; }
  qint64 writeData(const char* data, qint64 size) override {
    bytes_.append(data, static_cast<std::size_t>(size));
    return size;
  }

 private:
  std::string bytes_;
};

class PdfTable final : public platform::PrintedTable {
 public:
  PdfTable(const std::string& title, const std::vector<platform::PrintedColumn>& columns)
      : title_(shown(title)) {
    writer_ = std::make_unique<QPdfWriter>(&bytes_);
    writer_->setTitle(title_);
    writer_->setCreator(QStringLiteral("Lineweir"));
    writer_->setResolution(dots_per_inch);
    const bool american = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    writer_->setPageSize(QPageSize(american ? QPageSize::Letter : QPageSize::A4));
    writer_->setPageOrientation(QPageLayout::Landscape);
    writer_->setPageMargins(QMarginsF(margin_mm, margin_mm, margin_mm, margin_mm),
                            QPageLayout::Millimeter);
    if (!painter_.begin(writer_.get())) fail();
    page_ = painter_.viewport();
    for (const auto& column : columns) headings_ += shown(column.heading);
    place_columns(columns);
    begin_page();
  }

  void add_row(const std::vector<std::string>& texts) override {
    QStringList shown_texts;
    for (const std::string& text : texts) shown_texts += shown(text);
    painter_.setFont(font_of(text_points, false));
    if (top_ + height_of(shown_texts) > page_.bottom()) {
      if (!writer_->newPage()) fail();
      begin_page();
      painter_.setFont(font_of(text_points, false));
    }
    draw_row(shown_texts);
  }

  void finish() override {
    painter_.end();
    writer_.reset();
  }

  std::string take() override { return bytes_.take(); }

 private:
  [[noreturn]] void fail() {
    throw Failure(failure_number::file_access, "A page can't be printed.");
  }

  void place_columns(const std::vector<platform::PrintedColumn>& columns) {
    const double all = std::accumulate(
        columns.begin(), columns.end(), 0.0,
        [](double sum, const platform::PrintedColumn& column) { return sum + column.width; });
    double left = page_.left();
    for (const auto& column : columns) {
      const double width = page_.width() * column.width / std::max(all, 1.0);
      places_.push_back({left, width - cell_gap});
      left += width;
    }
  }

  void begin_page() {
    ++page_number_;
    top_ = page_.top();
    painter_.setFont(font_of(title_points, true));
    const double title_height = painter_.fontMetrics().height();
    const QRectF line(page_.left(), top_, page_.width(), title_height);
    painter_.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, title_);
    painter_.setFont(font_of(text_points, false));
    painter_.drawText(line, Qt::AlignRight | Qt::AlignVCenter,
                      QStringLiteral("Page %1").arg(page_number_));
    top_ += title_height + title_gap;
    painter_.setFont(font_of(text_points, true));
    draw_row(headings_);
  }

  QRectF cell(qsizetype column) const {
    const auto& [left, width] = places_[static_cast<std::size_t>(column)];
    return {left, top_, width, static_cast<double>(page_.height())};
  }

  qsizetype cells(const QStringList& texts) const {
    return std::min(texts.size(), static_cast<qsizetype>(places_.size()));
  }

  double height_of(const QStringList& texts) {
    double height = painter_.fontMetrics().height();
    for (qsizetype i = 0; i < cells(texts); ++i) {
      if (texts[i].isEmpty()) continue;
      height = std::max(height, painter_.boundingRect(cell(i), texts[i], wrapped_).height());
    }
    return height + row_gap;
  }

  void draw_row(const QStringList& texts) {
    const double height = height_of(texts);
    for (qsizetype i = 0; i < cells(texts); ++i) {
      if (!texts[i].isEmpty()) painter_.drawText(cell(i), texts[i], wrapped_);
    }
    top_ += height;
    painter_.setPen(QPen(Qt::lightGray, line_width));
    const double line = top_ - row_gap / 2;
    painter_.drawLine(QPointF(page_.left(), line), QPointF(page_.right(), line));
    painter_.setPen(Qt::black);
  }

  static QTextOption wrapping() {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
  }

  struct Place {
    double left;
    double width;
  };

  QString title_;
  QStringList headings_;
  TakenBytes bytes_;
  std::unique_ptr<QPdfWriter> writer_;
  QPainter painter_;
  QRect page_;
  std::vector<Place> places_;
  QTextOption wrapped_ = wrapping();
  double top_ = 0;
  int page_number_ = 0;
};

}  // namespace

std::unique_ptr<platform::PrintedTable> PdfTables::begin(
    const std::string& title, const std::vector<platform::PrintedColumn>& columns) {
  return std::make_unique<PdfTable>(title, columns);
}

}  // namespace lineweir
