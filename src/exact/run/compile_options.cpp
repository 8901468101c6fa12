#include "exact/run/compile_options.h"

namespace xfc {

compile_option_record compile_options;

}  // namespace xfc
