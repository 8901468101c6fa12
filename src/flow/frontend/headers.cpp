#include "flow/frontend/headers.h"

#include "flow/frontend/header_texts.h"
#include "flow/frontend/known_functions.h"

namespace xfc::flow {

namespace {

/// Declarations of all known functions in double and in single; those of xfc.h among them do no harm.
std::string math_functions() {
    std::string text;
    for (const known_function& row : known_functions()) {
        if (row.name == "inv" || row.name == "invsqr" || row.name == "negate") {
            continue;  // C knows them from xfc.h only
        }
        for (const bool single : {false, true}) {
            const std::string type = single ? "float" : "double";
            text += type;
            text += ' ';
            text += row.name;
            text += single ? "f(" : "(";
            text += type;
            for (int place = 1; place < row.arguments; ++place) {
                text += row.second_integer ? ", int" : ", " + type;
            }
            text += ");\n";
        }
    }
    return text;
}

}  // namespace

std::vector<built_in_header> built_in_headers() {
    std::vector<built_in_header> headers;
    for (const auto& [name, text] : header_texts) {
        headers.push_back({name, name == "math.h" ? std::string(text) + math_functions() : std::string(text)});
    }
    return headers;
}

}  // namespace xfc::flow
