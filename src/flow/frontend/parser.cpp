#include "flow/frontend/parser.h"

#include <clang/AST/ASTConsumer.h>
#include <clang/AST/Decl.h>
#include <clang/Basic/Builtins.h>
#include <clang/Basic/Diagnostic.h>
#include <clang/Basic/DiagnosticIDs.h>
#include <clang/Basic/DiagnosticLex.h>
#include <clang/Basic/DiagnosticOptions.h>
#include <clang/Basic/DiagnosticSema.h>
#include <clang/Basic/FileManager.h>
#include <clang/Basic/LangStandard.h>
#include <clang/Basic/TargetInfo.h>
#include <clang/Basic/TargetOptions.h>
#include <clang/Lex/DirectoryLookup.h>
#include <clang/Lex/HeaderSearch.h>
#include <clang/Lex/HeaderSearchOptions.h>
#include <clang/Lex/Lexer.h>
#include <clang/Lex/MacroArgs.h>
#include <clang/Lex/ModuleLoader.h>
#include <clang/Lex/PPCallbacks.h>
#include <clang/Lex/Preprocessor.h>
#include <clang/Lex/PreprocessorOptions.h>
#include <clang/Parse/ParseAST.h>
#include <clang/Sema/ExternalSemaSource.h>
#include <clang/Sema/Lookup.h>
#include <clang/Sema/Sema.h>
#include <llvm/Support/CrashRecoveryContext.h>
#include <llvm/Support/MemoryBuffer.h>
#include <llvm/Support/VirtualFileSystem.h>
#include <llvm/TargetParser/Triple.h>

#include <algorithm>
#include <cassert>
#include <string_view>
#include <utility>
#include <vector>

#include "flow/frontend/headers.h"
#include "flow/frontend/known_functions.h"

namespace xfc::flow {

namespace {

constexpr const char* target_triple = "armv7-none-eabi";  // int, long and pointers of 32 bits
constexpr unsigned most_errors = 20;

severity severity_of(clang::DiagnosticsEngine::Level level) {
    switch (level) {
        case clang::DiagnosticsEngine::Ignored:
        case clang::DiagnosticsEngine::Note:
        case clang::DiagnosticsEngine::Remark:
            return severity::note;
        case clang::DiagnosticsEngine::Warning:
            return severity::warning;
        default:
            return severity::error;
    }
}

/// What to do about those of clang's messages that programs meet most and that do not say it themselves.
std::string_view hint_of(unsigned id) {
    switch (id) {
        case clang::diag::err_undeclared_var_use:
        case clang::diag::err_undeclared_var_use_suggest:
            return "declare it; what one function declares no other one sees: shared names stand outside";
        case clang::diag::ext_implicit_function_decl_c99:
            return "define it in this file, or include the header that declares it";
        case clang::diag::err_pp_file_not_found:
            return "--include FOLDER says where else to search";
        case clang::diag::err_unknown_typename:
        case clang::diag::err_unknown_typename_suggest:
            return "declare the type first, or include its header";
        default:
            return {};
    }
}

/// Turns clang's messages into ours, so that all look alike.
class message_consumer : public clang::DiagnosticConsumer {
public:
    message_consumer(diagnostics& messages, const clang::LangOptions& language)
        : messages_(messages), language_(language) {}

    void HandleDiagnostic(clang::DiagnosticsEngine::Level level, const clang::Diagnostic& info) override {
        const bool warns = level == clang::DiagnosticsEngine::Warning;
        if (silent_ || (warns && ++warnings_ > most_warnings)) {
            silent_notes_ = true;
            return;
        }
        if (level == clang::DiagnosticsEngine::Note && silent_notes_) {
            return;  // of a message that was left out
        }
        silent_notes_ = false;
        clang::DiagnosticConsumer::HandleDiagnostic(level, info);
        llvm::SmallString<256> text;
        info.FormatDiagnostic(text);
        diagnostic message{.level = severity_of(level), .text = text.str().str()};
        if (message.level != severity::note) {
            const llvm::StringRef flag = clang::DiagnosticIDs::getWarningOptionForDiag(info.getID());
            message.name = flag.empty() ? "c" : "c-" + flag.str();
            message.hint = hint_of(info.getID());
        }
        if (info.hasSourceManager() && info.getLocation().isValid()) {
            message.where = place_of(info);
        }
        messages_.report(std::move(message));
    }

