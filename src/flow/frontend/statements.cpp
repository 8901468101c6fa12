// Statements: which of them run, under which conditions.

#include <algorithm>

#include "flow/frontend/executor.h"
#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

constexpr std::size_t most_steps = 50000000;  // statements and calls
constexpr value_id most_values = 20000000;

/// Everything that is known about the way is forgotten at its end, whichever way that comes.
class assumption {
public:
    assumption(conditions& all, value_id condition, bool truth) : all_(all) { all_.assume(condition, truth); }
    ~assumption() { all_.forget(); }
    assumption(const assumption&) = delete;
    assumption& operator=(const assumption&) = delete;

private:
    conditions& all_;
};

}  // namespace

void executor::count_step(const clang::Stmt& statement) {
    if (stack_.exhausted()) {
        refuse(message_id::nesting_too_deep, range(statement));
    }
    if (++steps_ > most_steps) {
        refuse(message_id::too_many_steps, range(statement), {std::to_string(most_steps)});
    }
    if (values_.size() > most_values) {
        refuse(message_id::too_many_values, range(statement), {std::to_string(most_values)});
    }
}

value_id executor::left(const flow_of& flow, source_range where) {
    return conditions_.either(flow.returned, conditions_.either(flow.broke, flow.continued, where), where);
}

flow_of executor::under(value_id condition, const flow_of& flow, source_range where) {
    return {conditions_.both(condition, flow.returned, where), conditions_.both(condition, flow.broke, where),
            conditions_.both(condition, flow.continued, where)};
}

void executor::add_flow(flow_of& total, const flow_of& more, source_range where) {
    total.returned = conditions_.either(total.returned, more.returned, where);
    total.broke = conditions_.either(total.broke, more.broke, where);
    total.continued = conditions_.either(total.continued, more.continued, where);
}

void executor::guarded(value_id condition, source_range where, const std::function<void()>& yes,
                       const std::function<void()>& no) {
    if (const auto known = conditions_.truth_of(condition)) {
        if (*known) {
            yes();
        } else if (no) {
            no();
        }
        return;
    }
    branch_places_.emplace(condition, where);
    std::vector<memory::change> yes_changes;
    std::vector<memory::change> no_changes;
    {
        const assumption holds(conditions_, condition, true);
        memory_.begin_branch();
        yes();
        yes_changes = memory_.end_branch();
    }
    if (no) {
        const assumption fails(conditions_, condition, false);
        memory_.begin_branch();
        no();
        no_changes = memory_.end_branch();
    }
    merge(condition, where, yes_changes, no_changes);
}

void executor::merge(value_id condition, source_range where, std::span<const memory::change> yes,
                     std::span<const memory::change> no) {
    auto y = yes.begin();
    auto n = no.begin();
    while (y != yes.end() || n != no.end()) {
        const bool from_yes = y != yes.end() && (n == no.end() || y->index <= n->index);
        const bool from_no = n != no.end() && (y == yes.end() || n->index <= y->index);
        const std::uint32_t index = from_yes ? y->index : n->index;
        const cell before = memory_.at(index);
        const cell yes_cell = from_yes ? y->now : before;
        const cell no_cell = from_no ? n->now : before;
        memory_.set(index, merged(condition, index, yes_cell, no_cell, where));
        y += from_yes ? 1 : 0;
        n += from_no ? 1 : 0;
    }
}

