// Usage: prove_library LIBRARY BENCHES WORK [NAME...] [--vectors N] [--seed N] [--simulators LIST] [--formal]
//                      [--all-sets]
//        prove_library LIBRARY BENCHES WORK NAME --measured [GENERIC=VALUE...]
// Proves the named components of the library, or all, for a choice of their sets of generics or for all of them; of
// all, a row without a folder fails as well. LIST is of icarus, verilator, ghdl with commas, or none.

#include <charconv>
#include <exception>
#include <iostream>
#include <sstream>

#include "folders.h"
#include "prover.h"

namespace {

namespace fs = std::filesystem;
using namespace xfc;

const component_row* row_named(std::string_view name) {
    for (const component_row& row : all_components()) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

template <class number>
bool read_number(const std::string& text, number& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} && end == text.data() + text.size();
}

std::vector<std::string> split_list(const std::string& text) {
    std::vector<std::string> parts;
    std::istringstream list(text == "none" ? "" : text);
    for (std::string part; std::getline(list, part, ',');) {
        parts.push_back(part);
    }
    return parts;
}

struct request {
    proof::prover_settings settings;
    std::vector<std::string> names;
    std::vector<std::string> settled;  ///< GENERIC=VALUE
};

/// Reads the command line; false when it is not understood.
bool read_arguments(const std::vector<std::string>& arguments, request& wanted) {
    if (arguments.size() < 3) {
        return false;
    }
    wanted.settings.library = fs::absolute(arguments[0]);
    wanted.settings.benches = fs::absolute(arguments[1]);
    wanted.settings.work = fs::absolute(arguments[2]);
    for (std::size_t i = 3; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "--formal") {
            wanted.settings.formal = true;
        } else if (word == "--all-sets") {
            wanted.settings.all_sets = true;
        } else if (word == "--measured") {
            wanted.settings.measured = true;
        } else if (word.find('=') != std::string::npos) {
            wanted.settled.push_back(word);
        } else if (word.substr(0, 2) == "--") {
            if (++i == arguments.size()) {
                return false;
            }
            if (word == "--simulators") {
                wanted.settings.simulators = split_list(arguments[i]);
            } else if (!(word == "--vectors" && read_number(arguments[i], wanted.settings.vectors)) &&
                       !(word == "--seed" && read_number(arguments[i], wanted.settings.seed))) {
                return false;
            }
        } else {
            wanted.names.push_back(word);
        }
    }
    return true;
}

/// What is wrong with one folder of the library.
std::vector<std::string> prove_folder(const std::string& name, const request& wanted) {
    const proof::prover_settings& settings = wanted.settings;
    const component_row* const row = row_named(name);
    if (row == nullptr) {
        return {name + ": no row of the component table has this name"};
    }
    for (const char* extension : {".vhd", ".v"}) {
        if (!fs::exists(settings.library / name / (name + extension))) {
            return {name + ": there is no " + name + extension};
        }
    }
    if (settings.measured) {
        return proof::write_measured(*row, settings, wanted.settled);
    }
    return settings.formal ? proof::prove_formally(*row, settings) : proof::prove_component(*row, settings);
}

}  // namespace

int main(int argc, char** argv) {
    request wanted;
    if (!read_arguments({argv + 1, argv + argc}, wanted)) {
        std::cerr
            << "usage: prove_library LIBRARY BENCHES WORK [NAME...] [--vectors N] [--seed N] "
               "[--simulators icarus,verilator,ghdl|none] [--formal] [--all-sets] [--measured GENERIC=VALUE...]\n";
        return 2;
    }
    try {
        bool proven = true;
        std::vector<std::string> names = wanted.names;
        if (names.empty()) {
            for (const std::string& failure :
                 proof::folder_failures(wanted.settings.library, wanted.settings.benches / "awaited")) {
                std::cout << failure << '\n';
                proven = false;
            }
            const auto folders = proof::component_folders(wanted.settings.library);
            names.assign(folders.begin(), folders.end());
        }
        for (const std::string& name : names) {
            for (const std::string& failure : prove_folder(name, wanted)) {
                std::cout << failure << '\n';
                proven = false;
            }
        }
        if (!wanted.settings.measured || !proven) {
            std::cout << (proven ? "proven" : "NOT proven") << '\n';
        }
        return proven ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "prove_library: " << error.what() << '\n';
        return 2;
    }
}
