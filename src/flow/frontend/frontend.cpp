#include "flow/frontend/frontend.h"

#include <llvm/Support/CrashRecoveryContext.h>
#include <llvm/Support/ErrorHandling.h>
#include <sys/mman.h>

#include <csignal>
#include <filesystem>
#include <mutex>
#include <new>

#include "flow/frontend/executor.h"
#include "flow/frontend/parser.h"
#include "flow/frontend/pointer_sizes.h"

namespace xfc::flow {

namespace {

/// Signals of a failure inside the parser are answered on a stack of their own, since the usual one may be full.
void answer_signals_aside() {
    static std::once_flag once;
    std::call_once(once, [] {
        llvm::CrashRecoveryContext::Enable();
        for (const int number : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL}) {
            struct sigaction action = {};
            sigaction(number, nullptr, &action);
            action.sa_flags |= SA_ONSTACK;
            sigaction(number, &action, nullptr);
        }
        // The parser's library would say why in words of its own and end the program.
        llvm::install_fatal_error_handler([](void*, const char*, bool) { abort(); });
        llvm::install_bad_alloc_error_handler([](void*, const char*, bool) {
            if (const auto ends_the_program = std::get_new_handler()) {
                ends_the_program();
            }
            abort();
        });
    });
}

/// Whether a thread with the large stack can be had; the parser's library ends the program when it cannot.
bool has_room_for_thread() {
    void* stack = mmap(nullptr, thread_stack, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return stack != MAP_FAILED && munmap(stack, thread_stack) == 0;
}

/// A second stack for this thread's signals, as long as the object lives.
class signal_stack {
public:
    signal_stack() : memory_(std::make_unique<std::byte[]>(size)) {
        stack_t mine = {};
        mine.ss_sp = memory_.get();
        mine.ss_size = size;
        sigaltstack(&mine, &before_);
    }
    ~signal_stack() { sigaltstack(&before_, nullptr); }
    signal_stack(const signal_stack&) = delete;
    signal_stack& operator=(const signal_stack&) = delete;

private:
    static constexpr std::size_t size = std::size_t{1} << 16U;
    std::unique_ptr<std::byte[]> memory_;
    stack_t before_ = {};
};

/// One compilation, on a thread with a large stack.
struct compilation {
    const source_text& source;
    const frontend_options& options;
    diagnostics& messages;
    source_map& places;
    std::optional<program> result = std::nullopt;

    void run() {
        const stack_watch parsing(parser_stack);
        const stack_watch following(executor_stack);
        parser c(source, options, messages);
        if (!c.parse(parsing, places)) {
            return;
        }
        try {
            executor followed(c.context(), options, messages, following);
            result = followed.run(std::filesystem::path(source.path).stem().string());
            result->places = places;
            result->measures_pointers = c.asks_for_sizes() && measures_pointers(c.context());
        } catch (const refusal&) {
            result.reset();  // told already
        } catch (const std::bad_alloc&) {
            messages.report(message_id::out_of_memory, {});
        }
    }
};

}  // namespace

std::optional<program> read_program(const source_text& source, const frontend_options& options, diagnostics& messages,
                                    source_map& places) {
    answer_signals_aside();
    if (!has_room_for_thread()) {
        messages.report(message_id::out_of_memory, {});
        return std::nullopt;
    }
    compilation one{source, options, messages, places};
    llvm::CrashRecoveryContext rescue;
    const bool whole = rescue.RunSafelyOnThread(
        [&] {
            const signal_stack aside;
            one.run();
        },
        thread_stack);
    if (!whole && !messages.has_errors()) {
        messages.report(message_id::parser_failed, {});
    }
    if (!whole || messages.has_errors()) {
        return std::nullopt;
    }
    return std::move(one.result);
}

}  // namespace xfc::flow
