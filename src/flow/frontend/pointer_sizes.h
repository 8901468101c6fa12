#pragma once

#include <clang/AST/ASTContext.h>

namespace xfc::flow {

/// Whether the program asks for the size or the alignment of something that has pointers in it, or for the place of a
/// member behind them: these numbers are other ones where pointers have other sizes.
[[nodiscard]] bool measures_pointers(clang::ASTContext& context);

}  // namespace xfc::flow
