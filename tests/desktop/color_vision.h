#pragma once

#include <QImage>
#include <array>
#include <cmath>

#include "pixels.h"

namespace lineweir::test {

// How somebody sees who lacks one kind of the eye's cones: a matrix on linear red, green and blue.
// Machado, Oliveira and Fernandes 2009, severity 1.
struct ColorVision {
  const char* name;
  std::array<std::array<double, 3>, 3> matrix;
};

inline constexpr std::array color_visions = {
    ColorVision{"full", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    ColorVision{"protanopia",
                {{{0.152286, 1.052583, -0.204868},
                  {0.114503, 0.786281, 0.099216},
                  {-0.003882, -0.048116, 1.051998}}}},
    ColorVision{"deuteranopia",
                {{{0.367322, 0.860646, -0.227968},
                  {0.280085, 0.672501, 0.047413},
                  {-0.011820, 0.042940, 0.968881}}}},
    ColorVision{"tritanopia",
                {{{1.255528, -0.076749, -0.178779},
                  {-0.078411, 0.930809, 0.147602},
                  {0.004733, 0.691367, 0.303900}}}},
};

inline double linear_light(int channel) {
  const double part = channel / 255.0;
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

// The brightness of a pixel to that eye, 0 to 1.
inline double brightness(QRgb pixel, const ColorVision& vision) {
  const std::array light = {linear_light(qRed(pixel)), linear_light(qGreen(pixel)),
                            linear_light(qBlue(pixel))};
  constexpr std::array weights = {0.2126, 0.7152, 0.0722};
  double sum = 0;
  for (std::size_t row = 0; row < 3; ++row) {
    double seen = 0;
    for (std::size_t column = 0; column < 3; ++column) {
      seen += vision.matrix[row][column] * light[column];
    }
    sum += weights[row] * std::clamp(seen, 0.0, 1.0);
  }
  return sum;
}

// How many pixels of the two pictures, which have one size, differ in brightness by that contrast,
// whatever their colours.
inline int clearly_differing(const QImage& one, const QImage& other, const ColorVision& vision,
                             double least_contrast) {
  const QImage a = readable(one);
  const QImage b = readable(other);
  int differing = 0;
  for (int y = 0; y < a.height(); ++y) {
    const auto b_row = row_of(b, y);
    std::size_t x = 0;
    for (const QRgb pixel : row_of(a, y)) {
      const double first = brightness(pixel, vision) + 0.05;
      const double second = brightness(b_row[x++], vision) + 0.05;
      if (std::max(first, second) / std::min(first, second) >= least_contrast) ++differing;
    }
  }
  return differing;
}

// A colour in CIE L*a*b*, in which equal distances look equally large.
inline std::array<double, 3> lab_of(QRgb pixel) {
  const double r = linear_light(qRed(pixel));
  const double g = linear_light(qGreen(pixel));
  const double b = linear_light(qBlue(pixel));
  const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
  const double x = f((0.4124 * r + 0.3576 * g + 0.1805 * b) / 0.9505);
  const double y = f(0.2126 * r + 0.7152 * g + 0.0722 * b);
  const double z = f((0.0193 * r + 0.1192 * g + 0.9505 * b) / 1.089);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

// How much a colour draws the eye from its surroundings: colour does so more than brightness.
inline double salience(QRgb color, QRgb ground) {
  constexpr double weight_of_lightness = 0.5;
  const auto a = lab_of(color);
  const auto b = lab_of(ground);
  return std::sqrt(std::pow(weight_of_lightness * (a[0] - b[0]), 2) + std::pow(a[1] - b[1], 2) +
                   std::pow(a[2] - b[2], 2));
}

}  // namespace lineweir::test
