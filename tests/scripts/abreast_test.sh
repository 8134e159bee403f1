#!/usr/bin/env bash
# scripts/abreast by stand-ins: what is said, its order, the status, two at a time, the end of what it has started.
set -u
abreast=$(cd "$(dirname "$0")/../.." && pwd)/scripts/abreast
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1

check() {  # what, expected, found
    [ "$2" = "$3" ] && return
    printf 'FAILED: %s\nexpected: %s\nfound:    %s\n' "$@"
    exit 1
}
lines() { grep -v '^-- ' "$1" | paste -sd ' '; }

"$abreast" 'sleep 0.4; echo first' 'echo second >&2' 'echo third' >said 2>/dev/null
check "status of three that succeed" 0 $?
check "said in the order of the commands, whichever ends first" "first second third" "$(lines said)"

"$abreast" 'echo good' 'echo bad; exit 3' 'sleep 0.2; echo late' >said 2>/dev/null
check "status where one fails" 1 $?
check "those behind a failure run, and which failed is told" "good bad late failed: echo bad; exit 3" "$(lines said)"

"$abreast" 'kill -9 $$' 'echo good' >said 2>/dev/null
check "status where one is killed" 1 $?

# Each tells how many are at work as it begins, itself included.
work='touch work.$$; ls work.* | wc -l; sleep 0.2; rm work.$$'
"$abreast" "$work" "$work" "$work" "$work" "$work" >said 2>/dev/null
check "at most two at a time" 2 "$(grep -v '^-- ' said | sort -n | tail -1 | tr -d ' ')"

"$abreast" 'echo $BASHPID >pid; echo begun; sleep 60' >said 2>/dev/null &
until [ -s pid ]; do sleep 0.05; done
kill -TERM $!
wait $!
check "status where it is stopped itself" 143 $?
check "what was said until then is shown" "begun" "$(lines said)"
for ((i = 0; i < 100; ++i)); do
    kill -0 "$(cat pid)" 2>/dev/null || break
    sleep 0.05
done
kill -0 "$(cat pid)" 2>/dev/null
check "nothing goes on behind it" 1 $?
