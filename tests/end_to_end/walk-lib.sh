# Sourced by the walks: a virtual screen with a window manager, the real program on it, and what a person does with
# mouse and keyboard. Nothing here waits a fixed time: every step ends when the screen shows what it should.
# shellcheck shell=bash

export LC_ALL=C.UTF-8
readonly MAIN_TITLE='Шаблонист 1.0.0.3898'
readonly TIMEOUT_SECONDS=${SHABLONIST_WALK_TIMEOUT:-30}

# x, y, width, height inside the central widget
declare -rA WIDGETS=(
    [graphicsView_1]='10 140 661 451'
    [btnBlTitlesOnOff]='28 105 91 28'
    [btnScaleX05]='190 105 40 28'
    [lePolesMasshtab]='235 107 60 24'
    [btnScaleX20]='300 105 40 28'
    [comboLentaSize]='490 106 60 26'
    [listWidget]='680 115 351 141'
    [lePoleDesc]='680 280 351 25'
    [settingsWidget]='680 310 351 241'
    [btnSetSetModePoz]='680 550 50 40'
    [btnSetSetModeView]='730 550 50 40'
    [btnPoleDel]='920 560 111 28'
)
# Of settingsWidget in position mode
readonly ROW_HEIGHT=25 NAME_WIDTH=170 VALUE_WIDTH=155
# Places of the commands: which menu of the bar, how many lines and how many separators stand above the line in it,
# how many it has in all
declare -rA MENUS=(
    ['Открыть...']='0 0 0 5 2'
    ['Сохранить']='0 1 0 5 2'
    ['Сохранить как...']='0 2 0 5 2'
    ['Свойства']='0 3 1 5 2'
    ['Выход']='0 4 2 5 2'
    ['Настройка соединения']='1 0 0 5 2'
    ['Освободить порт']='1 1 0 5 2'
    ['Прочитать из кассы']='1 2 1 5 2'
    ['Загрузить в кассу']='1 3 1 5 2'
    ['Тестовый чек']='1 4 2 5 2'
    ['Редактировать']='2 0 0 1 0'
)

