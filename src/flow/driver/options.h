#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "components/library_options.h"

namespace xfc::flow {

/// Everything that the command line says. An option's row names the field that it fills.
struct command_line {
    std::string command = {};  ///< the name of a row
    std::string source = {};
    std::string top = {};
    std::string dump = {};  ///< the stage to show
    std::string colour = "auto";
    std::string languages = {};    ///< empty: both
    std::string folder = ".";      ///< where `build` writes
    std::string file = {};         ///< what `view` writes; empty: the design's name
    std::string driver = {};       ///< the language of a model for the host; empty: none
    std::string name = {};         ///< of the design; empty: the program's
    std::string simulator = {};    ///< empty: the first one installed; "none": the model alone
    std::string inputs = {};       ///< a table of vectors; empty: random ones
    std::string outputs = {};      ///< where the outputs go as such a table
    std::string wave = {};         ///< where the waveforms go
    std::string family = "ice40";  ///< of devices, to synthesise for
    std::string jobs_file = {};    ///< where `explore` writes its points as lines to run
    std::string merge = {};        ///< a folder of results of such lines
    std::string result = {};       ///< where one point's result goes
    int vectors = 1000;
    int seed = 1;
    int unroll = 100000;
    int mantissa = 32;
    int point = 0;    ///< of an exploration, from 1; 0: all of them
    int threads = 0;  ///< 0: as many as there are cores
    bool low_latency = false;
    bool fast_reciprocal = false;
    // "on", "off" or a number for generics of the library; empty: as --low-latency says.
    std::string round_conversions = {};
    std::string round_normalization = {};
    std::string normalize_inputs = {};
    std::string output_registers = {};
    std::string shifter_registers = {};
    std::string multiplier_blocks = {};
    std::string normalizer_speed = {};
    bool c_constants = false;
    bool json = false;
    bool csv = false;
    bool html = false;
    bool svg = false;
    bool dot = false;
    bool terminal = false;  ///< messages go to one, where long work may show how far it is
    std::vector<std::string> include_folders = {};
    std::vector<std::string> definitions = {};
};

/// One command: from this row come the program's help, its man page and its completion.
struct command_row {
    std::string_view name;
    std::string_view text;     ///< what it does, as help and man page say
    std::string_view example;  ///< a whole line
};

/// Where an option's value goes; the alternative that is set says what kind of option it is.
struct option_row {
    std::string_view name;      ///< "--top"
    std::string_view value;     ///< what stands for its value in texts; empty for a switch
    std::string_view text;      ///< what it does
    std::string_view commands;  ///< names of the commands that have it, separated by blanks
    std::string_view choices;   ///< values to choose from, separated by blanks; empty: any
    bool command_line::*flag = nullptr;
    std::string command_line::*word = nullptr;
    int command_line::*number = nullptr;
    std::vector<std::string> command_line::*list = nullptr;
    bool of_design = false;           ///< what is built depends on it
    std::string_view not_with = {};   ///< options that would leave it without effect or lose their own, by blanks
    std::string_view only_with = {};  ///< the option without which it has no effect
};

/// An option that sets a generic of the library's components.
struct library_option_row {
    std::string_view name;
    std::string command_line::*word;
    std::int32_t library_options::*field;

    /// What the word stands for.
    [[nodiscard]] static std::int32_t value_of(std::string_view word) {
        return word == "on" ? 1 : word == "off" ? 0 : word.front() - '0';
    }
};

[[nodiscard]] std::span<const library_option_row> library_option_rows();

/// The options of a command that make the design what it is, with which the same one is built again, as a shell reads
/// them; those that stand at their defaults are left out.
[[nodiscard]] std::string design_options(const command_line& line, std::string_view command);

/// A word as a shell reads it.
[[nodiscard]] std::string shell_word(const std::string& word);

[[nodiscard]] std::span<const command_row> command_rows();
[[nodiscard]] std::span<const option_row> option_rows();

/// What came of reading the arguments: a command to run, or a text to print and a status to end with.
struct parsed_line {
    command_line line = {};
    bool ends = false;
    std::string text = {};  ///< for the standard output when the status is 0, else for the standard error
    int status = 0;
};

/// Reads the arguments behind the program's name.
[[nodiscard]] parsed_line parse_command_line(std::span<const std::string> arguments);

/// The man page in the format of man(7), and the completion for bash, from the same rows.
[[nodiscard]] std::string man_page();
[[nodiscard]] std::string bash_completion();

}  // namespace xfc::flow
