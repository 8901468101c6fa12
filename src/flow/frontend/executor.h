#pragma once

#include <clang/AST/ASTContext.h>
#include <clang/AST/Decl.h>
#include <clang/AST/Expr.h>
#include <clang/AST/Stmt.h>
#include <llvm/ADT/DenseMap.h>

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/frontend/conditions.h"
#include "flow/frontend/frontend.h"
#include "flow/frontend/known_functions.h"
#include "flow/frontend/memory.h"
#include "flow/frontend/parser.h"
#include "flow/graph/program.h"

namespace xfc::flow {

class executor;

/// A stretch of source, or the statement that stands there: its ends are looked up only for those who ask, since of
/// most expressions nobody does.
class asked_range {
public:
    asked_range() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a stretch that is known serves as well.
    asked_range(source_range known) : known_(known) {}
    asked_range(const executor& owner, const clang::Stmt& statement) : owner_(&owner), statement_(&statement) {}

    // NOLINTNEXTLINE(google-explicit-constructor): whoever needs the stretch itself asks by taking it.
    operator source_range() const;

private:
    source_range known_ = {};
    const executor* owner_ = nullptr;
    const clang::Stmt* statement_ = nullptr;
};

/// Ends the following of a program; what is wrong has been reported.
struct refusal {};

/// A number type of C as the graph sees it.
struct scalar_type {
    number_format format = number_format::integer;
    std::uint32_t bytes = 4;
    bool is_signed = true;

    [[nodiscard]] bool is_integer() const { return format == number_format::integer; }
    /// Whether 32 bits hold its numbers with their sign; of those that have 32 themselves it makes no difference.
    [[nodiscard]] bool sign_extended() const { return !is_integer() || is_signed || bytes >= 4; }
};

/// The type of a whole object of the memory.
[[nodiscard]] inline clang::QualType type_of(const object& one) {
    return clang::QualType::getFromOpaquePtr(const_cast<void*>(one.type));
}

/// The number type of one of C's own types, as the target has it; nothing for types without a format in hardware.
[[nodiscard]] std::optional<scalar_type> scalar_of_builtin(clang::BuiltinType::Kind kind);

/// The result of an expression.
struct result {
    enum class kind : std::uint8_t {
        nothing,  ///< of type void
        number,   ///< `number`, perhaps in a narrower format than C's type: see `flexible`
        pointer,  ///< to `where`; no_object: null
        unknown_pointer,
        aggregate,  ///< a structure or union that stands at `where`
        function,   ///< `function`
    };

    kind is = kind::nothing;
    value_id number = no_value;
    /// A floating constant without suffix, or computed from such alone: takes the other operand's format.
    bool flexible = false;
    const clang::FloatingLiteral* literal = nullptr;  ///< when it is this constant alone,
    bool negated = false;                             ///< or its negative
    place where = {};
    const clang::FunctionDecl* function = nullptr;
};

/// How a statement is left, as conditions relative to its start.
struct flow_of {
    value_id returned;
    value_id broke;
    value_id continued;
};

/// Follows a parsed program. One object follows one program.
class executor {
public:
    executor(clang::ASTContext& context, const frontend_options& options, diagnostics& messages,
             const stack_watch& stack);

    /// Finds the top, follows it and gives the program without its places. Throws a refusal.
    [[nodiscard]] program run(const std::string& base_name);

    /// Where a statement stands; looked up once.
    [[nodiscard]] source_range range_of_statement(const clang::Stmt& statement) const;

private:
    // ---- top.cpp: which functions run, and what their ports are ----
    struct port_place {
        std::string name;
        std::string access;
        scalar_type type;
        std::string c_type;
        place where;
    };
    /// A variable or parameter that may become ports.
    struct candidate {
        object_id object;
        std::string access;
        bool may_be_output;
        bool is_result;
        std::uint32_t function = 0;  ///< of a result: the place of its function among those that run
    };

    struct leaf {
        place where;
        scalar_type type;
    };

    void collect_functions(std::vector<const clang::FunctionDecl*>& functions);
    std::vector<const clang::FunctionDecl*> choose_top();
    void follow_function(const clang::FunctionDecl& function);
    void follow_whole_file(const std::vector<const clang::FunctionDecl*>& functions);
    void create_parameter(const clang::ParmVarDecl& declaration);
    void describe_object(clang::QualType held, parameter& described) const;
    [[nodiscard]] std::string type_text(const clang::QualType& type, bool& has_own_type) const;
    void run_top_body(const clang::FunctionDecl& function);
    void add_variable(object_id id, const clang::VarDecl& variable);
    void initialize_globals();
    void list_ports(const clang::QualType& type, const place& where, const std::string& name, const std::string& access,
                    std::vector<port_place>& ports) const;
    bool is_output(const candidate& variable, const port_place& one) const;
    value_id output_value(const port_place& one);
    void finish_graph();
    void give_legal_names(std::vector<port>& inputs, std::vector<port>& outputs);
    void report_unused(const std::vector<bool>& is_port);
    void report_unused_elements(const candidate& variable, const std::vector<port_place>& places,
                                const std::unordered_map<std::uint32_t, value_id>& inputs);
    void check_kept_values();
    void note_deviations();