# walk_begin FOLDER: screenshots go to FOLDER; whatever is started from here on ends with the script.
walk_begin() {
    shots=$(realpath -m "$1")
    mkdir -p "$shots"
    rm -f "$shots"/*.png
    scratch=$(mktemp -d "$shots/session.XXXXXX")
    screen_pid='' wm_pid='' program_pid='' step='start' window='' rows_y=0
    trap 'walk_end $?' EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM
}

walk_end() {
    trap - EXIT
    set +e
    if (($1 != 0)); then
        echo "The walk failed at this step: $step" >&2
        if [[ -n $screen_pid ]] && is_alive "$screen_pid" && maim -u "$shots/failed.png" 2>/dev/null; then
            echo "The last screenshot is $shots/failed.png" >&2
        fi
        [[ ! -s $scratch/program.log ]] || sed 's/^/  the program said: /' "$scratch/program.log" >&2
    fi
    local pid
    for pid in $program_pid $wm_pid $screen_pid; do
        end_process "$pid"
    done
    rm -rf "$scratch"
    exit "$1"
}

fail() {
    echo "$*" >&2
    exit 1
}

is_alive() {
    kill -0 "$1" 2>/dev/null
}

end_process() {
    local tries=0
    kill "$1" 2>/dev/null
    while is_alive "$1"; do
        ((++tries < 60)) || kill -KILL "$1" 2>/dev/null
        sleep 0.05
    done
    wait "$1" 2>/dev/null
}

# begin_step TEXT: what a failure from here on is a failure of.
begin_step() {
    step=$1
    echo "- $step"
}

# until_true COMMAND...: polls until the command succeeds.
until_true() {
    local deadline=$((SECONDS + TIMEOUT_SECONDS))
    until "$@"; do
        ((SECONDS < deadline)) || fail "Waited $TIMEOUT_SECONDS s in vain for: $*"
        [[ -z $program_pid ]] || is_alive "$program_pid" || fail "The program has ended while waiting for: $*"
        sleep 0.05
    done
}

# start_screen [SIZE]
start_screen() {
    Xvfb -displayfd 3 -screen 0 "${1:-1366x768}x24" -nolisten tcp 3>"$scratch/display" 2>"$scratch/screen.log" &
    screen_pid=$!
    until_true screen_is_up
    DISPLAY=:$(<"$scratch/display")
    export DISPLAY
    jwm -f "$(dirname "${BASH_SOURCE[0]}")/jwmrc" 2>"$scratch/wm.log" &
    wm_pid=$!
    until_true window_manager_is_up
}

screen_is_up() {
    is_alive "$screen_pid" || fail "No virtual screen: $(<"$scratch/screen.log")"
    [[ -s $scratch/display ]]
}

window_manager_is_up() {
    is_alive "$wm_pid" || fail "No window manager: $(<"$scratch/wm.log")"
    xdotool get_num_desktops >"$scratch/desktops" 2>/dev/null
}

# start_program PROGRAM: in its own folder, with settings of nobody; ends when the window stands still.
start_program() {
    launch "$1"
    until_true find_central_widget
}

# launch PROGRAM [NAME=VALUE...]: the same with these in its environment; ends when the window has the keyboard.
launch() {
    mkdir -p -m 700 "$scratch/home" "$scratch/runtime"
    (
        cd "$(dirname "$1")" || exit
        unset WAYLAND_DISPLAY XDG_CURRENT_DESKTOP QT_STYLE_OVERRIDE QT_QPA_PLATFORMTHEME QT_SCALE_FACTOR
        export HOME=$scratch/home XDG_CONFIG_HOME=$scratch/home XDG_RUNTIME_DIR=$scratch/runtime
        export QT_QPA_PLATFORM=xcb
        exec env "${@:2}" "$1"
    ) >"$scratch/program.log" 2>&1 &
    program_pid=$!
    until_true find_window "$MAIN_TITLE"
    window=$found_window
    until_true has_focus "$window"
}

# program_ends: fails unless the program ends by itself with status 0.
program_ends() {
    local deadline=$((SECONDS + TIMEOUT_SECONDS)) status=0 pid=$program_pid
    while is_alive "$pid"; do
        ((SECONDS < deadline)) || fail "The program does not end"
        sleep 0.05
    done
    program_pid=''
    wait "$pid" || status=$?
    ((status == 0)) || fail "The program ended with status $status"
}

# find_window TITLE: the window with exactly this title, in found_window.
find_window() {
    local id
    for id in $(program_windows); do
        if [[ $(xdotool getwindowname "$id" 2>/dev/null) == "$1" ]]; then
            found_window=$id
            return 0
        fi
    done
    return 1
}

# find_window_beside IDS: a window that is none of these, such as a menu or an opened list, in found_window.
find_window_beside() {
    local id
    for id in $(program_windows); do
        if [[ " $1 " != *" $id "* ]]; then
            found_window=$id
            return 0
        fi
    done
    return 1
}

is_gone() {
    [[ " $(program_windows) " != *" $1 "* ]]
}

program_windows() {
    xdotool search --onlyvisible --classname '^shablonist$' 2>/dev/null | paste -sd ' '
}

has_focus() {
    [[ $(xdotool getwindowfocus 2>/dev/null) == "$1" ]]
}

# size_of WINDOW: sets window_width and window_height.
size_of() {
    read -r window_width window_height < <(
        xdotool getwindowgeometry "$1" | sed -n 's/.*Geometry: \([0-9]*\)x\([0-9]*\).*/\1 \2/p'
    )
}

# find_central_widget: the widget begins below the menu bar, whose height depends on the font. The view, empty at the
# start, gives it away: it is the tallest white part of its column.
find_central_widget() {
    local x y width height top length
    read -r x y width height <<<"${WIDGETS[graphicsView_1]}"
    size_of "$window"
    read -r length top < <(bitmap "$((x + width / 2))" 0 1 "$window_height" | longest_run_down ffffff)
    ((length > height - 10 && length <= height)) || return 1
    central_y=$((top - (height - length) / 2 - y))
}

