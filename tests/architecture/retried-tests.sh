#!/bin/sh
# retried-tests.sh <list> <most entries> <name=program>...
# The list of tests that get a second try holds no more than that many, each with the name of a run, a case that its
# program has, and a reason, separated by tabs.
list=$1 most=$2
shift 2
status=0
complain() {
  echo "$list: $1" >&2
  status=1
}

count=$(grep -c '' "$list")
[ "$count" -le "$most" ] || complain "$count tests, and no more than $most may be retried"
tab=$(printf '\t')
while IFS="$tab" read -r name case reason; do
  [ -n "$reason" ] || complain "no reason for \"$name $case\""
  program=
  for pair in "$@"; do
    [ "${pair%%=*}" = "$name" ] && program=${pair#*=}
  done
  if [ -z "$program" ]; then
    complain "there is no run \"$name\""
  elif [ "$("$program" --gtest_list_tests --gtest_filter="$case" | grep -c '^  ')" -ne 1 ]; then
    complain "$name has no case \"$case\""
  fi
done <"$list"
exit $status
