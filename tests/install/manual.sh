# shellcheck shell=sh disable=SC2154
# The manual page has no warnings and knows every switch and every message.

check_manual() {
    page="$prefix/share/man/man1/xfc.1.gz"
    if command -v groff >/dev/null; then
        gzip -dc "$page" >"$temporary/xfc.1"
        passes groff -man -Tutf8 -ww -z "$temporary/xfc.1"
        [ ! -s "$log" ] || { cat "$log" >&2; fail 'the manual page has warnings'; }
    fi
    command -v man >/dev/null || return 0
    MANWIDTH=400 MANOPT='--no-hyphenation --no-justification' \
        man --warnings -l "$page" >"$temporary/page" 2>"$log" || fail 'man cannot show the manual page'
    [ ! -s "$log" ] || { cat "$log" >&2; fail 'the manual page has warnings'; }

    for section in NAME SYNOPSIS DESCRIPTION SWITCHES FILES 'EXIT STATUS' MESSAGES EXAMPLES 'ODD PLACES'; do
        grep -qx "$section" "$temporary/page" || fail "the manual page has no $section"
    done
    for switch in $switches; do
        grep -qE "^ +(-[a-z0-9]+, )?$switch( n)?(,| |$)" "$temporary/page" || fail "the manual page lacks $switch"
    done

    # A message's placeholders stand for anything; its line ends and surrounding blanks do not count.
    sed -n 's/^ *\({[a-z_]*, \)\{0,1\}"\(.*\)", *\(out\|err\),.*/\2/p' "$source_folder/src/exact/run/messages.h" |
        sed -e 's/\\n//g' -e 's/^ *//' -e 's/ *$//' -e 's/[]^$*.\\[]/\\&/g' -e 's/ *%[a-z]*\(%s\)*/.*/g' \
            >"$temporary/messages"
    [ "$(wc -l <"$temporary/messages")" -ge 35 ] || fail 'the message catalogue is not where it was'
    while read -r message; do
        grep -q -- "$message" "$temporary/page" || fail "the manual page lacks the message: $message"
    done <"$temporary/messages"
}
