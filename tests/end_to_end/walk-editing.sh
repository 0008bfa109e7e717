# Sourced by walk.sh and portable.sh: what a person does with the fields of samples/grocery-80mm.csv, seen at 100 % from the top of the
# tape. Points of the tape are given in dots from its upper left corner.
# shellcheck shell=bash
# shellcheck disable=SC2154 # walk.sh and walk-lib.sh set what is not set here

# Every difference between the sample and what is saved here: field, column, value before and after. The ten fields of
# the first block that stand below the line that is added move down by one.
readonly EDITS='001 size 48 0
003 size 0 30
084 line 6 7
085 line 6 7
086 line 7 8
087 line 7 8
096 line 9 10
097 line 9 10
098 line 9 10
099 line 9 10
100 line 8 9
101 line 8 9
159 block 0 6'

# Colours of the tape
readonly YELLOW=ffff00 GREY=a0a0a4 MAGENTA=800080 WHITE=ffffff BLACK=000000

# Rows of the property table in position mode, and lines, from 1, of the list of blocks
readonly BLOCK_ROW=0 SIZE_ROW=3
readonly REGISTRATION=2 FOOTER=7

edits_fields() {
    picks_a_field
    looks_at_both_modes
    is_refused_a_block
    moves_to_another_block
    places_a_field
    adds_a_line
    deletes_a_field
    saves_and_opens_what_was_edited
}

picks_a_field() {
    begin_step 'pick the field "Картинка": its mask allows the first block, not the second'
    until_true is_plain 2 300 56 18
    pick 500 33
    until_true has_colour 3 42 "$YELLOW"
    until_true is_hatched 2 300 56 18
    until_true is_plain 206 231 80 18
    until_true find_rows
    screenshot field-picked
}

looks_at_both_modes() {
    local position
    begin_step 'its properties in view mode'
    position=$(picture_of settingsWidget)
    click btnSetSetModeView
    until_true differs_from "$position" settingsWidget
    screenshot table-view
    begin_step 'its properties in position mode again'
    click btnSetSetModePoz
    until_true looks_like "$position" settingsWidget
}

is_refused_a_block() {
    local block
    begin_step 'a block that the mask forbids is refused'
    block=$(picture_of "value $BLOCK_ROW")
    choose_in_cell $BLOCK_ROW $REGISTRATION
    until_true find_window 'Шаблонист'
    until_true has_focus "$found_window"
    until_true differs_from "$block" "value $BLOCK_ROW"
    screenshot refused
    screenshot_of "$found_window" refused-box
    xdotool key Return
    until_true is_gone "$found_window"
    until_true has_focus "$window"
    click "name $BLOCK_ROW"
    until_true looks_like "$block" "value $BLOCK_ROW"
    until_true has_colour 3 42 "$YELLOW"
}

moves_to_another_block() {
    begin_step 'a block that the mask allows is taken, and the redraw loses the selection'
    choose_in_cell $BLOCK_ROW $FOOTER
    until_true has_colour 315 28 "$MAGENTA"
    until_true has_no_rows
}

places_a_field() {
    local no_field
    begin_step 'pick the first line of the list, "Свободная строка 3"'
    no_field=$(picture_of lePoleDesc)
    click_first_line listWidget
    until_true differs_from "$no_field" lePoleDesc
    until_true has_rows
    screenshot table-position
    begin_step 'a size of 30 places it'
    type_in_cell $SIZE_ROW 30
    until_true has_colour 355 33 "$GREY"
    until_true has_colour 365 33 "$WHITE"
}

adds_a_line() {
    begin_step 'pick the empty line'
    pick 315 148
    until_true has_colour 315 148 "$YELLOW"
    until_true has_not_colour -14 150 "$WHITE"
    screenshot line-picked
    begin_step 'add a line above it'
    pick -14 157
    until_true has_colour 315 148 "$MAGENTA"
    until_true has_colour 315 163 "$MAGENTA"
    until_true has_colour -14 150 "$WHITE"
}

