#pragma once

#include <clang/AST/ASTContext.h>
#include <clang/Basic/SourceManager.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "flow/diagnostics/diagnostics.h"
#include "flow/frontend/frontend.h"

namespace xfc::flow {

/// How much stack is left where the machine's stack grows down.
class stack_watch {
public:
    /// Counts from the caller's frame.
    explicit stack_watch(std::size_t limit) : limit_(limit), start_(here()) {}

    [[nodiscard]] bool exhausted() const { return start_ - here() > limit_; }

private:
    static std::uintptr_t here() { return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)); }

    std::size_t limit_;
    std::uintptr_t start_;
};

/// Sizes of the stack, in bytes. The parser is stopped first, since what looks at its result goes deeper.
inline constexpr std::size_t thread_stack = std::size_t{1} << 30U;
inline constexpr std::size_t parser_stack = std::size_t{8} << 20U;
inline constexpr std::size_t executor_stack = std::size_t{900} << 20U;

inline constexpr std::size_t longest_token = 1000;       ///< characters
inline constexpr std::size_t most_tokens = 10000000;     ///< behind the preprocessor
inline constexpr std::size_t most_warnings = 50;         ///< of C
inline constexpr std::size_t most_dimensions = 200;      ///< and subscripts of one name
inline constexpr std::size_t most_chained = 5000;        ///< logical operators, comparisons, shifts between two commas
inline constexpr std::size_t longest_range = 5;          ///< digits of the end of a range of designators
inline constexpr std::size_t most_expansions = 5000000;  ///< of macros

/// Everything of clang that one compilation holds.
class parser {
public:
    parser(const source_text& source, const frontend_options& options, diagnostics& messages);
    ~parser();
    parser(const parser&) = delete;
    parser& operator=(const parser&) = delete;

    /// Parses the whole source and tells the texts of all files that it read. False when there was an error, which is
    /// reported then.
    [[nodiscard]] bool parse(const stack_watch& stack, source_map& places);

    [[nodiscard]] clang::ASTContext& context();
    /// Whether the source has operators that tell the size of something.
    [[nodiscard]] bool asks_for_sizes() const;
    [[nodiscard]] const clang::SourceManager& sources() const;

private:
    void describe_places(source_map& places) const;

    struct parts;
    std::unique_ptr<parts> parts_;
};

/// A stretch of source as the source map counts; macros stand where they are used.
[[nodiscard]] source_range range_of(clang::SourceRange range, const clang::SourceManager& sources,
                                    const clang::LangOptions& language);

/// The same for many stretches of one source: the plain tokens of the main file are measured without the scanner.
class token_ends {
public:
    token_ends(const clang::SourceManager& sources, const clang::LangOptions& language);

    [[nodiscard]] source_range range_of(clang::SourceRange range) const;

private:
    const clang::SourceManager& sources_;
    const clang::LangOptions& language_;
    std::uint32_t begin_ = 0;     ///< of the main file, as places count
    std::string_view text_ = {};  ///< the main file's
};

/// Whether the function was declared by a call alone, as older sources use the known functions.
[[nodiscard]] bool is_declared_by_call(const clang::FunctionDecl& function);

}  // namespace xfc::flow
