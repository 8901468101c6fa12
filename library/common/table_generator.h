#pragma once

#include <mpfr.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

// What the programs that make the tables of the functions share: quadratic polynomials for the segments of a function,
// and a table written in all three languages. All arithmetic is in integers behind MPFR, so every machine makes the
// same tables.

namespace xfc::tables {

__extension__ using wide_integer = __int128;

/// Bits behind the point of the samples of a function.
inline constexpr std::int32_t sample_bits = 60;

/// A function's value: sets the number to it.
using function = std::function<void(mpfr_ptr)>;

/// f(numerator / 2 ** shift) in units of 2 ** -sample_bits; |f| is below 4.
inline std::int64_t sample(std::int64_t numerator, std::int32_t shift, const function& f) {
    mpfr_t number;
    mpfr_init2(number, 200);
    mpfr_set_si_2exp(number, numerator, -shift, MPFR_RNDN);
    f(number);
    mpfr_mul_2si(number, number, sample_bits, MPFR_RNDN);
    const std::int64_t value = mpfr_get_si(number, MPFR_RNDN);
    mpfr_clear(number);
    return value;
}

/// c0 + c1 u + c2 u ** 2 for u in [0, 1) over one segment, in units of 2 ** -bits.
struct quadratic {
    std::int64_t c0, c1, c2;
};

/// The quadratic with rounded coefficients whose largest error over the samples is least: c2 is the rounded one of the
/// polynomial through the Chebyshev points, c1 the best of its neighbours then, c0 in the middle of what is left.
/// `samples` are f at u = 0, 1/64, ..., 1; `bias` is added to c0, in units of 2 ** -sample_bits.
inline quadratic fit(const std::vector<std::int64_t>& samples, std::int32_t bits, std::int64_t bias) {
    const std::int64_t unit = std::int64_t{1} << (sample_bits - bits);
    const auto rounded = [&](wide_integer value) {
        return static_cast<std::int64_t>((value + unit / 2) >> (sample_bits - bits));
    };
    // Chebyshev points of [0, 1] are near 4/64, 32/64 and 60/64: divided differences over a step of 28/64.
    const wide_integer second = wide_integer{samples[60]} - 2 * wide_integer{samples[32]} + samples[4];
    const std::int64_t c2 = rounded(second * (64 * 64) / (2 * 28 * 28));
    const auto rest = [&](std::int64_t c1, std::int64_t step) {
        return wide_integer{samples[static_cast<std::size_t>(step)]} - wide_integer{c1} * unit * step / 64 -
               wide_integer{c2} * unit * step * step / 4096;
    };
    const std::int64_t guess = rounded((rest(0, 64) - rest(0, 0)));
    quadratic best{};
    wide_integer least = -1;
    for (std::int64_t c1 = guess - 4; c1 <= guess + 4; ++c1) {
        wide_integer lowest = rest(c1, 0);
        wide_integer highest = lowest;
        for (std::int64_t step = 1; step <= 64; ++step) {
            lowest = std::min(lowest, rest(c1, step));
            highest = std::max(highest, rest(c1, step));
        }
        if (least < 0 || highest - lowest < least) {
            least = highest - lowest;
            best = {rounded((lowest + highest) / 2 + bias), c1, c2};
        }
    }
    return best;
}

/// The samples of one segment: f(start + u / 2 ** length_shift), start in units of 2 ** -length_shift.
inline std::vector<std::int64_t> samples_of(std::int64_t start, std::int32_t length_shift, const function& f) {
    std::vector<std::int64_t> samples;
    for (std::int64_t step = 0; step <= 64; ++step) {
        samples.push_back(sample(start * 64 + step, length_shift + 6, f));
    }
    return samples;
}

/// A field of a table's rows, from the highest bits down.
struct field {
    std::string_view name;
    std::int32_t bits;
};

/// Rows of unsigned fields; values are in the order of the fields.
class table {
public:
    table(std::string_view name, std::string_view comment, std::int32_t index_bits, std::vector<field> fields)
        : name_(name), comment_(comment), index_bits_(index_bits), fields_(std::move(fields)) {
        for (const field& each : fields_) {
            width_ += each.bits;
        }
    }

    void add(const std::vector<std::int64_t>& values) {
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            if (values[i] < 0 || (values[i] >> fields_[i].bits) != 0) {
                std::cerr << name_ << ", row " << rows_.size() << ": " << fields_[i].name
                          << " does not fit: " << values[i] << '\n';
                wrong_ = true;
            }
        }
        rows_.push_back(values);
    }

