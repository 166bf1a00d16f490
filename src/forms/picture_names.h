#pragma once

#include <string_view>

// The names of the holders from which visible elements take their picture.
namespace lineweir::pictures {

inline constexpr std::string_view DataRowWhite = "DataRowWhite";
inline constexpr std::string_view DataRowGreen = "DataRowGreen";
inline constexpr std::string_view DataRowRed = "DataRowRed";

inline constexpr std::string_view DropLargeUp = "DropLargeUp";
inline constexpr std::string_view DropLargeDown = "DropLargeDown";
inline constexpr std::string_view DropLargeDisabled = "DropLargeDisabled";
inline constexpr std::string_view DropSmallUp = "DropSmallUp";
inline constexpr std::string_view DropSmallDown = "DropSmallDown";
inline constexpr std::string_view DropSmallDisabled = "DropSmallDisabled";
inline constexpr std::string_view Center1Up = "Center1Up";
inline constexpr std::string_view Center1Down = "Center1Down";
inline constexpr std::string_view CenterDisabled = "CenterDisabled";
inline constexpr std::string_view ButtonRightUp = "ButtonRightUp";
inline constexpr std::string_view ButtonRightDown = "ButtonRightDown";
inline constexpr std::string_view ButtonRightDisabled = "ButtonRightDisabled";
inline constexpr std::string_view HybridNormUp = "HybridNormUp";
inline constexpr std::string_view HybridNormDown = "HybridNormDown";
inline constexpr std::string_view HybridDisabledNorm = "HybridDisabledNorm";
inline constexpr std::string_view SetupUp = "SetupUp";
inline constexpr std::string_view SetupDown = "SetupDown";

inline constexpr std::string_view RedIcon = "RedIcon";
inline constexpr std::string_view GreenIcon = "GreenIcon";
inline constexpr std::string_view YellowIcon = "YellowIcon";
inline constexpr std::string_view BlueIcon = "BlueIcon";

// The lamp of the dial pad.
inline constexpr std::string_view GreyPic = "GreyPic";
inline constexpr std::string_view RedPic = "RedPic";
inline constexpr std::string_view GreenPic = "GreenPic";

inline constexpr std::string_view MarkWhite = "MarkWhite";
inline constexpr std::string_view MarkGreen = "MarkGreen";
inline constexpr std::string_view MarkRed = "MarkRed";

inline constexpr std::string_view BlackScreenTop = "BlackScreenTop";
inline constexpr std::string_view BlackScreenBottom = "BlackScreenBottom";
inline constexpr std::string_view GreyScreenTop = "GreyScreenTop";
inline constexpr std::string_view GreyScreenBottom = "GreyScreenBottom";
inline constexpr std::string_view LowCoverMetal = "LowCoverMetal";
inline constexpr std::string_view LowCoverGrey = "LowCoverGrey";

inline constexpr std::string_view TimeDial = "TimeDial";
inline constexpr std::string_view ShowDial = "ShowDial";
inline constexpr std::string_view RedDial = "RedDial";

}  // namespace lineweir::pictures