cell executor::merged(value_id condition, std::uint32_t index, const cell& yes, const cell& no, source_range where) {
    if (yes == no) {
        return yes;
    }
    cell both = yes;
    both.initial = yes.initial || no.initial;
    const auto is_value = [](const cell& one) { return one.kind == cell_kind::number || one.kind == cell_kind::unset; };
    if (yes.kind == no.kind && yes.content == no.content && yes.offset == no.offset && yes.bytes == no.bytes) {
        return both;
    }
    if (!is_value(yes) || !is_value(no)) {
        const auto is_pointer = [](const cell& one) {
            return one.kind == cell_kind::pointer || one.kind == cell_kind::function ||
                   one.kind == cell_kind::unknown_pointer || one.kind == cell_kind::unset;
        };
        both.bytes = std::max(yes.bytes, no.bytes);
        both.kind = is_pointer(yes) && is_pointer(no) ? cell_kind::unknown_pointer : cell_kind::torn;
        return both;
    }
    // One of them is a number; the other one is given its format.
    const cell& shape = yes.kind == cell_kind::number ? yes : no;
    const auto value_in = [&](const cell& one) {
        if (one.kind == cell_kind::number) {
            return one.content;
        }
        const place at = place_of_index(index);
        const clang::QualType type = clang::QualType::getFromOpaquePtr(const_cast<void*>(memory_[at.object].type));
        scalar_type scalar{values_[shape.content].format, shape.bytes, true};
        if (const auto declared = scalar_at(type, static_cast<std::uint32_t>(at.offset));
            declared && declared->format == scalar.format && declared->bytes == scalar.bytes) {
            scalar = *declared;
        }
        return unset_value(index, at, scalar);
    };
    value_id yes_number = value_in(yes);
    value_id no_number = value_in(no);
    if (values_[yes_number].format != values_[no_number].format || (yes.kind == no.kind && yes.bytes != no.bytes)) {
        both.kind = cell_kind::torn;
        return both;
    }
    const auto same_choice = [&](value_id id) {
        return values_[id].op == operation::select && values_[id].operands[0] == condition;
    };
    while (same_choice(yes_number)) {
        yes_number = values_[yes_number].operands[1];
    }
    while (same_choice(no_number)) {
        no_number = values_[no_number].operands[2];
    }
    both.kind = cell_kind::number;
    both.bytes = shape.bytes;
    const number_format format = values_[yes_number].format;
    both.content = format == number_format::boolean && !is_perhaps_unset(yes_number) && !is_perhaps_unset(no_number)
                       ? conditions_.choose(condition, yes_number, no_number, where)
                       : make(operation::select, format, {condition, yes_number, no_number}, where);
    if (is_perhaps_unset(yes_number) || is_perhaps_unset(no_number)) {
        perhaps_unset_.insert(both.content);
    }
    return both;
}

flow_of executor::execute(const clang::Stmt& statement) {
    count_step(statement);
    switch (statement.getStmtClass()) {
        case clang::Stmt::NullStmtClass:
            return straight_on();
        case clang::Stmt::CompoundStmtClass: {
            const auto& block = llvm::cast<clang::CompoundStmt>(statement);
            const std::vector<const clang::Stmt*> inner(block.body_begin(), block.body_end());
            ++scope_depth_;
            const flow_of flow = execute_sequence(inner);
            --scope_depth_;
            return flow;
        }
        case clang::Stmt::DeclStmtClass:
            return execute_declarations(llvm::cast<clang::DeclStmt>(statement));
        case clang::Stmt::IfStmtClass:
            return execute_if(llvm::cast<clang::IfStmt>(statement));
        case clang::Stmt::ForStmtClass: {
            const auto& loop = llvm::cast<clang::ForStmt>(statement);
            ++scope_depth_;
            if (loop.getInit() != nullptr) {
                (void)execute(*loop.getInit());
            }
            const flow_of flow = execute_loop(statement, loop.getCond(), loop.getInc(), *loop.getBody(), false);
            --scope_depth_;
            return flow;
        }
        case clang::Stmt::WhileStmtClass: {
            const auto& loop = llvm::cast<clang::WhileStmt>(statement);
            return execute_loop(statement, loop.getCond(), nullptr, *loop.getBody(), false);
        }
        case clang::Stmt::DoStmtClass: {
            const auto& loop = llvm::cast<clang::DoStmt>(statement);
            return execute_loop(statement, loop.getCond(), nullptr, *loop.getBody(), true);
        }
        case clang::Stmt::SwitchStmtClass:
            return execute_switch(llvm::cast<clang::SwitchStmt>(statement));
        case clang::Stmt::ReturnStmtClass:
            return execute_return(llvm::cast<clang::ReturnStmt>(statement));
        case clang::Stmt::BreakStmtClass:
            return {no_, yes_, no_};
        case clang::Stmt::ContinueStmtClass:
            return {no_, no_, yes_};
        case clang::Stmt::LabelStmtClass:
            return execute(*llvm::cast<clang::LabelStmt>(statement).getSubStmt());
        case clang::Stmt::AttributedStmtClass:
            return execute(*llvm::cast<clang::AttributedStmt>(statement).getSubStmt());
        case clang::Stmt::CaseStmtClass:
        case clang::Stmt::DefaultStmtClass:
            refuse(message_id::case_inside, range(statement));
        case clang::Stmt::GotoStmtClass:
        case clang::Stmt::IndirectGotoStmtClass:
            refuse(message_id::goto_statement, range(statement));
        case clang::Stmt::GCCAsmStmtClass:
        case clang::Stmt::MSAsmStmtClass:
            refuse(message_id::inline_assembly, range(statement));
        default:
            break;
    }
    const auto* expression = llvm::dyn_cast<clang::Expr>(&statement);
    if (expression == nullptr) {
        refuse(message_id::other_expression, range(statement), {"this statement"});
    }
    if (const auto* called = llvm::dyn_cast<clang::CallExpr>(expression->IgnoreParens())) {
        (void)call(*called, true);
    } else {
        (void)evaluate(*expression);
    }
    return straight_on();
}