    // ---- statements.cpp ----
    flow_of execute(const clang::Stmt& statement);
    flow_of execute_sequence(std::span<const clang::Stmt* const> statements);
    flow_of execute_declarations(const clang::DeclStmt& statement, bool is_declared = false);
    flow_of execute_if(const clang::IfStmt& statement);
    flow_of execute_return(const clang::ReturnStmt& statement);
    struct loop_parts {
        const clang::Expr* condition;  ///< null: always
        const clang::Expr* step;       ///< null: none
        const clang::Stmt& body;
        bool body_first;
        source_range where;
    };
    flow_of execute_loop(const loop_parts& loop);
    value_id run_rounds(const loop_parts& loop, int round);
    flow_of execute_switch(const clang::SwitchStmt& statement);
    [[nodiscard]] flow_of straight_on() const { return {no_, no_, no_}; }
    value_id left(const flow_of& flow, const asked_range& where);
    flow_of under(value_id condition, const flow_of& flow, const asked_range& where);
    void add_flow(flow_of& total, const flow_of& more, const asked_range& where);
    value_id case_matches(const clang::SwitchCase& label, const result& selector, const clang::Expr& condition);

    /// Runs what the condition guards; both ways are followed when it is not known, and memory merged behind them.
    void guarded(value_id condition, const asked_range& where, const std::function<void()>& yes,
                 const std::function<void()>& no = {});
    void merge(value_id condition, const asked_range& where, std::span<const memory::change> yes,
               std::span<const memory::change> no);
    value_id chosen(value_id condition, value_id yes, value_id no, const asked_range& where);
    cell merged(value_id condition, std::uint32_t index, const cell& yes, const cell& no, const asked_range& where);

    // ---- objects.cpp: variables and what they hold ----
    object_id create_object(const clang::QualType& type, std::string name, const asked_range& where);
    object_id object_of(const clang::VarDecl& variable);
    object_id declare(const clang::VarDecl& variable);
    void end_lives(std::size_t first);
    void protect(object_id id, const clang::QualType& type);
    void check_writable(const place& where, const asked_range& range);
    void check_target(const place& where, const clang::Expr& target);
    void check_object_type(const clang::QualType& type, const std::string& name, const asked_range& where);
    void initialize(const place& where, const clang::QualType& type, const clang::Expr& initializer);
    void initialize_from_list(const place& where, const clang::QualType& type, const clang::InitListExpr& list);
    void set_zero(const place& where, const clang::QualType& type, const asked_range& range);
    void set_text(const place& where, const clang::QualType& type, const clang::StringLiteral& text);
    void store(const place& where, const clang::QualType& type, const result& what, const asked_range& range);
    result load(const place& where, const clang::QualType& type, const asked_range& range);
    void check_set(const place& where, const cell& found, const asked_range& range);
    result load_number(const place& where, const scalar_type& type, const cell& found, const asked_range& range);
    result load_pointer(const cell& found, const asked_range& range);
    void copy(const place& to, const place& from, const clang::QualType& type, const asked_range& range);
    value_id unset_value(std::uint32_t index, const place& where, const scalar_type& type);
    [[nodiscard]] std::optional<cell> input_cell(const place& where);
    value_id value_as(const cell& found, const scalar_type& type, const asked_range& where);
    void check_place(const place& where, std::uint32_t bytes, const asked_range& range);
    [[nodiscard]] place place_of_index(std::uint32_t index) const;
    [[nodiscard]] std::uint32_t bytes_of(const clang::QualType& type) const;
    std::uint32_t granule_of(const clang::QualType& type) const;
    [[nodiscard]] std::optional<scalar_type> scalar_at(clang::QualType type, std::uint32_t offset) const;
    [[nodiscard]] std::string extent_of(const object& one) const;
    void create_globals();
    void create_static(const clang::VarDecl& variable);

