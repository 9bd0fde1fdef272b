#!/bin/sh
# Installs what is built into a folder of its own, under a prefix that needs quoting, and looks at what is there.
#   staged-installation.sh CMAKE BUILD-FOLDER BINDIR DATADIR VIDEO-FROM-PROGRAMS RULES-FROM-PROGRAMS
# BINDIR and DATADIR are below the prefix, the other two below the folder of programs.
set -eu
cmake=$1 build=$2 bindir=$3 datadir=$4 video=$5 rules=$6

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
failures=0
fail() {
  printf 'FAILED: %s\n' "$*"
  failures=$((failures + 1))
}
has_line() { # FILE LINE
  grep -qxF -- "$2" "$1" || fail "$1 lacks the line: $2"
}

prefix='/opt/orbel $menu 100%'
DESTDIR=$stage "$cmake" --install "$build" --prefix "$prefix" >"$stage/log" 2>&1 || {
  cat "$stage/log"
  exit 1
}
programs=$prefix/$bindir
data=$prefix/$datadir

for program in orbelmenu orbelmenu-toolkit orbelmenu-touchpad-access "$video/orbelmenu-video"; do
  [ -x "$stage$programs/$program" ] || fail "there is no program $programs/$program"
done

entries=$stage$data/applications
has_line "$entries/org.orbelmenu.OrbelMenu.desktop" 'Exec="/opt/orbel \\$menu 100%%/'"$bindir"'/orbelmenu"'
has_line "$entries/org.orbelmenu.Toolkit.desktop" 'Exec="/opt/orbel \\$menu 100%%/'"$bindir"'/orbelmenu-toolkit" %u'
has_line "$entries/org.orbelmenu.Toolkit.desktop" 'MimeType=x-scheme-handler/orbelmenu-toolkit;'
if command -v desktop-file-validate >/dev/null; then
  for entry in "$entries"/*.desktop; do
    desktop-file-validate "$entry" || fail "$entry is not valid"
  done
fi
icon=$(sed -n 's/^Icon=//p' "$entries/org.orbelmenu.OrbelMenu.desktop")
[ -s "$stage$data/icons/hicolor/scalable/apps/$icon.svg" ] || fail "there is no icon $icon"

# Touchpads are distinguished from other devices below 50 and the seat's access is handed out at 73.
rule=$stage$programs/$rules/71-orbelmenu-touchpad.rules
if [ -f "$rule" ]; then
  [ "$(ls "$(dirname "$rule")")" = 71-orbelmenu-touchpad.rules ] || fail "there is another rule"
  [ "$(grep -cv '^#' "$rule")" -eq 1 ] || fail "there is more than one rule"
  for condition in 'SUBSYSTEM=="input"' 'ENV{ID_INPUT_TOUCHPAD}=="1"' 'ENV{ID_INPUT_KEYBOARD}!="1"' 'TAG+="uaccess"'; do
    grep -v '^#' "$rule" | grep -qF -- "$condition" || fail "the rule lacks $condition"
  done
else
  fail "there is no rule $rule"
fi

# The command that grants access, with stand-ins for what needs rights.
mkdir "$stage/stand-ins"
for name in install udevadm; do
  printf '#!/bin/sh\necho %s "$@" >>"%s/done"\n' "$name" "$stage" >"$stage/stand-ins/$name"
done
printf '#!/bin/sh\ncat "%s/user"\n' "$stage" >"$stage/stand-ins/id"
chmod +x "$stage"/stand-ins/*
grant() { # USER-ID
  echo "$1" >"$stage/user"
  : >"$stage/done"
  status=0
  PATH=$stage/stand-ins:$PATH "$stage$programs/orbelmenu-touchpad-access" >/dev/null 2>"$stage/errors" || status=$?
}
grant 1000
[ "$status" -eq 1 ] || fail "without rights its status is $status"
[ ! -s "$stage/done" ] || fail "without rights it did: $(cat "$stage/done")"
grep -q sudo "$stage/errors" || fail "without rights it does not say what to do"
grant 0
[ "$status" -eq 0 ] || fail "with rights its status is $status: $(cat "$stage/errors")"
source=$(sed -n 's/^install -D -m 644 \(.*\) \/etc\/udev\/rules.d\/71-orbelmenu-touchpad.rules$/\1/p' "$stage/done")
[ -n "$source" ] && cmp -s "$source" "$rule" || fail "it does not find the rule: $(cat "$stage/done")"
grep -q '^udevadm control --reload$' "$stage/done" || fail "udev is not told of the rule"

[ "$failures" -eq 0 ]
