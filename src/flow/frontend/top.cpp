// Which functions run, and what the ports are.

#include <clang/AST/RecordLayout.h>

#include <algorithm>
#include <utility>

#include "flow/frontend/executor.h"
#include "flow/graph/fold.h"
#include "flow/graph/port_names.h"

namespace xfc::flow {

executor::executor(clang::ASTContext& context, const frontend_options& options, diagnostics& messages,
                   const stack_watch& stack)
    : context_(context),
      options_(options),
      messages_(messages),
      stack_(stack),
      ends_(context.getSourceManager(), context.getLangOpts()) {}

source_range executor::range(clang::SourceRange where) const { return ends_.range_of(where); }

source_range executor::range_of_statement(const clang::Stmt& statement) const {
    const std::size_t hash = llvm::DenseMapInfo<const clang::Stmt*>::getHashValue(&statement);
    known_range& known = ranges_[hash % ranges_.size()];
    if (known.statement != &statement) {
        known = {&statement, range(statement.getSourceRange())};
    }
    return known.range;
}

void executor::add_call_notes() {
    constexpr std::size_t most_notes = 5;
    std::size_t count = 0;
    for (auto one = frames_.rbegin(); one != frames_.rend() && count < most_notes; ++one) {
        if (one->call_place.is_known()) {
            messages_.add_to_last(message_id::called_from, one->call_place, {one->function->getName().str()});
            ++count;
        }
    }
}

void executor::refuse(message_id id, const asked_range& where, std::initializer_list<std::string_view> arguments) {
    messages_.report(id, where, arguments);
    add_call_notes();
    throw refusal{};
}

void executor::refuse_with_note(message_id id, const asked_range& where,
                                std::initializer_list<std::string_view> arguments, message_id note,
                                const asked_range& note_where, std::initializer_list<std::string_view> note_arguments) {
    messages_.report(id, where, arguments);
    messages_.add_to_last(note, note_where, note_arguments);
    add_call_notes();
    throw refusal{};
}

/// All that have bodies, but for those of the built-in headers, which nobody means as the top.
void executor::collect_functions(std::vector<const clang::FunctionDecl*>& functions) {
    for (const clang::Decl* one : context_.getTranslationUnitDecl()->decls()) {
        const auto* function = llvm::dyn_cast<clang::FunctionDecl>(one);
        if (function != nullptr && function->isThisDeclarationADefinition() && function->hasBody()) {
            bodies_[function->getName()] = function;
            if (!is_built_in(*function)) {
                functions.push_back(function);
            }
        }
    }
}

/// The functions to run: one with parameters, or all of the older style.
std::vector<const clang::FunctionDecl*> executor::choose_top() {
    std::vector<const clang::FunctionDecl*> functions;
    collect_functions(functions);
    if (functions.empty()) {
        refuse(message_id::no_function, {});
    }
    if (!options_.top.empty()) {
        const clang::FunctionDecl* top = bodies_.lookup(options_.top);
        if (top == nullptr) {
            refuse(message_id::unknown_top, {}, {options_.top});
        }
        return {top};
    }
    const auto nobody_calls = [](const clang::FunctionDecl* one) { return !one->isReferenced(); };
    std::vector<const clang::FunctionDecl*> tops;
    std::copy_if(functions.begin(), functions.end(), std::back_inserter(tops), [&](const clang::FunctionDecl* one) {
        return nobody_calls(one) && one->getStorageClass() != clang::SC_Static;
    });
    if (tops.empty()) {
        std::copy_if(functions.begin(), functions.end(), std::back_inserter(tops), nobody_calls);
    }
    if (tops.empty()) {
        tops = functions;
    }
    const bool all_without =
        std::all_of(tops.begin(), tops.end(), [](const clang::FunctionDecl* one) { return one->getNumParams() == 0; });
    if (tops.size() > 1 && !all_without) {
        messages_.report(message_id::several_tops, range(tops.front()->getLocation()));
        for (const clang::FunctionDecl* one : tops) {
            messages_.add_to_last(message_id::candidate_top, range(one->getLocation()), {one->getName().str()});
        }
        throw refusal{};
    }
    return tops;
}

program executor::run(const std::string& base_name) {
    const std::vector<const clang::FunctionDecl*> tops = choose_top();
    older_ = tops.front()->getNumParams() == 0;
    program_.style = older_ ? top_style::whole_file : top_style::function;
    program_.name = older_ && options_.top.empty() ? base_name : tops.front()->getName().str();
    for (const clang::FunctionDecl* one : tops) {
        program_.functions.push_back(one->getName().str());
    }
    frames_.emplace_back();  // for initializers
    create_globals();
    initialize_globals();
    frames_.clear();
    if (older_) {
        memory_.follow_reads();
        follow_whole_file(tops);
    } else {
        follow_function(*tops.front());
    }
    check_kept_values();
    finish_graph();
    note_deviations();
    return std::move(program_);
}

void executor::initialize_globals() {
    // In the order of their making: the table by declaration has an order that changes from run to run.
    std::vector<std::pair<object_id, const clang::VarDecl*>> ordered;
    for (const auto& [variable, id] : globals_) {
        ordered.emplace_back(id, variable);
    }
    std::sort(ordered.begin(), ordered.end());
    for (const auto& [id, variable] : ordered) {
        const clang::VarDecl* with_value = nullptr;
        const clang::Expr* initializer = variable->getAnyInitializer(with_value);
        const clang::QualType type = type_of(memory_[id]);
        const bool constant = context_.getBaseElementType(type).isConstQualified();
        const bool defined = variable->hasDefinition(context_) != clang::VarDecl::DeclarationOnly;
        if (initializer != nullptr) {
            initialize({id, 0}, type, *initializer);
        } else if (defined && (constant || !older_ || variable->isStaticLocal())) {
            set_zero({id, 0}, type, {});
        }
        memory_.begin_with(id, !older_ && !constant);
        protect(id, type);
        if (older_ && !variable->isStaticLocal()) {
            add_variable(id, *variable);
        }
    }
}

/// A variable of the older style: an input when it has no value of its own and is read, an output when it is written
/// and not read behind that.
void executor::add_variable(object_id id, const clang::VarDecl& variable) {
    const clang::QualType type = variable.getType();
    const bool constant = context_.getBaseElementType(type).isConstQualified();
    if (!variable.hasInit() && !constant) {
        memory_.set_unset_rule(id, unset_rule::input);
    }
    if (!constant) {
        candidates_.push_back({id, variable.getName().str(), true, false});
    }
}

void executor::follow_whole_file(const std::vector<const clang::FunctionDecl*>& functions) {
    if (functions.size() > 1) {
        std::string names;
        for (const clang::FunctionDecl* one : functions) {
            names += (names.empty() ? "" : ", ") + one->getName().str();
        }
        messages_.report(message_id::functions_in_order, range(functions.front()->getLocation()), {names});
    }
    for (const clang::FunctionDecl* one : functions) {
        frames_.emplace_back();
        frames_.back().function = one;
        run_top_body(*one);
        frames_.clear();
    }
}

void executor::follow_function(const clang::FunctionDecl& function) {
    frames_.emplace_back();
    frames_.back().function = &function;
    for (const clang::ParmVarDecl* parameter : function.parameters()) {
        create_parameter(*parameter);
    }
    run_top_body(function);
    frames_.clear();
}

void executor::run_top_body(const clang::FunctionDecl& function) {
    const clang::QualType type = function.getReturnType();
    if (type->isPointerType()) {
        refuse(message_id::result_type, range(function.getLocation()), {type.getAsString()});
    }
    run_body(function);
    const place returned = frames_.back().returned;
    if (returned.object == no_object || function.isMain()) {
        return;
    }
    std::vector<port_place> ports;
    list_ports(type, returned, "result", "result", ports);
    const bool given = std::any_of(ports.begin(), ports.end(), [&](const port_place& one) {
        return memory_.at(memory_.index_of(one.where)).kind != cell_kind::unset;
    });
    if (given) {
        bool has_own_type = false;
        program_.result_type = type_text(type, has_own_type);
        const auto found = std::find(program_.functions.begin(), program_.functions.end(), function.getName().str());
        candidates_.push_back({.object = returned.object,
                               .access = "result",
                               .may_be_output = true,
                               .is_result = true,
                               .function = static_cast<std::uint32_t>(found - program_.functions.begin())});
    }
}

/// Makes what a parameter stands for: its own object, or the one that a pointer or array parameter gives access to.
void executor::create_parameter(const clang::ParmVarDecl& declaration) {
    const std::string name = declaration.getName().str();
    const asked_range where = range(declaration.getLocation());
    const clang::QualType written = declaration.getOriginalType();
    const clang::QualType type = declaration.getType();
    clang::QualType held = type;
    if (name.empty()) {  // nothing can reach it
        parameter unnamed;
        if (type->isPointerType()) {
            unnamed.element = "void*";
        } else {
            describe_object(type, unnamed);
        }
        program_.parameters.push_back(std::move(unnamed));
        return;
    }
    if (written->isArrayType() && !written->isConstantArrayType()) {
        refuse(message_id::parameter_size, where, {name});
    }
    if (written->isConstantArrayType()) {
        held = written;
    } else if (type->isPointerType()) {
        held = type->getPointeeType();
    }
    const clang::QualType element = context_.getBaseElementType(held);
    if (element->isPointerType() || element->isFunctionType() || element->isVoidType() || element->isIncompleteType()) {
        refuse(message_id::parameter_type, where, {name, written.getAsString()});
    }
    const bool constant = element.isConstQualified();
    const object_id id = create_object(held, name, where);
    memory_.set_unset_rule(id, unset_rule::input);
    candidates_.push_back({id, name, type->isPointerType() && !constant, false});
    protect(id, held);
    if (type->isPointerType()) {
        const object_id pointer = declare(declaration);
        store({pointer, 0}, type, {.is = result::kind::pointer, .where = {id, 0}}, where);
    } else {
        frames_.back().locals[&declaration] = id;
    }
    parameter described{.name = name, .by_address = type->isPointerType() && !written->isArrayType()};
    describe_object(held, described);
    program_.parameters.push_back(std::move(described));
}

/// How an object of this type is declared, without qualifiers.
void executor::describe_object(clang::QualType held, parameter& described) const {
    while (const auto* array = context_.getAsConstantArrayType(held)) {
        described.sizes.append("[").append(std::to_string(array->getSize().getZExtValue())).append("]");
        held = array->getElementType();
    }
    described.element = type_text(held, described.has_own_type);
}

/// A type as C writes it behind the whole file, without qualifiers and by way of no names that could mean something
/// else there. Enumerations are the integers that they are; structures that cannot be named there are written out.
std::string executor::type_text(const clang::QualType& type, bool& has_own_type) const {
    clang::QualType plain = type.getCanonicalType().getUnqualifiedType();
    if (const auto* enumeration = llvm::dyn_cast<clang::EnumType>(plain)) {
        const clang::QualType integer = enumeration->getDecl()->getIntegerType();
        plain = integer.isNull() ? context_.IntTy : integer.getCanonicalType();
    }
    clang::PrintingPolicy policy = context_.getPrintingPolicy();
    policy.Bool = false;  // _Bool, whether the reader has the macro bool or not
    if (const auto* record = plain->getAsRecordDecl()) {
        const bool has_name = record->getIdentifier() != nullptr || record->getTypedefNameForAnonDecl() != nullptr;
        has_own_type = !has_name || !record->getDeclContext()->isTranslationUnit();
        policy.IncludeTagDefinition = has_own_type;
    }
    return plain.getAsString(policy);
}

void executor::list_ports(const clang::QualType& type, const place& where, const std::string& name,
                          const std::string& access, std::vector<port_place>& ports) const {
    if (const auto* array = context_.getAsConstantArrayType(type)) {
        const clang::QualType element = array->getElementType();
        const std::int64_t size = bytes_of(element);
        for (std::uint64_t index = 0; index < array->getSize().getZExtValue(); ++index) {
            const std::string number = std::to_string(index);
            std::string inner_access = access;
            inner_access.append("[").append(number).append("]");
            list_ports(element, {where.object, where.offset + static_cast<std::int64_t>(index) * size},
                       std::string(name).append("_").append(number), inner_access, ports);
        }
        return;
    }
    if (const auto* record = type->getAsRecordDecl()) {
        const clang::ASTRecordLayout& layout = context_.getASTRecordLayout(record);
        for (const clang::FieldDecl* field : record->fields()) {
            const std::string inner = field->getName().str();
            const auto offset = static_cast<std::int64_t>(layout.getFieldOffset(field->getFieldIndex()) / 8);
            const bool unnamed = inner.empty();
            std::string inner_name = name;
            std::string inner_access = access;
            if (!unnamed) {
                inner_name.append("_").append(inner);
                inner_access.append(".").append(inner);
            }
            list_ports(field->getType(), {where.object, where.offset + offset}, inner_name, inner_access, ports);
            if (record->isUnion()) {
                break;  // a union's ports are those of its first member
            }
        }
        return;
    }
    if (const auto scalar = find_scalar(type)) {
        ports.push_back({name, access, *scalar, type.getUnqualifiedType().getAsString(), where});
    }
}

bool executor::is_output(const candidate& variable, const port_place& one) const {
    const std::uint32_t index = memory_.index_of(one.where);
    if (variable.is_result) {
        return true;
    }
    return variable.may_be_output && memory_.was_written(index) &&
           !(older_ && memory_.at(index).last == last_value::read);
}

value_id executor::output_value(const port_place& one) {
    const object& owner = memory_[one.where.object];
    const cell found = memory_.read(one.where, one.type.bytes);
    if (found.kind == cell_kind::unset) {
        if (owner.rule == unset_rule::refuse) {
            refuse(message_id::not_assigned, owner.where, {one.name});
        }
        return unset_value(memory_.index_of(one.where), one.where, one.type);
    }
    if (found.kind != cell_kind::number || values_[found.content].format != one.type.format) {
        refuse(message_id::read_as_other_type, owner.where, {one.c_type});
    }
    check_set(one.where, found, owner.where);
    return value_as(found, one.type, owner.where);
}

void executor::finish_graph() {
    std::vector<std::vector<port_place>> places(candidates_.size());
    std::vector<port> outputs;
    std::vector<bool> is_port(candidates_.size(), false);
    for (std::size_t index = 0; index < candidates_.size(); ++index) {
        const candidate& variable = candidates_[index];
        const object& one = memory_[variable.object];
        list_ports(type_of(one), {variable.object, 0}, variable.access, variable.access, places[index]);
        for (const port_place& place : places[index]) {
            if (is_output(variable, place)) {
                const value_id what = output_value(place);
                outputs.push_back({.name = place.name,
                                   .format = values_[what].format,
                                   .c_type = place.c_type,
                                   .c_access = place.access,
                                   .where = one.where,
                                   .value = what,
                                   .returned = variable.is_result,
                                   .returned_by = variable.function,
                                   .c_bytes = place.type.bytes,
                                   .c_signed = place.type.is_signed});
                is_port[index] = true;
            }
        }
    }
    if (outputs.empty()) {
        report_unused(is_port);
        refuse(message_id::no_output, {});
    }
    // Results stand last: the candidates of the older style may come behind them.
    std::stable_partition(outputs.begin(), outputs.end(), [](const port& one) { return !one.returned; });
    const std::vector<bool> needed = needed_for(values_, outputs);
    std::unordered_map<std::uint32_t, value_id> leaf_at;
    for (const port& input : values_.inputs()) {
        const std::size_t number_of_leaf = values_[input.value].port();
        if (needed[input.value]) {
            leaf_at.emplace(memory_.index_of(leaves_[number_of_leaf].where), input.value);
        }
    }
    std::vector<port> inputs;
    for (std::size_t index = 0; index < candidates_.size(); ++index) {
        bool told = false;
        for (const port_place& place : places[index]) {
            const auto found = leaf_at.find(memory_.index_of(place.where));
            if (found == leaf_at.end()) {
                continue;
            }
            const source_range where = memory_[place.where.object].where;
            std::string name = place.name;
            const auto also = std::find_if(outputs.begin(), outputs.end(), [&](const port& output) {
                return output.c_access == place.access && output.where == where;
            });
            if (is_output(candidates_[index], place) && also != outputs.end()) {
                name += "_in";
                also->name += "_out";
                if (!told) {
                    messages_.report(message_id::input_and_output, where, {place.name, name, also->name});
                    told = true;
                }
            }
            inputs.push_back({.name = name,
                              .format = values_[found->second].format,
                              .c_type = place.c_type,
                              .c_access = place.access,
                              .where = where,
                              .value = found->second,
                              .c_bytes = place.type.bytes,
                              .c_signed = place.type.is_signed});
            is_port[index] = true;
        }
    }
    report_unused(is_port);
    for (std::size_t index = 0; index < candidates_.size(); ++index) {
        if (is_port[index]) {
            report_unused_elements(candidates_[index], places[index], leaf_at);
        }
    }
    give_legal_names(inputs, outputs);
    program_.values = extracted(values_, inputs, outputs);
}

void executor::give_legal_names(std::vector<port>& inputs, std::vector<port>& outputs) {
    std::vector<port*> ports;
    std::vector<std::string> names;
    for (std::vector<port>* some : {&inputs, &outputs}) {
        for (port& one : *some) {
            ports.push_back(&one);
            names.push_back(one.name);
        }
    }
    const std::vector<std::string> legal = legal_names(names, program_.name);
    for (std::size_t index = 0; index < ports.size(); ++index) {
        if (legal[index] != names[index]) {
            messages_.report(message_id::port_renamed, ports[index]->where, {names[index], legal[index]});
            ports[index]->name = legal[index];
        }
    }
}

void executor::report_unused(const std::vector<bool>& is_port) {
    for (std::size_t index = 0; index < candidates_.size(); ++index) {
        if (is_port[index]) {
            continue;
        }
        const object& one = memory_[candidates_[index].object];
        bool used = false;
        bool written = false;
        for (std::uint32_t cell = one.first_cell; cell < one.first_cell + one.bytes / one.granule; ++cell) {
            used = used || memory_.was_read(cell) || memory_.was_written(cell);
            written = written || memory_.was_written(cell);
        }
        if (!used) {
            messages_.report(message_id::unused_variable, one.where, {one.name});
        } else if (!written && one.rule == unset_rule::input) {
            messages_.report(message_id::input_without_effect, one.where, {one.name});
        }
    }
}

/// Elements and members of a parameter or variable that become no ports where others do.
void executor::report_unused_elements(const candidate& variable, const std::vector<port_place>& places,
                                      const std::unordered_map<std::uint32_t, value_id>& inputs) {
    constexpr std::size_t most_named = 3;
    std::string names;
    std::size_t count = 0;
    for (const port_place& place : places) {
        const std::uint32_t index = memory_.index_of(place.where);
        if (inputs.contains(index) || memory_.was_written(index) || variable.is_result) {
            continue;
        }
        if (++count <= most_named) {
            names.append(names.empty() ? "'" : ", '").append(place.access).append("'");
        }
    }
    if (count > most_named) {
        names.append(" and ").append(std::to_string(count - most_named)).append(" more");
    }
    if (count > 0) {
        messages_.report(message_id::elements_without_effect, memory_[variable.object].where,
                         {names, count == 1 ? "it becomes no port" : "they become no ports"});
    }
}

/// A variable of static storage that is read before the call writes it, and written by it, would need a memory.
void executor::check_kept_values() {
    for (std::uint32_t index = 0; index < memory_.cell_count(); ++index) {
        const auto read = initial_reads_.find(index);
        const auto written = kept_writes_.find(index);
        if (read != initial_reads_.end() && written != kept_writes_.end()) {
            const object& one = memory_[place_of_index(index).object];
            refuse_with_note(message_id::kept_between_calls, read->second, {one.name}, message_id::written_here,
                             written->second, {});
        }
    }
}

void executor::note_deviations() {
    if (deviations_ != 0) {
        const std::size_t more = deviations_ - 1;
        const std::string others =
            more == 0 ? ""
                      : " (and in " + std::to_string(more) + (more == 1 ? " more operation)" : " more operations)");
        messages_.report(message_id::constant_format, first_deviation_, {others});
    }
}

}  // namespace xfc::flow
