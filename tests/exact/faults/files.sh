# Sources that cannot be read, outputs that cannot be written, and the source that must stay as it is.

# Runs the compiler as somebody without the administrator's rights; false when that cannot be done.
can_step_down() {
    [ "$(id -u)" -ne 0 ] || command -v setpriv >/dev/null
}
run_without_rights() {
    if [ "$(id -u)" -ne 0 ]; then
        run "$@"
        return
    fi
    # A build that counts lines cannot put the counts of this run with the others.
    mkdir -p -m 777 "$room/counts"
    GCOV_PREFIX=$room/counts setpriv --reuid=65534 --regid=65534 --clear-groups \
        "$xfc" "$@" >"$room/out" 2>"$room/err"
    status=$?
}

case_is 'a missing source is named'
run nothing.c
expect_status 1
expect_error "Can't open source program file nothing.c\n"
expect_log_ends ''

case_is 'a folder cannot be read'
mkdir p.c
run p.c
expect_refusal 'L0048: fread() in PCLEX scanner failed\n'

if [ -e /proc/self/mem ]; then
    case_is 'a source whose first read fails ends the run'
    run /proc/self/mem
    expect_refusal 'L0048: fread() in PCLEX scanner failed\n'
fi

if can_step_down; then
    case_is 'a source without permission cannot be opened'
    write_small >p.c
    chmod 000 p.c
    run_without_rights p.c
    expect_refusal "Can't open source program file p.c\n"

    case_is 'a folder without permission takes no output'
    write_small >p.c
    chmod 555 .
    run_without_rights p.c
    expect_refusal "Can't open output file p.vhd\n"
    chmod 755 .

    case_is 'an output without permission is left alone'
    write_small >p.c
    echo precious >p.vhd
    chmod 444 p.vhd
    run_without_rights p.c
    expect_status 1
    expect_error "Can't open output file p.vhd\n"
    [ "$(cat p.vhd)" = precious ] || complain 'p.vhd was changed'
fi

if [ -e /proc/self/fd/0 ]; then
    case_is 'an output in a folder that takes no files cannot be opened'
    write_small >p.c
    "$xfc" /proc/self/fd/0 <p.c >"$room/out" 2>"$room/err"
    status=$?
    expect_refusal "Can't open output file /proc/self/fd/0.vhd\n"
fi

case_is 'an output that is a folder cannot be opened'
write_small >p.c
mkdir p.vhd
run p.c
expect_status 1
expect_error "Can't open output file p.vhd\n"
[ -d p.vhd ] || complain 'the folder is gone'

case_is 'an output that leads nowhere cannot be opened'
write_small >p.c
ln -s nowhere/p.vhd p.vhd
run p.c
expect_status 1
expect_error "Can't open output file p.vhd\n"

# Nothing is left behind that looks like an output when the disk is full; what the user put there stays.
for statements in 1 3000; do
    case_is "a full device takes no output of $statements statements"
    write_squares $statements >p.c
    ln -s /dev/full p.vhd
    run p.c
    expect_status 1
    expect_error "Can't write output file p.vhd\n"
    [ -c /dev/full ] || complain 'the device is gone'
    [ -h p.vhd ] || complain 'the link that the user made is gone'
done

case_is 'an output that meets the limit of file sizes is removed'
write_squares 3000 >p.c
for blocks in 1 100 1000; do
    (ulimit -f $blocks && exec "$xfc" p.c) >/dev/null 2>"$room/err"
    status=$?
    expect_refusal "Can't write output file p.vhd\n"
    rm -f p.vhd
done

case_is 'an output that meets the limit of file sizes while that is no reason to stop is removed'
write_squares 3000 >p.c
(trap '' XFSZ && ulimit -f 100 && exec "$xfc" p.c) >/dev/null 2>"$room/err"
status=$?
expect_refusal "Can't write output file p.vhd\n"

if [ "$(id -u)" -eq 0 ] && unshare -m true 2>/dev/null; then
    case_is 'an output that does not fit the file system is removed'
    mkdir disk
    write_squares 3000 >p.c
    unshare -m sh -c 'mount -t tmpfs -o size=64k tmpfs disk && cd disk && ln -s ../p.c p.c || exit 77
        "$1" p.c >"$2/out" 2>"$2/err"
        status=$?
        ls >"$2/left"
        exit $status' sh "$xfc" "$room" 2>/dev/null
    status=$?
    if [ $status -ne 77 ]; then
        expect_refusal "Can't write output file p.vhd\n"
        [ "$(cat "$room/left")" = p.c ] || complain "left behind: $(cat "$room/left")"
    fi
fi

case_is 'an earlier output is replaced whole'
write_squares 300 >p.c
run p.c
write_small >p.c
run p.c
mv p.vhd q.vhd
run p.c
expect_success p.vhd
expect_same p.vhd q.vhd

# The source is never overwritten, whatever it is called and however it is linked. Arguments: the source's name, the
# name of its output, switches.
refuses_to_overwrite() {
    source=$1
    output=$2
    shift 2
    cp "$source" "$room/original"
    run "$source" "$@"
    expect_status 1
    expect_error "Output file $output would overwrite the source program\n"
    expect_same "$source" "$room/original"
}

case_is 'a source called like its VHDL output stays as it is'
write_small >p.vhd
refuses_to_overwrite p.vhd p.vhd

case_is 'a source called like its Verilog output stays as it is'
write_small >p.v
refuses_to_overwrite p.v p.v -vlg

case_is 'a source called like its output but for what is cut off stays as it is'
write_small >a_name_of_thirty_one_characters.vhd
refuses_to_overwrite a_name_of_thirty_one_characters.vhd a_name_of_thirty_one_characters.vhd

case_is 'a source that is the output by a symbolic link stays as it is'
write_small >p.c
ln -s p.c p.vhd
refuses_to_overwrite p.c p.vhd

case_is 'a source that is itself the symbolic link stays as it is'
write_small >p.vhd
ln -s p.vhd p.c
refuses_to_overwrite p.c p.vhd

case_is 'a source that is the output by a hard link stays as it is'
write_small >p.c
ln p.c p.vhd
refuses_to_overwrite p.c p.vhd

case_is 'a source in a folder called like its output stays as it is'
mkdir folder
write_small >folder/p.vhd
refuses_to_overwrite folder/p.vhd folder/p.vhd

case_is 'a source with syntax errors called like its output stays as it is'
printf 'float = ;' >p.vhd
refuses_to_overwrite p.vhd p.vhd
