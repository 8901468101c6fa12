// Usage: mutate_library LIBRARY BENCHES WORK PROVER [NAME...] [--faults N] [--seed N] [--vectors N] [--only K]
// Plants small faults in the hardware texts of the named components, or of all, one at a time in a copy of the library,
// and has PROVER look for each with few vectors: Verilog in Icarus, VHDL in GHDL. Prints a line a fault and how many
// were found; fails below 99 of 100. What changes no bit of a result stands in BENCHES/equivalent_faults with the
// reason, and does not count. The same seed plants the same faults; --only K tries the K-th of them alone.

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <random>
#include <regex>
#include <sstream>

#include "folders.h"
#include "prover.h"

namespace {

namespace fs = std::filesystem;
using namespace xfc;

/// A fault: what a match of the pattern becomes. Patterns see a line without its comment.
struct fault_row {
    const char* what;
    const char* extension;  ///< of the texts it is for; empty: both
    const char* pattern;
    const char* replacement;
};
const fault_row faults[] = {
    {"a bound one higher", "", R"(\b(\w+) ?- ?1( downto |:))", "$1$2"},
    {"a bound one lower", "", R"(( downto |:)0([\])]))", "$011$2"},
    {"a width one less", "", R"(\b([a-z_]+_bits|width|mantissa|levels) ?([-+]) ?1\b(?!\{1.b))", "$1 $2 2"},
    {"a constant one more", "", R"(([-+<>=] ?)(\d)\b(?!'|\{1))", "$1$2 + 1"},
    {"sum for difference", "", R"((\w) - ([a-z(]))", "$1 + $2"},
    {"difference for sum", "", R"((\w) \+ ([a-z(]))", "$1 - $2"},
    {"a register less", ".v", R"((xfc_registers? #\([^,]+), 1\))", "$1, 0)"},
    {"a register less", ".vhd", R"((xfc_registers? generic map \([^,]+), 1\))", "$1, 0)"},
    {"a register turned", ".v", R"((xfc_registers? #\([^,]+), ([a-z_]+border)\))", "$1, 1 - $2)"},
    {"a register turned", ".vhd", R"((xfc_registers? generic map \([^,]+), ([a-z_]+border)\))", "$1, 1 - $2)"},
    {"a bit dropped", ".v", R"( \| [a-z_]\w*(\[[^\]]*\])?(?=[ ;)},]))", ""},
    {"a bit dropped", ".vhd", R"( or [a-z_]\w*(\([^)]*\))?(?=[ ;),]))", ""},
    {"or for and", ".v", R"( & )", " | "},
    {"and for or", ".v", R"( \| )", " & "},
    {"or for and", ".vhd", R"( and )", " or "},
    {"and for or", ".vhd", R"( or )", " and "},
    {"a condition flipped", ".v", R"( == )", " != "},
    {"a condition flipped", ".v", R"( \? ([^?:]+) : ([^?:;]+);)", " ? $2 : $1;"},
    {"a condition flipped", ".vhd", R"( when ([^']*) = '1')", " when $1 = '0'"},
    {"a condition flipped", ".vhd", R"( /= 0)", " = 0"},
    {"a complement dropped", ".v", R"([!~]([a-z(]))", "$1"},
    {"a complement dropped", ".vhd", R"(\bnot ([a-z(]))", "$1"},
    {"exclusive or for or", ".v", R"( \^ )", " | "},
    {"exclusive or for or", ".vhd", R"( xor )", " or "},
    {"operands swapped", "", R"(\b([a-z_]+) - ([a-z_]+)\b)", "$2 - $1"},
    {"neighbours swapped", ".v", R"(\{([a-z_]+), ([a-z_]+)\})", "{$2, $1}"},
    {"neighbours swapped", ".vhd", R"(\b([a-z_]+) & ([a-z_]+);)", "$2 & $1;"},
    {"one for zero", ".v", R"(1'b0)", "1'b1"},
    {"one for zero", ".vhd", R"('0')", "'1'"},
};

struct place {
    fs::path text;
    std::size_t line = 0;  ///< counted from 0
    std::string faulty;
    const char* what = "";
};

std::vector<std::string> lines_of(const fs::path& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Whether a fault in this line could be seen: no declaration of ports, no check of generics, no comment alone.
bool carries_hardware(const std::string& line) {
    static const std::regex passed_over(
        R"(^\s*(--|//|library |use |entity |generic \(|port \(|end|module |#\(parameter|input |output |assert )"
        R"(|if \(\(|parameter_missing|wire unused|localparam latency).*)"
        R"(|.*(refused|assert|severity|_missing|: in std|: out std).*)");
    return !line.empty() && !std::regex_match(line, passed_over);
}

/// Every fault that can stand in a line of the text, behind its head.
void add_places(const fs::path& text, std::vector<place>& places) {
    const std::vector<std::string> lines = lines_of(text);
    const std::string extension = text.extension().string();
    bool head = true;
    for (std::size_t number = 0; number < lines.size(); ++number) {
        const std::string& line = lines[number];
        if (head) {
            const bool last = extension == ".v" ? line.find(");") != std::string::npos : line == "begin";
            head = !last;
            continue;
        }
        if (!carries_hardware(line)) {
            continue;
        }
        const std::size_t comment = line.find(extension == ".v" ? "//" : "--");
        const std::string code = line.substr(0, comment);
        for (const fault_row& row : faults) {
            if (*row.extension != 0 && extension != row.extension) {
                continue;
            }
            const std::regex pattern(row.pattern);
            for (std::sregex_iterator match(code.begin(), code.end(), pattern); match != std::sregex_iterator();
                 ++match) {
                const auto at = static_cast<std::size_t>(match->position());
                const std::string faulty = code.substr(0, at) + match->format(row.replacement) + match->suffix().str();
                if (faulty != code) {
                    places.push_back({text, number, faulty, row.what});
                }
            }
        }
    }
}

/// The component's own texts and the common ones that these name, and so on; tables are data, and are left out.
std::vector<fs::path> texts_for(const fs::path& library, const std::string& name, const std::string& extension) {
    std::vector<fs::path> texts;
    for (const auto& entry : fs::directory_iterator(library / name)) {
        if (entry.path().extension() == extension && entry.path().stem().string().find("_table") == std::string::npos) {
            texts.push_back(entry.path());
        }
    }
    std::vector<fs::path> common;
    for (const auto& entry : fs::directory_iterator(library / "common")) {
        if (entry.path().extension() == extension &&
            entry.path().stem().string().find("_package") == std::string::npos) {
            common.push_back(entry.path());
        }
    }
    std::sort(texts.begin(), texts.end());
    std::sort(common.begin(), common.end());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        std::ifstream file(texts[i]);
        const std::string all{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        for (const fs::path& part : common) {
            const std::regex named("\\b" + part.stem().string() + "\\b");
            if (std::find(texts.begin(), texts.end(), part) == texts.end() && std::regex_search(all, named)) {
                texts.push_back(part);
            }
        }
    }
    return texts;
}

std::string trimmed(const std::string& line) { return std::regex_replace(line, std::regex("^\\s+|\\s+$"), ""); }

/// The faults that change nothing: "component | text | line with the fault | reason", without the last part.
std::vector<std::string> equivalent_faults(const fs::path& list) {
    std::vector<std::string> known;
    for (const std::string& line : lines_of(list)) {
        if (!line.empty() && line.front() != '#') {
            known.push_back(line.substr(0, line.rfind(" | ")));
        }
    }
    return known;
}

struct request {
    fs::path library, benches, work, prover;
    std::vector<std::string> names;
    std::size_t faults = 200;
    std::size_t vectors = 300;
    std::size_t only = 0;
    std::uint64_t seed = 1;
};

template <class number>
bool read_number(const std::string& text, number& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} && end == text.data() + text.size();
}

bool read_arguments(const std::vector<std::string>& arguments, request& wanted) {
    if (arguments.size() < 4) {
        return false;
    }
    wanted.library = fs::absolute(arguments[0]);
    wanted.benches = fs::absolute(arguments[1]);
    wanted.work = fs::absolute(arguments[2]);
    wanted.prover = fs::absolute(arguments[3]);
    for (std::size_t i = 4; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word.substr(0, 2) != "--") {
            wanted.names.push_back(word);
        } else if (++i == arguments.size() || !((word == "--faults" && read_number(arguments[i], wanted.faults)) ||
                                                (word == "--vectors" && read_number(arguments[i], wanted.vectors)) ||
                                                (word == "--only" && read_number(arguments[i], wanted.only)) ||
                                                (word == "--seed" && read_number(arguments[i], wanted.seed)))) {
            return false;
        }
    }
    return true;
}

