// Expressions: what they compute, and where they stand when they are places.

#include <clang/AST/RecordLayout.h>

#include <algorithm>
#include <array>

#include "flow/frontend/executor.h"
#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

constexpr int deepest_expression = 10000;

/// One more level until the end of the scope.
class nesting {
public:
    explicit nesting(int& depth) : depth_(depth) { ++depth_; }
    ~nesting() { --depth_; }
    nesting(const nesting&) = delete;
    nesting& operator=(const nesting&) = delete;

private:
    int& depth_;
};

bool is_comparison(clang::BinaryOperatorKind kind) { return clang::BinaryOperator::isComparisonOp(kind); }

}  // namespace

result executor::evaluate(const clang::Expr& expression) {
    // A chain of a + a + ... has no nesting in its text, but one in its tree.
    if (stack_.exhausted() || depth_ >= deepest_expression) {
        refuse(message_id::nesting_too_deep, range(expression.getExprLoc()));
    }
    const nesting deeper(depth_);
    switch (expression.getStmtClass()) {
        case clang::Stmt::ParenExprClass:
            return evaluate(*llvm::cast<clang::ParenExpr>(expression).getSubExpr());
        case clang::Stmt::ConstantExprClass:
            return evaluate(*llvm::cast<clang::ConstantExpr>(expression).getSubExpr());
        case clang::Stmt::ImplicitCastExprClass:
        case clang::Stmt::CStyleCastExprClass:
            return evaluate_cast(llvm::cast<clang::CastExpr>(expression));
        case clang::Stmt::UnaryOperatorClass:
            return evaluate_unary(llvm::cast<clang::UnaryOperator>(expression));
        case clang::Stmt::BinaryOperatorClass:
            return evaluate_binary(llvm::cast<clang::BinaryOperator>(expression));
        case clang::Stmt::CompoundAssignOperatorClass:
            return evaluate_compound_assignment(llvm::cast<clang::CompoundAssignOperator>(expression));
        case clang::Stmt::ConditionalOperatorClass:
        case clang::Stmt::BinaryConditionalOperatorClass:
            return evaluate_conditional(llvm::cast<clang::AbstractConditionalOperator>(expression));
        case clang::Stmt::OpaqueValueExprClass:
            return opaque_.lookup(llvm::cast<clang::OpaqueValueExpr>(&expression));
        case clang::Stmt::CallExprClass:
            return call(llvm::cast<clang::CallExpr>(expression), false);
        case clang::Stmt::FloatingLiteralClass:
            return evaluate_floating_literal(llvm::cast<clang::FloatingLiteral>(expression));
        case clang::Stmt::IntegerLiteralClass: {
            (void)scalar_of(expression.getType(), range(expression));
            const auto bits = llvm::cast<clang::IntegerLiteral>(expression).getValue().getZExtValue();
            return number(values_.make_integer(static_cast<std::int32_t>(bits)));
        }
        case clang::Stmt::CharacterLiteralClass:
            return number(values_.make_integer(
                static_cast<std::int32_t>(llvm::cast<clang::CharacterLiteral>(expression).getValue())));
        case clang::Stmt::UnaryExprOrTypeTraitExprClass:
        case clang::Stmt::OffsetOfExprClass:
            return evaluate_known(expression);
        case clang::Stmt::GenericSelectionExprClass:
            return evaluate(*llvm::cast<clang::GenericSelectionExpr>(expression).getResultExpr());
        case clang::Stmt::ChooseExprClass:
            return evaluate(*llvm::cast<clang::ChooseExpr>(expression).getChosenSubExpr());
        case clang::Stmt::ImplicitValueInitExprClass:
            return number(values_.make_constant(scalar_of(expression.getType(), range(expression)).format, 0));
        case clang::Stmt::InitListExprClass: {
            const auto& list = llvm::cast<clang::InitListExpr>(expression);
            if (list.getNumInits() == 1) {
                return evaluate(*list.getInit(0));
            }
            break;
        }
        case clang::Stmt::DeclRefExprClass: {
            const clang::ValueDecl* named = llvm::cast<clang::DeclRefExpr>(expression).getDecl();
            if (const auto* enumerator = llvm::dyn_cast<clang::EnumConstantDecl>(named)) {
                (void)scalar_of(expression.getType(), range(expression));
                return number(values_.make_integer(static_cast<std::int32_t>(enumerator->getInitVal().getExtValue())));
            }
            if (const auto* function = llvm::dyn_cast<clang::FunctionDecl>(named)) {
                return {.is = result::kind::function, .function = function};
            }
            break;
        }
        case clang::Stmt::MemberExprClass:
        case clang::Stmt::ArraySubscriptExprClass:
            if (expression.isPRValue()) {
                return load(address_of(expression), expression.getType(), range(expression));
            }
            break;
        default:
            break;
    }
    if (expression.isLValue() && !expression.getType()->isVoidType()) {
        (void)address_of(expression);  // a place without use
        return {};
    }
    refuse(message_id::other_expression, range(expression), {"this expression"});
}

