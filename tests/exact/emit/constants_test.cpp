#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <regex>
#include <string>
#include <vector>

#include "exact/emit/emitted.h"
#include "exact/emit/text_file.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

using enum number_format;

/// The lines that a constant gets, in their order. An internal form stands behind a comment with the value.
enum class lines : std::uint8_t {
    integer,
    ieee_float,
    ieee_double,
    xfloat_adder,       ///< 29 bits over a fill, ones' complement, 10 bits of exponent
    xfloat_multiplier,  ///< 25 bits over a fill, ones' complement
    xfloat_divider,     ///< sign and magnitude, 25 bits, over zeros
    ydouble_adder,      ///< ones' complement of each of two fields of 29 bits, six zeros, 13 bits of exponent
    ydouble_multiplier  ///< two fields of 27 bits, sign and magnitude
};

struct constant_case {
    std::string_view rule;  ///< in words
    std::string_view component;
    number_format format;
    std::int32_t width;  ///< bits of the node
    std::int32_t port;
    std::vector<double> values;
    std::vector<lines> written;
    std::int32_t mantissa = 32;
};

struct constant_file {
    std::string_view name;
    std::vector<constant_case> cases;
};

const constant_file files[] = {
    {"ieee_and_integer_constants",
     {{"truncated toward zero",
       "xfc_alulong",
       long_integer,
       32,
       1,
       {2.9, -2.9, 0.0, 7.0, -2147483648.0, 2147483647.0},
       {lines::integer}},
      {"on the first input the same", "xfc_mullong", long_integer, 32, 0, {2.9, -2.9}, {lines::integer}},
      {"a first constant on 32 bits is an integer whatever the format",
       "xfc_mulfp1x",
       single_float,
       32,
       0,
       {-2.9},
       {lines::integer}},
      {"a second one of an internal format on 32 bits too", "xfc_mulfp1x", xfloat, 32, 1, {-2.9}, {lines::integer}},
      {"a single-precision scale is an integer", "fp_ldexp", single_float, 32, 0, {-3.0}, {lines::integer}},
      {"a double-precision scale is an integer", "dp_ldexp", double_float, 64, 0, {5.0}, {lines::integer}},
      {"a second constant of a scaling function is none", "dp_ldexp", double_float, 64, 1, {5.0}, {lines::ieee_double}},
      {"a first constant of float format is written in both encodings",
       "xfc_alufp1x",
       single_float,
       45,
       0,
       {1.5, -0.1},
       {lines::ieee_float, lines::xfloat_adder}},
      {"and as a YDouble on a wide bus",
       "xfc_alufp2x",
       single_float,
       80,
       0,
       {0.1},
       {lines::ieee_float, lines::ydouble_adder}},
      {"a first constant of double format is written in both encodings",
       "xfc_mulfp2x",
       double_float,
       64,
       0,
       {1.5, -0.1},
       {lines::ieee_double, lines::ydouble_multiplier}},
      {"and as an XFloat on a narrow bus",
       "xfc_divfp1x",
       double_float,
       45,
       0,
       {-0.1},
       {lines::ieee_double, lines::xfloat_divider}},
      {"a second constant of float format is an IEEE float only and no empty line follows",
       "xfc_mulfp1x",
       single_float,
       32,
       1,
       {1.5, -1.5, 0.0, 0.1, 1e30},
       {lines::ieee_float}},
      {"a second constant of double format is an IEEE double only and no empty line follows",
       "xfc_mulfp2x",
       double_float,
       64,
       1,
       {1.5, -1.5, 0.0, 0.1, 1e30},
       {lines::ieee_double}}}},
    {"xfloat_constants",
     {{"29 bits over a fill of 3",
       "xfc_alufp1x",
       xfloat,
       45,
       1,
       {1.5, -1.5, 0.0, 0.1, -0.1, 1e30},
       {lines::xfloat_adder}},
      {"a fill of 7 with the wider mantissa",
       "xfc_alufp1x",
       xfloat,
       49,
       0,
       {1.5, -1.5, 0.1, -1e30},
       {lines::xfloat_adder},
       36},
      {"25 bits and a complement for the sign",
       "xfc_mulfp1x",
       xfloat,
       45,
       0,
       {1.5, -1.5, 0.0, 0.1, -0.1, 1e30},
       {lines::xfloat_multiplier}},
      {"a fill of 11 with the wider mantissa",
       "xfc_mulfp1x",
       xfloat,
       49,
       1,
       {1.5, -1.5, 0.1},
       {lines::xfloat_multiplier},
       36},
      {"a sign over the magnitude",
       "xfc_divfp1x",
       xfloat,
       45,
       1,
       {1.5, -1.5, 0.0, 0.1, -0.1, 1e30},
       {lines::xfloat_divider}},
      {"a zero fill of 11 with the wider mantissa",
       "xfc_divfp1x",
       xfloat,
       49,
       0,
       {-1.5, 0.1},
       {lines::xfloat_divider},
       36},
      {"any other component writes that of an adder", "xfc_mulfp1_dot", xfloat, 45, 1, {-3.0}, {lines::xfloat_adder}},
      {"a negative zero keeps its sign", "xfc_alufp1x", xfloat, 45, 1, {-0.0}, {lines::xfloat_adder}},
      {"below the normal range the exponent is 0", "xfc_alufp1x", xfloat, 45, 1, {1e-40}, {lines::xfloat_adder}},
      {"rounded to single precision first",
       "xfc_alufp1x",
       xfloat,
       45,
       1,
       {16777217.0, 16777219.0},
       {lines::xfloat_adder}},
      {"49 bits are still the single form", "xfc_alufp2x", ydouble, 49, 0, {2.5}, {lines::xfloat_adder}}}},
    {"ydouble_constants",
     {{"two fields of 29 bits over six zeros",
       "xfc_alufp2x",
       ydouble,
       80,
       1,
       {1.5, -1.5, 0.0, 0.1, -0.1, 1e30},
       {lines::ydouble_adder}},
      {"on the first input the same", "xfc_alufp2x", ydouble, 80, 0, {-1e30}, {lines::ydouble_adder}},
      {"two fields of 27 bits with the sign",
       "xfc_mulfp2x",
       ydouble,
       70,
       0,
       {1.5, -1.5, 0.0, 0.1, -0.1, 1e30},
       {lines::ydouble_multiplier}},
      {"the divider has the multiplier form", "xfc_divfp2x", ydouble, 70, 1, {-1.5, 0.1}, {lines::ydouble_multiplier}},
      {"the mantissa does not count", "xfc_mulfp2x", ydouble, 80, 1, {0.1}, {lines::ydouble_multiplier}, 36},
      {"50 bits begin the double form", "xfc_alufp1x", xfloat, 50, 1, {2.5}, {lines::ydouble_adder}}}},
};

