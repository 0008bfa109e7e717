#!/usr/bin/env bash
# How the window looks where it is magnified twice, where the desktop's font is large, and on the smallest of screens,
# used by keyboard alone: looks.sh BUILD_DIR SCREENSHOT_DIR
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=tests/end_to_end/walk-lib.sh
. "$here/walk-lib.sh"

if (($# != 2)); then
    echo "usage: looks.sh BUILD_DIR SCREENSHOT_DIR" >&2
    exit 2
fi

readonly SAMPLE=grocery-80mm.csv
# What the window manager puts around a window
readonly FRAME=5 TITLE_BAR=19
# From the tape over the buttons and the line of the filter to the list of fields
readonly TABS_TO_THE_LIST=5

# picture: what the window shows, as a checksum.
picture() {
    size_of "$window"
    maim -u -w "$window" -g "${window_width}x$window_height+0+0" -f bmp | cksum
}

shows_another_than() {
    [[ $(picture) != "$1" ]]
}

# opens_by_keyboard FILE: Ctrl+O, the name, Enter.
opens_by_keyboard() {
    local before
    before=$(picture)
    xdotool key ctrl+o
    answer_file_dialog 'Выбор файла с шаблоном' "$1"
    until_true shows_another_than "$before"
    until_settled
}

# picks_by_keyboard: the first field of the list, over the Tab key.
picks_by_keyboard() {
    local before i
    for ((i = 0; i < TABS_TO_THE_LIST; i++)); do
        xdotool key Tab
    done
    until_settled
    before=$(picture)
    xdotool key Down
    until_true shows_another_than "$before"
    until_settled
}

# is_whole: the window with its frame lies inside the screen.
is_whole() {
    local screen_width screen_height x y
    read -r screen_width screen_height < <(xdotool getdisplaygeometry)
    x=$(xdotool getwindowgeometry "$window" | sed -n 's/.*Position: \([0-9-]*\),.*/\1/p')
    y=$(xdotool getwindowgeometry "$window" | sed -n 's/.*Position: [0-9-]*,\([0-9-]*\) .*/\1/p')
    size_of "$window"
    ((x >= FRAME && y >= TITLE_BAR && x + window_width + FRAME <= screen_width &&
        y + window_height + FRAME <= screen_height)) ||
        fail "The window of $window_width x $window_height at $x, $y is not whole on $screen_width x $screen_height"
}

# looks NAME TEXT WIDTH HEIGHT [VARIABLE=VALUE...]: starts, opens, picks, leaves; a screenshot of each. The window must
# not look as the one started before it.
looks() {
    begin_step "$2"
    launch "$program_folder/shablonist" "${@:5}"
    until_true has_size "$3" "$4"
    is_whole
    until_settled
    shows_another_than "$empty_window" || fail "The window looks as it did before"
    empty_window=$(picture)
    opens_by_keyboard "$SAMPLE"
    screenshot "$1"
    picks_by_keyboard
    screenshot "$1-picked"
    end_process "$program_pid" || true
    program_pid=''
}

# has_size WIDTH HEIGHT
has_size() {
    size_of "$window"
    ((window_width == $1 && window_height == $2))
}

walk_begin "$2"
program_folder=$scratch/program
"$here/../../packaging/stage" --emulator "$1" "$program_folder"
# Beside the program, where file dialogs begin
cp "$program_folder/samples/$SAMPLE" "$program_folder/$SAMPLE"
mkdir -m 700 "$scratch/home"
cat >"$scratch/home/kdeglobals" <<'END'
[General]
font=DejaVu Sans,14,-1,5,50,0,0,0,0,0
menuFont=DejaVu Sans,14,-1,5,50,0,0,0,0,0
END

empty_window=''
start_screen 1366x768
looks small-screen 'a screen of 1366 x 768' 1040 665
looks large-font 'a large font of the desktop on the same screen' 1040 665 \
    XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5
end_process "$wm_pid" || true
end_process "$screen_pid" || true
rm -f "$scratch/display"
start_screen 2732x1536
looks magnified 'everything twice as large' 2080 1330 QT_SCALE_FACTOR=2
echo "Everything was as it should be. The screenshots are in $shots"
