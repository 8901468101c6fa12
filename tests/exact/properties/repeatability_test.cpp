#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <locale>
#include <string>
#include <vector>

#include "exact/properties/program_generator.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

constexpr std::array kinds{program_kind::single_precision, program_kind::double_precision, program_kind::integer,
                           program_kind::mixed};

std::string everything_of(const run_result& result) {
    std::string text = std::to_string(result.status) + "\n" + result.standard_output + result.standard_error;
    for (const auto& [name, content] : result.files) {
        text += name + "\n" + content;
    }
    return text;
}

/// What the compiler makes of some generated programs, in both languages, with every choice of switches.
std::vector<std::string> compile_programs() {
    std::vector<std::string> texts;
    for (std::uint64_t seed = 2000; seed < 2010; ++seed) {
        for (const program_kind kind : kinds) {
            run_request request{.source = generate_program({.seed = seed, .kind = kind, .reassigns = seed % 3 == 0}),
                                .switches = generate_switches(seed)};
            if (seed % 2 == 0) {
                request.switches.emplace_back("-vlg");
            }
            texts.push_back(everything_of(compile(request)));
        }
    }
    return texts;
}

/// The same as it was made first.
const std::vector<std::string>& first_texts() {
    static const std::vector<std::string> texts = compile_programs();
    return texts;
}

/// Names of the machine's locales, those with a decimal comma first.
std::vector<std::string> other_locales() {
    std::vector<std::string> names{"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "tr_TR.UTF-8"};
    if (FILE* list = popen("locale -a 2>/dev/null", "r"); list != nullptr) {
        std::array<char, 128> line{};
        while (std::fgets(line.data(), line.size(), list) != nullptr) {
            std::string name(line.data());
            name.erase(name.find_last_not_of('\n') + 1);
            if (name != "C" && name != "POSIX") {
                names.push_back(name);
            }
        }
        pclose(list);
    }
    return names;
}

class locale_guard {
public:
    locale_guard() = default;
    locale_guard(const locale_guard&) = delete;
    locale_guard& operator=(const locale_guard&) = delete;
    ~locale_guard() {
        std::setlocale(LC_ALL, "C");
        std::locale::global(before_);
    }

private:
    std::locale before_;
};

class decimal_comma : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(repeatability, compiling_twice_gives_the_same_bytes) { EXPECT_EQ(compile_programs(), first_texts()); }

TEST(repeatability, a_run_leaves_nothing_behind_that_changes_the_next) {
    const run_request first{.source = generate_program({.seed = 7, .kind = program_kind::mixed})};
    const run_request between{.source = "float a, y; main() { y = y + a; }\n", .switches = {"-mm", "36", "-vlg"}};
    const std::string before = everything_of(compile(first));
    EXPECT_EQ(compile(between).status, 1);
    EXPECT_EQ(everything_of(compile(first)), before);
}

TEST(repeatability, another_locale_of_the_machine_gives_the_same_bytes) {
    const std::vector<std::string>& expected = first_texts();
    const locale_guard guard;
    for (const std::string& name : other_locales()) {
        if (std::setlocale(LC_ALL, name.c_str()) != nullptr) {
            EXPECT_EQ(compile_programs(), expected) << name;
            return;
        }
    }
    GTEST_SKIP() << "no locale besides C";
}

TEST(repeatability, a_decimal_comma_in_the_global_locale_gives_the_same_bytes) {
    const std::vector<std::string>& expected = first_texts();
    const locale_guard guard;
    std::locale::global(std::locale(std::locale::classic(), new decimal_comma));
    EXPECT_EQ(compile_programs(), expected);
}

TEST(repeatability, the_generator_makes_the_same_program_from_the_same_number) {
    for (const program_kind kind : kinds) {
        EXPECT_EQ(generate_program({.seed = 3, .kind = kind}), generate_program({.seed = 3, .kind = kind}));
        EXPECT_NE(generate_program({.seed = 3, .kind = kind}), generate_program({.seed = 4, .kind = kind}));
    }
}

}  // namespace

}  // namespace xfc::test
