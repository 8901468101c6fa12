# shellcheck shell=sh disable=SC2154
# The installed program, away from its build and in a folder with blanks in its name.

check_program() {
    mkdir -p "$folder/designs of mine"
    cd "$folder/designs of mine" || return
    printf 'float a, b, c, y;\nmain() { y = (a + b) * c; }\n' >sum.c
    passes "$prefix/bin/xfc" sum.c
    # The adder behind its conversions takes 7 cycles, the normalizer 1 and the multiplier 5.
    says ' Maximum Latency 13 '
    grep -q '^ENTITY sum IS' sum.vhd || fail 'sum.vhd has no entity sum'
    passes "$prefix/bin/xfc" sum.c -vlg
    grep -q '^module sum ' sum.v || fail 'sum.v has no module sum'

    fails "$prefix/bin/xfc" missing.c
    says "Can't open source program file missing.c"
    cd "$folder" || return
}
