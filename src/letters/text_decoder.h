#pragma once

#include <string>
#include <string_view>

#include "letters/letters.h"

namespace lineweir {

// How the bytes of a text file are to be read.
enum class TextEncoding { Utf8, Utf16LittleEndian, Utf16BigEndian, OneByte };

// From the file's beginning: by its mark, or by where the zeros of two-byte characters stand. UTF-8
// where nothing speaks against it.
TextEncoding encoding_of(std::string_view beginning);

// Makes UTF-8 of a text file, piece by piece; its mark is left out.
class TextDecoder {
 public:
  // Texts of one byte a character are in these letters, which must outlive this object.
  TextDecoder(TextEncoding encoding, const Letters& letters)
      : encoding_(encoding), letters_(letters) {}

  // Adds the text of the next piece, which may end within a character. False where the bytes can't
  // be of that encoding, which is found with UTF-8 only.
  bool decode(std::string_view piece, std::string& utf8);

  // The last piece was decoded: false where a character isn't whole.
  bool end() const { return begun_.empty(); }

 private:
  bool decode_utf8(std::string& utf8);
  void decode_utf16(std::string& utf8);

  TextEncoding encoding_;
  const Letters& letters_;
  bool at_beginning_ = true;
  // What isn't decoded yet.
  std::string begun_;
};

}  // namespace lineweir
