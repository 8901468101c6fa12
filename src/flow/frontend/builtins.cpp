// What the compiler itself declares: the classes of numbers behind <math.h>, and the copies of <string.h>.

#include <limits>

#include "flow/frontend/executor.h"
#include "flow/frontend/headers.h"

namespace xfc::flow {

namespace {

/// The relations that math.h has as macros: they differ from the operators in what they raise alone.
struct relation_row {
    std::string_view name;
    clang::BinaryOperatorKind kind;
};

constexpr relation_row relations[] = {
    {"isgreater", clang::BO_GT},   {"isgreaterequal", clang::BO_GE}, {"isless", clang::BO_LT},
    {"islessequal", clang::BO_LE}, {"islessgreater", clang::BO_NE},
};

}  // namespace

/// Nothing when the function has another way. The name is without its "__builtin_".
std::optional<result> executor::call_builtin(llvm::StringRef name, const clang::CallExpr& expression) {
    if (name == "inf" || name == "huge_val") {
        return number(values_.make_double(std::numeric_limits<double>::infinity()));
    }
    if (name == "inff" || name == "huge_valf") {
        return number(values_.make_single(std::numeric_limits<float>::infinity()));
    }
    if (name == "nan") {
        return number(values_.make_double(std::numeric_limits<double>::quiet_NaN()));
    }
    if (name == "nanf") {
        return number(values_.make_single(std::numeric_limits<float>::quiet_NaN()));
    }
    if (name == "expect") {
        return evaluate(*expression.getArg(0));
    }
    if (name == "assume") {
        check_assertion(*expression.getArg(0));
        return result{};
    }
    if (name == "abs" || name == "labs") {
        const asked_range where = range(expression);
        const value_id x = in_format(evaluate(*expression.getArg(0)), number_format::integer, where);
        const value_id below = make(operation::less, number_format::boolean, {x, values_.make_integer(0)}, where);
        const value_id negative = make(operation::negate, number_format::integer, {x}, where);
        return number(make(operation::select, number_format::integer, {below, negative, x}, where));
    }
    if (name == "memcpy" || name == "memmove") {
        return copy_elements(expression);
    }
    if (name == "memset") {
        return clear_elements(expression);
    }
    return classify(name, expression);
}

/// What is known to fail ends the compilation where it is certainly reached; nothing is built for what is not known.
void executor::check_assertion(const clang::Expr& condition) {
    const auto known = values_.known_boolean(truth(evaluate(condition), condition));
    if (!known || *known) {
        return;
    }
    if (conditions_.path(decisions_) == always) {
        refuse(message_id::assertion_fails, range(condition));
    }
    if (told_assertions_.insert(&condition).second) {
        messages_.report(message_id::assertion_fails_if_reached, range(condition), {});
    }
}

/// isnan, signbit and their like, each operand computed once.
std::optional<result> executor::classify(llvm::StringRef name, const clang::CallExpr& expression) {
    const asked_range where = range(expression);
    std::vector<result> arguments;
    const auto evaluate_arguments = [&] {
        for (const clang::Expr* argument : expression.arguments()) {
            arguments.push_back(evaluate(*argument));
        }
    };
    for (const relation_row& row : relations) {
        if (std::string_view(name) == row.name) {
            evaluate_arguments();
            if (row.kind == clang::BO_NE) {  // neither is less when one of them is no number
                const value_id below = operate_on_floats(clang::BO_LT, arguments[0], arguments[1], expression).number;
                const value_id above = operate_on_floats(clang::BO_GT, arguments[0], arguments[1], expression).number;
                return number(conditions_.either(below, above, where));
            }
            return operate_on_floats(row.kind, arguments[0], arguments[1], expression);
        }
    }
    const auto no_number = [&](const result& x) { return operate_on_floats(clang::BO_NE, x, x, expression).number; };
    if (name == "isunordered") {
        evaluate_arguments();
        return number(conditions_.either(no_number(arguments[0]), no_number(arguments[1]), where));
    }
    const bool known = name == "isnan" || name == "isinf" || name == "isinf_sign" || name == "isfinite" ||
                       name == "isnormal" || name == "signbit";
    if (!known) {
        return std::nullopt;
    }
    evaluate_arguments();
    const number_format format = values_[arguments[0].number].format;
    const bool single = format == number_format::single_float;
    const value_id x = arguments[0].number;
    const auto constant = [&](double of) {
        return single ? values_.make_single(static_cast<float>(of)) : values_.make_double(of);
    };
    const auto relation = [&](operation op, value_id a, value_id b) {
        return make(op, number_format::boolean, {a, b}, where);
    };
    if (name == "isnan") {
        return number(no_number(arguments[0]));
    }
    if (name == "signbit") {
        const value_id sign = make(operation::copy_sign, format, {constant(1), x}, where);
        return number(relation(operation::less, sign, constant(0)));
    }
    const value_id size = make(operation::absolute, format, {x}, where);
    const value_id infinity = constant(std::numeric_limits<double>::infinity());
    if (name == "isinf") {
        return number(relation(operation::equal, size, infinity));
    }
    if (name == "isinf_sign") {
        const value_id one = values_.make_integer(1);
        const value_id none = values_.make_integer(0);
        const auto flag = [&](value_id of, value_id yes) {
            return make(operation::select, number_format::integer, {of, yes, none}, where);
        };
        const value_id below = relation(operation::equal, x, constant(-std::numeric_limits<double>::infinity()));
        return number(make(operation::subtract, number_format::integer,
                           {flag(relation(operation::equal, x, infinity), one), flag(below, one)}, where));
    }
    const value_id finite = relation(operation::less, size, infinity);
    if (name == "isfinite") {
        return number(finite);
    }
    const double smallest = single ? std::numeric_limits<float>::min() : std::numeric_limits<double>::min();
    return number(conditions_.both(finite, relation(operation::less_equal, constant(smallest), size), where));
}

/// The element type behind a pointer that was perhaps converted to void*; behind one that is void* that of the object.
clang::QualType executor::element_type(const clang::Expr& pointer, const place& where) const {
    clang::QualType type = pointer.IgnoreParenCasts()->getType();
    if (type->isPointerType()) {
        type = type->getPointeeType();
    }
    if (type->isVoidType()) {
        type = type_of(memory_[where.object]);
    }
    return context_.getBaseElementType(type).getUnqualifiedType();
}

/// Whether what is copied from one to the other keeps its meaning: the same type, or integers of the same size.
bool executor::is_one_type(const clang::QualType& left, const clang::QualType& right) const {
    const auto a = find_scalar(left);
    const auto b = find_scalar(right);
    const bool integers = a && b && a->is_integer() && b->is_integer() && a->bytes == b->bytes;
    return integers || context_.hasSameType(left, right);
}

/// How many elements the third argument counts in bytes.
std::int64_t executor::element_count(const clang::CallExpr& expression, const clang::QualType& type) {
    const result bytes = evaluate(*expression.getArg(2));
    const auto known = values_.known_integer(bytes.number);
    const auto size = static_cast<std::int64_t>(bytes_of(type));
    const std::int64_t count = known ? static_cast<std::int64_t>(static_cast<std::uint32_t>(*known)) : -1;
    if (count < 0 || count % size != 0) {
        refuse(message_id::copy_size, range(*expression.getArg(2)), {type.getAsString()});
    }
    return count / size;
}

/// memcpy and memmove between elements of one type; the value is the first argument's.
result executor::copy_elements(const clang::CallExpr& expression) {
    const asked_range where = range(expression);
    const place to = pointed_at(*expression.getArg(0));
    const place from = pointed_at(*expression.getArg(1));
    const clang::QualType type = element_type(*expression.getArg(0), to);
    const clang::QualType from_type = element_type(*expression.getArg(1), from);
    if (!is_one_type(type, from_type)) {
        refuse(message_id::copy_of_other_type, where, {from_type.getAsString(), type.getAsString()});
    }
    const std::int64_t count = element_count(expression, type);
    const auto size = static_cast<std::int64_t>(bytes_of(type));
    const bool backward = to.object == from.object && to.offset > from.offset;  // what is read later stays whole
    for (std::int64_t step = 0; step < count; ++step) {
        const std::int64_t offset = (backward ? count - 1 - step : step) * size;
        copy({to.object, to.offset + offset}, {from.object, from.offset + offset}, type, where);
    }
    result given{.is = result::kind::pointer};
    given.where = to;
    return given;
}

/// memset to zero; the value is the first argument's.
result executor::clear_elements(const clang::CallExpr& expression) {
    const asked_range where = range(expression);
    const place to = pointed_at(*expression.getArg(0));
    const clang::QualType type = element_type(*expression.getArg(0), to);
    if (values_.known_integer(evaluate(*expression.getArg(1)).number) != 0) {
        refuse(message_id::set_to_bytes, range(*expression.getArg(1)));
    }
    const std::int64_t count = element_count(expression, type);
    const auto size = static_cast<std::int64_t>(bytes_of(type));
    for (std::int64_t step = 0; step < count; ++step) {
        const place one = {to.object, to.offset + step * size};
        check_place(one, static_cast<std::uint32_t>(size), where);
        set_zero(one, type, where);
    }
    result given{.is = result::kind::pointer};
    given.where = to;
    return given;
}

place executor::pointed_at(const clang::Expr& pointer) {
    const result given = evaluate(pointer);
    if (given.is == result::kind::unknown_pointer) {
        refuse(message_id::unknown_pointer, range(pointer));
    }
    if (given.is != result::kind::pointer || given.where.object == no_object) {
        refuse(message_id::null_pointer, range(pointer));
    }
    return given.where;
}

bool executor::is_built_in(const clang::FunctionDecl& function) const {
    return context_.getSourceManager().getFilename(function.getLocation()).starts_with(llvm::StringRef(header_folder));
}

/// No body was found.
void executor::refuse_call(const clang::FunctionDecl& function, const clang::CallExpr& expression) {
    refuse(is_built_in(function) ? message_id::host_function : message_id::no_body, range(expression),
           {function.getName().str()});
}

}  // namespace xfc::flow
