#include "flow/frontend/memory.h"

#include <algorithm>
#include <utility>

namespace xfc::flow {

object_id memory::create(object description) {
    description.first_cell = static_cast<std::uint32_t>(cells_.size());
    cells_.resize(cells_.size() + description.bytes / description.granule);
    was_read_.resize(cells_.size());
    was_written_.resize(cells_.size());
    objects_.push_back(std::move(description));
    return static_cast<object_id>(objects_.size() - 1);
}

void memory::begin_with(object_id id, bool kept_between_calls) {
    object& one = objects_[id];
    one.kept_between_calls = kept_between_calls;
    for (std::uint32_t index = one.first_cell; index < one.first_cell + one.bytes / one.granule; ++index) {
        cells_[index].initial = true;
        cells_[index].last = last_value::none;
        was_read_[index] = false;
        was_written_[index] = false;
    }
}

bool memory::holds(const place& where, std::uint32_t bytes) const {
    const object& one = objects_[where.object];
    return where.offset >= 0 && where.offset + bytes <= one.bytes && where.offset % one.granule == 0 &&
           bytes % one.granule == 0;
}

std::uint32_t memory::index_of(const place& where) const {
    const object& one = objects_[where.object];
    return one.first_cell + static_cast<std::uint32_t>(where.offset) / one.granule;
}

cell memory::read(const place& where, std::uint32_t bytes) const {
    const object& one = objects_[where.object];
    const std::uint32_t index = index_of(where);
    const std::uint32_t behind = index + bytes / one.granule;
    cell found = cells_[index];
    if (found.kind == cell_kind::tail || (found.kind != cell_kind::unset && found.bytes != bytes)) {
        found.kind = cell_kind::torn;
    }
    for (std::uint32_t next = index + 1; next < behind; ++next) {
        if (cells_[next].kind != (found.kind == cell_kind::unset ? cell_kind::unset : cell_kind::tail)) {
            found.kind = cell_kind::torn;
        }
    }
    return found;
}

void memory::write(const place& where, const cell& content) {
    const object& one = objects_[where.object];
    const std::uint32_t index = index_of(where);
    const std::uint32_t behind = index + content.bytes / one.granule;
    const std::uint32_t end = one.first_cell + one.bytes / one.granule;
    if (cells_[index].kind == cell_kind::tail) {
        std::uint32_t head = index;
        while (cells_[head].kind == cell_kind::tail) {
            --head;
        }
        set(head, {.kind = cell_kind::torn, .initial = false});
    }
    for (std::uint32_t rest = behind; rest < end && cells_[rest].kind == cell_kind::tail; ++rest) {
        set(rest, {.kind = cell_kind::torn, .initial = false});
    }
    cell written = content;
    written.last = last_value::unread;
    set(index, written);
    for (std::uint32_t next = index + 1; next < behind; ++next) {
        set(next, {.kind = cell_kind::tail, .initial = false});
    }
}

void memory::set(std::uint32_t index, const cell& content) {
    if (!branches_.empty() && index < branches_.back().first_new) {
        log_.push_back({index, cells_[index]});
    }
    cells_[index] = content;
}

void memory::note_read(std::uint32_t index, bool is_written_value) {
    was_read_[index] = true;
    if (follows_reads_ && is_written_value && cells_[index].last == last_value::unread) {
        cell read = cells_[index];
        read.last = last_value::read;
        set(index, read);
    }
}

void memory::begin_branch() { branches_.push_back({static_cast<std::uint32_t>(cells_.size()), log_.size()}); }

std::vector<memory::change> memory::end_branch() {
    const branch ended = branches_.back();
    branches_.pop_back();
    std::vector<change> changes;
    const auto start = log_.begin() + static_cast<std::ptrdiff_t>(ended.log_start);
    changes.reserve(static_cast<std::size_t>(log_.end() - start));
    for (auto entry = start; entry != log_.end(); ++entry) {
        changes.push_back({entry->index, cells_[entry->index]});
    }
    while (log_.size() > ended.log_start) {
        cells_[log_.back().index] = log_.back().before;
        log_.pop_back();
    }
    std::sort(changes.begin(), changes.end(),
              [](const change& left, const change& right) { return left.index < right.index; });
    changes.erase(std::unique(changes.begin(), changes.end(),
                              [](const change& left, const change& right) { return left.index == right.index; }),
                  changes.end());
    return changes;
}

}  // namespace xfc::flow
