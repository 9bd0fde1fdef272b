#!/usr/bin/env bash
# Fails when the core includes anything but its own headers and those of the C++ standard library that touch nothing
# outside the program, or reads the time or the environment behind the platform's back. Only the backends and
# the programs may.
set -euo pipefail
cd "$1"
core=$(find . -name '*.h' -o -name '*.cpp' | grep -vE '^\./(backends|companion|video)/|^\./app/main\.cpp$')
[ -n "$core" ] || { echo "there are no sources below $1" >&2; exit 1; }
standard='algorithm|any|array|bit|bitset|cassert|cctype|cerrno|charconv|climits|cmath|compare|concepts|cstddef|cstdint|cstdio|cstdlib|cstring|deque|exception|format|forward_list|functional|initializer_list|iterator|limits|list|map|memory|new|numbers|numeric|optional|queue|random|ranges|ratio|set|span|sstream|stack|stdexcept|string|string_view|system_error|tuple|type_traits|typeindex|typeinfo|unordered_map|unordered_set|utility|variant|vector'
# The property lists of the reference platform are read by a library, see docs/decisions/0001.
allowed="#include <($standard)>|^\./foundation/PropertyListCoder\.cpp:[0-9]+:#include <plist/plist\.h>"
calls='\b(getenv|setenv|std::system|std::chrono|clock_gettime|gettimeofday|std::this_thread|std::f?open)\b'
found=0
grep -nE '^ *#include *<' $core | grep -vE "$allowed" && found=1
grep -nE "$calls" $core && found=1
if [ "$found" = 1 ]; then
  echo "The lines above belong into a backend: the core knows the desktop through src/platform alone." >&2
  exit 1
fi