    /// Nothing that follows from an end put by us is worth a message.
    void be_silent() { silent_ = true; }

private:
    /// From the place itself to the end of a range that begins there; else the token alone.
    source_range place_of(const clang::Diagnostic& info) const {
        const clang::SourceManager& sources = info.getSourceManager();
        const source_range token = range_of(info.getLocation(), sources, language_);
        for (const clang::CharSourceRange& one : info.getRanges()) {
            const source_range range = range_of(one.getAsRange(), sources, language_);
            if (range.begin == token.begin && range.end > token.end) {
                return range;
            }
        }
        return token;
    }

    diagnostics& messages_;
    const clang::LangOptions& language_;
    bool silent_ = false;
    bool silent_notes_ = false;
    std::size_t warnings_ = 0;
};

/// Declares a known function when it is called without a declaration, as older sources do.
class older_functions : public clang::ExternalSemaSource {
public:
    explicit older_functions(clang::ASTContext& context) : context_(context) {}

    bool LookupUnqualified(clang::LookupResult& result, clang::Scope* /*scope*/) override {
        if (result.isForRedeclaration() || result.getLookupKind() != clang::Sema::LookupOrdinaryName) {
            return false;
        }
        const clang::IdentifierInfo* name = result.getLookupName().getAsIdentifierInfo();
        const found_function found = name == nullptr ? found_function{} : find_known_function(name->getName());
        if (found.row == nullptr) {
            return false;
        }
        clang::FunctionDecl*& function = made_[name];
        if (function == nullptr) {
            function = declare(result.getLookupName(), *found.row, found.single);
        }
        result.addDecl(function);
        return true;
    }

private:
    clang::FunctionDecl* declare(clang::DeclarationName name, const known_function& row, bool single) {
        const clang::QualType type = single ? context_.FloatTy : context_.DoubleTy;
        llvm::SmallVector<clang::QualType, 2> types(static_cast<std::size_t>(row.arguments), type);
        if (row.second_integer) {
            types.back() = context_.IntTy;
        }
        const clang::QualType whole = context_.getFunctionType(type, types, {});
        auto* function = clang::FunctionDecl::Create(context_, context_.getTranslationUnitDecl(), {}, {}, name, whole,
                                                     nullptr, clang::SC_Extern);
        llvm::SmallVector<clang::ParmVarDecl*, 2> parameters;
        for (const clang::QualType one : types) {
            parameters.push_back(
                clang::ParmVarDecl::Create(context_, function, {}, {}, nullptr, one, nullptr, clang::SC_None, nullptr));
        }
        function->setParams(parameters);
        function->setImplicit();
        return function;
    }

    clang::ASTContext& context_;
    llvm::DenseMap<const clang::IdentifierInfo*, clang::FunctionDecl*> made_;
};

/// Tokens in arguments of macros, those of nested calls counted anew: each call looks through all of its own.
constexpr std::size_t most_in_arguments = 20000000;

/// Ends a program whose macros grow without end: there is no token then at which to stop.
class expansion_counter : public clang::PPCallbacks {
public:
    explicit expansion_counter(std::function<void(clang::SourceLocation)> on_limit) : on_limit_(std::move(on_limit)) {}

