#pragma once

#include <rapidcheck.h>

#include <string>
#include <vector>

namespace lineweir::test {

inline const std::string status_report_letters = "FNCSREPOHBLKY";

// A stream of whole items for the lines 0 to 9.
inline rc::Gen<std::string> item_stream() {
  const auto item = rc::gen::apply(
      [](char letter, int line) {
        return std::string{letter, '0'} + std::to_string(line);
      },
      rc::gen::elementOf(status_report_letters), rc::gen::inRange(0, 10));
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(item),
                      [](const std::vector<std::string>& items) {
                        std::string stream;
                        for (const auto& text : items) stream += text;
                        return stream;
                      });
}

// Text made of what items are made of, in any order, so that broken, nested and overlapping items
// are frequent.
inline rc::Gen<std::string> broken_stream() {
  return rc::gen::container<std::string>(rc::gen::weightedElement<char>({{12, '0'},
                                                                         {6, '1'},
                                                                         {2, '2'},
                                                                         {2, '5'},
                                                                         {2, '9'},
                                                                         {2, 'N'},
                                                                         {2, 'F'},
                                                                         {1, 'B'},
                                                                         {1, ' '},
                                                                         {1, '\0'},
                                                                         {1, '\xFF'}}));
}

// The stream in pieces, cut at random places; some pieces may be empty.
inline std::vector<std::string> cut(const std::string& stream,
                                    const std::vector<std::size_t>& lengths) {
  std::vector<std::string> pieces;
  std::size_t begin = 0;
  for (const std::size_t length : lengths) {
    pieces.push_back(stream.substr(begin, length % 6));
    begin += pieces.back().size();
  }
  pieces.push_back(stream.substr(begin));
  return pieces;
}

}  // namespace lineweir::test
