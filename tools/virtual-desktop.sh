# shellcheck shell=bash
# A virtual desktop with a few windows to look at, and the program on it driven by key presses and mouse events.
# Sourced by tools/demo and tools/pictures. What it starts ends with the shell. Places and sizes are points: `scale`
# pixels each.

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

# start_desktop WIDTH HEIGHT [SCALE]
start_desktop() {
    scale=${3:-1}
    display_width=$(($1 * scale))
    export QT_SCALE_FACTOR=$scale
    export HOME=$desktop_home XDG_RUNTIME_DIR=$desktop_home/run TMPDIR=$desktop_home
    unset XDG_DATA_HOME XDG_CONFIG_HOME
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    mkfifo "$desktop_home/display"
    exec 7<>"$desktop_home/display"
    in_background Xvfb -screen 0 "${display_width}x$(($2 * scale))x24" -nolisten tcp -displayfd 7
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

# geometry WIDTH HEIGHT X Y: as programs of the X window system take it
geometry() {
    echo "$(($1 * scale))x$(($2 * scale))+$(($3 * scale))+$(($4 * scale))"
}

open_windows() {
    local title=$((34 * (scale - 1))) # the window manager's title bars do not grow with the scale
    in_background xclock -geometry "$(geometry 220 220 940 90)" -bg white -update 1
    in_background xeyes -geometry "$(geometry 240 170 920 460)"
    in_background xterm -geometry "92x26+$((90 * scale))+$((110 * scale + title))" \
        -fa 'DejaVu Sans Mono' -fs $((11 * scale)) -bg '#fdf6e3' -fg '#37474f' \
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

# The program's icon in the tray is a window of its, too.
overlay_is_open() {
    local window
    for window in $(windows_of glimmerly); do
        xdotool getwindowgeometry --shell "$window" | grep -qx "WIDTH=$display_width" && return
    done
    return 1
}

overlay_is_gone() {
    ! overlay_is_open
}

open_overlay() {
    xdotool key super+shift+a
    wait_for overlay_is_open
}

# point X Y
point() {
    xdotool mousemove $(($1 * scale)) $(($2 * scale))
}

# click X Y
click() {
    point "$@"
    xdotool click 1
}

# drag X1 Y1 X2 Y2
drag() {
    point "$1" "$2"
    xdotool mousedown 1
    point $((($1 + $3) / 2)) $((($2 + $4) / 2))
    point "$3" "$4"
    xdotool mouseup 1
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

# point_at BUTTON: one of the toolbar's.
point_at() {
    local -A middle=([rectangle]=53 [arrow]=85 [text]=117 [red]=158 [green]=190 [blue]=222 [done]=487)
    point $((toolbar_left + middle[$1])) "$toolbar_middle"
}

# tap BUTTON
tap() {
    point_at "$1"
    xdotool click 1
}

# annotate: a rectangle, an arrow and a text on the windows of `open_windows`.
annotate() {
    tap rectangle
    drag 102 395 562 422
    tap arrow
    tap blue
    drag 690 306 516 350
    tap text
    click 700 300
    xdotool type 'Ask first'
}
