#include <fcntl.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "exact/driver/compiler.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"
#include "exact/run/messages.h"

namespace {

[[noreturn]] void end_without_memory() {
    // Nothing that allocates may run any more.
    xfc::remove_unfinished_output();
    const std::string_view text = xfc::catalogue_entry(xfc::message_id::out_of_memory).text;
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
    std::_Exit(1);
}

/// The next file opened would get the number of a closed standard stream, and the log would go into the output. What
/// is written to or read from such a stream still fails.
void occupy_closed_streams() {
    for (int stream = 0; stream <= 2; ++stream) {
        if (fcntl(stream, F_GETFD) == -1) {
            static_cast<void>(open("/dev/null", stream == 0 ? O_WRONLY : O_RDONLY));
        }
    }
}

}  // namespace

int main(int argument_count, char** arguments) {
    std::set_new_handler(end_without_memory);
    occupy_closed_streams();
    // A write that meets a limit, or a reader that went away, fails with a message instead of a signal.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    const auto count = static_cast<std::size_t>(argument_count > 0 ? argument_count - 1 : 0);
    return xfc::finish_streams(xfc::run_compiler({arguments + (count > 0 ? 1 : 0), count}));
}
