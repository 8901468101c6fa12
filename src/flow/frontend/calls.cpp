// Calls: functions with bodies are followed, known functions become operations.

#include <array>
#include <cmath>

#include "flow/frontend/executor.h"
#include "flow/frontend/known_functions.h"
#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

constexpr std::size_t deepest_calls = 1000;
constexpr double largest_power = 64;

}  // namespace

const clang::FunctionDecl& executor::callee_of(const clang::CallExpr& expression) {
    const result callee = evaluate(*expression.getCallee());
    if (callee.is == result::kind::pointer) {
        refuse(message_id::null_pointer, range(*expression.getCallee()));
    }
    if (callee.is != result::kind::function) {
        refuse(message_id::unknown_callee, range(*expression.getCallee()));
    }
    return *callee.function;
}

/// Whether a declaration has the types of the known function of its name; one of another type is another function.
bool executor::is_declared_as(const known_function& row, const clang::FunctionDecl& function) const {
    const auto takes = [&](const clang::QualType& type, bool integer) {
        const auto scalar = find_scalar(type);
        return scalar && (integer ? scalar->is_integer() : is_floating(scalar->format));
    };
    bool fits = takes(function.getReturnType(), false);
    for (unsigned index = 0; index < function.getNumParams(); ++index) {
        fits = fits && takes(function.getParamDecl(index)->getType(), index == 1 && row.second_integer);
    }
    return fits;
}

/// Whether a call is one of a function of C's library that the program declares itself, instead of including the
/// header: its name and its types.
bool executor::is_library_call(llvm::StringRef name, const clang::FunctionDecl& function,
                               const clang::CallExpr& expression) const {
    const auto is_integer = [&](const clang::QualType& type) {
        const auto scalar = find_scalar(type);
        return scalar && scalar->is_integer();
    };
    const auto type = [&](unsigned index) { return expression.getArg(index)->getType(); };
    if (name == "abs" || name == "labs") {
        return expression.getNumArgs() == 1 && is_integer(type(0)) && is_integer(function.getReturnType());
    }
    if (name != "memcpy" && name != "memmove" && name != "memset") {
        return false;
    }
    return expression.getNumArgs() == 3 && function.getReturnType()->isPointerType() && type(0)->isPointerType() &&
           (name == "memset" ? is_integer(type(1)) : type(1)->isPointerType()) && is_integer(type(2));
}

result executor::call(const clang::CallExpr& expression, bool discarded) {
    count_step(expression);
    const clang::FunctionDecl& function = callee_of(expression);
    const clang::FunctionDecl* definition = function.getDefinition();
    llvm::StringRef name = function.getName();
    if (definition == nullptr) {
        definition = bodies_.lookup(name);
    }
    if (definition != nullptr) {
        return call_with_body(*definition, expression, discarded);
    }
    if (name.consume_front("__builtin_") || is_library_call(name, function, expression)) {
        if (auto given = call_builtin(name, expression)) {
            return *given;
        }
    }
    const found_function found = find_known_function(name);
    if (found.row == nullptr || expression.getNumArgs() != static_cast<unsigned>(found.row->arguments) ||
        !is_declared_as(*found.row, function)) {
        refuse_call(function, expression);
    }
    switch (found.row->way) {
        case known_way::component:
            return call_known(*found.row, function, expression);
        case known_way::power:
            return call_power(function, expression);
        case known_way::missing:
            break;
    }
    refuse(message_id::no_component, range(expression), {name.str()});
}

result executor::call_known(const known_function& row, const clang::FunctionDecl& function,
                            const clang::CallExpr& expression) {
    const asked_range where = range(expression);
    std::vector<result> arguments;
    for (const clang::Expr* argument : expression.arguments()) {
        arguments.push_back(evaluate(*argument));
    }
    const std::size_t floating = row.second_integer ? 1 : arguments.size();
    // Older sources call without a declaration: the function then works in its operands' format.
    number_format format = scalar_of(function.getReturnType(), where).format;
    if (is_declared_by_call(function) && format == number_format::double_float && !options_.c_constants) {
        std::vector<const result*> operands;
        for (std::size_t index = 0; index < floating; ++index) {
            operands.push_back(&arguments[index]);
        }
        format = common_format(operands, where);
    }
    bool flexible = format == number_format::double_float;
    std::vector<value_id> operands;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const bool is_float = index < floating;
        flexible = flexible && (!is_float || arguments[index].flexible);
        operands.push_back(in_format(arguments[index], is_float ? format : number_format::integer, where));
    }
    result given = number(make_folded(values_, row.op, format, operands, where, frames_.back().call));
    given.flexible = flexible;
    return given;
}

