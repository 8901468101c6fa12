#pragma once

#include <span>
#include <string_view>

#include "model/component_model.h"

namespace xfc {

struct component_model_row {
    std::string_view name;  ///< of the folder and the entity
    component_model model;
};

/// The models of all folders of the library, in the order of their names.
[[nodiscard]] std::span<const component_model_row> component_models();

/// The model of the entity `name`, or null when the library has no such folder.
[[nodiscard]] component_model model_named(std::string_view name);

}  // namespace xfc
