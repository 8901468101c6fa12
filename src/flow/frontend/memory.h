#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "flow/frontend/decisions.h"
#include "flow/graph/graph.h"

namespace xfc::flow {

using object_id = std::uint32_t;

inline constexpr object_id no_object = 0xFFFFFFFF;

/// What one cell of memory holds.
enum class cell_kind : std::uint8_t {
    unset,            ///< nothing yet
    number,           ///< a value of the graph
    pointer,          ///< an object and an offset in bytes; no_object: null
    function,         ///< a function's number
    unknown_pointer,  ///< one of several, or perhaps none
    tail,             ///< further cells of the scalar in front
    torn,             ///< part of a scalar that was partly overwritten
};

/// What became of the value that was written last.
enum class last_value : std::uint8_t {
    none,    ///< nothing was written since the program began
    unread,  ///< nothing has read it
    read,    ///< on some way
};

struct cell {
    cell_kind kind = cell_kind::unset;
    last_value last = last_value::none;
    std::uint8_t bytes = 0;      ///< size of the scalar whose head this is
    bool initial = true;         ///< never written since the program began
    bool sign_extended = true;   ///< false: a narrow integer without a sign
    std::uint32_t content = 0;   ///< value, object or function
    std::int32_t offset = 0;     ///< of a pointer, bytes
    decision set_when = always;  ///< on which ways anything was written

    friend bool operator==(const cell&, const cell&) = default;
};

/// Where a scalar stands.
struct place {
    object_id object = no_object;
    std::int64_t offset = 0;  ///< bytes
};

/// What a variable without value does when it is read.
enum class unset_rule : std::uint8_t {
    refuse,  ///< an error
    input,   ///< it becomes an input of the design
};

/// A variable, parameter, table or temporary.
struct object {
    std::string name = {};
    source_range where = {};
    std::uint32_t first_cell = 0;
    std::uint32_t bytes = 0;
    std::uint32_t granule = 1;  ///< bytes a cell; all scalars of the object are whole cells
    unset_rule rule = unset_rule::refuse;
    bool kept_between_calls = false;  ///< static storage that the program may change
    bool read_only = false;           ///< const, and its value is set
    bool ended = false;               ///< its block has been left
    bool is_result = false;           ///< of a function
    const void* declaration = nullptr;
    const void* type = nullptr;  ///< of the whole object, for its owner
};

/// Objects as flat cells, with a journal by which what a branch wrote can be taken back and told.
class memory {
public:
    struct change {
        std::uint32_t index;
        cell now;
    };

    object_id create(object description);
    [[nodiscard]] const object& operator[](object_id id) const { return objects_[id]; }
    void set_unset_rule(object_id id, unset_rule rule) { objects_[id].rule = rule; }
    void set_read_only(object_id id, bool value = true) { objects_[id].read_only = value; }
    void mark_as_result(object_id id) { objects_[id].is_result = true; }
    void end(object_id id) { objects_[id].ended = true; }
    /// Takes what stands in the object now as what the program begins with.
    void begin_with(object_id id, bool kept_between_calls);
    [[nodiscard]] object_id object_count() const { return static_cast<object_id>(objects_.size()); }
    [[nodiscard]] std::size_t cell_count() const { return cells_.size(); }

    /// Whether a scalar of so many bytes lies inside its object, on whole cells.
    [[nodiscard]] bool holds(const place& where, std::uint32_t bytes) const;

    /// The cell's index of a scalar that lies inside its object.
    [[nodiscard]] std::uint32_t index_of(const place& where) const;

    /// The scalar there; torn when what stands there has another size.
    [[nodiscard]] cell read(const place& where, std::uint32_t bytes) const;
    void write(const place& where, const cell& content);

    [[nodiscard]] const cell& at(std::uint32_t index) const { return cells_[index]; }
    void set(std::uint32_t index, const cell& content);

    /// What is written from here on can be taken back.
    void begin_branch();
    /// Takes back what was written since, and tells the cells that changed, by rising index.
    [[nodiscard]] std::vector<change> end_branch();

    /// For finding out what stays unread; `last_value` is kept only for those who want it, since it costs.
    void follow_reads() { follows_reads_ = true; }
    void note_read(std::uint32_t index, bool is_written_value = true);
    void note_write(std::uint32_t index) { was_written_[index] = true; }
    [[nodiscard]] bool was_read(std::uint32_t index) const { return was_read_[index]; }
    [[nodiscard]] bool was_written(std::uint32_t index) const { return was_written_[index]; }

private:
    struct branch {
        std::uint32_t first_new;  ///< cells from here on were made inside
        std::size_t log_start;
    };
    struct logged {
        std::uint32_t index;
        cell before;
    };

    std::vector<object> objects_;
    std::vector<cell> cells_;
    std::vector<bool> was_read_;
    std::vector<bool> was_written_;
    bool follows_reads_ = false;
    std::vector<branch> branches_;
    std::vector<logged> log_;
};

}  // namespace xfc::flow