/// A compound literal is one object of a call as long as its block is open, and gets its value each time that it is
/// met.
place executor::address_of_literal(const clang::CompoundLiteralExpr& expression) {
    auto& literals = frames_.back().literals;  // calls in the initializer may move it
    const auto found = literals.find(&expression);
    const bool known = found != literals.end() && !memory_[found->second].ended;
    const object_id id = known ? found->second : create_object(expression.getType(), "literal", range(expression));
    if (!known) {
        literals[&expression] = id;
        living_.push_back(id);
    }
    memory_.set_read_only(id, false);
    initialize({id, 0}, expression.getType(), *expression.getInitializer());
    if (expression.isFileScope()) {
        memory_.begin_with(id, !older_ && !context_.getBaseElementType(expression.getType()).isConstQualified());
    }
    protect(id, expression.getType());
    return {id, 0};
}

place executor::address_of(const clang::Expr& expression) {
    switch (expression.getStmtClass()) {
        case clang::Stmt::ParenExprClass:
            return address_of(*llvm::cast<clang::ParenExpr>(expression).getSubExpr());
        case clang::Stmt::DeclRefExprClass:
            if (const auto* variable =
                    llvm::dyn_cast<clang::VarDecl>(llvm::cast<clang::DeclRefExpr>(expression).getDecl())) {
                return {object_of(*variable), 0};
            }
            break;
        case clang::Stmt::MemberExprClass: {
            const auto& member = llvm::cast<clang::MemberExpr>(expression);
            const auto* field = llvm::cast<clang::FieldDecl>(member.getMemberDecl());
            if (field->isBitField()) {
                refuse(message_id::bit_field, range(expression), {field->getName().str()});
            }
            place base;
            if (member.isArrow()) {
                const result pointer = evaluate(*member.getBase());
                if (pointer.is != result::kind::pointer) {
                    refuse(message_id::unknown_pointer, range(*member.getBase()));
                }
                base = pointer.where;
            } else {
                base = address_of(*member.getBase());
            }
            const auto& layout = context_.getASTRecordLayout(field->getParent());
            base.offset += static_cast<std::int64_t>(layout.getFieldOffset(field->getFieldIndex()) / 8);
            return base;
        }
        case clang::Stmt::ArraySubscriptExprClass:
            return element_of(llvm::cast<clang::ArraySubscriptExpr>(expression), false);
        case clang::Stmt::UnaryOperatorClass: {
            const auto& unary = llvm::cast<clang::UnaryOperator>(expression);
            if (unary.getOpcode() == clang::UO_Deref) {
                const result pointer = evaluate(*unary.getSubExpr());
                if (pointer.is != result::kind::pointer) {
                    refuse(message_id::unknown_pointer, range(expression));
                }
                return pointer.where;
            }
            if (unary.getOpcode() == clang::UO_Extension) {
                return address_of(*unary.getSubExpr());
            }
            break;
        }
        case clang::Stmt::StringLiteralClass: {
            const auto found = literals_.find(&expression);
            if (found != literals_.end()) {
                return {found->second, 0};
            }
            const object_id id = create_object(expression.getType(), "text", range(expression));
            set_text({id, 0}, expression.getType(), llvm::cast<clang::StringLiteral>(expression));
            memory_.set_read_only(id);
            literals_[&expression] = id;
            return {id, 0};
        }
        case clang::Stmt::PredefinedExprClass:
            return address_of(*llvm::cast<clang::PredefinedExpr>(expression).getFunctionName());
        case clang::Stmt::CompoundLiteralExprClass:
            return address_of_literal(llvm::cast<clang::CompoundLiteralExpr>(expression));
        case clang::Stmt::GenericSelectionExprClass:
            return address_of(*llvm::cast<clang::GenericSelectionExpr>(expression).getResultExpr());
        case clang::Stmt::ImplicitCastExprClass:
        case clang::Stmt::CStyleCastExprClass:
            if (expression.isLValue()) {
                return address_of(*llvm::cast<clang::CastExpr>(expression).getSubExpr());
            }
            break;
        default:
            break;
    }
    if (expression.getType()->isRecordType() && !expression.isLValue()) {
        return evaluate(expression).where;  // the structure that a call or a choice gives
    }
    refuse(message_id::other_expression, range(expression), {"this expression"});
}

