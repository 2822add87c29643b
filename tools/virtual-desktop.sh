# shellcheck shell=bash
# A virtual desktop with a few windows to look at, and the program on it driven by key presses and mouse events.
# Sourced by tools/demo and tools/pictures. What it starts ends with the shell.

desktop_home=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$desktop_home"' EXIT

# wait_for COMMAND...: until it succeeds; fails after fifteen seconds.
wait_for() {
    local end=$((SECONDS + 15))
    until "$@" >/dev/null 2>&1; do
        if [ $SECONDS -ge $end ]; then
            echo "gave up waiting for: $*" >&2
            return 1
        fi
        sleep 0.05
    done
}

# in_background COMMAND...: what it says goes to a file, to be shown when something fails.
in_background() {
    "$@" >>"$desktop_home/programs.log" 2>&1 &
}

# start_desktop WIDTHxHEIGHT
start_desktop() {
    export HOME=$desktop_home XDG_RUNTIME_DIR=$desktop_home/run TMPDIR=$desktop_home
    unset XDG_DATA_HOME XDG_CONFIG_HOME
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    mkfifo "$desktop_home/display"
    exec 7<>"$desktop_home/display"
    in_background Xvfb -screen 0 "$1x24" -nolisten tcp -displayfd 7
    read -r -t 15 -u 7 display
    exec 7>&-
    export DISPLAY=:$display
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$desktop_home/bus
    in_background dbus-daemon --session --nofork --nopidfile --address="$DBUS_SESSION_BUS_ADDRESS"
    in_background openbox
    wait_for window_manager_runs
    xsetroot -solid '#2b4162'
    in_background tint2 -c tools/tint2rc
}

window_manager_runs() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q '#'
}

windows_of() {
    xdotool search --onlyvisible --class "$1"
}

open_windows() {
    in_background xclock -geometry 220x220+940+90 -bg white -update 1
    in_background xeyes -geometry 240x170+920+460
    in_background xterm -geometry 92x26+90+110 -fa 'DejaVu Sans Mono' -fs 11 -bg '#fdf6e3' -fg '#37474f' \
        -title 'Notes' -e sh -c "cat tools/demo-text; exec sleep 600"
    wait_for windows_of xclock
    wait_for windows_of XEyes
    wait_for windows_of XTerm
}

start_program() {
    in_background build/release/bin/glimmerly
    events=$HOME/.local/share/app.glimmerly.Glimmerly/.svc/events.jsonl
    wait_for grep -q applicationDidFinishLaunching "$events"
}

overlay_is_open() {
    [ "$(grep -c '"Screenshot overlay presenting"' "$events")" -gt "$overlays_before" ] &&
        windows_of glimmerly
}

open_overlay() {
    overlays_before=$(grep -c '"Screenshot overlay presenting"' "$events" || true)
    xdotool key super+shift+a
    wait_for overlay_is_open
}

# drag X1 Y1 X2 Y2, in the display's pixels
drag() {
    xdotool mousemove "$1" "$2" mousedown 1 mousemove $((($1 + $3) / 2)) $((($2 + $4) / 2)) \
        mousemove "$3" "$4" mouseup 1
}

# save_clipboard FILE: the picture on the clipboard, read by another program.
save_clipboard() {
    wait_for clipboard_has_a_picture
    xclip -selection clipboard -t image/png -o >"$1"
}

clipboard_has_a_picture() {
    xclip -selection clipboard -t TARGETS -o | grep -qx image/png
}

# select_area X1 Y1 X2 Y2: the toolbar then stands below, its right edge at the selection's.
select_area() {
    drag "$@"
    toolbar_left=$(($3 - 509)) toolbar_middle=$(($4 + 10 + 22))
}

# tap BUTTON: one of the toolbar's.
tap() {
    local -A middle=([rectangle]=53 [arrow]=85 [text]=117 [red]=158 [green]=190 [blue]=222 [done]=487)
    xdotool mousemove $((toolbar_left + middle[$1])) "$toolbar_middle" click 1
}

# annotate: a rectangle, an arrow and a text on the windows of `open_windows`.
annotate() {
    tap rectangle
    drag 102 395 562 422
    tap arrow
    tap blue
    drag 690 306 516 350
    tap text
    xdotool mousemove 700 300 click 1
    xdotool type 'Ask first'
}
