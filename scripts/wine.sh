# Sourced: start_wine FOLDER makes a Wine machine of its own in a folder, with nothing on it;
# stop_wine ends it. "${WINE[@]}" runs a program on it.

# With addresses drawn by chance, Wine finds a page of its own taken once in some thousand starts.
WINE=(wine)
if setarch -R true 2>/dev/null; then WINE=(setarch -R wine); fi

start_wine() {
  export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=-all
  # Without its debugger a crash ends a program with an error, with it sometimes as a success.
  export WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe=d"
  # Names of files beyond ASCII reach the system in this encoding.
  export LC_ALL=C.UTF-8
  unset DISPLAY
  # A time zone from here would disturb the C runtime's local time there.
  unset TZ
  [[ ! -d $WINEPREFIX ]] || stop_wine 2>/dev/null
  rm -rf "$WINEPREFIX"
  "${WINE[@]}" wineboot -i </dev/null >/dev/null 2>&1
  wineserver -w
  # Keeps the machine running between programs.
  wineserver -p </dev/null >/dev/null 2>&1
  # Whatever starts first also starts the machine's services, which keep its output open.
  "${WINE[@]}" cmd /c exit </dev/null >/dev/null 2>&1
}

stop_wine() {
  wineserver -k
  wineserver -w
}
