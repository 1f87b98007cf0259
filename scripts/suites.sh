# shellcheck shell=bash disable=SC2154
# Sourced by ./test: the table of all suites, and what their commands call.

FUZZ_RUNS=${FUZZ_RUNS:-5000}
MODEL_CASES=${MODEL_CASES:-100}
SEARCH_CASES=${SEARCH_CASES:-60}
RATES_CASES=${RATES_CASES:-40}
WALK_CASES=${WALK_CASES:-20}

# A line for each suite, in the order in which they begin: its name, what it needs, its command.
# It can need
#   PRESET:TARGET,...   targets of a build; windows is the one that DOZEWELL_WINDOWS names,
#   machine             a Wine machine that no other suite uses at the time,
#   a list of packages  by its name in scripts/packages.sh, in small letters;
# a suite that is idle only takes the processors when no other wants them, and one with "named" runs
# when a word names it: sanitized and on Windows the same tests run in any case.
# A command prints how many of its tests passed and failed, as its last line or as doctest does.
suites() {
  cat <<'END'
format | format | passes clang_format
floors | python | passes tests/checks/floors.py
messages | python | passes tests/checks/messages.py
links | python | passes tests/checks/links.py
docs | native:dozewell-replay,manual python pages | /usr/bin/python3 -m tests.docs_test --build build/native
Python | pyflakes | passes pyflakes3 tests lab packaging scripts
shell | shellcheck | passes shellcheck -x test run package .ci/run scripts/*.sh
model: its own tests | python | python3 -m tests.model.engine_model_test
model of the optimizer: its own tests | python | python3 -m tests.model.optimizer_model_test
model of the rates: its own tests | python | python3 -m tests.model.rates_model_test
model of the rates, walked forward | python | python3 -m tests.model.rates_walk --years 4 --days 100 $traces
table of walks forward | native:dozewell-replay python | python3 -m tests.walk_forward_table_test --tool build/native/dozewell-replay
administrative template | python | python3 -m tests.template_rules_test
scenarios, Windows | windows:DozewellService,dozewellctl,dozewell-replay,lab,rpc_wire_test,rpc_clients_test wine python packaging | lab/run_scenarios.py --build $programs
installer, Windows | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup machine python packaging | python3 -m tests.installer_test --wine "$wine" --programs $programs --out build/installer-test
powerwatch, Windows | windows:dozewell-powerwatch,dozewell-replay machine python | python3 -m tests.powerwatch_test --wine "$wine" --folder $programs
tables of the package, Windows | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup python packaging | python3 -m tests.msi_rules_test --programs $programs --out build/msi-rules-test
rpc clients, Windows | windows:DozewellService,rpc_clients_test machine | $wine $programs/rpc_clients_test.exe $programs/DozewellService.exe
unit tests | native:unit_tests named | build/native/unit_tests
model against native and Windows | native:dozewell-replay windows:dozewell-replay machine python | replay_model replay_model_test "$MODEL_CASES"
model of the optimizer against native and Windows | native:dozewell-replay windows:dozewell-replay machine python | replay_model replay_optimizer_test "$SEARCH_CASES"
model of the rates against native and Windows | native:dozewell-replay windows:dozewell-replay machine python | replay_model replay_rates_test "$RATES_CASES"
model of walking forward against native and Windows | native:dozewell-replay windows:dozewell-replay machine python | replay_model replay_walk_test "$WALK_CASES"
the service against dozewell-replay, Windows | native:dozewell-replay windows:DozewellService,lab wine python | lab/compare_decisions.py --build $programs $traces
exported settings against the service, Windows | native:dozewell-replay windows:DozewellService,dozewellctl,lab wine python | lab/compare_settings.py --build $programs --folder build/play-settings $traces
its searches against dozewell-replay, Windows | native:dozewell-replay windows:DozewellService,lab wine python | lab/compare_search.py --build $programs --folder build/play-search $traces
its life against dozewell-replay, Windows | native:dozewell-replay windows:DozewellService,lab wine python | lab/compare_walk.py --build $programs --folder build/play-walk $traces
client, Windows | windows:DozewellService,dozewellctl,dozewell-replay machine python | python3 -m tests.ctl_cli_test --wine "$wine" --folder $programs
metrics, Windows | windows:DozewellService,dozewellctl machine python metrics | /usr/bin/python3 -m tests.ctl_metrics_test --wine "$wine" --folder $programs
rpc packets, Windows | windows:DozewellService,rpc_wire_test machine | $wine $programs/rpc_wire_test.exe $programs/DozewellService.exe
command line, Windows | windows:dozewell-replay machine python | replay_test replay_cli_test windows
JSON, Windows | windows:dozewell-replay machine python | replay_test json_cli_test windows
searching, Windows | windows:dozewell-replay machine python | replay_test optimizer_cli_test windows
event logs, Windows | windows:dozewell-replay machine python | replay_test event_log_cli_test windows
comparing, Windows | windows:dozewell-replay machine python | replay_test compare_cli_test windows
fleet, Windows | windows:dozewell-replay machine python | replay_test fleet_cli_test windows
reports, Windows | windows:dozewell-replay machine python | replay_test report_cli_test windows
wrong commands, Windows | windows:dozewell-replay machine python | replay_test replay_wrong_commands_test windows
wrong commands of the client, Windows | windows:dozewellctl,dozewell-replay machine python | python3 -m tests.ctl_wrong_commands_test --wine "$wine" --folder $programs
files, Windows | windows:dozewell-replay machine python | replay_test files_cli_test windows
logic, Windows | windows:unit_tests machine | $wine $programs/unit_tests.exe
leaves, Windows | windows:leaf_tests machine | $wine $programs/leaf_tests.exe
stress, Windows | windows:controller_stress machine | $wine $programs/controller_stress.exe 4000
ping against an empty server, Windows | windows:DozewellService,ping_bench machine | $wine $programs/ping_bench.exe $programs/DozewellService.exe
power cuts | native:power_cut python | python3 -m tests.power_cut_test --program build/native/power_cut
power cuts, Windows | windows:power_cut machine python | python3 -m tests.power_cut_test --program "$wine $programs/power_cut.exe"
docs, Windows | native:dozewell-replay windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup,lab wine python pages packaging | /usr/bin/python3 -m tests.docs_windows_test --build $programs
manuals | native:manual,dozewell-replay python manuals shellcheck | python3 -m tests.manuals_test --build build/native
stress | native:controller_stress named | build/native/controller_stress 20000
fleet | native:dozewell-replay python | replay_test fleet_cli_test native
fleet on Dask | native:dozewell-replay python dask | /usr/bin/python3 -m tests.fleet_dask_test --tool build/native/dozewell-replay
reports in a browser | native:dozewell-replay python browser | python3 -m tests.report_browser_test --tool build/native/dozewell-replay
logic, sanitized | asan:unit_tests | build/asan/unit_tests
command line, sanitized | asan:dozewell-replay python | replay_test replay_cli_test asan
JSON, sanitized | asan:dozewell-replay python | replay_test json_cli_test asan
searching, sanitized | asan:dozewell-replay python | replay_test optimizer_cli_test asan
event logs, sanitized | asan:dozewell-replay python | replay_test event_log_cli_test asan
comparing, sanitized | asan:dozewell-replay python | replay_test compare_cli_test asan
fleet, sanitized | asan:dozewell-replay python | replay_test fleet_cli_test asan damaged wrong no_machines broken
fleet, threads sanitized | tsan:dozewell-replay python | replay_test fleet_cli_test tsan threads
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
fuzz powerwatch files | asan:powerwatch_fuzz | passes fuzz powerwatch
imports, Windows | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup,dozewell-powerwatch python | passes check_programs imports x86_64-w64-mingw32-objdump
hardening, Windows | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup,dozewell-powerwatch python | passes check_programs hardening x86_64-w64-mingw32-objdump
resources, Windows | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup,dozewell-powerwatch python | passes check_programs resources
surface, Windows | windows:all python | passes tests/checks/surface.py x86_64-w64-mingw32-nm $programs
package | windows:DozewellService,dozewellctl,dozewell-replay,dozewell-setup,dozewell-powerwatch python packaging signing | python3 -m tests.package_test
size of the service, Windows | windows:DozewellService | passes loads_at_most $((600 * 1024)) $programs/DozewellService.exe
clang-tidy | native:dozewell-replay tidy python idle | passes tests/checks/tidy.py --build build/native
clang-tidy, Windows | windows:all tidy python idle | passes tidy_windows
END
}

# What is built when all suites are run; a build without a line has no more than they need.
everything_of() {
  case $1 in
    asan | windows | clang) echo all ;;
    native) echo dozewell-replay benchmarks ;;
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
  [[ $2 != windows ]] || tool="$wine $programs/dozewell-replay.exe"
  python3 -m "tests.$1" --tool "$tool" "${@:3}"
}

# replay_model PROGRAM CASES: compares dozewell-replay, native and for Windows, with the model.
replay_model() {
  # shellcheck disable=SC2086
  python3 -m "tests.model.$1" --tool build/native/dozewell-replay \
    --second-tool "$wine $programs/dozewell-replay.exe" --cases "$2" --seed 1 $traces "${@:3}"
}

fuzz() {
  local new=build/fuzz/new-$1
  # The run keeps what it finds out of the corpus.
  rm -rf "$new"
  mkdir -p "$new"
  "build/asan/${1}_fuzz" "$new" "tests/fuzz/corpus/$1" -seed=1 -runs="$FUZZ_RUNS" -max_len=4096 \
    -artifact_prefix="$new/"
}

# check_programs CHECK ARGUMENT...: a check of tests/checks, on the programs for Windows.
check_programs() {
  local names=(DozewellService dozewell-replay dozewellctl dozewell-setup dozewell-powerwatch)
  names=("${names[@]/#/$programs/}")
  "tests/checks/$1.py" "${@:2}" "${names[@]/%/.exe}"
}

# loads_at_most BYTES PROGRAM: how much memory the sections of a program take. lld also puts sections
# into it that are for debuggers only.
loads_at_most() {
  local size
  size=$(x86_64-w64-mingw32-size "$2" | awk 'NR == 2 {print $4}')
  echo "$2: $size bytes, at most $1"
  ((size <= $1))
}

# With the options that clang needs to read what the cross compiler reads.
tidy_windows() {
  local folders
  mapfile -t folders < <(x86_64-w64-mingw32-g++ -E -x c++ -v - </dev/null 2>&1 |
    sed -n '/^#include </,/^End/s/^ //p' | grep -E 'c\+\+|mingw32/include$')
  tests/checks/tidy.py --build "$programs" --sources '_windows(_test)?\.cpp$' -- \
    --target=x86_64-w64-mingw32 "${folders[@]/#/-isystem}"
}
