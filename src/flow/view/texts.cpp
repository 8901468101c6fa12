#include "flow/view/texts.h"

namespace xfc::flow {

std::string escaped(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        switch (letter) {
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '&':
                result += "&amp;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += letter;
        }
    }
    return result;
}

std::string cycles_text(const bar& one) {
    return one.kind == bar_kind::input ? std::string("input")
                                       : "cycles " + std::to_string(one.start) + " to " + std::to_string(one.end);
}

}  // namespace xfc::flow
