#include "desktop/theme.h"

#include <doctest/doctest.h>

#include <QPalette>

namespace lineweir {
namespace {

double worst_contrast(QRgb text, const Shading& ground) {
  return std::min(contrast(QColor::fromRgb(text), QColor::fromRgb(ground.upper)),
                  contrast(QColor::fromRgb(text), QColor::fromRgb(ground.lower)));
}

double worst_contrast(const Surface& surface) {
  return worst_contrast(surface.text, surface.shading);
}

TEST_SUITE("theme") {
  TEST_CASE("contrast is that of the accessibility guidelines") {
    CHECK(contrast(Qt::black, Qt::white) == doctest::Approx(21));
    CHECK(contrast(Qt::white, Qt::white) == doctest::Approx(1));
    CHECK(contrast(QColor(0x77, 0x77, 0x77), Qt::white) == doctest::Approx(4.48).epsilon(0.01));
  }

  TEST_CASE("every text can be read on what it stands on, on both faces") {
    for (const Theme* theme : {&metal_theme, &grey_theme}) {
      for (const Surface* surface :
           {&theme->face, &theme->panel, &theme->key_up.surface, &theme->key_hover.surface,
            &theme->key_down.surface, &theme->key_disabled.surface, &theme->clock,
            &theme->dial.surface, &theme->red_dial.surface, &theme->message, &theme->note,
            &theme->window}) {
        CAPTURE(QColor::fromRgb(surface->text).name().toStdString());
        CAPTURE(QColor::fromRgb(surface->shading.upper).name().toStdString());
        CHECK(worst_contrast(*surface) >= readable_contrast);
      }
      CHECK(worst_contrast(theme->heading, theme->face.shading) >= readable_contrast);
      CHECK(worst_contrast(theme->clock_small_text, theme->clock.shading) >= readable_contrast);
      CHECK(worst_contrast(theme->warning_digits, theme->clock.shading) >= readable_contrast);
      CHECK(contrast(QColor::fromRgb(theme->control_text), QColor::fromRgb(theme->control)) >=
            readable_contrast);
      CHECK(worst_contrast(theme->disabled_text, theme->window.shading) >= readable_contrast);
      CHECK(contrast(QColor::fromRgb(theme->highlighted_text), QColor::fromRgb(theme->highlight)) >=
            readable_contrast);
    }
  }

  TEST_CASE("signs and lights stand out from the keys that they are on") {
    for (const Theme* theme : {&metal_theme, &grey_theme}) {
      for (const QRgb sign : {theme->drop_sign, theme->hold_sign}) {
        CHECK(worst_contrast(sign, theme->key_up.surface.shading) >= 2.3);
      }
    }
  }

  TEST_CASE("the ring of the focus stands out from all that it lies on") {
    for (const Theme* theme : {&metal_theme, &grey_theme}) {
      for (const Surface* surface :
           {&theme->face, &theme->panel, &theme->key_up.surface, &theme->key_hover.surface,
            &theme->key_down.surface, &theme->window}) {
        CHECK(worst_contrast(theme->focus_ring, surface->shading) >= 3);
      }
      CHECK(contrast(QColor::fromRgb(theme->focus_ring), QColor::fromRgb(theme->control)) >= 3);
    }
  }

  TEST_CASE("every row can be read in every state, on both faces, with a link and without") {
    for (const Theme* face : {&metal_theme, &grey_theme}) {
      for (const Theme* theme : {face, &without_link(*face)}) {
        for (int state = 0; state < row_state_count; ++state) {
          CAPTURE(state);
          const StripColors& colors = theme->strip(static_cast<RowState>(state));
          CHECK(worst_contrast(colors.surface) >= readable_contrast);
        }
      }
    }
  }

  TEST_CASE("a strip on air is darker than any other of paper, and each sign stands out from it") {
    for (const Theme* theme : {&metal_theme, &grey_theme}) {
      const auto& red = theme->strip(RowState::OnAir).surface.shading;
      for (const RowState other : {RowState::Next, RowState::Ready, RowState::Ringing}) {
        const auto& shading = theme->strip(other).surface.shading;
        CHECK(contrast(QColor::fromRgb(red.upper), QColor::fromRgb(shading.upper)) >= 3);
        CHECK(contrast(QColor::fromRgb(red.lower), QColor::fromRgb(shading.lower)) >= 3);
      }
      for (const StripColors& colors : *theme->strips) {
        if (colors.sign == StripSign::None) continue;
        CHECK(worst_contrast(colors.sign_color, colors.surface.shading) >= 3);
      }
      CHECK(worst_contrast(theme->strip(RowState::OnAir).frame_color, red) >= 3);
    }
  }

  TEST_CASE("the edges of fields and boxes can be seen") {
    for (const Theme* theme : {&metal_theme, &grey_theme}) {
      CHECK(contrast(QColor::fromRgb(theme->control_edge), QColor::fromRgb(theme->control)) >= 3);
    }
  }

  TEST_CASE("a colour from outside that can't be read gives way to black or white") {
    CHECK(readable_on(Qt::white, Qt::yellow) == QColor(Qt::black));
    CHECK(readable_on(Qt::black, QColor(20, 20, 60)) == QColor(Qt::white));
    CHECK(readable_on(Qt::white, Qt::blue) == QColor(Qt::blue));
    for (int red = 0; red < 256; red += 51) {
      for (int green = 0; green < 256; green += 51) {
        for (int blue = 0; blue < 256; blue += 51) {
          const QColor ground(red, green, blue);
          CHECK(contrast(ground, readable_on(ground, ground)) >= readable_contrast);
        }
      }
    }
  }
}

}  // namespace
}  // namespace lineweir
