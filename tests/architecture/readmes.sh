#!/usr/bin/env bash
# Fails when a README does not begin with a heading, as when a formatter for another language has been at it.
set -euo pipefail
cd "$1"
readmes=$(find . -name README.md -not -path './build*' -not -path './.*')
[ -n "$readmes" ] || { echo "there are no README files below $1" >&2; exit 1; }
failed=0
for readme in $readmes; do
  if ! head -n 1 "$readme" | grep -qE '^# [A-Za-z]'; then
    echo "$readme does not begin with \"# \" and a letter" >&2
    failed=1
  fi
done
exit $failed
