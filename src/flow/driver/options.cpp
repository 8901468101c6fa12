#include "flow/driver/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <limits>
#include <sstream>

#include "flow/driver/stages.h"
#include "flow/driver/version.h"

namespace xfc::flow {

namespace {

constexpr command_row commands[] = {
    {"check", "Says whether hardware can be made of a C program: messages at their places, ports and operations.",
     "xfcflow check fir.c --top fir"},
    {"build", "Makes hardware of a C program: VHDL and Verilog with the library's files, file lists and a description.",
     "xfcflow build fir.c --lang vhdl -o fir_hardware"},
    {"simulate",
     "Simulates the hardware of a C program and compares every output bit with its model, and what comes out with the "
     "exact results and with the C program itself.",
     "xfcflow simulate fir.c --lang verilog --vectors 10000"},
    {"view", "Writes a page that shows the schedule beside the source; it opens in any browser.",
     "xfcflow view fir.c -o fir.html"},
    {"synth", "Synthesises the hardware with Yosys: what it takes, how fast it is, and which component limits it.",
     "xfcflow synth fir.c --family ice40"},
    {"explore",
     "Builds the program with every set of options that changes its hardware and tells, a line each, latency, what it "
     "is "
     "estimated to take and how exact it is, and which of them nothing else beats.",
     "xfcflow explore fir.c --family xilinx --html"},
};

const option_row options[] = {
    {.name = "--top",
     .value = "NAME",
     .text = "the function to make hardware of; without it the one that no other calls",
     .commands = "check build simulate view synth explore",
     .choices = "",
     .word = &command_line::top,
     .of_design = true},
    {.name = "--c-constants",
     .value = "",
     .text = "floating constants without suffix are double, as C has them; otherwise they take the other operand's "
             "format",
     .commands = "check build simulate view synth explore",
     .choices = "",
     .flag = &command_line::c_constants,
     .of_design = true},
    {.name = "--unroll",
     .value = "N",
     .text = "the most rounds of one loop, each of which becomes hardware; 100000 without it",
     .commands = "check build simulate view synth explore",
     .choices = "",
     .number = &command_line::unroll,
     .of_design = true},
    {.name = "--include",
     .value = "FOLDER",
     .text = "a folder to search for included files, behind the source's own; may be given again",
     .commands = "check build simulate view synth explore",
     .choices = "",
     .list = &command_line::include_folders,
     .of_design = true},
    {.name = "--define",
     .value = "NAME[=TEXT]",
     .text = "a macro, 1 without a text; may be given again",
     .commands = "check build simulate view synth explore",
     .choices = "",
     .list = &command_line::definitions,
     .of_design = true},
    {.name = "--dump",
     .value = "STAGE",
     .text = "print the values as they stand behind a stage instead of the report",
     .commands = "check",
     .choices = "",
     .word = &command_line::dump,
     .not_with = "--json"},
    {.name = "--lang",
     .value = "LANGUAGE",
     .text = "the language to write or to simulate; both without it",
     .commands = "build simulate",
     .choices = "vhdl verilog both",
     .word = &command_line::languages},
    {.name = "--driver",
     .value = "LANGUAGE",
     .text = "also write a model of the design that computes on this machine what the hardware delivers, bit for bit: "
             "NAME_model.h and NAME_model.cpp for C and C++, with NAME_model.py for Python",
     .commands = "build",
     .choices = "c python",
     .word = &command_line::driver,
     .of_design = true},
    {.name = "-o",
     .value = "FOLDER",
     .text = "where to write, here without it; made when it is not there",
     .commands = "build",
     .choices = "",
     .word = &command_line::folder},
    {.name = "-o",
     .value = "FILE",
     .text = "what to write; otherwise the design's name with .html, .svg or .dot",
     .commands = "view",
     .choices = "",
     .word = &command_line::file},
    {.name = "--family",
     .value = "NAME",
     .text = "the devices to synthesise or to estimate for; nextpnr places ice40, so that synth tells a clock",
     .commands = "synth explore",
     .choices = "ice40 ecp5 xilinx intel",
     .word = &command_line::family},
    {.name = "-o",
     .value = "FILE",
     .text = "what to write; otherwise the design's name with _explored.html, and the standard output for the rest",
     .commands = "explore",
     .choices = "",
     .word = &command_line::file},
    {.name = "--csv",
     .value = "",
     .text = "tell the points as a table for other programs",
     .commands = "explore",
     .choices = "",
     .flag = &command_line::csv,
     .not_with = "--html --json --jobs-file --point"},
    {.name = "--html",
     .value = "",
     .text = "write a page with a picture of the points",
     .commands = "explore",
     .choices = "",
     .flag = &command_line::html,
     .not_with = "--json --jobs-file --point"},
    {.name = "--threads",
     .value = "N",
     .text = "how many points to build at a time; without it one a core",
     .commands = "explore",
     .choices = "",
     .number = &command_line::threads},
    {.name = "--jobs-file",
     .value = "FILE",
     .text =
         "build nothing, but write a command line a point, whose results go into FILE.results; GNU parallel, make or "
         "a cluster runs them in any order",
     .commands = "explore",
     .choices = "",
     .word = &command_line::jobs_file,
     .not_with = "--merge --point"},
    {.name = "--merge",
     .value = "FOLDER",
     .text = "build nothing, but take the results of such lines; of points without one the lines are printed again",
     .commands = "explore",
     .choices = "",
     .word = &command_line::merge,
     .not_with = "--point"},
    {.name = "--point",
     .value = "N",
     .text = "build this point alone, as the lines of --jobs-file ask for it",
     .commands = "explore",
     .choices = "",
     .number = &command_line::point},
    {.name = "--result",
     .value = "FILE",
     .text = "where the point's result goes",
     .commands = "explore",
     .choices = "",
     .word = &command_line::result,
     .only_with = "--point"},
    {.name = "--svg",
     .value = "",
     .text = "write the schedule alone, as SVG",
     .commands = "view",
     .choices = "",
     .flag = &command_line::svg,
     .not_with = "--dot"},
    {.name = "--dot",
     .value = "",
     .text = "write the components and who reads whom, for Graphviz",
     .commands = "view",
     .choices = "",
     .flag = &command_line::dot},
    {.name = "--name",
     .value = "NAME",
     .text = "what to call the design instead of the program's name",
     .commands = "build simulate view synth",
     .choices = "",
     .word = &command_line::name,
     .of_design = true},
    {.name = "--simulator",
     .value = "NAME",
     .text = "the simulator to run; without it the first one installed for each language; none: the model alone",
     .commands = "simulate",
     .choices = "ghdl iverilog verilator none",
     .word = &command_line::simulator},
    {.name = "--vectors",
     .value = "N",
     .text = "how many random vectors to apply, 1000 without it",
     .commands = "simulate explore",
     .choices = "",
     .number = &command_line::vectors},
    {.name = "--seed",
     .value = "N",
     .text = "where the random vectors start, or the placer; equal seeds give equal ones",
     .commands = "simulate synth explore",
     .choices = "",
     .number = &command_line::seed},
    {.name = "--inputs",
     .value = "FILE.csv",
     .text = "vectors to apply instead of random ones: a header with the input ports' names, then a line a cycle",
     .commands = "simulate",
     .choices = "",
     .word = &command_line::inputs,
     .not_with = "--vectors"},
    {.name = "--outputs",
     .value = "FILE.csv",
     .text = "write what comes out, a line a vector, floating numbers in hexadecimal as C reads them",
     .commands = "simulate",
     .choices = "",
     .word = &command_line::outputs},
    {.name = "--wave",
     .value = "FILE.vcd",
     .text = "write the waveforms of the first simulator that runs",
     .commands = "simulate",
     .choices = "",
     .word = &command_line::wave},
    {.name = "--mantissa",
     .value = "BITS",
     .text = "bits of the mantissa inside single-precision chains, 32 or 36",
     .commands = "check build simulate view synth",
     .choices = "32 36",
     .number = &command_line::mantissa,
     .of_design = true},
    {.name = "--low-latency",
     .value = "",
     .text = "the fewest cycles instead of the fastest clock; quotients and normalizations "
             "are truncated, below one unit instead of half a one",
     .commands = "check build simulate view synth",
     .choices = "",
     .flag = &command_line::low_latency,
     .of_design = true},
    {.name = "--fast-reciprocal",
     .value = "",
     .text = "1 / x and 1 / sqrt(x) use the reciprocal components: fewer cycles, less well rounded",
     .commands = "check build simulate view synth",
     .choices = "",
     .flag = &command_line::fast_reciprocal,
     .of_design = true},
    {.name = "--round-conversions",
     .value = "MODE",
     .text = "conversions to and from the forms inside round (on) or cut off",
     .commands = "check build simulate view synth explore",
     .choices = "on off",
     .word = &command_line::round_conversions,
     .of_design = true},
    {.name = "--round-normalization",
     .value = "MODE",
     .text = "normalizations round (on) or leave a sticky bit",
     .commands = "check build simulate view synth explore",
     .choices = "on off",
     .word = &command_line::round_normalization,
     .of_design = true},
    {.name = "--normalize-inputs",
     .value = "MODE",
     .text = "operands of single-precision multipliers are normalized fully (on) or by one bit alone",
     .commands = "check build simulate view synth explore",
     .choices = "on off",
     .word = &command_line::normalize_inputs,
     .of_design = true},
    {.name = "--output-registers",
     .value = "MODE",
     .text = "a register behind components that could do without (on), which makes the clock fast",
     .commands = "check build simulate view synth explore",
     .choices = "on off",
     .word = &command_line::output_registers,
     .of_design = true},
    {.name = "--shifter-registers",
     .value = "MODE",
     .text = "a register inside the alignment of sums (on), which makes the clock fast",
     .commands = "check build simulate view synth explore",
     .choices = "on off",
     .word = &command_line::shifter_registers,
     .of_design = true},
    {.name = "--normalizer-speed",
     .value = "LEVEL",
     .text = "cycles of a normalization, 1 to 3; more make the clock fast",
     .commands = "check build simulate view synth explore",
     .choices = "1 2 3",
     .word = &command_line::normalizer_speed,
     .of_design = true},
    {.name = "--multiplier-blocks",
     .value = "MODE",
     .text = "products are written so that tools put them into multiplier blocks (on), or out of adders; the same bits "
             "and cycles",
     .commands = "check build simulate view synth explore",
     .choices = "on off",
     .word = &command_line::multiplier_blocks,
     .of_design = true},
    {.name = "--json",
     .value = "",
     .text = "print report and messages as JSON",
     .commands = "check build simulate synth explore",
     .choices = "",
     .flag = &command_line::json},
    {.name = "--color",
     .value = "WHEN",
     .text = "colours in messages; auto: when they go to a terminal",
     .commands = "check build simulate view synth explore",
     .choices = "auto always never",
     .word = &command_line::colour},
};

constexpr library_option_row library_rows[] = {
    {"--round-conversions", &command_line::round_conversions, &library_options::roundconvert},
    {"--round-normalization", &command_line::round_normalization, &library_options::roundnormalize},
    {"--normalize-inputs", &command_line::normalize_inputs, &library_options::inputnormalize},
    {"--output-registers", &command_line::output_registers, &library_options::outputpipe},
    {"--shifter-registers", &command_line::shifter_registers, &library_options::shiftspeed},
    {"--normalizer-speed", &command_line::normalizer_speed, &library_options::normspeed},
    {"--multiplier-blocks", &command_line::multiplier_blocks, &library_options::synthesize},
};

constexpr std::string_view program_text = "Makes pipelined floating-point hardware of C programs.";

std::vector<std::string> words_of(std::string_view text) {
    std::istringstream stream{std::string(text)};
    return {std::istream_iterator<std::string>(stream), {}};
}

bool belongs_to(const option_row& option, std::string_view command) {
    const std::vector<std::string> names = words_of(option.commands);
    return std::find(names.begin(), names.end(), command) != names.end();
}

/// A decimal number: CLI11 alone would take 010 for eight.
CLI::Validator positive_number() {
    const auto read = [](std::string& text) {
        int number = 0;
        const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (failed != std::errc() || end != text.data() + text.size() || number < 1) {
            return "Value " + text + " is no whole number from 1 to " + std::to_string(std::numeric_limits<int>::max());
        }
        text = std::to_string(number);
        return std::string();
    };
    return {read, "POSITIVE"};
}

/// What an option does, and with which others; CLI11 adds the latter to its own help.
std::string full_text(const option_row& row) {
    const auto list = [](std::string_view start, std::string_view names) {
        std::string text;
        for (const std::string& name : words_of(names)) {
            text += std::string(text.empty() ? start : ", ") + name;
        }
        return text;
    };
    return std::string(row.text) + list("; not with ", row.not_with) + list("; only with ", row.only_with);
}

void add_option(CLI::App& app, const option_row& row, command_line& line) {
    const std::string name(row.name);
    const std::string text(row.text);
    CLI::Option* option = nullptr;
    if (row.flag != nullptr) {
        app.add_flag(name, line.*row.flag, text);
        return;
    }
    if (row.word != nullptr) {
        option = app.add_option(name, line.*row.word, text);
    } else if (row.number != nullptr) {
        option = app.add_option(name, line.*row.number, text)->transform(positive_number());
    } else {
        option = app.add_option(name, line.*row.list, text)->allow_extra_args(false);
    }
    option->type_name(std::string(row.value));
    if (!row.choices.empty()) {
        option->check(CLI::IsMember(words_of(row.choices)));
    }
    if (row.word == &command_line::dump) {
        std::vector<std::string> names;
        for (const stage_row& stage : stage_rows()) {
            names.emplace_back(stage.name);
        }
        option->check(CLI::IsMember(names));
    }
}

}  // namespace

std::span<const library_option_row> library_option_rows() { return library_rows; }

std::string design_options(const command_line& line, std::string_view command) {
    const command_line defaults;
    std::string text;
    const auto add = [&](const option_row& row, const std::string& value) {
        text += (text.empty() ? "" : " ") + std::string(row.name) + (row.flag != nullptr ? "" : " ") + value;
    };
    for (const option_row& row : options) {
        if (!row.of_design || !belongs_to(row, command)) {
            continue;
        }
        if (row.flag != nullptr && line.*row.flag) {
            add(row, "");
        } else if (row.word != nullptr && line.*row.word != defaults.*row.word) {
            add(row, shell_word(line.*row.word));
        } else if (row.number != nullptr && line.*row.number != defaults.*row.number) {
            add(row, std::to_string(line.*row.number));
        } else if (row.list != nullptr) {
            for (const std::string& value : line.*row.list) {
                add(row, shell_word(value));
            }
        }
    }
    return text;
}

std::string shell_word(const std::string& word) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=./:,@%";
    if (!word.empty() && word.find_first_not_of(plain) == std::string::npos) {
        return word;
    }
    std::string text = "'";
    for (const char letter : word) {
        // Without a backslash, since comments have none.
        text += letter == '\'' ? "'\"'\"'" : std::string(1, letter);
    }
    return text + "'";
}

