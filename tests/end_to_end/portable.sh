#!/usr/bin/env bash
# What is handed out starts where nothing has been installed for it: portable.sh RELEASE_DIR SCREENSHOT_DIR ROOT_ARCHIVE
# Both archives of RELEASE_DIR are unpacked by an ordinary user into the bare root of a Debian, which has neither Qt nor
# X nor fonts; only the virtual screen lies outside. Then they are used, also from a folder that cannot be written.
# ROOT_ARCHIVE keeps that root; it is made if it is not there, which takes the network.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=tests/end_to_end/walk-lib.sh
. "$here/walk-lib.sh"
# shellcheck source=tests/end_to_end/walk-editing.sh
. "$here/walk-editing.sh"
# shellcheck source=tests/end_to_end/walk-device.sh
. "$here/walk-device.sh"

if (($# != 3)); then
    echo "usage: portable.sh RELEASE_DIR SCREENSHOT_DIR ROOT_ARCHIVE" >&2
    exit 2
fi
if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "A root of its own takes root's rights, and this is neither root nor is there sudo"
    status=0
    sudo env "SHABLONIST_WALK_TIMEOUT=$TIMEOUT_SECONDS" "$here/portable.sh" "$@" || status=$?
    sudo chown -R "$(id -u):$(id -g)" "$2" "$3" || true
    exit "$status"
fi

readonly USER_ID=1000 OWN_FOLDER='/srv/user/Мои программы'
readonly C_LIBRARY='/(ld-linux-x86-64|libc|libm|libmvec|libdl|libpthread|librt|libresolv)\.so\.[0-9]+$'
readonly CPP_RUNTIME='/(libstdc\+\+|libgcc_s)\.so\.[0-9.]+$'

# make_root ARCHIVE
make_root() {
    local folder=$scratch/new-root
    debootstrap --variant=minbase bookworm "$folder" >"$scratch/debootstrap.log" 2>&1 || {
        tail -n 20 "$scratch/debootstrap.log" >&2
        fail "The bare root could not be made"
    }
    rm -rf "$folder"/var/cache/apt/archives/*.deb "$folder"/var/lib/apt/lists/*
    mkdir -p "$(dirname "$1")"
    tar -C "$folder" --one-file-system -cf "$1.part" .
    mv "$1.part" "$1"
    rm -rf "$folder"
}

has_a_bare_root() {
    begin_step 'a bare root: neither Qt nor X nor fonts in it'
    local archive
    archive=$(realpath -m "$1")
    [[ -s $archive ]] || make_root "$archive"
    bare_root=$scratch/root
    mkdir "$bare_root"
    tar -C "$bare_root" -xf "$archive"
    local found
    found=$(find "$bare_root" -xdev \( -name 'libQt*' -o -name 'libX11*' -o -name 'libxcb*' -o -name 'libjsoncpp*' \
        -o -name 'libicu*' -o -name 'libfontconfig*' -o -name 'libfreetype*' -o -name '*.ttf' -o -name '*.otf' \))
    [[ -z $found ]] || fail "This root is not bare: $found"
    mkdir -p "$bare_root/srv/user" "$bare_root/run/user/$USER_ID"
    chmod 700 "$bare_root/run/user/$USER_ID"
    chown "$USER_ID:$USER_ID" "$bare_root/srv/user" "$bare_root/run/user/$USER_ID"
    may_mount='' folder_inside=''
    if unshare --mount mount -t proc proc "$bare_root/proc" 2>/dev/null; then
        may_mount=yes
    else
        echo "  Nothing may be mounted here: the bare root goes without /proc"
    fi
}

# as_user COMMAND...: in the bare root, in place of this shell.
as_user() {
    local inside=(chroot --userspec="$USER_ID:$USER_ID" "$bare_root" /usr/bin/env -i HOME=/srv/user LANG=C.UTF-8
        PATH=/usr/bin:/bin "XDG_RUNTIME_DIR=/run/user/$USER_ID" "DISPLAY=$DISPLAY")
    if [[ -n $may_mount ]]; then
        # shellcheck disable=SC2016 # meant for the inner shell
        exec unshare --mount sh -c 'mount -t proc proc "$0/proc" && exec "$@"' "$bare_root" "${inside[@]}" "$@"
    fi
    # Without /proc the loader has to be told what $ORIGIN is.
    exec "${inside[@]}" "LD_ORIGIN_PATH=$folder_inside" "$@"
}

# unpack NAME FOLDER: by the user, into a folder of the root; sets program_folder, as seen from outside.
unpack() {
    cp "$releases/$1.tar.gz" "$bare_root/srv/user/$1.tar.gz"
    (as_user mkdir -p "$2")
    (as_user tar -C "$2" -xzf "/srv/user/$1.tar.gz")
    take_note "$2/$1"
}

# unpack_read_only NAME FOLDER: by an administrator, whose folder the user may not write.
unpack_read_only() {
    mkdir -p "$bare_root$2"
    tar -C "$bare_root$2" --no-same-owner -xzf "$releases/$1.tar.gz"
    chmod -R a-w "$bare_root$2"
    take_note "$2/$1"
}

# take_note FOLDER: what is newer than the note has been written by the program.
take_note() {
    folder_inside=$1
    program_folder=$bare_root$1
    touch "$scratch/note"
    # A file written within the same tick of the clock would not be newer.
    until_true is_past_note
}

is_past_note() {
    touch "$scratch/now"
    [[ $scratch/now -nt $scratch/note ]]
}

# start: the program of the folder; it goes on when a window of it is shown.
start() {
    (as_user "$folder_inside/shablonist") >"$scratch/program.log" 2>&1 &
    program_pid=$!
    until_true find_window_beside ''
}

main_window_is_shown() {
    until_true find_window "$MAIN_TITLE"
    window=$found_window
    until_true has_focus "$window"
    until_true find_central_widget
}

# has_red_cross: the status bar's picture is there, and it is no green tick.
has_red_cross() {
    size_of "$window"
    (($(bitmap 0 $((window_height - 34)) 34 34 | tr ' ' '\n' | grep -cE '^[c-f].[0-4].[0-4].$') > 40)) && ! has_green_tick
}

# uses_nothing_else [PATTERN]: every library and font in use lies in the folder, but for the C library and PATTERN.
uses_nothing_else() {
    local file own=0 fonts=0
    while read -r file; do
        file=${file#"$bare_root"}
        case $file in
        "$folder_inside"/*.ttf) fonts=$((fonts + 1)) ;;
        "$folder_inside"/*) own=$((own + 1)) ;;
        *.so | *.so.* | *.ttf | *.otf)
            [[ $file =~ $C_LIBRARY ]] || [[ -n ${1:-} && $file =~ $1 ]] || fail "The program uses $file"
            ;;
        esac
    done < <(sed -n 's|^[^/]*\(/.*\)|\1|p' "/proc/$program_pid/maps" | sort -u)
    ((own > 30 && fonts > 0)) || fail "The program seems not to be what it is: $own own files, $fonts own fonts in use"
}

# wrote_only PATTERN...: new files lie in the folder, and their names there match one of these.
wrote_only() {
    local file
    while read -r file; do
        file=${file#"$bare_root"}
        case $file in
        # What the toolkit keeps for every program: the font cache, the last folders of the file dialog
        /srv/user/.cache/fontconfig/* | /srv/user/.config/QtProject.conf) ;;
        "$folder_inside"/*) is_one_of "${file#"$folder_inside"/}" "$@" || fail "The program wrote $file" ;;
        *) fail "The program wrote outside of its folder: $file" ;;
        esac
    done < <(find "$bare_root" -xdev -type f -newer "$scratch/note")
}

# is_one_of NAME PATTERN...
is_one_of() {
    local name=$1 pattern
    shift
    for pattern in "$@"; do
        # shellcheck disable=SC2053 # a pattern
        [[ $name != $pattern ]] || return 0
    done
    return 1
}

# closes_by_the_frame: a click on the last button of the title bar.
closes_by_the_frame() {
    size_of "$window"
    xdotool mousemove --window "$window" -- $((window_width - 8)) -10 click 1
    program_ends
}

# was_quiet: no complaint but the toolkit's of a bare machine, and the known ones about slots and the driver.
was_quiet() {
    local said
    said=$(grep -vE 'connectslotsbyname|/fpax> load error|failed to create compose table' "$scratch/program.log" || true)
    [[ -z $said ]] || fail "The program complains: $said"
}

# box_is_shown NAME: a message box, in box; a screenshot of it.
box_is_shown() {
    until_true find_window_beside "$window"
    until_true has_focus "$found_window"
    box=$found_window
    screenshot_of "$box" "$1"
}

closes_the_box() {
    xdotool key Return
    until_true is_gone "$box"
}

uses_the_program() {
    begin_step 'the program starts in a folder of the user, without a driver'
    unpack "$plain" "$OWN_FOLDER"
    start
    main_window_is_shown
    until_true has_red_cross
    uses_nothing_else "$CPP_RUNTIME"
    screenshot plain-started
    begin_step 'a sample is opened and saved'
    open_the_sample
    screenshot plain-sample
    save_file_as saved.csv
    until_true cmp -s "$program_folder/saved.csv" "$program_folder/samples/grocery-80mm.csv"
    begin_step 'the window is closed'
    closes_by_the_frame
    was_quiet
    wrote_only saved.csv
}

uses_the_training_edition() {
    begin_step 'the training edition starts where there is not even a C++ runtime'
    rm "$bare_root"/usr/lib/x86_64-linux-gnu/lib{stdc++,gcc_s}.so.*
    unpack "$training" "$OWN_FOLDER"
    start
    main_window_is_shown
    until_true has_green_tick
    until_true test -s "$program_folder/settings.json"
    uses_nothing_else
    screenshot training-started
    begin_step 'a sample is opened'
    open_the_sample
    screenshot training-sample
    edits_fields
    works_with_the_device
    begin_step 'the program is left from the menu'
    choose_in_menu 'Выход'
    program_ends
    was_quiet
    wrote_only settings.json fpax_state.json '*.csv' 'fpax_paper/*'
}

is_told_of_a_read_only_folder() {
    begin_step 'a folder that cannot be written: no settings'
    unpack_read_only "$training" /opt/programs
    start
    window=''
    box_is_shown read-only-settings
    closes_the_box
    main_window_is_shown
    until_true has_green_tick
    begin_step 'a folder that cannot be written: a sample is opened, saving it is refused'
    open_the_sample
    save_file_as saved.csv
    box_is_shown read-only-save
    closes_the_box
    has_tape_width 576 || fail "The template is gone"
    screenshot read-only-goes-on
    choose_in_menu 'Выход'
    program_ends
    was_quiet
    wrote_only
}

# only_one PATTERN [BUT_NOT]: the archive in RELEASE_DIR with such a name, without its ending.
only_one() {
    local found
    mapfile -t found < <(find "$releases" -maxdepth 1 -name "$1" ! -name "${2:-}")
    ((${#found[@]} == 1)) || fail "There should be one $1 in $releases, there are ${#found[@]}"
    basename "${found[0]}" .tar.gz
}

releases=$(realpath "$1")
walk_begin "$2"
plain=$(only_one 'shablonist-*-linux-x86_64.tar.gz' '*-training-*')
training=$(only_one 'shablonist-*-training-linux-x86_64.tar.gz')
has_a_bare_root "$3"
start_screen
uses_the_program
uses_the_training_edition
is_told_of_a_read_only_folder
echo "Everything was as it should be. The screenshots are in $shots"