deletes_a_field() {
    begin_step 'delete the field "Свободная строка 1"'
    pick 500 105
    until_true has_colour 3 114 "$YELLOW"
    until_true has_rows
    click btnPoleDel
    until_true has_colour 315 100 "$MAGENTA"
    until_true has_no_rows
    screenshot edited
}

saves_and_opens_what_was_edited() {
    local edited
    begin_step 'save under a new name what was edited, and nothing else is changed'
    edited=$(picture_of graphicsView_1)
    save_file_as edited.csv
    until_true has_edits "$program_folder/edited.csv"
    begin_step 'open the sample again'
    open_file samples/grocery-80mm.csv
    until_true has_colour 500 33 "$GREY"
    begin_step 'open what was saved, and it looks as it did'
    open_file edited.csv
    until_true looks_like "$edited" graphicsView_1
    begin_step 'save under a third name, byte by byte what was opened'
    save_file_as again.csv
    until_true cmp -s "$program_folder/again.csv" "$program_folder/edited.csv"
}

# is_hatched X Y WIDTH HEIGHT: this part of the tape, where no text stands, shows the black of the hatching.
is_hatched() {
    has_tape_width 576 && [[ $(part_of_tape "$@") == *$BLACK* ]]
}

# is_plain X Y WIDTH HEIGHT
is_plain() {
    has_tape_width 576 && [[ $(part_of_tape "$@") != *$BLACK* ]]
}

part_of_tape() {
    bitmap $((tape_x + $1)) $((tape_y + $2)) "$3" "$4"
}

# has_rows: the grid ends the first row.
has_rows() {
    local x y width height
    read -r x y width height < <(place_of 'value 0')
    [[ $(bitmap $((x + 140)) $((central_y + y + height)) 1 1) != "$WHITE" ]]
}

has_no_rows() {
    ! has_rows
}

# open_cell ROW: a double-click on the value opens its editor. The click on the name before it takes the selection away,
# so that the first click of the two opens the editor and the second is one on the editor.
open_cell() {
    click "name $1"
    double_click "value $1"
}

# choose_in_cell ROW NUMBER: line NUMBER, from 1, of the list.
choose_in_cell() {
    local before line
    before=$(program_windows)
    open_cell "$1"
    until_true find_window_beside "$before"
    xdotool key Home
    for ((line = 1; line < $2; ++line)); do
        xdotool key Down
    done
    xdotool key Return
    until_true is_gone "$found_window"
    xdotool key Return
}

# type_in_cell ROW TEXT
type_in_cell() {
    local before
    before=$(picture_of "value $1")
    open_cell "$1"
    until_true differs_from "$before" "value $1"
    until_settled
    before=$(picture_of "value $1")
    xdotool key ctrl+a type -- "$2"
    until_true differs_from "$before" "value $1"
    until_settled
    xdotool key Return
}

# click_first_line WIDGET
click_first_line() {
    local x y width height
    read -r x y width height < <(place_of "$1")
    click_at "$window" $((x + width / 3)) $((central_y + y + 7))
}

# has_edits FILE: it differs from the sample in EDITS alone.
has_edits() {
    [[ -s $1 && $(differences "$here/../../samples/grocery-80mm.csv" "$1") == "$EDITS" ]]
}

# differences FILE FILE: a line for each column that differs, "FIELD COLUMN BEFORE AFTER". Column 13 fills the row up to
# the same width and is none.
differences() {
    awk -F';' '
        BEGIN { name[4] = "block"; name[10] = "line"; name[12] = "size" }
        NR == FNR { row[FNR] = $0; next }
        { count = split(row[FNR], was)
          if (NF != count) print $3, "columns", count, NF
          for (i = 1; i <= NF; i++)
              if (i != 13 && $i != was[i]) print $3, i in name ? name[i] : i, was[i], $i }
        END { if (FNR != length(row)) print "rows", length(row), FNR }' "$1" "$2"
}
