#include "exact/run/compilation.h"

namespace xfc {

compilation current;

}  // namespace xfc