result executor::evaluate_known(const clang::Expr& expression) {
    const scalar_type type = scalar_of(expression.getType(), range(expression));
    clang::Expr::EvalResult known;
    if (!type.is_integer() || !expression.EvaluateAsInt(known, context_)) {
        refuse(message_id::variable_size, range(expression), {"this"});
    }
    return number(values_.make_integer(static_cast<std::int32_t>(known.Val.getInt().getExtValue())));
}

result executor::evaluate_floating_literal(const clang::FloatingLiteral& literal) {
    const scalar_type type = scalar_of(literal.getType(), range(literal));
    const std::uint64_t bits = literal.getValue().bitcastToAPInt().getZExtValue();
    result constant = number(values_.make_constant(type.format, bits, range(literal)));
    if (type.format == number_format::double_float && !options_.c_constants) {
        constant.flexible = true;
        constant.literal = &literal;
    }
    return constant;
}

result executor::evaluate_unary(const clang::UnaryOperator& expression) {
    const clang::Expr& inner = *expression.getSubExpr();
    const asked_range where = range(expression);
    switch (expression.getOpcode()) {
        case clang::UO_Plus:
        case clang::UO_Extension:
            return evaluate(inner);
        case clang::UO_Minus: {
            result what = evaluate(inner);
            const scalar_type type = scalar_of(expression.getType(), where);
            if (type.is_integer()) {
                const value_id integer = in_format(what, number_format::integer, where);
                return number(make(operation::negate, number_format::integer, {integer}, where));
            }
            what.number = make(operation::negate, values_[what.number].format, {what.number}, where);
            what.negated = !what.negated;
            return what;
        }
        case clang::UO_Not: {
            (void)scalar_of(expression.getType(), where);
            const value_id integer = in_format(evaluate(inner), number_format::integer, where);
            return number(make(operation::bit_not, number_format::integer, {integer}, where));
        }
        case clang::UO_LNot:
            return number(conditions_.inverse(truth(evaluate(inner), inner), where));
        case clang::UO_AddrOf: {
            if (inner.getType()->isFunctionType()) {
                return evaluate(inner);
            }
            const auto* element = llvm::dyn_cast<clang::ArraySubscriptExpr>(inner.IgnoreParens());
            return {.is = result::kind::pointer,
                    .where = element != nullptr ? element_of(*element, true) : address_of(inner)};
        }
        case clang::UO_Deref:
            if (expression.getType()->isFunctionType()) {
                return evaluate(inner);
            }
            return load(address_of(expression), expression.getType(), where);
        case clang::UO_PostInc:
        case clang::UO_PostDec:
        case clang::UO_PreInc:
        case clang::UO_PreDec:
            return evaluate_increment(expression);
        default:
            refuse(message_id::other_type, where, {expression.getType().getAsString()});
    }
}

