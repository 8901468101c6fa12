#include <cstdio>
#include <cstdlib>
#include <new>

#include "base/console.h"
#include "base/messages.h"
#include "driver/compiler.h"

namespace {

[[noreturn]] void end_without_memory() {
    // Nothing that allocates may run any more.
    const std::string_view text = xfc::catalogue_entry(xfc::message_id::out_of_memory).text;
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
    std::_Exit(1);
}

}  // namespace

int main(int argument_count, char** arguments) {
    std::set_new_handler(end_without_memory);
    const auto count = static_cast<std::size_t>(argument_count > 0 ? argument_count - 1 : 0);
    xfc::end_run(xfc::run_compiler({arguments + (count > 0 ? 1 : 0), count}));
}
