#include "flow/emit/host_model.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <map>

#include "flow/emit/host_texts.h"
#include "flow/emit/model_sources.h"
#include "flow/emit/template.h"

namespace xfc::flow {

namespace {

// Words of C and C++ that mean something in what is written, macros of the headers that it includes or that programs
// include before it, and of common compilers; and words of Python. In order.
constexpr std::string_view words_of_c[] = {
    "BIG_ENDIAN",   "BYTE_ORDER",    "EOF",         "EXIT_FAILURE", "EXIT_SUCCESS", "FD_SETSIZE",   "HUGE_VAL",
    "INFINITY",     "LITTLE_ENDIAN", "MB_CUR_MAX",  "NAN",          "NFDBITS",      "NULL",         "PDP_ENDIAN",
    "RAND_MAX",     "WCONTINUED",    "WEXITED",     "WNOHANG",      "WNOWAIT",      "WSTOPPED",     "WUNTRACED",
    "alignas",      "alignof",       "and",         "and_eq",       "asm",          "auto",         "bitand",
    "bitor",        "bool",          "break",       "case",         "catch",        "char",         "char16_t",
    "char32_t",     "char8_t",       "class",       "co_await",     "co_return",    "co_yield",     "compl",
    "concept",      "const",         "const_cast",  "consteval",    "constexpr",    "constinit",    "continue",
    "decltype",     "default",       "delete",      "do",           "double",       "dynamic_cast", "else",
    "enum",         "errno",         "explicit",    "export",       "extern",       "false",        "float",
    "for",          "friend",        "goto",        "if",           "inline",       "int",          "linux",
    "long",         "mutable",       "namespace",   "new",          "noexcept",     "not",          "not_eq",
    "nullptr",      "operator",      "or",          "or_eq",        "private",      "protected",    "public",
    "register",     "requires",      "restrict",    "return",       "short",        "signed",       "sizeof",
    "static",       "static_assert", "static_cast", "struct",       "switch",       "template",     "this",
    "thread_local", "throw",         "true",        "try",          "typedef",      "typeid",       "typename",
    "typeof",       "union",         "unix",        "unsigned",     "using",        "virtual",      "void",
    "volatile",     "wchar_t",       "while",       "xor",          "xor_eq",
};
constexpr std::string_view words_of_python[] = {
    "False", "None",     "True",  "and",    "as",   "assert", "async",  "await",    "break",
    "class", "continue", "def",   "del",    "elif", "else",   "except", "finally",  "for",
    "from",  "global",   "if",    "import", "in",   "is",     "lambda", "nonlocal", "not",
    "or",    "pass",     "raise", "return", "try",  "while",  "with",   "yield",
};
static_assert(std::is_sorted(std::begin(words_of_c), std::end(words_of_c)));
static_assert(std::is_sorted(std::begin(words_of_python), std::end(words_of_python)));

// <stdint.h> has more macros than are worth a list: what begins and ends like this, INT32_MAX and UINT_LEAST8_WIDTH.
constexpr std::string_view types_of_limits[] = {"INT", "UINT", "PTRDIFF_", "SIG_ATOMIC_", "SIZE_", "WCHAR_", "WINT_"};
constexpr std::string_view limits[] = {"_MAX", "_MIN", "_WIDTH"};

bool is_limit(std::string_view name) {
    return std::any_of(std::begin(types_of_limits), std::end(types_of_limits),
                       [&](std::string_view type) { return name.starts_with(type); }) &&
           std::any_of(std::begin(limits), std::end(limits),
                       [&](std::string_view limit) { return name.ends_with(limit); });
}

/// How C has a format: a member's type, its bits from the member `@port@`, the member from its bus.
struct c_format {
    std::string_view type;
    std::string_view to_bus;
    std::string_view from_bus;
};
constexpr c_format c_formats[number_format_count] = {
    {"bool", "inputs_->@port@ ? 1 : 0", "@bus@ != 0"},
    {"int32_t", "xfc::bits_from<std::uint32_t>(inputs_->@port@)",
     "xfc::value_from<std::int32_t>(static_cast<std::uint32_t>(@bus@))"},
    {"float", "xfc::bits_from<std::uint32_t>(inputs_->@port@)",
     "xfc::value_from<float>(static_cast<std::uint32_t>(@bus@))"},
    {"double", "xfc::bits_from<std::uint64_t>(inputs_->@port@)",
     "xfc::value_from<double>(static_cast<std::uint64_t>(@bus@))"},
};
const c_format& c_format_of(number_format format) { return c_formats[static_cast<std::size_t>(format)]; }

/// Every generic that an instance may have.
struct generic_name {
    std::string_view name;
    std::int32_t component_generics::*field;
};
constexpr generic_name generic_names[] = {
    {"mantissa", &component_generics::mantissa},
    {"doublespeed", &component_generics::doublespeed},
    {"inputnormalize", &component_generics::inputnormalize},
    {"outputscale", &component_generics::outputscale},
    {"roundconvert", &component_generics::roundconvert},
    {"roundnormalize", &component_generics::roundnormalize},
    {"outputpipe", &component_generics::outputpipe},
    {"normspeed", &component_generics::normspeed},
    {"shiftspeed", &component_generics::shiftspeed},
    {"doubleaccuracy", &component_generics::doubleaccuracy},
    {"device", &component_generics::device},
    {"optimization", &component_generics::optimization},
    {"synthesize", &component_generics::synthesize},
    {"output_select", &component_generics::output_select},
    {"width", &component_generics::width},
    {"delay", &component_generics::delay},
    {"divider", &component_generics::divider},
    {"relation", &component_generics::relation},
    {"bitoperation", &component_generics::bitoperation},
    {"greatest", &component_generics::greatest},
    {"direction", &component_generics::direction},
    {"remainder", &component_generics::remainder},
    {"rounding", &component_generics::rounding},
};
static_assert(sizeof(component_generics) == std::size(generic_names) * sizeof(std::int32_t));

constexpr std::string_view header_text = R"(@comment@//
// This is the hardware's model in C and C++. Compile @name@_model.cpp with whatever uses it.
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// What enters the hardware with one startin.
struct @name@_inputs {
@inputs@};

// What it delivers with the startout that belongs to it.
struct @name@_outputs {
@outputs@};

// Enabled cycles from startin to startout.
enum { @name@_latency = @latency@ };

// Every bit of the outputs as the hardware computes it. Nothing is kept from call to call.
void @name@_model(const struct @name@_inputs *inputs, struct @name@_outputs *outputs);

#ifdef __cplusplus
}
#endif
)";