result executor::evaluate_increment(const clang::UnaryOperator& expression) {
    const clang::Expr& inner = *expression.getSubExpr();
    const clang::QualType type = inner.getType();
    const asked_range where = range(expression);
    const place at = address_of(inner);
    const result before = load(at, type, where);
    const bool back = expression.isDecrementOp();
    result after;
    if (type->isPointerType()) {
        after = moved(before, type, number(values_.make_integer(1)), back, expression);
    } else {
        const scalar_type scalar = scalar_of(type, where);
        const auto op = back ? clang::BO_Sub : clang::BO_Add;
        if (is_floating(scalar.format)) {
            const known_number one = scalar.format == number_format::single_float ? known_single(1) : known_double(1);
            after = operate_on_floats(op, before, number(values_.make_constant(one.format, one.bits)), expression);
        } else {
            const result sum = operate_on_integers(op, before, number(values_.make_integer(1)), {}, expression);
            after = converted(sum, context_.IntTy, type, where);
        }
    }
    store(at, type, after, where);
    return expression.isPostfix() ? before : after;
}

result executor::evaluate_binary(const clang::BinaryOperator& expression) {
    if (expression.getOpcode() == clang::BO_Comma) {
        (void)evaluate(*expression.getLHS());
        return evaluate(*expression.getRHS());
    }
    if (expression.isLogicalOp()) {
        return evaluate_logical(expression);
    }
    if (expression.isAssignmentOp()) {
        return evaluate_assignment(expression);
    }
    const result left = evaluate(*expression.getLHS());
    const result right = evaluate(*expression.getRHS());
    return operate(expression.getOpcode(), left, expression.getLHS()->getType(), right, expression.getRHS()->getType(),
                   expression.getType(), expression);
}

result executor::evaluate_logical(const clang::BinaryOperator& expression) {
    const bool conjunction = expression.getOpcode() == clang::BO_LAnd;
    const asked_range where = range(expression);
    const value_id left = truth(evaluate(*expression.getLHS()), *expression.getLHS());
    if (const auto known = conditions_.truth_of(left); known == !conjunction) {
        return number(conditions_.boolean(!conjunction));
    }
    value_id right = conditions_.boolean(conjunction);
    const auto other = [&] { right = truth(evaluate(*expression.getRHS()), *expression.getRHS()); };
    const asked_range left_where = range(*expression.getLHS());
    if (conjunction) {
        guarded(left, left_where, other);
        return number(conditions_.both(left, right, where));
    }
    guarded(
        left, left_where, [] {}, other);
    return number(conditions_.either(left, right, where));
}

result executor::evaluate_assignment(const clang::BinaryOperator& expression) {
    const clang::Expr& target = *expression.getLHS();
    const asked_range where = range(*expression.getRHS());
    const result what = evaluate(*expression.getRHS());
    const place at = address_of(target);
    check_target(at, target);
    store(at, target.getType(), what, where);
    if (what.is != result::kind::number) {
        return target.getType()->isRecordType() ? result{.is = result::kind::aggregate, .where = at} : what;
    }
    return number(in_format(what, scalar_of(target.getType(), where).format, where));
}

result executor::evaluate_compound_assignment(const clang::CompoundAssignOperator& expression) {
    const clang::Expr& target = *expression.getLHS();
    const clang::QualType type = target.getType();
    const asked_range where = range(expression);
    const result right = evaluate(*expression.getRHS());
    const place at = address_of(target);
    result left = load(at, type, range(target));
    if (type->isPointerType()) {
        const result after = moved(left, type, right, expression.getOpcode() == clang::BO_SubAssign, expression);
        store(at, type, after, where);
        return after;
    }
    const clang::QualType computed = expression.getComputationLHSType();
    const bool stays = type->isRealFloatingType() && computed->isRealFloatingType() && !options_.c_constants;
    if (!stays) {
        left = converted(left, type, computed, where);
    }
    const auto op = clang::BinaryOperator::getOpForCompoundAssignment(expression.getOpcode());
    const result after = operate(op, left, computed, right, expression.getRHS()->getType(),
                                 expression.getComputationResultType(), expression);
    const result given = converted(after, expression.getComputationResultType(), type, where);
    store(at, type, given, where);
    return given;
}

