#pragma once

#include "base/text_writer.h"
#include "exact/run/messages.h"

namespace xfc {

/// The two streams of the process. All text of the compiler goes through them.
extern text_writer standard_output;
extern text_writer standard_error;

/// Writes both streams out and ends the process. A standard output that cannot be written makes the status 1.
[[noreturn]] void end_run(int status);

/// Called by `end_run` in place of the process's end; it must not return. A program that links the compiler as a
/// library sets it to survive a failing compilation.
using end_run_hook_type = void (*)(int status);
extern end_run_hook_type end_run_hook;

/// Where a message is written. What was said before on the other stream is written out first, so that a terminal
/// shows both in the order in which they were said.
text_writer& open_message_stream(message_stream stream);

/// Prints a message whose effect is that the run goes on.
template <class... arguments>
void report(message_id id, const arguments&... values) {
    const message& entry = catalogue_entry(id);
    write_format(open_message_stream(entry.stream), entry.text, values...);
}

/// Prints a message and ends the run with status 1.
template <class... arguments>
[[noreturn]] void fail(message_id id, const arguments&... values) {
    report(id, values...);
    end_run(1);
}

}  // namespace xfc
