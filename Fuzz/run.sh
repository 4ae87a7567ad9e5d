#!/usr/bin/env bash
# run.sh SECONDS [TARGET...]: runs the fuzz targets, all or those named, each for that many seconds, from the seeds and
# from the corpus below build/fuzz/corpus. JOBS targets run at a time (2); SEED fixes the random numbers. Prints the
# number of inputs, and the inputs that failed; fails if there are any.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ $# -gt 0 ] || { sed -n '2,4s/^# //p' Fuzz/run.sh >&2; exit 2; }
export seconds=$1 bin=build/fuzz/bin corpus=build/fuzz/corpus found=build/fuzz/found
shift

run_target() {
    local target=$1 log="$found/$1.log" options=()
    [ ! -f "Fuzz/Dictionaries/$target" ] || options+=("-dict=Fuzz/Dictionaries/$target")
    [ -z "${SEED:-}" ] || options+=("-seed=$SEED")
    mkdir -p "$corpus/$target" "$found"
    if "$bin/${target}Fuzz" "$corpus/$target" "Fuzz/Seeds/$target" "${options[@]}" -max_total_time="$seconds" \
        -max_len=1024 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$found/$target-" \
        >"$log" 2>&1; then
        echo "$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") inputs"
    else
        echo "$target: FAILED, see $log"
        grep -aE '^(violated|found|expected)|ERROR|SUMMARY|runtime error|Test unit written|^Base64' "$log" || true
        return 1
    fi
}
export -f run_target

if [ $# -eq 0 ]; then
    mapfile -t targets < <(ls Fuzz/Seeds)
    set -- "${targets[@]}"
fi
printf '%s\n' "$@" | xargs -P "${JOBS:-2}" -I TARGET bash -c 'run_target TARGET'
