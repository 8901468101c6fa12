#include "program_shapes.h"

#include <array>

#include "base/text_writer.h"

namespace xfc::bench {

namespace {

/// Declares name0, name1, ... in lines of fifty.
void declare(text_writer& out, std::string_view type, std::string_view name, std::int64_t count) {
    for (std::int64_t index = 0; index < count; ++index) {
        write_format(out, "%s %s%ld", index % 50 == 0 ? type : ",", name, index);
        if (index % 50 == 49 || index + 1 == count) {
            out.append(";\n");
        }
    }
}

constexpr std::int64_t inputs = 64;

/// The input that operand `place` of statement `index` reads: spread, and the same in every run.
std::int64_t spread(std::int64_t index, std::int64_t place) { return (index * 7 + place * 13) % inputs; }

std::string ten_lines(std::int64_t) {
    return "float a, b, c, d;\nfloat p, q, r;\nfloat y, z;\nmain() {\n"
           "    p = a * b + c;\n    q = p * d - a;\n    r = sqrt(q) + b;\n    y = r * p;\n    z = r / q;\n}\n";
}

std::string wide(std::int64_t operators) {
    const std::int64_t statements = operators / 4;
    text_writer out;
    declare(out, "float", "x", inputs);
    declare(out, "float", "y", statements);
    out.append("main() {\n");
    for (std::int64_t index = 0; index < statements; ++index) {
        write_format(out, "y%ld = x%ld * x%ld + x%ld * x%ld - x%ld;\n", index, spread(index, 0), spread(index, 1),
                     spread(index, 2), spread(index, 3), spread(index, 4));
    }
    out.append("}\n");
    return out.take_text();
}

std::string chain(std::int64_t operators) {
    text_writer out;
    declare(out, "float", "x", 1);
    declare(out, "float", "t", operators + 1);
    out.append("main() {\nt0 = x0;\n");
    for (std::int64_t index = 1; index <= operators; ++index) {
        write_format(out, "t%ld = t%ld * x0;\n", index, index - 1);
    }
    out.append("}\n");
    return out.take_text();
}

std::string fanout(std::int64_t operators) {
    text_writer out;
    declare(out, "float", "x", inputs);
    declare(out, "float", "y", operators);
    out.append("main() {\n");
    for (std::int64_t index = 0; index < operators; ++index) {
        write_format(out, "y%ld = x0 + x%ld;\n", index, spread(index, 1));
    }
    out.append("}\n");
    return out.take_text();
}

std::string conversions(std::int64_t operators) {
    const std::int64_t statements = operators / 4;
    text_writer out;
    declare(out, "float", "x", inputs);
    declare(out, "double", "d", inputs);
    declare(out, "double", "y", statements);
    out.append("main() {\n");
    for (std::int64_t index = 0; index < statements; ++index) {
        write_format(out, "y%ld = (x%ld + d%ld) * (x%ld + x%ld) + d%ld;\n", index, spread(index, 0), spread(index, 1),
                     spread(index, 2), spread(index, 3), spread(index, 4));
    }
    out.append("}\n");
    return out.take_text();
}

std::string delays(std::int64_t operators) {
    const std::int64_t statements = operators / 8;
    text_writer out;
    declare(out, "double", "x", inputs);
    declare(out, "double", "y", statements);
    out.append("main() {\n");
    for (std::int64_t index = 0; index < statements; ++index) {
        write_format(out, "y%ld = ((((((((x%ld * x%ld) + x0) * x%ld) + x1) / x%ld) + x2) * x%ld) + x3);\n", index,
                     spread(index, 0), spread(index, 1), spread(index, 2), spread(index, 3), spread(index, 4));
    }
    out.append("}\n");
    return out.take_text();
}

std::string constants(std::int64_t operators) {
    const std::int64_t statements = operators / 4;
    constexpr std::array<std::string_view, 4> digits{"3.14159265358979323846264338", "0.000000000000000000000000000",
                                                     "12345678901234567890123456.7", "2.71828182845904523536028747"};
    text_writer out;
    declare(out, "double", "x", inputs);
    declare(out, "double", "y", statements);
    out.append("main() {\n");
    for (std::int64_t index = 0; index < statements; ++index) {
        write_format(out, "y%ld = (x%ld * %s%ld + %s%ld) * x%ld + %s%ld;\n", index, spread(index, 0), digits[0], index,
                     digits[static_cast<std::size_t>(index % 4)], index, spread(index, 1), digits[3], index);
    }
    out.append("}\n");
    return out.take_text();
}

constexpr std::array<program_shape, 7> shapes{{
    {"ten-lines", "a program as people write it", ten_lines, 10},
    {"wide", "independent statements of five operands", wide, 1000000},
    {"chain", "each statement reads the one before", chain, 1000000},
    {"fanout", "one variable read by every statement", fanout, 1000000},
    {"conversions", "float and double operands mixed", conversions, 1000000},
    {"delays", "deep double-precision expressions with late operands", delays, 1000000},
    {"constants", "long constants in every operation", constants, 1000000},
}};

}  // namespace

std::span<const program_shape> program_shapes() { return shapes; }

const program_shape* find_shape(std::string_view name) {
    for (const program_shape& shape : shapes) {
        if (shape.name == name) {
            return &shape;
        }
    }
    return nullptr;
}

}  // namespace xfc::bench
