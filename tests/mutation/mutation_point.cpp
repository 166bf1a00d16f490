#include "mutation_point.h"

#include <cstdlib>
#include <fstream>
#include <string_view>

namespace lineweir {
namespace {

constinit MutationPoints* first = nullptr;

// What a program that is no test of cases has passed is told when it ends.
void write_passed() {
  std::ofstream(std::getenv("LINEWEIR_MUTANTS_PASSED")) << MutationPoints::take_passed();
}

}  // namespace

void MutationPoints::begin() {
  known_ = true;
  next_ = first;
  if (first == nullptr && std::getenv("LINEWEIR_MUTANTS_PASSED") != nullptr)
    std::atexit(write_passed);
  first = this;
  const char* named = std::getenv("LINEWEIR_MUTANT");
  if (named == nullptr) return;
  const std::string_view name = named;
  const std::size_t colon = name.find(':');
  if (name.substr(0, colon) == file_) awake_ = std::atoi(named + colon + 1);
}

std::string MutationPoints::take_passed() {
  std::string told;
  for (MutationPoints* file = first; file != nullptr; file = file->next_) {
    std::string numbers;
    for (int number = 0; number < most; ++number) {
      if (file->passed_[number]) numbers += ' ' + std::to_string(number);
      file->passed_[number] = false;
    }
    if (!numbers.empty()) told += file->file_ + numbers + '\n';
  }
  return told;
}

}  // namespace lineweir
