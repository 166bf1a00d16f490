#pragma once

namespace lineweir {

// The kinds of telephone equipment, 1 to 4, that a server may tell; what each stands for a console
// is asked here and nowhere else.

// Sets of kinds, as the rule tables name them. A kind that nobody knows belongs to those sets that
// leave kinds out.
constexpr unsigned kind(int number) {
  return number >= 1 && number <= 4 ? 1U << static_cast<unsigned>(number) : 1U;
}

constexpr bool is_of(int number, unsigned kinds) { return (kind(number) & kinds) != 0; }

inline constexpr unsigned any_kind = ~0U;
constexpr unsigned all_but(unsigned kinds) { return ~kinds; }

// The button of a hybrid locks the call that it has put on air, and gives it back.
inline constexpr unsigned kinds_locking_on_air = kind(1) | kind(2);
// The producer's handsets: one for all, one of two, or one on the conference hybrid.
inline constexpr unsigned kinds_with_one_handset = kind(1);
inline constexpr unsigned kinds_with_two_handsets = kind(2) | kind(4);
inline constexpr unsigned kinds_with_conference_handset = kind(3);
// A caller who comes back from hold or air is told as a ring.
inline constexpr unsigned kinds_ringing_again = kind(2);

// The server chooses the next call, names the telephones and keeps the seats' positions apart by
// their console numbers; it keeps no profiles.
inline constexpr unsigned kinds_of_deciding_server = kind(4);
constexpr bool server_decides(int kind) { return is_of(kind, kinds_of_deciding_server); }

// The letter of a line at position 0; each further position has the next one.
inline constexpr int first_position_code = 128;

// A ready caller is a held one with data.
constexpr bool ready_is_held_with_data(int kind) { return is_of(kind, kinds_ringing_again); }

// The screener's handset at position 1 stands on the conference hybrid.
constexpr bool handset_is_on_conference(int kind, bool handset_1) {
  return is_of(kind, kinds_with_conference_handset) && handset_1;
}

// The tone of digit 0 is numbered behind that of 9.
constexpr bool tone_of_zero_is_last(int kind) { return is_of(kind, kinds_with_conference_handset); }

// Which menus there are. For a kind that nobody knows they stay as they are.
struct EquipmentMenus {
  int kind;
  bool remote_next;
  bool handsets;
  bool phones;
};

inline constexpr EquipmentMenus equipment_menus[] = {
    {1, true, true, false},
    {2, false, true, false},
    {3, true, true, false},
    {4, false, false, true},
};

constexpr const EquipmentMenus* menus_of(int kind) {
  for (const EquipmentMenus& menus : equipment_menus) {
    if (menus.kind == kind) return &menus;
  }
  return nullptr;
}

}  // namespace lineweir
