#include "desktop/console_style.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFontMetrics>
#include <QIcon>
#include <QPainter>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "desktop/painter_controls.h"
#include "desktop/question_icons.h"
#include "desktop/scroll_bar_parts.h"
#include "desktop/sign_icon.h"
#include "desktop/theme.h"

namespace lineweir {
namespace {

// The room between the edge of a control and the text in it.
constexpr int field_padding = 5;
constexpr int button_padding = 12;
// A button is at least so many letters wide, so that the buttons of a dialog look alike.
constexpr int button_letters = 8;
// Between a check box and the ring around its text.
constexpr int ring_gap = 3;
// Between the title of a group and the line around it.
constexpr int group_gap = 4;
// What has an edge of its own leaves room in it for the ring.
constexpr int frame_width = 2;
constexpr int separator_inset = 6;
constexpr int scroll_bar_width = 12;

ControlState state_of(const QStyleOption& option) {
  return {option.state.testFlag(QStyle::State_Enabled),
          option.state.testFlag(QStyle::State_MouseOver),
          option.state.testFlag(QStyle::State_Sunken) || option.state.testFlag(QStyle::State_On),
          option.state.testFlag(QStyle::State_HasFocus)};
}

bool is_default(const QStyleOption& option) {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  return button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
}

QFontMetrics metrics_of(const QStyleOption* option, const QWidget* widget) {
  if (widget != nullptr) return widget->fontMetrics();
  return option != nullptr ? option->fontMetrics : QFontMetrics(QFont());
}

// As high as the letters, and odd, so that a mark has a middle.
int indicator_size(const QStyleOption* option, const QWidget* widget) {
  return metrics_of(option, widget).height() | 1;
}

void draw_combo(QPainter& painter, const QStyleOptionComboBox& box) {
  const Theme& theme = theme_of(box.palette);
  ControlState state = state_of(box);
  state.pressed = false;
  if (box.editable) {
    paint_field(painter, box.rect, state, box.palette.color(QPalette::Base), theme);
  } else {
    paint_button(painter, box.rect, state, false, theme);
  }
  const int side = box.rect.height();
  const QRect arrow(box.rect.right() - side + 1, box.rect.top(), side, side);
  const auto role = box.editable ? QPalette::Text : QPalette::ButtonText;
  paint_down_arrow(painter, arrow, box.palette.color(role));
}

}  // namespace

const Theme& theme_of(const QPalette& palette) {
  const QRgb window = palette.color(QPalette::Window).rgb();
  return window == grey_theme.window.shading.upper ? grey_theme : metal_theme;
}

ConsoleStyle::ConsoleStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void ConsoleStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
  const Theme& theme = theme_of(option->palette);
  const ControlState state = state_of(*option);
  switch (element) {
    case PE_PanelButtonCommand:
      return paint_button(*painter, option->rect, state, is_default(*option), theme);
    case PE_PanelLineEdit: {
      const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
      if (frame != nullptr && frame->lineWidth > 0) {
        return paint_field(*painter, option->rect, state, option->palette.color(QPalette::Base),
                           theme);
      }
      painter->fillRect(option->rect, option->palette.color(QPalette::Base));
      return;
    }
    case PE_FrameLineEdit:
    case PE_FrameMenu:
    case PE_Frame:
      return paint_field_edge(*painter, option->rect, state, theme);
    case PE_FrameGroupBox:
      // Below its title.
      return paint_group_edge(
          *painter, option->rect.adjusted(0, option->fontMetrics.height() + group_gap, 0, 0),
          theme);
    case PE_IndicatorCheckBox:
      return paint_check_box(*painter, option->rect, state,
                             option->state.testFlag(State_On)         ? CheckMark::Check
                             : option->state.testFlag(State_NoChange) ? CheckMark::Some
                                                                      : CheckMark::None,
                             theme);
    case PE_IndicatorRadioButton:
      return paint_radio_button(*painter, option->rect, state, option->state.testFlag(State_On),
                                theme);
    case PE_FrameFocusRect:
      // A button has its ring around its edge.
      if (qobject_cast<const QPushButton*>(widget) != nullptr) return;
      if (qobject_cast<const QComboBox*>(widget) != nullptr) return;
      // So has a list, in which the chosen entry stands out.
      if (qobject_cast<const QAbstractItemView*>(widget) != nullptr) return;
      return paint_control_focus(*painter, option->rect, theme);
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void ConsoleStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  const auto* entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element == CE_MenuItem && entry != nullptr &&
      entry->menuItemType == QStyleOptionMenuItem::Separator) {
    const QRect& place = option->rect;
    painter->fillRect(QRect(place.left() + separator_inset, place.center().y(),
                            place.width() - 2 * separator_inset, 1),
                      QColor::fromRgb(theme_of(option->palette).control_edge));
    return;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void ConsoleStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
  if (const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
      control == CC_ComboBox && box != nullptr) {
    return draw_combo(*painter, *box);
  }
  if (control == CC_ScrollBar) {
    const Theme& theme = theme_of(option->palette);
    painter->fillRect(option->rect, option->palette.color(QPalette::Base));
    ControlState state = state_of(*option);
    state.pressed = option->state.testFlag(State_Sunken);
    const QRect slider = subControlRect(control, option, SC_ScrollBarSlider, widget);
    return paint_scroll_slider(*painter, slider, state, theme);
  }
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect ConsoleStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                   SubControl part, const QWidget* widget) const {
  if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
    const int side = option->rect.height();
    const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    // A line that takes typing has padding of its own.
    const int left = box != nullptr && box->editable ? field_padding - 2 : field_padding;
    return option->rect.adjusted(left, 2, -side, -2);
  }
  if (control == CC_ComboBox && part == SC_ComboBoxArrow) {
    const int side = option->rect.height();
    return {option->rect.right() - side + 1, option->rect.top(), side, side};
  }
  if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
      control == CC_ScrollBar && bar != nullptr) {
    return visualRect(bar->direction, bar->rect, scroll_bar_part(*bar, part));
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

QRect ConsoleStyle::subElementRect(SubElement element, const QStyleOption* option,
                                   const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  if (element == SE_CheckBoxFocusRect || element == SE_RadioButtonFocusRect) {
    const QRect text = QProxyStyle::subElementRect(
        element == SE_CheckBoxFocusRect ? SE_CheckBoxContents : SE_RadioButtonContents, option,
        widget);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const int width = button == nullptr || button->text.isEmpty()
                          ? 0
                          : option->fontMetrics.size(Qt::TextShowMnemonic, button->text).width();
    return QRect(text.left() - ring_gap, option->rect.top(), width + 2 * ring_gap + 1,
                 option->rect.height());
  }
  return rect;
}

QSize ConsoleStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& contents, const QWidget* widget) const {
  const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  const QFontMetrics metrics = metrics_of(option, widget);
  const int high = metrics.height() + 2 * field_padding;
  switch (type) {
    case CT_PushButton: {
      const int wide = metrics.averageCharWidth() * button_letters + 2 * button_padding;
      return {std::max(wide, contents.width() + 2 * button_padding), high + 2};
    }
    case CT_LineEdit:
      return {size.width(), std::max(size.height(), high)};
    case CT_ComboBox:
      return {contents.width() + 2 * field_padding + high, high + 2};
    case CT_CheckBox:
    case CT_RadioButton:
      return {size.width() + ring_gap + 1, std::max(size.height(), metrics.height() + 6)};
    default:
      return size;
  }
}

int ConsoleStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return indicator_size(option, widget);
    case PM_ScrollBarExtent:
      return scroll_bar_width;
    case PM_ScrollBarSliderMin:
      return shortest_slider;
    case PM_DefaultFrameWidth:
      return frame_width;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
      return 4 + ring_gap;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
      return 8;
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
      return 14;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
      return 1;
    case PM_ButtonDefaultIndicator:
      return 0;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

QIcon ConsoleStyle::standardIcon(StandardPixmap picture, const QStyleOption* option,
                                 const QWidget* widget) const {
  const QPalette palette = widget != nullptr ? widget->palette() : QPalette();
  switch (picture) {
    case SP_MessageBoxQuestion:
      return sign_icon(u'?', theme_of(palette));
    case SP_MessageBoxInformation:
      return sign_icon(u'i', theme_of(palette));
    case SP_MessageBoxWarning:
    case SP_MessageBoxCritical:
      return sign_icon(u'!', theme_of(palette));
    default:
      if (const auto own = question_icon(picture, theme_of(palette))) return *own;
      return QProxyStyle::standardIcon(picture, option, widget);
  }
}

int ConsoleStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* result) const {
  switch (hint) {
    // Who works without a mouse sees the keys before Alt is down.
    case SH_UnderlineShortcut:
      return 1;
    // Words tell what a button does; a desktop's own pictures would be strangers beside ours.
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, result);
  }
}

}  // namespace lineweir