    // ---- expressions.cpp ----
    result evaluate(const clang::Expr& expression);
    place address_of(const clang::Expr& expression);
    place address_of_literal(const clang::CompoundLiteralExpr& expression);
    result evaluate_unary(const clang::UnaryOperator& expression);
    result evaluate_binary(const clang::BinaryOperator& expression);
    result evaluate_logical(const clang::BinaryOperator& expression);
    result evaluate_assignment(const clang::BinaryOperator& expression);
    result evaluate_compound_assignment(const clang::CompoundAssignOperator& expression);
    result evaluate_conditional(const clang::AbstractConditionalOperator& expression);
    result evaluate_cast(const clang::CastExpr& expression);
    result evaluate_increment(const clang::UnaryOperator& expression);
    result evaluate_floating_literal(const clang::FloatingLiteral& literal);
    result evaluate_known(const clang::Expr& expression);
    result operate(clang::BinaryOperatorKind kind, const result& left, const clang::QualType& left_type,
                   const result& right, const clang::QualType& right_type, const clang::QualType& type,
                   const clang::Expr& expression);
    result operate_on_pointers(clang::BinaryOperatorKind kind, const result& left, const clang::QualType& left_type,
                               const result& right, const clang::QualType& right_type, const clang::Expr& expression);
    result operate_on_integers(clang::BinaryOperatorKind kind, const result& left, const result& right,
                               const scalar_type& type, const clang::Expr& expression);
    /// Whether a number is below 2^31 whatever the inputs are, so that signed operations are right.
    bool is_never_negative(value_id integer) { return integer_ranges_.of(integer).low >= 0; }
    result order_unsigned(clang::BinaryOperatorKind kind, value_id a, value_id b, const asked_range& where);
    value_id divide_unsigned(value_id a, value_id b, const asked_range& where);
    value_id remainder_unsigned(value_id a, value_id b, const asked_range& where);
    value_id unsigned_to_floating(value_id integer, number_format format, const asked_range& where);
    value_id floating_to_unsigned(value_id floating, const asked_range& where);
    result operate_on_floats(clang::BinaryOperatorKind kind, const result& left, const result& right,
                             const clang::Expr& expression);
    result compare(clang::BinaryOperatorKind kind, number_format format, value_id left, value_id right,
                   const asked_range& where);
    bool is_choice_of_constants(value_id number);
    value_id on_each_choice(value_id number, std::unordered_map<value_id, value_id>& known, const asked_range& where,
                            const std::function<value_id(value_id)>& of_constant);
    result moved(const result& pointer, const clang::QualType& pointer_type, const result& count, bool back,
                 const clang::Expr& expression);
    std::int64_t step_of(const clang::QualType& pointer_type, const clang::Expr& expression);
    place element_of(const clang::ArraySubscriptExpr& expression, bool may_be_behind);

    // ---- conversions.cpp: numbers from one format to another ----
    [[nodiscard]] std::optional<scalar_type> find_scalar(const clang::QualType& type) const;
    scalar_type scalar_of(const clang::QualType& type, const asked_range& where);
    [[noreturn]] void refuse_type(const clang::QualType& type, const asked_range& where);
    result converted(const result& from, const clang::QualType& from_type, const clang::QualType& to_type,
                     const asked_range& where);
    value_id in_format(const result& from, number_format format, const asked_range& where);
    value_id narrowed_constant(const result& from, const asked_range& where);
    value_id wrapped(value_id integer, const scalar_type& type, const asked_range& where);
    value_id truth(const result& from, const clang::Expr& expression);
    value_id truth(const result& from, const asked_range& where);
    number_format common_format(std::span<const result* const> operands, const asked_range& where);
    void note_deviation(const result& constant, const asked_range& where);
    value_id make(operation op, number_format format, std::initializer_list<value_id> operands,
                  const asked_range& where);
    result number(value_id id) const;

    // ---- calls.cpp ----
    result call(const clang::CallExpr& expression, bool discarded);
    const clang::FunctionDecl& callee_of(const clang::CallExpr& expression);
    [[nodiscard]] bool is_library_call(llvm::StringRef name, const clang::FunctionDecl& function,
                                       const clang::CallExpr& expression) const;
    [[nodiscard]] bool is_declared_as(const known_function& row, const clang::FunctionDecl& function) const;
    result call_known(const known_function& row, const clang::FunctionDecl& function,
                      const clang::CallExpr& expression);
    result call_power(const clang::FunctionDecl& function, const clang::CallExpr& expression);
    result call_with_body(const clang::FunctionDecl& function, const clang::CallExpr& expression, bool discarded);
    void run_body(const clang::FunctionDecl& function);

