#!/bin/sh
# defines_none_of.sh PROGRAM LIBRARY...
# Fails when PROGRAM defines a function that one of the static LIBRARIES defines:
# the program then carries its own copy of that library's code.
set -eu
program=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
functions() { nm --defined-only "$@" 2>/dev/null | awk '$2 == "T" { print $3 }' | sort -u; }
functions "$program" >"$work/program"
functions "$@" >"$work/libraries"
if [ ! -s "$work/program" ] || [ ! -s "$work/libraries" ]; then
    echo "no functions read from $program or from $*"
    exit 1
fi
comm -12 "$work/program" "$work/libraries" >"$work/both"
if [ -s "$work/both" ]; then
    echo "$program defines $(wc -l <"$work/both") functions of $*, among them:"
    c++filt <"$work/both" | head -n 10
    exit 1
fi
echo "$program defines none of the $(wc -l <"$work/libraries") functions of $*"
