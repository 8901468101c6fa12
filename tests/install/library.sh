# shellcheck shell=sh disable=SC2154
# The component library: every hardware text, and lists in an order that compiles.

check_library() {
    for language in vhdl verilog; do
        case $language in vhdl) extension=.vhd ;; *) extension=.v ;; esac
        place="$prefix/share/xfc/library/$language"
        for text in "$source_folder"/library/*/*$extension; do
            cmp "$text" "$place/${text##*/}" || fail "${text##*/} is not installed"
            echo "${text##*/}"
        done | LC_ALL=C sort >"$temporary/texts"
        LC_ALL=C sort "$place/xfc_$language.f" | cmp - "$temporary/texts" || fail "xfc_$language.f lists other files"
    done

    # A design with the whole library, as its user has it.
    mkdir "$folder/with library"
    cd "$folder/with library" || return
    printf 'float a, b, c, y;\nmain() { y = sqrt(a + b) * c; }\n' >root.c
    passes "$prefix/bin/xfc" root.c
    passes "$prefix/bin/xfc" root.c -vlg
    if command -v ghdl-mcode >/dev/null; then
        sed "s|.*|'$prefix/share/xfc/library/vhdl/&'|" "$prefix/share/xfc/library/vhdl/xfc_vhdl.f" >texts
        passes xargs ghdl-mcode -a --std=93 --ieee=synopsys <texts
        passes ghdl-mcode -a --std=93 --ieee=synopsys root.vhd
        passes ghdl-mcode --elab-run --std=93 --ieee=synopsys --syn-binding root --stop-time=1ns --ieee-asserts=disable
    fi
    if command -v iverilog >/dev/null; then
        passes iverilog -g2005 -s root -o root.vvp -y "$prefix/share/xfc/library/verilog" root.v
    fi
    cd "$folder" || return
}
