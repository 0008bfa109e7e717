# Sourced by walk.sh: what a person does with the cash register in software that stands beside the program.
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
