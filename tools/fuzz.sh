#!/usr/bin/env bash
# Builds the libFuzzer entry points with clang into $BUILD_DIR (default build-fuzz/) and runs one of
# them, or all, for SECONDS each (default 60):
#     tools/fuzz.sh [TARGET|all] [SECONDS]
# A target is any executable of the build whose name ends in "Fuzz"; its source is fuzz/<TARGET>.cpp
# of a component, its seed corpus fuzz/corpus/<TARGET>/ (or fuzz/corpus/) and its dictionary
# fuzz/<TARGET>.dict when there is one. Each run works on a copy of the corpus, so the committed seeds
# stay as they are; crashes are written to $BUILD_DIR/fuzz-artifacts/<TARGET>/. Exits non-zero when a
# target fails to build or finds anything.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
target=${1:-all}
seconds=${2:-60}
if [[ $target =~ ^[0-9]+$ && $# -eq 1 ]]; then
  seconds=$target
  target=all
fi

TESSAROLINE_WITH_FUZZ=1 "$root/tools/setup.sh"
build_dir=${BUILD_DIR:-$root/build-fuzz}
if [ ! -f "$build_dir/CMakeCache.txt" ]; then
  options=(-DTESSAROLINE_FUZZ=ON -DTESSAROLINE_BENCHMARKS=OFF)
  command -v ccache >/dev/null 2>&1 &&
    options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
  CC=clang CXX=clang++ cmake -S "$root" -B "$build_dir" -G Ninja "${options[@]}" >/dev/null
else
  cmake -S "$root" -B "$build_dir" >/dev/null
fi

# The entry points the build declares, as "path/in/build Name" lines.
mapfile -t declared < <(ninja -C "$build_dir" -t targets all |
  sed -nE 's/^(([^ :]*\/)?([A-Za-z0-9_]+Fuzz)): CXX_EXECUTABLE_LINKER.*/\1 \3/p' | sort -k2)
if [ ${#declared[@]} -eq 0 ]; then
  echo "fuzz: no entry points in $build_dir (is clang the compiler there?)" >&2
  exit 1
fi
selected=()
for line in "${declared[@]}"; do
  name=${line##* }
  if [ "$target" = all ] || [ "$target" = "$name" ]; then
    selected+=("$line")
  fi
done
if [ ${#selected[@]} -eq 0 ]; then
  echo "fuzz: unknown target $target; known: $(printf '%s\n' "${declared[@]}" | cut -d' ' -f2 | xargs)" >&2
  exit 1
fi

names=()
for line in "${selected[@]}"; do names+=("${line##* }"); done
cmake --build "$build_dir" -j2 --target "${names[@]}"

failed=()
for line in "${selected[@]}"; do
  exe=$build_dir/${line% *}
  name=${line##* }
  source=$(cd "$root" && find . -path ./build\* -prune -o -path "*/fuzz/$name.cpp" -print | head -n 1)
  if [ -z "$source" ]; then
    echo "fuzz: no source fuzz/$name.cpp for $name" >&2
    failed+=("$name")
    continue
  fi
  fuzz_dir=$root/$(dirname "$source")
  corpus=$fuzz_dir/corpus/$name
  [ -d "$corpus" ] || corpus=$fuzz_dir/corpus
  args=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1)
  [ -f "$fuzz_dir/$name.dict" ] && args+=(-dict="$fuzz_dir/$name.dict")
  work=$build_dir/fuzz-work/$name
  artifacts=$build_dir/fuzz-artifacts/$name
  rm -rf "$work"
  mkdir -p "$work" "$artifacts"
  if [ -d "$corpus" ]; then
    find "$corpus" -maxdepth 1 -type f -exec cp {} "$work/" \;
  fi
  log=$build_dir/fuzz-work/$name.log
  echo "== $name: ${seconds}s on $(find "$work" -type f | wc -l) seeds"
  set +e
  ASAN_OPTIONS=${ASAN_OPTIONS:-abort_on_error=1:detect_leaks=1} \
    UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1} \
    "$exe" "${args[@]}" -artifact_prefix="$artifacts/" "$work" >"$log" 2>&1
  rc=$?
  set -e
  # The last status line (executions, coverage, features) and the final figures.
  grep -E '^#[0-9]+' "$log" | tail -n 1 || true
  grep -E '^stat::(number_of_executed_units|average_exec_per_sec|peak_rss_mb)' "$log" || true
  if [ $rc -ne 0 ]; then
    echo "fuzz: $name failed (exit code $rc); the log is $log" >&2
    grep -E 'ERROR:|SUMMARY:|^artifact_prefix|Test unit written' "$log" >&2 || tail -n 30 "$log" >&2
    failed+=("$name")
  fi
done

if [ ${#failed[@]} -gt 0 ]; then
  echo "fuzz: failed: ${failed[*]}" >&2
  exit 1
fi
