#!/usr/bin/env bash
# SPDX-FileCopyrightText: VARDO Technologies
# SPDX-License-Identifier: LicenseRef-VARDO
#
# fuzz.sh MINUTES [FUZZER...]
#
# Runs the fuzzers (all of tests/fuzz, or the named ones, such as Xml) for so many minutes each, as many at a time as
# the machine has processors, with the lowest priority. Prints what each of them did; fails when one has found anything.
# What they learn stays in build/fuzz, and the next run goes on from there.
source "$(dirname "$0")/lib.sh"

FUZZERS=$TREE/build/fuzz/tests/fuzz
LOGS=$TREE/build/fuzz/logs

# run_one MINUTES NAME: runs one fuzzer as CTest would, but for so many minutes.
run_one() {
    local command
    read -ra command <"$FUZZERS/$2/command"
    set -- "$2" "$(($1 * 60))"
    if nice -n 19 "${command[@]}" -max_total_time="$2" >"$LOGS/$1.log" 2>&1; then
        echo none >"$LOGS/$1.found"
    else
        sed -n 's/.*Test unit written to //p' "$LOGS/$1.log" | tail -n 1 >"$LOGS/$1.found"
    fi
}

# figure NAME PATTERN: prints the last text in the log that the pattern's group matches.
figure() { sed -nE "s/.*$2.*/\1/p" "$LOGS/$1.log" | tail -n 1; }

row() { printf '%-18s %12s %8s %7s %7s  %s\n' "$@"; }

report() {
    local name found
    row fuzzer executions exec/s cov ft found
    for name in "$@"; do
        found=$(cat "$LOGS/$name.found" 2>/dev/null || echo "it was not run to its end")
        row "$name" "$(figure "$name" 'number_of_executed_units: +([0-9]+)')" \
            "$(figure "$name" 'average_exec_per_sec: +([0-9]+)')" "$(figure "$name" 'cov: ([0-9]+)')" \
            "$(figure "$name" 'ft: ([0-9]+)')" "${found:-it ended without a word, see $LOGS/$name.log}"
        [[ $found == none ]] || FAILED+=("$name")
    done
}

remedy() {
    local name
    for name in "${FAILED[@]}"; do
        printf '*** %s: see %s\n' "$name" "$LOGS/$name.log"
        grep -E 'Broken promise|runtime error|^==.*ERROR|SUMMARY' "$LOGS/$name.log" | head -n 4 || true
        printf '    Again:   %s\n' "$FUZZERS/${name}Fuzzer $(<"$LOGS/$name.found")"
    done >&2
    fail "mend the reader, give its tests a row, and keep the input (see docs/reliability.md): ${FAILED[*]}"
}

# xargs runs this second half of the script for each fuzzer.
if [[ ${1:-} == --one ]]; then
    run_one "$2" "$3"
    exit
fi
[[ ${1:-} =~ ^[1-9][0-9]*$ ]] || fail "usage: fuzz.sh MINUTES [FUZZER...]"
MINUTES=$1
shift
ensure_packages build fuzz
build fuzz fuzzers
mapfile -t names < <(cd "$FUZZERS" && printf '%s\n' */command | sed 's|/command||')
[[ $# != 0 ]] || set -- "${names[@]}"
for name in "$@"; do
    [[ -e $FUZZERS/$name/command ]] || fail "there is no fuzzer $name; there are: ${names[*]}"
done
FAILED=()
rm -rf "$LOGS"
mkdir -p "$LOGS"
say "Fuzzing $* for $MINUTES min each"
end_with_script
printf '%s\n' "$@" >"$LOGS/names"
start xargs -a "$LOGS/names" -n 1 -P "$(nproc)" "$SCRIPTS/fuzz.sh" --one "$MINUTES"
wait "$STARTED" || true
report "$@"
[[ ${#FAILED[@]} == 0 ]] || remedy
say "Nothing found"
