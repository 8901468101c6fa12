#include <malloc.h>
#include <unistd.h>

#include <iostream>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/driver/commands.h"

namespace {

/// A compilation takes memory and ends: giving parts of it back on the way, or keeping the threads' apart, takes time.
void keep_memory() {
    constexpr int step = 4 << 20;  // bytes taken at once
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_TOP_PAD, step);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_THRESHOLD, 32 << 20);  // the most that it takes
}

}  // namespace

int main(int count, char** words) {
    keep_memory();
    // The parser's library cannot go on without memory, so the program ends here whoever asked for it.
    // What it says is made while there is memory.
    static const std::string farewell = [] {
        xfc::flow::diagnostics messages;
        messages.report(xfc::flow::message_id::out_of_memory, {});
        return rendered(messages, {});
    }();
    std::set_new_handler([] {
        (void)!write(STDERR_FILENO, farewell.data(), farewell.size());
        _exit(1);
    });
    const std::vector<std::string> arguments(words + 1, words + count);
    return xfc::flow::run(arguments, std::cout, std::cerr, isatty(STDERR_FILENO) == 1);
}
