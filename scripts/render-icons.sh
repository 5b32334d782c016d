#!/usr/bin/env bash
# Renders every resources/icons-src/<name>.svg to resources/bq2_icons/<name>.png, 32 by 32 pixels with a
# transparent ground. The widgets scale them down (to 8 to 24 pixels) with smooth filtering.
#
# Needs the Debian package librsvg2-bin (rsvg-convert); installed here if it is missing.
# The PNGs are committed, so building the editor does not need this script or the package.
#
# Usage: scripts/render-icons.sh [--sheet FILE]
#   --sheet FILE  also compose a contact sheet of all icons on the dark theme's backgrounds
#                 (needs imagemagick's montage).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
src=$root/resources/icons-src
out=$root/resources/bq2_icons
size=32

sheet=""
if [ "${1:-}" = "--sheet" ]; then
    sheet=${2:?"--sheet needs a file name"}
fi

ensure_package() {
    local package=$1 program=$2
    command -v "$program" >/dev/null 2>&1 && return 0
    local sudo_cmd=()
    [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq "$package"
}

ensure_package librsvg2-bin rsvg-convert

mkdir -p "$out"
shopt -s nullglob
sources=("$src"/*.svg)
if [ ${#sources[@]} -eq 0 ]; then
    echo "no SVG sources in $src" >&2
    exit 1
fi

for svg in "${sources[@]}"; do
    name=$(basename "$svg" .svg)
    rsvg-convert --width "$size" --height "$size" --keep-aspect-ratio --format png \
        --output "$out/$name.png" "$svg"
done
echo "rendered ${#sources[@]} icons to $out"

# PNGs whose source is gone would still be embedded; say so rather than delete anything.
for png in "$out"/*.png; do
    name=$(basename "$png" .png)
    [ -f "$src/$name.svg" ] || echo "warning: $png has no source in $src" >&2
done

# The size in pixels at which the widgets draw an icon; the contact sheet shows each one so.
drawn_size() {
    case $1 in
    close_white | modified) echo 8 ;;
    execute | list_code_editors | search_filters) echo 10 ;;
    error | warning | execute_all) echo 14 ;;
    settings) echo 18 ;;
    search_view | quick_help_view) echo 22 ;;
    explorer_view | delete_highlight) echo 24 ;;
    clear_field | close_all | collapse | new_file | new_folder | refresh | save_all | sort-by-alphabet | \
        write_to_file | scroll_left | scroll_right | execute_line | mel | python | text) echo 12 ;;
    *) echo 16 ;;
    esac
}

if [ -n "$sheet" ]; then
    ensure_package imagemagick montage
    tmp=$(mktemp -d)
    trap 'rm -rf "$tmp"' EXIT
    mkdir "$tmp/tiles"
    # One tile per icon: at its drawn size, at 16 and at 32 pixels, on the darkest and the lightest
    # panel colour of the dark theme.
    for svg in "${sources[@]}"; do
        name=$(basename "$svg" .svg)
        png=$out/$name.png
        for bg in '#1e1e1e' '#333333'; do
            tag=${bg#\#}
            for px in "$(drawn_size "$name")" 16 32; do
                convert "$png" -filter Mitchell -resize "${px}x${px}" -background "$bg" -gravity center \
                    -extent 36x36 "$tmp/$tag-$px.png"
            done
            convert "$tmp/$tag-$(drawn_size "$name").png" "$tmp/$tag-16.png" "$tmp/$tag-32.png" +append \
                "$tmp/$tag.png"
        done
        convert "$tmp/1e1e1e.png" "$tmp/333333.png" +append "$tmp/tiles/$name.png"
    done
    montage -label '%t' "$tmp"/tiles/*.png -tile 5x -geometry +6+4 -background '#252526' \
        -fill '#cccccc' -pointsize 11 "$sheet"
    echo "contact sheet: $sheet"
fi