    void MacroExpands(const clang::Token& name, const clang::MacroDefinition& definition, clang::SourceRange /*range*/,
                      const clang::MacroArgs* arguments) override {
        // Arguments are expanded by recursion before they are put in, so enclosing expansions stand higher on the
        // stack; each repeats its argument as often as its text names it.
        const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
        while (!enclosing_.empty() && enclosing_.back().frame <= here) {
            enclosing_.pop_back();
        }
        const std::size_t outer = enclosing_.empty() ? 1 : enclosing_.back().copies;
        const std::size_t copies = outer * (arguments != nullptr ? most_uses(*definition.getMacroInfo()) : 1);
        enclosing_.push_back({here, copies});
        std::size_t longest = 1;
        for (unsigned index = 0; arguments != nullptr && index < definition.getMacroInfo()->getNumParams(); ++index) {
            const std::size_t length = clang::MacroArgs::getArgLength(arguments->getUnexpArgument(index));
            longest = std::max(longest, length);
            in_arguments_ += length;
        }
        if (++count_ > most_expansions || copies * longest > most_expansions || in_arguments_ > most_in_arguments) {
            on_limit_(name.getLocation());
        }
    }

private:
    struct expansion {
        std::uintptr_t frame;
        std::size_t copies;
    };

    static std::size_t most_uses(const clang::MacroInfo& macro) {
        std::vector<std::size_t> uses(macro.getNumParams() + 1, 0);
        std::size_t most = 1;
        for (const clang::Token& token : macro.tokens()) {
            const clang::IdentifierInfo* identifier = token.getIdentifierInfo();
            const int number = identifier != nullptr ? macro.getParameterNum(identifier) : -1;
            if (number >= 0) {
                most = std::max(most, ++uses[static_cast<std::size_t>(number)]);
            }
        }
        return most;
    }

    std::function<void(clang::SourceLocation)> on_limit_;
    std::vector<expansion> enclosing_;
    std::size_t count_ = 0;
    std::size_t in_arguments_ = 0;
};

llvm::IntrusiveRefCntPtr<llvm::vfs::FileSystem> make_file_system() {
    auto headers = llvm::makeIntrusiveRefCnt<llvm::vfs::InMemoryFileSystem>();
    for (built_in_header& header : built_in_headers()) {
        const std::string path = std::string(header_folder) + "/" + std::string(header.name);
        headers->addFile(path, 0, llvm::MemoryBuffer::getMemBufferCopy(header.text, path));
    }
    auto all = llvm::makeIntrusiveRefCnt<llvm::vfs::OverlayFileSystem>(llvm::vfs::getRealFileSystem());
    all->pushOverlay(std::move(headers));
    return all;
}

clang::LangOptions make_language() {
    clang::LangOptions language;
    std::vector<std::string> includes;
    clang::LangOptions::setLangDefaults(language, clang::Language::C, llvm::Triple(target_triple), includes,
                                        clang::LangStandard::lang_gnu17);
    language.NoBuiltin = true;  // sqrt and its like are found as known functions
    language.CharIsSigned = true;
    language.BracketDepth = 1000000;  // the stack is watched instead
    language.MathErrno = false;
    return language;
}

std::string make_predefines(const frontend_options& options) {
    std::string text =
        "#define __STDC__ 1\n#define __STDC_VERSION__ 201710L\n#define __STDC_HOSTED__ 0\n#define __XFCFLOW__ 1\n";
    for (const std::string& one : options.definitions) {
        const std::size_t equals = one.find('=');
        text += "#define " + one.substr(0, equals) + ' ';
        text += (equals == std::string::npos ? "1" : one.substr(equals + 1)) + '\n';
    }
    return text;
}

}  // namespace

struct parser::parts {
    parts(source_text given_source, frontend_options given_options, diagnostics& given_messages)
        : source(std::move(given_source)),
          options(std::move(given_options)),
          messages(given_messages),
          language(make_language()),
          consumer(messages, language),
          engine(llvm::makeIntrusiveRefCnt<clang::DiagnosticIDs>(),
                 llvm::makeIntrusiveRefCnt<clang::DiagnosticOptions>(), &consumer, false),
          files(clang::FileSystemOptions(), make_file_system()),
          sources(engine, files) {}