/// A field as read back from a text.
struct field {
    std::int32_t slot;
    std::int32_t high;
    std::int32_t low;
    std::int64_t value;  ///< as a number without sign
    std::string encoding;
};

/// The lines that assign a field; every other line must be a comment with a value or an empty last line.
std::vector<field> fields_in(const std::string& text, language in) {
    static const std::regex vhdl(R"~(  constsynth(\d{4})\((\d+) DOWNTO (\d+)\) <= )~"
                                 R"~((?:conv_std_logic_vector\((-?\d+),(\d+)\)|"(000000)");  -- (.+))~");
    static const std::regex verilog(
        R"(  assign constsynth(\d{4})\[(\d+) : (\d+)\] = (?:(\d+)'d(\d+)|6'b(000000));  // (.+))");
    std::vector<field> found;
    std::istringstream stream(text.substr(1));
    for (std::string line; std::getline(stream, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, in == language::vhdl ? vhdl : verilog)) {
            EXPECT_TRUE(line.empty() || line.starts_with(in == language::vhdl ? "  -- " : "  // ")) << line;
            continue;
        }
        field one{std::stoi(match[1]), std::stoi(match[2]), std::stoi(match[3]), 0, match[7]};
        if (match[4].matched) {
            const bool value_first = in == language::vhdl;
            EXPECT_EQ(std::stoi(match[value_first ? 5 : 4]), one.high - one.low + 1) << line;
            one.value = std::stoll(match[value_first ? 4 : 5]);
            if (value_first && one.value < 0) {
                one.value += std::int64_t{1} << 32;
            }
            EXPECT_LT(one.value, std::int64_t{1} << (one.high - one.low + 1)) << line;
            EXPECT_GE(one.value, 0) << line;
        }
        found.push_back(one);
    }
    return found;
}

/// Reads the constants of one case back and compares each with its value.
class reader {
public:
    reader(const std::string& text, language in, const constant_case& of) : fields_(fields_in(text, in)), case_(of) {}

    void check() {
        for (const double value : case_.values) {
            for (const lines form : case_.written) {
                check(form, value);
            }
            ++slot_;
        }
        EXPECT_EQ(next_, fields_.size()) << case_.rule;
    }

private:
    std::int64_t take(std::int32_t high, std::int32_t low, std::string_view encoding) {
        if (next_ == fields_.size()) {
            ADD_FAILURE() << case_.rule << ": a field is missing";
            return 0;
        }
        const field& one = fields_[next_++];
        EXPECT_EQ(one.slot, slot_) << case_.rule;
        EXPECT_EQ(one.high, high) << case_.rule;
        EXPECT_EQ(one.low, low) << case_.rule;
        EXPECT_EQ(one.encoding, encoding) << case_.rule;
        return one.value;
    }

    /// `bits` of a mantissa at the top of the XFloat, and a fill that repeats what `ones` says.
    std::int64_t take_mantissa(std::int32_t bits, bool ones, std::string_view encoding) {
        const std::int32_t high = case_.mantissa + 10;
        const std::int64_t upper = take(high, high - bits + 1, encoding);
        const std::int64_t fill = take(high - bits, 11, encoding);
        EXPECT_EQ(fill, ones ? (std::int64_t{1} << (case_.mantissa - bits)) - 1 : 0) << case_.rule;
        return upper;
    }