    // ---- builtins.cpp: what the compiler itself declares ----
    std::optional<result> call_builtin(llvm::StringRef name, const clang::CallExpr& expression);
    std::optional<result> classify(llvm::StringRef name, const clang::CallExpr& expression);
    void check_assertion(const clang::Expr& condition);
    [[nodiscard]] clang::QualType element_type(const clang::Expr& pointer, const place& where) const;
    [[nodiscard]] bool is_one_type(const clang::QualType& left, const clang::QualType& right) const;
    std::int64_t element_count(const clang::CallExpr& expression, const clang::QualType& type);
    result copy_elements(const clang::CallExpr& expression);
    result clear_elements(const clang::CallExpr& expression);
    place pointed_at(const clang::Expr& pointer);
    [[nodiscard]] bool is_built_in(const clang::FunctionDecl& function) const;
    [[noreturn]] void refuse_call(const clang::FunctionDecl& function, const clang::CallExpr& expression);

    // ---- everything ----
    [[noreturn]] void refuse(message_id id, const asked_range& where,
                             std::initializer_list<std::string_view> arguments = {});
    [[noreturn]] void refuse_with_note(message_id id, const asked_range& where,
                                       std::initializer_list<std::string_view> arguments, message_id note,
                                       const asked_range& note_where,
                                       std::initializer_list<std::string_view> note_arguments);
    [[noreturn]] void refuse_outside(const asked_range& range, std::string_view name, std::string_view extent,
                                     const object& one);
    void add_call_notes();
    [[nodiscard]] asked_range range(const clang::Stmt& statement) const { return {*this, statement}; }
    [[nodiscard]] source_range range(clang::SourceRange where) const;
    void count_step(const clang::Stmt& statement);

    struct frame {
        const clang::FunctionDecl* function = nullptr;
        source_range call_place = {};
        call_id call = 0;
        place returned = {};
        bool left_without_value = false;  ///< by a return that should have had one
        llvm::DenseMap<const clang::VarDecl*, object_id> locals{};
        llvm::DenseMap<const clang::Expr*, object_id> literals{};  ///< compound ones
    };

    clang::ASTContext& context_;
    const frontend_options& options_;
    diagnostics& messages_;
    const stack_watch& stack_;

    graph values_;
    integer_ranges integer_ranges_{values_};
    conditions conditions_{values_, integer_ranges_};
    value_id yes_ = conditions_.boolean(true);
    value_id no_ = conditions_.boolean(false);
    decisions decisions_{values_, integer_ranges_};
    memory memory_;
    program program_;

    token_ends ends_;
    struct known_range {
        const clang::Stmt* statement = nullptr;
        source_range range = {};
    };
    /// Those asked for last, each in the place of its hash: the same is asked for again at once, and in every round.
    mutable std::vector<known_range> ranges_ = std::vector<known_range>(4096);
    mutable const clang::Type* last_type_ = nullptr;  ///< that a scalar was asked of
    mutable std::optional<scalar_type> last_scalar_ = std::nullopt;
    std::vector<frame> frames_;
    llvm::DenseMap<const clang::VarDecl*, object_id> globals_;
    llvm::DenseMap<const clang::Expr*, object_id> literals_;  ///< strings
    llvm::DenseMap<const clang::OpaqueValueExpr*, result> opaque_;
    llvm::DenseMap<llvm::StringRef, const clang::FunctionDecl*> bodies_;
    std::vector<const clang::FunctionDecl*> functions_by_number_;
    std::unordered_map<std::uint32_t, value_id> unset_values_;  ///< by cell
    mutable llvm::DenseMap<const clang::Type*, std::uint32_t> granules_;
    std::vector<leaf> leaves_;                                  ///< by port number of the working graph
    std::unordered_map<value_id, source_range> branch_places_;  ///< where a condition was asked
    std::unordered_map<std::uint32_t, source_range> initial_reads_;
    std::unordered_map<std::uint32_t, source_range> kept_writes_;

    /// A comparison with a constant.
    struct question {
        clang::BinaryOperatorKind kind;
        value_id constant;
        bool swapped;
        value_id counted;                                   ///< what was done to the choice before, no_value: nothing
        auto operator<=>(const question&) const = default;  // NOLINT(modernize-use-nullptr): the 0 is the compiler's
    };
    std::unordered_map<value_id, bool> of_constants_;                     ///< whether a value is a choice of constants
    std::map<question, std::unordered_map<value_id, value_id>> answers_;  ///< for each choice of constants

    llvm::DenseSet<const clang::Expr*> told_assertions_;

    std::vector<object_id> living_;      ///< local variables whose blocks are open, in the order of their declarations
    std::vector<candidate> candidates_;  ///< in the order of their declarations
    bool older_ = false;                 ///< the file is followed as older sources are written
    int scope_depth_ = 0;
    int depth_ = 0;  ///< of expressions
    std::size_t steps_ = 0;
    std::size_t deviations_ = 0;
    source_range first_deviation_ = {};
};

inline asked_range::operator source_range() const {
    return statement_ == nullptr ? known_ : owner_->range_of_statement(*statement_);
}

}  // namespace xfc::flow
