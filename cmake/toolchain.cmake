# Compiler settings that hold for every target of this tree.

find_program(CCACHE ccache)
if(CCACHE)
  # Objects are shared between build folders, so that a second checkout builds in seconds.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Without this the cache doesn't see what a precompiled header was made of, and gives back
    # objects of an older one.
    add_compile_options(-fpch-preprocess)
  endif()
endif()

find_program(MOLD mold)
if(MOLD)
  add_link_options(-fuse-ld=mold)
endif()

add_compile_options(
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wimplicit-fallthrough -Werror)

# Where several files are compiled at a time, a file's local names may hide those of another file.
if(NOT CMAKE_UNITY_BUILD)
  add_compile_options(-Wshadow)
endif()

# The full optimiser of this compiler sees overlapping copies in std::string that can't be. Other
# builds go without the option, which clang-tidy would not know.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options($<$<CONFIG:Release,RelWithDebInfo>:-Wno-restrict>)
endif()

if(LINEWEIR_COVERAGE)
  add_link_options(--coverage)
endif()

if(LINEWEIR_FUZZ)
  # Every layer tells the fuzzers which of its branches were taken; without that they only guess.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(LINEWEIR_SANITIZE)
  add_compile_options(-fsanitize=${LINEWEIR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  # With these checks of pointers g++ takes addresses in constants for unknown, and its own regular
  # expressions for unset; the fuzzers, which clang compiles, have them.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND LINEWEIR_SANITIZE MATCHES undefined)
    add_compile_options(-fno-sanitize=null,nonnull-attribute,returns-nonnull-attribute
                        -Wno-maybe-uninitialized)
  endif()
  # It doesn't know fences, of which Boost's loop has some; none of ours is between threads.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND LINEWEIR_SANITIZE MATCHES thread)
    add_compile_options(-Wno-tsan)
  endif()
  add_link_options(-fsanitize=${LINEWEIR_SANITIZE})
endif()
