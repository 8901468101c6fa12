#include "model/model_list.h"

namespace xfc {

component_model model_named(std::string_view name) {
    for (const component_model_row& row : component_models()) {
        if (row.name == name) {
            return row.model;
        }
    }
    return nullptr;
}

}  // namespace xfc