/// Runs statements one behind the other; behind one that may have been left, only under the condition that it was not.
flow_of executor::execute_sequence(std::span<const clang::Stmt* const> statements) {
    flow_of total = straight_on();
    value_id alive = yes_;
    std::size_t next = 0;
    while (next < statements.size() && alive != no_) {
        const source_range where = range(*statements[next]);
        flow_of flow = straight_on();
        guarded(alive, where, [&] {
            while (next < statements.size() && left(flow, where) == no_) {
                flow = execute(*statements[next++]);
            }
        });
        if (left(flow, where) == no_) {
            break;
        }
        add_flow(total, under(alive, flow, where), where);
        alive = conditions_.both(alive, conditions_.inverse(left(flow, where), where), where);
    }
    return total;
}

flow_of executor::execute_declarations(const clang::DeclStmt& statement) {
    for (const clang::Decl* one : statement.decls()) {
        const auto* variable = llvm::dyn_cast<clang::VarDecl>(one);
        if (variable == nullptr || variable->isStaticLocal() || variable->hasExternalStorage()) {
            continue;  // types, functions, and what stands since the beginning
        }
        const object_id id = declare(*variable);
        if (older_ && frames_.size() == 1 && scope_depth_ == 1) {
            add_variable(id, *variable);
        }
        if (variable->hasInit()) {
            initialize({id, 0}, variable->getType(), *variable->getInit());
        }
    }
    return straight_on();
}

flow_of executor::execute_if(const clang::IfStmt& statement) {
    const value_id condition = truth(evaluate(*statement.getCond()), *statement.getCond());
    const source_range where = range(*statement.getCond());
    flow_of yes = straight_on();
    flow_of no = straight_on();
    const auto other = [&] {
        if (statement.getElse() != nullptr) {
            no = execute(*statement.getElse());
        }
    };
    guarded(
        condition, where, [&] { yes = execute(*statement.getThen()); }, other);
    if (const auto known = conditions_.truth_of(condition)) {
        return *known ? yes : no;
    }
    return {conditions_.choose(condition, yes.returned, no.returned, where),
            conditions_.choose(condition, yes.broke, no.broke, where),
            conditions_.choose(condition, yes.continued, no.continued, where)};
}

flow_of executor::execute_return(const clang::ReturnStmt& statement) {
    if (const clang::Expr* what = statement.getRetValue()) {
        const result given = evaluate(*what);
        if (given.is != result::kind::nothing && frames_.back().returned.object != no_object) {
            store(frames_.back().returned, frames_.back().function->getReturnType(), given, range(*what));
        }
    }
    return {yes_, no_, no_};
}

flow_of executor::execute_loop(const clang::Stmt& statement, const clang::Expr* condition, const clang::Expr* step,
                               const clang::Stmt& body, bool body_first) {
    const source_range where = condition != nullptr ? range(*condition) : range(statement.getBeginLoc());
    value_id alive = yes_;
    value_id returned = no_;
    for (int round = 0;; ++round) {
        if (condition != nullptr && !(body_first && round == 0)) {
            value_id more = yes_;
            guarded(alive, where, [&] {
                more = truth(evaluate(*condition), *condition);
                if (const auto known = conditions_.truth_of(more)) {
                    more = conditions_.boolean(*known);
                }
            });
            alive = conditions_.both(alive, more, where);
        }
        if (alive == no_ || conditions_.truth_of(alive) == false) {
            break;
        }
        if (round >= options_.unroll_limit) {
            const bool unknown = condition == nullptr || alive != yes_;
            refuse(unknown ? message_id::loop_without_end : message_id::loop_too_long, where,
                   {std::to_string(options_.unroll_limit)});
        }
        flow_of flow = straight_on();
        guarded(alive, where, [&] { flow = execute(body); });
        returned = conditions_.either(returned, conditions_.both(alive, flow.returned, where), where);
        const value_id ended = conditions_.either(flow.returned, flow.broke, where);
        alive = conditions_.both(alive, conditions_.inverse(ended, where), where);
        if (step != nullptr && alive != no_) {
            guarded(alive, where, [&] { (void)evaluate(*step); });
        }
    }
    return {returned, no_, no_};
}