std::span<const command_row> command_rows() { return commands; }
std::span<const option_row> option_rows() { return options; }

parsed_line parse_command_line(std::span<const std::string> arguments) {
    parsed_line parsed;
    CLI::App app{std::string(program_text), "xfcflow"};
    app.set_version_flag("--version", "xfcflow " + std::string(version), "print the version");
    app.set_help_flag("--help", "print this text");
    app.require_subcommand(1);
    // Nothing that a user needs: the texts that are installed are made by it.
    bool man = false;
    bool completion = false;
    app.add_flag("--man", man)->group("");
    app.add_flag("--completion", completion)->group("");
    for (const command_row& row : commands) {
        CLI::App* command = app.add_subcommand(std::string(row.name), std::string(row.text));
        command->set_help_flag("--help", "print this text");
        command->footer("Example:\n  " + std::string(row.example));
        command->add_option("PROG.c", parsed.line.source, "the C program")->required()->type_name("");
        for (const option_row& option : options) {
            if (belongs_to(option, row.name)) {
                add_option(*command, option, parsed.line);
            }
        }
        for (const option_row& option : options) {
            if (belongs_to(option, row.name)) {
                for (const std::string& other : words_of(option.not_with)) {
                    command->get_option(std::string(option.name))->excludes(command->get_option(other));
                }
                for (const std::string& other : words_of(option.only_with)) {
                    command->get_option(std::string(option.name))->needs(command->get_option(other));
                }
            }
        }
        command->final_callback([&parsed, &row] { parsed.line.command = row.name; });
    }
    app.footer("Examples:\n" + [] {
        std::string text;
        for (const command_row& row : commands) {
            text += "  " + std::string(row.example) + "\n";
        }
        return text.substr(0, text.size() - 1);
    }());
    const bool made_text = arguments.size() == 1 && (arguments[0] == "--man" || arguments[0] == "--completion");
    if (made_text) {
        parsed.ends = true;
        parsed.text = arguments[0] == "--man" ? man_page() : bash_completion();
        return parsed;
    }
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& ended) {
        std::ostringstream out;
        std::ostringstream error;
        parsed.ends = true;
        parsed.status = app.exit(ended, out, error) == 0 ? 0 : 1;
        parsed.text = parsed.status == 0 ? out.str() : error.str();
    }
    return parsed;
}

