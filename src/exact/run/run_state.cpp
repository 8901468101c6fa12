#include "exact/run/run_state.h"

namespace xfc {

std::FILE* source_file = nullptr;
std::string source_path;
std::int32_t line_number = -1;
std::int32_t error_count = 0;
std::int32_t max_latency = 0;

const char* unfinished_output = nullptr;

}  // namespace xfc