value_id executor::case_matches(const clang::SwitchCase& label, const result& selector, const clang::Expr& condition) {
    const auto& one = llvm::cast<clang::CaseStmt>(label);
    const source_range where = range(*one.getLHS());
    const scalar_type type = scalar_of(condition.getType(), where);
    const auto constant = [&](const clang::Expr& expression) {
        const auto bits = expression.EvaluateKnownConstInt(context_).getExtValue();
        return number(values_.make_integer(static_cast<std::int32_t>(bits)));
    };
    const value_id low = constant(*one.getLHS()).number;
    const value_id selected = in_format(selector, number_format::integer, where);
    if (one.getRHS() == nullptr) {
        return make(operation::equal, number_format::boolean, {selected, low}, where);
    }
    const result first = operate_on_integers(clang::BO_LE, number(low), number(selected), type, *one.getLHS());
    const result last =
        operate_on_integers(clang::BO_LE, number(selected), constant(*one.getRHS()), type, *one.getLHS());
    return conditions_.both(first.number, last.number, where);
}

/// A switch is left by break and entered at one label; statements run where one of the labels above them was hit.
flow_of executor::execute_switch(const clang::SwitchStmt& statement) {
    const clang::Expr& condition = *statement.getCond();
    const result selector = evaluate(condition);
    const source_range where = range(condition);
    std::vector<const clang::Stmt*> body = {statement.getBody()};
    if (const auto* block = llvm::dyn_cast<clang::CompoundStmt>(statement.getBody())) {
        body.assign(block->body_begin(), block->body_end());
    }
    // Labels in the body itself; whatever is deeper is refused when it is met.
    std::vector<std::vector<const clang::SwitchCase*>> labels(body.size());
    value_id matched = no_;
    llvm::DenseMap<const clang::SwitchCase*, value_id> matches;
    for (std::size_t index = 0; index < body.size(); ++index) {
        while (const auto* label = llvm::dyn_cast<clang::SwitchCase>(body[index])) {
            labels[index].push_back(label);
            body[index] = label->getSubStmt();
            if (llvm::isa<clang::CaseStmt>(label)) {
                matches[label] = case_matches(*label, selector, condition);
                matched = conditions_.either(matched, matches[label], where);
            }
        }
    }
    for (const clang::SwitchCase* label = statement.getSwitchCaseList(); label != nullptr;
         label = label->getNextSwitchCase()) {
        const bool direct = matches.contains(label) || std::any_of(labels.begin(), labels.end(), [&](const auto& some) {
                                return std::find(some.begin(), some.end(), label) != some.end();
                            });
        if (!direct) {
            refuse(message_id::case_inside, range(*label));
        }
    }
    ++scope_depth_;
    flow_of total = straight_on();
    value_id alive = no_;
    for (std::size_t index = 0; index < body.size(); ++index) {
        for (const clang::SwitchCase* label : labels[index]) {
            const value_id enters =
                llvm::isa<clang::CaseStmt>(label) ? matches[label] : conditions_.inverse(matched, where);
            alive = conditions_.either(alive, enters, where);
        }
        if (const auto known = conditions_.truth_of(alive); known == false) {
            continue;
        }
        const source_range here = range(*body[index]);
        flow_of flow = straight_on();
        guarded(alive, here, [&] { flow = execute(*body[index]); });
        const value_id gone = left(flow, here);
        if (gone != no_) {
            add_flow(total, under(alive, flow, here), here);
            alive = conditions_.both(alive, conditions_.inverse(gone, here), here);
        }
    }
    --scope_depth_;
    total.broke = no_;
    return total;
}

}  // namespace xfc::flow
