# Appended to the description of a mutated copy of the tree. What isn't mutated keeps its compiler's
# settings, so that the compiler's cache has it already.

set(points ${CMAKE_CURRENT_LIST_DIR})
add_library(lineweir_mutation_point STATIC ${points}/mutation_point.cpp)
foreach(folder IN LISTS LINEWEIR_MUTATED)
  # A mutant may compare what is always greater, and a number that isn't written down any more may be
  # too large for where it goes.
  target_compile_options(lineweir_${folder} PRIVATE -w -Wno-narrowing -g0)
  # A mutant that reads outside of what is there is seen.
  target_compile_definitions(lineweir_${folder} PRIVATE _GLIBCXX_ASSERTIONS)
  target_include_directories(lineweir_${folder} PRIVATE ${points})
  target_link_libraries(lineweir_${folder} PUBLIC lineweir_mutation_point)
endforeach()
foreach(program IN LISTS LINEWEIR_MUTATION_TESTS)
  target_sources(${program} PRIVATE ${points}/passed_by_case.cpp)
  target_link_libraries(${program} PRIVATE lineweir_mutation_point)
endforeach()