result executor::evaluate_conditional(const clang::AbstractConditionalOperator& expression) {
    if (const auto* binary = llvm::dyn_cast<clang::BinaryConditionalOperator>(&expression)) {
        opaque_[binary->getOpaqueValue()] = evaluate(*binary->getCommon());
    }
    const clang::Expr& condition = *expression.getCond();
    const value_id decided = truth(evaluate(condition), condition);
    if (const auto known = conditions_.truth_of(decided)) {
        return evaluate(*known ? *expression.getTrueExpr() : *expression.getFalseExpr());
    }
    const clang::QualType type = expression.getType();
    const asked_range where = range(expression);
    object_id chosen = no_object;
    if (type->isRecordType()) {
        chosen = create_object(type, "choice", where);
    }
    result yes;
    result no;
    const auto side = [&](result& given, const clang::Expr& from) {
        given = evaluate(from);
        if (chosen != no_object) {
            store({chosen, 0}, type, given, where);
        }
    };
    guarded(
        decided, range(condition), [&] { side(yes, *expression.getTrueExpr()); },
        [&] { side(no, *expression.getFalseExpr()); });
    if (chosen != no_object) {
        return {.is = result::kind::aggregate, .where = {chosen, 0}};
    }
    if (type->isVoidType()) {
        return {};
    }
    if (yes.is != result::kind::number || no.is != result::kind::number) {
        const bool same = yes.is == no.is && yes.where.object == no.where.object &&
                          yes.where.offset == no.where.offset && yes.function == no.function;
        return same ? yes : result{.is = result::kind::unknown_pointer};
    }
    number_format format = number_format::integer;
    if (type->isRealFloatingType()) {
        const std::array<const result*, 2> both = {&yes, &no};
        format = common_format(both, where);
    } else if (values_[yes.number].format == number_format::boolean &&
               values_[no.number].format == number_format::boolean) {
        return number(conditions_.choose(decided, yes.number, no.number, where));
    }
    const value_id yes_number = in_format(yes, format, where);
    const value_id no_number = in_format(no, format, where);
    result given = number(make(operation::select, format, {decided, yes_number, no_number}, where));
    given.flexible = yes.flexible && no.flexible;
    return given;
}

result executor::evaluate_cast(const clang::CastExpr& expression) {
    const clang::Expr& inner = *expression.getSubExpr();
    const clang::QualType type = expression.getType();
    const bool is_explicit = llvm::isa<clang::ExplicitCastExpr>(expression);
    switch (expression.getCastKind()) {
        case clang::CK_LValueToRValue: {
            if (llvm::isa<clang::OpaqueValueExpr>(inner)) {
                return evaluate(inner);
            }
            return load(address_of(inner), inner.getType(), range(inner));
        }
        case clang::CK_NoOp: {
            const result what = evaluate(inner);
            if (!is_explicit || what.is != result::kind::number) {
                return what;
            }
            return number(in_format(what, scalar_of(type, range(expression)).format, range(expression)));
        }
        case clang::CK_FloatingCast: {
            result what = evaluate(inner);
            const number_format format = scalar_of(type, range(expression)).format;
            const bool widens = format == number_format::double_float;
            if (!is_explicit && widens && !options_.c_constants) {
                return what;  // who uses it sees what it meets
            }
            return number(in_format(what, format, range(expression)));
        }
        case clang::CK_IntegralToFloating: {
            result what = converted(evaluate(inner), inner.getType(), type, range(expression));
            what.flexible = !is_explicit && !options_.c_constants && values_.is_constant(what.number) &&
                            type->isSpecificBuiltinType(clang::BuiltinType::Double) &&
                            inner.isIntegerConstantExpr(context_);
            return what;
        }
        case clang::CK_IntegralCast:
        case clang::CK_BooleanToSignedIntegral:
        case clang::CK_IntegralToBoolean:
        case clang::CK_FloatingToIntegral:
        case clang::CK_FloatingToBoolean:
            return converted(evaluate(inner), inner.getType(), type, range(expression));
        case clang::CK_PointerToBoolean:
            return number(truth(evaluate(inner), inner));
        case clang::CK_ArrayToPointerDecay:
            return {.is = result::kind::pointer, .where = address_of(inner)};
        case clang::CK_FunctionToPointerDecay:
        case clang::CK_BuiltinFnToFnPtr:
            return evaluate(inner);
        case clang::CK_NullToPointer:
            return {.is = result::kind::pointer};
        case clang::CK_BitCast:
            if (type->isPointerType()) {
                return evaluate(inner);
            }
            break;
        case clang::CK_ToVoid:
            if (const auto* called = llvm::dyn_cast<clang::CallExpr>(inner.IgnoreParens())) {
                (void)call(*called, true);
            } else {
                (void)evaluate(inner);
            }
            return {};
        default:
            break;
    }
    if (type->isPointerType() || inner.getType()->isPointerType()) {
        refuse(message_id::other_expression, range(expression), {"a conversion between pointers and numbers"});
    }
    refuse_type(find_scalar(type) ? inner.getType() : type, range(expression));
}

