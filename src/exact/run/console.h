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

/// A message whose text takes arguments of these types; another one does not compile.
template <class... arguments>
struct fitting_message {
    // NOLINTNEXTLINE(google-explicit-constructor): an id is meant to become a checked message.
    consteval fitting_message(message_id id) : entry(catalogue_entry(id)) {
        if (!format_text<arguments...>::fits(entry.text)) {
            throw "the message takes other arguments";
        }
    }
    const message& entry;
};

/// Prints a message whose effect is that the run goes on.
template <class... arguments>
void report(std::type_identity_t<fitting_message<std::decay_t<arguments>...>> what, const arguments&... values) {
    write_fitting(open_message_stream(what.entry.stream), what.entry.text, values...);
}

/// Prints a message and ends the run with status 1.
template <class... arguments>
[[noreturn]] void fail(std::type_identity_t<fitting_message<std::decay_t<arguments>...>> what,
                       const arguments&... values) {
    write_fitting(open_message_stream(what.entry.stream), what.entry.text, values...);
    throw run_failure{1};
}

}  // namespace xfc
