#!/usr/bin/env bash
# Fails when the core includes a header of a toolkit or of the operating system, or reads the time or the environment
# behind the platform's back. Only the backends, the separate programs (companion, video) and main.cpp may.
set -euo pipefail
cd "$1"
headers='#include <(Q[A-Z]|Qt|xcb|X11|xkbcommon|glib|gio|libevdev|linux|sys|unistd|fcntl|dirent|ctime|time\.h|chrono|thread|filesystem)'
calls='\b(getenv|setenv|std::chrono|clock_gettime|gettimeofday|std::this_thread)\b'
core=$(find . -name '*.h' -o -name '*.cpp' | grep -vE '^\./(backends|companion|video)/|^\./app/main\.cpp$')
[ -n "$core" ] || { echo "there are no sources below $1" >&2; exit 1; }
if grep -nE "$headers" $core || grep -nE "$calls" $core; then
  echo "The lines above belong into a backend: the core knows the desktop through src/platform alone." >&2
  exit 1
fi
