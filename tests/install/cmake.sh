# shellcheck shell=sh disable=SC2154
# find_package(xfc) and xfc_add_datapath(), in the project that docs/build-flows.md shows.

# File times move in steps of some milliseconds; a change must come in a later one.
tick() { sleep 0.05; }

# Rules run again when an output no longer holds what was appended to it.
mark() { echo 'appended by the test' >>"$1"; }
expect_old() { grep -q 'appended by the test' "$1" || fail "$1 was made again without need"; }
expect_new() { ! grep -q 'appended by the test' "$1" || fail "$1 was not made again"; }

check_cmake() {
    for generator in Ninja 'Unix Makefiles'; do
        check_cmake_builds "$generator"
    done
    check_cmake_refusals
}

check_cmake_builds() {
    project="$folder/project, $1"
    made="$project/build"
    hdl="$made/hdl"
    mkdir "$project"
    {
        documented cmake 1
        documented cmake 2
        echo 'get_target_property(listed datapaths XFC_OUTPUTS)'
        # shellcheck disable=SC2016
        echo 'file(WRITE ${CMAKE_BINARY_DIR}/listed "${listed}|${verilog_datapaths_OUTPUTS}")'
    } >"$project/CMakeLists.txt"
    printf 'float a, b, y;\nmain() { y = a + b; }\n' >"$project/fir.c"
    printf 'float u, v, w;\nmain() { w = u * v; }\n' >"$project/iir.c"
    passes cmake -G "$1" -S "$project" -B "$made" -DCMAKE_PREFIX_PATH="$prefix"
    [ "$(cat "$made/listed")" = "$hdl/fir.vhd;$hdl/iir.vhd|$made/fir.v" ] || fail "outputs listed: $(cat "$made/listed")"

    passes cmake --build "$made"
    grep -q '^ENTITY fir IS' "$hdl/fir.vhd" || fail 'fir.vhd has no entity fir'
    grep -q '^ENTITY iir IS' "$hdl/iir.vhd" || fail 'iir.vhd has no entity iir'
    grep -q '^module fir ' "$made/fir.v" || fail 'fir.v has no module fir'
    # The switches have arrived: rounding conversions, and 36 + 13 bits.
    grep -q '49 DOWNTO 1' "$hdl/fir.vhd" || fail 'fir.vhd was not made with -mm 36'
    for output in "$hdl/fir.vhd" "$hdl/iir.vhd" "$made/fir.v"; do
        grep -q 'Maximum Latency' "$output.log" || fail "$output.log is no log"
    done
    [ "$(ls "$hdl" | tr '\n' ' ')" = 'fir.vhd fir.vhd.log iir.vhd iir.vhd.log ' ] || fail "in hdl: $(ls "$hdl")"
    [ "$(ls "$project" | tr '\n' ' ')" = 'CMakeLists.txt build fir.c iir.c ' ] || fail "in sources: $(ls "$project")"
    if command -v iverilog >/dev/null; then
        passes cmake --build "$made" --target check
    fi

    # Nothing to do; then one source changes.
    mark "$hdl/fir.vhd"
    mark "$hdl/iir.vhd"
    passes cmake --build "$made"
    expect_old "$hdl/fir.vhd"
    tick
    touch "$project/fir.c"
    passes cmake --build "$made"
    expect_new "$hdl/fir.vhd"
    expect_old "$hdl/iir.vhd"

    # Another xfc, then other switches.
    mark "$made/fir.v"
    tick
    touch "$prefix/bin/xfc"
    passes cmake --build "$made"
    expect_new "$made/fir.v"
    mark "$made/fir.v"
    tick
    sed -i 's/-mm 36/-mm 32/' "$project/CMakeLists.txt"
    passes cmake --build "$made"
    expect_new "$hdl/iir.vhd"
    grep -q '45 DOWNTO 1' "$hdl/fir.vhd" || fail 'fir.vhd was not made with -mm 32'
    expect_old "$made/fir.v"

    # A syntax error fails the build until it is mended, also when the source is then older than the output was.
    cp -p "$project/fir.c" "$project/good.c"
    tick
    printf 'float a, b, y;\nmain() { y = a + ; }\n' >"$project/fir.c"
    for run in first second; do
        fails cmake --build "$made"
        says 'line 2 error syntax error at ;'
        [ ! -e "$hdl/fir.vhd" ] || fail "fir.vhd is there after the $run run with an error"
    done
    grep -q '1 error found by the parser' "$hdl/fir.vhd.log" || fail 'fir.vhd.log does not tell the error'
    tick
    cp -p "$project/good.c" "$project/fir.c"
    passes cmake --build "$made"
    grep -q '^ENTITY fir IS' "$hdl/fir.vhd" || fail 'fir.vhd is not back'
    [ "$(ls "$hdl" | tr '\n' ' ')" = 'fir.vhd fir.vhd.log iir.vhd iir.vhd.log ' ] || fail "in hdl: $(ls "$hdl")"

    # So does an error that ends the run.
    tick
    printf 'float y;\nmain() { y = y + y; }\n' >"$project/fir.c"
    for run in first second; do
        fails cmake --build "$made"
        says 'y depends on its own value'
        [ ! -e "$hdl/fir.vhd" ] || fail "fir.vhd is there after the $run run with a feedback"
    done
}

