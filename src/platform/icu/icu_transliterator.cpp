#include "platform/icu/icu_transliterator.h"

#include <unicode/normalizer2.h>
#include <unicode/translit.h>
#include <unicode/unistr.h>

namespace lineweir::platform {
namespace {

constexpr const char* to_plain_latin = "Any-Latin; Latin-ASCII";

icu::UnicodeString read(std::string_view utf8) {
  return icu::UnicodeString::fromUTF8(
      icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())));
}

std::string written(const icu::UnicodeString& text) {
  std::string utf8;
  text.toUTF8String(utf8);
  return utf8;
}

}  // namespace

// Without its data ICU has no rules; texts then stay as they are.
struct IcuTransliterator::Rules {
  Rules() {
    UErrorCode error = U_ZERO_ERROR;
    plain_latin.reset(icu::Transliterator::createInstance(to_plain_latin, UTRANS_FORWARD, error));
    if (U_FAILURE(error)) plain_latin.reset();
  }

  std::unique_ptr<icu::Transliterator> plain_latin;
};

IcuTransliterator::IcuTransliterator() = default;
IcuTransliterator::~IcuTransliterator() = default;

std::string IcuTransliterator::composed(std::string_view text) const {
  UErrorCode error = U_ZERO_ERROR;
  const icu::Normalizer2* composing = icu::Normalizer2::getNFCInstance(error);
  if (U_FAILURE(error)) return std::string(text);
  const icu::UnicodeString result = composing->normalize(read(text), error);
  return U_FAILURE(error) ? std::string(text) : written(result);
}

std::string IcuTransliterator::plain_latin(std::string_view text) const {
  const std::lock_guard lock(mutex_);
  if (!rules_) rules_ = std::make_unique<Rules>();
  if (!rules_->plain_latin) return std::string(text);
  icu::UnicodeString result = read(text);
  rules_->plain_latin->transliterate(result);
  return written(result);
}

}  // namespace lineweir::platform
