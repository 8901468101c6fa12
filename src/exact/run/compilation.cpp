#include "exact/run/compilation.h"

#include <sys/stat.h>
#include <unistd.h>

namespace xfc {

compilation current;

bool is_unfinished_output_removable() {
    const open_output& output = current.unfinished_output;
    struct stat named {};
    struct stat opened {};
    return output.name != nullptr && lstat(output.name, &named) == 0 && fstat(output.descriptor, &opened) == 0 &&
           S_ISREG(named.st_mode) && named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

void remove_unfinished_output() {
    if (is_unfinished_output_removable()) {
        static_cast<void>(unlink(current.unfinished_output.name));
    }
}

}  // namespace xfc
