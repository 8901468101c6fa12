#include <unistd.h>

#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/driver/commands.h"

int main(int count, char** words) {
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
