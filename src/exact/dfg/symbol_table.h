#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace xfc {

/// Type labels of one declaration in order of appearance. All names of the declaration share one list.
using type_list = std::vector<std::string_view>;

/// One declared name, or a block opening that received no declaration.
struct symbol_record {
    symbol_record* next = nullptr;             ///< following record of the same block chain
    symbol_record* prev = nullptr;             ///< preceding record of the same block chain
    symbol_record* block_successor = nullptr;  ///< first record made when a later block was opened
    symbol_record* scope_link = nullptr;       ///< left empty
    std::string_view name;                     ///< empty until a name is seen
    type_list* types = nullptr;                ///< shared by the names of one declaration
    std::string_view qualifier;                ///< "T:Const", "T:Volatile" or empty
    std::int32_t block = 0;                    ///< number of the open block: 0 outside any, then 1, 2, ...
    std::int32_t depth = 0;                    ///< block nesting depth
    std::int32_t in_use = 0;                   ///< 1 once a declaration has been written into the record
    std::int32_t complete = 0;                 ///< 1 when the declaration's end was reached
    std::int32_t initial_value = 0;            ///< value of the initializer, 0 when there is none
};

/// The first record ever made, or null.
extern symbol_record* symbol_table;

/// Turns every declaration in `label_list` into records. Prints the value of each evaluated initializer.
void process_declarations();

/// Makes an empty record, makes it the current one and, if it is the first one, the table's head. Links nothing.
symbol_record* new_symbol();

/// Evaluates the initializer of `name` from the cursor up to its end mark, on which it leaves the cursor; prints and
/// returns the value. Arithmetic is 32-bit and wraps. An initializer without an integer constant, with more than 32
/// items, or that does not reduce to one value, ends the run.
std::int32_t evaluate_constant(std::string_view name);

/// The record after `record` on the readers' walk: along `next` while that is in use, then over to the next block.
[[nodiscard]] const symbol_record* following_symbol(const symbol_record& record);

/// Forgets the table of an earlier run.
void clear_symbol_table();

}  // namespace xfc