result executor::operate(clang::BinaryOperatorKind kind, const result& left, const clang::QualType& left_type,
                         const result& right, const clang::QualType& right_type, const clang::QualType& type,
                         const clang::Expr& expression) {
    if (left_type->isPointerType() || right_type->isPointerType()) {
        return operate_on_pointers(kind, left, left_type, right, right_type, expression);
    }
    const asked_range where = range(expression);
    const scalar_type left_scalar = scalar_of(left_type, where);
    const scalar_type right_scalar = scalar_of(right_type, where);
    if (is_floating(left_scalar.format) || is_floating(right_scalar.format)) {
        return operate_on_floats(kind, left, right, expression);
    }
    (void)scalar_of(type, where);
    return operate_on_integers(kind, left, right, left_scalar, expression);
}

result executor::operate_on_floats(clang::BinaryOperatorKind kind, const result& left, const result& right,
                                   const clang::Expr& expression) {
    const asked_range where = range(expression);
    const std::array<const result*, 2> both = {&left, &right};
    const number_format format = common_format(both, where);
    const value_id a = in_format(left, format, where);
    const value_id b = in_format(right, format, where);
    if (is_comparison(kind)) {
        return compare(kind, format, a, b, where);
    }
    const operation op = kind == clang::BO_Add   ? operation::add
                         : kind == clang::BO_Sub ? operation::subtract
                         : kind == clang::BO_Mul ? operation::multiply
                                                 : operation::divide;
    result given = number(make(op, format, {a, b}, where));
    given.flexible = left.flexible && right.flexible;
    return given;
}

/// The relation of two values, on each side of a choice among constants by itself: so a flag that became a number is
/// asked for at no cost, however many ways set it.
result executor::compare(clang::BinaryOperatorKind kind, number_format format, value_id left, value_id right,
                         const asked_range& where) {
    for (const bool swapped : {false, true}) {
        const value_id counted = swapped ? right : left;
        const value_id other = swapped ? left : right;
        const auto known = values_.is_constant(other) ? counted_choice_of(values_, counted) : std::nullopt;
        if (!known || !is_choice_of_constants(known->choice)) {
            continue;
        }
        const question asked{kind, other, swapped, known->step_count == 0 ? no_value : counted};
        return number(on_each_choice(known->choice, answers_[asked], where, [&](value_id constant) {
            const value_id one = known->on(values_, constant);
            return compare(kind, format, swapped ? other : one, swapped ? one : other, where).number;
        }));
    }
    const auto relation = [&](operation op, value_id a, value_id b) {
        const auto known =
            format == number_format::integer ? decided(op, integer_ranges_.of(a), integer_ranges_.of(b)) : std::nullopt;
        return known ? conditions_.boolean(*known) : make(op, number_format::boolean, {a, b}, where);
    };
    switch (kind) {
        case clang::BO_LT:
            return number(relation(operation::less, left, right));
        case clang::BO_GT:
            return number(relation(operation::less, right, left));
        case clang::BO_LE:
            return number(relation(operation::less_equal, left, right));
        case clang::BO_GE:
            return number(relation(operation::less_equal, right, left));
        case clang::BO_EQ:
            return number(relation(operation::equal, left, right));
        default:
            return number(conditions_.inverse(relation(operation::equal, left, right), where));
    }
}

/// Whether a number is one of several constants, by selections alone.
bool executor::is_choice_of_constants(value_id number) {
    // Operands are older than what is made of them: those not known yet are looked at by rising number.
    std::vector<value_id> unknown = {number};
    for (std::size_t next = 0; next < unknown.size(); ++next) {
        const value_id id = unknown[next];
        const value& one = values_[id];
        if (!of_constants_.emplace(id, one.op == operation::constant).second || one.op != operation::select) {
            continue;
        }
        unknown.push_back(one.operands[1]);
        unknown.push_back(one.operands[2]);
    }
    std::sort(unknown.begin(), unknown.end());
    for (const value_id id : unknown) {
        const value& one = values_[id];
        if (one.op == operation::select) {
            of_constants_[id] = of_constants_.at(one.operands[1]) && of_constants_.at(one.operands[2]);
        }
    }
    return of_constants_.at(number);
}

