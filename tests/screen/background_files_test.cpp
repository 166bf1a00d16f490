#include "screen/background_files.h"

#include <doctest/doctest.h>

#include <set>

namespace lineweir::test {
namespace {

struct Files {
  int first_rows;
  int last_rows;
  const char* metal_top;
  const char* grey_top;
};

TEST_SUITE("screen/background_files") {
  TEST_CASE("up to ten rows share all four pictures") {
    for (int rows = 0; rows <= 10; ++rows) {
      CHECK(background_file(ScreenPart::Top, ScreenFace::Metal, rows) == "10TM.jpg");
      CHECK(background_file(ScreenPart::Top, ScreenFace::Grey, rows) == "10TG.jpg");
      CHECK(background_file(ScreenPart::Bottom, ScreenFace::Metal, rows) == "10BM.jpg");
      CHECK(background_file(ScreenPart::Bottom, ScreenFace::Grey, rows) == "10BG.jpg");
    }
  }

  TEST_CASE("from eleven rows on each count has its own lower pictures") {
    for (const Files& expected :
         {Files{11, 18, "20TM.jpg", "20TG.jpg"}, Files{19, 19, "19TM.jpg", "19TG.jpg"},
          Files{20, 20, "20TM.jpg", "20TG.jpg"}}) {
      for (int rows = expected.first_rows; rows <= expected.last_rows; ++rows) {
        CAPTURE(rows);
        CHECK(background_file(ScreenPart::Top, ScreenFace::Metal, rows) == expected.metal_top);
        CHECK(background_file(ScreenPart::Top, ScreenFace::Grey, rows) == expected.grey_top);
        CHECK(background_file(ScreenPart::Bottom, ScreenFace::Metal, rows) ==
              std::to_string(rows) + "BM.jpg");
        CHECK(background_file(ScreenPart::Bottom, ScreenFace::Grey, rows) ==
              std::to_string(rows) + "BG.jpg");
      }
    }
  }

  TEST_CASE("there are 28 files in all") {
    std::set<std::string> files;
    for (int rows = 0; rows <= 20; ++rows) {
      for (const ScreenPart part : {ScreenPart::Top, ScreenPart::Bottom}) {
        for (const ScreenFace face : {ScreenFace::Metal, ScreenFace::Grey}) {
          files.insert(background_file(part, face, rows));
        }
      }
    }
    CHECK(files.size() == 28);
  }
}

}  // namespace
}  // namespace lineweir::test
