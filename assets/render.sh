#!/bin/bash
# Renders the vector sources of images/src to what the program shows: PNG at 1x and 2x and the
# tray's ICO files; and the program's icon in the sizes that a desktop wants. Run after a change of
# a source; the result is committed.
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

for state in disconnected connecting reconnecting connected warning failed; do
    png shield_$state shield_$state 56
    png shield_$state shield_${state}_large 96
done
for state in disconnected connecting reconnecting connected warning; do
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
for state in disconnected connecting reconnecting connected warning failed; do
    ico tray_$state $state
done
mkdir -p ../../packaging/icons
for size in 48 64 128 256; do
    rsvg-convert -w $size -h $size src/app.svg -o "../../packaging/icons/zorvanelink-$size.png"
done
