#include "allocation_count.h"

#include <cstdlib>
#include <new>

namespace {
std::int64_t allocations = 0;
}

namespace lineweir {
std::int64_t allocation_count() { return allocations; }
}  // namespace lineweir

void* operator new(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
