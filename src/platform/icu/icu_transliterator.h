#pragma once

#include <memory>
#include <mutex>

#include "letters/transliterator.h"

namespace lineweir::platform {

// The rules of ICU. They take some 40 ms to load, so that is done when they are first asked for.
class IcuTransliterator final : public Transliterator {
 public:
  IcuTransliterator();
  ~IcuTransliterator() override;

  std::string composed(std::string_view text) const override;
  std::string plain_latin(std::string_view text) const override;

 private:
  struct Rules;

  // Texts are written on more than one thread.
  mutable std::mutex mutex_;
  mutable std::unique_ptr<Rules> rules_;
};

}  // namespace lineweir::platform