# place_of WIDGET: its x, y, width, height; "name N" and "value N" are the cells of row N, from 0, of settingsWidget.
place_of() {
    local x y width height row=${1#* }
    read -r x y width height <<<"${WIDGETS[settingsWidget]}"
    case $1 in
    name\ *) echo $((x + 1)) $((rows_y + row * ROW_HEIGHT)) $((NAME_WIDTH - 1)) $((ROW_HEIGHT - 1)) ;;
    value\ *)
        echo $((x + 1 + NAME_WIDTH)) $((rows_y + row * ROW_HEIGHT)) $((VALUE_WIDTH - 1)) $((ROW_HEIGHT - 1))
        ;;
    *) echo "${WIDGETS[$1]}" ;;
    esac
}

# find_rows: where the rows of the property table begin depends on the font of its header. With no cell selected, the
# first row is the first part of its height that is white, left of the grid.
find_rows() {
    local x y width height length top
    read -r x y width height < <(place_of settingsWidget)
    read -r length top < <(bitmap $((x + NAME_WIDTH + 140)) $((central_y + y)) 8 "$height" | longest_run_down ffffff)
    rows_y=$((y + top))
    ((length == ROW_HEIGHT - 1))
}

click_at() {
    xdotool mousemove --window "$1" "$2" "$3" click 1
}

# click WIDGET: its middle.
click() {
    local x y width height
    read -r x y width height < <(place_of "$1")
    click_at "$window" $((x + width / 2)) $((central_y + y + height / 2))
}

# double_click WIDGET: its middle.
double_click() {
    local x y width height
    read -r x y width height < <(place_of "$1")
    xdotool mousemove --window "$window" $((x + width / 2)) $((central_y + y + height / 2)) \
        click --repeat 2 --delay 50 1
}

# choose_in_menu TEXT: opens the first menu and walks on to the right one.
choose_in_menu() {
    local menu lines separators all_lines all_separators line_height before
    read -r menu lines separators all_lines all_separators <<<"${MENUS[$1]}"
    before=$(program_windows)
    click_at "$window" 20 $((central_y / 2))
    until_true find_window_beside "$before"
    while ((menu-- > 0)); do
        local last=$found_window
        xdotool key Right
        until_true find_window_beside "$before $last"
    done
    until_settled
    size_of "$found_window"
    line_height=$(((window_height - 2 - 2 * all_separators) / all_lines))
    click_at "$found_window" 40 $((1 + lines * line_height + separators * 2 + line_height / 2))
    until_true is_gone "$found_window"
}

# choose_in_list WIDGET NUMBER COUNT: line NUMBER, from 1, of an opened combo box with COUNT lines.
choose_in_list() {
    local before
    before=$(program_windows)
    click "$1"
    until_true find_window_beside "$before"
    until_settled
    size_of "$found_window"
    click_at "$found_window" $((window_width / 2)) $((window_height * (2 * $2 - 1) / (2 * $3)))
    until_true is_gone "$found_window"
}

# answer_file_dialog TITLE NAME
answer_file_dialog() {
    until_true find_window "$1"
    until_true has_focus "$found_window"
    local dialog=$found_window
    xdotool type --clearmodifiers -- "$2"
    until_settled
    xdotool key Return
    until_true is_gone "$dialog"
}

# open_file NAME
open_file() {
    choose_in_menu 'Открыть...'
    answer_file_dialog 'Выбор файла с шаблоном' "$1"
}

# open_the_sample: the grocery receipt, until the tape shows it.
open_the_sample() {
    open_file samples/grocery-80mm.csv
    until_true has_tape_width 576
    until_true has_heading_height 16 20
}

# save_file_as NAME
save_file_as() {
    choose_in_menu 'Сохранить как...'
    answer_file_dialog 'Выбор файла для сохранения' "$1"
}

