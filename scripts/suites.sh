# shellcheck shell=bash disable=SC2154
# Sourced by ./test: the table of all suites, and what their commands call.

FUZZ_RUNS=${FUZZ_RUNS:-5000}
MODEL_CASES=${MODEL_CASES:-100}
SEARCH_CASES=${SEARCH_CASES:-60}

# A line for each suite, in the order in which they begin: its name, what it needs, its command.
# It can need
#   PRESET:TARGET,...   targets of a build,
#   machine             a Wine machine that no other suite uses at the time,
#   a list of packages  by its name in scripts/packages.sh, in small letters;
# a suite that is idle only takes the processors when no other wants them.
# A command prints how many of its tests passed and failed, as its last line or as doctest does.
suites() {
  cat <<'END'
format | format | passes clang_format
floors | python | passes tests/checks/floors.py
messages | python | passes tests/checks/messages.py
links | python | passes tests/checks/links.py
Python | pyflakes | passes pyflakes3 tests lab packaging scripts
shell | shellcheck | passes shellcheck -x test run package .ci/run scripts/*.sh
model: its own tests | python | python3 -m tests.model.engine_model_test
model of the optimizer: its own tests | python | python3 -m tests.model.optimizer_model_test
scenarios, Windows | windows:DozewellService,dozewellctl,dozewell-replay,lab,rpc_wire_test,rpc_clients_test wine python packaging | lab/run_scenarios.py
installer, Windows | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup machine python packaging | python3 -m tests.installer_test --wine "$wine" --programs build/windows --out build/installer-test
rpc clients, Windows | windows:DozewellService,rpc_clients_test machine | $wine build/windows/rpc_clients_test.exe build/windows/DozewellService.exe
unit tests | native:unit_tests | build/native/unit_tests
model against native and Windows | native:dozewell-replay windows:dozewell-replay machine python | replay_model replay_model_test "$MODEL_CASES"
model of the optimizer against both | native:dozewell-replay windows:dozewell-replay machine python | replay_model replay_optimizer_test "$SEARCH_CASES"
the service against dozewell-replay | native:dozewell-replay windows:DozewellService,lab wine python | lab/compare_decisions.py $traces
its searches against dozewell-replay | native:dozewell-replay windows:DozewellService,lab wine python | lab/compare_search.py --folder build/play-search $traces
client, Windows | windows:DozewellService,dozewellctl,dozewell-replay machine python | python3 -m tests.ctl_cli_test --wine "$wine" --folder build/windows
rpc packets, Windows | windows:DozewellService,rpc_wire_test machine | $wine build/windows/rpc_wire_test.exe build/windows/DozewellService.exe
command line, Windows | windows:dozewell-replay machine python | replay_test replay_cli_test windows
JSON, Windows | windows:dozewell-replay machine python | replay_test json_cli_test windows
searching, Windows | windows:dozewell-replay machine python | replay_test optimizer_cli_test windows
event logs, Windows | windows:dozewell-replay machine python | replay_test event_log_cli_test windows
comparing, Windows | windows:dozewell-replay machine python | replay_test compare_cli_test windows
reports, Windows | windows:dozewell-replay machine python | replay_test report_cli_test windows
wrong commands, Windows | windows:dozewell-replay machine python | replay_test replay_wrong_commands_test windows
wrong commands of the client, Windows | windows:dozewellctl,dozewell-replay machine python | python3 -m tests.ctl_wrong_commands_test --wine "$wine" --folder build/windows
files, Windows | windows:dozewell-replay machine python | replay_test files_cli_test windows
logic, Windows | windows:unit_tests machine | $wine build/windows/unit_tests.exe
leaves, Windows | windows:leaf_tests machine | $wine build/windows/leaf_tests.exe
stress, Windows | windows:controller_stress machine | $wine build/windows/controller_stress.exe 4000
ping against an empty server | windows:DozewellService,ping_bench machine | $wine build/windows/ping_bench.exe build/windows/DozewellService.exe
power cuts | native:power_cut python | python3 -m tests.power_cut_test --program build/native/power_cut
power cuts, Windows | windows:power_cut machine python | python3 -m tests.power_cut_test --program "$wine build/windows/power_cut.exe"
stress | native:controller_stress | build/native/controller_stress 20000
reports in a browser | native:dozewell-replay python browser | python3 -m tests.report_browser_test --tool build/native/dozewell-replay
logic, sanitized | asan:unit_tests | build/asan/unit_tests
command line, sanitized | asan:dozewell-replay python | replay_test replay_cli_test asan
JSON, sanitized | asan:dozewell-replay python | replay_test json_cli_test asan
searching, sanitized | asan:dozewell-replay python | replay_test optimizer_cli_test asan
event logs, sanitized | asan:dozewell-replay python | replay_test event_log_cli_test asan
comparing, sanitized | asan:dozewell-replay python | replay_test compare_cli_test asan
reports, sanitized | asan:dozewell-replay python | replay_test report_cli_test asan
wrong commands, sanitized | asan:dozewell-replay python | replay_test replay_wrong_commands_test asan
files, sanitized | asan:dozewell-replay python | replay_test files_cli_test asan
stress, sanitized | asan:controller_stress | build/asan/controller_stress 4000
stress, threads sanitized | tsan:controller_stress | build/tsan/controller_stress 4000
fuzz data files | asan:data_file_fuzz | passes fuzz data_file
fuzz rates files | asan:rates_file_fuzz | passes fuzz rates_file
fuzz histories | asan:history_fuzz | passes fuzz history
fuzz settings | asan:settings_fuzz | passes fuzz settings
fuzz csv | asan:csv_fuzz | passes fuzz csv
fuzz event logs | asan:event_log_fuzz | passes fuzz event_log
imports | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup python | passes check_programs imports
hardening | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup python | passes check_programs hardening
surface | windows:all python | passes tests/checks/surface.py x86_64-w64-mingw32-nm build/windows
package | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup python packaging | passes ./package
size of the service | windows:DozewellService | passes at_most $((600 * 1024)) build/windows/DozewellService.exe
clang-tidy | native:all tidy python idle | passes tests/checks/tidy.py --build build/native
clang-tidy, Windows | windows:all tidy python idle | passes tidy_windows
END
}

# What is built when all suites are run; a build without a line has no more than they need.
everything_of() {
  case $1 in
    native | asan | windows) echo all ;;
  esac
}

# Counts a command as one test, which passes when the command succeeds.
passes() {
  if "$@"; then
    echo "1 passed, 0 failed"
  else
    echo "exit code $?"
    echo "0 passed, 1 failed"
    return 1
  fi
}

clang_format() {
  find bench lab src tests tools '(' -name '*.h' -o -name '*.cpp' ')' \
    -exec clang-format --dry-run --Werror '{}' +
}

# replay_test PROGRAM BUILD: tests the command line of dozewell-replay.
replay_test() {
  local tool=build/$2/dozewell-replay
  [[ $2 != windows ]] || tool="$wine $tool.exe"
  python3 -m "tests.$1" --tool "$tool" "${@:3}"
}

# replay_model PROGRAM CASES: compares dozewell-replay, native and for Windows, with the model.
replay_model() {
  # shellcheck disable=SC2086
  python3 -m "tests.model.$1" --tool build/native/dozewell-replay \
    --second-tool "$wine build/windows/dozewell-replay.exe" --cases "$2" --seed 1 $traces "${@:3}"
}

fuzz() {
  local new=build/fuzz/new-$1
  # The run keeps what it finds out of the corpus.
  rm -rf "$new"
  mkdir -p "$new"
  "build/asan/${1}_fuzz" "$new" "tests/fuzz/corpus/$1" -seed=1 -runs="$FUZZ_RUNS" -max_len=4096 \
    -artifact_prefix="$new/"
}

# check_programs CHECK: a check of tests/checks, on the programs for Windows.
check_programs() {
  local program programs=()
  for program in DozewellService dozewell-replay dozewellctl dozewell-setup; do
    programs+=("build/windows/$program.exe")
  done
  "tests/checks/$1.py" x86_64-w64-mingw32-objdump "${programs[@]}"
}

at_most() {
  local size
  size=$(stat -c %s "$2")
  echo "$2: $size bytes, at most $1"
  ((size <= $1))
}

# With the options that clang needs to read what the cross compiler reads.
tidy_windows() {
  local folders
  mapfile -t folders < <(x86_64-w64-mingw32-g++ -E -x c++ -v - </dev/null 2>&1 |
    sed -n '/^#include </,/^End/s/^ //p' | grep -E 'c\+\+|mingw32/include$')
  tests/checks/tidy.py --build build/windows --sources '_windows(_test)?\.cpp$' -- \
    --target=x86_64-w64-mingw32 "${folders[@]/#/-isystem}"
}
