# All switches in all orders.

case_is 'the order of two switches does not matter, but for those that overrule each other'
write_small >p.c
switches='-ds
-mm 36
-fd 3
-ni
-no
-rc
-rn
-op
-ns 1
-ps
-xc 2
-da
-s3
-s5
-mv 3
-sy
-vlg'
# Compiles with the switches and leaves output and log as $1.hdl and $1.log.
compile_as() {
    result=$1
    shift
    run p.c "$@"
    expect_status 0
    expect_error ''
    if [ -f p.v ]; then mv p.v "$result.hdl"; else mv p.vhd "$result.hdl"; fi
    mv "$room/out" "$result.log"
}
echo "$switches" | sed 's/ .*//' | sort >names
printf '%s\n' -da -ds -fd -mm -mv -ni -no -ns -op -ps -rc -rn -s3 -s5 -sy -vlg -xc | sort >expected-names
expect_same names expected-names
old_separator=$IFS
IFS='
'
for one in $switches; do
    for other in $switches; do
        # Each pair once, in both orders.
        [ "$one" != "$other" ] && expr "$one" '<' "$other" >/dev/null || continue
        IFS=$old_separator
        # Blanks separate a switch from its value.
        # shellcheck disable=SC2086
        compile_as first $one $other
        # shellcheck disable=SC2086
        compile_as second $other $one
        case "$one $other" in
            '-ni -no' | '-s3 -s5')
                cmp -s first.hdl second.hdl && [ "$one" = -ni ] && complain "$one $other should depend on the order"
                ;;
            *)
                cmp -s first.hdl second.hdl || complain "$one and $other give another output in the other order"
                cmp -s first.log second.log || complain "$one and $other give another log in the other order"
                ;;
        esac
        IFS='
'
    done
done
IFS=$old_separator

case_is 'post-normalization behind pre-normalization is dropped with a word'
write_small >p.c
compile_as both -ni -no
compile_as one -ni
expect_same both.hdl one.hdl
{ printf 'Info: Multiplier Post-normalizations are redundant with input normalizations, switch ignored\n' &&
    cat one.log; } >expected.log
expect_same both.log expected.log

case_is 'of two devices the last one counts'
printf 'double a, b, y;\nmain() { y = a * b; }\n' >p.c
compile_as five -s5
compile_as five_last -s3 -s5
compile_as three -s3
compile_as three_last -s5 -s3
expect_same five.hdl five_last.hdl
expect_same three.hdl three_last.hdl
cmp -s three.hdl five.hdl && complain 'the devices make no difference'

case_is 'all switches together compile'
write_small >p.c
# shellcheck disable=SC2086
run p.c $switches
expect_status 0
expect_error ''
[ "$(tail -n 1 p.v)" = endmodule ] || [ "$(tail -n 2 p.v | head -n 1)" = endmodule ] ||
    complain 'p.v does not end as a module does'

case_is 'ten thousand switches are read'
write_small >p.c
# shellcheck disable=SC2046
run p.c $(repeat_line 5000 '-rc -x')
expect_success p.vhd
