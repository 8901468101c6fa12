# Standard streams that are closed, full or not read to the end.

# The larger program's log passes any buffer while the output is being written.
for statements in 1 5000; do
    case_is "a run of $statements statements without a standard output fails and spoils nothing"
    write_squares $statements >p.c
    run p.c
    expect_success p.vhd
    mv p.vhd q.vhd
    "$xfc" p.c >&- 2>"$room/err"
    status=$?
    expect_status 1
    expect_error "Can't write to the standard output\n"
    expect_whole_or_missing p.vhd q.vhd
    rm -f p.vhd

    case_is "a run of $statements statements onto a full standard output fails and spoils nothing"
    write_squares $statements >p.c
    run p.c
    mv p.vhd q.vhd
    "$xfc" p.c >/dev/full 2>"$room/err"
    status=$?
    expect_status 1
    expect_error "Can't write to the standard output\n"
    expect_whole_or_missing p.vhd q.vhd

    case_is "a run of $statements statements without a standard error succeeds"
    write_squares $statements >p.c
    run p.c
    mv p.vhd q.vhd
    mv "$room/out" log
    "$xfc" p.c >"$room/out" 2>&-
    status=$?
    expect_status 0
    expect_same p.vhd q.vhd
    expect_same "$room/out" log

    case_is "a run of $statements statements without any stream fails and spoils nothing"
    write_squares $statements >p.c
    run p.c
    mv p.vhd q.vhd
    "$xfc" p.c <&- >&- 2>&-
    status=$?
    expect_status 1
    expect_whole_or_missing p.vhd q.vhd

    case_is "a failing run of $statements statements without a standard error is silent about it"
    { write_squares $statements && printf '='; } >p.c
    run p.c
    mv p.vhd q.vhd
    "$xfc" p.c >"$room/out" 2>&-
    status=$?
    expect_status 1
    expect_log_ends "linenumber $((statements + 4))\n"
    expect_same p.vhd q.vhd
done

case_is 'a run whose log is not read to the end leaves no part of an output'
write_squares 5000 >p.c
run p.c
expect_success p.vhd
mv p.vhd q.vhd
length=$(wc -c <"$room/out")
for part in 0 1 2 3 4 5 6 7 8 9; do
    { "$xfc" p.c 2>"$room/err"; echo $? >"$room/status"; } | head -c $((length * part / 10)) >/dev/null
    status=$(cat "$room/status")
    # What was read before the pipe broke is a matter of timing, not so what is left behind.
    [ "$status" -eq 0 ] || { expect_status 1; expect_error "Can't write to the standard output\n"; }
    expect_whole_or_missing p.vhd q.vhd
    rm -f p.vhd
done

case_is 'the usage text without a standard output still has status 1'
"$xfc" >&- 2>"$room/err"
status=$?
expect_status 1
grep -q '^Usage:xfc <program.c>$' "$room/err" || complain 'there is no usage text'
