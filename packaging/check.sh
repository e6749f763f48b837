# For the scripts that try a finished package: what they report by, and the window's display. To be sourced; $work is
# the caller's folder for temporary files, and $failed is 1 in the end when anything failed.
failed=0

check() {  # check WHAT COMMAND...
  local what=$1
  shift
  if "$@" < /dev/null > "$work/log" 2>&1; then
    echo "ok      $what"
  else
    echo "FAILED  $what"
    sed 's/^/          /' "$work/log" | tail -20
    failed=1
  fi
}

not() { ! "$@"; }

says() {  # says TEXT COMMAND...: its output holds the text
  local text=$1
  shift
  "$@" > "$work/said" 2>&1
  grep -qF -- "$text" "$work/said" || { cat "$work/said"; return 1; }
}

open_display() {  # a display of its own: sets DISPLAY, and $xvfb for the end
  rm -f "$work/display"
  Xvfb -displayfd 3 -ac -screen 0 1024x768x24 3> "$work/display" > /dev/null 2>&1 &
  xvfb=$!
  until [[ -s $work/display ]]; do sleep 0.1; done
  DISPLAY=:$(< "$work/display")
  export DISPLAY
}

window() {  # window CLASS: waits for a window of that class
  timeout 60 xdotool search --sync --onlyvisible --classname "$1"
}
