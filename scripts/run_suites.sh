# shellcheck shell=bash
# The table is read by ./test, and its commands use variables from here.
# shellcheck disable=SC2034,SC2154
#
# Sourced by ./test after scripts/suites.sh: run_suites NUMBER... runs suites of the table that
# ./test has read into names, needs and commands; arguments are added to each command. If everything
# is set, the builds are whole.
#
# Every build and every suite is a job. A job begins when the builds that it needs are done and a
# Wine machine is free if it needs one; several jobs run at a time, but only one build, because a
# build keeps all processors busy by itself.

source scripts/packages.sh
source scripts/wine.sh

LOGS=$PWD/build/test
MACHINES=2
JOBS_AT_ONCE=$(($(nproc) + 2))
# The failed suite's last lines that are shown.
LINES_SHOWN=60

WINDOWS_PRESET=${DOZEWELL_WINDOWS:-windows}

# Used by the commands in the table.
wine=${WINE[*]}
programs=build/$WINDOWS_PRESET
traces=${DOZEWELL_TRACES:+--traces $DOZEWELL_TRACES}

# Jobs: numbers of suites, and "build PRESET". Of each: the builds that it waits for, when it began,
# the Wine machine that it has, and how long it used a processor.
declare -A waits_for=() began=() machine_of=() processor_seconds=()
declare -A targets=()  # of a build, by its preset
declare -A built=()    # yes or no, by preset
declare -A running=()  # jobs by their processes
declare -A in_use=()   # jobs by their Wine machines
waiting=()
passed=0
failed=0
failures=()

# need_of SUITE: sorts what a suite needs into packages, targets and the builds to wait for.
need_of() {
  local suite=$1 need preset words
  read -ra words <<<"${needs[suite]}"
  for need in "${words[@]}"; do
    case $need in
      *:*)
        preset=${need%%:*}
        [[ $preset != windows ]] || preset=$WINDOWS_PRESET
        [[ -v targets[$preset] ]] || presets+=("$preset")
        targets[$preset]+=" ${need#*:}"
        waits_for[$suite]+=" $preset"
        ;;
      machine) lists+=(wine) ;;
      idle | named) ;;
      *) lists+=("$need") ;;
    esac
  done
}

has() {
  [[ " ${needs[$1]} " == *" $2 "* ]]
}

packages_for_builds() {
  local preset
  for preset in "$@"; do
    lists+=(build)
    case $preset in
      asan) lists+=(clang) ;;
      windows) lists+=(cross) ;;
      clang) lists+=(cross clang lld) ;;
    esac
  done
}

install_packages() {
  local list packages=()
  for list in "${lists[@]}"; do
    local -n names_of_list=${list^^}_PACKAGES
    packages+=("${names_of_list[@]}")
  done
  mapfile -t packages < <(printf '%s\n' "${packages[@]}" | sort -u)
  need_packages "${packages[@]}"
}

