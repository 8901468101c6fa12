#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/arena.h"

namespace xfc::flow {

/// Spellings that VHDL and Verilog both accept for these names, in the same order, no two of them equal whatever the
/// case, none of them a reserved word, a name that every design uses, or `design`, the design's own. A name that is
/// legal as it stands stays, unless an earlier one took it.
[[nodiscard]] std::vector<std::string> legal_names(std::span<const std::string> names, std::string_view design);

/// The same for very many names: all of them are announced, then their spellings are asked for in the same order.
class name_book {
public:
    /// Spellings stand in `texts`.
    name_book(std::string_view design, arena& texts);

    void announce(std::string_view name);

    /// The spelling of the next one of the names announced.
    [[nodiscard]] std::string_view next();

private:
    /// Names that are one whatever the case.
    struct record {
        std::string_view text = {};  ///< as it was spelled first
        std::int32_t number = 1;     ///< what a name was numbered with last: they may be equal by the thousand
        bool reserved = false;
        bool taken = false;
        bool unchanged = false;  ///< some name is legal as it stands
    };
    struct slot {
        std::uint32_t tag = 0;
        std::uint32_t record = 0;  ///< counted from 1; 0: none
    };
    struct announced {
        std::uint32_t record = 0;
        bool legal = true;            ///< but for reserved words
        std::string_view other = {};  ///< its letters where the record is spelled otherwise
    };

    std::uint32_t record_of(std::string_view text);
    std::string_view numbered(const announced& name, std::string_view base);
    void grow();

    arena& texts_;
    std::vector<record> records_;
    std::vector<slot> slots_;  ///< open addressing; a power of two, at most 3/4 full
    std::vector<announced> announced_;
    std::size_t given_ = 0;
};

/// Whether the word means something in VHDL, in Verilog or in every design; case does not matter.
[[nodiscard]] bool is_reserved(std::string_view word);

/// A name with the letters and underscores that both languages take; not looked up as a reserved word.
[[nodiscard]] std::string legal_letters(std::string name);

}  // namespace xfc::flow
