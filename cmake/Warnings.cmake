# Warnings are errors everywhere; a target of ours links orbel_build_flags.
# Left out: -Wnull-dereference, -Wmaybe-uninitialized and -Wstringop-overflow, which in gcc 12 report paths through the
# standard library's own optional, variant and vector that do not exist.
add_library(orbel_build_flags INTERFACE)
target_compile_options(orbel_build_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wimplicit-fallthrough -Wno-maybe-uninitialized -Wno-stringop-overflow -Werror)
if(ORBEL_SANITIZE)
  target_compile_options(orbel_build_flags INTERFACE
    -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  target_link_options(orbel_build_flags INTERFACE -fsanitize=address,undefined)
endif()
