#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "exact/support/compile.h"

// Label lists of one construct, without those of the program around it.

namespace xfc::test {

using label_texts = std::vector<std::string>;

inline label_texts operator+(label_texts left, const label_texts& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline label_texts name(const std::string& text) { return {"T:IDENTIFIER", text}; }
inline label_texts integer(const std::string& text) { return {"T:INTEGER_CONSTANT", text}; }

/// Labels of a whole source without syntax errors.
inline label_texts labels_of(const std::string& source) {
    const run_result result = flatten_text(source);
    EXPECT_EQ(result.standard_output + result.standard_error, "") << source;
    EXPECT_EQ(result.status, 0);
    return labels();
}

/// The middle of a list whose first and last entries are known.
inline label_texts between(const label_texts& before, const label_texts& list, const label_texts& behind) {
    if (list.size() < before.size() + behind.size()) {
        ADD_FAILURE() << "only " << list.size() << " labels";
        return {};
    }
    const auto from = list.begin() + static_cast<std::ptrdiff_t>(before.size());
    const auto to = list.end() - static_cast<std::ptrdiff_t>(behind.size());
    EXPECT_EQ(label_texts(list.begin(), from), before);
    EXPECT_EQ(label_texts(to, list.end()), behind);
    return {from, to};
}

/// Labels of a statement that is the second one of a function body.
inline label_texts statement_labels(const std::string& statement) {
    return between(
        {"B:decl comp_stat", "B:direct_decl()", "T:IDENTIFIER", "main", "B:{statement_list}", "{", "B:statement_list"},
        labels_of("main() { ; " + statement + " }"), {"}"});
}

/// Labels of an expression that is a statement.
inline label_texts expression_labels(const std::string& expression) {
    return between({"T:start_expr_stat"}, statement_labels(expression + ";"), {"T:end_expr_stat"});
}

/// Labels of a declaration without its frame.
inline label_texts declaration_labels(const std::string& declaration) {
    return between({"S:Declaration"}, labels_of(declaration), {"S:END"});
}

/// Labels of a declarator of a float.
inline label_texts declarator_labels(const std::string& declarator) {
    return between({"B:decl_spec init_decl_list", "T:Type_Float"}, declaration_labels("float " + declarator + ";"), {});
}

/// Labels of the specifiers of a declaration of x.
inline label_texts specifier_labels(const std::string& specifiers) {
    return between({"B:decl_spec init_decl_list"}, declaration_labels(specifiers + " x;"), {"T:IDENTIFIER", "x"});
}

}  // namespace xfc::test