run_suites() {
  local lists=() presets=() suite preset
  for suite in "$@"; do need_of "$suite"; done
  # The longest suites wait for the programs for Windows.
  mapfile -t presets < <(printf '%s\n' "${presets[@]}" |
    awk -v first="$WINDOWS_PRESET" '$0 == first {print} $0 != first && NF {rest = rest $0 "\n"}
      END {printf "%s", rest}')
  packages_for_builds "${presets[@]}"
  ((${#lists[@]} == 0)) || install_packages
  for preset in "${presets[@]}"; do
    # All suites together show that everything builds.
    [[ -z ${everything:-} ]] || targets[$preset]+=" $(everything_of "$preset")"
    waiting+=("build $preset")
  done
  waiting+=("$@")
  mkdir -p "$LOGS"
  # Each job is a group of processes, so that it can be ended with all that it has started.
  set -m
  trap stop EXIT
  run_jobs
  report
}

run_jobs() {
  local job process status i
  while ((${#waiting[@]} + ${#running[@]})); do
    for i in "${!waiting[@]}"; do
      begin_if_possible "${waiting[i]}" && unset "waiting[i]"
    done
    ((${#running[@]})) || continue
    wait -n -p process "${!running[@]}"
    status=$?
    job=${running[$process]}
    unset "running[$process]"
    processor_seconds[$job]=$(processor_seconds_of "$process")
    finish "$job" $status
  done
}

# Begins a job or, when a build that it needs has failed, counts it as failed; false when it has to
# wait.
begin_if_possible() {
  local job=$1 preset
  for preset in ${waits_for[$job]:-}; do
    case ${built[$preset]:-} in
      "") return 1 ;;
      no)
        echo "not run: its build failed" >"$(log_of "$job")"
        began[$job]=$SECONDS
        count "$job" 0 1
        return 0
        ;;
    esac
  done
  if [[ $job == build* ]]; then
    [[ " ${running[*]}" != *" build "* ]] || return 1
  elif ! has "$job" idle; then
    (($(busy_jobs) < JOBS_AT_ONCE)) || return 1
  fi
  if [[ $job != build* ]] && has "$job" machine; then take_machine "$job" || return 1; fi
  began[$job]=$SECONDS
  run_job "$job" >"$(log_of "$job")" 2>&1 </dev/null &
  running[$!]=$job
}

# How many jobs run that take the processors for themselves.
busy_jobs() {
  local job count=0
  for job in "${running[@]}"; do
    if [[ $job == build* ]] || ! has "$job" idle; then ((++count)); fi
  done
  echo "$count"
}

take_machine() {
  local i
  for ((i = 1; i <= MACHINES; ++i)); do
    if [[ -z ${in_use[$i]:-} ]]; then
      in_use[$i]=$1
      machine_of[$1]=$i
      return 0
    fi
  done
  return 1
}

# Runs a job, and keeps how long it used a processor.
run_job() {
  local status
  run "$1"
  status=$?
  times >"$LOGS/processor-$BASHPID"
  return $status
}

run() {
  local job=$1 command
  if [[ $job == build* ]]; then
    build "${job#build }"
    return
  fi
  if has "$job" machine; then use_machine "${machine_of[$job]}"; fi
  ! has "$job" idle || renice -n 19 $BASHPID >/dev/null
  command=${commands[job]}
  # The arguments stand as they were given, whatever is in them.
  eval "$command \"\${arguments[@]}\""
}

# processor_seconds_of PROCESS: of a job that has ended, with all that it waited for. What Wine's own
# processes do for it is not counted.
processor_seconds_of() {
  local times=$LOGS/processor-$1
  [[ -e $times ]] || return 0
  # The second line is of the processes that it has waited for.
  tr 'ms' '  ' <"$times" | awk 'NR == 2 {printf "%.0f", 60 * $1 + $2 + 60 * $3 + $4}'
  rm "$times"
}

# A Wine machine is made when it is first needed, and stays on for the next suite.
use_machine() {
  local folder=$PWD/build/wine/$1
  if [[ -e $LOGS/machine-$1 ]]; then
    use_wine "$folder"
  else
    start_wine "$folder" && touch "$LOGS/machine-$1"
  fi
}

build() {
  local preset=$1 list
  read -ra list <<<"${targets[$preset]//,/ }"
  # Ninja configures anew when that is needed.
  [[ -e build/$preset/build.ninja ]] || cmake --preset "$preset" || return
  cmake --build --preset "$preset" --target "${list[@]}"
}

name_of() {
  if [[ $1 == build* ]]; then echo "$1"; else echo "${names[$1]}"; fi
}

log_of() {
  local name
  name=$(name_of "$1")
  echo "$LOGS/${name//[^A-Za-z0-9]/-}.log"
}

finish() {
  local job=$1 status=$2 good bad
  if [[ $job == build* ]]; then
    built[${job#build }]=$( ((status == 0)) && echo yes || echo no)
    bad=$((status != 0))
    count "$job" $((1 - bad)) $bad
    return
  fi
  unset "in_use[${machine_of[$job]:-0}]"
  # A suite that prints no count, or that fails without a failed test, is a failure itself.
  read -r good bad < <(tr -d '\r' <"$(log_of "$job")" | sed -nE \
    -e 's/^\[doctest\] test cases: +[0-9]+ \| +([0-9]+) passed \| +([0-9]+) failed.*/\1 \2/p' \
    -e 's/^([0-9]+) passed, ([0-9]+) failed$/\1 \2/p' | tail -n 1)
  if [[ -z ${good:-} ]] || ((good + bad == 0)) || ((status != 0 && bad == 0)); then
    echo "exit code $status" >>"$(log_of "$job")"
    good=${good:-0}
    bad=$((${bad:-0} + 1))
  fi
  count "$job" "$good" "$bad"
}

# count JOB GOOD BAD: adds up, says how long the job took and used a processor, and shows the end of
# the output of one that failed.
count() {
  local name
  name=$(name_of "$1")
  ((passed += $2, failed += $3))
  printf '%-36s %5d passed, %d failed %5d s %5d s\n' "$name" "$2" "$3" $((SECONDS - began[$1])) \
    "${processor_seconds[$1]:-0}"
  (($3)) || return 0
  failures+=("$name")
  tail -n "$LINES_SHOWN" "$(log_of "$1")"
}

report() {
  local name
  for name in "${failures[@]}"; do
    echo "Failed: $name"
  done
  echo "$passed passed, $failed failed"
  ((failed == 0))
}

# Ends what still runs, and switches the Wine machines off.
stop() {
  local i groups=("${!running[@]}")
  ((${#groups[@]} == 0)) || kill -- "${groups[@]/#/-}" 2>/dev/null
  for ((i = 1; i <= MACHINES; ++i)); do
    if [[ -e $LOGS/machine-$i ]]; then
      WINEPREFIX=$PWD/build/wine/$i stop_wine
      rm -f "$LOGS/machine-$i"
    fi
  done
}
