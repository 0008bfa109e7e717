#!/usr/bin/env bash
# The main job from end to end, on a virtual screen: walk.sh BUILD_DIR SCREENSHOT_DIR
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=tests/end_to_end/walk-lib.sh
. "$here/walk-lib.sh"
# shellcheck source=tests/end_to_end/walk-editing.sh
. "$here/walk-editing.sh"
# shellcheck source=tests/end_to_end/walk-device.sh
. "$here/walk-device.sh"

if (($# != 2)); then
    echo "usage: walk.sh BUILD_DIR SCREENSHOT_DIR" >&2
    exit 2
fi

opens_a_sample() {
    begin_step 'open samples/grocery-80mm.csv from the menu'
    open_the_sample
    screenshot loaded
}

turns_headings_off_and_on() {
    begin_step 'headings off'
    click btnBlTitlesOnOff
    until_true has_heading_height 0 3
    screenshot headings-off
    begin_step 'headings on again'
    click btnBlTitlesOnOff
    until_true has_heading_height 16 20
}

changes_the_tape() {
    begin_step 'tape of 44 mm'
    choose_in_list comboLentaSize 1 3
    until_true has_tape_width 384
    screenshot tape-44mm
    begin_step 'tape of 80 mm again'
    choose_in_list comboLentaSize 3 3
    until_true has_tape_width 576
}

saves_what_was_opened() {
    begin_step 'save under a new name, byte by byte what was opened'
    save_file_as saved.csv
    until_true cmp -s "$program_folder/saved.csv" "$here/../../samples/grocery-80mm.csv"
}

magnifies() {
    local before
    begin_step 'scale of 150 %'
    before=$(picture_of lePolesMasshtab)
    click btnScaleX20
    until_true differs_from "$before" lePolesMasshtab
    until_true has_heading_height 26 30
    begin_step 'scale of 225 %'
    before=$(picture_of lePolesMasshtab)
    click btnScaleX20
    until_true differs_from "$before" lePolesMasshtab
    until_true has_heading_height 38 46
    screenshot scale-225
}

leaves() {
    begin_step 'leave from the menu'
    choose_in_menu 'Выход'
    program_ends
}

walk_begin "$2"
program_folder=$scratch/program
"$here/../../packaging/stage" --emulator "$1" "$program_folder"
begin_step 'start on a virtual screen'
start_screen
start_program "$program_folder/shablonist"
is_connected
looks_at_the_connection
opens_a_sample
turns_headings_off_and_on
changes_the_tape
saves_what_was_opened
edits_fields
works_with_the_device
magnifies
leaves
echo "Everything was as it should be. The screenshots are in $shots, the receipt is $shots/receipt-paper.png"