# bitmap X Y WIDTH HEIGHT: pixels of the main window, one line of text for each row, as "rrggbb rrggbb …"
bitmap() {
    local row=$((($3 * 3 + 3) / 4 * 4))
    maim -u -w "$window" -g "$3x$4+$1+$2" -f bmp | od -An -v -tx1 -w"$row" -j54 | tac |
        awk -v width="$3" '{ for (i = 0; i < width; i++) printf "%s%s%s%s", $(3*i+3), $(3*i+2), $(3*i+1),
                             i + 1 < width ? " " : "\n" }'
}

# longest_run_down RRGGBB: length and start of the longest run of rows that have this colour alone.
longest_run_down() {
    awk -v colour="$1" '
        { for (i = 1; i <= NF && $i == colour; i++);
          if (i <= NF) run = 0
          else if (++run > best) { best = run; start = NR - run } }
        END { print best + 0, start + 0 }'
}

# longest_run_across RRGGBB: length of the longest run of this colour within a row, its start and its row.
longest_run_across() {
    awk -v colour="$1" '
        { run = 0
          for (i = 1; i <= NF; i++) {
              run = $i == colour ? run + 1 : 0
              if (run > best) { best = run; start = i - run; row = NR - 1 } } }
        END { print best + 0, start + 0, row + 0 }'
}

# picture_of WIDGET: a number that changes with its pixels.
picture_of() {
    local x y width height
    read -r x y width height < <(place_of "$1")
    maim -u -w "$window" -g "${width}x$height+$x+$((central_y + y))" -f bmp | cksum
}

# differs_from PICTURE WIDGET
differs_from() {
    [[ $(picture_of "$2") != "$1" ]]
}

# looks_like PICTURE WIDGET
looks_like() {
    [[ $(picture_of "$2") == "$1" ]]
}

# until_settled: two looks at the whole screen, one shortly after the other, see the same.
until_settled() {
    last_look=''
    until_true same_as_last_look
}

same_as_last_look() {
    local look
    look=$(maim -u -f bmp | cksum)
    [[ $look == "$last_look" ]] || {
        last_look=$look
        return 1
    }
}

# has_tape_width DOTS: the dark blue top edge of the tape, seen at 100 %, has this length. It sets tape_x and tape_y,
# the place of the edge's start in the window.
has_tape_width() {
    local x y width height seen start row
    read -r x y width height <<<"${WIDGETS[graphicsView_1]}"
    read -r seen start row < <(bitmap "$x" $((central_y + y)) "$width" 8 | longest_run_across 000080)
    tape_x=$((x + start)) tape_y=$((central_y + y + row))
    ((seen >= $1 && seen <= $1 + 2))
}

# pick X Y: a click on this point of the tape.
pick() {
    until_true has_tape_width 576
    click_at "$window" $((tape_x + $1)) $((tape_y + $2))
}

# has_colour X Y RRGGBB
has_colour() {
    has_tape_width 576 && [[ $(bitmap $((tape_x + $1)) $((tape_y + $2)) 1 1) == "$3" ]]
}

# has_not_colour X Y RRGGBB
has_not_colour() {
    has_tape_width 576 && [[ $(bitmap $((tape_x + $1)) $((tape_y + $2)) 1 1) != "$3" ]]
}

# heading_height: dots of the highest light grey bar that crosses the middle of the tape.
heading_height() {
    local x y width height length top
    read -r x y width height <<<"${WIDGETS[graphicsView_1]}"
    read -r length top < <(bitmap $((x + width / 2)) $((central_y + y)) 8 "$height" | longest_run_down c0c0c0)
    echo "$length"
}

# has_heading_height FROM TO
has_heading_height() {
    local seen
    seen=$(heading_height)
    ((seen >= $1 && seen <= $2))
}

# screenshot NAME: the whole window with its frame, once nothing moves in it.
screenshot() {
    screenshot_of "$window" "$1"
}

# screenshot_of WINDOW NAME
screenshot_of() {
    until_settled
    size_of "$1"
    maim -u -w "$1" -g "$((window_width + 10))x$((window_height + 24))+-5+-19" "$shots/$2.png"
}
