#pragma once

#include "base/text_writer.h"
#include "exact/run/messages.h"

namespace xfc {

/// The two streams of the process. All text of the compiler goes through them.
extern text_writer standard_output;
extern text_writer standard_error;

/// Writes both streams out. Returns the process's exit status: `status`, or 1 when the standard output cannot be
/// written, which is said on the standard error.
[[nodiscard]] int finish_streams(int status);

/// Where a message is written. What was said before on the other stream is written out first, so that a terminal
/// shows both in the order in which they were said.
text_writer& open_message_stream(message_stream stream);

/// Thrown by `fail` and caught where the run began; what lies between lets go of what it holds.
struct run_failure {
    int status;
};

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
    throw run_failure{1};
}

}  // namespace xfc
