#pragma once

#include <QTextBrowser>
#include <utility>
#include <vector>

namespace lineweir {

// The manual's pages as one text with headings that can be gone to. It is part of the program, and
// needs no file and no network.
class ManualPages final : public QTextBrowser {
 public:
  struct Heading {
    QString text;
    // What a link to it is called: "the-call-log".
    QString anchor;
    // 1 for a page's title.
    int level;
    int block;
  };

  explicit ManualPages(QWidget* parent = nullptr);

  const std::vector<Heading>& headings() const { return headings_; }

  // False where there is no such heading.
  bool go_to(const QString& anchor);
  void go_to(const Heading& heading);
  // That piece of the text, and between which places of it the reader looks now.
  QTextCursor piece(int position, int length) const;
  std::pair<int, int> positions_in_sight() const;

  // Selects what was found there, with some lines above it in sight.
  void show_found(const QTextCursor& found);
  // The heading above the place that was gone to, as long as that is in sight, and then above what
  // stands at the upper edge; null above the first one.
  const Heading* heading_in_sight() const;

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void collect_headings();
  void dress_tables();
  void dress_links();
  void space_out();
  void follow(const QUrl& link);
  int top_of(int block) const;

  std::vector<Heading> headings_;
};

}  // namespace lineweir
