#pragma once

#include <array>

namespace lineweir {

struct ButtonFaces;
struct ConsoleState;

// Buttons that are always enabled and disabled together.
enum class ButtonGroup {
  MainRows,
  ConferenceRows,
  MainDropAndHold,
  ConferenceDropAndHold,
  Next,
  NextToConf,
  Dial,
};

enum class ButtonCondition { Never, Always, MainHybridOn, ConfHybridOn, HandsetChosen };

// What a group of buttons needs to be enabled in either mode.
struct PanelRule {
  ButtonGroup group;
  ButtonCondition talent;
  ButtonCondition producer;
};

// The dial button isn't among them: only passive mode rules it.
inline constexpr std::array panel_rules = {
    PanelRule{ButtonGroup::MainRows, ButtonCondition::MainHybridOn, ButtonCondition::HandsetChosen},
    PanelRule{ButtonGroup::MainDropAndHold, ButtonCondition::MainHybridOn,
              ButtonCondition::HandsetChosen},
    PanelRule{ButtonGroup::Next, ButtonCondition::MainHybridOn, ButtonCondition::HandsetChosen},
    PanelRule{ButtonGroup::ConferenceRows, ButtonCondition::ConfHybridOn, ButtonCondition::Always},
    PanelRule{ButtonGroup::ConferenceDropAndHold, ButtonCondition::ConfHybridOn,
              ButtonCondition::Never},
    PanelRule{ButtonGroup::NextToConf, ButtonCondition::ConfHybridOn,
              ButtonCondition::HandsetChosen},
};

enum class Hybrid { Main, Conference };

// What switching a hybrid on or off in talent mode does to its buttons.
struct HybridRule {
  Hybrid hybrid;
  ButtonGroup rows;
  ButtonGroup drop_and_hold;
  ButtonGroup next;
  // The drop and hold buttons stay large or small, as they are; otherwise they become small.
  bool drops_keep_size;
  // In the column at the right the next button shows its up face although it is disabled. The two
  // hybrids differ here on purpose.
  bool next_stays_up_at_right;
};

inline constexpr std::array hybrid_rules = {
    HybridRule{Hybrid::Main, ButtonGroup::MainRows, ButtonGroup::MainDropAndHold, ButtonGroup::Next,
               true, true},
    HybridRule{Hybrid::Conference, ButtonGroup::ConferenceRows, ButtonGroup::ConferenceDropAndHold,
               ButtonGroup::NextToConf, false, false},
};

// Which picture buttons of the main form a mode leaves enabled, and the faces that show it.
class ButtonPanel {
 public:
  explicit ButtonPanel(ConsoleState& state);

  // Enables, disables and pictures all buttons as the hybrids and the handset demand. In producer
  // mode passive mode disables the buttons of the panel, but not those of the rows.
  void set_for_talent();
  void set_for_producer();

  // Passive mode takes all buttons but the setup button from the user.
  void disable_all();
  void set_dial(bool enabled);
  void show_small_drops_disabled();

  // Gives the centre buttons the faces of their place beside the rows shown now; whether they are
  // up, down or disabled stays.
  void fit_center_buttons();

  // A hybrid was switched on or off while the console is in talent mode.
  void follow_hybrid(Hybrid hybrid, bool on);

  // Stands the lettering of Drop1 and Hold1 at its place for the size of button they show.
  void place_drop_labels();

 private:
  void LabelMoveTimer_Timer();
  bool holds(ButtonCondition condition) const;
  // Drop and hold buttons get the faces given; the others have only one family at a time.
  void set(ButtonGroup group, bool enabled, const ButtonFaces& drop_faces);
  const ButtonFaces& center_faces_now() const;

  ConsoleState& state_;
};

}  // namespace lineweir
