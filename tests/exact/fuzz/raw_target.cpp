// The bytes are the source program. Its first line, when it begins with a "%", chooses the arguments: every character
// behind the sign stands for the source's name or for a switch, well-formed or not.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "checks.h"

namespace {

using namespace xfc::fuzz;

struct argument_letter {
    char letter;
    std::string_view first;
    std::string_view second = {};
};

constexpr std::array<argument_letter, 41> switch_letters{{
    {'v', "-vlg"},
    {'d', "-ds"},
    {'m', "-mm", "36"},
    {'M', "-mm", "32"},
    {'f', "-fd", "7"},
    {'i', "-ni"},
    {'n', "-no"},
    {'c', "-rc"},
    {'r', "-rn"},
    {'o', "-op"},
    {'1', "-ns", "1"},
    {'2', "-ns", "2"},
    {'3', "-ns", "3"},
    {'p', "-ps"},
    {'x', "-xc", "2"},
    {'y', "-xc", "5"},
    {'X', "-xc", "16"},
    {'a', "-da"},
    {'s', "-s3"},
    {'S', "-s5"},
    {'0', "-mv", "0"},
    {'k', "-mv", "1"},
    {'K', "-mv", "2"},
    {'l', "-mv", "3"},
    {'L', "-mv", "-2147483648"},
    {'Y', "-sy"},
    {'e', "-mm", "33"},
    {'E', "-xc", "17"},
    {'g', "-mv", "4"},
    {'G', "-ns", "0"},
    {'h', "-mm"},
    {'H', "-xc"},
    {'j', "-ns"},
    {'J', "-fd"},
    {'u', "-x"},
    {'U', ""},
    {'w', "-dsx"},
    {'W', "-mm", "4294967328"},
    {'z', "-xc", "9 bits"},
    {'Z', "-fd", "99999999999999999999"},
    {'t', "-mv", "x"},
}};

struct name_letter {
    char letter;
    std::string_view name;
};

constexpr std::array<name_letter, 12> name_letters{{
    {'A', "p.vhd"},
    {'B', "p.v"},
    {'C', "p"},
    {'D', "p.old.c"},
    {'F', "./p.c"},
    {'I', "-ds"},
    {'N', "-mm"},
    {'O', ".c"},
    {'P', "a_name_of_thirty_one_characters"},
    {'Q', "a_name_of_more_than_thirty_one_characters.c"},
    {'R', "a_name_with_its_dot_at_place.30"},
    {'T', "-vlg"},
}};

/// Takes the line of arguments off the source.
compilation_request read_request(std::string_view bytes) {
    compilation_request request;
    if (!bytes.starts_with('%')) {
        request.source = bytes;
        return request;
    }
    const std::size_t line_end = std::min({bytes.find('\n'), bytes.size(), std::size_t{40}});
    for (const char character : bytes.substr(1, line_end - 1)) {
        const auto* const name = std::find_if(name_letters.begin(), name_letters.end(),
                                              [&](const name_letter& row) { return row.letter == character; });
        if (name != name_letters.end()) {
            request.source_name = name->name;
            continue;
        }
        const auto* found = std::find_if(switch_letters.begin(), switch_letters.end(),
                                         [&](const argument_letter& row) { return row.letter == character; });
        if (found == switch_letters.end()) {
            found = &switch_letters[static_cast<unsigned char>(character) % switch_letters.size()];
        }
        request.switches.emplace_back(found->first);
        if (!found->second.empty()) {
            request.switches.emplace_back(found->second);
        }
    }
    request.source = bytes.substr(std::min(line_end + 1, bytes.size()));
    return request;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    set_graph_checks(graph_checks::general);
    const compilation_request request = read_request({reinterpret_cast<const char*>(data), size});
    const compilation result = compile(request);
    check_outcome(request, result);
    return 0;
}
