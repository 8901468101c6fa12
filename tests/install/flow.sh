# shellcheck shell=sh disable=SC2154
# xfcflow as it is installed: it finds the library beside it, its header compiles, its manual and completion know every
# command. Nothing when it was not built.

check_flow() {
    [ -e "$build/xfcflow" ] || return 0
    mkdir "$folder/flow designs"
    cd "$folder/flow designs" || return
    printf '%s\n' '#include <xfc.h>' 'float scale(const float x[4], float unit) {' '    float sum = 0;' \
        '    for (int i = 0; i < 4; i++) sum += x[i];' '    return sum * invf(unit);' '}' >scale.c

    # A mark in the installed library is a mark in the design's copy.
    text="$prefix/share/xfc/library/verilog/xfc_alufp1x.v"
    cp "$text" "$temporary/adder"
    echo '// installed' >>"$text"
    passes "$prefix/bin/xfcflow" build scale.c -o made
    found=$(find made -name xfc_alufp1x.v)
    [ -n "$found" ] || fail 'the design came without xfc_alufp1x.v'
    tail -n 1 "$found" | grep -qx '// installed' || fail 'the library is not the installed one'
    cp "$temporary/adder" "$text"
    if command -v iverilog >/dev/null; then
        passes "$prefix/bin/xfcflow" simulate scale.c --lang verilog --simulator iverilog --vectors 50
        says result
    fi
    # So is one in an installed model, whose header, tables and helpers come along.
    text="$prefix/share/xfc/library/model/fp_inv.cpp"
    cp "$text" "$temporary/model"
    echo '// installed' >>"$text"
    passes "$prefix/bin/xfcflow" build scale.c --fast-reciprocal --driver c -o made
    grep -qx '// installed' made/scale_model.cpp || fail 'the models are not the installed ones'
    cp "$temporary/model" "$text"
    printf '%s\n' 'double every(double x, float y) { return exp(log(x)) / sqrt(x) + 1.0 / x + expf(y) * logf(y); }' |
        sed '1i#include <math.h>' >every.c
    passes "$prefix/bin/xfcflow" build every.c --fast-reciprocal --driver c -o made
    passes c++ -std=c++17 -fsyntax-only -Wall -Wextra -Werror made/every_model.cpp
    fails "$prefix/bin/xfcflow" check missing.c
    check_flow_rules

    if command -v cc >/dev/null; then
        printf '%s\n' '#include "scale.c"' '#include <stdio.h>' \
            'int main(void) { const float x[4] = {1, 2, 3, 4}; printf("%g\\n", scale(x, 4)); return 0; }' >host.c
        passes cc -std=c99 -Wall -Wextra -Werror -I "$prefix/include" host.c -o host -lm
        passes ./host
        says 2.5
    fi

    commands=$("$prefix/bin/xfcflow" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
    [ "$(echo "$commands" | wc -l)" -ge 3 ] || fail 'xfcflow --help lists no commands'
    gzip -dc "$prefix/share/man/man1/xfcflow.1.gz" >"$temporary/xfcflow.1"
    if command -v groff >/dev/null; then
        passes groff -man -Tutf8 -ww -z "$temporary/xfcflow.1"
        [ ! -s "$log" ] || { cat "$log" >&2; fail 'the manual page of xfcflow has warnings'; }
    fi
    for command in $commands; do
        grep -qi "^\.SH XFCFLOW $command\$" "$temporary/xfcflow.1" || fail "the manual page of xfcflow lacks $command"
    done
    command -v bash >/dev/null || { cd "$folder" || return; return 0; }
    cat >"$temporary/flow_complete.bash" <<'SCRIPT'
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
_xfcflow
printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort
SCRIPT
    completed() {
        bash --norc --noprofile "$temporary/flow_complete.bash" "$prefix/share/bash-completion/completions/xfcflow" "$@"
    }
    for command in $commands; do
        completed xfcflow '' | grep -qx -- "$command" || fail "completion of xfcflow lacks $command"
    done
    [ "$(completed xfcflow simulate --simu)" = '--simulator' ] || fail 'completion of xfcflow lacks --simulator'
    [ "$(completed xfcflow build --lang v | tr '\n' ' ')" = 'verilog vhdl ' ] || fail 'completion lacks the languages'
    [ "$(completed xfcflow build sca)" = scale.c ] || fail 'completion of xfcflow finds no source'
    cd "$folder" || return
}

# The rules for CMake and Make that docs/build-flows.md shows.
check_flow_rules() {
    project="$folder/flow project"
    mkdir "$project"
    {
        printf '%s\n' 'cmake_minimum_required(VERSION 3.21)' 'project(designs LANGUAGES NONE)'
        documented cmake 3
        # shellcheck disable=SC2016
        echo 'file(WRITE ${CMAKE_BINARY_DIR}/listed "${scale_hardware_OUTPUTS}|${scale_hardware_FILE_LISTS}")'
    } >"$project/CMakeLists.txt"
    echo '#define GAIN 3.0f' >"$project/gains.h"
    printf '%s\n' '#include "gains.h"' 'float scale(float x) { return x * GAIN; }' >"$project/scale.c"
    made="$project/build/scale"
    passes cmake -G 'Unix Makefiles' -S "$project" -B "$project/build" -DCMAKE_PREFIX_PATH="$prefix"
    [ "$(cat "$project/build/listed")" = "$made/scale.v|$made/scale_verilog.f" ] ||
        fail "xfcflow_add_datapath lists $(cat "$project/build/listed")"
    passes cmake --build "$project/build"
    grep -q '^module scale$' "$made/scale.v" || fail 'scale.v has no module scale'
    grep -q 'mantissa(36)' "$made/scale.v" || fail 'scale.v was not made with --mantissa 36'
    [ ! -e "$made/scale.vhd" ] || fail 'VHDL was written though Verilog was asked for'
    while read -r file; do
        [ -s "$made/$file" ] || fail "$file of the list is not there"
    done <"$made/scale_verilog.f"

    mark "$made/scale.v"
    passes cmake --build "$project/build"
    expect_old "$made/scale.v"
    tick
    echo '#define GAIN 5.0f' >"$project/gains.h"
    passes cmake --build "$project/build"
    expect_new "$made/scale.v"
    tick
    echo 'float scale(float x) { goto end; end: return x; }' >"$project/scale.c"
    fails cmake --build "$project/build"
    fails cmake --build "$project/build"
    says 'goto has no counterpart in a pipeline'

    project="$folder/flow bench"
    mkdir "$project"
    { echo 'cmake_minimum_required(VERSION 3.21)'; documented cmake 4; } >"$project/CMakeLists.txt"
    echo '#define GAIN 3.0f' >"$project/gains.h"
    printf '%s\n' '#include "gains.h"' 'float scale(float x) { return x * GAIN; }' >"$project/scale.c"
    printf '%s\n' '#include "scale_model.h"' '#include <stdio.h>' 'int main(void) {' \
        '    struct scale_inputs in = {2.5f};' '    struct scale_outputs out;' '    scale_model(&in, &out);' \
        '    printf("%g\n", out.result);' '    return 0;' '}' >"$project/bench.c"
    passes cmake -G 'Unix Makefiles' -S "$project" -B "$project/build" -DCMAKE_PREFIX_PATH="$prefix"
    passes cmake --build "$project/build"
    [ "$("$project/build/bench")" = 7.5 ] || fail 'the model does not compute 3 * 2.5'
    sed -i s/3/4/ "$project/gains.h"
    tick
    passes cmake --build "$project/build"
    [ "$("$project/build/bench")" = 10 ] || fail 'the model was not made again'
    sed -i 's/DRIVER c/DRIVER fortran/' "$project/CMakeLists.txt"
    fails cmake -S "$project" -B "$project/build"
    says 'DRIVER is c or python, not "fortran"'

    command -v make >/dev/null || return 0
    rules=$temporary/flow_make
    mkdir "$rules"
    ln -s "$prefix/bin" "$temporary/flow_bin"
    documented make 3 >"$rules/Makefile"
    echo 'float twice(float x) { return x + x; }' >"$rules/twice.c"
    passes make -C "$rules" XFCFLOW="$temporary/flow_bin/xfcflow" hardware/twice/datapath.json
    grep -q '^module datapath$' "$rules/hardware/twice/datapath.v" || fail 'make made no module datapath'
}
