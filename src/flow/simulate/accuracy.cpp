#include "flow/simulate/accuracy.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>

#include "flow/simulate/reference.h"

namespace xfc::flow {

namespace {

bool is_nan(number_format format, std::uint64_t bits) {
    return (format == number_format::single_float &&
            std::isnan(std::bit_cast<float>(static_cast<std::uint32_t>(bits)))) ||
           (format == number_format::double_float && std::isnan(std::bit_cast<double>(bits)));
}

bool is_zero(number_format format, std::uint64_t bits) {
    return (bits << (format == number_format::single_float ? 33U : 1U)) == 0;  // without the sign
}

std::string inputs_text(const graph& source, const std::vector<std::uint64_t>& inputs) {
    std::string text;
    for (std::size_t place = 0; place < inputs.size(); ++place) {
        const port& one = source.inputs()[place];
        text += (place == 0 ? "" : " ") + one.name + "=" + c_text(one, inputs[place]);
    }
    return text;
}

/// One output's row while vectors are counted.
class row_counter {
public:
    row_counter(const accuracy_question& asked, const exact_reference& exact, std::size_t place)
        : asked_(asked), exact_(exact), place_(place) {
        const port& output = asked.source.outputs()[place];
        row_.name = output.name;
        row_.format = format_name(output.format);
    }

    void count(std::size_t number) {
        const deviation here = exact_.deviation_of(place_, asked_.results[number][place_]);
        ++row_.vectors;
        if (here.outside) {
            row_.outside_at = row_.outside == 0 ? inputs(number) : row_.outside_at;
            ++row_.outside;
        }
        switch (here.apart) {
            case apart_reason::range:
                ++row_.apart_range;
                return;
            case apart_reason::undecided:
                ++row_.apart_undecided;
                return;
            case apart_reason::cancelled:
                ++row_.apart_cancelled;
                return;
            case apart_reason::none:
                break;
        }
        errors_.push_back(here.ulp);
        if (here.ulp > row_.largest_ulp) {
            row_.largest_ulp = here.ulp;
            row_.worst_vector = number + 1;
        }
        if (asked_.of_host != nullptr && !(*asked_.of_host)[number].empty()) {
            const deviation of_c = exact_.deviation_of(place_, (*asked_.of_host)[number][place_]);
            row_.largest_ulp_of_c = std::max(row_.largest_ulp_of_c.value_or(0.0), of_c.ulp);
        }
    }

    /// `expected`: C's arithmetic over the program as it was understood; `either_zero`: a zero of any sign will do.
    void count_c(std::size_t number, std::uint64_t expected, bool either_zero) {
        const port& output = asked_.source.outputs()[place_];
        const number_format format = output.format;
        const std::uint64_t of_host = (*asked_.of_host)[number][place_];
        const bool same = of_host == expected || (is_nan(format, of_host) && is_nan(format, expected)) ||
                          (either_zero && is_zero(format, of_host));
        if (!same) {
            if (row_.c_differs == 0) {
                row_.c_differs_at =
                    inputs(number) + ": C " + c_text(output, of_host) + ", understood " + c_text(output, expected);
            }
            ++row_.c_differs;
        }
    }

    output_accuracy finished() {
        row_.measured = errors_.size();
        if (!errors_.empty()) {
            const auto middle = errors_.begin() + static_cast<std::ptrdiff_t>(errors_.size() / 2);
            std::nth_element(errors_.begin(), middle, errors_.end());
            row_.median_ulp = *middle;
        }
        row_.worst = row_.worst_vector == 0 ? "" : inputs(row_.worst_vector - 1);
        return row_;
    }

private:
    [[nodiscard]] std::string inputs(std::size_t number) const {
        return inputs_text(asked_.source, asked_.applied.vectors[number]);
    }

    const accuracy_question& asked_;
    const exact_reference& exact_;
    std::size_t place_;
    output_accuracy row_;
    std::vector<double> errors_;
};

std::string padded(const std::string& text, std::size_t size) {
    return std::string(text.size() < size ? size - text.size() : 0, ' ') + text;
}

std::string ulp_text(double what) {
    char text[32];
    (void)std::snprintf(text, sizeof text, what < 1e5 ? "%.3f" : "%.2e", what);
    return text;
}

}  // namespace

std::string c_text(const port& where, std::uint64_t bits) {
    char text[64];
    switch (where.format) {
        case number_format::single_float:
            (void)std::snprintf(text, sizeof text, "%a",
                                static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits))));
            break;
        case number_format::double_float:
            (void)std::snprintf(text, sizeof text, "%a", std::bit_cast<double>(bits));
            break;
        case number_format::boolean:
            return bits != 0 ? "1" : "0";
        case number_format::integer: {
            // A narrower type takes the low bits.
            const std::uint32_t unused = 32 - 8 * where.c_bytes;
            const std::uint32_t high = static_cast<std::uint32_t>(bits) << unused;
            return where.c_signed ? std::to_string(static_cast<std::int32_t>(high) >> unused)
                                  : std::to_string(high >> unused);
        }
    }
    return is_nan(where.format, bits) ? "nan" : text;
}