std::string man_page() {
    std::string text = ".TH XFCFLOW 1 \"\" \"xfcflow " + std::string(version) + "\" \"User Commands\"\n";
    text += ".SH NAME\nxfcflow \\- compile C programs into pipelined floating-point hardware\n.SH SYNOPSIS\n";
    for (const command_row& row : commands) {
        text += ".B xfcflow " + std::string(row.name) + "\n.I PROG.c\n[options]\n.br\n";
    }
    text += ".SH DESCRIPTION\n" + std::string(program_text) + "\n";
    text +=
        "Messages go to the standard error, reports to the standard output. The status is 0 when what was asked for "
        "holds, else 1.\n";
    for (const command_row& row : commands) {
        text += ".SH XFCFLOW " + [&] {
            std::string name(row.name);
            std::transform(name.begin(), name.end(), name.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
            return name;
        }();
        text += "\n" + std::string(row.text) + "\n";
        for (const option_row& option : options) {
            if (!belongs_to(option, row.name)) {
                continue;
            }
            std::string name(option.name);
            for (std::size_t at = name.find('-'); at != std::string::npos; at = name.find('-', at + 2)) {
                name.insert(at, "\\");
            }
            text += ".TP\n.B " + name;
            text += (option.value.empty() ? "" : " \\fI" + std::string(option.value) + "\\fR");
            text += "\n" + full_text(option) + ".\n";
        }
        text += ".PP\nExample:\n.PP\n.RS\n.nf\n" + std::string(row.example) + "\n.fi\n.RE\n";
    }
    return text + ".SH SEE ALSO\n.BR xfc (1)\n";
}

std::string bash_completion() {
    std::string names;
    for (const command_row& row : commands) {
        names += (names.empty() ? "" : " ") + std::string(row.name);
    }
    std::string text = "# Completion of xfcflow for bash.\n_xfcflow() {\n";
    text += "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}\n";
    text += "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n";
    text +=
        "        COMPREPLY=($(compgen -W '" + names + " --help --version' -- \"$current\"))\n        return\n    fi\n";
    text += "    case $previous in\n";
    for (const option_row& option : options) {
        std::string choices(option.choices);
        if (option.word == &command_line::dump) {
            for (const stage_row& stage : stage_rows()) {
                choices += (choices.empty() ? "" : " ") + std::string(stage.name);
            }
        }
        if (!choices.empty()) {
            text += "        " + std::string(option.name) + ") COMPREPLY=($(compgen -W '" + choices +
                    "' -- \"$current\")); return ;;\n";
        } else if (option.value == "FOLDER") {
            text += "        " + std::string(option.name) + ") COMPREPLY=($(compgen -d -- \"$current\")); return ;;\n";
        }
    }
    text += "    esac\n    case ${COMP_WORDS[1]} in\n";
    for (const command_row& row : commands) {
        std::string all = "--help";
        for (const option_row& option : options) {
            all += belongs_to(option, row.name) ? " " + std::string(option.name) : "";
        }
        text += "        " + std::string(row.name) + ") words='" + all + "' ;;\n";
    }
    text += "        *) words= ;;\n    esac\n";
    text += "    case $current in\n        -*) COMPREPLY=($(compgen -W \"$words\" -- \"$current\")) ;;\n";
    text +=
        "        *) COMPREPLY=($(compgen -f -X '!*.c' -- \"$current\") $(compgen -d -- \"$current\")) ;;\n    esac\n";
    return text + "}\ncomplete -o filenames -F _xfcflow xfcflow\n";
}

}  // namespace xfc::flow
