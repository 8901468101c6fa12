#include "flow/simulate/accuracy.h"

#include <algorithm>
#include <bit>
#include <cstdio>

#include "flow/simulate/reference.h"

namespace xfc::flow {

std::string c_text(number_format format, std::uint64_t bits) {
    char text[64];
    switch (format) {
        case number_format::single_float:
            (void)std::snprintf(text, sizeof text, "%a",
                                static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits))));
            break;
        case number_format::double_float:
            (void)std::snprintf(text, sizeof text, "%a", std::bit_cast<double>(bits));
            break;
        default:
            (void)std::snprintf(text, sizeof text, "%d", static_cast<std::int32_t>(bits));
            break;
    }
    return text;
}

std::vector<output_accuracy> accuracy_of(const graph& source, const stimulus& applied,
                                         const std::vector<std::vector<std::uint64_t>>& results) {
    std::vector<output_accuracy> rows;
    if (!exact_reference::follows(source)) {
        return rows;
    }
    for (const port& output : source.outputs()) {
        rows.push_back({.name = output.name, .format = format_name(output.format)});
    }
    std::vector<std::vector<double>> errors(rows.size());
    exact_reference exact(source);
    for (std::size_t number = 0; number < applied.vectors.size(); ++number) {
        const std::vector<std::uint64_t>& inputs = applied.vectors[number];
        exact.run(inputs);
        const std::vector<std::uint64_t> of_c = c_outputs(source, inputs);
        for (std::size_t place = 0; place < rows.size(); ++place) {
            output_accuracy& row = rows[place];
            const deviation here = exact.deviation_of(place, results[number][place]);
            const deviation c = exact.deviation_of(place, of_c[place]);
            ++row.vectors;
            row.other_class += here.class_differs ? 1 : 0;
            row.other_class_of_c += c.class_differs ? 1 : 0;
            row.largest_ulp_of_c = std::max(row.largest_ulp_of_c, c.ulp);
            errors[place].push_back(here.ulp);
            if (here.ulp > row.largest_ulp) {
                row.largest_ulp = here.ulp;
                row.worst.clear();
                for (std::size_t input = 0; input < inputs.size(); ++input) {
                    const port& one = source.inputs()[input];
                    row.worst += (input == 0 ? "" : " ") + one.name + "=" + c_text(one.format, inputs[input]);
                }
            }
        }
    }
    for (std::size_t place = 0; place < rows.size(); ++place) {
        std::vector<double>& all = errors[place];
        if (!all.empty()) {
            const auto middle = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
            std::nth_element(all.begin(), middle, all.end());
            rows[place].median_ulp = *middle;
        }
    }
    return rows;
}

std::string accuracy_table(const std::vector<output_accuracy>& rows) {
    std::size_t width = 6;
    for (const output_accuracy& row : rows) {
        width = std::max(width, row.name.size());
    }
    const auto padded = [](const std::string& text, std::size_t size) {
        return std::string(text.size() < size ? size - text.size() : 0, ' ') + text;
    };
    const auto number = [&](double what) {
        char text[32];
        (void)std::snprintf(text, sizeof text, what < 1e6 ? "%.3f" : "%.2e", what);
        return padded(text, 12);
    };
    std::string text = "output" + std::string(width - 6, ' ') +
                       "  format    vectors  largest ulp   median ulp    C largest  inf/nan differs  C's\n";
    for (const output_accuracy& row : rows) {
        text += row.name + std::string(width - row.name.size(), ' ') + "  " + std::string(row.format) +
                std::string(8 - row.format.size(), ' ') + padded(std::to_string(row.vectors), 9) + " " +
                number(row.largest_ulp) + " " + number(row.median_ulp) + " " + number(row.largest_ulp_of_c) +
                padded(std::to_string(row.other_class), 17) + padded(std::to_string(row.other_class_of_c), 5) + "\n";
        if (!row.worst.empty()) {
            text += "  worst at " + row.worst + "\n";
        }
    }
    return text;
}

}  // namespace xfc::flow