std::vector<output_accuracy> accuracy_of(const accuracy_question& asked) {
    exact_reference exact(asked.source, asked.mantissa);
    std::vector<row_counter> counters;
    for (std::size_t place = 0; place < asked.source.outputs().size(); ++place) {
        counters.emplace_back(asked, exact, place);
    }
    const bool c_is_known = asked.of_host != nullptr && asked.same_constants && is_exact_in_c(asked.source);
    for (std::size_t number = 0; number < asked.applied.vectors.size(); ++number) {
        const std::vector<std::uint64_t>& inputs = asked.applied.vectors[number];
        exact.run(inputs);
        for (row_counter& counter : counters) {
            counter.count(number);
        }
        if (c_is_known && !(*asked.of_host)[number].empty()) {
            c_freedom freedom;
            const std::vector<std::uint64_t> expected = c_outputs(asked.source, inputs, &freedom);
            for (std::size_t place = 0; freedom.defined && place < counters.size(); ++place) {
                counters[place].count_c(number, expected[place], freedom.either_zero[place]);
            }
        }
        if (asked.progress) {
            asked.progress(number + 1);
        }
    }
    std::vector<output_accuracy> rows;
    rows.reserve(counters.size());
    for (row_counter& counter : counters) {
        rows.push_back(counter.finished());
    }
    return rows;
}

std::string accuracy_table(const std::vector<output_accuracy>& rows) {
    // Every column as wide as its widest entry; names stand left, numbers right.
    std::vector<std::vector<std::string>> lines = {
        {"output", "format", "vectors", "bits equal", "largest ulp", "median", "C's largest", "apart", "outside"}};
    for (const output_accuracy& row : rows) {
        lines.push_back(
            {row.name, std::string(row.format), std::to_string(row.vectors),
             row.bits_equal ? std::to_string(*row.bits_equal) : "-",
             row.measured == 0 ? "-" : ulp_text(row.largest_ulp), row.measured == 0 ? "-" : ulp_text(row.median_ulp),
             row.largest_ulp_of_c ? ulp_text(*row.largest_ulp_of_c) : "-",
             std::to_string(row.apart_range + row.apart_undecided + row.apart_cancelled), std::to_string(row.outside)});
    }
    std::vector<std::size_t> widths(lines.front().size(), 0);
    for (const auto& line : lines) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            widths[column] = std::max(widths[column], line[column].size());
        }
    }
    std::string text;
    for (std::size_t number = 0; number < lines.size(); ++number) {
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const std::string& entry = lines[number][column];
            text += (column == 0 ? "  " : "   ") + (column < 2 ? entry + std::string(widths[column] - entry.size(), ' ')
                                                               : padded(entry, widths[column]));
        }
        text += '\n';
        if (number != 0 && rows[number - 1].worst_vector != 0) {
            const output_accuracy& row = rows[number - 1];
            text += "    worst in vector " + std::to_string(row.worst_vector) + ": " + row.worst + "\n";
        }
    }
    std::size_t range = 0;
    std::size_t undecided = 0;
    std::size_t cancelled = 0;
    for (const output_accuracy& row : rows) {
        range += row.apart_range;
        undecided += row.apart_undecided;
        cancelled += row.apart_cancelled;
    }
    for (const auto& [count, what] :
         {std::pair(range, "something on the way is too large or too small for its format"),
          std::pair(undecided, "a comparison or a rounding to whole numbers on the way is too close to call"),
          std::pair(cancelled, "cancellation on the way takes half of the digits or more")}) {
        text += count == 0 ? "" : "  counted apart: " + std::to_string(count) + " in which " + what + "\n";
    }
    return text;
}

void report_faults(const std::vector<output_accuracy>& rows, diagnostics& messages) {
    for (const output_accuracy& row : rows) {
        if (row.outside != 0) {
            messages.report(message_id::result_outside, {}, {row.name, row.outside_at});
        }
        if (row.c_differs != 0) {
            messages.report(message_id::c_differs, {}, {row.name, row.c_differs_at});
        }
    }
}

}  // namespace xfc::flow
