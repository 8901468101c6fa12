// Statements: which of them run, under which conditions.

#include <algorithm>

#include "flow/frontend/executor.h"
#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

constexpr std::size_t most_steps = 3000000;  // statements and calls

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
    if (values_.size() > options_.most_values) {
        refuse(message_id::too_many_values, range(statement), {std::to_string(options_.most_values)});
    }
}

value_id executor::left(const flow_of& flow, const asked_range& where) {
    return conditions_.either(flow.returned, conditions_.either(flow.broke, flow.continued, where), where);
}

flow_of executor::under(value_id condition, const flow_of& flow, const asked_range& where) {
    return {conditions_.both(condition, flow.returned, where), conditions_.both(condition, flow.broke, where),
            conditions_.both(condition, flow.continued, where)};
}

void executor::add_flow(flow_of& total, const flow_of& more, const asked_range& where) {
    total.returned = conditions_.either(total.returned, more.returned, where);
    total.broke = conditions_.either(total.broke, more.broke, where);
    total.continued = conditions_.either(total.continued, more.continued, where);
}

void executor::guarded(value_id condition, const asked_range& where, const std::function<void()>& yes,
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

void executor::merge(value_id condition, const asked_range& where, std::span<const memory::change> yes,
                     std::span<const memory::change> no) {
    while (values_[condition].op == operation::bit_not) {
        condition = values_[condition].operands[0];
        std::swap(yes, no);
    }
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

cell executor::merged(value_id condition, std::uint32_t index, const cell& yes, const cell& no,
                      const asked_range& where) {
    if (yes == no) {
        return yes;
    }
    // What is set on one way only keeps that value, and remembers the way.
    const auto is_input = [&] {
        const place at = place_of_index(index);
        return memory_[at.object].rule == unset_rule::input;
    };
    const auto set_when = [&](const cell& one) {
        return one.kind == cell_kind::unset ? never : conditions_.known_choice(decisions_, one.set_when);
    };
    if ((yes.kind == cell_kind::unset || no.kind == cell_kind::unset) && !is_input()) {
        cell set = yes.kind == cell_kind::unset ? no : yes;
        set.set_when = decisions_.choose(condition, set_when(yes), set_when(no));
        return set;
    }
    cell both = yes;
    both.initial = yes.initial || no.initial;
    both.last = std::max(yes.last, no.last);
    if (yes.set_when != always || no.set_when != always) {
        both.set_when = decisions_.choose(condition, conditions_.known_choice(decisions_, yes.set_when),
                                          conditions_.known_choice(decisions_, no.set_when));
    }
    if (yes.kind == no.kind && yes.content == no.content && yes.offset == no.offset && yes.bytes == no.bytes &&
        yes.sign_extended == no.sign_extended) {
        return both;
    }
    const bool with_input = yes.kind == cell_kind::unset || no.kind == cell_kind::unset;
    if (with_input && (yes.kind == cell_kind::tail || no.kind == cell_kind::tail)) {
        both.kind = cell_kind::tail;  // of a scalar whose head meets the input
        return both;
    }
    if (yes.kind == no.kind && yes.kind != cell_kind::number) {
        const bool pointers = yes.kind != cell_kind::tail && yes.kind != cell_kind::torn;
        both.kind = pointers ? cell_kind::unknown_pointer : cell_kind::torn;
        return both;
    }
    if (!(yes.kind == cell_kind::number || yes.kind == cell_kind::unset) ||
        !(no.kind == cell_kind::number || no.kind == cell_kind::unset) ||
        (!with_input && (yes.bytes != no.bytes || values_[yes.content].format != values_[no.content].format))) {
        const auto points = [](const cell& one) {
            return one.kind == cell_kind::pointer || one.kind == cell_kind::function ||
                   one.kind == cell_kind::unknown_pointer;
        };
        both.kind = points(yes) && points(no) ? cell_kind::unknown_pointer : cell_kind::torn;
        return both;
    }
    both.kind = cell_kind::number;
    both.bytes = std::max(yes.bytes, no.bytes);
    const auto number_in = [&](const cell& one) {
        return one.kind == cell_kind::number ? one : input_cell(place_of_index(index)).value_or(one);
    };
    const cell from_yes = number_in(yes);
    const cell from_no = number_in(no);
    if (from_yes.kind != from_no.kind || from_yes.bytes != from_no.bytes) {
        both.kind = cell_kind::torn;
        return both;
    }
    both.sign_extended = from_yes.sign_extended;
    const bool same_signs = from_yes.sign_extended == from_no.sign_extended;
    const scalar_type as_yes{number_format::integer, from_yes.bytes, from_yes.sign_extended};
    both.content = chosen(condition, from_yes.content,
                          same_signs ? from_no.content : wrapped(from_no.content, as_yes, where), where);
    if (both.content == no_value) {
        both.kind = cell_kind::torn;
    }
    return both;
}

/// condition ? yes : no of two numbers; no_value when their formats differ.
value_id executor::chosen(value_id condition, value_id yes, value_id no, const asked_range& where) {
    const auto same_choice = [&](value_id id) {
        return values_[id].op == operation::select && values_[id].operands[0] == condition;
    };
    // A choice that is known here need not be carried along: a loop that is left early would gather all of its flags.
    const auto without_known = [&](value_id id) {
        if (values_[id].format != number_format::boolean) {
            return conditions_.known_choice(id);
        }
        const auto truth = conditions_.truth_of(id);
        return truth ? conditions_.boolean(*truth) : id;
    };
    yes = without_known(yes);
    no = without_known(no);
    while (same_choice(yes)) {
        yes = values_[yes].operands[1];
    }
    while (same_choice(no)) {
        no = values_[no].operands[2];
    }
    const number_format format = values_[yes].format;
    if (format != values_[no].format) {
        return no_value;
    }
    return format == number_format::boolean ? conditions_.choose(condition, yes, no, where)
                                            : make(operation::select, format, {condition, yes, no}, where);
}

flow_of executor::execute(const clang::Stmt& statement) {
    count_step(statement);
    const auto place_of = [&](const clang::Expr* condition) -> source_range {
        if (condition != nullptr) {
            return range(*condition);
        }
        return range(statement.getBeginLoc());
    };
    switch (statement.getStmtClass()) {
        case clang::Stmt::NullStmtClass:
            return straight_on();
        case clang::Stmt::CompoundStmtClass: {
            const auto& block = llvm::cast<clang::CompoundStmt>(statement);
            const std::vector<const clang::Stmt*> inner(block.body_begin(), block.body_end());
            const std::size_t outer = living_.size();
            ++scope_depth_;
            const flow_of flow = execute_sequence(inner);
            --scope_depth_;
            if (scope_depth_ > 0) {  // the function's own block ends with its parameters
                end_lives(outer);
            }
            return flow;
        }
        case clang::Stmt::DeclStmtClass:
            return execute_declarations(llvm::cast<clang::DeclStmt>(statement));
        case clang::Stmt::IfStmtClass:
            return execute_if(llvm::cast<clang::IfStmt>(statement));
        case clang::Stmt::ForStmtClass: {
            const auto& loop = llvm::cast<clang::ForStmt>(statement);
            const std::size_t outer = living_.size();
            ++scope_depth_;
            if (loop.getInit() != nullptr) {
                (void)execute(*loop.getInit());
            }
            const flow_of flow =
                execute_loop({loop.getCond(), loop.getInc(), *loop.getBody(), false, place_of(loop.getCond())});
            --scope_depth_;
            end_lives(outer);
            return flow;
        }
        case clang::Stmt::WhileStmtClass: {
            const auto& loop = llvm::cast<clang::WhileStmt>(statement);
            return execute_loop({loop.getCond(), nullptr, *loop.getBody(), false, place_of(loop.getCond())});
        }
        case clang::Stmt::DoStmtClass: {
            const auto& loop = llvm::cast<clang::DoStmt>(statement);
            return execute_loop({loop.getCond(), nullptr, *loop.getBody(), true, place_of(loop.getCond())});
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
    for (std::size_t next = 0; next < statements.size(); ++next) {
        const flow_of flow = execute(*statements[next]);
        const asked_range where = range(*statements[next]);
        const value_id gone = left(flow, where);
        if (gone == no_) {
            continue;
        }
        const value_id stays = conditions_.inverse(gone, where);
        flow_of rest = straight_on();
        guarded(stays, where, [&] { rest = execute_sequence(statements.subspan(next + 1)); });
        flow_of total = flow;
        add_flow(total, under(stays, rest, where), where);
        return total;
    }
    return straight_on();
}

namespace {

/// The variables that a declaration makes; not types, functions, and what stands since the beginning.
std::vector<const clang::VarDecl*> variables_of(const clang::DeclStmt& statement) {
    std::vector<const clang::VarDecl*> variables;
    for (const clang::Decl* one : statement.decls()) {
        const auto* variable = llvm::dyn_cast<clang::VarDecl>(one);
        if (variable != nullptr && !variable->isStaticLocal() && !variable->hasExternalStorage()) {
            variables.push_back(variable);
        }
    }
    return variables;
}

}  // namespace

flow_of executor::execute_declarations(const clang::DeclStmt& statement, bool is_declared) {
    for (const clang::VarDecl* variable : variables_of(statement)) {
        const object_id id = is_declared ? object_of(*variable) : declare(*variable);
        if (older_ && frames_.size() == 1 && scope_depth_ == 1) {
            add_variable(id, *variable);
        }
        if (variable->hasInit()) {
            initialize({id, 0}, variable->getType(), *variable->getInit());
            protect(id, variable->getType());
        }
    }
    return straight_on();
}

flow_of executor::execute_if(const clang::IfStmt& statement) {
    const value_id condition = truth(evaluate(*statement.getCond()), *statement.getCond());
    const asked_range where = range(*statement.getCond());
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
    } else {
        frames_.back().left_without_value = true;
    }
    return {yes_, no_, no_};
}

flow_of executor::execute_loop(const loop_parts& loop) { return {run_rounds(loop, 0), no_, no_}; }

/// Runs the rounds of a loop from this one on and gives the condition under which one of them returned. Behind a
/// condition that is not known all further rounds stand inside it.
value_id executor::run_rounds(const loop_parts& loop, int round) {
    const auto inside = [&](value_id condition, const std::function<value_id()>& rest) {
        value_id returned = no_;
        guarded(condition, loop.where, [&] { returned = rest(); });
        return conditions_.both(condition, returned, loop.where);
    };
    for (;; ++round) {
        const bool asked = loop.condition != nullptr && !(loop.body_first && round == 0);
        const value_id more = asked ? truth(evaluate(*loop.condition), *loop.condition) : yes_;
        const auto known = conditions_.truth_of(more);
        if (known == false) {
            return no_;
        }
        // Rounds that perhaps do not come stand inside each other, so there may be fewer of them.
        constexpr int share_of_unknown = 50;
        const int limit = known ? options_.unroll_limit : std::max(1, options_.unroll_limit / share_of_unknown);
        if (round >= limit) {
            const bool endless = !known || loop.condition == nullptr;
            refuse(endless ? message_id::loop_without_end : message_id::loop_too_long, loop.where,
                   {std::to_string(limit)});
        }
        const auto behind = [&](const flow_of& flow) {
            const value_id ended = conditions_.either(flow.returned, flow.broke, loop.where);
            const value_id stays = conditions_.inverse(ended, loop.where);
            const value_id later = inside(stays, [&] {
                if (loop.step != nullptr) {
                    (void)evaluate(*loop.step);
                }
                return run_rounds(loop, round + 1);
            });
            return conditions_.either(flow.returned, later, loop.where);
        };
        if (!known) {
            return inside(more, [&] { return behind(execute(loop.body)); });
        }
        const flow_of flow = execute(loop.body);
        if (conditions_.either(flow.returned, flow.broke, loop.where) != no_) {
            return behind(flow);
        }
        if (loop.step != nullptr) {
            (void)evaluate(*loop.step);
        }
    }
}

value_id executor::case_matches(const clang::SwitchCase& label, const result& selector, const clang::Expr& condition) {
    const auto& one = llvm::cast<clang::CaseStmt>(label);
    const asked_range where = range(*one.getLHS());
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
    const asked_range where = range(condition);
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
    const std::size_t outer = living_.size();
    ++scope_depth_;
    // Labels behind a declaration reach what it declares, though not its initializer.
    for (const clang::Stmt* one : body) {
        if (const auto* declaration = llvm::dyn_cast<clang::DeclStmt>(one)) {
            for (const clang::VarDecl* variable : variables_of(*declaration)) {
                (void)declare(*variable);
            }
        }
    }
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
        guarded(alive, here, [&] {
            const auto* declaration = llvm::dyn_cast<clang::DeclStmt>(body[index]);
            flow = declaration != nullptr ? execute_declarations(*declaration, true) : execute(*body[index]);
        });
        const value_id gone = left(flow, here);
        if (gone != no_) {
            add_flow(total, under(alive, flow, here), here);
            alive = conditions_.both(alive, conditions_.inverse(gone, here), here);
        }
    }
    --scope_depth_;
    end_lives(outer);
    total.broke = no_;
    return total;
}

}  // namespace xfc::flow
