# A target of ours links orbel_build_flags. Warnings are errors in the developers' presets only (ORBEL_WERROR): another
# compiler, which warns of more, must not keep anyone from building.
# Left out: -Wnull-dereference, -Wmaybe-uninitialized and -Wstringop-overflow, which in gcc 12 report paths through the
# standard library's own optional, variant and vector that do not exist.
option(ORBEL_WERROR "Make every warning an error" OFF)
add_library(orbel_build_flags INTERFACE)
# GLib asks its users for -pthread; everything has it, because a precompiled header serves only equal flags.
target_compile_options(orbel_build_flags INTERFACE -pthread
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wimplicit-fallthrough -Wno-maybe-uninitialized -Wno-stringop-overflow)
if(ORBEL_WERROR)
  target_compile_options(orbel_build_flags INTERFACE -Werror)
endif()
if(ORBEL_SANITIZE)
  target_compile_options(orbel_build_flags INTERFACE
    -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  target_link_options(orbel_build_flags INTERFACE -fsanitize=address,undefined)
endif()
