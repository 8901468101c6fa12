#include "exact/driver/usage.h"

#include "exact/run/console.h"

namespace xfc {

void print_usage() {
    // Kept: a stray parenthesis ends the -ds line, and -vlg is not listed.
    write_format(open_message_stream(message_stream::standard_error),
                 "\nUsage:xfc <program.c>\n"
                 "Options: -ds : Pipeline longer additions)\n"
                 "Options: -mm : Single precision mantissa expansion (32,36)\n"
                 "Options: -fd : Insert fitting registers - (1+)\n"
                 "Options: -ni : Fully pre-normalize single precision multipliers\n"
                 "Options: -no : Post-normalize single precision multipliers\n"
                 "Options: -rc : Round all conversions between signed and unsigned numbers\n"
                 "Options: -rn : Round all normalizations\n"
                 "Options: -op : optimize away registers on simple internal output nodes\n"
                 "Options: -ns : normalization block performance (1,2 or 3)\n"
                 "Options: -ps : remove pipelines out of large alignments\n"
                 "Options: -xc : Maximum Cluster Size (2-16)\n"
                 "Options: -da : Double Precision Multiplier LSB Accuracy (prune multiplier)\n"
                 "Options: -s3 : Double Precision Morvane 3 optimized\n"
                 "Options: -mv : Single Precision Dot Product Optimization (0 = off,1,2,3)\n"
                 "Options: -s5 : Single Precision Dot Product Morvane 5 optimized\n"
                 "Options: -sy : Synthesize Arithmetic Components (behavioral model otherwise)\n");
}

}  // namespace xfc