# What is wrong in the call is refused when CMake runs; names are cut as xfc cuts them.
check_cmake_refusals() {
    project="$folder/calls"
    mkdir "$project"
    printf 'float a, y;\nmain() { y = a; }\n' >"$project/fir.old.c"
    cp "$project/fir.old.c" "$project/fir.c"
    cp "$project/fir.old.c" "$project/my-fir.c"
    # 34 characters in front of the dot.
    cp "$project/fir.old.c" "$project/abcdefghijklmnopqrstuvwxyz01234567.cxx"
    calls() {
        printf '%s\n' 'cmake_minimum_required(VERSION 3.21)' 'project(calls LANGUAGES NONE)' \
            'find_package(xfc REQUIRED)' "$@" >"$project/CMakeLists.txt"
    }
    configure() { cmake -G Ninja -S "$project" -B "$project/build" -DCMAKE_PREFIX_PATH="$prefix"; }
    refused() {
        calls "$2"
        fails configure
        tr -s ' \n' ' ' <"$log" >"$log.flat"
        mv "$log.flat" "$log"
        says "$1"
    }

    refused 'xfc has no switch "-round"' 'xfc_add_datapath(t SOURCES fir.c OPTIONS -round)'
    refused 'xfc has no switch "-rc -mm 36"' 'xfc_add_datapath(t SOURCES fir.c OPTIONS "-rc -mm 36")'
    refused '-mm needs a number' 'xfc_add_datapath(t SOURCES fir.c OPTIONS -rc -mm)'
    refused 'say VERILOG' 'xfc_add_datapath(t SOURCES fir.c OPTIONS -vlg)'
    refused 'no SOURCES' 'xfc_add_datapath(t VERILOG)'
    refused 'unexpected fir.c' 'xfc_add_datapath(t fir.c)'
    refused 'entity called "my-fir"' 'xfc_add_datapath(t SOURCES my-fir.c)'
    refused 'would both be written to' 'xfc_add_datapath(t SOURCES fir.c fir.old.c)'

    all_switches=
    for switch in $switches; do
        case $switch in
            -vlg) ;;
            -mm | -fd | -ns | -xc | -mv) all_switches="$all_switches $switch 3" ;;
            *) all_switches="$all_switches $switch" ;;
        esac
    done
    calls "xfc_add_datapath(t SOURCES fir.c OPTIONS$all_switches)"
    passes configure

    long=abcdefghijklmnopqrstuvwxyz01234
    calls "xfc_add_datapath(t SOURCES fir.old.c ${long}567.cxx)" 'xfc_add_datapath(v SOURCES fir.old.c VERILOG)'
    passes configure
    passes cmake --build "$project/build"
    grep -q '^ENTITY fir IS' "$project/build/fir.vhd" || fail 'fir.old.c did not give fir.vhd'
    grep -q '^module fir ' "$project/build/fir.v" || fail 'fir.old.c did not give fir.v'
    grep -q "^ENTITY $long IS" "$project/build/$long.vhd" || fail "the long name did not give $long.vhd"

    # The number is for xfc to check.
    calls 'xfc_add_datapath(t SOURCES fir.c OPTIONS -mm 33)'
    passes configure
    fails cmake --build "$project/build"
    says 'mm switch must be 32 or 36'
}
