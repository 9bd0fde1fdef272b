#!/usr/bin/env bash
# Fails when the program holds code of a display system's backend or asks for a library of a display system itself.
set -euo pipefail
program=$1
symbols=$(nm --demangle --defined-only "$program")
# Otherwise the program was stripped, and nothing could be found in it.
grep -q 'orbel::qt::QtWindowSystem::' <<< "$symbols" || { echo "$program shows no symbols of the rooms" >&2; exit 1; }
found=0
grep -E 'orbel::(x11|qtx11|evdev|linux)::' <<< "$symbols" && found=1
readelf --dynamic --wide "$program" | grep NEEDED | grep -E '\[lib(xcb|X|xkb|wayland|evdev|udev)' && found=1
if [ "$found" = 1 ]; then
  echo "The lines above tie $program to a display system or to Linux: the rooms must stand alone." >&2
  exit 1
fi
