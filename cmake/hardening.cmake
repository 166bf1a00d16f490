# What makes a fault of memory in a released program harder to use, and what keeps the place where it
# was built out of it. Other builds have sanitizers, or want to be quick.

add_compile_options(
  "$<$<CONFIG:Release>:-fstack-protector-strong;-fstack-clash-protection;-fPIE;-Wformat;-Werror=format-security>"
  "$<$<CONFIG:Release>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.>")
add_compile_definitions($<$<CONFIG:Release>:_FORTIFY_SOURCE=2>)
add_link_options("$<$<CONFIG:Release>:-pie;-Wl,-z,relro;-Wl,-z,now;-Wl,--as-needed>")
