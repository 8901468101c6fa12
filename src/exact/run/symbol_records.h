#pragma once

#include <cstdint>
#include <list>
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

/// All records. Neither list moves its elements, so that records can point at each other.
struct symbol_table {
    symbol_record* first = nullptr;   ///< the first record ever made, or null
    symbol_record* newest = nullptr;  ///< the record that a declaration is being written into
    std::list<symbol_record> records;
    std::list<type_list> type_lists;
    std::int32_t block_counter = 0;
    std::vector<std::int32_t> open_blocks;  ///< numbers of the blocks around the cursor, the innermost last
};

}  // namespace xfc
