#include "clocks/hands.h"

#include <cmath>

namespace lineweir {
namespace {

constexpr double degree = 3.14 / 180;
constexpr double twelve = -90;
constexpr double resting_x_angle = twelve;
constexpr double resting_y_angle = -(360.0 / 60) - 90;

int whole_downward(double value) { return static_cast<int>(std::floor(value)); }

int digit_at(std::string_view text, std::size_t place) {
  const char c = place < text.size() ? text[place] : '0';
  return c >= '0' && c <= '9' ? c - '0' : 0;
}

int two_digits_at(std::string_view text, std::size_t place) {
  return digit_at(text, place) * 10 + digit_at(text, place + 1);
}

int end_x(int length, double degrees, int near_x) {
  return whole_downward(length * std::cos(degrees * degree) + near_x);
}

int end_y(int length, double degrees, int near_y) {
  return whole_downward(length * std::sin(degrees * degree) + near_y);
}

}  // namespace

HandPoint hand_end(int length, double degrees, HandPoint near_end) {
  return {end_x(length, degrees, near_end.x), end_y(length, degrees, near_end.y)};
}

TimeAngles time_angles(std::string_view clock_text) {
  const double second = two_digits_at(clock_text, 6);
  const double minute = two_digits_at(clock_text, 3) + second / 60;
  const double hour = two_digits_at(clock_text, 0) + minute / 60;
  return {30 * hour + twelve, 6 * minute + twelve, 6 * second + twelve};
}

int seconds_left(std::string_view countdown) {
  return two_digits_at(countdown, 0) * 3600 + two_digits_at(countdown, 3) * 60 +
         two_digits_at(countdown, 6);
}

double event_angle(int event_length, int time_left) {
  return -(360.0 / event_length * time_left) + twelve;
}

HandPoint resting_hand_end(int length, HandPoint near_end) {
  return {end_x(length, resting_x_angle, near_end.x), end_y(length, resting_y_angle, near_end.y)};
}

}  // namespace lineweir
