#include "desktop/manual_pages.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QImage>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>
#include <QUrl>
#include <algorithm>
#include <array>

// The resources of a library are there once they are asked for, from outside of any namespace.
static void take_manual() { Q_INIT_RESOURCE(manual); }

namespace lineweir {
namespace {

const QString manual_folder = QStringLiteral(":/manual/");
constexpr std::array pages = {"manual.md", "keys.md"};

// A picture shows its windows at three halves of their size, and is as wide as the text at most.
constexpr double picture_scale = 1.5;
constexpr int widest_picture = 540;
constexpr int page_margin = 12;
constexpr double cell_padding = 5;
constexpr double behind_paragraph = 8;
constexpr double above_heading = 14;

QString markdown() {
  QString text;
  for (const char* page : pages) {
    QFile file(manual_folder + QLatin1String(page));
    if (file.open(QIODevice::ReadOnly)) text += QString::fromUtf8(file.readAll()) + u'\n';
  }
  return text;
}

// As those who show markdown on the web name the place of a heading.
QString anchor_of(const QString& heading) {
  QString anchor;
  for (const QChar character : heading.toLower()) {
    if (character == u' ') anchor += u'-';
    if (character.isLetterOrNumber() || character == u'-' || character == u'_') anchor += character;
  }
  return anchor;
}

// Whether all of its words are those of a program or a file.
bool is_example(const QTextBlock& block) {
  for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
    if (!piece.fragment().charFormat().fontFixedPitch()) return false;
  }
  return true;
}

QImage shown_picture(const QString& path, double scale) {
  const QImage picture(path);
  if (picture.isNull()) return {};
  const double width = std::min(picture.width() / picture_scale, double{widest_picture});
  QImage shown = picture.scaledToWidth(qRound(width * scale), Qt::SmoothTransformation);
  shown.setDevicePixelRatio(scale);
  return shown;
}

}  // namespace

ManualPages::ManualPages(QWidget* parent) : QTextBrowser(parent) {
  take_manual();
  setOpenLinks(false);
  document()->setDocumentMargin(page_margin);
  document()->setMarkdown(markdown(), QTextDocument::MarkdownDialectGitHub);
  dress_tables();
  dress_links();
  space_out();
  collect_headings();
  connect(this, &QTextBrowser::anchorClicked, this, &ManualPages::follow);
}

void ManualPages::collect_headings() {
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    const int level = block.blockFormat().headingLevel();
    if (level == 0) continue;
    const QString anchor = anchor_of(block.text());
    const auto same = std::ranges::count_if(
        headings_, [&](const Heading& heading) { return anchor_of(heading.text) == anchor; });
    const QString number = same == 0 ? QString() : QStringLiteral("-%1").arg(same);
    headings_.push_back({block.text(), anchor + number, level, block.blockNumber()});
  }
}

void ManualPages::dress_tables() {
  for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
    auto* table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr) continue;
    QTextTableFormat format = table->format();
    format.setCellPadding(cell_padding);
    format.setCellSpacing(0);
    format.setBorderCollapse(true);
    format.setBorder(1);
    format.setBorderBrush(QColor(128, 128, 128));
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setTopMargin(behind_paragraph);
    table->setFormat(format);
  }
}

// Links have the colour of the text, which is right on both faces, and a line under them.
void ManualPages::dress_links() {
  std::vector<QTextCursor> links;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
      const QTextFragment fragment = piece.fragment();
      if (!fragment.charFormat().isAnchor()) continue;
      links.push_back(this->piece(fragment.position(), fragment.length()));
    }
  }
  for (QTextCursor& link : links) {
    QTextCharFormat format = link.charFormat();
    format.clearForeground();
    format.setFontUnderline(true);
    link.setCharFormat(format);
  }
}

void ManualPages::space_out() {
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    QTextCursor cursor(block);
    if (cursor.currentTable() != nullptr || cursor.currentList() != nullptr) continue;
    // The lines of an example stand close together, and nothing else is empty.
    if (block.text().isEmpty() || is_example(block)) continue;
    QTextBlockFormat format;
    format.setBottomMargin(behind_paragraph);
    format.setTopMargin(block.blockFormat().headingLevel() > 0 ? above_heading : 0);
    cursor.mergeBlockFormat(format);
  }
}

QVariant ManualPages::loadResource(int type, const QUrl& name) {
  if (type != QTextDocument::ImageResource) return {};
  return shown_picture(manual_folder + name.path(), devicePixelRatioF());
}

void ManualPages::follow(const QUrl& link) {
  if (!link.fragment().isEmpty()) {
    go_to(link.fragment());
    return;
  }
  // A link to a page leads to its title.
  for (std::size_t page = 0, title = 0; const Heading& heading : headings_) {
    if (heading.level != 1) continue;
    page = title++;
    if (page < pages.size() && link.path() == QLatin1String(pages[page])) return go_to(heading);
  }
}

bool ManualPages::go_to(const QString& anchor) {
  const auto heading = std::ranges::find(headings_, anchor, &Heading::anchor);
  if (heading == headings_.end()) return false;
  go_to(*heading);
  return true;
}

void ManualPages::go_to(const Heading& heading) {
  QTextCursor cursor(document()->findBlockByNumber(heading.block));
  setTextCursor(cursor);
  verticalScrollBar()->setValue(top_of(heading.block));
}

QTextCursor ManualPages::piece(int position, int length) const {
  QTextCursor cursor(document());
  cursor.setPosition(position);
  cursor.setPosition(position + length, QTextCursor::KeepAnchor);
  return cursor;
}

std::pair<int, int> ManualPages::positions_in_sight() const {
  const QRect sight = viewport()->rect();
  // A row of a table whose cells begin above the edge counts as in sight, and so does the last
  // line.
  const int first = cursorForPosition(sight.topLeft()).block().position();
  const QTextBlock last = cursorForPosition(sight.bottomRight()).block();
  return {first, last.position() + last.length()};
}

void ManualPages::show_found(const QTextCursor& found) {
  setTextCursor(found);
  QScrollBar& bar = *verticalScrollBar();
  bar.setValue(bar.value() + cursorRect().top() - viewport()->height() / 3);
}

// The reader goes on in the same lines, however wide they are now.
void ManualPages::resizeEvent(QResizeEvent* event) {
  const int block = cursorForPosition(QPoint(0, 0)).block().blockNumber();
  const int below = verticalScrollBar()->value() - top_of(block);
  QTextBrowser::resizeEvent(event);
  verticalScrollBar()->setValue(top_of(block) + below);
}

int ManualPages::top_of(int block) const {
  const QTextBlock found = document()->findBlockByNumber(block);
  return qRound(document()->documentLayout()->blockBoundingRect(found).top());
}

const ManualPages::Heading* ManualPages::heading_in_sight() const {
  // What is gone to stands at the edge, or a pixel beside it.
  const QRect gone_to = cursorRect();
  const bool seen = viewport()->rect().contains(gone_to);
  const int edge = verticalScrollBar()->value() + (seen ? gone_to.top() : page_margin);
  const Heading* in_sight = nullptr;
  for (const Heading& heading : headings_) {
    if (top_of(heading.block) > edge) break;
    in_sight = &heading;
  }
  return in_sight;
}

}  // namespace lineweir
