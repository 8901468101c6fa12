#include "flow/frontend/pointer_sizes.h"

#include <clang/AST/Decl.h>
#include <clang/AST/Expr.h>
#include <clang/AST/RecursiveASTVisitor.h>

#include <algorithm>

namespace xfc::flow {

namespace {

// NOLINTBEGIN(misc-no-recursion): as deep as types are nested
bool has_pointers(clang::QualType type) {
    const clang::QualType plain = type.getCanonicalType();
    if (const auto* array = llvm::dyn_cast<clang::ArrayType>(plain.getTypePtr())) {
        return has_pointers(array->getElementType());
    }
    if (const auto* record = plain->getAsRecordDecl()) {
        return std::any_of(record->field_begin(), record->field_end(),
                           [](const clang::FieldDecl* field) { return has_pointers(field->getType()); });
    }
    return plain->isPointerType();
}
// NOLINTEND(misc-no-recursion)

/// Stops at the first question of that kind.
class size_finder : public clang::RecursiveASTVisitor<size_finder> {
public:
    // NOLINTBEGIN(readability-identifier-naming): the visitor's names
    bool VisitUnaryExprOrTypeTraitExpr(clang::UnaryExprOrTypeTraitExpr* one) const {
        return !has_pointers(one->getTypeOfArgument());
    }
    bool VisitOffsetOfExpr(clang::OffsetOfExpr* one) const {
        return !has_pointers(one->getTypeSourceInfo()->getType());
    }
    /// As it is written alone: both forms of every list would make twice as many visits on each level.
    bool TraverseInitListExpr(clang::InitListExpr* list, DataRecursionQueue* queue = nullptr) {
        clang::InitListExpr* written = list->getSyntacticForm();
        return TraverseSynOrSemInitListExpr(written != nullptr ? written : list, queue);
    }
    // NOLINTEND(readability-identifier-naming)
};

}  // namespace

bool measures_pointers(clang::ASTContext& context) { return !size_finder().TraverseAST(context); }

}  // namespace xfc::flow
