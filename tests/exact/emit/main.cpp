#include <gtest/gtest.h>

#include <iostream>
#include <string_view>

#include "exact/emit/text_file.h"

/// Usage: exact_emit_tests [--accept] [flags of GoogleTest]
/// --accept writes tests/exact/emit/texts anew from what the emitters write now.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) != "--accept") {
            std::cerr << "Usage: " << argv[0] << " [--accept] [flags of GoogleTest]\n";
            return 1;
        }
        xfc::test::accept_texts = true;
    }
    return RUN_ALL_TESTS();
}
