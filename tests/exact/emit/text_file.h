#pragma once

#include <string>
#include <string_view>

namespace xfc::test {

/// Set by the test program's flag --accept: text files are written anew instead of compared.
extern bool accept_texts;

/// Where the text files stand, one a component and a few for constants.
std::string text_folder();

/// Cases with their texts in both languages, collected in order and compared with texts/NAME.txt as a whole.
class text_file {
public:
    explicit text_file(std::string_view name) : path_(text_folder() + '/' + std::string(name) + ".txt") {}

    /// The heading says on one line how the graph was built. A text begins with a line end and may be one alone.
    void add_case(std::string_view heading, std::string_view vhdl, std::string_view verilog);

    /// Fails the test when the file has other cases; with --accept takes them.
    void compare() const;

private:
    std::string path_;
    std::string text_;
};

}  // namespace xfc::test
