# For the checks of the Linux packages, besides check.sh: a clean system below $root, and its plain user. To be sourced.

make_system() {  # make_system SUITE PACKAGE...: Debian's bookworm or Ubuntu's noble, with no more than these
  local suite=$1 source
  shift
  if [[ $suite == noble ]]; then
    # Signed with a key that Debian does not know; what is tried here does not outlive the check.
    source="deb [trusted=yes] ${UBUNTU_MIRROR:-http://archive.ubuntu.com/ubuntu} noble main universe"
  else
    source=$(apt-get indextargets --format '$(SITE) $(CODENAME)' 'Created-By: Packages' |
      sed -n "s/ $suite\$//p" | head -1)
    [[ -n $source ]] || { echo "No mirror of $suite is configured"; return 1; }
  fi
  echo "The clean system comes from $source"
  mmdebstrap --quiet --variant=minbase ${*:+"--include=$(IFS=,; echo "$*")"} "$suite" "$root" "$source" || return 1
  mount -t proc proc "$root/proc" || return 1
  cp /etc/resolv.conf "$root/etc/"
  inside useradd --create-home --uid 1000 anna
  inside useradd --create-home --uid 1001 bert
  inside install -d -m 700 -o bert /run/bert
}

inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 "$@"; }

user() { inside setpriv --reuid=1000 --regid=1000 --clear-groups env HOME=/home/anna "$@"; }

remove_system() {
  umount -l "$root/proc" 2> /dev/null
  rm -rf --one-file-system "$root"
}

# use QUILLON: the usual road of a new user, by the program of that name; $app is their folder, $try the game's.
use() {
  local quillon=$1
  check "a missing set-up is told" says "run 'quillon setup'" user "$quillon" start
  check "sample" user "$quillon" sample $try
  check "setup" user "$quillon" setup --game $try/game
  check "start" user "$quillon" --welcome ok start
  check "the user's folder is the one among the user's data" ls "$root$app/resources" "$root$app/downloaded_routes"
  user cp -r $try/zips/. $app/downloaded_routes
  check "add" user "$quillon" add
  check "routes" says "  Grosstal Bahn" user "$quillon" routes
  check "load" user "$quillon" load "Grosstal Bahn"
  check "the route is in the game" ls "$root$try/game/ROUTES/Quillon-route/grosstal.trk"
  check "previews are made" test -s "$root$app/routes/tsGrosstal Bahn.jpg"
  # As if another version had laid the folder out.
  local laid="$root$app/resources/Do_Not_Delete!"
  sed -i $'1s/.*/Quillon 0.9\r/' "$laid/delivered.tsl"
  rm "$root$app/resources/files/help/index.html"
  echo "the user's own" > "$laid/misc_info/files.tsl"
  check "a start of another version" user "$quillon" start
  check "it renews the help" test -e "$root$app/resources/files/help/index.html"
  check "it leaves what the user has changed" grep -q "the user's own" "$laid/misc_info/files.tsl"
  check "the routes are as they were" says "  Grosstal Bahn (Loaded)" user "$quillon" routes
}

# use_window LARKMOOR CLASS: a second user's first start, on a display outside: of the system inside the window has only
# what is in there.
use_window() {
  open_display
  inside DISPLAY="$DISPLAY" timeout 90 setpriv --reuid=1001 --regid=1001 --clear-groups env HOME=/home/bert \
    XDG_RUNTIME_DIR=/run/bert "$1" /home/bert/a.qnz > "$work/larkmoor" 2>&1 &
  local larkmoor=$!
  check "Larkmoor shows its window, of the class that the menu's entry names" window "$2"
  check "Larkmoor has set the new user up" ls "$root/home/bert/.local/share/quillon/resources"
  check "Larkmoor has no complaint" diff /dev/null "$work/larkmoor"
  kill $larkmoor "$xvfb" 2> /dev/null
}