constexpr std::string_view source_text = R"(@comment@//
// This is the hardware's model, whose header stands beside it.
// Needs nothing but a compiler of C++17 with integers of 128 bits, as g++ and clang++ have them on machines of 64 bits.

#if __cplusplus < 201703L || !defined(__SIZEOF_INT128__)
#error "compile this as C++17 or later (-std=c++17) with g++ or clang++ for a machine of 64 bits"
#endif
// Compilers take all of this, but before C++20 some remark on it.
#pragma GCC diagnostic ignored "-Wpragmas"
#pragma GCC diagnostic ignored "-Wunknown-warning-option"
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wc++20-extensions"
#pragma GCC diagnostic ignored "-Wc++20-designator"
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wunused-const-variable"

#include "@name@_model.h"

@headers@
// ---- The models of the components, from their library ----

namespace {
@models@
// ---- The design ----

namespace xfc {

template <class bits, class value>
bits bits_from(value number) {
    static_assert(sizeof(bits) == sizeof(value));
    bits result = 0;
    std::memcpy(&result, &number, sizeof result);
    return result;
}
template <class value, class bits>
value value_from(bits pattern) {
    static_assert(sizeof(bits) == sizeof(value));
    value result{};
    std::memcpy(&result, &pattern, sizeof result);
    return result;
}
constexpr bus_bits constant(std::uint64_t high, std::uint64_t low) { return (bus_bits{high} << 64U) | low; }

[[gnu::noinline]] bus_bits run(component_model model, const component_generics& generics, bus_bits aa, bus_bits bb = 0,
                               bool subtract = false, bool condition = false) {
    component_operands operands;
    operands.aa = aa;
    operands.bb = bb;
    operands.addsub = subtract;
    operands.condition = condition;
    return model(generics, operands);
}

@generics@
}  // namespace xfc
}  // namespace

