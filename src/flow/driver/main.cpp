#include <unistd.h>

#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "flow/driver/commands.h"

int main(int count, char** words) {
    // The parser's library cannot go on without memory, so the program ends here whoever asked for it.
    std::set_new_handler([] {
        constexpr char text[] = "xfcflow: error: out of memory\n";
        (void)!write(STDERR_FILENO, text, sizeof text - 1);
        _exit(1);
    });
    const std::vector<std::string> arguments(words + 1, words + count);
    return xfc::flow::run(arguments, std::cout, std::cerr, isatty(STDERR_FILENO) == 1);
}
