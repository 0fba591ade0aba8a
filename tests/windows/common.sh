# What the tests of whole programs for Windows share. They run on a display of their own, with a Windows of their own that
# is made new for every run. Sourced, after "name" is set to the test's name.

tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$tests/../.." && pwd)
if [ -z "${WARPLINE_ON_OWN_DISPLAY:-}" ]; then
  export WARPLINE_ON_OWN_DISPLAY=1
  exec xvfb-run -a -s "-screen 0 1600x1000x24" "$0" "$@"
fi

work=$(mktemp -d)
export WINEPREFIX=$work/wine
unset XDG_CONFIG_HOME
export LC_ALL=C.UTF-8
started=()
finish() {
  local process
  for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
  WINEDEBUG=-all wineserver -k 2>/dev/null || true
  WINEDEBUG=-all wineserver -w 2>/dev/null || true
  rm -rf "$work"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

run() { "$tests/run-with-wine" "$@"; }
fail() {
  printf '%s: %s\n' "$name" "$*" >&2
  exit 1
}
# Tries a command until it succeeds; fails after some time.
until_true() {
  local what=$1 tries
  shift
  for ((tries = 0; tries < 300; ++tries)); do
    if "$@" >/dev/null 2>&1; then return 0; fi
    sleep 0.1
  done
  fail "not in time: $what"
}

# The tool's windows on the screen: the main window alone, and all of them.
window() { xdotool search --onlyvisible --name "^Warpline .* 3.0" | head -n 1 | grep .; }
windows() { xdotool search --onlyvisible --class '^warplinetool\.exe$' | wc -l; }
complete() { [ "$(windows)" -ge 2 ]; }
ended() { ! kill -0 "$1"; }
has_focus() {
  local main
  main=$(window)
  xdotool windowfocus "$main"
  [ "$(xdotool getwindowfocus -f)" = "$main" ]
}
# Starts the tool and waits until its keys work: the preview comes up last. Its process is in "tool".
start_tool() {
  (cd / && exec "$tests/run-with-wine" "$1" "$2") &
  tool=$!
  started+=("$tool")
  until_true "the main window" window
  until_true "the preview beside the main window" complete
  until_true "the keyboard in the main window" has_focus
}
# Keys go to whatever has the focus: a key sent to a window by its number would find it gone when it is released.
asks_or_ended() { ended "$tool" || [ "$(windows)" -ge 3 ]; }
# A tool that is still sending takes no keys.
closes() {
  asks_or_ended && return
  xdotool key alt+F4
  sleep 2
  asks_or_ended
}
answer_no_or_ended() {
  if ended "$tool"; then return 0; fi
  xdotool key n
  return 1
}
# Closes the tool; should it ask whether to save what was changed, the answer is no.
close_tool() {
  until_true "the keyboard in the main window, to close it" has_focus
  until_true "the tool's question or end" closes
  until_true "the end of the tool" answer_no_or_ended
}

# Puts libraries beside a program in the name of the system's, for Wine to prefer, and sees that none is loaded. Those that
# Wine's own libraries bind are left out: see wine-differences.txt.
planted=(dwmapi iphlpapi msimg32 oleacc propsys userenv winmm)
plant_libraries() {
  local library file=$work/planted.dll
  x86_64-w64-mingw32-g++-posix -shared -static -Os -s -o "$file" "$tests/planted_library.cpp"
  for library in "${planted[@]}"; do cp "$file" "$1/$library.dll"; done
  WARPLINE_WINE_NATIVE=$(IFS=, && echo "${planted[*]}")
  export WARPLINE_WINE_NATIVE
}
nothing_planted_was_loaded() {
  local loaded
  loaded=$(find "$1" -name '*.loaded' -printf '%f ')
  [ -z "$loaded" ] || fail "libraries from the program's own folder were taken for the system's: $loaded"
}

run cmd /c "exit 0"
user=$(find "$WINEPREFIX/drive_c/users" -mindepth 1 -maxdepth 1 -type d ! -name Public)
settings="$user/AppData/Roaming/Varnok Beamkit/Warpline Tool 3.0"