    /// A significand of 24 bits with its hidden one: with exponent 0 too, where there is none.
    void expect_single(bool negative, std::int64_t significand, std::int64_t exponent, double value) {
        const auto single = static_cast<float>(value);
        const std::int64_t hidden = 0x800000;
        EXPECT_EQ(negative, std::signbit(single)) << case_.rule << value;
        EXPECT_GE(significand, hidden) << case_.rule;
        const std::int64_t without = exponent == 0 ? significand - hidden : significand;
        const int scale = exponent == 0 ? -149 : static_cast<int>(exponent) - 150;
        EXPECT_EQ(std::ldexp(static_cast<double>(without), scale), std::fabs(double{single})) << case_.rule << value;
    }

    void expect_double(bool negative, std::int64_t significand, std::int64_t exponent, double value) {
        EXPECT_EQ(negative, std::signbit(value)) << case_.rule << value;
        const std::int64_t hidden = std::int64_t{1} << 52;
        EXPECT_GE(significand, hidden) << case_.rule;
        const std::int64_t without = exponent == 0 ? significand - hidden : significand;
        EXPECT_EQ(std::ldexp(static_cast<double>(without), static_cast<int>(exponent) - 1075), std::fabs(value))
            << case_.rule << value;
    }

    void check(lines form, double value) {
        constexpr std::int64_t ones = 0x1FFFFFFF;
        const bool negative = std::signbit(value);
        switch (form) {
            case lines::integer:
                EXPECT_EQ(static_cast<std::int32_t>(static_cast<std::uint32_t>(take(32, 1, "Long"))),
                          static_cast<std::int32_t>(std::trunc(value)))
                    << case_.rule;
                break;
            case lines::ieee_float:
                EXPECT_EQ(std::bit_cast<float>(static_cast<std::uint32_t>(take(32, 1, "IEEE Float"))),
                          static_cast<float>(value))
                    << case_.rule;
                break;
            case lines::ieee_double: {
                const std::int64_t upper = take(64, 33, "IEEE Double");
                EXPECT_EQ(std::bit_cast<double>((upper << 32) + take(32, 1, "IEEE Double")), value) << case_.rule;
                break;
            }
            case lines::xfloat_adder: {
                const std::int64_t upper = take_mantissa(29, negative, "X Float");
                expect_single(upper >> 28 != 0, negative ? ones - upper : upper, take(10, 1, "X Float"), value);
                break;
            }
            case lines::xfloat_multiplier: {
                const std::int64_t upper = take_mantissa(25, negative, "X Float (mult)");
                expect_single(upper >> 24 != 0, negative ? 0x1FFFFFF - upper : upper, take(10, 1, "X Float"), value);
                break;
            }
            case lines::xfloat_divider: {
                const std::int64_t upper = take_mantissa(25, false, "X Float (div)");
                expect_single(upper >> 24 != 0, upper & 0xFFFFFF, take(10, 1, "X Float"), value);
                break;
            }
            case lines::ydouble_adder: {
                const std::int64_t upper = take(77, 49, "Y Double");
                const std::int64_t lower = take(48, 20, "Y Double");
                EXPECT_EQ(take(19, 14, "Y Double"), 0) << case_.rule;
                const std::int64_t high_part = negative ? ones - upper : upper;
                expect_double(upper >> 28 != 0, (high_part << 29) + (negative ? ones - lower : lower),
                              take(13, 1, "Y Double"), value);
                break;
            }
            case lines::ydouble_multiplier: {
                const std::int64_t upper = take(67, 41, "Y Double");
                const std::int64_t lower = take(40, 14, "Y Double");
                expect_double(upper >> 26 != 0, ((upper & 0x3FFFFFF) << 27) + lower, take(13, 1, "Y Double"), value);
                break;
            }
        }
    }

    std::vector<field> fields_;
    const constant_case& case_;
    std::size_t next_ = 0;
    std::int32_t slot_ = 3;
};

std::string heading(const constant_case& of) {
    std::string text = std::string(of.rule) + " (" + std::string(of.component) + ", " + std::to_string(of.width) +
                       " bits, input " + std::to_string(of.port);
    return text + (of.mantissa != 32 ? ", mantissa 36)" : ")");
}

TEST(constants, the_fields_of_every_encoding_mean_the_value_and_are_as_in_the_text_files) {
    for (const constant_file& file : files) {
        text_file texts(file.name);
        for (const constant_case& of : file.cases) {
            start_operands();
            set_mantissa(of.mantissa);
            add_constants(of.component, of.width, of.format, of.port, of.values);
            const std::string vhdl = constants(language::vhdl);
            const std::string verilog = constants(language::verilog);
            reader(vhdl, language::vhdl, of).check();
            reader(verilog, language::verilog, of).check();
            texts.add_case(heading(of), vhdl, verilog);
        }
        texts.compare();
    }
}

}  // namespace

}  // namespace xfc::test