    /// Writes NAME.v, NAME.vhd and NAME.h into the folder. Returns the status to exit with.
    [[nodiscard]] int write(const std::string& folder) const {
        std::ofstream verilog(folder + "/" + name_ + ".v");
        std::ofstream vhdl(folder + "/" + name_ + ".vhd");
        std::ofstream header(folder + "/" + name_ + ".h");
        write_verilog(verilog);
        write_vhdl(vhdl);
        write_header(header);
        return !wrong_ && verilog.flush() && vhdl.flush() && header.flush() ? 0 : 1;
    }

private:
    [[nodiscard]] std::string heading(const std::string& mark) const {
        std::string text = mark + " ";
        for (const char each : comment_) {
            text += each == '\n' ? "\n" + mark + " " : std::string(1, each);
        }
        text += "\n" + mark + " Made by make_tables.cpp. From the highest bits down:";
        std::size_t line = text.rfind('\n') + 1;
        for (const field& each : fields_) {
            const std::string part = std::string(each.name) + " (" + std::to_string(each.bits) + " bits)";
            text += &each == fields_.data() ? "" : ",";
            if (text.size() + part.size() + 2 > line + 120) {
                line = text.size() + 1;
                text += "\n" + mark;
            }
            text += " " + part;
        }
        return text + ".\n";
    }

    [[nodiscard]] std::string bits_of(const std::vector<std::int64_t>& row) const {
        std::string bits;
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            for (std::int32_t bit = fields_[i].bits - 1; bit >= 0; --bit) {
                bits += ((row[i] >> bit) & 1) != 0 ? '1' : '0';
            }
        }
        return bits;
    }

    [[nodiscard]] std::string hex_of(const std::vector<std::int64_t>& row) const {
        std::string bits = bits_of(row);
        bits.insert(0, (4 - bits.size() % 4) % 4, '0');
        std::string hex;
        for (std::size_t i = 0; i < bits.size(); i += 4) {
            hex += "0123456789abcdef"[std::stoul(bits.substr(i, 4), nullptr, 2)];
        }
        return hex;
    }

    void write_verilog(std::ostream& out) const {
        const std::string width = std::to_string(width_);
        out << heading("//") << "module " << name_ << "\n  (input [" << index_bits_ - 1 << ":0] index,\n   output reg ["
            << width_ - 1 << ":0] row);\n\n  always @*\n    case (index)\n";
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            out << "      " << index_bits_ << "'d" << i << ": row = " << width << "'h" << hex_of(rows_[i]) << ";\n";
        }
        if (rows_.size() < (std::size_t{1} << static_cast<unsigned>(index_bits_))) {
            out << "      default: row = " << width << "'d0;\n";
        }
        out << "    endcase\nendmodule\n";
    }

    void write_vhdl(std::ostream& out) const {
        const std::size_t size = std::size_t{1} << static_cast<unsigned>(index_bits_);
        out << heading("--") << "library ieee;\nuse ieee.std_logic_1164.all;\nuse ieee.numeric_std.all;\n\nentity "
            << name_ << " is\n  port (index : in std_logic_vector(" << index_bits_ - 1
            << " downto 0);\n        row   : out std_logic_vector(" << width_ - 1 << " downto 0));\nend " << name_
            << ";\n\narchitecture rtl of " << name_ << " is\n  type row_array is array (0 to " << size - 1
            << ") of std_logic_vector(" << width_ - 1 << " downto 0);\n  constant rows : row_array := (\n";
        for (std::size_t i = 0; i < size; ++i) {
            const std::vector<std::int64_t> none(fields_.size());
            out << "    \"" << bits_of(i < rows_.size() ? rows_[i] : none) << '"' << (i + 1 < size ? ",\n" : ");\n");
        }
        out << "begin\n  row <= rows(to_integer(unsigned(index)));\nend rtl;\n";
    }

    void write_header(std::ostream& out) const {
        out << heading("//") << "#pragma once\n\n#include <cstdint>\n\nnamespace xfc::model {\n\nstruct " << name_
            << "_row {\n    std::uint64_t ";
        for (const field& each : fields_) {
            out << (&each == fields_.data() ? "" : ", ") << each.name;
        }
        out << ";\n};\n\ninline constexpr " << name_ << "_row " << name_ << "[] = {\n    // clang-format off\n";
        for (const auto& row : rows_) {
            out << "    {";
            for (std::size_t i = 0; i < row.size(); ++i) {
                out << (i == 0 ? "" : ", ") << row[i];
            }
            out << "},\n";
        }
        out << "    // clang-format on\n};\n\n}  // namespace xfc::model\n";
    }

    std::string name_;
    std::string comment_;
    std::int32_t index_bits_;
    std::vector<field> fields_;
    std::int32_t width_ = 0;
    std::vector<std::vector<std::int64_t>> rows_;
    bool wrong_ = false;
};

}  // namespace xfc::tables
