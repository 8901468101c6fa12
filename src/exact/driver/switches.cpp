#include "exact/driver/switches.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "exact/run/console.h"

namespace xfc {

namespace {

using options = compile_option_record;

constexpr value_range mantissas{[](std::int32_t value) { return value == 32 || value == 36; },
                                message_id::mm_out_of_range};
constexpr value_range norm_speeds{[](std::int32_t value) { return value >= 1 && value <= 3; },
                                  message_id::ns_out_of_range};
constexpr value_range cluster_sizes{[](std::int32_t value) { return value >= 2 && value <= 16; },
                                    message_id::xc_out_of_range};
/// Kept: negative values are accepted and stored as they are.
constexpr value_range optimizations{[](std::int32_t value) { return value <= 3; }, message_id::mv_out_of_range};

/// Kept: only an -ni that comes before -no undoes it.
void drop_redundant_postnormalization() {
    if (current.options.inputnormalize == 1) {
        report(message_id::postnormalization_redundant);
        current.options.outputscale = 0;
    }
}

constexpr std::array<switch_row, 17> switches{{
    {.name = "-ds", .field = &options::doublespeed},
    {.name = "-mm", .field = &options::mantissa, .takes_value = true, .range = &mantissas},
    {.name = "-fd", .field = &options::fittingregisters, .takes_value = true},
    {.name = "-ni", .field = &options::inputnormalize},
    {.name = "-no", .field = &options::outputscale, .after = drop_redundant_postnormalization},
    {.name = "-rc", .field = &options::roundconvert},
    {.name = "-rn", .field = &options::roundnormalize},
    {.name = "-op", .field = &options::outputpipe, .value = 0},
    {.name = "-ns", .field = &options::normspeed, .takes_value = true, .range = &norm_speeds},
    {.name = "-ps", .field = &options::shiftspeed, .value = 0},
    {.name = "-xc", .field = &options::clustersize, .takes_value = true, .range = &cluster_sizes},
    {.name = "-da", .field = &options::doubleaccuracy, .value = 0},
    {.name = "-s3", .field = &options::device},
    {.name = "-s5", .field = &options::device, .value = 2},
    {.name = "-mv", .field = &options::optimization, .takes_value = true, .range = &optimizations},
    {.name = "-sy", .field = &options::synthesize},
    {.name = "-vlg", .field = &options::verilog},
}};

/// A saturating 64-bit number of which the low 32 bits are kept; text that is no number gives 0.
std::int32_t read_value(const char* text) { return static_cast<std::int32_t>(std::strtoll(text, nullptr, 10)); }

void apply_switch(const switch_row& row, std::int32_t value) {
    current.options.*row.field = value;
    if (row.range != nullptr && !row.range->accepts(value)) {
        fail(row.range->out_of_range);
    }
    if (row.after != nullptr) {
        row.after();
    }
}

}  // namespace

std::span<const switch_row> switch_table() { return switches; }

argument_result read_switches(std::span<const char* const> arguments) {
    current.options = {};
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string_view argument = arguments[index];
        const auto row = std::find_if(switches.begin(), switches.end(),
                                      [argument](const switch_row& candidate) { return candidate.name == argument; });
        if (row == switches.end()) {
            continue;
        }
        if (!row->takes_value) {
            apply_switch(*row, row->value);
            continue;
        }
        if (++index == arguments.size()) {
            return argument_result::value_missing;
        }
        apply_switch(*row, read_value(arguments[index]));
    }
    return argument_result::accepted;
}

}  // namespace xfc