result executor::call_power(const clang::FunctionDecl& function, const clang::CallExpr& expression) {
    const asked_range where = range(expression);
    const result base = evaluate(*expression.getArg(0));
    const result exponent = evaluate(*expression.getArg(1));
    number_format format = scalar_of(function.getReturnType(), where).format;
    if (is_declared_by_call(function) && !options_.c_constants && format == number_format::double_float) {
        const std::array<const result*, 1> operands = {&base};
        format = common_format(operands, where);
    }
    const value_id number_of_base = in_format(base, format, where);
    if (!values_.is_constant(exponent.number)) {
        refuse(message_id::power_exponent, range(*expression.getArg(1)));
    }
    if (values_.is_constant(number_of_base)) {
        const value_id number_of_exponent = in_format(exponent, format, where);
        const known_number power = power_of({format, values_[number_of_base].constant_bits()},
                                            {format, values_[number_of_exponent].constant_bits()});
        result given = number(values_.make_constant(format, power.bits, where));
        given.flexible = base.flexible && exponent.flexible;
        return given;
    }
    const double wanted = values_.double_of(exponent.number);
    if (wanted != std::trunc(wanted) || std::fabs(wanted) > largest_power) {
        refuse(message_id::power_exponent, range(*expression.getArg(1)));
    }
    if (wanted == 0) {
        const known_number one = format == number_format::single_float ? known_single(1) : known_double(1);
        return number(values_.make_constant(format, one.bits, where));
    }
    const value_id whole = values_.make_integer(static_cast<std::int32_t>(wanted));
    return number(make(operation::whole_power, format, {number_of_base, whole}, where));
}

result executor::call_with_body(const clang::FunctionDecl& function, const clang::CallExpr& expression,
                                bool discarded) {
    const asked_range where = range(expression);
    std::size_t depth = 0;
    for (const frame& one : frames_) {
        depth += one.function == &function ? 1 : 0;
    }
    if (depth >= deepest_calls) {
        refuse(message_id::recursion_without_end, where, {function.getName().str(), std::to_string(depth)});
    }
    std::vector<std::pair<result, clang::QualType>> arguments;
    for (const clang::Expr* argument : expression.arguments()) {
        arguments.emplace_back(evaluate(*argument), argument->getType());
    }
    if (arguments.size() < function.getNumParams()) {
        refuse(message_id::too_few_arguments, where,
               {function.getName().str(), std::to_string(function.getNumParams()), std::to_string(arguments.size())});
    }
    frame inner;
    inner.function = &function;
    inner.call_place = where;
    inner.call =
        values_.add_call({.function = function.getName().str(), .where = where, .caller = frames_.back().call});
    frames_.push_back(std::move(inner));
    const std::size_t outer = living_.size();
    for (unsigned index = 0; index < function.getNumParams(); ++index) {
        const clang::ParmVarDecl& parameter = *function.getParamDecl(index);
        auto& [what, type] = arguments[index];
        const object_id id = declare(parameter);
        const clang::QualType wanted = parameter.getType();
        if (what.is == result::kind::number && find_scalar(type) && find_scalar(wanted)) {
            what = converted(what, type, wanted, where);
        }
        store({id, 0}, wanted, what, where);
        protect(id, wanted);
    }
    run_body(function);
    const place returned = frames_.back().returned;
    frames_.pop_back();
    end_lives(outer);
    if (returned.object == no_object || discarded) {
        return {};
    }
    return load(returned, function.getReturnType(), where);
}

/// Follows the body in the last frame; the result is left in an object of its own.
void executor::run_body(const clang::FunctionDecl& function) {
    const clang::QualType type = function.getReturnType();
    if (!type->isVoidType()) {
        const std::string name = "the result of " + function.getName().str();
        const object_id id = create_object(type.getUnqualifiedType(), name, range(function.getLocation()));
        memory_.mark_as_result(id);
        frames_.back().returned = {id, 0};
    }
    const int outer_depth = scope_depth_;
    scope_depth_ = 0;
    const flow_of flow = execute(*function.getBody());
    scope_depth_ = outer_depth;
    // A number is set by every return: where all ways end in one, its conditions need not be followed.
    if (flow.returned == yes_ && find_scalar(type) && !frames_.back().left_without_value) {
        const std::uint32_t index = memory_.index_of(frames_.back().returned);
        cell content = memory_.at(index);
        content.set_when = always;
        memory_.set(index, content);
    }
}

}  // namespace xfc::flow
