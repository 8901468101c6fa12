// Variables and what they hold.

#include <clang/AST/DeclBase.h>
#include <clang/AST/RecordLayout.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "flow/frontend/executor.h"

namespace xfc::flow {

namespace {

constexpr std::uint32_t most_bytes = 1U << 26U;  // of one object

}  // namespace

std::uint32_t executor::bytes_of(const clang::QualType& type) const {
    if (const auto scalar = find_scalar(type)) {
        return scalar->bytes;  // without a search in the parser's tables
    }
    if (type->isVoidType() || type->isFunctionType()) {
        return 1;  // what GNU C counts pointers to them by
    }
    return static_cast<std::uint32_t>(context_.getTypeSizeInChars(type).getQuantity());
}

/// The greatest stretch in bytes that divides the places and sizes of all scalars of the type.
std::uint32_t executor::granule_of(const clang::QualType& type) const {
    const clang::Type* key = type.getCanonicalType().getTypePtr();
    if (const auto* array = context_.getAsConstantArrayType(type)) {
        return granule_of(array->getElementType());
    }
    const auto* record = type->getAsRecordDecl();
    if (record == nullptr) {
        return std::max(1U, bytes_of(type));
    }
    const auto found = granules_.find(key);
    if (found != granules_.end()) {
        return found->second;
    }
    std::uint32_t granule = bytes_of(type);
    const clang::ASTRecordLayout& layout = context_.getASTRecordLayout(record);
    for (const clang::FieldDecl* field : record->fields()) {
        const auto bits = layout.getFieldOffset(field->getFieldIndex());
        granule = std::gcd(granule, static_cast<std::uint32_t>(bits / 8));
        granule = std::gcd(granule, granule_of(field->getType()));
    }
    granule = std::max(1U, granule);
    granules_[key] = granule;
    return granule;
}

/// The number type that stands at an offset of a type, of a union's in its first member; nothing for pointers and gaps.
std::optional<scalar_type> executor::scalar_at(clang::QualType type, std::uint32_t offset) const {
    for (;;) {
        if (const auto* array = context_.getAsConstantArrayType(type)) {
            const std::uint32_t size = bytes_of(array->getElementType());
            if (size == 0) {
                return std::nullopt;
            }
            offset %= size;
            type = array->getElementType();
            continue;
        }
        const auto* record = type->getAsRecordDecl();
        if (record == nullptr) {
            return offset == 0 ? find_scalar(type) : std::nullopt;
        }
        const clang::ASTRecordLayout& layout = context_.getASTRecordLayout(record);
        const clang::FieldDecl* inside = nullptr;
        std::uint32_t inner = 0;
        for (const clang::FieldDecl* field : record->fields()) {
            const auto start = static_cast<std::uint32_t>(layout.getFieldOffset(field->getFieldIndex()) / 8);
            if (start <= offset && offset < start + bytes_of(field->getType())) {
                inside = field;
                inner = offset - start;
                break;
            }
            if (record->isUnion()) {
                break;  // its ports are those of its first member
            }
        }
        if (inside == nullptr) {
            return std::nullopt;
        }
        offset = inner;
        type = inside->getType();
    }
}

/// Refuses what no variable may be: volatile, bit-fields, sizes and formats that are not known.
void executor::check_object_type(const clang::QualType& type, const std::string& name, const asked_range& where) {
    if (type.isVolatileQualified()) {
        refuse(message_id::volatile_object, where, {name});
    }
    if (type->isAtomicType()) {
        refuse_type(type, where);
    }
    if (const auto* array = context_.getAsArrayType(type)) {
        if (!array->isConstantArrayType()) {
            refuse(message_id::variable_size, where, {name});
        }
        check_object_type(array->getElementType(), name, where);
        return;
    }
    if (const auto* record = type->getAsRecordDecl()) {
        if (granules_.contains(type.getCanonicalType().getTypePtr())) {
            return;
        }
        if (!record->isCompleteDefinition()) {
            refuse(message_id::variable_size, where, {name});
        }
        for (const clang::FieldDecl* field : record->fields()) {
            if (field->isBitField()) {
                refuse(message_id::bit_field, range(field->getSourceRange()), {field->getName().str()});
            }
            check_object_type(field->getType(), field->getName().str(), range(field->getSourceRange()));
        }
        return;
    }
    if (!type->isPointerType()) {
        (void)scalar_of(type, where);
    }
}

object_id executor::create_object(const clang::QualType& type, std::string name, const asked_range& where) {
    check_object_type(type, name, where);
    const std::uint32_t bytes = bytes_of(type);
    if (bytes > most_bytes) {
        refuse(message_id::too_large, where, {name, std::to_string(most_bytes)});
    }
    return memory_.create({.name = std::move(name),
                           .where = where,
                           .bytes = bytes,
                           .granule = granule_of(type),
                           .type = type.getAsOpaquePtr()});
}

/// All variables of static storage stand before anything runs, so that no branch makes one.
void executor::create_globals() {
    for (const clang::Decl* one : context_.getTranslationUnitDecl()->decls()) {
        if (const auto* variable = llvm::dyn_cast<clang::VarDecl>(one)) {
            create_static(*variable);
        } else if (const auto* function = llvm::dyn_cast<clang::FunctionDecl>(one)) {
            for (const clang::Decl* inner : function->decls()) {
                const auto* local = llvm::dyn_cast<clang::VarDecl>(inner);
                if (local != nullptr && (local->isStaticLocal() || local->hasExternalStorage())) {
                    create_static(*local);
                }
            }
        }
    }
}

void executor::create_static(const clang::VarDecl& variable) {
    const clang::VarDecl* key = variable.getCanonicalDecl();
    if (globals_.contains(key)) {
        return;
    }
    const clang::VarDecl* definition = key->getDefinition(context_);
    if (definition == nullptr) {
        definition = key->getActingDefinition();
    }
    const clang::VarDecl& known = definition != nullptr ? *definition : *key;
    // The last declaration has the whole type: a size may come behind the first one.
    const clang::QualType type = known.getMostRecentDecl()->getType();
    if (type->isIncompleteType()) {
        return;  // an extern array without size; whoever uses it is refused
    }
    const object_id id = create_object(type, known.getName().str(), range(known.getLocation()));
    globals_[key] = id;
}

object_id executor::object_of(const clang::VarDecl& variable) {
    if (!frames_.empty()) {
        const auto local = frames_.back().locals.find(&variable);
        if (local != frames_.back().locals.end()) {
            return local->second;
        }
    }
    const auto global = globals_.find(variable.getCanonicalDecl());
    if (global == globals_.end()) {
        refuse(message_id::variable_size, range(variable.getLocation()), {variable.getName().str()});
    }
    return global->second;
}

object_id executor::declare(const clang::VarDecl& variable) {
    const asked_range where = range(variable.getLocation());
    const object_id id = create_object(variable.getType(), variable.getName().str(), where);
    frames_.back().locals[&variable] = id;
    living_.push_back(id);
    return id;
}

/// Ends the lives of the local variables from this place of `living_` on: who reaches them later is refused. Ports are
/// read behind the end of the top's body, so nothing ends there.
void executor::end_lives(std::size_t first) {
    while (living_.size() > first) {
        memory_.end(living_.back());
        living_.pop_back();
    }
}

/// What is declared const keeps the value that it has now.
void executor::protect(object_id id, const clang::QualType& type) {
    if (context_.getBaseElementType(type).isConstQualified()) {
        memory_.set_read_only(id);
    }
}

void executor::initialize(const place& where, const clang::QualType& type, const clang::Expr& initializer) {
    const clang::Expr* inner = initializer.IgnoreParens();
    if (const auto* full = llvm::dyn_cast<clang::FullExpr>(inner)) {
        inner = full->getSubExpr()->IgnoreParens();
    }
    if (const auto* list = llvm::dyn_cast<clang::InitListExpr>(inner)) {
        initialize_from_list(where, type, *list);
        return;
    }
    if (llvm::isa<clang::NoInitExpr>(inner)) {
        return;  // keeps what the initializer in front gave it
    }
    if (const auto* update = llvm::dyn_cast<clang::DesignatedInitUpdateExpr>(inner)) {
        initialize(where, type, *update->getBase());
        initialize_from_list(where, type, *update->getUpdater());
        return;
    }
    if (llvm::isa<clang::ImplicitValueInitExpr>(inner)) {
        set_zero(where, type, range(initializer));
        return;
    }
    if (type->isArrayType()) {
        if (const auto* text = llvm::dyn_cast<clang::StringLiteral>(inner)) {
            set_text(where, type, *text);
            return;
        }
        copy(where, address_of(*inner), type, range(initializer));  // a compound literal
        return;
    }
    store(where, type, evaluate(initializer), range(initializer));
}

void executor::initialize_from_list(const place& where, const clang::QualType& type, const clang::InitListExpr& list) {
    if (list.isTransparent() || (!type->isArrayType() && !type->isRecordType())) {
        if (list.getNumInits() == 0) {
            set_zero(where, type, range(list));
        } else {
            initialize(where, type, *list.getInit(0));
        }
        return;
    }
    if (const auto* array = context_.getAsConstantArrayType(type)) {
        if (list.isStringLiteralInit()) {
            initialize(where, type, *list.getInit(0));
            return;
        }
        const clang::QualType element = array->getElementType();
        const std::uint32_t size = bytes_of(element);
        const std::uint64_t count = array->getSize().getZExtValue();
        for (std::uint64_t index = 0; index < count; ++index) {
            const place at{where.object, where.offset + static_cast<std::int64_t>(index * size)};
            if (index < list.getNumInits()) {
                initialize(at, element, *list.getInit(static_cast<unsigned>(index)));
            } else if (list.getArrayFiller() != nullptr) {
                initialize(at, element, *list.getArrayFiller());
            } else {
                set_zero(at, element, range(list));
            }
        }
        return;
    }
    const auto* record = type->getAsRecordDecl();
    const clang::ASTRecordLayout& layout = context_.getASTRecordLayout(record);
    const auto at = [&](const clang::FieldDecl* field) {
        return place{where.object,
                     where.offset + static_cast<std::int64_t>(layout.getFieldOffset(field->getFieldIndex()) / 8)};
    };
    if (record->isUnion()) {
        if (const auto* field = list.getInitializedFieldInUnion(); field != nullptr && list.getNumInits() > 0) {
            initialize(at(field), field->getType(), *list.getInit(0));
        }
        return;
    }
    unsigned index = 0;
    for (const clang::FieldDecl* field : record->fields()) {
        if (field->isUnnamedBitField()) {
            continue;
        }
        if (index < list.getNumInits()) {
            initialize(at(field), field->getType(), *list.getInit(index));
        } else {
            set_zero(at(field), field->getType(), range(list));
        }
        ++index;
    }
}

void executor::set_zero(const place& where, const clang::QualType& type, const asked_range& range) {
    if (const auto* array = context_.getAsConstantArrayType(type)) {
        const std::uint32_t size = bytes_of(array->getElementType());
        for (std::uint64_t index = 0; index < array->getSize().getZExtValue(); ++index) {
            set_zero({where.object, where.offset + static_cast<std::int64_t>(index * size)}, array->getElementType(),
                     range);
        }
    } else if (const auto* record = type->getAsRecordDecl()) {
        const clang::ASTRecordLayout& layout = context_.getASTRecordLayout(record);
        for (const clang::FieldDecl* field : record->fields()) {
            const auto offset = static_cast<std::int64_t>(layout.getFieldOffset(field->getFieldIndex()) / 8);
            set_zero({where.object, where.offset + offset}, field->getType(), range);
            if (record->isUnion()) {
                break;  // only the first member gets a value
            }
        }
    } else if (type->isPointerType()) {
        store(where, type, {.is = result::kind::pointer}, range);
    } else {
        const scalar_type scalar = scalar_of(type, range);
        store(where, type, number(values_.make_constant(scalar.format, 0)), range);
    }
}

void executor::set_text(const place& where, const clang::QualType& type, const clang::StringLiteral& text) {
    const auto* array = context_.getAsConstantArrayType(type);
    const std::uint32_t size = bytes_of(array->getElementType());
    const std::uint64_t count = array->getSize().getZExtValue();
    for (std::uint64_t index = 0; index < count; ++index) {
        const std::uint32_t unit = index < text.getLength() ? text.getCodeUnit(index) : 0;
        const bool narrow = size == 1 && array->getElementType()->isSignedIntegerType();
        const auto letter = narrow ? static_cast<std::int8_t>(unit) : static_cast<std::int32_t>(unit);
        store({where.object, where.offset + static_cast<std::int64_t>(index * size)}, array->getElementType(),
              number(values_.make_integer(letter)), range(text));
    }
}

std::string executor::extent_of(const object& one) const {
    std::uint64_t count = 1;
    clang::QualType type = type_of(one);
    while (const auto* array = context_.getAsConstantArrayType(type)) {
        count *= array->getSize().getZExtValue();
        type = array->getElementType();
    }
    return count == 1 ? "one element" : std::to_string(count) + " elements";
}

/// That a place of the object, or of a row or member of it with this name, is none of its own.
void executor::refuse_outside(const asked_range& range, std::string_view name, std::string_view extent,
                              const object& one) {
    refuse_with_note(conditions_.are_empty() ? message_id::outside_object : message_id::outside_if_reached, range,
                     {name, extent}, message_id::declared_here, one.where, {one.name});
}

void executor::check_place(const place& where, std::uint32_t bytes, const asked_range& range) {
    if (where.object == no_object) {
        refuse(message_id::null_pointer, range);
    }
    const object& one = memory_[where.object];
    if (one.ended) {
        refuse_with_note(message_id::ended_object, range, {one.name}, message_id::declared_here, one.where, {one.name});
    }
    if (where.offset < 0 || where.offset + bytes > one.bytes) {
        refuse_outside(range, one.name, extent_of(one), one);
    }
    if (!memory_.holds(where, bytes)) {
        refuse(message_id::read_as_other_type, range, {"a part of something larger"});
    }
}

void executor::check_writable(const place& where, const asked_range& range) {
    const object& one = memory_[where.object];
    if (one.read_only) {
        refuse_with_note(message_id::constant_object, range, {one.name}, message_id::declared_here, one.where,
                         {one.name});
    }
}

/// That something may be stored there, told at the target.
void executor::check_target(const place& where, const clang::Expr& target) {
    check_place(where, bytes_of(target.getType()), range(target));
    check_writable(where, range(target));
}

void executor::store(const place& where, const clang::QualType& type, const result& what, const asked_range& range) {
    if (type.isVolatileQualified()) {
        refuse(message_id::volatile_object, range, {"this"});
    }
    if (type->isRecordType()) {
        if (what.is != result::kind::aggregate) {
            refuse(message_id::unknown_pointer, range);
        }
        copy(where, what.where, type, range);
        return;
    }
    cell content{.bytes = static_cast<std::uint8_t>(bytes_of(type)), .initial = false};
    check_place(where, content.bytes, range);
    check_writable(where, range);
    switch (what.is) {
        case result::kind::number: {
            const scalar_type scalar = scalar_of(type, range);
            content.kind = cell_kind::number;
            content.sign_extended = scalar.sign_extended();
            content.content = in_format(what, scalar.format, range);
            break;
        }
        case result::kind::pointer:
            content.kind = cell_kind::pointer;
            content.content = what.where.object;
            content.offset = static_cast<std::int32_t>(what.where.offset);
            break;
        case result::kind::function:
            content.kind = cell_kind::function;
            content.content = static_cast<std::uint32_t>(functions_by_number_.size());
            for (std::uint32_t index = 0; index < functions_by_number_.size(); ++index) {
                if (functions_by_number_[index] == what.function) {
                    content.content = index;
                }
            }
            if (content.content == functions_by_number_.size()) {
                functions_by_number_.push_back(what.function);
            }
            break;
        default:
            content.kind = cell_kind::unknown_pointer;
            break;
    }
    const std::uint32_t index = memory_.index_of(where);
    memory_.write(where, content);
    memory_.note_write(index);
    if (memory_[where.object].kept_between_calls) {
        kept_writes_.emplace(index, range);
    }
}

result executor::load(const place& where, const clang::QualType& type, const asked_range& range) {
    if (type.isVolatileQualified()) {
        refuse(message_id::volatile_object, range, {"this"});
    }
    if (type->isRecordType()) {
        check_place(where, bytes_of(type), range);
        return {.is = result::kind::aggregate, .where = where};
    }
    if (!type->isPointerType()) {
        (void)scalar_of(type, range);  // long long and the like are told first
    }
    const std::uint32_t bytes = bytes_of(type);
    check_place(where, bytes, range);
    const std::uint32_t index = memory_.index_of(where);
    const cell found = memory_.read(where, bytes);
    if (found.initial && memory_[where.object].kept_between_calls) {
        initial_reads_.emplace(index, range);
    }
    if (found.kind == cell_kind::torn) {
        refuse(message_id::read_as_other_type, range, {type.getUnqualifiedType().getAsString()});
    }
    check_set(where, found, range);
    const result given =
        type->isPointerType() ? load_pointer(found, range) : load_number(where, scalar_of(type, range), found, range);
    const auto input = unset_values_.find(index);
    memory_.note_read(index, input == unset_values_.end() || given.number != input->second);
    return given;
}

result executor::load_pointer(const cell& found, const asked_range& range) {
    switch (found.kind) {
        case cell_kind::pointer:
            return {.is = result::kind::pointer, .where = {found.content, found.offset}};
        case cell_kind::function:
            return {.is = result::kind::function, .function = functions_by_number_[found.content]};
        case cell_kind::unknown_pointer:
            return {.is = result::kind::unknown_pointer};
        case cell_kind::unset:
            refuse(message_id::not_assigned, range, {"this pointer"});
        default:
            refuse(message_id::read_as_other_type, range, {"a pointer"});
    }
}

result executor::load_number(const place& where, const scalar_type& type, const cell& found, const asked_range& range) {
    if (found.kind == cell_kind::unset) {
        if (memory_[where.object].rule == unset_rule::refuse) {
            const object& one = memory_[where.object];
            refuse_with_note(one.is_result ? message_id::not_always_returned : message_id::not_assigned, range,
                             {one.name}, message_id::declared_here, one.where, {one.name});
        }
        const std::optional<cell> declared = input_cell(where);
        if (!declared || declared->bytes != type.bytes) {
            refuse(message_id::read_as_other_type, range, {std::string(format_name(type.format))});
        }
        return number(value_as(*declared, type, range));
    }
    return number(conditions_.known_choice(value_as(found, type, range)));
}

/// What a cell holds, read as a type of its size.
value_id executor::value_as(const cell& found, const scalar_type& type, const asked_range& where) {
    if (found.kind != cell_kind::number || values_[found.content].format != type.format) {
        refuse(message_id::read_as_other_type, where, {std::string(format_name(type.format))});
    }
    return found.sign_extended == type.sign_extended() ? found.content : wrapped(found.content, type, where);
}

/// Refuses what only some of the ways to here have written.
void executor::check_set(const place& where, const cell& found, const asked_range& range) {
    if (found.set_when == always) {
        return;
    }
    const std::optional<bool> is_set = decisions_.follows(conditions_.path(decisions_), found.set_when);
    if (is_set == true) {
        return;
    }
    const object& one = memory_[where.object];
    if (!is_set) {
        refuse_with_note(message_id::too_many_conditions, range, {one.name}, message_id::declared_here, one.where,
                         {one.name});
    }
    const value_id decided = decisions_.top_of(found.set_when);
    const auto branch = branch_places_.find(decided);
    const source_range branch_place = branch != branch_places_.end() ? branch->second
                                      : decided != no_value          ? values_[decided].where
                                                                     : one.where;
    refuse_with_note(one.is_result ? message_id::not_always_returned : message_id::not_always_assigned, range,
                     {one.name}, message_id::set_only_here, branch_place, {});
}

/// The input that stands for a scalar that nobody wrote.
value_id executor::unset_value(std::uint32_t index, const place& where, const scalar_type& type) {
    const auto known = unset_values_.find(index);
    if (known != unset_values_.end()) {
        return known->second;
    }
    const source_range declared = memory_[where.object].where;
    value_id id = values_.add_input({.format = type.format, .where = declared});
    leaves_.push_back({where, type});
    if (type.is_integer()) {
        id = wrapped(id, type, declared);
    }
    unset_values_.emplace(index, id);
    return id;
}

/// The input that a scalar without value stands for, as it was declared; nothing for pointers and gaps.
std::optional<cell> executor::input_cell(const place& where) {
    const auto scalar = scalar_at(type_of(memory_[where.object]), static_cast<std::uint32_t>(where.offset));
    if (!scalar) {
        return std::nullopt;
    }
    return cell{.kind = cell_kind::number,
                .bytes = static_cast<std::uint8_t>(scalar->bytes),
                .sign_extended = scalar->sign_extended(),
                .content = unset_value(memory_.index_of(where), where, *scalar)};
}

void executor::copy(const place& to, const place& from, const clang::QualType& type, const asked_range& range) {
    const std::uint32_t bytes = bytes_of(type);
    check_place(from, bytes, range);
    check_place(to, bytes, range);
    check_writable(to, range);
    const object& source = memory_[from.object];
    const object& target = memory_[to.object];
    // Cells may be of different sizes; scalars are copied one by one, gaps are left alone.
    struct scalar_copy {
        std::int64_t offset;
        cell content;
    };
    std::vector<scalar_copy> scalars;
    std::vector<std::int64_t> without_value;  // offsets
    const std::uint32_t first = memory_.index_of(from);
    for (std::uint32_t step = 0; step < bytes / source.granule; ++step) {
        const std::uint32_t index = first + step;
        cell content = memory_.at(index);
        memory_.note_read(index);
        if (content.initial && source.kept_between_calls) {
            initial_reads_.emplace(index, range);
        }
        const std::int64_t offset = static_cast<std::int64_t>(step) * source.granule;
        if (content.kind == cell_kind::unset && source.rule == unset_rule::input) {
            const auto input = input_cell({from.object, from.offset + offset});
            if (!input) {
                continue;
            }
            content = *input;
        }
        if (content.kind == cell_kind::unset) {
            for (std::int64_t part = offset; part < offset + source.granule; part += target.granule) {
                without_value.push_back(part);
            }
        }
        if (content.kind != cell_kind::tail && content.kind != cell_kind::unset) {
            content.initial = false;
            content.bytes = std::max<std::uint8_t>(content.bytes, static_cast<std::uint8_t>(target.granule));
            scalars.push_back({offset, content});
        }
    }
    if (target.rule == unset_rule::refuse) {  // for an input, what it began with is as good as any other value
        const std::uint32_t start = memory_.index_of(to);
        for (const std::int64_t offset : without_value) {
            memory_.set(start + static_cast<std::uint32_t>(offset) / target.granule, {.initial = false});
        }
    }
    for (const scalar_copy& one : scalars) {
        const place at{to.object, to.offset + one.offset};
        memory_.write(at, one.content);
        memory_.note_write(memory_.index_of(at));
        if (target.kept_between_calls) {
            kept_writes_.emplace(memory_.index_of(at), range);
        }
    }
}

place executor::place_of_index(std::uint32_t index) const {
    object_id low = 0;
    object_id high = memory_.object_count();
    while (high - low > 1) {
        const object_id middle = low + (high - low) / 2;
        (memory_[middle].first_cell <= index ? low : high) = middle;
    }
    return {low, static_cast<std::int64_t>(index - memory_[low].first_cell) * memory_[low].granule};
}

}  // namespace xfc::flow
