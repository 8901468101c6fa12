#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/driver/commands.h"

namespace {

/// Asks for pages of 2 MB under the first part of the heap, which fill in a tenth less time than those of 4 KB. What is
/// reserved is not memory before it is used; where there is no room for it, all stays as it is.
void use_large_pages() {
    constexpr std::uintptr_t page = 2 << 20;     // bytes
    constexpr int reserved = 256 << 20;          // bytes
    constexpr std::size_t beyond_now = 1 << 20;  // more than the heap has at the start
    auto* const start = static_cast<char*>(sbrk(0));
    mallopt(M_TOP_PAD, reserved);
    void* volatile taken = std::malloc(beyond_now);  // volatile: the compiler leaves out what nobody uses
    std::free(taken);
    const auto* const end = static_cast<char*>(sbrk(0));
    char* const first = start + (page - reinterpret_cast<std::uintptr_t>(start) % page) % page;
    if (first < end) {
        madvise(first, static_cast<std::size_t>(end - first), MADV_HUGEPAGE);
    }
}

/// A compilation takes memory and ends: giving parts of it back on the way, or keeping the threads' apart, takes time.
void keep_memory() {
    constexpr int step = 4 << 20;  // bytes taken at once
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_THRESHOLD, 32 << 20);  // the most that it takes
    use_large_pages();
    mallopt(M_TOP_PAD, step);
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