/// Whether the prover finds the fault in the copy of the library; nothing when it took too long.
std::optional<bool> is_found(const request& wanted, const std::string& name, const place& planted) {
    const fs::path copy = wanted.work / "library";
    const fs::path text = copy / fs::relative(planted.text, wanted.library);
    std::vector<std::string> lines = lines_of(planted.text);
    lines[planted.line] = planted.faulty;
    std::ofstream faulty(text);
    for (const std::string& line : lines) {
        faulty << line << '\n';
    }
    faulty.close();
    int status = 0;
    const std::string command = "timeout 300 " +
                                proof::quoted({wanted.prover, copy, wanted.benches, wanted.work / "proof"}) + " " +
                                name + " --vectors " + std::to_string(wanted.vectors) + " --simulators " +
                                (text.extension() == ".v" ? "icarus" : "ghdl");
    (void)proof::output_of(command, status);
    fs::copy_file(planted.text, text, fs::copy_options::overwrite_existing);
    constexpr int timed_out = 124;
    const int exit_status = (status >> 8) & 255;
    return exit_status == timed_out ? std::nullopt : std::optional(status != 0);
}

}  // namespace

int main(int argc, char** argv) {
    request wanted;
    if (!read_arguments({argv + 1, argv + argc}, wanted)) {
        std::cerr
            << "usage: mutate_library LIBRARY BENCHES WORK PROVER [NAME...] [--faults N] [--seed N] [--vectors N] "
               "[--only K]\n";
        return 2;
    }
    if (wanted.names.empty()) {
        const auto folders = proof::component_folders(wanted.library);
        wanted.names.assign(folders.begin(), folders.end());
    }
    fs::remove_all(wanted.work);
    fs::create_directories(wanted.work);
    // Faults are planted in one copy and taken out of it by another one, whatever happens to the library meanwhile.
    fs::copy(wanted.library, wanted.work / "library", fs::copy_options::recursive);
    fs::copy(wanted.library, wanted.work / "original", fs::copy_options::recursive);
    wanted.library = wanted.work / "original";

    std::mt19937_64 random(wanted.seed);
    const std::vector<std::string> equivalent = equivalent_faults(wanted.benches / "equivalent_faults");
    std::size_t tried = 0;
    std::size_t found = 0;
    std::size_t without_effect = 0;
    for (std::size_t number = 1; number <= wanted.faults; ++number) {
        const std::string& name = wanted.names[random() % wanted.names.size()];
        std::vector<place> places;
        for (const fs::path& text : texts_for(wanted.library, name, random() % 2 == 0 ? ".v" : ".vhd")) {
            add_places(text, places);
        }
        const std::uint64_t choice = random();
        if (places.empty() || (wanted.only != 0 && number != wanted.only)) {
            continue;
        }
        const place& planted = places[choice % places.size()];
        const std::string text = fs::relative(planted.text, wanted.library).string();
        const std::string faulty = trimmed(planted.faulty);
        const std::optional<bool> judged = is_found(wanted, name, planted);
        if (!judged) {
            std::cout << number << " took too long: " << name << ", " << text << ':' << planted.line + 1 << '\n'
                      << std::flush;
            continue;
        }
        const bool seen = *judged;
        const std::string described = name + " | " + text + " | " + faulty;
        const bool known = std::find(equivalent.begin(), equivalent.end(), described) != equivalent.end();
        tried += seen || !known ? 1U : 0U;
        found += seen ? 1U : 0U;
        without_effect += !seen && known ? 1U : 0U;
        const char* const outcome = seen ? " found " : known ? " without effect " : " SURVIVED ";
        std::cout << number << outcome << name << ", " << planted.what << ": " << text << ':' << planted.line + 1
                  << ": " << faulty << '\n'
                  << std::flush;
    }
    std::cout << found << " of " << tried << " found, " << without_effect << " others without effect\n";
    return found * 100 >= tried * 99 ? 0 : 1;
}
