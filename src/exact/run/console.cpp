#include "exact/run/console.h"

namespace xfc {

text_writer standard_output(stdout);
text_writer standard_error(stderr);

text_writer& open_message_stream(message_stream stream) {
    if (stream == message_stream::standard_output) {
        return standard_output;
    }
    // A failed write is noticed again when the run ends.
    static_cast<void>(standard_output.flush());
    return standard_error;
}

int finish_streams(int status) {
    if (!standard_output.flush() && status == 0) {
        report(message_id::cannot_write_standard_output);
        status = 1;
    }
    static_cast<void>(standard_error.flush());
    return status;
}

}  // namespace xfc
