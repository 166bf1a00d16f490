#pragma once

#include <QProxyStyle>

class QPalette;

namespace lineweir {

struct Theme;

// The theme whose colours a palette for menus and dialogs has.
const Theme& theme_of(const QPalette& palette);

// The program's one style: that of Qt, with edges around menus and fields that can be seen on a
// dark window.
class ConsoleStyle final : public QProxyStyle {
 public:
  ConsoleStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace lineweir
