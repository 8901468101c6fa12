#pragma once

#include <chrono>
#include <iosfwd>
#include <string>
#include <string_view>

namespace xfc::flow {

/// A bar on a terminal that says how far long work is; gone when the work is done. Work of less than half a second
/// shows none.
class progress_bar {
public:
    /// `shown`: there is a terminal behind `out`.
    progress_bar(std::ostream& out, bool shown);
    ~progress_bar();
    progress_bar(const progress_bar&) = delete;
    progress_bar& operator=(const progress_bar&) = delete;

    /// `done` of `total` parts of this work are done; a total of 0: nobody knows.
    void show(std::string_view work, std::size_t done, std::size_t total);
    void clear();

private:
    std::ostream& out_;
    bool shown_;
    bool visible_ = false;
    std::chrono::steady_clock::time_point next_;  ///< not drawn again before
};

}  // namespace xfc::flow