// Buses are called as in the hardware. There is nothing to optimize in a sequence of calls, and where it has thousands,
// gcc takes long to find that out.
#if !defined(__clang__)
__attribute__((optimize("O0")))
#endif
void @name@_model(const struct @name@_inputs* inputs_, struct @name@_outputs* outputs_) {
    static_cast<void>(inputs_);
@design@}
)";

std::string hexadecimal(std::uint64_t bits) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), bits, 16).ptr;
    return "0x" + std::string(digits.data(), end);
}

/// A comment that ends no text of Python either.
std::string harmless(std::string text) {
    text = comment_text(std::move(text));
    std::replace(text.begin(), text.end(), '"', '?');
    return text;
}

/// Writes one design's files.
class host_model_writer {
public:
    host_model_writer(const graph& values, const design& made, const design_names& names, const source_map& places,
                      const host_model_facts& facts)
        : values_(values), made_(made), names_(names), places_(places), facts_(facts) {}

    [[nodiscard]] std::string header() const {
        return filled_template(header_text, {{"comment", comment("//")},
                                             {"name", names_.design},
                                             {"inputs", members(values_.inputs(), names_.inputs)},
                                             {"outputs", members(values_.outputs(), names_.outputs)},
                                             {"latency", std::to_string(facts_.latency)}});
    }

    /// Empty when the library lacks a model.
    [[nodiscard]] std::optional<std::string> source() {
        std::set<std::string_view> components;
        for (const design_node& node : made_.nodes) {
            if (node.kind == node_kind::instance) {
                components.insert(component_name(node));
            }
        }
        const auto models = model_sources_for(components, library_folder());
        if (!models) {
            return std::nullopt;
        }
        std::set<std::string> standard = models->standard_headers;
        standard.insert({"cstdint", "cstring"});
        std::string headers;
        for (const std::string& name : standard) {
            headers += "#include <" + name + ">\n";
        }
        const std::string statements = body();
        return filled_template(source_text, {{"comment", comment("//")},
                                             {"name", names_.design},
                                             {"headers", headers},
                                             {"models", models->text},
                                             {"generics", generics_text_},
                                             {"design", statements}});
    }

    [[nodiscard]] std::string python() const {
        const auto ports = [](std::span<const port> all, const std::vector<std::string>& names) {
            std::string text;
            for (std::size_t place = 0; place < all.size(); ++place) {
                text += (place == 0 ? "" : ", ") + ("\"" + host_name(names[place], host_language::python)) + "\": \"" +
                        std::string(format_name(all[place].format)) + "\"";
            }
            return text;
        };
        const auto example = [&](std::string_view number, std::string_view more) {
            std::string text;
            for (std::size_t place = 0; place < std::min<std::size_t>(names_.inputs.size(), 2); ++place) {
                const bool whole = !is_floating(values_.inputs()[place].format);
                text += (place == 0 ? "" : ", ") + host_name(names_.inputs[place], host_language::python) + "=";
                text += whole ? "1" : number;
            }
            return text + (names_.inputs.size() > 2 ? std::string(more) : "");
        };
        const bool is_double = !values_.inputs().empty() && values_.inputs()[0].format == number_format::double_float;
        return filled_template(python_module,
                               {{"summary", comment("")},
                                {"module", names_.design + "_model"},
                                {"example", example("1.0", ", ...")},
                                {"example_bits", example(is_double ? "0x3ff0000000000000" : "0x3f800000", ", ...")},
                                {"latency", std::to_string(facts_.latency)},
                                {"inputs", ports(values_.inputs(), names_.inputs)},
                                {"outputs", ports(values_.outputs(), names_.outputs)}});
    }

private:
    [[nodiscard]] std::string comment(const std::string& start) const {
        std::string text;
        for (const std::string& line : facts_.header) {
            text += start + (start.empty() ? "" : " ") + harmless(line) + "\n";
        }
        return text;
    }

    static std::string members(std::span<const port> ports, const std::vector<std::string>& names) {
        std::string text;
        for (std::size_t place = 0; place < ports.size(); ++place) {
            const std::string name = host_name(names[place], host_language::c);
            text += "    " + std::string(c_format_of(ports[place].format).type) + " " + name + ";";
            text += ports[place].c_access == name ? "\n" : "  // " + harmless(ports[place].c_access) + "\n";
        }
        return ports.empty() ? "    char unused;  // C has no structure without a member\n" : text;
    }