/// The boolean that a choice of constants becomes when each of these becomes one.
value_id executor::on_each_choice(value_id number, std::unordered_map<value_id, value_id>& known,
                                  const asked_range& where, const std::function<value_id(value_id)>& of_constant) {
    std::vector<value_id> wanted = {number};
    for (std::size_t next = 0; next < wanted.size(); ++next) {
        const value_id id = wanted[next];
        const value& one = values_[id];
        if (known.contains(id)) {
            continue;
        }
        if (one.op != operation::select) {
            known.emplace(id, of_constant(id));
            continue;
        }
        known.emplace(id, no_value);
        wanted.push_back(one.operands[1]);
        wanted.push_back(one.operands[2]);
    }
    std::sort(wanted.begin(), wanted.end());
    for (const value_id id : wanted) {
        if (known.at(id) == no_value) {
            const std::array<value_id, most_operands> parts = values_[id].operands;
            known[id] = conditions_.choose(parts[0], known.at(parts[1]), known.at(parts[2]), where);
        }
    }
    return known.at(number);
}

namespace {

operation integer_operation(clang::BinaryOperatorKind kind, bool is_signed) {
    switch (kind) {
        case clang::BO_Add:
            return operation::add;
        case clang::BO_Sub:
            return operation::subtract;
        case clang::BO_Mul:
            return operation::multiply;
        case clang::BO_Div:
            return operation::divide;
        case clang::BO_Rem:
            return operation::remainder;
        case clang::BO_And:
            return operation::bit_and;
        case clang::BO_Or:
            return operation::bit_or;
        case clang::BO_Xor:
            return operation::bit_xor;
        case clang::BO_Shl:
            return operation::shift_left;
        default:
            return is_signed ? operation::shift_right : operation::shift_right_unsigned;
    }
}

}  // namespace

result executor::operate_on_integers(clang::BinaryOperatorKind kind, const result& left, const result& right,
                                     const scalar_type& type, const clang::Expr& expression) {
    const asked_range where = range(expression);
    const value_id a = in_format(left, number_format::integer, where);
    const value_id b = in_format(right, number_format::integer, where);
    const auto known_b = values_.known_integer(b);
    const bool divides = kind == clang::BO_Div || kind == clang::BO_Rem;
    if (divides && known_b == 0) {
        refuse(message_id::division_by_zero, where);
    }
    const auto is_never_zero = [&] {
        const value_id zero = values_.make_integer(0);
        return values_.known_boolean(compare(clang::BO_NE, number_format::integer, b, zero, where).number) == true;
    };
    if (divides && !conditions_.differs_from_zero(b) &&
        !decisions_.differs_from_zero(conditions_.path(decisions_), b) && !is_never_zero()) {
        refuse(message_id::division_by_unknown, where);
    }
    if (!type.is_signed && divides) {
        return number(kind == clang::BO_Div ? divide_unsigned(a, b, where) : remainder_unsigned(a, b, where));
    }
    if (!type.is_signed && clang::BinaryOperator::isRelationalOp(kind)) {
        return order_unsigned(kind, a, b, where);
    }
    if ((kind == clang::BO_Shl || kind == clang::BO_Shr) && known_b && (*known_b < 0 || *known_b > 31)) {
        refuse(message_id::shift_too_far, where, {std::to_string(*known_b)});
    }
    if (is_comparison(kind)) {
        return compare(kind, number_format::integer, a, b, where);
    }
    return number(make(integer_operation(kind, type.is_signed), number_format::integer, {a, b}, where));
}

