// Makes the table of xfc_divfp2x. Usage: make_tables FOLDER
#include "../common/table_generator.h"

using namespace xfc::tables;

int main(int count, char** arguments) {
    table made(
        "xfc_divfp2x_table",
        "2 ** 9 / b in the middle of 256 segments of b from 1 to 2, to the nearest integer, less 384: four digits "
        "in base 4\nfrom -1 to 2, each as its value plus 1; the highest is -2 with `minus_two`.",
        8, {{"minus_two", 1}, {"codes", 8}});
    for (std::int64_t segment = 0; segment < 256; ++segment) {
        const std::int64_t middle = 512 + 2 * segment + 1;  // in units of 2 ** -9
        const std::int64_t inverse = (2 * 512 * 512 / middle + 1) / 2;
        const std::int64_t digits = inverse - 384;
        const std::int64_t codes = (digits + 0x55) & 0xFF;
        made.add({digits < 0 && codes >= 0xC0 ? 1 : 0, codes});
    }
    return count == 2 ? made.write(arguments[1]) : 1;
}
