#include "exact/emit/text_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace xfc::test {

bool accept_texts = false;

std::string text_folder() { return XFC_EMIT_TEXTS; }

void text_file::add_case(std::string_view heading, std::string_view vhdl, std::string_view verilog) {
    ASSERT_TRUE(vhdl.starts_with('\n') && verilog.starts_with('\n')) << heading;
    text_.append("==== ").append(heading);
    text_.append("\n---- VHDL").append(vhdl).append("---- Verilog").append(verilog);
}

void text_file::compare() const {
    if (accept_texts) {
        std::ofstream(path_, std::ios::binary) << text_;
    }
    std::ifstream stream(path_, std::ios::binary);
    ASSERT_TRUE(stream.is_open()) << "no text file " << path_ << "; --accept writes it";
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), text_) << path_;
}

}  // namespace xfc::test