/// The place of x[i]. An index of an array inside another one stays inside it; one behind it may be pointed at.
place executor::element_of(const clang::ArraySubscriptExpr& expression, bool may_be_behind) {
    const result base = evaluate(*expression.getBase());
    const result index = evaluate(*expression.getIdx());
    const place at = moved(base, expression.getBase()->getType(), index, false, *expression.getIdx()).where;
    const auto* decay = llvm::dyn_cast<clang::ImplicitCastExpr>(expression.getBase()->IgnoreParens());
    if (decay == nullptr || decay->getCastKind() != clang::CK_ArrayToPointerDecay || at.object == no_object) {
        return at;  // null is told when it is read
    }
    const auto* array = context_.getAsConstantArrayType(decay->getSubExpr()->getType());
    const object& one = memory_[at.object];
    const std::int64_t bytes = array != nullptr ? bytes_of(decay->getSubExpr()->getType()) : one.bytes;
    const std::int64_t offset = at.offset - base.where.offset;
    if (bytes < one.bytes && (offset < 0 || offset > bytes || (offset == bytes && !may_be_behind))) {
        const auto* member = llvm::dyn_cast<clang::MemberExpr>(decay->getSubExpr()->IgnoreParens());
        const std::string count = std::to_string(array->getSize().getZExtValue()) + " elements";
        refuse_outside(range(*expression.getIdx()),
                       member != nullptr ? member->getMemberDecl()->getName().str() : one.name,
                       member != nullptr ? count : count + " in a row", one);
    }
    return at;
}

/// Bytes by which a pointer moves to the next element.
std::int64_t executor::step_of(const clang::QualType& pointer_type, const clang::Expr& expression) {
    const clang::QualType pointee = pointer_type->getPointeeType();
    if (pointee->isVariableArrayType()) {
        refuse(message_id::variable_size, range(expression), {"a row"});
    }
    return bytes_of(pointee);
}

result executor::moved(const result& pointer, const clang::QualType& pointer_type, const result& count, bool back,
                       const clang::Expr& expression) {
    if (pointer.is != result::kind::pointer) {
        refuse(message_id::unknown_pointer, range(expression));
    }
    const value_id integer = conditions_.known_choice(in_format(count, number_format::integer, range(expression)));
    const auto known = values_.known_integer(integer);
    if (!known) {
        refuse(message_id::unknown_index, range(expression));
    }
    const std::int64_t size = step_of(pointer_type, expression);
    result after = pointer;
    after.where.offset += (back ? -1 : 1) * size * *known;
    if (after.where.object != no_object &&
        (after.where.offset < 0 || after.where.offset > memory_[after.where.object].bytes)) {
        const object& one = memory_[after.where.object];
        refuse_outside(range(expression), one.name, extent_of(one), one);
    }
    return after;
}

result executor::operate_on_pointers(clang::BinaryOperatorKind kind, const result& left,
                                     const clang::QualType& left_type, const result& right,
                                     const clang::QualType& right_type, const clang::Expr& expression) {
    const bool difference = kind == clang::BO_Sub && right_type->isPointerType();
    if (!is_comparison(kind) && !difference) {
        const bool pointer_left = left_type->isPointerType();
        return moved(pointer_left ? left : right, pointer_left ? left_type : right_type, pointer_left ? right : left,
                     kind == clang::BO_Sub, expression);
    }
    const bool functions = left.is == result::kind::function || right.is == result::kind::function;
    const bool equality = kind == clang::BO_EQ || kind == clang::BO_NE;
    if (functions && equality) {
        return number(
            conditions_.boolean((left.is == right.is && left.function == right.function) == (kind == clang::BO_EQ)));
    }
    if (left.is != result::kind::pointer || right.is != result::kind::pointer) {
        refuse(message_id::unknown_pointer, range(expression));
    }
    const bool same = left.where.object == right.where.object;
    const std::int64_t distance = left.where.offset - right.where.offset;
    if (equality) {
        return number(conditions_.boolean((same && distance == 0) == (kind == clang::BO_EQ)));
    }
    if (!same) {
        refuse(message_id::pointer_arithmetic, range(expression));
    }
    if (difference) {
        const std::int64_t size = step_of(left_type, expression);
        return number(values_.make_integer(static_cast<std::int32_t>(distance / std::max<std::int64_t>(size, 1))));
    }
    const value_id a = values_.make_integer(static_cast<std::int32_t>(distance));
    return compare(kind, number_format::integer, a, values_.make_integer(0), range(expression));
}

}  // namespace xfc::flow
