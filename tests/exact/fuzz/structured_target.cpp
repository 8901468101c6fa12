// The bytes drive a generator of mostly valid programs. Beside what holds for every compilation, a valid program must
// compile, come out the same twice and with other line ends, and be the same design in both languages.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "checks.h"
#include "program_generator.h"

namespace {

using namespace xfc::fuzz;

/// The same program with other line ends; unchanged when it has carriage returns already, which may be tokens.
std::string with_carriage_returns(const std::string& source) {
    if (source.find('\r') != std::string::npos) {
        return source;
    }
    std::string text;
    for (const char character : source) {
        if (character == '\n') {
            text += '\r';
        }
        text += character;
    }
    return text;
}

/// For a person who looks at a finding.
bool shows_programs() {
    static const bool wanted = std::getenv("XFC_FUZZ_SHOW") != nullptr;
    return wanted;
}

void show(const generated_program& program) {
    std::string switches;
    for (const std::string& text : program.switches) {
        switches += ' ' + text;
    }
    static_cast<void>(std::fprintf(stderr, "%s\nswitches:%s\n", program.source.c_str(), switches.c_str()));
}

void show(const compilation& result) {
    static_cast<void>(std::fprintf(stderr, "status: %d\n%s%s", result.status, result.standard_output.c_str(),
                                   result.standard_error.c_str()));
}

compilation compile_and_check(const compilation_request& request) {
    compilation result = compile(request);
    check_outcome(request, result);
    return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const generated_program program = generate_program({data, size});
    if (shows_programs()) {
        show(program);
    }
    set_graph_checks(program.single_writer ? graph_checks::single_writer : graph_checks::general);

    compilation_request request{.source = program.source, .switches = program.switches};
    const compilation vhdl = compile_and_check(request);
    if (shows_programs()) {
        show(vhdl);
    }
    if (program.is_valid) {
        require(vhdl.status == 0,
                "a valid program compiles: " + vhdl.standard_output.substr(0, 40) + " ... " + vhdl.standard_error);
    }
    request.source = with_carriage_returns(program.source);
    check_equal(vhdl, compile_and_check(request), "another run with other line ends");

    request.source = program.source;
    request.switches.emplace_back("-vlg");
    check_same_design(vhdl, compile_and_check(request));
    return 0;
}
