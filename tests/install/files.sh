# shellcheck shell=sh disable=SC2154
# Where things are, and that nothing else is there.

check_files() {
    documents="$prefix/share/doc/xfc"
    [ -x "$prefix/bin/xfc" ] || fail 'no program'

    for name in changelog README.md build-flows.md; do
        gzip -t "$documents/$name.gz" || fail "$name.gz is damaged"
    done
    gzip -dc "$documents/changelog.gz" | cmp - "$source_folder/CHANGELOG.md" || fail 'changelog.gz is not the change log'
    version=$(sed -n 's/^project(xfc VERSION \([0-9.]*\).*/\1/p' "$source_folder/CMakeLists.txt")
    head -n 1 "$source_folder/packaging/debian/changelog" | grep -qF "xfc ($version-1) " ||
        fail "packaging/debian/changelog does not begin with version $version"

    # The copyright file holds the licence, line by line.
    grep -E '[a-zA-Z]' "$source_folder/LICENSE" | sed '1,2d' >"$temporary/licence"
    [ -s "$temporary/licence" ] || fail 'LICENSE has no text'
    while read -r line; do
        grep -qxF " $line" "$documents/copyright" || fail "copyright lacks: $line"
    done <"$temporary/licence"
    grep -q '^Copyright: .*xfc' "$documents/copyright" || fail 'copyright names nobody'

    count=0
    for example in "$source_folder"/examples/*.c "$source_folder"/examples/README.md; do
        [ -e "$example" ] || continue
        cmp "$example" "$documents/examples/${example##*/}" || fail "example ${example##*/} is not installed"
        count=$((count + 1))
    done
    [ "$count" -gt 0 ] || fail 'there are no examples'
    if [ -e "$build/xfcflow" ]; then
        for example in "$source_folder"/examples/flow/*.c "$source_folder"/examples/flow/README.md; do
            cmp "$example" "$prefix/share/doc/xfcflow/examples/${example##*/}" || fail "$example is not installed"
        done
        for file in examples/cocotb/Makefile examples/cocotb/README.md examples/cocotb/mix.c examples/cocotb/test_mix.py \
            pictures/smooth.svg; do
            [ -s "$prefix/share/doc/xfcflow/$file" ] || fail "$file is not installed"
        done
    fi

    # Libraries, models and what belongs to the Debian packages only stay out.
    (cd "$prefix" && find . -type f) | grep -vxE \
        -e '\./bin/xfc' \
        -e '\./share/man/man1/xfc\.1\.gz' \
        -e '\./share/bash-completion/completions/xfc' \
        -e '\./share/doc/xfc/(copyright|(changelog|README\.md|build-flows\.md)\.gz)' \
        -e '\./share/doc/xfc/examples/(README\.md|[a-z0-9_]+\.c)' \
        -e '\./share/cmake/xfc/(xfcConfig|xfcConfigVersion|xfcTargets(-[a-z]+)?)\.cmake' \
        -e '\./share/cmake/xfc/xfc_(add|compile)_datapath\.cmake' \
        -e '\./share/xfc/library/vhdl/(xfc_vhdl\.f|[a-z0-9_]+\.vhd)' \
        -e '\./share/xfc/library/verilog/(xfc_verilog\.f|[a-z0-9_]+\.v)' \
        -e '\./share/doc/xfc-components/components\.md\.gz' \
        -e '\./bin/xfcflow' \
        -e '\./include/xfc\.h' \
        -e '\./share/man/man1/xfcflow\.1\.gz' \
        -e '\./share/bash-completion/completions/xfcflow' \
        -e '\./share/cmake/xfcflow/(xfcflowConfig|xfcflowConfigVersion|xfcflowTargets(-[a-z]+)?)\.cmake' \
        -e '\./share/cmake/xfcflow/xfcflow_add_datapath\.cmake' \
        -e '\./share/doc/xfcflow/examples/(README\.md|[a-z0-9_]+\.c)' \
        -e '\./share/doc/xfcflow/(language|accuracy|tutorial|from-other-tools|gallery)\.md\.gz' \
        -e '\./share/doc/xfcflow/pictures/[a-z_]+\.svg' \
        -e '\./share/doc/xfcflow/examples/cocotb/(Makefile|README\.md|[a-z_]+\.(c|py))' \
        -e '\./share/xfc/library/model/([a-z0-9_]+\.(cpp|h)|(model|components)/[a-z_]+\.h)' >"$log" || true
    [ ! -s "$log" ] || { cat "$log" >&2; fail 'these files are not expected'; }

    # Nothing points back to where it was built.
    ! grep -rlF -e "$source_folder" -e "$build" "$prefix/share" >"$log" ||
        { cat "$log" >&2; fail 'these files name the build folder'; }
}
