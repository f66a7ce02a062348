#!/bin/bash
# Renders the vector sources of images/src to what the program shows: PNG at 1x and 2x, the tray's
# ICO files and the animations; and the program's icon in the sizes that a desktop wants. Run after a change of a source; the result is committed.
# Needs rsvg-convert (librsvg2-bin) and ImageMagick.
set -euo pipefail
cd "$(dirname "$0")/images"
convert=$(command -v convert-im6.q16 || command -v convert)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# png SOURCE NAME SIZE: NAME.png and NAME@2x.png
png() {
    rsvg-convert -w "$3" -h "$3" "src/$1.svg" -o "$2.png"
    rsvg-convert -w $(($3 * 2)) -h $(($3 * 2)) "src/$1.svg" -o "$2@2x.png"
}

# ico SOURCE NAME
ico() {
    local size files=()
    for size in 16 22 24 32 48 64; do
        rsvg-convert -w $size -h $size "src/$1.svg" -o "$work/$2-$size.png"
        files+=("$work/$2-$size.png")
    done
    "$convert" "${files[@]}" "$2.ico"
}

# gif SOURCE NAME SIZE: twelve frames of one turn, on the white of the panels
gif() {
    local step body frames=()
    body=$(sed '1d;$d' "src/$1.svg")
    for step in 0 1 2 3 4 5 6 7 8 9 10 11; do
        printf '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32" fill="none"><g transform="rotate(%d 16 16)">%s</g></svg>' \
            $((step * 30)) "$body" >"$work/frame.svg"
        rsvg-convert -w "$3" -h "$3" -b '#FFFFFF' "$work/frame.svg" -o "$work/$2-$(printf %02d $step).png"
        frames+=("$work/$2-$(printf %02d $step).png")
    done
    "$convert" -delay 8 -loop 0 "${frames[@]}" -layers optimize "$2.gif"
}

for state in disconnected connecting reconnecting connected; do
    png shield_$state shield_$state 56
    png shield_$state shield_${state}_large 96
    png lamp_$state lamp_$state 12
done
png shield_disconnected shield_guide 80
png lamp_disconnected normal 12
png lamp_connected connectted 12
for name in failed second_auth arrow_down arrow_right sort_up sort_down; do
    png $name $name 12
done
for name in more minimise close modify_connectinfo delete_gray forgot_pwd warning check check_disabled \
    radio radio_disabled radio_off search eye eye_off dot; do
    png $name $name 16
done
for name in msgbox_info msgbox_warning msgbox_error; do
    png $name $name 32
done
png app_small app_small 20
png app app 64
ico tray_disconnected disconnected
ico tray_connecting connecting
ico tray_connected connected
gif spinner loading 32
gif spinner loading_small 16
gif spinner_query query_type 16
mkdir -p ../../packaging/icons
for size in 48 64 128 256; do
    rsvg-convert -w $size -h $size src/app.svg -o "../../packaging/icons/zorvanelink-$size.png"
done
