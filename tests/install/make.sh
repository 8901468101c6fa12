# shellcheck shell=sh disable=SC2154
# The rule for Make that docs/build-flows.md shows. Make cannot handle blanks in names.

check_make() {
    command -v make >/dev/null || return 0
    project=$temporary/make
    hdl=$project/hdl
    mkdir "$project"
    ln -s "$prefix/bin" "$temporary/bin"
    documented make 1 >"$project/xfc.mk"
    documented make 2 >"$project/Makefile"
    printf 'float a, b, y;\nmain() { y = a + b; }\n' >"$project/fir.c"
    printf 'float u, v, w;\nmain() { w = u * v; }\n' >"$project/iir.c"
    build_it() { PATH="$temporary/bin:$PATH" make --no-print-directory -C "$project" "$@"; }

    passes build_it
    grep -q '^ENTITY fir IS' "$hdl/fir.vhd" || fail 'fir.vhd has no entity fir'
    grep -q '^module iir ' "$hdl/iir.v" || fail 'iir.v has no module iir'
    grep -q '49 DOWNTO 1' "$hdl/fir.vhd" || fail 'fir.vhd was not made with -mm 36'
    grep -q 'Maximum Latency' "$hdl/fir.vhd.log" || fail 'fir.vhd.log is no log'
    grep -q 'Maximum Latency' "$hdl/iir.v.log" || fail 'iir.v.log is no log'
    [ "$(ls "$hdl" | tr '\n' ' ')" = 'fir.vhd fir.vhd.log iir.v iir.v.log ' ] || fail "in hdl: $(ls "$hdl")"

    passes build_it --question
    mark "$hdl/iir.v"
    tick
    touch "$project/fir.c"
    fails build_it --question
    mark "$hdl/fir.vhd"
    tick
    touch "$project/fir.c"
    passes build_it
    expect_new "$hdl/fir.vhd"
    expect_old "$hdl/iir.v"

    tick
    touch "$prefix/bin/xfc"
    passes build_it
    expect_new "$hdl/iir.v"

    mark "$hdl/iir.v"
    tick
    sed -i 's/-mm 36/-mm 32/' "$project/Makefile"
    passes build_it
    expect_new "$hdl/iir.v"
    grep -q '45 DOWNTO 1' "$hdl/fir.vhd" || fail 'fir.vhd was not made with -mm 32'

    cp -p "$project/fir.c" "$project/good.c"
    tick
    printf 'float a, b, y;\nmain() { y = a + ; }\n' >"$project/fir.c"
    for run in first second; do
        fails build_it
        says 'line 2 error syntax error at ;'
        [ ! -e "$hdl/fir.vhd" ] || fail "fir.vhd is there after the $run run with an error"
    done
    tick
    cp -p "$project/good.c" "$project/fir.c"
    passes build_it
    grep -q '^ENTITY fir IS' "$hdl/fir.vhd" || fail 'fir.vhd is not back'

    # Names: the file's is the source's, the entity's is cut.
    cp "$project/fir.c" "$project/fir.old.c"
    cp "$project/fir.c" "$project/abcdefghijklmnopqrstuvwxyz01234567.c"
    passes build_it hdl/fir.old.vhd hdl/abcdefghijklmnopqrstuvwxyz01234567.v
    grep -q '^ENTITY fir IS' "$hdl/fir.old.vhd" || fail 'fir.old.vhd has no entity fir'
    grep -q '^module abcdefghijklmnopqrstuvwxyz01234 ' "$hdl/abcdefghijklmnopqrstuvwxyz01234567.v" ||
        fail 'the long name was not cut'
}