    source_text source;
    frontend_options options;
    diagnostics& messages;
    clang::LangOptions language;
    message_consumer consumer;
    clang::DiagnosticsEngine engine;
    clang::FileManager files;
    clang::SourceManager sources;
    llvm::IntrusiveRefCntPtr<clang::TargetInfo> target;
    std::unique_ptr<clang::HeaderSearch> headers;
    clang::TrivialModuleLoader modules;
    std::unique_ptr<clang::Preprocessor> preprocessor;
    llvm::IntrusiveRefCntPtr<clang::ASTContext> context;
    clang::ASTConsumer nobody;
    std::unique_ptr<clang::Sema> sema;
    std::size_t tokens = 0;
    std::size_t brackets = 0;  ///< opened one behind the other, with nothing but names and numbers between
    std::size_t chained = 0;   ///< operators and attributes one behind the other whose square the parser's time takes
    bool behind_ellipsis = false;
    bool asks_for_sizes = false;
    bool stopped = false;

    bool enter_source();
    void choose_warnings();
    void find_headers();
    void stop_at(clang::SourceLocation place, message_id id, std::initializer_list<std::string_view> arguments = {});
    void watch(const clang::Token& token, const stack_watch& stack);
};

parser::parser(const source_text& source, const frontend_options& options, diagnostics& messages)
    : parts_(std::make_unique<parts>(source, options, messages)) {}

parser::~parser() = default;

bool parser::parts::enter_source() {
    std::unique_ptr<llvm::MemoryBuffer> buffer;
    if (source.text) {
        buffer = llvm::MemoryBuffer::getMemBufferCopy(*source.text, source.path);
    } else {
        auto read = llvm::MemoryBuffer::getFile(source.path, false, true);
        if (!read) {
            messages.report(message_id::cannot_read, {}, {source.path, read.getError().message()});
            return false;
        }
        buffer = std::move(*read);
    }
    // A file's own entry lets #include "..." find what stands beside it; the text itself is given by hand.
    const auto size = static_cast<off_t>(buffer->getBufferSize());
    const clang::FileEntryRef entry = files.getVirtualFileRef(source.path, size, 0);
    sources.overrideFileContents(entry, std::move(buffer));
    sources.setMainFileID(sources.createFileID(entry, {}, clang::SrcMgr::C_User));
    return true;
}

/// Older sources have no types before main and no prototypes; whether a value is returned is seen when it is used.
void parser::parts::choose_warnings() {
    engine.setErrorLimit(most_errors);
    for (const char* group : {"implicit-int", "main-return-type", "main", "return-type", "deprecated-non-prototype",
                              "missing-prototypes", "incompatible-library-redeclaration", "unknown-pragmas",
                              "strict-prototypes", "uninitialized", "unused-value"}) {
        engine.setSeverityForGroup(clang::diag::Flavor::WarningOrError, group, clang::diag::Severity::Ignored);
    }
}

void parser::parts::find_headers() {
    headers = std::make_unique<clang::HeaderSearch>(std::make_shared<clang::HeaderSearchOptions>(), sources, engine,
                                                    language, target.get());
    std::vector<clang::DirectoryLookup> folders;
    for (const std::string& folder : options.include_folders) {
        if (auto found = files.getOptionalDirectoryRef(folder)) {
            folders.emplace_back(*found, clang::SrcMgr::C_User, false);
        }
    }
    const auto own = static_cast<unsigned>(folders.size());
    if (auto found = files.getOptionalDirectoryRef(header_folder)) {
        folders.emplace_back(*found, clang::SrcMgr::C_System, false);
    }
    headers->SetSearchPaths(std::move(folders), 0, own, llvm::DenseMap<unsigned, unsigned>());
}

void parser::parts::stop_at(clang::SourceLocation place, message_id id,
                            std::initializer_list<std::string_view> arguments) {
    if (!stopped) {
        stopped = true;
        consumer.be_silent();
        messages.report(id, range_of(place, sources, language), arguments);
    }
}

/// Looks at every token that reaches the parser, which recurses without a guard of its own; behind a limit the parser
/// sees nothing but the end of the file.
void parser::parts::watch(const clang::Token& token, const stack_watch& stack) {
    ++tokens;
    const bool dimension = token.isOneOf(clang::tok::l_square, clang::tok::r_square, clang::tok::numeric_constant) ||
                           token.is(clang::tok::identifier);
    brackets = dimension ? brackets + (token.is(clang::tok::l_square) ? 1U : 0U) : 0U;
    using namespace clang::tok;
    if (token.isOneOf(semi, l_brace, r_brace, comma)) {
        chained = 0;
    }
    const bool chains = token.isOneOf(ampamp, pipepipe, less, greater, lessequal, greaterequal, equalequal,
                                      exclaimequal, lessless, greatergreater, kw___attribute);
    chained += chains ? 1U : 0U;
    asks_for_sizes = asks_for_sizes || token.isOneOf(kw_sizeof, kw_alignof, kw__Alignof, kw___builtin_offsetof);
    const bool large_range =
        behind_ellipsis && token.is(clang::tok::numeric_constant) && token.getLength() > longest_range;
    behind_ellipsis = token.is(clang::tok::ellipsis);
    if (large_range) {
        stop_at(token.getLocation(), message_id::large_range, {std::to_string(longest_range)});
    } else if (stack.exhausted() || brackets > most_dimensions || chained > most_chained) {
        stop_at(token.getLocation(), message_id::nesting_too_deep);
    } else if (!token.isAnnotation() && token.getLength() > longest_token) {
        stop_at(token.getLocation(), message_id::token_too_long, {std::to_string(longest_token)});
    } else if (tokens > most_tokens) {
        stop_at(token.getLocation(), message_id::too_many_tokens, {std::to_string(most_tokens), "tokens"});
    }
    if (stopped) {
        auto& ended = const_cast<clang::Token&>(token);
        const clang::SourceLocation place = ended.getLocation();
        ended.startToken();
        ended.setKind(clang::tok::eof);
        ended.setLocation(place);
    }
}

bool parser::parse(const stack_watch& stack, source_map& places) {
    parts& all = *parts_;
    all.choose_warnings();
    auto target_options = std::make_shared<clang::TargetOptions>();
    target_options->Triple = target_triple;
    all.target = clang::TargetInfo::CreateTargetInfo(all.engine, target_options);
    all.target->adjust(all.engine, all.language);
    all.consumer.BeginSourceFile(all.language, nullptr);
    if (!all.enter_source()) {
        return false;
    }
    all.find_headers();
    all.preprocessor = std::make_unique<clang::Preprocessor>(std::make_shared<clang::PreprocessorOptions>(), all.engine,
                                                             all.language, all.sources, *all.headers, all.modules);
    all.preprocessor->Initialize(*all.target);
    all.preprocessor->setPredefines(make_predefines(all.options));
    all.preprocessor->setTokenWatcher([&](const clang::Token& token) { all.watch(token, stack); });
    all.preprocessor->addPPCallbacks(std::make_unique<expansion_counter>([&](clang::SourceLocation place) {
        all.stop_at(place, message_id::too_many_tokens, {std::to_string(most_expansions), "macro expansions"});
        describe_places(places);
        if (auto* rescue = llvm::CrashRecoveryContext::GetCurrent()) {
            rescue->HandleExit(1);
        }
    }));
    all.preprocessor->getBuiltinInfo().initializeBuiltins(all.preprocessor->getIdentifierTable(), all.language);
    all.context = llvm::makeIntrusiveRefCnt<clang::ASTContext>(
        all.language, all.sources, all.preprocessor->getIdentifierTable(), all.preprocessor->getSelectorTable(),
        all.preprocessor->getBuiltinInfo(), clang::TU_Complete);
    all.context->InitBuiltinTypes(*all.target);
    all.sema = std::make_unique<clang::Sema>(*all.preprocessor, *all.context, all.nobody, clang::TU_Complete, nullptr);
    all.sema->addExternalSource(new older_functions(*all.context));  // counted by reference
    clang::ParseAST(*all.sema);
    describe_places(places);
    return !all.stopped && !all.messages.has_errors();
}

void parser::describe_places(source_map& places) const {
    const clang::SourceManager& all = parts_->sources;
    for (unsigned index = 1; index < all.local_sloc_entry_size(); ++index) {
        const clang::SrcMgr::SLocEntry& entry = all.getLocalSLocEntry(index);
        if (!entry.isFile() || entry.getOffset() == 0) {
            continue;
        }
        const clang::SourceLocation start = clang::SourceLocation::getFromRawEncoding(entry.getOffset());
        bool invalid = false;
        const llvm::StringRef text = all.getBufferData(all.getFileID(start), &invalid);
        const auto file = entry.getFile().getContentCache().OrigEntry;
        if (!invalid) {
            places.add_file(entry.getOffset(), file ? file->getName().str() : "<command line>", text.str());
        }
    }
}

clang::ASTContext& parser::context() { return *parts_->context; }
bool parser::asks_for_sizes() const { return parts_->asks_for_sizes; }
const clang::SourceManager& parser::sources() const { return parts_->sources; }

source_range range_of(clang::SourceRange range, const clang::SourceManager& sources,
                      const clang::LangOptions& language) {
    if (range.isInvalid()) {
        return {};
    }
    const clang::SourceLocation begin = sources.getExpansionLoc(range.getBegin());
    const clang::SourceLocation last = sources.getExpansionRange(range.getEnd()).getEnd();
    const clang::SourceLocation end = clang::Lexer::getLocForEndOfToken(last, 0, sources, language);
    source_range result{begin.getRawEncoding(), end.isValid() ? end.getRawEncoding() : 0};
    if (result.end <= result.begin) {
        result.end = result.begin + 1;
    }
    return result;
}

namespace {

bool continues_name(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') ||
           letter == '_';
}

/// Bytes of a name, a number without sign or a closing bracket at the front of the text; 0 when only the scanner knows.
std::size_t plain_token_length(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    if (text.front() == ')' || text.front() == ']' || text.front() == '}' || text.front() == ';') {
        return 1;
    }
    const bool is_number = text.front() >= '0' && text.front() <= '9';
    std::size_t length = 0;
    while (length < text.size() && (continues_name(text[length]) || (is_number && text[length] == '.'))) {
        ++length;
    }
    if (length == 0 || length == text.size()) {
        return 0;
    }
    // A sign of an exponent, a quote behind a prefix, a line that goes on, letters beyond ASCII.
    constexpr std::string_view ends = " \t\n\r;,()[]{}*/%<>=!&|^~:";
    const bool signs = !is_number && (text[length] == '+' || text[length] == '-' || text[length] == '.');
    return signs || ends.find(text[length]) != std::string_view::npos ? length : 0;
}

}  // namespace

token_ends::token_ends(const clang::SourceManager& sources, const clang::LangOptions& language)
    : sources_(sources), language_(language) {
    const clang::FileID main = sources.getMainFileID();
    if (const auto text = sources.getBufferDataOrNone(main)) {
        begin_ = sources.getLocForStartOfFile(main).getRawEncoding();
        text_ = *text;
    }
}

source_range token_ends::range_of(clang::SourceRange range) const {
    const std::uint32_t begin = range.getBegin().getRawEncoding();
    const std::uint32_t last = range.getEnd().getRawEncoding();
    const bool inside = range.getBegin().isFileID() && range.getEnd().isFileID() && begin >= begin_ && last >= begin &&
                        last - begin_ < text_.size();
    const std::size_t length = inside ? plain_token_length(text_.substr(last - begin_)) : 0;
    if (length == 0) {
        return flow::range_of(range, sources_, language_);
    }
    const source_range measured{begin, last + static_cast<std::uint32_t>(length)};
    assert(measured == flow::range_of(range, sources_, language_));
    return measured;
}

bool is_declared_by_call(const clang::FunctionDecl& function) {
    return function.isImplicit() && function.getLocation().isInvalid();
}

}  // namespace xfc::flow
