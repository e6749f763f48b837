# The real program on a display of its own, for the scripts that drive it from outside: they source this with
# the folder of the programs and, for those who want pictures, a folder for them. `manager` names a window manager,
# `sample_scale` the size of the sample.
programs=$1 pictures=${2:-}
world=$(mktemp -d)
export HOME=$world/home QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$world/run
unset XDG_DATA_HOME XDG_CONFIG_HOME XDG_DESKTOP_DIR QT_SCALE_FACTOR
mkdir -p -m 700 "$HOME" "$XDG_RUNTIME_DIR" "$world/bin"
printf '#!/bin/sh\n' >"$world/bin/xdg-open" && chmod +x "$world/bin/xdg-open"  # no browser comes in the way
PATH=$world/bin:$PATH
app=$world/app ini="$world/app/resources/Do_Not_Delete!/routes.ini"

end() { kill "$display" "${larkmoor:-}" 2>/dev/null || true; rm -rf "$world"; }
trap end EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
until_true() {  # seconds, what, command...
  local tries=$(($1 * 20)) what=$2; shift 2
  until "$@" >/dev/null 2>&1; do ((tries-- > 0)) || fail "$what"; sleep 0.05; done
}
window() { xdotool search --onlyvisible --name "^$1\$"; }
gone() { ! window "$1"; }
is_at() { window "$1" && [[ $(xdotool getwindowgeometry --shell "$(window "$1" | tail -1)") == *"$2"* ]]; }
click() {  # x y in the window that is on top
  eval "$(xdotool getwindowgeometry --shell "$(window "$title" | tail -1)")"
  xdotool mousemove $((X + $1)) $((Y + $2)) sleep 0.1 click "${3:-1}"
}
picture() { [[ -z $pictures ]] || { sleep 0.3; import -window "$(window "$title" | tail -1)" "$pictures/$1.png"; }; }

"$programs/quillon" sample "$world/s" ${sample_scale:+--scale "$sample_scale"} >/dev/null
"$programs/quillon" --app "$app" setup --game "$world/s/game" >/dev/null
mkdir "$app/downloaded_routes" && cp "$world/s/zips/"*.zip "$app/downloaded_routes/"

Xvfb -displayfd 1 -screen 0 800x600x24 >"$world/display" 2>/dev/null &
display=$!; disown
until_true 20 "a display" grep -q . "$world/display"
export DISPLAY=:$(<"$world/display")
[[ -z ${manager:-} ]] || { "$manager" 2>/dev/null & sleep 1; }
"$programs/Larkmoor" --app "$app" & larkmoor=$!

