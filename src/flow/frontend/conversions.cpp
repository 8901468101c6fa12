// Numbers from one format to another.

#include <clang/AST/Type.h>
#include <clang/Lex/Lexer.h>
#include <llvm/ADT/APFloat.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>

#include "flow/frontend/executor.h"
#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

constexpr scalar_type boolean_type{number_format::boolean, 1, false};

/// A decimal number rounded once; nothing where the text has another form or the number leaves the format's range.
std::optional<float> single_of_text(std::string_view text) {
    float number = 0;
    const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool is_plain = failed == std::errc() && end == text.data() + text.size() && std::isnormal(number);
    return is_plain ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<scalar_type> scalar_of_builtin(clang::BuiltinType::Kind kind) {
    constexpr auto integer = number_format::integer;
    switch (kind) {
        case clang::BuiltinType::Bool:
            return boolean_type;
        case clang::BuiltinType::Char_S:
        case clang::BuiltinType::SChar:
            return scalar_type{integer, 1, true};
        case clang::BuiltinType::Char_U:
        case clang::BuiltinType::UChar:
            return scalar_type{integer, 1, false};
        case clang::BuiltinType::Short:
            return scalar_type{integer, 2, true};
        case clang::BuiltinType::UShort:
            return scalar_type{integer, 2, false};
        case clang::BuiltinType::Int:
        case clang::BuiltinType::Long:
            return scalar_type{integer, 4, true};
        case clang::BuiltinType::WChar_U:
        case clang::BuiltinType::UInt:
        case clang::BuiltinType::ULong:
            return scalar_type{integer, 4, false};
        case clang::BuiltinType::Float:
            return scalar_type{number_format::single_float, 4, true};
        case clang::BuiltinType::Double:
            return scalar_type{number_format::double_float, 8, true};
        default:
            return std::nullopt;
    }
}

std::optional<scalar_type> executor::find_scalar(const clang::QualType& type) const {
    const clang::Type* plain = type.getCanonicalType().getTypePtr();
    if (plain == last_type_) {
        return last_scalar_;
    }
    if (const auto* builtin = llvm::dyn_cast<clang::BuiltinType>(plain)) {
        last_type_ = plain;
        last_scalar_ = scalar_of_builtin(builtin->getKind());
        return last_scalar_;
    }
    if (const auto* enumeration = llvm::dyn_cast<clang::EnumType>(plain)) {
        const clang::QualType inner = enumeration->getDecl()->getIntegerType();
        return inner.isNull() ? std::nullopt : find_scalar(inner);
    }
    return std::nullopt;
}

scalar_type executor::scalar_of(const clang::QualType& type, const asked_range& where) {
    if (const auto scalar = find_scalar(type)) {
        return *scalar;
    }
    refuse_type(type, where);
}

void executor::refuse_type(const clang::QualType& type, const asked_range& where) {
    const std::string text = type.getUnqualifiedType().getAsString();
    if (const auto* builtin = type->getAs<clang::BuiltinType>()) {
        if (builtin->getKind() == clang::BuiltinType::LongLong || builtin->getKind() == clang::BuiltinType::ULongLong) {
            refuse(message_id::long_long, where, {text});
        }
        if (builtin->getKind() == clang::BuiltinType::LongDouble) {
            refuse(message_id::long_double, where, {text});
        }
    }
    if (const auto* enumeration = type->getAs<clang::EnumType>()) {
        refuse(message_id::long_long, where, {enumeration->getDecl()->getIntegerType().getAsString()});
    }
    refuse(message_id::other_type, where, {text});
}

result executor::number(value_id id) const { return {.is = result::kind::number, .number = id}; }

value_id executor::make(operation op, number_format format, std::initializer_list<value_id> operands,
                        const asked_range& where) {
    const value_id id = make_folded(values_, op, format, {operands.begin(), operands.size()}, where,
                                    frames_.empty() ? 0 : frames_.back().call);
    return id;
}

/// A constant without suffix in single: rounded once from its text where it stands alone.
value_id executor::narrowed_constant(const result& from, const asked_range& where) {
    const value& one = values_[from.number];
    if (one.op == operation::select) {
        const std::array<value_id, 3> operands = one.operands;
        result side = from;
        side.literal = nullptr;
        side.number = operands[1];
        const value_id yes = narrowed_constant(side, where);
        side.number = operands[2];
        return make(operation::select, number_format::single_float, {operands[0], yes, narrowed_constant(side, where)},
                    where);
    }
    if (from.literal != nullptr) {
        llvm::SmallString<64> buffer;
        const llvm::StringRef spelling =
            clang::Lexer::getSpelling(context_.getSourceManager().getSpellingLoc(from.literal->getLocation()), buffer,
                                      context_.getSourceManager(), context_.getLangOpts());
        if (const auto rounded = single_of_text({spelling.data(), spelling.size()})) {
            return values_.make_single(from.negated ? -*rounded : *rounded, where);
        }
        llvm::APFloat single(llvm::APFloat::IEEEsingle());
        auto status = single.convertFromString(spelling, llvm::APFloat::rmNearestTiesToEven);
        if (status) {
            if (from.negated) {
                single.changeSign();
            }
            return values_.make_constant(number_format::single_float, single.bitcastToAPInt().getZExtValue(), where);
        }
        llvm::consumeError(status.takeError());
    }
    return make(operation::convert, number_format::single_float, {from.number}, where);
}

/// The number in this format, whatever it is in now; not for what C calls a conversion to a narrower integer.
value_id executor::in_format(const result& from, number_format format, const asked_range& where) {
    const number_format now = values_[from.number].format;
    if (now == format) {
        return from.number;
    }
    if (format == number_format::boolean) {
        return truth(from, where);
    }
    if (now == number_format::boolean) {
        const known_number one = format == number_format::integer        ? known_integer_number(1)
                                 : format == number_format::single_float ? known_single(1)
                                                                         : known_double(1);
        return make(operation::select, format,
                    {from.number, values_.make_constant(format, one.bits), values_.make_constant(format, 0)}, where);
    }
    if (from.flexible && format == number_format::single_float) {
        return narrowed_constant(from, where);
    }
    return make(operation::convert, format, {from.number}, where);
}

/// The low bits of an integer that a narrower type keeps.
value_id executor::wrapped(value_id integer, const scalar_type& type, const asked_range& where) {
    if (type.bytes >= 4) {
        return integer;
    }
    const auto bits = static_cast<std::int32_t>(type.bytes * 8);
    if (!type.is_signed) {
        return make(operation::bit_and, number_format::integer, {integer, values_.make_integer((1 << bits) - 1)},
                    where);
    }
    const value_id distance = values_.make_integer(32 - bits);
    const value_id high = make(operation::shift_left, number_format::integer, {integer, distance}, where);
    return make(operation::shift_right, number_format::integer, {high, distance}, where);
}

result executor::converted(const result& from, const clang::QualType& from_type, const clang::QualType& to_type,
                           const asked_range& where) {
    const scalar_type source = scalar_of(from_type, where);
    const scalar_type target = scalar_of(to_type, where);
    const bool large_unsigned = source.is_integer() && !source.is_signed && source.bytes == 4;
    const bool known = values_.is_constant(from.number);
    if (target.format == number_format::boolean) {
        return number(truth(from, where));
    }
    if (is_floating(target.format)) {
        if (large_unsigned && values_[from.number].format == number_format::integer) {
            if (!known) {
                return number(unsigned_to_floating(from.number, target.format, where));
            }
            const auto exact = static_cast<double>(static_cast<std::uint32_t>(*values_.known_integer(from.number)));
            const known_number wide = known_double(exact);
            return number(
                make(operation::convert, target.format, {values_.make_constant(wide.format, wide.bits, where)}, where));
        }
        return number(in_format(from, target.format, where));
    }
    if (is_floating(values_[from.number].format)) {
        if (!target.is_signed && target.bytes == 4) {
            return number(floating_to_unsigned(from.number, where));
        }
        const value_id whole = make(operation::convert, number_format::integer, {from.number}, where);
        return number(wrapped(whole, target, where));
    }
    const value_id integer = in_format(from, number_format::integer, where);
    const bool fits = source.format == number_format::boolean ||
                      (source.bytes < target.bytes && (!source.is_signed || target.is_signed)) ||
                      (source.bytes == target.bytes && source.is_signed == target.is_signed);
    return number(fits ? integer : wrapped(integer, target, where));
}

value_id executor::truth(const result& from, const clang::Expr& expression) {
    if (from.is == result::kind::pointer) {
        return conditions_.boolean(from.where.object != no_object);
    }
    if (from.is == result::kind::function) {
        return yes_;
    }
    if (from.is == result::kind::unknown_pointer) {
        refuse(message_id::unknown_pointer, range(expression));
    }
    return truth(from, range(expression));
}

value_id executor::truth(const result& from, const asked_range& where) {
    const number_format format = values_[from.number].format;
    if (format == number_format::boolean) {
        return from.number;
    }
    return compare(clang::BO_NE, format, from.number, values_.make_constant(format, 0), where).number;
}

/// The format in which floating operands meet: C's, but for constants without suffix, which take the other's.
number_format executor::common_format(std::span<const result* const> operands, const asked_range& where) {
    bool wide = false;
    bool single = false;
    const result* constant = nullptr;
    for (const result* operand : operands) {
        const number_format format = values_[operand->number].format;
        if (operand->flexible) {
            constant = operand;
        } else if (format == number_format::single_float) {
            single = true;
        } else {
            wide = true;
        }
    }
    if (wide || !single) {
        return number_format::double_float;
    }
    if (constant != nullptr) {
        note_deviation(*constant, where);
    }
    return number_format::single_float;
}

void executor::note_deviation(const result& constant, const asked_range& where) {
    if (deviations_++ == 0) {
        first_deviation_ = constant.literal != nullptr ? range(*constant.literal) : where;
    }
}

}  // namespace xfc::flow