    /// The name of the constant with these generics, which is written when they come for the first time.
    std::string generics_name(const component_generics& generics) {
        std::string settings;
        for (const generic_name& one : generic_names) {
            if (generics.*one.field != component_generics{}.*one.field) {
                settings += "    result." + std::string(one.name) + " = " + std::to_string(generics.*one.field) + ";\n";
            }
        }
        const auto [found, is_new] = generics_.try_emplace(settings, "generics_" + std::to_string(generics_.size()));
        if (is_new) {
            generics_text_ += "constexpr component_generics " + found->second + " = [] {\n";
            generics_text_ += "    component_generics result;\n" + settings + "    return result;\n}();\n";
        }
        return found->second;
    }

    [[nodiscard]] std::string bus_name(node_id id) const {
        return host_name(std::string(names_.nodes[id]), host_language::c);
    }

    std::string expression(const design_node& node) {
        switch (node.kind) {
            case node_kind::input:
                return filled_template(c_format_of(values_.inputs()[node.port].format).to_bus,
                                       {{"port", host_name(names_.inputs[node.port], host_language::c)}});
            case node_kind::constant: {
                const auto low = static_cast<std::uint64_t>(node.bits);
                const auto high = static_cast<std::uint64_t>(node.bits >> 64U);
                return high == 0 ? hexadecimal(low)
                                 : "xfc::constant(" + hexadecimal(high) + ", " + hexadecimal(low) + ")";
            }
            case node_kind::instance:
                break;
        }
        std::string text =
            "xfc::run(xfc::model::" + std::string(component_name(node)) + ", xfc::" + generics_name(node.generics());
        const auto operands = node.operand_span();
        for (const node_id operand : operands.first(std::min<std::size_t>(operands.size(), 2))) {
            text += ", " + bus_name(operand);
        }
        const bool has_condition = operands.size() > 2;
        if (node.subtract || has_condition) {
            text += node.subtract ? ", true" : ", false";
        }
        text += has_condition ? ", " + bus_name(operands[2]) + " != 0" : "";
        return text + ")";
    }

    std::string body() {
        std::string text;
        for (node_id id = 0; id < made_.size(); ++id) {
            const design_node& node = made_[id];
            // An input that nobody reads is a member all the same.
            text += node.kind == node_kind::input ? "    [[maybe_unused]] " : "    ";
            text += "const xfc::bus_bits " + bus_name(id) + " = " + expression(node) + ";";
            const std::string origin = node.value == no_value ? "" : source_comment(values_, node.value, places_);
            text += origin.empty() || node.kind == node_kind::input ? "\n" : "  // " + origin + "\n";
        }
        for (std::size_t place = 0; place < made_.outputs.size(); ++place) {
            const port& output = values_.outputs()[place];
            text += "    outputs_->" + host_name(names_.outputs[place], host_language::c) + " = " +
                    filled_template(c_format_of(output.format).from_bus, {{"bus", bus_name(made_.outputs[place])}}) +
                    ";\n";
        }
        return text;
    }

    const graph& values_;
    const design& made_;
    const design_names& names_;
    const source_map& places_;
    const host_model_facts& facts_;
    std::map<std::string, std::string> generics_;  ///< names by settings
    std::string generics_text_;
};

}  // namespace

std::string host_name(const std::string& name, host_language lang) {
    const bool taken = lang == host_language::c
                           ? is_limit(name) || std::binary_search(std::begin(words_of_c), std::end(words_of_c), name)
                           : std::binary_search(std::begin(words_of_python), std::end(words_of_python), name);
    return taken ? name + "_" : name;
}

std::optional<std::vector<output_file>> host_model_files(const graph& values, const design& made,
                                                         const design_names& names, const source_map& places,
                                                         const host_model_facts& facts, host_language lang) {
    host_model_writer writer(values, made, names, places, facts);
    auto source = writer.source();
    if (!source) {
        return std::nullopt;
    }
    std::vector<output_file> files = {{names.design + "_model.h", writer.header()},
                                      {names.design + "_model.cpp", std::move(*source)}};
    if (lang == host_language::python) {
        files.push_back({names.design + "_model.py", writer.python()});
    }
    return files;
}

}  // namespace xfc::flow
