# Sourced by walk.sh and portable.sh: what a person does with the cash register in software that stands beside the program.
# shellcheck shell=bash
# shellcheck disable=SC2154 # walk.sh and walk-lib.sh set what is not set here

readonly EMULATOR_TITLE='Эмулятор кассы'

# device_says KEY VALUE: what the cash register remembers.
device_says() {
    grep -q "\"$1\": $2[,]*\$" "$program_folder/fpax_state.json" 2>/dev/null
}

is_connected() {
    begin_step 'the cash register is connected: new settings, programming mode, a green tick in the status bar'
    until_true test -s "$program_folder/settings.json"
    until_true device_says mode 4
    until_true has_green_tick
    screenshot connected
}

# has_green_tick: the first picture of the status bar is green, not red.
has_green_tick() {
    local green red
    size_of "$window"
    read -r green red < <(bitmap 0 $((window_height - 34)) 34 34 | tr ' ' '\n' | awk '
        function value(digits) { return 16 * index(hex, substr(digits, 1, 1)) + index(hex, substr(digits, 2, 1)) - 17 }
        BEGIN { hex = "0123456789abcdef" }
        { r = value(substr($1, 1, 2)); g = value(substr($1, 3, 2)); b = value(substr($1, 5, 2))
          if (g > r + 40 && g > b + 40) green++
          if (r > g + 40 && r > b + 40) red++ }
        END { print green + 0, red + 0 }')
    ((green > 40 && red == 0))
}

looks_at_the_connection() {
    begin_step 'the settings dialog of the cash register'
    choose_in_menu 'Настройка соединения'
    until_true find_window "$EMULATOR_TITLE"
    local dialog=$found_window
    until_true has_focus "$dialog"
    screenshot_of "$dialog" emulator-dialog
    xdotool key Escape
    until_true is_gone "$dialog"
}

# The free line that is edited on the way
readonly FREE_LINE='WALK 2026'
# Columns of a template file that travel to the device and back: type and the nineteen parameters
readonly TRAVELLING=3-12,14-24

works_with_the_device() {
    reads_the_free_lines
    edits_a_free_line
    writes_template_and_free_lines
    reads_them_back
    prints_a_test_receipt
}

# tick DIALOG X Y: a click on this point of a dialog.
tick() {
    click_at "$1" "$2" "$3"
    until_settled
}

# choose_number DIALOG X Y: one step up from 0.
choose_number() {
    tick "$1" "$2" "$3"
    xdotool key Up
    until_settled
}

# Points of the exchange dialog
readonly TEMPLATE_BOX='28 50' FREE_LINES_BOX='28 80' NUMBER='305 51' LOAD_BUTTON='180 154'
readonly TEMPLATE_NUMBER='36 231' PRINT_BUTTON='211 296'
readonly FIRST_FREE_LINE='100 30' SAVE_BUTTON='341 276'

# opens_dialog COMMAND TITLE: its window, in dialog.
opens_dialog() {
    choose_in_menu "$1"
    until_true find_window "$2"
    dialog=$found_window
    until_true has_focus "$dialog"
    until_settled
}

# is_told NAME: a message box; a screenshot of it, and it is closed.
is_told() {
    until_true find_window_beside "$window"
    until_true has_focus "$found_window"
    local box=$found_window
    screenshot_of "$box" "$1"
    xdotool key Return
    until_true is_gone "$box"
}

reads_the_free_lines() {
    begin_step 'read the free lines from the cash register'
    opens_dialog 'Прочитать из кассы' 'Обмен с устройством'
    # shellcheck disable=SC2086 # a point is two numbers
    tick "$dialog" $TEMPLATE_BOX
    # shellcheck disable=SC2086
    tick "$dialog" $FREE_LINES_BOX
    screenshot_of "$dialog" download
    # shellcheck disable=SC2086
    tick "$dialog" $LOAD_BUTTON
    until_true is_gone "$dialog"
    is_told download-report
}

edits_a_free_line() {
    begin_step 'edit the first free line'
    opens_dialog 'Редактировать' 'Редактор строк'
    screenshot_of "$dialog" free-lines-read
    # shellcheck disable=SC2086
    xdotool mousemove --window "$dialog" $FIRST_FREE_LINE click --repeat 2 --delay 50 1
    until_settled
    xdotool key ctrl+a
    xdotool type --clearmodifiers -- "$FREE_LINE"
    until_settled
    xdotool key Return
    until_settled
    screenshot_of "$dialog" free-lines
    # shellcheck disable=SC2086
    tick "$dialog" $SAVE_BUTTON
    until_true is_gone "$dialog"
}

writes_template_and_free_lines() {
    begin_step 'write template and free lines to the cash register'
    opens_dialog 'Загрузить в кассу' 'Обмен с устройством'
    # shellcheck disable=SC2086
    choose_number "$dialog" $NUMBER
    # shellcheck disable=SC2086
    tick "$dialog" $FREE_LINES_BOX
    screenshot_of "$dialog" upload
    # shellcheck disable=SC2086
    tick "$dialog" $LOAD_BUTTON
    until_true find_report
    is_told upload-report
    until_true device_has_free_line "$FREE_LINE"
}

# find_report: a window of the program that is neither its main window nor the exchange.
find_report() {
    local id name
    for id in $(program_windows); do
        name=$(xdotool getwindowname "$id" 2>/dev/null) || continue
        if [[ $id != "$window" && $name != 'Обмен с устройством' && $name != 'Запись данных в устройство' &&
            $name != 'Чтение данных с устройства' ]]; then
            found_window=$id
            return 0
        fi
    done
    return 1
}

device_has_free_line() {
    grep -qF "\"$1\"" "$program_folder/fpax_state.json"
}

reads_them_back() {
    begin_step 'read both back: what travels is what was written'
    opens_dialog 'Прочитать из кассы' 'Обмен с устройством'
    # shellcheck disable=SC2086
    choose_number "$dialog" $NUMBER
    # shellcheck disable=SC2086
    tick "$dialog" $FREE_LINES_BOX
    # shellcheck disable=SC2086
    tick "$dialog" $LOAD_BUTTON
    until_true find_report
    is_told readback-report
    until_true has_tape_width 576
    screenshot readback
    save_file_as readback.csv
    until_true test -s "$program_folder/readback.csv"
    until_true travelled_unchanged
}

travelled_unchanged() {
    cmp -s <(cut -d ';' -f "$TRAVELLING" "$program_folder/edited.csv") \
        <(cut -d ';' -f "$TRAVELLING" "$program_folder/readback.csv")
}

# is_whole_receipt NAME: its text is there, and its picture is written to the end.
is_whole_receipt() {
    [[ -s $1.txt && $(tail -c 8 "$1.png" 2>/dev/null | head -c 4) == IEND ]]
}

prints_a_test_receipt() {
    begin_step 'print the test receipt with that template'
    opens_dialog 'Тестовый чек' 'Печать тестового чека'
    # shellcheck disable=SC2086
    choose_number "$dialog" $TEMPLATE_NUMBER
    screenshot_of "$dialog" test-receipt
    # shellcheck disable=SC2086
    tick "$dialog" $PRINT_BUTTON
    until_true is_gone "$dialog"
    until_true is_whole_receipt "$program_folder/fpax_paper/0001-receipt"
    cp "$program_folder/fpax_paper/0001-receipt.png" "$shots/receipt-paper.png"
    cp "$program_folder/fpax_paper/0001-receipt.txt" "$shots/receipt-paper.txt"
}
