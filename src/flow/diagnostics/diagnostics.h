#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "flow/diagnostics/catalogue.h"
#include "flow/graph/source_map.h"

namespace xfc::flow {

/// One message about one place, with what else belongs to it.
struct diagnostic {
    severity level = severity::error;
    std::string name = {};  ///< the row's, or "c" for what C itself says, or the compiler's name of a warning
    source_range where = {};
    std::string text = {};
    std::string hint = {};
    std::vector<diagnostic> additions = {};  ///< notes at other places
};

/// The messages of one compilation, in the order in which they came.
class diagnostics {
public:
    /// Adds a row's message with its %0, %1 ... filled in. The reference holds until the next message.
    diagnostic& report(message_id id, source_range where, std::initializer_list<std::string_view> arguments = {});

    /// Adds a note to the last message; without one it stands by itself.
    void add_to_last(message_id id, source_range where, std::initializer_list<std::string_view> arguments = {});

    /// Adds a message that is no row, as the parser of C makes them. Notes go to the message before.
    void report(diagnostic message);

    [[nodiscard]] const std::vector<diagnostic>& messages() const { return messages_; }
    [[nodiscard]] std::size_t count_of(severity level) const;
    [[nodiscard]] bool has_errors() const { return count_of(severity::error) != 0; }

private:
    std::vector<diagnostic> messages_;
};

/// A row's text with its %0, %1 ... replaced.
[[nodiscard]] std::string filled_in(std::string_view text, std::initializer_list<std::string_view> arguments);

/// The message as a terminal shows it:
///
///     prog.c:4:9: error: this index is not known at compile time [unknown-index]
///         4 |     y = x[n];
///           |         ^~~~
///           hint: index with constants and loop counters
///
/// with its additions below. `colour` adds the terminal's colours.
[[nodiscard]] std::string rendered(const diagnostic& message, const source_map& places, bool colour = false);

/// All messages one below the other.
[[nodiscard]] std::string rendered(const diagnostics& messages, const source_map& places, bool colour = false);

}  // namespace xfc::flow
