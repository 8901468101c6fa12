# Less and less memory: a run either succeeds whole or says why not, with status 1 and without an output.

# Runs the program with ever more memory, in steps of so many KiB, from the first limit under which it can start.
starve() {
    limit=2048
    # A shell of its own keeps quiet about a program that is aborted.
    until
        sh -c '(ulimit -v "$1" && exec "$2"); exit $?' sh "$limit" "$1" >/dev/null 2>&1
        [ $? -eq 1 ] || [ "$limit" -gt 400000 ]
    do
        limit=$((limit + 512))
    done
    failed=0
    failures_before=$failures
    while [ "$limit" -lt 400000 ] && [ "$failures" -eq "$failures_before" ]; do
        (ulimit -v "$limit" && exec "$1" p.c) >"$room/out" 2>"$room/err"
        status=$?
        if [ "$status" -eq 0 ]; then
            expect_success p.vhd
            expect_same p.vhd q.vhd
            expect_same "$room/out" log
            break
        fi
        failed=$((failed + 1))
        expect_status 1
        expect_error 'Out of memory\n'
        expect_missing p.vhd
        rm -f p.vhd
        limit=$((limit + $2))
    done
    [ "$status" -eq 0 ] || complain "no success with $limit KiB either"
    [ "$failed" -ge 3 ] || complain "only $failed runs had too little memory"
}

if [ "$memory" = on ]; then
    for program in "$xfc" "$plain"; do
        for statements in 1 5000; do
            case_is "${program##*/} with too little memory for $statements statements says so and leaves nothing"
            write_squares $statements >p.c
            run p.c
            expect_success p.vhd
            mv p.vhd q.vhd
            mv "$room/out" log
            # The small program fails in every phase, the large one in those that take memory for every node.
            if [ $statements -eq 1 ]; then starve "$program" 64; else starve "$program" 1024; fi
        done
    done
fi
