#include "flow/emit/template.h"

namespace xfc::flow {

std::string filled_template(std::string_view format, const substitutions& words) {
    std::string text;
    while (!format.empty()) {
        const std::size_t at = format.find('@');
        text += format.substr(0, at);
        if (at == std::string_view::npos) {
            break;
        }
        const std::size_t end = format.find('@', at + 1);
        text += words.at(format.substr(at + 1, end - at - 1));
        format.remove_prefix(end + 1);
    }
    return text;
}

}  // namespace xfc::flow
