# shellcheck shell=bash
# Sourced. A Wine machine is kept in a folder of its own:
#   use_wine FOLDER [ZONE]   chooses the machine that all others here are about
#   create_wine              makes it anew, with nothing on it, and leaves it switched off
#   boot_wine                switches it on
#   stop_wine                switches it off
#   start_wine FOLDER        does all of that for a new machine, which is then on
# "${WINE[@]}" runs a program on it.

# Addresses drawn by chance collide with a page of Wine's own once in some thousand starts.
WINE=(wine)
if setarch -R true 2>/dev/null; then WINE=(setarch -R wine); fi

use_wine() {
  export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=-all
  # A program that crashes ends with an error; with Wine's debugger it sometimes ends with success.
  export WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe=d"
  # Names of files beyond ASCII reach the system in this encoding.
  export LC_ALL=C.UTF-8
  unset DISPLAY
  # Wine takes its zone from here; programs that ask the C runtime for it must clear it first.
  if (($# > 1)); then export TZ=$2; else unset TZ; fi
}

create_wine() {
  [[ ! -d $WINEPREFIX ]] || stop_wine 2>/dev/null
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  "${WINE[@]}" wineboot -i </dev/null >/dev/null 2>&1
  # A service on a busy computer may take its time to answer; Wine gives it ten seconds by itself.
  "${WINE[@]}" reg add 'HKLM\System\CurrentControlSet\Control' /v ServicesPipeTimeout \
    /t REG_SZ /d 600000 /f </dev/null >/dev/null 2>&1
  wineserver -w
}

boot_wine() {
  # Keeps the machine running between programs.
  wineserver -p </dev/null >/dev/null 2>&1
  # The first program also starts the machine's services, which would keep its output open.
  "${WINE[@]}" cmd /c exit </dev/null >/dev/null 2>&1
}

stop_wine() {
  wineserver -k
  wineserver -w
}

start_wine() {
  use_wine "$1" && create_wine && boot_wine
}
